// A competition file holds what the competition application would put into it, and nothing of this program's.
#include <QCryptographicHash>
#include <QTemporaryDir>
#include <QtTest>

#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "tests/support/test_store.h"

using qk::dao::Database;
using qk::dao::FieldType;

namespace {

struct Expected {
  const char* table;
  const char* columns;
};

const Expected Inventory[] = {
    {"Wettkampf", "RefDatum Bezeichnung Bezeichnung2 Ort SortedDiszi SortedKombi KurzauswertungDiszi"},
    {"Schützen",
     "ID Startnummer Name VereinsID KlassenID lMannID Strasse PLZ Ort Anrede Telefon Geschlecht Gebdat "
     "AusweisNr "
     "Bank BLZ Kto KtoInhaber Vorname bVerein bGebDat email homepage SPOKey MeldeDisziID bGebKlasseManuell "
     "Bemerkungen StartnummerEinzel nStartnummerEinzel AmateurSchuetze BIC IBAN Mandatsreferenz"},
    {"Verein", "ID Name Kurzname"},
    {"Mannschaften", "ID MannName VereinID GruppenID"},
    {"MannschaftsGruppen", "MannGrpID Bezeichnung"},
    {"SchuetzenGruppen", "SchGrpID Bezeichnung"},
    {"SchuetzenGruppenZuordnung", "SchuetzeID GruppenID"},
    {"Schützenklassen", "ID Klasse KZ Alter_von Alter_bis Auflage Geschlecht"},
    {"Klassenwechsel", "wechseldatumneu"},
    {"Disziplin",
     "ID Name CmdIndex Ringe RingZentel Teiler Einzel RingSerie Ring05Zehntel Ring0XZehntel RingXXZehntel "
     "DisziSPO_ID AwSetupID bVerein bMaxVerein bGewVerein LMaxVerein LGewVerein bLGewTeiler LGewTeiler "
     "bVMannschaft bEMannschaft nEMannschaft bOhneKlassen bMaxWert dblMaxWert bVollMannschaft bGewErg "
     "nGewErg "
     "dblMaxSerieDSB bGewVorBel nGewVorBel DSBTeilerGrenze DSBTeilerGrenzWert bAktiveSchuetzen "
     "nAktiveSchuetzenAnzahl ZusatzTeiler bSPOMannschaft VortelAnzeige"},
    {"DisziplinKlasse", "DisziID KlasseID"},
    {"DisziplinWaffen", "DisziID WaffenID KZ"},
    {"Waffen", "ID Bezeichnung KZ"},
    {"Kombination_Name", "ID Kombinationsname CmdIndex"},
    {"Kombination_Diszi", "KombiID disziID"},
    {"MeldeDisziplin", "ID MeldeDisziplin MeldeKZ ScheibenKZ Waffe Anzeigen Vorbelegen"},
    {"Schuetzen_SPO_Anmeldungen", "SchuetzeID SPOID SPOKey MannID"},
    {"Schuss",
     "ID Art Ergebnis Ring x y ScheibenNr Startnummer MannID KlassenID DisziID VorMannID SchussXY SerieXY "
     "Datum "
     "DSBTeiler DSBRinge SPO_ID ScheibenNummern bManuell WTyp Betrag"},
    {"SchussSerien",
     "ID Ergebnis Startnummer MannID KlassenID DisziID VorMannID Anz Folge Einzelfolge Einzelfolge2 "
     "EinzelFolgeTeiler SerieXY Datum SPO_ID ScheibenNummern bManuell WTyp Betrag"},
    {"Grafik_Scheibe",
     "ID StartNr Name Verein Wettkampf ScheibenTyp AnzScheiben Teilerfaktor AnzEinschuesse Datum ringeo "
     "ringem"},
    {"Grafik_Schuss", "SchussNr Ringwert Teiler x Y ScheibenID"},
    {"Kasse_Verwaltung",
     "ID Platz Bezeichnung ArtikelNr Betrag Nachkauf Verein VorgabeOffen ArtikelEAN13 ArtikelCODE128 "
     "ArtikelCODE39"},
    {"Kasse_Eingang",
     "ID Startnummer KasseID Offen Betrag DatumEingang Gruppe VereinID MannID VereinIDBasis MannIDBasis"},
    {"Kasse_DisziKombi", "EinlageID DisziKZ DisziKombiID Anzahl"},
    {"Kasse_Schuetzenklassen", "KasseEinlageID SchuetzenklasseID"},
    {"ScheibenNummern",
     "ID Bezeichnung Scheibentyp Startnummer Endnummer AktuelleNummer VorgabeID DisziKombi Anzeigen "
     "PCAnzeige "
     "Sortierung"},
    {"Schuetzen_ScheibenNummern",
     "ID Startnummer Scheibennummer Kaufdatum Speicherdatum DisziKombiWahl DisziKombiID StapelID"},
    {"AuswertProfil",
     "ID Name Siegerliste Anzahl Teiler Titel Vorgabe SchEinmal RingTeiler Typ optPlatzAlle txtVon txtBis "
     "Letzter10er LetzterSchuss EntErg OptKlassen OptTage VListe LetzteStartNr OptWaffen optAlle mitAusweis "
     "inkGewSCH optVErg txtVErg optMVDiszi bVerein bMaxVerein lMaxVerein bGewVerein lGewVerein bVMannschaft "
     "bEMannschaft nEMannschaft bVollMannschaft nDurchschnitt bGewVorBel nGewVorBel GleichMV inkUnGewSCH "
     "Tageswertung nBestTageswertung Monatswertung nDurchschnittAnzahlErg nMinAnzahlErgAktiv nMinAnzahlErg "
     "Gleichheit PreisListenID nShowAuswert nShowKurzAuswertung"},
    {"AwProfilDiszi", "AwProfilID DisziID"},
    {"Auswert_Klassen", "AuswertID KlassenID"},
    {"Auswert_Waffen", "AuswertID WaffenID"},
    {"Auswert_Tage", "AuswertID"},
    {"Profile",
     "AwProfilID DisziID AuswertProfil_Name Disziplin_Name Disziplin_Teiler Typ Anzahl Vorgabe bGewErg "
     "nGewErg "
     "OptWaffen OptKlassen OptTage Tageswertung Monatswertung nBestTageswertung nMinAnzahlErgAktiv "
     "nMinAnzahlErg "
     "Ringe"},
};

int rowCount(Database& database, const QString& table) {
  const auto rows = database.openRecordset(QString("Select * from [%1]").arg(table));
  if (rows->eof()) return 0;
  rows->moveLast();
  return rows->recordCount();
}

QString textOf(const QVariant& value) {
  if (!value.isValid()) return "-";
  if (value.canConvert<qk::Money>()) return value.value<qk::Money>().toText();
  return value.toString();
}

/// A digest over all rows of all tables, in the order of the tables' names and of their keys.
QByteArray digest(Database& database) {
  QCryptographicHash hash(QCryptographicHash::Sha256);
  QStringList tables = database.tableNames();
  tables.sort();
  for (const QString& table : tables) {
    hash.addData(table.toUtf8());
    const auto rows = database.openRecordset(QString("Select * from [%1]").arg(table));
    for (; !rows->eof(); rows->moveNext())
      for (int i = 0; i < rows->fieldCount(); ++i) hash.addData((textOf(rows->value(i)) + "|").toUtf8());
  }
  return hash.result();
}

}  // namespace

