// The readable schema text: what it says, and where it is wrong.
#include <QTemporaryDir>
#include <QtTest>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/schema/schema_build.h"
#include "tests/support/test_store.h"

using qk::dao::FieldType;

namespace {

QString failure(const QString& text) {
  try {
    qk::parseSchema(text, "probe.txt");
  } catch (const qk::Error& error) {
    return error.number() == 5 ? error.description() : QString("Fehler %1").arg(error.number());
  }
  return {};
}

}  // namespace

class TestSchemaText : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void readsTypes();
  void readsFlags();
  void readsIndexes();
  void readsQueriesOverSeveralLines();
  void readsRows();
  void skipsCommentsAndBlankLines();
  void namesTheLine_data();
  void namesTheLine();
  void convertsCells_data();
  void convertsCells();
  void refusesCellsThatDontFit_data();
  void refusesCellsThatDontFit();
  void refusesUnknownRowColumn();
  void buildsWhatTheTextSays();
  void failureLeavesNoFile();
};

void TestSchemaText::readsTypes() {
  const qk::Schema schema = qk::parseSchema(
      "Tabelle Alles\n"
      "  ID Zähler\n  J Ja/Nein\n  B Byte\n  I Integer\n  L Long\n  S Single\n  D Double\n"
      "  W Währung\n  Z Datum\n  T Text 100\n  T2 Text\n  M Memo\n  X Binär\n",
      "probe.txt");
  const auto& fields = schema.tables.at(0).fields;
  const std::vector<FieldType> expected = {
      FieldType::Long,   FieldType::Boolean, FieldType::Byte,      FieldType::Integer, FieldType::Long,
      FieldType::Single, FieldType::Double,  FieldType::Currency,  FieldType::Date,    FieldType::Text,
      FieldType::Text,   FieldType::Memo,    FieldType::LongBinary};
  QCOMPARE(fields.size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) QCOMPARE(fields.at(i).type, expected.at(i));
  QVERIFY(fields.at(0).autoNumber);
  QVERIFY(!fields.at(4).autoNumber);
  QCOMPARE(fields.at(9).size, 100);
  QCOMPARE(fields.at(10).size, 0);
}

void TestSchemaText::readsFlags() {
  const qk::Schema schema = qk::parseSchema(
      "Tabelle T\n  [Alter von] Integer Vorgabe 3\n  A Text 10 Pflicht nichtleer\n  B Ja/Nein Vorgabe ja\n"
      "  C Text Vorgabe \"\"\n  D Long\n",
      "probe.txt");
  const auto& fields = schema.tables.at(0).fields;
  QCOMPARE(fields.at(0).name, QString("Alter von"));
  QCOMPARE(fields.at(0).preset, QVariant(3));
  QVERIFY(fields.at(1).required);
  QVERIFY(!fields.at(1).allowZeroLength);
  QCOMPARE(fields.at(2).preset, QVariant(-1));
  QCOMPARE(fields.at(3).preset, QVariant(QString("")));
  QVERIFY(!fields.at(4).preset.isValid());
  QVERIFY(!fields.at(4).required);
  QVERIFY(fields.at(4).allowZeroLength);
}

void TestSchemaText::readsIndexes() {
  const qk::Schema schema = qk::parseSchema(
      "Tabelle T\n  ID Zähler\n  [Alter von] Integer\n  B Text\n  Index PrimaryKey primär ID\n"
      "  Index Alter [Alter von], B\n  Index Eins eindeutig b\n",
      "probe.txt");
  const auto& indexes = schema.tables.at(0).indexes;
  QCOMPARE(indexes.size(), size_t{3});
  QVERIFY(indexes.at(0).primary && indexes.at(0).unique && indexes.at(0).required);
  QCOMPARE(indexes.at(1).fields, QStringList({"Alter von", "B"}));
  QVERIFY(!indexes.at(1).unique);
  QVERIFY(indexes.at(2).unique && !indexes.at(2).primary);
  QCOMPARE(indexes.at(2).fields, QStringList({"B"}));
}

void TestSchemaText::readsQueriesOverSeveralLines() {
  const qk::Schema schema = qk::parseSchema("Abfrage Liste\n  SELECT a\n  FROM b\n", "probe.txt");
  QCOMPARE(schema.queries.at(0).name, QString("Liste"));
  QCOMPARE(schema.queries.at(0).text, QString("SELECT a FROM b"));
}

