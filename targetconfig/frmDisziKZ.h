// The keys by which the target system knows the disciplines of the sport rules: the table MeldeDisziplin of a
// competition or of the template, edited in place, or to choose one row from. (No window of this program
// chooses so far; the menus edit.)
#pragma once

#include <QDialog>
#include <memory>

#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace Ui {
class frmDisziKZ;
}

namespace qk {

class BoundRows;
struct GlobalVariablen;
namespace dao {
class Database;
}

class frmDisziKZ : public QDialog {
  Q_OBJECT

 public:
  frmDisziKZ(const Workplace& workplace, const GlobalVariablen& global, QWidget* parent = nullptr);
  ~frmDisziKZ() override;

  /// Path of the database and the way it is shown: to be set before the window is.
  void setDataBase(const QString& sDataBase) { sDataBase_ = sDataBase; }
  const QString& sDataBase() const { return sDataBase_; }
  void setAuswahl(bool bAuswahl) { bAuswahl_ = bAuswahl; }
  bool bAuswahl() const { return bAuswahl_; }

  /// The row to begin on when above 0, and the one that was chosen.
  void setLId(qint32 lId) { lId_ = lId; }
  qint32 lId() const { return lId_; }
  const QString& sDisziplin() const { return sDisziplin_; }
  const QString& sKey() const { return sKey_; }
  void setBOK(bool bOK) { bOK_ = bOK; }
  bool bOK() const { return bOK_; }

  void setVisible(bool visible) override;
  /// Stays open while something typed can't be stored.
  void reject() override;

 private:
  ErrorReport report(const QString& routine) const;
  void Form_Load();
  void cmdOK_Click();
  /// Sets the column Anzeigen of every row.
  void showAll(bool bAnzeigen, const QString& routine);
  void showState();

  Workplace workplace_;
  const GlobalVariablen& global_;
  std::unique_ptr<Ui::frmDisziKZ> ui_;
  std::unique_ptr<dao::Database> database_;
  std::unique_ptr<BoundRows> rows_;  // reads from database_
  QString sDataBase_;
  QString sDisziplin_;
  QString sKey_;
  qint32 lId_ = 0;
  bool bAuswahl_ = false;
  bool bOK_ = false;
};

}  // namespace qk
