#include "capture/open_shots.h"

#include <array>

#include "capture/row_values.h"
#include "platform/dao/sql/quote.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

const QString AllShots = "Select * from Haering_Daten";

/// A column of Haering_Daten and the field of the shot that it carries.
struct ShotColumn {
  QString name;
  QVariant (*get)(const HaeringSchuss&);
  void (*set)(HaeringSchuss&, const dao::Recordset&, const QString& column);
};

QVariant stored(const QString& value) {
  return value;
}
QVariant stored(double value) {
  return value;
}
QVariant stored(qint16 value) {
  return static_cast<int>(value);
}

void read(QString& field, const dao::Recordset& rs, const QString& column) {
  field = textIn(rs, column);
}
void read(double& field, const dao::Recordset& rs, const QString& column) {
  field = doubleIn(rs, column);
}
void read(qint16& field, const dao::Recordset& rs, const QString& column) {
  field = integerIn(rs, column);
}

template <auto Field>
ShotColumn carrying(const QString& name) {
  return {name, [](const HaeringSchuss& schuss) { return stored(schuss.*Field); },
          [](HaeringSchuss& schuss, const dao::Recordset& rs, const QString& column) {
            read(schuss.*Field, rs, column);
          }};
}

/// In writing order. The whole ring, the tenth digit and their mixed value aren't stored.
const auto& shotColumns() {
  using S = HaeringSchuss;
  static const std::array columns{
      carrying<&S::WettbewerbBezeichnung>("WettbewerbBezeichnung"),
      carrying<&S::KlasseBezeichnung>("KlasseBezeichnung"),
      carrying<&S::OrtStandnummer>("StandnummerOrt"),
      carrying<&S::LinienNummer>("Liniennummer"),
      carrying<&S::SchuetzenName>("Schütze"),
      carrying<&S::ProbeMatch>("ProbeMatch"),
      carrying<&S::Wertung>("Wertung"),
      carrying<&S::TrefferNummer>("Treffernummer"),
      carrying<&S::RingMitZehntel>("RingwertmitZehntel"),
      carrying<&S::LagePfeilzeichen>("Lagepfeil"),
      carrying<&S::X>("X"),
      carrying<&S::Y>("Y"),
      carrying<&S::Radius>("Radius"),
      carrying<&S::PHiPosition>("Winkel"),
      carrying<&S::AbsoluteZeit>("ZeitAbsolut"),
      carrying<&S::RelativeZeit>("ZeitRelativ"),
      carrying<&S::Datum>("Datum"),
      carrying<&S::RegelNummerWettbewerb>("Wettbewerb"),
      carrying<&S::RegelNummerKlasse>("Klasse"),
      carrying<&S::SchuetzeStartnummer>("Startnummer"),
      carrying<&S::sWaffe>("Waffe"),
      carrying<&S::dblTeiler>("Teiler"),
      carrying<&S::dblTeilerFaktor>("Teilerfaktor"),
      carrying<&S::Key>("Key"),
  };
  return columns;
}

ErrorReport storeReport(const Workplace& workplace, const QString& sText) {
  return fehlerReport(workplace.dialogs, sText, {}, false);
}

QString lossOf(const HaeringSchuss& schuss, ErrorAnswer answer) {
  const bool all = answer == ErrorAnswer::Abort;
  return QString("Der Schuss %1 an Linie %2 (%3 Ringe, Startnummer %4) ist nicht gespeichert.\r\n\r\n")
             .arg(schuss.TrefferNummer)
             .arg(schuss.LinienNummer)
             .arg(numberText(schuss.RingMitZehntel), schuss.SchuetzeStartnummer) +
         (all ? "Wenn Sie abbrechen, geht er verloren: "
              : "Wenn Sie ignorieren, fehlt ihm, was sich nicht speichern ließ, oder er geht verloren: ") +
         "In der Liste steht er nur bis zum Ende des Programms, und niemand meldet ihn ein zweites "
         "Mal.\r\n\r\n" +
         (all ? "Trotzdem abbrechen?" : "Trotzdem ignorieren?");
}

