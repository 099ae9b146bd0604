#include "capture/storing.h"

#include <array>
#include <functional>

#include "capture/row_values.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

template <class Record>
struct ResultColumn {
  QString name;
  QVariant (*value)(const Record&);
};

template <auto Field, class Record>
ResultColumn<Record> holding(const QString& name) {
  return {name, [](const Record& record) { return QVariant::fromValue(record.*Field); }};
}

const auto& schussColumns() {
  using R = QKTeilerDisziplin;
  static const std::array columns{
      holding<&R::Art, R>("Art"),
      holding<&R::ergebnis, R>("Ergebnis"),
      holding<&R::Ring, R>("Ring"),
      holding<&R::X, R>("x"),
      holding<&R::Y, R>("y"),
      holding<&R::ScheibenNr, R>("ScheibenNr"),
      holding<&R::Startnummer, R>("Startnummer"),
      holding<&R::MannId, R>("MannID"),
      holding<&R::KlassenID, R>("KlassenID"),
      holding<&R::DisziID, R>("DisziID"),
      holding<&R::VorMannId, R>("VorMannID"),
      holding<&R::SchussXY, R>("SchussXY"),
      holding<&R::SerieXY, R>("SerieXY"),
      holding<&R::Datum, R>("Datum"),
      holding<&R::DSBTeiler, R>("DSBTeiler"),
      holding<&R::DSBRinge, R>("DSBRinge"),
      holding<&R::SPO_ID, R>("SPO_ID"),
      holding<&R::ScheibenNummern, R>("ScheibenNummern"),
      holding<&R::bManuell, R>("bManuell"),
      holding<&R::WTyp, R>("WTyp"),
      holding<&R::Betrag, R>("Betrag"),
  };
  return columns;
}

const auto& schussSerienColumns() {
  using R = QKRingDisziplin;
  static const std::array columns{
      holding<&R::ergebnis, R>("Ergebnis"),
      holding<&R::Startnummer, R>("Startnummer"),
      holding<&R::MannId, R>("MannID"),
      holding<&R::KlassenID, R>("KlassenID"),
      holding<&R::DisziID, R>("DisziID"),
      holding<&R::Anz, R>("Anz"),
      holding<&R::Folge, R>("Folge"),
      holding<&R::Einzelfolge, R>("Einzelfolge"),
      holding<&R::Einzelfolge2, R>("Einzelfolge2"),
      holding<&R::VorMannId, R>("VorMannID"),
      holding<&R::EinzelfolgeTeiler, R>("EinzelFolgeTeiler"),
      holding<&R::SerieXY, R>("SerieXY"),
      holding<&R::Datum, R>("Datum"),
      holding<&R::SPO_ID, R>("SPO_ID"),
      holding<&R::ScheibenNummern, R>("ScheibenNummern"),
      holding<&R::bManuell, R>("bManuell"),
      holding<&R::WTyp, R>("WTyp"),
      holding<&R::Betrag, R>("Betrag"),
  };
  return columns;
}

/// Appends a row per record: `begun` gets each one before, `stored` when its row stands. A table without
/// records isn't even opened.
template <class Record, class Columns, class Begun, class Stored>
void appendRows(Steps& step, dao::Database* db, const QString& source, const KeyedCollection<Record>& records,
                const Columns& columns, Begun&& begun, Stored&& stored) {
  if (records.isEmpty()) return;
  begun(*records.at(0));
  std::unique_ptr<dao::Recordset> rs;
  step([&] { rs = required(db).openRecordset(source); });
  for (const auto& record : records.objects()) {
    begun(*record);
    step([&] { required(rs).addNew(); });
    for (const auto& column : columns)
      step([&] { required(rs).setValue(column.name, column.value(*record)); });
    if (step([&] { required(rs).update(); })) stored(*record);
  }
}

template <class Record>
QString resultText(const Record& record) {
  return numberText(record.ergebnis) + " in " + record.DisziplinName + ", Startnummer " + record.Startnummer;
}

QString lossOf(const QString& result) {
  return "Dieses Ergebnis ist nicht gespeichert: " + result +
         ".\r\n\r\nWenn Sie ignorieren, fehlt ihm, was sich nicht speichern ließ, oder es geht verloren. "
         "Danach "
         "steht es auch hier nicht mehr, und \"Speichern + Verbuchen\" verbucht seine Schüsse "
         "trotzdem.\r\n\r\n"
         "Trotzdem ignorieren?";
}

QString counted(int count, const QString& one, const QString& many) {
  return QString::number(count) + " " + (count == 1 ? one : many);
}

/// What the ticked shots say about the whole target.
struct PictureSums {
  QString Wettkampf, ScheibenTyp;
  double Teilerfaktor = 0;
  int AnzEinschuesse = 0;
  int ringeo = 0;
  double ringem = 0;
};

PictureSums sumsOf(const ShotCollection& shots) {
  PictureSums sums;
  for (const auto& shot : shots.objects()) {
    if (!shot->bAngewaehlt) continue;
    ++sums.AnzEinschuesse;
    if (sums.Wettkampf.isEmpty()) sums.Wettkampf = shot->WettbewerbBezeichnung;
    if (sums.ScheibenTyp.isEmpty()) sums.ScheibenTyp = shot->sWaffe;
    if (sums.Teilerfaktor == 0) sums.Teilerfaktor = shot->dblTeilerFaktor;
    sums.ringeo += shot->RingOhneZehntel;
    sums.ringem += shot->RingMitZehntel;
  }
  return sums;
}

