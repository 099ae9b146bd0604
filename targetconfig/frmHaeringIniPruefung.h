// Shows which def, weapon and target files the stations' configuration names, and which of them are missing.
// Changes nothing.
#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "app/ground/printing.h"
#include "platform/print/paper.h"
#include "platform/workplace.h"
#include "targetconfig/configuration_check.h"

namespace Ui {
class frmHaeringIniPruefung;
}

namespace qk {

class frmHaeringIniPruefung : public QDialog {
  Q_OBJECT

 public:
  explicit frmHaeringIniPruefung(const Workplace& workplace, QWidget* parent = nullptr);
  ~frmHaeringIniPruefung() override;

  /// Where the result is printed instead of on a printer; outlives the window.
  void setPaper(Paper& paper) { paper_ = &paper; }
  /// While the check runs, closing only ends the check.
  void reject() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  ErrorReport report(const QString& routine) const;
  void cmdCheck_Click();
  void cmdPfad_Click();
  void cmdKopieren_Click();
  void cmdDrucken_Click();
  void setFolder(const QString& folder);
  void clearRows();
  void showRow(const CheckRow& row);
  void setChecking(bool checking);
  void showCounts();
  void explainRow(int row);
  QStringList head() const;

  Workplace workplace_;
  std::unique_ptr<Ui::frmHaeringIniPruefung> ui_;
  std::vector<CheckRow> rows_;  // of the grid, in its order
  QString checkedFolder_;       // that they tell of
  PrinterPaper printer_{currentPrinter(workplace_)};
  Paper* paper_ = &printer_;
  bool checking_ = false;
  bool stop_ = false;
};

}  // namespace qk
