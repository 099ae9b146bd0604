// The list from which an operator picks a shooter by name.
//
// Typing filters; the arrow keys walk the list without leaving the search field; Enter or a double click
// choose. Whoever types and goes on at once means the list that comes, not the empty one: keys that meet an
// empty list wait for its first rows, and the window lives meanwhile.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/workplace.h"

namespace Ui {
class frmSchuetzenListe;
}

namespace qk {

class BoundRows;
namespace dao {
class Database;
}

class frmSchuetzenListe : public QDialog {
  Q_OBJECT

 public:
  explicit frmSchuetzenListe(const Workplace& workplace, QWidget* parent = nullptr);
  ~frmSchuetzenListe() override;

  /// Path of the competition file, set before the dialog is shown.
  void setWettkampf(const QString& sWettkampf) { sWettkampf_ = sWettkampf; }
  const QString& sWettkampf() const { return sWettkampf_; }
  /// The chosen start number, empty if nothing was chosen.
  const QString& sStartnummer() const { return sStartnummer_; }

 protected:
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;

 private:
  void openCompetition();
  /// Reads the list anew for what stands in the search field. The rows come by themselves.
  void readList(const QString& failureText);
  void showCount();
  /// Once, as soon as the list of all is known to be empty.
  void noteNoShooters();
  void layOutList();
  /// All columns in sight where the screen allows it.
  void fitToColumns();
  void selectFirstRow();
  /// True while the list is empty and rows may come; the key does its work then.
  bool waitsForRows(Qt::Key key);
  void doWaitingKeys();
  void cmdOK_Click();

  Workplace workplace_;
  std::unique_ptr<Ui::frmSchuetzenListe> ui_;
  std::unique_ptr<dao::Database> database_;
  BoundRows* list_;
  QString failureText_;  // of the reading that runs: it may fail later
  QList<Qt::Key> waiting_;
  bool noteDue_ = false;
  QString sWettkampf_;
  QString sStartnummer_;
  bool opened_ = false;
};

}  // namespace qk
