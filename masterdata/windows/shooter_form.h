// The form of one shooter, as he is typed at the counter: the next free start number stands there, the birth
// date is taken in any common form, the class follows from it at once, club and team are found while they are
// typed.
#pragma once

#include <QWidget>
#include <memory>

#include "masterdata/counter/shooter_storing.h"

class QLineEdit;

namespace Ui {
class ShooterForm;
}

namespace qk {

class ShooterForm : public QWidget {
  Q_OBJECT

 public:
  explicit ShooterForm(QWidget* parent = nullptr);
  ~ShooterForm() override;

  /// Counter and dialogs outlive the form, or are replaced. Shows nobody.
  void setCounter(Counter& counter, Dialogs& dialogs);
  /// The lists of classes, clubs and teams, after the counter read them anew.
  void fillLists();

  /// The shooter of that row. Errors pass; 3167 when it is gone.
  void showShooter(qint64 id);
  /// An empty form with the next free start number, the keyboard on the name. Errors pass.
  void startNext();
  /// What was typed is given up. Errors pass.
  void reset();

  /// Where a column of the table is entered; nullptr where it isn't.
  QWidget* controlOf(const QString& column) const;

  /// The keyboard goes to the name.
  void begin();
  qint64 id() const { return entry_.id; }  ///< 0: a new one
  bool isEdited() const;
  QString who() const;  ///< "107  Müller Jörg" of what is typed
  /// Asks, writes, and shows what is stored. False while something typed isn't stored; the keyboard stands
  /// where it belongs then.
  bool store();

 Q_SIGNALS:
  /// Something was typed or shown.
  void changed();
  void stored(qint64 id, const QString& done);
  /// The class, club or team of a shooter isn't what it was.
  void regrouped(qint64 id, const qk::dao::RowValues& before);
  /// The row is gone, or somebody else's version of it stands.
  void reloadWanted();

 private:
  void showEntry();
  ShooterEntry typed() const;
  void edited();
  void normaliseDate();
  void showClass();
  void showNamesakes();
  void showHint();
  void chooseClass(qint32 id);
  void focusOn(const QString& column);
  QLineEdit* further(const QString& column) const;

  std::unique_ptr<Ui::ShooterForm> ui_;
  Counter* counter_ = nullptr;
  Dialogs* dialogs_ = nullptr;
  ShooterEntry entry_;  ///< as it was read or proposed
  QString classHint_, namesakes_;
};

}  // namespace qk
