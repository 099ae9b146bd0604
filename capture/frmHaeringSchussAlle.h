// Every shot that was ever reported, whatever became of it: to look through, filter, sort, and delete.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/grid/grid_browser.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace Ui {
class frmHaeringSchussAlle;
}

namespace qk {

class BoundRows;
namespace dao {
class Database;
}

class frmHaeringSchussAlle : public QDialog {
  Q_OBJECT

 public:
  explicit frmHaeringSchussAlle(const Workplace& workplace, QWidget* parent = nullptr);
  ~frmHaeringSchussAlle() override;

  /// Path of the competition file, set before the window is shown.
  void setWettkampf(const QString& sWettkampf) { sWettkampf_ = sWettkampf; }
  const QString& sWettkampf() const { return sWettkampf_; }

  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  ErrorReport report(const QString& routine) const;
  void openCompetition();
  /// Shows the query in force; one that can't be read shows nothing.
  void refresh(const QString& routine);
  void cmdDeleteHaering_Click();
  void deleteRows();
  void setDeleting(bool deleting);
  void showCount();

  Workplace workplace_;
  std::unique_ptr<Ui::frmHaeringSchussAlle> ui_;
  std::unique_ptr<dao::Database> database_;
  std::unique_ptr<BoundRows> rows_;  // reads from database_
  std::unique_ptr<GridBrowser> browser_;
  QString sWettkampf_;
  bool opened_ = false;
  bool deleting_ = false;
  bool stop_ = false;
};

}  // namespace qk
