// The state of an open cash desk, without its window: the competition, the shown shooter, his payments, the
// purchase in hand. The window and its panels share one; it outlives them.
#pragma once

#include <QObject>
#include <vector>

#include "app/ground/global_variablen.h"
#include "cash/balances.h"
#include "cash/cash_store.h"
#include "cash/payments.h"
#include "cash/purchase.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace qk {

/// What the window shows of the shooter.
struct ShownShooter {
  qint32 ID = 0;
  QString Startnummer;  ///< as stored
  QString Name;
  QString GebDat;
  QString SPO;      ///< as on `lblSPO`, in one line
  QString SPOText;  ///< as looked up, a line each
  QString Klasse;
  QString Verein;  ///< as handed over, shown on `Label4`
  QString Mann;    ///< likewise on `Label9`
  QString AusweisNr, SPOKEY;
  qint32 VereinsID = 0, lMannID = 0;
};

class CashDesk : public QObject {
  Q_OBJECT

 public:
  CashDesk(const Workplace& workplace, GlobalVariablen& global);

  const Workplace& workplace() const { return workplace_; }
  GlobalVariablen& global() const { return global_; }
  CashStore& store() { return store_; }
  bool isOpen() const { return store_.isOpen(); }
  dao::Database& database() { return store_.database(); }
  Payments& payments() { return payments_; }
  Purchase& purchase() { return purchase_; }

  /// The current start number: the last one asked for, whether it was found or not. Empty before the first
  /// one, and when istNochDerselbe() found nobody.
  const QString& sStartNr() const { return sStartNr_; }
  const ShownShooter& shooter() const { return shooter_; }
  const VmMenu& vm() const { return vm_; }

  // Titles and place of the competition, for receipts and labels.
  QString sBez1, sBez2, sOrt;

  /// Opens the competition of the program and its cursors. Errors pass.
  void OpenDB();

  /// Shows a shooter, `sVerein` and `sMann` being the club's short name and the team to display. Failures are
  /// reported; false when there is no such shooter, or the operator gave up.
  bool UpdateStartNr(const QString& sStartNr, const QString& sVerein, const QString& sMann);
  /// The same shooter again, as stored now; nothing before the first one.
  void ladeSchuetzenNeu();
  /// Whether the shown shooter still bears the number that he is shown with; one small query. What he buys is
  /// stored for him or for nobody: the number may be somebody else's by now. If he doesn't, a box says so:
  /// with another number he is shown anew, one who is gone is unknown. True before the first shooter. Errors
  /// of the store pass.
  bool istNochDerselbe();
  /// Looks the number up and shows the shooter with his club and team; a box for an unknown number.
  void wechsleSchuetzen(const QString& sStartNr);

  /// Reads the list of stakes anew.
  void ladeEinlagen();
  const std::vector<Stake>& einlagen() const { return einlagen_; }

 Q_SIGNALS:
  void opened();  ///< after OpenDB: the window loads now
  void einlagenGeladen();
  void shooterUnknown();  ///< nothing else has changed
  void shooterShown();
  void vmShown();
  void paymentsShown();

 private:
  void readShooter(Steps& step, const QString& sVerein, const QString& sMann);

  Workplace workplace_;
  GlobalVariablen& global_;
  CashStore store_;
  Payments payments_;
  Purchase purchase_;
  QString sStartNr_;
  ShownShooter shooter_;
  VmMenu vm_;
  std::vector<Stake> einlagen_;
};

}  // namespace qk
