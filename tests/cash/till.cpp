#include "tests/cash/till.h"

#include <QDir>
#include <QFile>
#include <functional>

#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/schema/schema_build.h"
#include "tests/support/test_store.h"

namespace qk::test {

namespace {

const char* const kRows = R"(
Zeilen Schützenklassen
  ID | Klasse          | KZ   | Alter von | Alter bis | Geschlecht
  1  | Schüler         | SchM | 0         | 14        | 1
  7  | Herren I        | H1   | 21        | 60        | 1

Zeilen Verein
  ID | Name                | Kurzname
  1  | Schützengilde Grünau | SG Grünau

Zeilen MannschaftsGruppen
  MannGrpID | Bezeichnung
  1         | Luftgewehr

Zeilen Mannschaften
  ID | MannName  | VereinID | GruppenID
  1  | Grünau I  | 1        | 1
  2  | Grünau II | 1        | 0
  3  | Pokal     | 0        | 0

Zeilen MeldeDisziplin
  ID | MeldeDisziplin
  1  | LG
  2  | LP

Zeilen Schützen
  ID | Startnummer | Name        | Geschlecht | Gebdat     | VereinsID | lMannID | KlassenID | AusweisNr
  1  | 107         | Müller Jörg | M          | 14.05.1980 | 1         | 1       | 7         | 100107
  2  | 108         | Süß Benno   | M          | 01.02.1981 | 0         | 0       | 7         | 100108
  3  | 5.1         | Öttl Toni   | M          | 01.02.1982 | 0         | 0       | 7         | 100109
  4  | 210         | Jäger Luis  | M          | 01.06.2016 | 0         | 0       | 1         | 100110

Zeilen Schuetzen_SPO_Anmeldungen
  SchuetzeID | SPOID | SPOKey | MannID
  3          | 1     | 1.10   | 1
  3          | 2     | 2.10   | 2
  1          | 1     | 1.10   | 0

Zeilen Kasse_Verwaltung
  ID | Platz | Bezeichnung    | ArtikelNr | Betrag | Nachkauf | Verein | VorgabeOffen
  1  | 1     | Startgeld      | 100       | 15     | 1        | 0      | nein
  2  | 2     | Nachkauf Serie | 200       | 3,5    | 0        | 0      | nein
  3  | 3     | Teiler         | 300       | 5      | 2        | 0      | nein
  4  | 4     | Jugendpaket    | 500       | 8      | 0        | 0      | nein
  5  | 5     | Festabend      |           | 12,5   | 0        | 0      | ja
  6  | 6     | Spende         |           | 0      | 0        | 0      | nein
  7  | 7     | Verzehr        | 800       | 0      | 0        | 0      | nein
  10 | 1     | Vereinsbeitrag | 900       | 50     | 0        | -1     | nein

Zeilen Kasse_Schuetzenklassen
  KasseEinlageID | SchuetzenklasseID
  4              | 1
  4              | 2
)";

const char* const kDisciplines = R"(
Zeilen Disziplin
  ID | Name       | CmdIndex
  1  | LG Meister | 2
  2  | LG Glück   | 1

Zeilen Kombination_Name
  ID | Kombinationsname | CmdIndex
  1  | Pokal            | 1
)";

const char* const kStacks = R"(
Zeilen ScheibenNummern
  ID | Bezeichnung | Scheibentyp | Startnummer | Endnummer | AktuelleNummer | VorgabeID | DisziKombi | Anzeigen | PCAnzeige | Sortierung
  1  | Zehner      | LG          | 1           | 100       | 10             | 1         | 0          | 1        |           | 4
  2  | Pokale      | LG          | 101         | 200       | 150            | 1         | 1          | 1        |           | 3
  3  | Nur B       | LP          | 201         | 300       | 220            | 0         | 0          | 1        | AB        | 2
  4  | Frei        | LP          | 301         | 400       | 310            | 0         | 0          | 1        |           | 1
  5  | Weg         | LP          | 1           | 900       | 1              | 0         | 0          | 0        |           | 5
)";

