// The side databases that the build makes: what the program opens them for is there.
#include <QTemporaryDir>
#include <QtTest>

#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/support/test_store.h"

using qk::dao::Database;
using qk::dao::FieldType;

namespace {

/// Those of the cash desk lie beside the program, the others in its system folder.
std::unique_ptr<Database> open(const QString& name) {
  const bool beside = QStringList{"ErgKasseDruck.mdb", "AwListenKasse.mdb"}.contains(name);
  return Database::open(QK_PROGRAM_FOLDER + QString(beside ? "" : "System/") + name, true);
}

QStringList indexFields(const qk::dao::TableDef& table, const QString& name) {
  for (const auto& index : table.indexes)
    if (index.name == name) return index.fields;
  return {};
}

}  // namespace

class TestTemplates : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void holdTheirTables_data();
  void holdTheirTables();
  void haveTheColumns_data();
  void haveTheColumns();
  void shotTableHasItsTypes();
  void openShotsHaveAnIndex();
  void standardKeysHaveFactors();
  void receiptHasOneCompetitionRow();
  void listsAreOfOneForm();
  void resultsTakeAHundredValues();
  void travelIntoACompetition_data();
  void travelIntoACompetition();
};

void TestTemplates::holdTheirTables_data() {
  QTest::addColumn<QString>("file");
  QTest::addColumn<QStringList>("tables");
  QTest::newRow("LeerSA") << "LeerSA.mdb"
                          << QStringList{"Haering_Daten", "Haering_Gruppen", "Haering_Gruppen_Disziplinen",
                                         "MeldeDisziplin"};
  QTest::newRow("ErgSchützen") << "ErgSchützen.mdb" << QStringList{"Stand"};
  QTest::newRow("Scheiben") << "Scheiben.mdb" << QStringList{"Scheiben"};
  QTest::newRow("QKUtil") << "QKUtil.mdb" << QStringList{"Stand"};
  QTest::newRow("ergschdruck") << "ergschdruck.mdb"
                               << QStringList{"EinzelErgebnisse", "Ergebnisse", "Schütze", "Wettkampf"};
  QTest::newRow("ErgKasseDruck") << "ErgKasseDruck.mdb"
                                 << QStringList{"Kasse", "Scheiben", "Schütze", "Schützengruppen",
                                                "Wettkampf"};
  QTest::newRow("AwListenKasse") << "AwListenKasse.mdb"
                                 << QStringList{"EinlagenListen", "Listen", "PreisgeldListen",
                                                "VortelListen"};
}

void TestTemplates::holdTheirTables() {
  QFETCH(QString, file);
  QFETCH(QStringList, tables);
  QStringList actual = open(file)->tableNames();
  actual.sort();
  tables.sort();
  QCOMPARE(actual, tables);
}

