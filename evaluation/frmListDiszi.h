// "Disziplinen": to which discipline results are to be moved or copied, and which of them.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/workplace.h"

class QListWidgetItem;
namespace Ui {
class frmListDiszi;
}

namespace qk {

namespace dao {
class Database;
}

class frmListDiszi : public QDialog {
  Q_OBJECT

 public:
  frmListDiszi(const Workplace& workplace, dao::Database& database, QWidget* parent = nullptr);
  ~frmListDiszi() override;

  /// The discipline that is chosen at the beginning; afterwards the one that was, below 1 when cancelled.
  void setId(qint32 lId) { lId_ = lId; }
  qint32 lId() const { return lId_; }
  /// Disciplines of teilers, or those of series.
  void setTeiler(bool bTeiler) { bTeiler_ = bTeiler; }
  void setChangeAll(bool bChangeAll);
  bool bChangeAll() const { return bChangeAll_; }
  bool bCopy() const { return bCopy_; }
  QString chosenName() const;

  void setVisible(bool visible) override;
  void reject() override;

 private:
  void Form_Load();
  void showChoice();
  void cmdOK_Click();
  QListWidgetItem* chosen() const;  ///< nullptr for none

  Workplace workplace_;
  dao::Database& database_;
  std::unique_ptr<Ui::frmListDiszi> ui_;
  qint32 lId_ = 0;
  bool bTeiler_ = false;
  bool bChangeAll_ = false;
  bool bCopy_ = false;
};

}  // namespace qk