void TestSchemaText::readsRows() {
  const qk::Schema schema = qk::parseSchema("Zeilen T\n  ID | Name\n  1 | Größl Resi\n  2 |\n", "probe.txt");
  const qk::RowSection& rows = schema.rows.at(0);
  QCOMPARE(rows.columns, QStringList({"ID", "Name"}));
  QCOMPARE(rows.rows.size(), size_t{2});
  QCOMPARE(rows.rows.at(0).cells, QStringList({"1", "Größl Resi"}));
  QCOMPARE(rows.rows.at(1).cells, QStringList({"2", ""}));
  QCOMPARE(rows.rows.at(1).line, 4);
}

void TestSchemaText::skipsCommentsAndBlankLines() {
  const qk::Schema schema = qk::parseSchema("# Kopf\n\nTabelle T\n  # innen\n  ID Zähler\n\n", "probe.txt");
  QCOMPARE(schema.tables.at(0).fields.size(), size_t{1});
}

void TestSchemaText::namesTheLine_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<QString>("message");
  QTest::newRow("keyword") << "Tafel T\n"
                           << "probe.txt:1: unbekanntes Schlüsselwort »Tafel«";
  QTest::newRow("no name") << "\nTabelle\n"
                           << "probe.txt:2: erwartet wird ein Schlüsselwort und ein Name";
  QTest::newRow("orphan") << "  ID Zähler\n"
                          << "probe.txt:1: eingerückte Zeile ohne Abschnitt";
  QTest::newRow("type") << "Tabelle T\n  ID Zahl\n"
                        << "probe.txt:2: unbekannter Typ »Zahl«";
  QTest::newRow("size") << "Tabelle T\n  A Text 300\n"
                        << "probe.txt:2: ein Text hat 1 bis 255 Zeichen";
  QTest::newRow("tail") << "Tabelle T\n  A Long bald\n"
                        << "probe.txt:2: unerwartet: »bald«";
  QTest::newRow("no preset") << "Tabelle T\n  A Long Vorgabe\n"
                             << "probe.txt:2: hinter »Vorgabe« fehlt der Wert";
  QTest::newRow("twice") << "Tabelle T\n  A Long\n  a Long\n"
                         << "probe.txt:3: Spalte »a« steht schon da";
  QTest::newRow("table twice") << "Tabelle T\n  A Long\nTabelle t\n"
                               << "probe.txt:3: Tabelle »t« steht schon da";
  QTest::newRow("index column") << "Tabelle T\n  A Long\n  Index I B\n"
                                << "probe.txt:3: Index »I«: keine Spalte »B«";
  QTest::newRow("index twice") << "Tabelle T\n  A Long\n  Index I A\n  Index i A\n"
                               << "probe.txt:4: Index »i« steht schon da";
  QTest::newRow("empty table") << "Tabelle T\n\nTabelle U\n  A Long\n"
                               << "probe.txt:1: der Abschnitt ist leer";
  QTest::newRow("empty query") << "Abfrage Q\n"
                               << "probe.txt:1: der Abschnitt ist leer";
  QTest::newRow("row length") << "Zeilen T\n  A | B\n  1\n"
                              << "probe.txt:3: 1 Werte für 2 Spalten";
}

void TestSchemaText::namesTheLine() {
  QFETCH(QString, text);
  QFETCH(QString, message);
  QCOMPARE(failure(text), message);
}

void TestSchemaText::convertsCells_data() {
  QTest::addColumn<int>("type");
  QTest::addColumn<QString>("cell");
  QTest::addColumn<QVariant>("value");
  QTest::newRow("null") << int(FieldType::Text) << "" << QVariant();
  QTest::newRow("empty text") << int(FieldType::Text) << "\"\"" << QVariant(QString(""));
  QTest::newRow("text") << int(FieldType::Memo) << "Öd" << QVariant(QString("Öd"));
  QTest::newRow("yes") << int(FieldType::Boolean) << "ja" << QVariant(-1);
  QTest::newRow("no") << int(FieldType::Boolean) << "nein" << QVariant(0);
  QTest::newRow("integer") << int(FieldType::Integer) << "-1" << QVariant(-1);
  QTest::newRow("long") << int(FieldType::Long) << "70000" << QVariant(70000);
  QTest::newRow("double") << int(FieldType::Double) << "2,5" << QVariant(2.5);
  QTest::newRow("money") << int(FieldType::Currency) << "3,5"
                         << QVariant::fromValue(qk::Money::fromUnits(35000));
  QTest::newRow("date") << int(FieldType::Date) << "01.07.2026"
                        << QVariant(QDateTime(QDate(2026, 7, 1), QTime(0, 0)));
}