const QString kOpen = " where verbucht = 0 and verworfen = 0 and Liniennummer";

QString openShotsOf(std::int16_t nLinie) {
  return AllShots + kOpen + " = " + QString::number(nLinie);
}

/// Finds the shot's row and, when there is one, sets the flag and the time. True when the row bears them.
bool markRow(Steps& step, const std::unique_ptr<dao::Recordset>& rs, const HaeringSchuss& schuss,
             const QString& flag, const Clock& clock) {
  bool found = false;
  step([&] {
    required(rs).findFirst("ID = " + QString::number(schuss.ID));
    found = !rs->noMatch();
  });
  if (!found) return false;
  step([&] { rs->edit(); });
  step([&] { rs->setValue(flag, true); });
  step([&] { rs->setValue("BuchungsZeitpunkt", clock.now()); });
  return step([&] { rs->update(); });
}

}  // namespace

bool LadeHaeringSchuss(const Workplace& workplace, const dao::Recordset& rs, HaeringSchuss& schuss) {
  const ErrorReport report =
      storeReport(workplace, "Fehler beim Laden der offenen Intarso-Ergebnisse aus der Datenbank!");
  return reported(report, [&](Steps& step) {
    step([&] { schuss.ID = longIn(rs, "ID"); });
    for (const ShotColumn& column : shotColumns()) step([&] { column.set(schuss, rs, column.name); });
    step([&] { schuss.Verbucht = doubleIn(rs, "Verbucht") != 0; });
    step([&] {
      const QDateTime booked = rs.value("BuchungsZeitpunkt").toDateTime();
      schuss.VerbuchtDatum = booked.isValid() ? dateText(booked) : QString();
    });
    step([&] { leiteRingeAb(schuss, numberText(schuss.RingMitZehntel)); });
  });
}

bool SpeichereHaeringSchuss(const Workplace& workplace, dao::Database* db, HaeringSchuss& schuss) {
  const ErrorReport report =
      reportOfALoss(workplace.dialogs,
                    storeReport(workplace, "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!"),
                    [&schuss](ErrorAnswer answer) { return lossOf(schuss, answer); });
  bool tried = false;
  const bool done = reported(report, [&](Steps& step) {
    std::unique_ptr<dao::Recordset> rs;
    step([&] { rs = required(db).openRecordset(AllShots); });
    const bool added = step([&] { required(rs).addNew(); });
    for (const ShotColumn& column : shotColumns())
      step([&] { required(rs).setValue(column.name, column.get(schuss)); });
    // Without a row of its own it would read that of another shot.
    if (added) step([&] { schuss.ID = longIn(*rs, "ID"); });
    step([&] { required(rs).setValue("Verbucht", false); });
    step([&] { required(rs).setValue("BuchungsZeitpunkt", false); });
    step([&] {
      tried = true;
      required(rs).update();
    });
  });
  if (!tried) schuss.ID = 0;  // the next row gets the number
  return done;
}

bool UpdateHaeringStartnummer(const Workplace& workplace, dao::Database* db, const HaeringSchuss& schuss) {
  const ErrorReport report = storeReport(workplace, "Fehler bei UpdateHaeringStartnummer_err!");
  return reported(report, [&](Steps& step) {
    step([&] {
      required(db).execute(
          "Update Haering_Daten Set Startnummer = " + dao::sql::quoted(schuss.SchuetzeStartnummer) +
          " WHERE ID = " + QString::number(schuss.ID));
    });
  });
}

bool VerwerfeHaeringSchuss(const Workplace& workplace, dao::Database* db, const HaeringSchuss& schuss) {
  const ErrorReport report =
      storeReport(workplace, "Fehler beim Verwerfen der Intarso-Ergebnisse in die Datenbank!");
  return reported(report, [&](Steps& step) {
    std::unique_ptr<dao::Recordset> rs;
    step([&] { rs = required(db).openRecordset(AllShots); });
    markRow(step, rs, schuss, "Verworfen", workplace.clock);
  });
}