const StoreOriginal& original() {
  static const StoreOriginal made([](const QString& file) {
    makeCompetition(file, {});
    buildSchema(*dao::Database::open(file), parseSchema(kRows, "till"));
  });
  return made;
}

/// What a box says of a failure.
QString sayingOf(const std::function<void()>& act) {
  try {
    act();
  } catch (const Error& error) {
    return "Fehler: " + QString::number(error.number()) + " - " + error.description();
  }
  failTest("nothing failed");
  return {};
}

QString cellText(const QVariant& value) {
  if (value.isNull()) return "Null";
  if (value.typeId() == QMetaType::QDateTime) return dateText(value.toDateTime());
  if (value.canConvert<Money>()) return value.value<Money>().toText();
  return value.toString();
}

}  // namespace

void makeReceiptTemplate(const QString& path) {
  QFile text(QK_SOURCE_DIR "/data/schema/ErgKasseDruck.txt");
  if (!text.open(QIODevice::ReadOnly)) failTest("no text of the template");
  const Schema schema = parseSchema(QString::fromUtf8(text.readAll()), "ErgKasseDruck.txt");
  createDatabase(path, [&](dao::Database& db) { buildSchema(db, schema); });
}

Till::Till(Dialogs* real) : real_(real) {
  original().copyTo(competition());
  global.sWettkampf = competition();
  global.RefDatum = QDate(2026, 1, 1);
}

std::unique_ptr<dao::Database> Till::store() const {
  return dao::Database::open(competition());
}

void Till::fill(const QString& text) {
  buildSchema(*store(), parseSchema(text, "test"));
}

void Till::fillDisciplines() {
  fill(kDisciplines);
}

void Till::fillStacks() {
  fillDisciplines();
  fill(kStacks);
  // The text columns of the rows above are empty, not Null.
  execute("UPDATE ScheibenNummern SET PCAnzeige = '' WHERE ID <> 3");
}

void Till::execute(const QString& query) {
  store()->execute(query);
}

void Till::deliver() const {
  const QDir delivered(QK_PROGRAM_FOLDER);
  for (const QString& name : delivered.entryList({"*.mdb", "*.rpt"}, QDir::Files))
    if (!QFile::copy(delivered.filePath(name), path("programm/" + name))) failTest("not delivered: " + name);
}

QStringList Till::read(const QString& query, const QStringList& columns) const {
  QStringList lines;
  const auto db = store();
  for (const auto rs = db->openRecordset(query); !rs->eof(); rs->moveNext()) {
    QStringList cells;
    for (const QString& column : columns) cells += cellText(rs->value(column));
    lines += cells.join('|');
  }
  return lines;
}

QStringList Till::rows(const TextTable& table) {
  QStringList lines;
  for (int row = 1; row < table.rows(); ++row) {
    QStringList cells;
    for (int column = CashColumn::Bezeichnung; column < table.columns(); ++column)
      cells += table.text(row, column);
    lines += cells.join('|');
  }
  return lines;
}

QString Till::failureOf(const QString& query) const {
  return sayingOf([&] { store()->openRecordset(query)->eof(); });
}

QString Till::failureOfAct(const QString& statement) const {
  return sayingOf([&] { store()->execute(statement); });
}

QString Till::failureOfOpening(const QString& path) {
  return sayingOf([&] { dao::Database::open(path, true); });
}

QString Till::refuse(StoreAct act, const QString& column, int value) {
  test::refuse(competition(), act, "Kasse_Eingang", column, value);
  const QString where = QString("%1 = %2").arg(column).arg(value);
  return sayingOf([&] {
    switch (act) {
      case StoreAct::Insert:
        execute(QString("INSERT INTO Kasse_Eingang (%1) VALUES (%2)").arg(column).arg(value));
        break;
      case StoreAct::Update:
        execute("UPDATE Kasse_Eingang SET Gruppe = 'x' WHERE " + where);
        break;
      case StoreAct::Delete:
        execute("DELETE * FROM Kasse_Eingang WHERE " + where);
        break;
    }
  });
}

}  // namespace qk::test