void TestSchemaText::convertsCells() {
  QFETCH(int, type);
  QFETCH(QString, cell);
  QFETCH(QVariant, value);
  const QVariant actual = qk::cellValue(cell, {"S", static_cast<FieldType>(type)}, "probe.txt", 7);
  QCOMPARE(actual.isValid(), value.isValid());
  QCOMPARE(actual, value);
}

void TestSchemaText::refusesCellsThatDontFit_data() {
  QTest::addColumn<int>("type");
  QTest::addColumn<QString>("cell");
  QTest::newRow("yes/no") << int(FieldType::Boolean) << "1";
  QTest::newRow("point") << int(FieldType::Double) << "2.5";
  QTest::newRow("word") << int(FieldType::Long) << "viel";
  QTest::newRow("16 bit") << int(FieldType::Integer) << "70000";
  QTest::newRow("date") << int(FieldType::Date) << "31.02.2026";
}

void TestSchemaText::refusesCellsThatDontFit() {
  QFETCH(int, type);
  QFETCH(QString, cell);
  try {
    qk::cellValue(cell, {"S", static_cast<FieldType>(type)}, "probe.txt", 7);
    QFAIL("no error");
  } catch (const qk::Error& error) {
    QCOMPARE(error.number(), 5);
    QVERIFY2(error.description().startsWith("probe.txt:7: Spalte »S«, Wert »" + cell + "«: "),
             qPrintable(error.description()));
  }
}

void TestSchemaText::refusesUnknownRowColumn() {
  const qk::Schema schema = qk::parseSchema("Tabelle T\n  A Long\nZeilen T\n  B\n  1\n", "probe.txt");
  try {
    qk::typedRows(schema.rows.at(0), schema.tables.at(0), schema.source);
    QFAIL("no error");
  } catch (const qk::Error& error) {
    QCOMPARE(error.description(), QString("probe.txt:3: Zeilen T: keine Spalte »B«"));
  }
}

void TestSchemaText::buildsWhatTheTextSays() {
  const QTemporaryDir folder;
  const qk::Schema schema = qk::parseSchema(
      "Tabelle T\n  ID Zähler\n  Name Text 20\n  Index PrimaryKey primär ID\n  Index Name Name\n"
      "Abfrage Namen\n  SELECT T.Name AS [T.Name] FROM T\n"
      "Zeilen T\n  ID | Name\n  7 | Öd\n  9 |\n",
      "probe.txt");
  qk::test::prepareStore(folder.filePath("t"));
  qk::createDatabase(folder.filePath("t"), [&](qk::dao::Database& db) { qk::buildSchema(db, schema); });
  const auto database = qk::dao::Database::open(folder.filePath("t"));
  QCOMPARE(database->tableDef("T").indexes.size(), size_t{2});
  const auto rows = database->openRecordset("Select * from T order by ID");
  QCOMPARE(rows->value("ID").toInt(), 7);
  rows->moveNext();
  QCOMPARE(rows->value("ID").toInt(), 9);
  QVERIFY(!rows->value("Name").isValid());
  const auto names = database->openRecordset("Select * from Namen");
  QCOMPARE(names->value("T.Name").toString(), QString("Öd"));
}

void TestSchemaText::failureLeavesNoFile() {
  const QTemporaryDir folder;
  const qk::Schema schema = qk::parseSchema("Tabelle T\n  A Long\nZeilen T\n  A\n  viel\n", "probe.txt");
  try {
    qk::createDatabase(folder.filePath("t"), [&](qk::dao::Database& db) { qk::buildSchema(db, schema); });
    QFAIL("no error");
  } catch (const qk::Error& error) {
    QCOMPARE(error.number(), 5);
  }
  QVERIFY(QDir(folder.path()).isEmpty(QDir::Files));
}

QTEST_GUILESS_MAIN(TestSchemaText)
#include "test_schema_text.moc"