std::optional<int> VerbucheHaeringSchuss(const Workplace& workplace, dao::Database* db, ShotCollection& shots,
                                         TextTable& flex) {
  const ErrorReport report =
      storeReport(workplace, "Fehler beim Verbuchen der Intarso-Ergebnisse in die Datenbank!");
  int booked = 0;
  std::vector<std::shared_ptr<HaeringSchuss>> handled;
  const bool done = reported(report, [&](Steps& step) {
    std::unique_ptr<dao::Recordset> rs;
    step([&] { rs = required(db).openRecordset(AllShots); });
    for (const auto& schuss : shots.objects()) {
      if (!schuss->bAngewaehlt) continue;
      if (markRow(step, rs, *schuss, "Verbucht", workplace.clock)) ++booked;
      handled.push_back(schuss);
      const int row = flex.findRow(schuss->Key);
      if (row > 0) step([&] { flex.removeRow(row); });
    }
    for (int i = shots.count() - 1; i >= 0; --i)
      if (shots.at(i)->bAngewaehlt) shots.removeAt(i);
  });
  if (done) return booked;
  // Given up in the middle: what has left the list is open no more, and nobody may be credited with it again.
  // The shots themselves are looked for: one that was overwritten bears another key than the collection
  // knows.
  for (int i = shots.count() - 1; i >= 0; --i)
    if (std::find(handled.begin(), handled.end(), shots.at(i)) != handled.end()) shots.removeAt(i);
  return std::nullopt;
}

std::int16_t AnzahlOffeneSchuesse(const Workplace& workplace, dao::Database* db, std::int16_t nLinie) {
  const ErrorReport report =
      storeReport(workplace, "Fehler beim Ermitteln noch nicht verbuchter Schussdaten!");
  std::int16_t nAnzahl = 0;
  reported(report, [&](Steps& step) {
    step([&] {
      const auto rs = required(db).openRecordset(openShotsOf(nLinie));
      if (rs->eof()) return;
      rs->moveLast();
      nAnzahl = toInt16(rs->recordCount());
    });
  });
  return nAnzahl;
}

// The numbers are named so that the index answers, whose first column they are.
QSet<int> LinienMitOffenenSchuessen(dao::Database& db, int nLinien) {
  QStringList numbers;
  for (int line = 1; line <= nLinien; ++line) numbers.append(QString::number(line));
  QSet<int> lines;
  if (numbers.isEmpty()) return lines;
  const auto rs = db.openRecordset("Select distinct Liniennummer from Haering_Daten" + kOpen + " in (" +
                                   numbers.join(", ") + ")");
  for (; !rs->eof(); rs->moveNext()) lines.insert(rs->value("Liniennummer").toInt());
  return lines;
}

QString StartnummerOffeneSchuesse(const Workplace& workplace, dao::Database* db, std::int16_t nLinie) {
  const ErrorReport report =
      storeReport(workplace, "Fehler beim Ermitteln des Schützen mit noch nicht verbuchter Schussdaten!");
  QString sStartnummer;
  reported(report, [&](Steps& step) {
    step([&] {
      const auto rs = required(db).openRecordset(openShotsOf(nLinie));
      if (!rs->eof()) sStartnummer = textIn(*rs, "Startnummer");
    });
  });
  return sStartnummer;
}

bool LadeOffeneSchuesse(const Workplace& workplace, dao::Database* db, std::int16_t nLinie,
                        const std::function<void(std::shared_ptr<HaeringSchuss>)>& take) {
  const ErrorReport report =
      storeReport(workplace, "Fehler beim Laden der noch nicht verbuchter Schussdaten!");
  return reported(report, [&](Steps& step) {
    std::unique_ptr<dao::Recordset> rs;
    step([&] { rs = required(db).openRecordset(openShotsOf(nLinie) + " order by Datum, ZeitAbsolut"); });
    while (rs && !rs->eof()) {
      auto schuss = std::make_shared<HaeringSchuss>();
      if (LadeHaeringSchuss(workplace, *rs, *schuss)) take(std::move(schuss));
      step([&] { rs->moveNext(); });
    }
  });
}

}  // namespace qk
