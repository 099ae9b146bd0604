// The cash of one club or team: stakes of clubs and teams are sold, open items settled.
//
//   frmVMKasse window(workplace, reports, this);
//   window.setDataBaseName(file);
//   window.setID(12);            // a club; or setLMannID() for a team
//   window.zeige();
#pragma once

#include <QDialog>
#include <memory>

#include "cash/club_cash.h"

namespace Ui {
class frmVMKasse;
}

namespace qk {

class frmVMKasse : public QDialog {
  Q_OBJECT

 public:
  /// `reports` prints receipts; it outlives the window.
  frmVMKasse(const Workplace& workplace, ReportDoor& reports, QWidget* parent = nullptr);
  ~frmVMKasse() override;

  void setDataBaseName(const QString& DataBaseName) { DataBaseName_ = DataBaseName; }
  void setID(qint32 ID) { payer_ = Payer::verein(ID); }
  void setLMannID(qint32 lMannID) { payer_ = Payer::mannschaft(lMannID); }
  /// Titles and place of the competition, for receipts.
  void setTitel(const QString& sBez1, const QString& sBez2, const QString& sOrt);
  /// Opens the competition, shows the window and waits until it is closed. A box says what keeps it away.
  void zeige();

 public Q_SLOTS:
  /// Asks before a purchase in hand is lost.
  void reject() override;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void layOut();
  void connectControls();
  void makeKeys();
  void followFont();
  void Form_Load();
  void zeigeSummen();
  void cmdAdd();
  void cmdAddAnzahl();
  void cmdVerbuchen();
  void flexAllEingabe(int row, int column);
  void druckeBeleg(ReportOrder::Ziel ziel, bool aktuellerKauf);
  void versuche(const std::function<void()>& routine);

  Workplace workplace_;
  ReportDoor& reports_;
  QString DataBaseName_, sBez1_, sBez2_, sOrt_;
  Payer payer_ = Payer::verein(0);
  std::unique_ptr<ClubCash> cash_;
  std::unique_ptr<Ui::frmVMKasse> ui_;
};

}  // namespace qk
