// The evaluation of issued targets: how many, by stack, discipline, shooter or day, and what is still out.
#pragma once

#include <QDialog>
#include <memory>
#include <vector>

#include "app/ground/report_door.h"
#include "cash/target_evaluation.h"
#include "platform/workplace.h"

namespace Ui {
class frmScheibenAuswertung;
}

namespace qk {

class frmScheibenAuswertung : public QDialog {
  Q_OBJECT

 public:
  /// `file` is the competition that `database` stands on; `reports` shows the list of all targets. All
  /// outlive the window.
  frmScheibenAuswertung(const Workplace& workplace, dao::Database& database, QString file,
                        ReportDoor& reports, QWidget* parent = nullptr);
  ~frmScheibenAuswertung() override;

  /// Where the list goes to.
  void setAusgabeZiel(ReportOrder::Ziel AusgabeZiel) { AusgabeZiel_ = AusgabeZiel; }

  void setVisible(bool visible) override;

 private:
  void lade();
  void zeige();
  void druckeListe();

  Workplace workplace_;
  dao::Database& database_;
  QString file_;
  ReportDoor& reports_;
  std::unique_ptr<Ui::frmScheibenAuswertung> ui_;
  ReportOrder::Ziel AusgabeZiel_ = ReportOrder::Ziel::Fenster;
  std::vector<IssuedTarget> all_;
};

}  // namespace qk