class TestCompetition : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void holdsTheColumns_data();
  void holdsTheColumns();
  void holdsNothingElse();
  void leavesTheFactorToTheProgram();
  void flagsAreYesNo_data();
  void flagsAreYesNo();
  void numbersThatLookLikeFlagsStayNumbers();
  void hasOneRowOfTheCompetition();
  void keyLookUpsHaveAnIndex_data();
  void keyLookUpsHaveAnIndex();
  void listHasItsPositions();
  void listFindsByNameAndNumber();
  void refusesAnExistingFile();
  void demoHasRowsInEveryTable();
  void demoIsTheSameTwice();
  void demoHasFactors();
  void demoGoesOnCounting();

 private:
  QString path(const QString& name) const { return folder_.filePath(name); }
  /// Where a competition is to be made.
  QString place(const QString& name) const {
    qk::test::prepareStore(path(name));
    return path(name);
  }

  QTemporaryDir folder_;
  std::unique_ptr<Database> empty_;
  std::unique_ptr<Database> demo_;
};

void TestCompetition::initTestCase() {
  qk::makeCompetition(place("leer.qkk"), {"Frühjahrsschießen", "Öd", QDate(2026, 3, 14)});
  qk::makeDemoCompetition(place("demo.qkk"));
  empty_ = Database::open(path("leer.qkk"));
  demo_ = Database::open(path("demo.qkk"));
}

