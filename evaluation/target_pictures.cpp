#include "evaluation/target_pictures.h"

#include <QDateTime>
#include <tuple>

#include "capture/row_values.h"
#include "platform/dao/database.h"
#include "platform/dao/sql/quote.h"

namespace qk {

namespace {

const char* const kTabelle = "Scheibenbilder";

struct Scheibe {
  qint32 ID = 0;
  QString Wettkampf;
  QDateTime Datum;
  double ringem = 0;
};

bool gleich(const QString& left, const QString& right) {
  return left.compare(right, Qt::CaseInsensitive) == 0;
}

/// A competition that has never stored a picture may lack their tables.
std::vector<Scheibe> scheibenVon(dao::Database& wettkampf, const QString& Startnummer) {
  std::vector<Scheibe> scheiben;
  if (!wettkampf.hasTable("Grafik_Scheibe") || !wettkampf.hasTable("Grafik_Schuss")) return scheiben;
  const auto rs =
      wettkampf.openRecordset("Select * from Grafik_Scheibe where StartNr = " + dao::sql::quoted(Startnummer),
                              dao::RecordsetType::Snapshot);
  for (; !rs->eof(); rs->moveNext())
    scheiben.push_back({longIn(*rs, "ID"), textIn(*rs, "Wettkampf"), rs->value("Datum").toDateTime(),
                        doubleIn(*rs, "ringem")});
  return scheiben;
}

const Scheibe* neueste(const std::vector<Scheibe>& scheiben, const QString& Disziplin) {
  const Scheibe* gefunden = nullptr;
  for (const Scheibe& scheibe : scheiben)
    if (gleich(scheibe.Wettkampf, Disziplin) &&
        (!gefunden || std::tie(gefunden->Datum, gefunden->ID) < std::tie(scheibe.Datum, scheibe.ID)))
      gefunden = &scheibe;
  return gefunden;
}

std::vector<Treffer> trefferAuf(dao::Database& wettkampf, qint32 lScheibenID) {
  std::vector<Treffer> treffer;
  const auto rs = wettkampf.openRecordset(
      "Select * from Grafik_Schuss where ScheibenID = " + QString::number(lScheibenID),
      dao::RecordsetType::Snapshot);
  for (; !rs->eof(); rs->moveNext())
    treffer.push_back({doubleIn(*rs, "x"), doubleIn(*rs, "Y"), doubleIn(*rs, "Ringwert")});
  return treffer;
}

void leereTabelle(dao::Database& druck) {
  if (druck.hasTable(kTabelle)) {
    druck.execute(QString("Delete * from ") + kTabelle);
    return;
  }
  dao::FieldDef ID{"ID", dao::FieldType::Long};
  ID.autoNumber = true;
  druck.createTable({kTabelle,
                     {ID,
                      {"Disziplin", dao::FieldType::Text},
                      {"Datum", dao::FieldType::Date},
                      {"Schuss", dao::FieldType::Long},
                      {"Ringe", dao::FieldType::Double},
                      {"Bild", dao::FieldType::LongBinary}},
                     {{"PrimaryKey", {"ID"}, true, true, true}}});
}

}  // namespace

void schreibeScheibenbilder(dao::Database& wettkampf, dao::Database& druck, const QString& Startnummer,
                            const QStringList& disziplinen) {
  leereTabelle(druck);
  const std::vector<Scheibe> scheiben = scheibenVon(wettkampf, Startnummer);
  const auto ziel = druck.openRecordset(kTabelle);
  QStringList gezeigt;
  for (const QString& Disziplin : disziplinen) {
    const Scheibe* scheibe = neueste(scheiben, Disziplin);
    if (!scheibe || gezeigt.contains(Disziplin, Qt::CaseInsensitive)) continue;
    gezeigt << Disziplin;
    const std::vector<Treffer> treffer = trefferAuf(wettkampf, scheibe->ID);
    ziel->addNew();
    ziel->setValue("Disziplin", Disziplin);
    if (scheibe->Datum.isValid()) ziel->setValue("Datum", scheibe->Datum);
    ziel->setValue("Schuss", static_cast<int>(treffer.size()));
    ziel->setValue("Ringe", scheibe->ringem);
    ziel->setValue("Bild", scheibenbild(treffer));
    ziel->update();
  }
}

}  // namespace qk
