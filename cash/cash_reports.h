// The lists of the cash desk: what the catalogue beside the program offers, and running one of them. Needs no
// window; whoever has one asks for the day.
#pragma once

#include <QDate>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "app/ground/report_door.h"
#include "platform/dao/database.h"
#include "platform/workplace.h"

namespace qk {

/// For which occasion lists are offered.
struct Auswertungsart {
  bool bEinlagen = false, Vortel = false, Preisgeld = false;
  QString PreisgeldDatei;  ///< data of prize money lists; empty: the competition's
};

/// The table of the catalogue that holds the lists of the occasion.
QString listenTabelle(const Auswertungsart& art);

/// "Tageswahl;Date(2026,11,22);TRUE;", or nothing without a day.
QString tageswahlParameter(const std::optional<QDate>& tag);

/// The days on which something was booked, the latest first. Errors of the store pass.
std::vector<QDate> kassenTage(dao::Database& wettkampf);

struct KassenListe {
  qint32 ID = 0;
  QString Beschreibung;
};

class CashReports {
 public:
  /// `sWettkampf`: path of the competition. The door outlives this.
  CashReports(const Workplace& workplace, ReportDoor& reports, QString sWettkampf);

  Auswertungsart art;
  /// Asks for one of the days; nothing where there is none.
  std::function<std::optional<QDate>(const std::vector<QDate>& tage)> waehleTag;

  /// Gives every payment its club and team, and reads the lists in their order. Errors pass.
  void load();
  const std::vector<KassenListe>& listen() const { return listen_; }

  /// Shows a list; a box where none is chosen. One that reads a payment's club or team gives it to those that
  /// other desks have stored since the lists were loaded. Failures are reported.
  void werteAus(const std::optional<KassenListe>& liste);

 private:
  std::optional<ReportOrder> auftrag(const KassenListe& liste);
  bool liestBasis(const ReportOrder& order) const;

  Workplace workplace_;
  ReportDoor& reports_;
  QString sWettkampf_;
  std::unique_ptr<dao::Database> wettkampf_, katalog_;
  std::vector<KassenListe> listen_;
};

}  // namespace qk
