// The cash desk's own connection to the competition, and the cursors that it keeps while it is open.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "cash/payer.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/money.h"

namespace qk {

/// A stake on sale, as the desk lists it.
struct Stake {
  qint32 id = 0;
  QString Bezeichnung;
};

/// The stake that a donation is booked on; without one, no name and the id 0.
using DonationStake = Stake;

inline const QString kSpende = "Spende";

class CashStore {
 public:
  /// Opens the competition and the cursors of shooters and of their stakes. Errors of the store pass.
  void open(const QString& path);
  /// The same for the stakes of clubs and teams: there is no shooter cursor then.
  void openVM(const QString& path);
  bool isOpen() const { return database_ != nullptr; }
  void close();

  dao::Database& database() const;    ///< Error 91 while closed
  dao::Recordset& schuetzen() const;  ///< shooter cursor on "Schützenliste"; stands on the shown shooter
  dao::Recordset& einlagen() const;   ///< stake cursor, in the order of `Platz`
  dao::Recordset* eingaenge() const;  ///< payments of whoever is shown; none before the first one

  /// Positions the shooter cursor. A shooter who was entered since the opening is found too. On false the
  /// cursor stands where it stood.
  bool findeSchuetze(const QString& sStartNr);
  /// Positions the stake cursor; false for a stake that is gone or belongs to clubs and teams.
  bool findeEinlage(qint32 id);
  void openEingaenge(const Payer& payer);

  /// Reads the stakes anew, in their order; the last one called "Spende" is the donation stake.
  std::vector<Stake> ladeEinlagen();
  const DonationStake& spende() const { return spende_; }

 private:
  std::unique_ptr<dao::Database> database_;
  std::unique_ptr<dao::Recordset> schuetzen_, einlagen_, eingaenge_;
  DonationStake spende_;
};

}  // namespace qk