struct ColumnValue {
  QString name;
  QVariant value;
};

void setValues(Steps& step, const std::unique_ptr<dao::Recordset>& rs,
               const std::vector<ColumnValue>& values) {
  for (const ColumnValue& column : values) step([&] { required(rs).setValue(column.name, column.value); });
}

}  // namespace

std::optional<StoredResults> SpeichereErgebnisse(const Workplace& workplace, dao::Database* db,
                                                 const PendingResults& pending) {
  if (pending.m_colTeilerErg.isEmpty() && pending.m_colRingErg.isEmpty()) {
    workplace.dialogs.note("Bitte wählen Sie eine Disziplin");
    return std::nullopt;
  }
  StoredResults stored;
  // The one that is being stored: its text is made only where that fails.
  std::function<QString()> result = [] { return QString(); };
  const auto begun = [&result](const auto& record) { result = [&record] { return resultText(record); }; };
  // Whoever aborts keeps all results, to store them later.
  const ErrorReport report = reportOfALoss(
      workplace.dialogs,
      fehlerReport(workplace.dialogs, "Fehler beim Speichern der Ergebnisse in die Datenbank!", {}, false),
      [&result](ErrorAnswer answer) { return answer == ErrorAnswer::Ignore ? lossOf(result()) : QString(); });
  const bool done = reported(report, [&](Steps& step) {
    appendRows(
        step, db, "Select * from Schuss", pending.m_colTeilerErg, schussColumns(), begun,
        [&](const QKTeilerDisziplin& record) { ++(record.Art == "RT" ? stored.ringTeiler : stored.teiler); });
    appendRows(step, db, "Select * from SchussSerien", pending.m_colRingErg, schussSerienColumns(), begun,
               [&](const QKRingDisziplin&) { ++stored.serien; });
  });
  return done ? std::optional(stored) : std::nullopt;
}

QString storedText(const StoredResults& stored, const QString& schuetze, std::optional<int> booked) {
  QStringList kinds;
  if (stored.serien > 0) kinds += counted(stored.serien, "Serie", "Serien");
  if (stored.teiler > 0) kinds += counted(stored.teiler, "Teiler", "Teiler");
  if (stored.ringTeiler > 0) kinds += counted(stored.ringTeiler, "Ring-Teiler", "Ring-Teiler");
  if (kinds.isEmpty()) return {};
  const QString last = kinds.takeLast();
  const QString what = kinds.isEmpty() ? last : kinds.join(", ") + " und " + last;
  const QString shots = !booked       ? QString("; die Schüsse bleiben offen.")
                        : *booked > 0 ? ", " + counted(*booked, "Schuss", "Schüsse") + " verbucht."
                                      : QString(", kein Schuss verbucht.");
  return what + (schuetze.isEmpty() ? QString() : " für " + schuetze) + " gespeichert" + shots;
}

bool SpeichernInGrafikDatenbank(const Workplace& workplace, dao::Database* db, const PictureCaption& caption,
                                const ShotCollection& shots) {
  const ErrorReport report = fehlerReport(workplace.dialogs, "Fehler bei SpeichernInGrafikDatenbank_err!");
  return reported(report, [&](Steps& step) {
    std::unique_ptr<dao::Recordset> scheibe, schuss;
    step([&] { scheibe = required(db).openRecordset("Grafik_Scheibe", dao::RecordsetType::Table); });
    step([&] { schuss = required(db).openRecordset("Grafik_Schuss", dao::RecordsetType::Table); });

    const PictureSums sums = sumsOf(shots);
    std::int32_t id = 0;
    const bool added = step([&] { required(scheibe).addNew(); });
    setValues(step, scheibe,
              {{"StartNr", caption.sStartnummer},
               {"Name", caption.sName},
               {"Verein", caption.sVerein},
               {"Wettkampf", sums.Wettkampf},
               {"ScheibenTyp", sums.ScheibenTyp},
               {"AnzScheiben", 1},
               {"Teilerfaktor", sums.Teilerfaktor},
               {"AnzEinschuesse", sums.AnzEinschuesse},
               {"Datum", workplace.clock.now()},
               {"ringeo", sums.ringeo},
               {"ringem", sums.ringem}});
    if (added) step([&] { id = longIn(*scheibe, "ID"); });
    step([&] { required(scheibe).update(); });

    for (const auto& shot : shots.objects()) {
      if (!shot->bAngewaehlt) continue;
      step([&] { required(schuss).addNew(); });
      setValues(step, schuss,
                {{"SchussNr", shot->TrefferNummer - 1},
                 {"Ringwert", shot->RingMitZehntel},
                 {"Teiler", shot->dblTeiler},
                 {"x", shot->X},
                 {"Y", shot->Y},
                 {"ScheibenID", id}});
      step([&] { required(schuss).update(); });
    }
  });
}

}  // namespace qk