void TestCompetition::holdsTheColumns_data() {
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("columns");
  for (const Expected& expected : Inventory)
    QTest::newRow(expected.table) << expected.table << expected.columns;
}

void TestCompetition::holdsTheColumns() {
  QFETCH(QString, table);
  QFETCH(QString, columns);
  const qk::dao::TableDef def = empty_->tableDef(table);
  QCOMPARE(def.name, table);
  for (QString column : columns.split(' ')) {
    const auto* field = def.field(column.replace('_', column.startsWith("Alter_") ? ' ' : '_'));
    QVERIFY2(field, qPrintable(column));
  }
  QVERIFY(def.primary());
}

void TestCompetition::holdsNothingElse() {
  QStringList expected;
  for (const Expected& table : Inventory) expected << table.table;
  QStringList actual = empty_->tableNames();
  expected.sort();
  actual.sort();
  QCOMPARE(actual, expected);
  QCOMPARE(empty_->queryNames(), QStringList("Schützenliste"));
}

void TestCompetition::leavesTheFactorToTheProgram() {
  QVERIFY(!empty_->tableDef("MeldeDisziplin").field("TeilerfaktorESA"));
}

void TestCompetition::flagsAreYesNo_data() {
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("columns");
  QTest::newRow("Disziplin")
      << "Disziplin"
      << "Ringe RingZentel Teiler Einzel Ring05Zehntel Ring0XZehntel RingXXZehntel bVerein "
         "bMaxVerein bGewVerein bLGewTeiler bVMannschaft bEMannschaft bOhneKlassen bMaxWert "
         "bVollMannschaft bGewErg bGewVorBel DSBTeilerGrenze bAktiveSchuetzen bSPOMannschaft";
  QTest::newRow("MeldeDisziplin") << "MeldeDisziplin"
                                  << "Anzeigen Vorbelegen";
  QTest::newRow("Schützen") << "Schützen"
                            << "bGebKlasseManuell bVerein";
  QTest::newRow("Wettkampf") << "Wettkampf"
                             << "SortedDiszi SortedKombi KurzauswertungDiszi";
  QTest::newRow("Schuss") << "Schuss"
                          << "bManuell";
  QTest::newRow("SchussSerien") << "SchussSerien"
                                << "bManuell";
  QTest::newRow("Kasse_Eingang") << "Kasse_Eingang"
                                 << "Offen";
  QTest::newRow("Kasse_Verwaltung") << "Kasse_Verwaltung"
                                    << "VorgabeOffen";
}

void TestCompetition::flagsAreYesNo() {
  QFETCH(QString, table);
  QFETCH(QString, columns);
  const qk::dao::TableDef def = empty_->tableDef(table);
  for (const QString& column : columns.split(' '))
    QVERIFY2(def.field(column)->type == FieldType::Boolean, qPrintable(column));
}