void TestTemplates::haveTheColumns_data() {
  QTest::addColumn<QString>("file");
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("columns");
  const auto row = [](const char* file, const char* table, const char* columns) {
    QTest::addRow("%s %s", file, table) << file << table << columns;
  };
  row("LeerSA.mdb", "Haering_Daten",
      "ID WettbewerbBezeichnung KlasseBezeichnung StandnummerOrt Liniennummer Schütze ProbeMatch Wertung "
      "Treffernummer RingwertmitZehntel Lagepfeil X Y Radius Winkel ZeitAbsolut ZeitRelativ Datum Wettbewerb "
      "Klasse Startnummer Waffe Teiler Teilerfaktor Key Verbucht Verworfen BuchungsZeitpunkt");
  row("LeerSA.mdb", "Haering_Gruppen", "ID GruppenName");
  row("LeerSA.mdb", "Haering_Gruppen_Disziplinen", "ID GruppenID GruppenName DisziplinName");
  row("LeerSA.mdb", "MeldeDisziplin",
      "ID MeldeDisziplin MeldeKZ ScheibenKZ Waffe Anzeigen Vorbelegen TeilerfaktorESA");
  row("ergschdruck.mdb", "EinzelErgebnisse",
      "Startnummer DisziId WTyp Art Ergebnis KlassenID ErgID Tabelle WkID Datum");
  row("ergschdruck.mdb", "Ergebnisse",
      "ID Wettkampf Disziplin Gruppe WTyp Startnummer DisziErgebnis Name Straße PLZ Ort Verein VID Anrede "
      "Telefon "
      "Geschlecht Gebdat AusweisNr Bank BLZ Kto BIC IBAN Mandatsreferenz KtoInhaber Klasse Mannschaft");
  row("ergschdruck.mdb", "Schütze",
      "Startnummer Name Straße PLZ Ort Verein VID Anrede Telefon Geschlecht Gebdat AusweisNr Bank BLZ Kto "
      "KtoInhaber Klasse Mannschaft disziplin");
  row("ergschdruck.mdb", "Wettkampf", "Bez1 Bez2 Ort EndText");
  row("ErgKasseDruck.mdb", "Wettkampf", "EndText Bez1 Bez2 Ort");
  row("ErgKasseDruck.mdb", "Schütze", "Startnummer Name GebDat Klasse Disziplin Verein Mannschaft");
  row("ErgKasseDruck.mdb", "Schützengruppen", "startnummer Bezeichnung");
  row("ErgKasseDruck.mdb", "Kasse", "Startnummer Bezeichnung Offen Betrag Datum");
  row("ErgKasseDruck.mdb", "Scheiben", "Startnummer Scheibennr Ausgabe Bezeichnung Zuordnung Typ");
}

void TestTemplates::haveTheColumns() {
  QFETCH(QString, file);
  QFETCH(QString, table);
  QFETCH(QString, columns);
  const qk::dao::TableDef def = open(file)->tableDef(table);
  for (const QString& column : columns.split(' ')) QVERIFY2(def.field(column), qPrintable(column));
  QVERIFY(def.primary());
}

void TestTemplates::shotTableHasItsTypes() {
  const qk::dao::TableDef shots = open("LeerSA.mdb")->tableDef("Haering_Daten");
  QVERIFY(shots.field("ID")->autoNumber);
  QCOMPARE(shots.primary()->fields, QStringList("ID"));
  for (const char* name : {"StandnummerOrt", "Liniennummer", "Wertung", "Treffernummer"})
    QVERIFY2(shots.field(name)->type == FieldType::Integer, name);
  for (const char* name : {"RingwertmitZehntel", "X", "Y", "Radius", "Winkel", "Teiler", "Teilerfaktor"})
    QVERIFY2(shots.field(name)->type == FieldType::Double, name);
  for (const char* name : {"Datum", "ZeitAbsolut", "ZeitRelativ", "Startnummer", "Key", "Schütze", "Waffe"})
    QVERIFY2(shots.field(name)->type == FieldType::Text, name);
  for (const char* name : {"Verbucht", "Verworfen"}) {
    QVERIFY2(shots.field(name)->type == FieldType::Boolean, name);
    QCOMPARE(shots.field(name)->preset.toInt(), 0);
  }
  QVERIFY(shots.field("BuchungsZeitpunkt")->type == FieldType::Date);
}

void TestTemplates::openShotsHaveAnIndex() {
  const auto leer = open("LeerSA.mdb");
  QCOMPARE(indexFields(leer->tableDef("Haering_Daten"), "OffeneSchuss"),
           QStringList({"Liniennummer", "Verbucht", "Verworfen", "Datum", "ZeitAbsolut"}));
  QCOMPARE(indexFields(leer->tableDef("Haering_Gruppen_Disziplinen"), "GruppenID"), QStringList("GruppenID"));
  QCOMPARE(indexFields(leer->tableDef("MeldeDisziplin"), "MeldeKZ"), QStringList("MeldeKZ"));
}

