#include "tests/evaluation/shooting_day.h"

#include <QDir>
#include <QFile>

#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/numbers.h"
#include "platform/schema/schema_build.h"
#include "tests/support/test_store.h"

namespace qk::test {

namespace {

const char* const kRows = R"(
Zeilen Schützenklassen
  ID | Klasse
  7  | Herren I

Zeilen Verein
  ID | Name
  3  | Schützengilde Grünau

Zeilen Mannschaften
  ID | MannName
  5  | Grünau I

Zeilen MeldeDisziplin
  ID | MeldeDisziplin
  1  | LG

Zeilen Schützen
  ID | Startnummer | Name        | Strasse  | VereinsID | lMannID | KlassenID
  1  | 107         | Müller Jörg | Am Wall 3 | 3         | 5       | 7
  2  | 108         | Süß Benno   | Markt 1  | 0         | 0       | 0

Zeilen Schuetzen_SPO_Anmeldungen
  SchuetzeID | SPOID | MannID
  1          | 1     | 5

Zeilen Disziplin
  ID | Name      | Teiler | Ringe | bGewErg | nGewErg | bVerein
  1  | LG Teiler | ja     | nein  | ja      | 2       | ja
  2  | LG Serie  | nein   | ja    | nein    | 0       | nein

Zeilen DisziplinWaffen
  ID | DisziID | WaffenID | KZ
  9  | 1       | 1        | LG
  8  | 2       | 1        | LG

Zeilen AuswertProfil
  ID | Name  | Typ | Anzahl | Teiler | Vorgabe | OptTage | OptWaffen | OptKlassen | Tageswertung | nBestTageswertung | Monatswertung | nMinAnzahlErgAktiv | nMinAnzahlErg | nShowKurzAuswertung | bVerein
  1  | Pokal | 0   | 3      | ja     | 9,5     | 1       | 2         | 3          | ja           | 4                 | ja            | 5                  | 6             | -1                  | nein
  2  | Geheim | 0  | 3      | nein   |         | 0       | 0         | 0          | nein         | 0                 | nein          | 0                  | 0             | 0                   | nein
  3  | König | 2   | 0      | nein   |         | 1       | 0         | 0          | nein         | 0                 | nein          | 0                  | 0             | 1                   | nein

Zeilen AwProfilDiszi
  AwProfilID | DisziID
  1          | 1
  2          | 2
  3          | 1
  3          | 2

Zeilen Auswert_Waffen
  AuswertID | WaffenID
  1         | 1

Zeilen Auswert_Klassen
  AuswertID | KlassenID
  1         | 7

Zeilen Schuss
  ID | Startnummer | DisziID | Ergebnis | WTyp | Art | KlassenID | MannID | VorMannID | Datum
  11 | 107         | 1       | 12,3     | LG   | T   | 1          | 0      | 0         | 30.11.2026 10:00:00
  12 | 107         | 1       | 8,1      | LG   | T   | 1          | 0      | 0         | 29.11.2026 10:00:00
  13 | 108         | 1       | 4        | LG   | T   | 1          | 9      | 9         | 01.12.2026 09:00:00
  14 | 999         | 1       | 5        | LG   | T   | 4          | 4      | 4         | 01.11.2026 09:00:00

Zeilen SchussSerien
  ID | Startnummer | DisziID | Ergebnis | WTyp | KlassenID | MannID | VorMannID | Datum
  11 | 107         | 2       | 95       | LG   | 1         | 0      | 0         | 28.11.2026 10:00:00
)";

const StoreOriginal& original() {
  static const StoreOriginal made([](const QString& file) {
    makeCompetition(file, {});
    buildSchema(*dao::Database::open(file), parseSchema(kRows, "test"));
  });
  return made;
}

void makePrintTemplate(const QString& path) {
  QFile text(QK_SOURCE_DIR "/data/schema/ergschdruck.txt");
  if (!text.open(QIODevice::ReadOnly)) failTest("no text of the template");
  const Schema schema = parseSchema(QString::fromUtf8(text.readAll()), "ergschdruck.txt");
  createDatabase(path, [&](dao::Database& db) { buildSchema(db, schema); });
}

/// Made once for all tests of a program.
const QString& printTemplateOriginal() {
  static const QTemporaryDir folder;
  static const QString path = [] {
    makePrintTemplate(folder.filePath("vorlage"));
    return folder.filePath("vorlage");
  }();
  return path;
}

QString cell(const QVariant& value) {
  if (value.isNull()) return "Null";
  return value.typeId() == QMetaType::Double ? numberText(value.toDouble()) : value.toString();
}

}  // namespace

ShootingDay::ShootingDay() {
  QDir().mkpath(system());
  QFile::copy(printTemplateOriginal(), printTemplate());
  original().copyTo(path());
  wettkampf = dao::Database::open(path());
}

QStringList read(dao::Database& db, const QString& query, const QStringList& columns) {
  QStringList lines;
  for (const auto rs = db.openRecordset(query); !rs->eof(); rs->moveNext()) {
    QStringList cells;
    for (const QString& column : columns) cells << cell(rs->value(column));
    lines << cells.join('|');
  }
  return lines;
}

}  // namespace qk::test