void TestCompetition::numbersThatLookLikeFlagsStayNumbers() {
  QVERIFY(empty_->tableDef("Disziplin").field("ZusatzTeiler")->type == FieldType::Integer);
  QVERIFY(empty_->tableDef("Kasse_Verwaltung").field("Verein")->type == FieldType::Integer);
  QVERIFY(empty_->tableDef("ScheibenNummern").field("Anzeigen")->type == FieldType::Integer);
  QVERIFY(empty_->tableDef("Kasse_Verwaltung").field("Betrag")->type == FieldType::Currency);
}

void TestCompetition::hasOneRowOfTheCompetition() {
  QCOMPARE(rowCount(*empty_, "Wettkampf"), 1);
  const auto competition = empty_->openRecordset("Wettkampf");
  QCOMPARE(competition->value("RefDatum").toDate(), QDate(2026, 3, 14));
  QCOMPARE(competition->value("Bezeichnung").toString(), QString("Frühjahrsschießen"));
  QCOMPARE(competition->value("Ort").toString(), QString("Öd"));
  QCOMPARE(empty_->openRecordset("Klassenwechsel")->value("wechseldatumneu").toString(), QString("01.01."));
  for (const QString& table : empty_->tableNames())
    if (table != "Wettkampf" && table != "Klassenwechsel") QCOMPARE(rowCount(*empty_, table), 0);
}

void TestCompetition::keyLookUpsHaveAnIndex_data() {
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("column");
  const char* const lookUps[][2] = {{"Schützen", "Startnummer"},
                                    {"MeldeDisziplin", "MeldeKZ"},
                                    {"MeldeDisziplin", "ScheibenKZ"},
                                    {"DisziplinKlasse", "DisziID"},
                                    {"DisziplinWaffen", "DisziID"},
                                    {"DisziplinWaffen", "KZ"},
                                    {"Kombination_Diszi", "KombiID"},
                                    {"Schuetzen_SPO_Anmeldungen", "SchuetzeID"},
                                    {"Schuss", "Startnummer"},
                                    {"Schuss", "DisziID"},
                                    {"SchussSerien", "Startnummer"},
                                    {"SchussSerien", "DisziID"},
                                    {"Grafik_Schuss", "ScheibenID"},
                                    {"Kasse_Eingang", "Startnummer"},
                                    {"Kasse_Eingang", "KasseID"},
                                    {"Kasse_Eingang", "VereinID"},
                                    {"Kasse_Eingang", "MannID"},
                                    {"Kasse_DisziKombi", "EinlageID"},
                                    {"Kasse_Schuetzenklassen", "KasseEinlageID"},
                                    {"Kasse_Verwaltung", "ArtikelNr"},
                                    {"Schuetzen_ScheibenNummern", "Startnummer"},
                                    {"AwProfilDiszi", "AwProfilID"},
                                    {"Auswert_Klassen", "AuswertID"},
                                    {"Auswert_Waffen", "AuswertID"}};
  for (const auto& lookUp : lookUps) QTest::addRow("%s.%s", lookUp[0], lookUp[1]) << lookUp[0] << lookUp[1];
}

void TestCompetition::keyLookUpsHaveAnIndex() {
  QFETCH(QString, table);
  QFETCH(QString, column);
  const qk::dao::TableDef def = empty_->tableDef(table);
  const bool found = std::any_of(def.indexes.begin(), def.indexes.end(),
                                 [&column](const auto& index) { return index.fields.first() == column; });
  QVERIFY(found);
}

void TestCompetition::listHasItsPositions() {
  const auto list = demo_->openRecordset("Select * from Schützenliste order by val(Startnummer)");
  QCOMPARE(list->fieldDef(1).name, QString("Startnummer"));
  QCOMPARE(list->fieldDef(4).name, QString("Schützen.Name"));
  QCOMPARE(list->fieldDef(12).name, QString("GebDat"));
  QCOMPARE(list->fieldDef(25).name, QString("Verein.Name"));
  QCOMPARE(list->fieldDef(26).name, QString("MannName"));
  QCOMPARE(list->fieldDef(27).name, QString("Klasse"));
  QCOMPARE(list->fieldDef(29).name, QString("AusweisNr"));
  QCOMPARE(list->value(1).toString(), QString("7a"));
  list->moveLast();
  QCOMPARE(list->recordCount(), 60);
  QCOMPARE(list->value(1).toString(), QString("160"));
}

