// Tables, fields, indexes and stored queries as definitions.
#include <QtTest>

#include "tests/platform/dao/store_factory.h"

using namespace qk::dao;

class TestDefinitions : public QObject {
  Q_OBJECT

  std::unique_ptr<Store> store_;
  std::unique_ptr<Database> database_;

 private Q_SLOTS:
  void init() {
    store_ = newStore();
    database_ = store_->connect();
  }
  void cleanup() {
    database_.reset();
    store_.reset();
  }

  void aNewStoreIsEmpty() {
    QVERIFY(database_->tableNames().isEmpty());
    QVERIFY(database_->queryNames().isEmpty());
    QCOMPARE(errorOf([&] { database_->tableDef("Artikel"); }), 3078);
    QCOMPARE(errorOf([&] { database_->openRecordset("Artikel"); }), 3078);
  }

  void everyTypeComesBackAsItWas() {
    TableDef table{"Alles", {counter("ID")}, {{"PrimaryKey", {"ID"}, true, true, true}}};
    for (const auto& [name, type] : {std::pair("b", FieldType::Boolean), std::pair("y", FieldType::Byte),
                                     std::pair("i", FieldType::Integer), std::pair("l", FieldType::Long),
                                     std::pair("c", FieldType::Currency), std::pair("s", FieldType::Single),
                                     std::pair("d", FieldType::Double), std::pair("t", FieldType::Date),
                                     std::pair("m", FieldType::Memo), std::pair("o", FieldType::LongBinary)})
      table.fields.push_back({name, type});
    table.fields.push_back(text("x", 17));
    table.fields.push_back({.name = "p", .type = FieldType::Text, .size = 10, .preset = "o'k"});
    table.fields.push_back({.name = "q", .type = FieldType::Long, .preset = -5});
    table.fields.push_back(
        {.name = "r", .type = FieldType::Text, .required = true, .allowZeroLength = false});
    database_->createTable(table);
    const TableDef read = store_->connect()->tableDef("alles");
    QCOMPARE(read.name, "Alles");
    QCOMPARE(read.fields.size(), table.fields.size());
    for (size_t i = 0; i < table.fields.size(); ++i) {
      QCOMPARE(read.fields[i].name, table.fields[i].name);
      QCOMPARE(read.fields[i].type, table.fields[i].type);
      QCOMPARE(read.fields[i].autoNumber, table.fields[i].autoNumber);
      QCOMPARE(read.fields[i].allowZeroLength, table.fields[i].allowZeroLength);
    }
    QCOMPARE(read.field("x")->size, 17);
    QCOMPARE(read.field("p")->preset, QVariant("o'k"));
    QCOMPARE(read.field("q")->preset.toInt(), -5);
    QVERIFY(read.field("r")->required);
    QVERIFY(!read.field("x")->required);
  }

  void presetsAndRequiredFieldsHold() {
    database_->createTable(
        {"T",
         {counter("ID"),
          {.name = "p", .type = FieldType::Text, .size = 10, .preset = "neu"},
          {.name = "r", .type = FieldType::Text, .size = 10, .required = true, .allowZeroLength = false}},
         {}});
    const auto rows = database_->openRecordset("T");
    rows->addNew();
    QCOMPARE(rows->value("p").toString(), "neu");
    QCOMPARE(errorOf([&] { rows->update(); }), 3314);
    rows->setValue("r", "");
    QCOMPARE(errorOf([&] { rows->update(); }), 3315);
    rows->setValue("r", "x");
    rows->update();
    QCOMPARE(rows->value("p").toString(), "neu");
    QCOMPARE(errorOf([&] { database_->execute("UPDATE T SET r = Null"); }), 3314);
  }

  void namesFoldAsUnicode() {
    database_->createTable({"Bücher", {counter("ID"), text("Größe")}, {}});
    QVERIFY(database_->hasTable("BÜCHER"));
    QCOMPARE(errorOf([&] { database_->createTable({"BÜCHER", {text("x")}, {}}); }), 3010);
    const auto rows = database_->openRecordset("Select * from bÜCHER");
    rows->addNew();
    rows->setValue("GRÖßE", "L");
    rows->update();
    QCOMPARE(rows->value("grÖße").toString(), "L");
    QCOMPARE(errorOf([&] { database_->appendField("BÜCHER", text("GRÖßE")); }), 3191);
  }

  void aFieldIsAppendedOnce() {
    database_->createTable(articles());
    addArticle(*database_->openRecordset("Artikel"), "alt");
    const auto other = store_->connect();
    const auto plan = other->openRecordset("Select * from Artikel");
    QCOMPARE(plan->fieldCount(), 6);
    database_->appendField("Artikel", {"Faktor", FieldType::Double});
    database_->appendField("Artikel", {"Neu", FieldType::Boolean});
    QCOMPARE(errorOf([&] { database_->appendField("Artikel", {"FAKTOR", FieldType::Double}); }), 3191);
    QCOMPARE(errorOf([&] { database_->appendField("Fehlt", {"x", FieldType::Double}); }), 3078);
    const auto rows = other->openRecordset("Select * from Artikel");
    QCOMPARE(rows->fieldCount(), 8);
    QVERIFY(!rows->value("Faktor").isValid());
    QCOMPARE(rows->value("Neu").toInt(), 0);
  }