void TestTemplates::standardKeysHaveFactors() {
  const auto leer = open("LeerSA.mdb");
  for (const char* table : {"Haering_Daten", "Haering_Gruppen", "Haering_Gruppen_Disziplinen"})
    QVERIFY2(leer->openRecordset(table)->eof(), table);
  const auto keys = leer->openRecordset("Select * from MeldeDisziplin order by MeldeKZ");
  int different = 0;
  int count = 0;
  for (; !keys->eof(); keys->moveNext(), ++count) {
    QVERIFY(!keys->value("MeldeDisziplin").toString().isEmpty());
    QVERIFY(!keys->value("ScheibenKZ").toString().isEmpty());
    QVERIFY(keys->value("TeilerfaktorESA").toDouble() > 0);
    different += keys->value("TeilerfaktorESA").toDouble() != 1 ? 1 : 0;
  }
  QVERIFY(count >= 20);
  QVERIFY(different >= 5);
}

void TestTemplates::receiptHasOneCompetitionRow() {
  const auto rows = open("ErgKasseDruck.mdb")->openRecordset("Select * from Wettkampf");
  QVERIFY(!rows->eof());
  rows->moveLast();
  QCOMPARE(rows->recordCount(), 1);
}

void TestTemplates::listsAreOfOneForm() {
  const auto lists = open("AwListenKasse.mdb");
  for (const QString& table : lists->tableNames()) {
    const auto rows = lists->openRecordset(QString("Select * from %1 order by Sort").arg(table));
    QCOMPARE(rows->eof(), table != "Listen");  // the only one that the desk opens
    for (const char* column : {"ID", "Sort", "Beschreibung", "Datei", "Tageswahl"})
      QVERIFY2(rows->fieldPosition(column) >= 0, column);
    for (; !rows->eof(); rows->moveNext())
      QVERIFY2(QFile::exists(QString(QK_PROGRAM_FOLDER) + rows->value("Datei").toString()),
               qPrintable(rows->value("Datei").toString()));
  }
}

void TestTemplates::resultsTakeAHundredValues() {
  const qk::dao::TableDef results = open("ergschdruck.mdb")->tableDef("Ergebnisse");
  for (int i = 1; i <= 100; ++i)
    QVERIFY2(results.field(QString("E%1").arg(i)), qPrintable(QString::number(i)));
  QVERIFY(!results.field("E101"));
}

void TestTemplates::travelIntoACompetition_data() {
  QTest::addColumn<QString>("table");
  for (const char* table : {"Haering_Daten", "Haering_Gruppen", "Haering_Gruppen_Disziplinen"})
    QTest::newRow(table) << table;
}

void TestTemplates::travelIntoACompetition() {
  QFETCH(QString, table);
  const QTemporaryDir folder(QDir::tempPath() + "/vorlageXXXXXX");
  const QString path = folder.filePath("w.qkk");
  qk::test::prepareStore(path);
  qk::makeCompetition(path, {});
  const auto leer = open("LeerSA.mdb");
  const QString statement = QString("SELECT %1.* INTO %1 IN '%2' FROM %1").arg(table, path);
  leer->execute(statement);
  const qk::dao::TableDef original = leer->tableDef(table);
  const qk::dao::TableDef copy = Database::open(path)->tableDef(table);
  QCOMPARE(copy.fields.size(), original.fields.size());
  for (size_t i = 0; i < original.fields.size(); ++i) {
    QCOMPARE(copy.fields.at(i).name, original.fields.at(i).name);
    QVERIFY2(copy.fields.at(i).type == original.fields.at(i).type, qPrintable(original.fields.at(i).name));
  }
  QVERIFY(copy.field("ID")->autoNumber);
  try {
    leer->execute(statement);
    QFAIL("no error");
  } catch (const qk::Error& error) {
    QCOMPARE(error.number(), 3010);
  }
}

QTEST_GUILESS_MAIN(TestTemplates)
#include "test_templates.moc"