void TestCompetition::listFindsByNameAndNumber() {
  const auto byName = demo_->openRecordset(
      "Select * from Schützenliste WHERE Schützen.Name like '*öttl*' order by val(Startnummer)");
  QVERIFY(!byName->eof());
  QCOMPARE(byName->value("Startnummer").toString(), QString("101"));
  QCOMPARE(byName->value("Verein.Name").toString(), QString("Schützengilde Grünau 1876"));
  const auto cursor = demo_->openRecordset("Select * from Schützenliste");
  cursor->findFirst("Startnummer = '112'");
  QVERIFY(!cursor->noMatch());
  QCOMPARE(cursor->value("Schützen.Name").toString(), QString("O'Connor Séan"));
  QCOMPARE(cursor->value("GebDat").toString(), QString("30.04.1988"));
  QCOMPARE(cursor->value("VereinsID").toInt(), 0);
  QCOMPARE(cursor->value("lMannID").toInt(), 8);
  for (const char* name : {"ID", "KlassenID", "AusweisNr", "SPOKEY"})
    QVERIFY(cursor->fieldPosition(name) >= 0);
}

void TestCompetition::refusesAnExistingFile() {
  const QByteArray before = digest(*empty_);
  for (int attempt = 0; attempt < 2; ++attempt) {
    try {
      qk::makeCompetition(path("leer.qkk"), {});
      QFAIL("no error");
    } catch (const qk::Error& error) {
      QCOMPARE(error.number(), 3204);
    }
  }
  QCOMPARE(digest(*Database::open(path("leer.qkk"))), before);
}

void TestCompetition::demoHasRowsInEveryTable() {
  const QStringList filledByTheProgram = {"Schuss", "SchussSerien", "Grafik_Scheibe", "Grafik_Schuss",
                                          "Profile"};
  for (const QString& table : demo_->tableNames())
    QVERIFY2((rowCount(*demo_, table) > 0) != filledByTheProgram.contains(table), qPrintable(table));
  QCOMPARE(rowCount(*demo_, "Schützen"), 60);
  QCOMPARE(rowCount(*demo_, "Verein"), 6);
  const auto payments = demo_->openRecordset("Select * from Kasse_Eingang");
  for (; !payments->eof(); payments->moveNext())
    QVERIFY(payments->value("Betrag").value<qk::Money>() > qk::Money() &&
            payments->value("DatumEingang").isValid());
}

void TestCompetition::demoIsTheSameTwice() {
  qk::makeDemoCompetition(place("nochmal.qkk"));
  const auto again = Database::open(path("nochmal.qkk"));
  QCOMPARE(digest(*again), digest(*demo_));
  QVERIFY(digest(*again) != digest(*empty_));
}

void TestCompetition::demoHasFactors() {
  const auto keys = demo_->openRecordset("Select * from MeldeDisziplin where MeldeKZ = '2.10'");
  QCOMPARE(keys->value("TeilerfaktorESA").toDouble(), 2.5);
  QCOMPARE(keys->value("ScheibenKZ").toString(), QString("LP"));
  QVERIFY(!demo_->hasTable("Haering_Daten"));
}

void TestCompetition::demoGoesOnCounting() {
  const auto shooters = demo_->openRecordset("Select * from Verein");
  shooters->addNew();
  QVERIFY(shooters->value("ID").toInt() > 6);
  shooters->setValue("Name", "Nachzügler");
  shooters->update();
  QCOMPARE(rowCount(*demo_, "Verein"), 7);
}

QTEST_GUILESS_MAIN(TestCompetition)
#include "test_competition.moc"
