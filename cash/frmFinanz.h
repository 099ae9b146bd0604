// The cash desk's window: one shooter at a time, his purchase in hand, what is to be paid and the change.
//
// Who owns what:
//
//   frmFinanz ─ CashDesk ─┬─ CashStore   connection and cursors          (no widget in any of these)
//             │           ├─ Payments    `flexAll`, open items, deletion
//             │           └─ Purchase    `flex`, limits, prices, donation
//             ├─ TargetPanel   tab 1: stacks, the two trees, typed numbers     panels own their .ui, controls
//             ├─ IssuedPanel   tab 3: targets that the shooter holds           and settings, and get the desk
//             ├─ LabelPanel    tab 4: selection table, label settings, print   by setDesk
//             ├─ PaymentPanel  beside the tabs: sum, change, last booking
//             └─ ScanWatch     what a scanner types
//
// The window turns buttons and keys into calls of the desk and shows what the desk tells by its signals:
//   CashDesk::opened           the window loads (Form_Load, which calls the panels' own)
//   CashDesk::einlagenGeladen  lstAll
//   CashDesk::shooterShown, shooterUnknown, vmShown, paymentsShown     head, menu "VM-Einlagen"
//   Purchase::changed          PaymentPanel::UpdateAktGesamt, LabelPanel::UpdateBarcodeAnzeige(-1)
//   Payments::changed          UpdateSummenGesamt
//   TargetPanel::stapelGeladen tabs 1 and 3
// A booking is booking.h; the window hands it what prints and what the panels store (BookingSides).
// What prints goes through the ReportDoor. Own windows open through zeigeFenster, so that the desk is active
// again afterwards. An entry of "VM-Einlagen" carries
// its club's or team's id as its data.
//
// Lifetime: made for one opening. The load runs inside the first UpdateStartNr, with the flags set before it;
// a desk that is to wait for its first shooter loads in oeffneOhneSchuetzen.
// Object names are unique in the window, panels included.
#pragma once

#include <QDialog>
#include <functional>
#include <memory>

#include "cash/booking.h"
#include "cash/cash_desk.h"
#include "cash/receipt.h"
#include "cash/scan_watch.h"

namespace Ui {
class frmFinanz;
}

namespace qk {

class frmFinanz : public QDialog {
  Q_OBJECT

 public:
  /// `reports` prints receipts, lists and start cards. All outlive the window.
  frmFinanz(const Workplace& workplace, GlobalVariablen& global, ReportDoor& reports,
            QWidget* parent = nullptr);
  ~frmFinanz() override;

  /// Run without target numbers; to be set before the first UpdateStartNr.
  void setOhneScheibenNummern(bool bOhneScheibenNummern) { bOhneScheibenNummern_ = bOhneScheibenNummern; }
  bool bOhneScheibenNummern() const { return bOhneScheibenNummern_; }
  /// Hide the start card.
  void setOhneStartkarte(bool bOhneStartkarte) { bOhneStartkarte_ = bOhneStartkarte; }
  bool bOhneStartkarte() const { return bOhneStartkarte_; }
  void setBez1(const QString& sBez1) { desk_.sBez1 = sBez1; }
  void setBez2(const QString& sBez2) { desk_.sBez2 = sBez2; }
  void setOrt(const QString& sOrt) { desk_.sOrt = sOrt; }
  const QString& sStartNr() const { return desk_.sStartNr(); }

  /// Opens the competition of the program. Errors pass.
  void OpenDB() { desk_.OpenDB(); }
  /// Shows a shooter, with the club's short name and the team to display; opens the competition before.
  void UpdateStartNr(const QString& sStartNr, const QString& sVerein, const QString& sMann);
  /// Opens the competition and waits for the first shooter: until then nothing can be sold. False, after a
  /// box, when it can't be opened.
  bool oeffneOhneSchuetzen();
  /// False while there is nothing to work on: the competition couldn't be opened.
  bool istOffen() const { return desk_.isOpen(); }

  void Set_EinlagenFont();
  void Set_PrintScheibenFont();
  void Set_BarcodeFont();

  /// The receipt of what the window shows. Failures are reported.
  void PrintKasseneingaenge(ReportOrder::Ziel nZiel);

 public Q_SLOTS:
  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  bool event(QEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  // How the window is put together.
  void layOut();
  void raumFuerRegister();
  void followFont();
  void connectDesk();
  void connectPurchase();
  void connectPayments();
  void connectMenus();
  void connectScans();
  void makeKeys();
  /// What needs a shooter is within reach, or not.
  void setBereit(bool bereit);
  /// Runs a routine without a handler of its own: a failure shows one box, and the program goes on.
  void versuche(const std::function<void()>& routine);
  void on(QAction* action, std::function<void()> routine);

  // The window's own life.
  void Form_Load();
  void Form_Activate();
  void Form_Unload();
  bool darfSchliessen();
  void LoadDisziKombiBaum();
  void zeigeScheibenRegister(bool sichtbar);
  /// Shows a window of ours modally.
  void zeigeFenster(const std::function<void()>& exec);

  // What is shown.
  void zeigeSchuetze();
  void zeigeVM();
  void zeigeEinlagen();
  void UpdateSummenGesamt();
  void melde(const QString& text);

  // Buttons and menus.
  void wechsle();
  void waehleAusListe();
  void ladeSchuetzenNeu();
  void cmdAdd();
  void cmdAddAnzahl();
  void artikelEingegeben();
  /// True when all of it is booked, or there was nothing to book on.
  bool cmdVerbuchen();
  void cmdOK();
  void mnuDateiAuswertung();
  void mnuDateiPrintStartKarte();
  void mnuOptEinlagen();
  void mnuOptScheiben();
  void mnuScheibenAuswertung();
  void bearbeiteStapel(qint32 lStapelID);
  void mnuVM(const QAction* entry);
  void mnuOptSchriftEinlagen();
  void flexAllEingabe(int row, int column);
  qint32 gewaehlteEinlage() const;  ///< 0 without a selection

  Workplace workplace_;
  ReportDoor& reports_;
  CashDesk desk_;
  std::unique_ptr<Ui::frmFinanz> ui_;
  ScanWatch scans_;
  bool bOhneScheibenNummern_ = false;
  bool bOhneStartkarte_ = false;
  bool positioned_ = false;
};

}  // namespace qk
