// "QK-Kasse Auswertungen": the lists of the cash desk, shown one after the other.
#pragma once

#include <QDialog>
#include <memory>

#include "cash/cash_reports.h"
#include "platform/workplace.h"

namespace Ui {
class frmKasseReports;
}

namespace qk {

struct GlobalVariablen;

class frmKasseReports : public QDialog {
  Q_OBJECT

 public:
  /// Runs on the competition of the program. All outlive the window.
  frmKasseReports(const Workplace& workplace, const GlobalVariablen& global, ReportDoor& reports,
                  QWidget* parent = nullptr);
  ~frmKasseReports() override;

  // Which lists are offered; to be set before the window is shown.
  void setBEinlagen(bool bEinlagen) { lists_.art.bEinlagen = bEinlagen; }
  void setVortel(bool Vortel) { lists_.art.Vortel = Vortel; }
  void setPreisgeld(bool Preisgeld) { lists_.art.Preisgeld = Preisgeld; }
  void setPreisgeldDatei(const QString& PreisgeldDatei) { lists_.art.PreisgeldDatei = PreisgeldDatei; }

 protected:
  void showEvent(QShowEvent* event) override;

 private:
  void Form_Load();
  void cmdOK();
  std::optional<QDate> waehleTag(const std::vector<QDate>& tage);

  Workplace workplace_;
  std::unique_ptr<Ui::frmKasseReports> ui_;
  CashReports lists_;
  bool loaded_ = false;
};

}  // namespace qk