  void indexesKeepTheirNamesAndFlags() {
    database_->createTable(articles());
    database_->createTable({"Zweite", {number("a"), number("b")}, {}});
    database_->appendIndex("Artikel", {"Name", {"Name", "Menge"}, false, false, true});
    database_->appendIndex("Zweite", {"Name", {"a"}, false, true, false});
    database_->appendIndex("Zweite", {"PrimaryKey", {"a", "b"}, true, true, true});
    QCOMPARE(errorOf([&] {
               database_->appendIndex("Artikel", {"NAME", {"Name"}, false, false, false});
             }),
             3284);
    QCOMPARE(errorOf([&] {
               database_->appendIndex("Artikel", {"PrimaryKey", {"ID"}, true, true, true});
             }),
             3284);
    QCOMPARE(errorOf([&] { database_->appendIndex("Artikel", {"Haupt", {"ID"}, true, true, true}); }), 3283);
    QCOMPARE(errorOf([&] {
               database_->appendIndex("Artikel", {"x", {"fehlt"}, false, false, false});
             }),
             3265);

    const TableDef first = store_->connect()->tableDef("Artikel");
    QCOMPARE(first.indexes.size(), size_t(2));
    QCOMPARE(first.primary()->fields, QStringList({"ID"}));
    QCOMPARE(first.indexes[1].name, "Name");
    QCOMPARE(first.indexes[1].fields, QStringList({"Name", "Menge"}));
    QVERIFY(!first.indexes[1].unique && first.indexes[1].required);
    const TableDef second = store_->connect()->tableDef("Zweite");
    QCOMPARE(second.indexes.size(), size_t(2));
    QVERIFY(second.indexes[0].unique && !second.indexes[0].primary);
    QCOMPARE(second.primary()->fields, QStringList({"a", "b"}));
  }

  void aNamedPrimaryKeyKeepsItsName() {
    database_->createTable({"T", {text("a"), text("b")}, {{"Haupt", {"a", "b"}, true, true, true}}});
    QCOMPARE(store_->connect()->tableDef("T").primary()->name, "Haupt");
  }

  void aTableIsDroppedWithAllThatIsKnownOfIt() {
    database_->createTable(articles());
    database_->appendIndex("Artikel", {"Name", {"Name"}, false, false, true});
    addArticle(*database_->openRecordset("Artikel"), "x");
    database_->dropTable("ARTIKEL");
    QVERIFY(!database_->hasTable("Artikel"));
    QCOMPARE(errorOf([&] { database_->dropTable("Artikel"); }), 3078);
    database_->createTable(articles());
    QCOMPARE(database_->tableDef("Artikel").indexes.size(), size_t(1));
    QCOMPARE(addArticle(*database_->openRecordset("Artikel"), "x"), 1);
  }

  void refusesImpossibleTables() {
    QCOMPARE(errorOf([&] { database_->createTable({"T", {text("a"), text("A")}, {}}); }), 3191);
    QCOMPARE(errorOf([&] { database_->createTable({"", {text("a")}, {}}); }), 3125);
    QCOMPARE(errorOf([&] {
               database_->createTable({"T", {text("a")}, {{"i", {"b"}, false, false, false}}});
             }),
             3265);
  }

  void aStoredQueryIsReadLikeATable() {
    database_->createTable(articles());
    const auto rows = database_->openRecordset("Artikel");
    addArticle(*rows, "b", 2);
    addArticle(*rows, "a", 1);
    database_->createQuery("Übersicht",
                           "SELECT Artikel.ID, Artikel.Name AS [Artikel.Name], Artikel.Fertig, 'x' AS Art "
                           "FROM Artikel WHERE Menge > 0");
    QCOMPARE(database_->queryNames(), QStringList({"Übersicht"}));
    QCOMPARE(database_->tableNames(), QStringList({"Artikel"}));
    const auto other = store_->connect();
    const TableDef def = other->tableDef("übersicht");
    QCOMPARE(def.fields[1].name, "Artikel.Name");
    QCOMPARE(def.fields[1].type, FieldType::Text);
    QCOMPARE(def.fields[2].type, FieldType::Boolean);
    const auto query =
        other->openRecordset("Select * from Übersicht WHERE Artikel.Name like '*' order by Artikel.Name");
    QCOMPARE(walk(*query, "Artikel.Name"), QStringList({"a", "b"}));
    query->findFirst("Artikel.Name = 'b'");
    QVERIFY(!query->noMatch());
    QCOMPARE(query->value("ID").toInt(), 1);
    QCOMPARE(errorOf([&] { query->edit(); }), 3027);
    QCOMPARE(errorOf([&] { other->createQuery("ÜBERSICHT", "Select * from Artikel"); }), 3012);
    other->dropTable("Übersicht");
    QVERIFY(other->queryNames().isEmpty());
  }
};

QTEST_GUILESS_MAIN(TestDefinitions)
#include "test_definitions.moc"
