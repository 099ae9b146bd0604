// Changes that belong together.
#include <QtTest>
#include <set>

#include "platform/dao/changes.h"
#include "platform/runtime/money.h"
#include "tests/platform/dao/store_factory.h"

using namespace qk;
using namespace qk::dao;

class TestChanges : public QObject {
  Q_OBJECT

  std::unique_ptr<Store> store_;
  std::unique_ptr<Database> one_, two_;

  QStringList names(const QString& condition = {}) {
    const auto rows = two_->openRecordset("Select * from Artikel" + condition + " order by ID");
    return walk(*rows, "Name");
  }
  QVariant stored(qint64 key, const QString& column) {
    return two_->openRecordset(QString("Select * from Artikel where ID = %1").arg(key))->value(column);
  }
  /// What the row's columns hold now, where it isn't what was expected.
  static RowValues foundInstead(Changes& changes) {
    try {
      changes.write();
    } catch (const RowChanged& changed) {
      return changed.found();
    }
    return {};
  }

 private Q_SLOTS:
  void init() {
    store_ = newStore();
    one_ = store_->connect();
    one_->createTable(articles());
    two_ = store_->connect();
  }
  void cleanup() {
    one_.reset();
    two_.reset();
    store_.reset();
  }

  void nothingIsWrittenBefore() {
    Changes changes(*one_);
    QVERIFY(changes.isEmpty());
    changes.insert("Artikel", {{"Name", "Öl"}});
    QVERIFY(!changes.isEmpty());
    QCOMPARE(names(), QStringList());
    changes.write();
    QVERIFY(changes.isEmpty());
    QCOMPARE(names(), QStringList{"Öl"});
    changes.write();
    QCOMPARE(names(), QStringList{"Öl"});
  }

  void aFailureInTheMiddleLeavesNothing() {
    Changes changes(*one_);
    std::vector<qint64> keys;
    for (int i = 0; i < 1000; ++i) keys.push_back(changes.insert("Artikel", {{"Name", "x"}}));
    changes.insert("Artikel", {{"ID", keys[500]}, {"Name", "doppelt"}});
    for (int i = 0; i < 1000; ++i) changes.insert("Artikel", {{"Name", "y"}});
    QCOMPARE(errorOf([&] { changes.write(); }), 3022);
    QCOMPARE(names(), QStringList());
  }

  void allOfManyAreOneCommit() {
    Changes changes(*one_);
    std::set<qint64> keys;
    for (int i = 0; i < 3000; ++i) keys.insert(changes.insert("Artikel", {{"Name", QString::number(i)}}));
    QCOMPARE(keys.size(), size_t{3000});
    const qint64 before = one_->commitCount();
    changes.write();
    QCOMPARE(one_->commitCount(), before + 1);
    QCOMPARE(names().size(), 3000);
    QCOMPARE(stored(*keys.rbegin(), "Name").toString(), "2999");
  }

  /// Each reservation of numbers is a commit of its own.
  void manyNumbersCostFewCommits() {
    Changes changes(*one_);
    const qint64 before = one_->commitCount();
    for (int i = 0; i < 20000; ++i) changes.insert("Artikel", {{"Name", "x"}});
    QVERIFY2(one_->commitCount() - before < 40, qPrintable(QString::number(one_->commitCount() - before)));
  }

  void rowsAlikeShareTheirStatement() {
    QSet<QString> texts;
    store_->listen(*one_, [&](const QString& text) {
      if (text.startsWith("INSERT INTO \"Artikel\"") || text.startsWith("UPDATE \"Artikel\""))
        texts.insert(text);
    });
    Changes changes(*one_);
    for (int i = 0; i < 20; ++i) {
      const qint64 key = changes.insert("Artikel", {{"Menge", i}, {"Name", "x"}});
      changes.insert("Artikel", {{"Name", "x"}, {"Menge", i}});
      changes.update("Artikel", key, {{"Fertig", true}, {"Name", "y"}});
      changes.update("Artikel", key, {{"Name", "z"}, {"Fertig", true}});
    }
    changes.write();
    store_->listen(*one_, {});
    QCOMPARE(texts.size(), 2);
  }

  void aKeyIsKnownAtOnce() {
    one_->createTable(
        {"Los", {counter("ID"), number("Artikel")}, {{"PrimaryKey", {"ID"}, true, true, true}}});
    Changes changes(*one_);
    const qint64 article = changes.insert("Artikel", {{"Name", "Öl"}});
    QVERIFY(article > 0);
    const qint64 lot = changes.insert("Los", {{"Artikel", article}});
    changes.update("Artikel", article, {{"Menge", 7}});
    changes.write();
    QCOMPARE(stored(article, "Menge").toInt(), 7);
    const auto lots = two_->openRecordset("Los");
    QCOMPARE(lots->value("ID").toLongLong(), lot);
    QCOMPARE(lots->value("Artikel").toLongLong(), article);
  }

  void aGivenKeyStays() {
    Changes changes(*one_);
    QCOMPARE(changes.insert("Artikel", {{"id", 40}, {"Name", "vierzig"}}), 40);
    changes.write();
    QCOMPARE(stored(40, "Name").toString(), "vierzig");
    const auto rows = two_->openRecordset("Artikel");
    QVERIFY(addArticle(*rows, "danach") > 40);
  }

  void valuesTakeTheFormOfTheirColumns() {
    TableDef table = articles();
    table.name = "Waren";
    table.fields[2].preset = 12;
    one_->createTable(table);
    Changes changes(*one_);
    const QDateTime day(QDate(2026, 11, 20), QTime(10, 41, 7));
    const qint64 full = changes.insert("Waren", {{"Name", "ß"},
                                                 {"Menge", "3"},
                                                 {"Fertig", true},
                                                 {"Preis", "1573,45"},
                                                 {"Am", "20.11.2026 10:41:07"}});
    const qint64 bare = changes.insert("Waren", {{"NAME", "Ä"}, {"Preis", QVariant()}});
    changes.write();
    const auto row = [&](qint64 key) {
      return two_->openRecordset(QString("Select * from Waren where ID = %1").arg(key));
    };
    QCOMPARE(row(full)->value("Name").toString(), "ß");
    QCOMPARE(row(full)->value("Menge").toInt(), 3);
    QCOMPARE(row(full)->value("Fertig").toInt(), -1);
    QCOMPARE(row(full)->value("Preis").value<Money>().toText(), Money::fromDouble(1573.45).toText());
    QCOMPARE(row(full)->value("Am").toDateTime(), day);
    QCOMPARE(row(bare)->value("Name").toString(), "Ä");
    QCOMPARE(row(bare)->value("Menge").toInt(), 12);
    QCOMPARE(row(bare)->value("Fertig").toInt(), 0);
    QVERIFY(row(bare)->value("Preis").isNull());
    changes.update("Waren", full, {{"Fertig", "False"}, {"Am", QVariant()}, {"Preis", 2}});
    changes.write();
    QCOMPARE(row(full)->value("Fertig").toInt(), 0);
    QVERIFY(row(full)->value("Am").isNull());
    QCOMPARE(row(full)->value("Preis").value<Money>().toText(), Money::fromDouble(2).toText());
  }

  void whatDoesntFitIsToldAtOnce() {
    const auto rows = one_->openRecordset("Artikel");
    const int key = addArticle(*rows, "Öl");
    TableDef strict = articles();
    strict.name = "Streng";
    strict.fields[1].required = true;
    strict.fields[1].allowZeroLength = false;
    one_->createTable(strict);
    one_->createTable({"Schlüssellos", {text("Name")}, {{"PrimaryKey", {"Name"}, true, true, true}}});
    Changes changes(*one_);
    QCOMPARE(errorOf([&] { changes.insert("Artikel", {{"Menge", "viel"}}); }), 3421);
    QCOMPARE(errorOf([&] { changes.insert("Artikel", {{"Name", QString(51, 'x')}}); }), 3163);
    QCOMPARE(errorOf([&] { changes.insert("Artikel", {{"Farbe", "rot"}}); }), 3265);
    QCOMPARE(errorOf([&] { changes.insert("Streng", {{"Menge", 1}}); }), 3314);
    QCOMPARE(errorOf([&] { changes.insert("Streng", {{"Name", ""}}); }), 3315);
    QCOMPARE(errorOf([&] { changes.insert("Fehlt", {{"Name", "x"}}); }), 3078);
    QCOMPARE(errorOf([&] { changes.insert("Schlüssellos", {{"Name", "x"}}); }), 3251);
    QCOMPARE(errorOf([&] { changes.update("Artikel", key, {{"Menge", "viel"}}); }), 3421);
    QCOMPARE(errorOf([&] { changes.update("Artikel", key, {{"ID", 9}}); }), 3164);
    QCOMPARE(errorOf([&] { changes.execute("Select * from Artikel"); }), 3065);
    QCOMPARE(errorOf([&] { changes.execute("Update Artikel setze Menge"); }), 3075);
    QVERIFY(changes.isEmpty());
    try {
      changes.insert("Artikel", {{"Menge", "viel"}});
    } catch (const Error& error) {
      QVERIFY(error.description().endsWith("(Tabelle »Artikel«, Spalte »Menge«)"));
    }
  }

  /// Somebody else's change of another column stays.
  void onlyTheNamedColumnsAreWritten() {
    const auto rows = one_->openRecordset("Artikel");
    const int key = addArticle(*rows, "Öl", 1);
    Changes changes(*one_);
    changes.update("artikel", key, {{"name", "Fett"}});
    changes.update("Artikel", key, {});
    two_->execute("Update Artikel set Menge = 9");
    changes.write();
    QCOMPARE(stored(key, "Name").toString(), "Fett");
    QCOMPARE(stored(key, "Menge").toInt(), 9);
  }

  void aRowThatIsGoneCantBeChanged() {
    const auto rows = one_->openRecordset("Artikel");
    const int key = addArticle(*rows, "Öl");
    Changes changes(*one_);
    changes.insert("Artikel", {{"Name", "neu"}});
    changes.update("Artikel", key, {{"Name", "Fett"}});
    two_->execute("Delete * from Artikel");
    QCOMPARE(errorOf([&] { changes.write(); }), 3167);
    QCOMPARE(names(), QStringList());
  }

  void removing() {
    const auto rows = one_->openRecordset("Artikel");
    const int first = addArticle(*rows, "a"), second = addArticle(*rows, "b");
    addArticle(*rows, "c");
    Changes changes(*one_);
    changes.remove("Artikel", first);
    changes.remove("Artikel", second);
    two_->execute(QString("Delete * from Artikel where ID = %1").arg(second));
    changes.write();
    QCOMPARE(names(), QStringList{"c"});
  }

  void actionsRunInTheirPlace() {
    Changes changes(*one_);
    changes.insert("Artikel", {{"Name", "a"}, {"Menge", 1}});
    changes.execute("Update Artikel set Menge = Menge * 10");
    const qint64 later = changes.insert("Artikel", {{"Name", "b"}, {"Menge", 2}});
    changes.execute("Delete * from Artikel where Name = 'A'");
    changes.execute("Insert into Artikel (Name) values ('c')");
    changes.write();
    QCOMPARE(names(), QStringList({"b", "c"}));
    QCOMPARE(stored(later, "Menge").toInt(), 2);
  }

  void anActionIsUndoneWithTheRest() {
    const auto rows = one_->openRecordset("Artikel");
    addArticle(*rows, "a", 1);
    Changes changes(*one_);
    changes.execute("Update Artikel set Menge = 5");
    changes.update("Artikel", 99, {{"Menge", 1}});
    QCOMPARE(errorOf([&] { changes.write(); }), 3167);
    QCOMPARE(names(" where Menge = 1"), QStringList{"a"});
  }

  void whoeverComesSecondIsToldWhatTheFirstChanged() {
    const auto rows = one_->openRecordset("Artikel");
    const int key = addArticle(*rows, "Öl", 1), other = addArticle(*rows, "andere");
    Changes changes(*one_);
    changes.update("Artikel", other, {{"Menge", 3}});
    changes.expect("Artikel", key, {{"Name", "Öl"}, {"Menge", 1}, {"Fertig", false}});
    changes.update("Artikel", key, {{"Name", "Fett"}});
    two_->execute(QString("Update Artikel set Menge = 4, Fertig = True where ID = %1").arg(key));
    bool told = false;
    try {
      changes.write();
    } catch (const RowChanged& changed) {
      told = true;
      QCOMPARE(changed.number(), 3197);
      QCOMPARE(changed.table(), "Artikel");
      QCOMPARE(changed.key(), key);
      QCOMPARE(changed.found(), (RowValues{{"Menge", 4}, {"Fertig", -1}}));
    }
    QVERIFY(told);
    QCOMPARE(stored(key, "Name").toString(), "Öl");
    QCOMPARE(stored(other, "Menge").toInt(), 0);

    two_->execute(QString("Update Artikel set Menge = 1, Fertig = False where ID = %1").arg(key));
    changes.write();
    QCOMPARE(stored(key, "Name").toString(), "Fett");
    QCOMPARE(stored(other, "Menge").toInt(), 3);
  }

  void expectationsOfEveryKind() {
    const auto rows = one_->openRecordset("Artikel");
    rows->addNew();
    rows->setValue("Name", "");
    rows->setValue("Preis", "1,5");
    rows->setValue("Am", "20.11.2026");
    rows->update();
    rows->moveFirst();
    const int key = rows->value("ID").toInt();
    Changes changes(*one_);
    changes.expect("Artikel", key,
                   {{"Name", QVariant()}, {"Preis", 1.5}, {"Am", "20.11.2026"}, {"Menge", QVariant()}});
    changes.expect("Artikel", key, {{"Fertig", QVariant()}});
    changes.write();
    changes.expect("Artikel", key, {{"Name", " "}});
    QCOMPARE(foundInstead(changes).keys(), QStringList{"Name"});
    Changes letter(*one_);
    two_->execute("Update Artikel set Name = 'öl'");
    letter.expect("Artikel", key, {{"Name", "Öl"}});
    QCOMPARE(foundInstead(letter).value("Name").toString(), "öl");
    Changes money(*one_);
    money.expect("Artikel", key, {{"Preis", "1,51"}});
    QCOMPARE(foundInstead(money).keys(), QStringList{"Preis"});
    Changes gone(*one_);
    gone.expect("Artikel", key + 1, {{"Name", "x"}});
    QCOMPARE(errorOf([&] { gone.write(); }), 3167);
  }

  void aConditionIsAskedBeforeAnythingIsWritten() {
    Changes changes(*one_);
    bool met = false;
    int asked = 0;
    changes.insert("Artikel", {{"Name", "neu"}});
    changes.require([&] {
      ++asked;
      const auto rows = one_->openRecordset("Artikel");
      if (!rows->eof() || !met) throw Error(5, "noch nicht");
    });
    QCOMPARE(errorOf([&] { changes.write(); }), 5);
    QCOMPARE(names(), QStringList());
    met = true;
    changes.write();
    QCOMPARE(names(), QStringList{"neu"});
    QCOMPARE(asked, 2);
    changes.write();
    QCOMPARE(asked, 2);
  }

  /// What another desk stores between the condition and the commit would slip through: it has to wait.
  void aHeldTableIsntWrittenByOthersMeanwhile() {
    const auto rows = one_->openRecordset("Artikel");
    const int key = addArticle(*rows, "Öl");
    OpenOptions impatient;
    impatient.patience = 1;
    const auto other = Database::open(store_->path(), impatient);
    int refused = 0;
    Changes changes(*one_);
    changes.hold("Artikel");
    changes.require([&] {
      refused = errorOf([&] { other->execute("Insert into Artikel (Name) values ('dazwischen')"); });
    });
    changes.update("Artikel", key, {{"Name", "Fett"}});
    changes.write();
    QVERIFY(refused != 0);
    QCOMPARE(names(), QStringList({"Fett"}));
    other->execute("Insert into Artikel (Name) values ('danach')");
    QCOMPARE(names(), QStringList({"Fett", "danach"}));
  }

  void whatIsDroppedGivesItsNumbersBack() {
    qint64 first = 0;
    {
      Changes changes(*one_);
      first = changes.insert("Artikel", {{"Name", "a"}});
      changes.insert("Artikel", {{"Name", "b"}});
    }
    const auto rows = one_->openRecordset("Artikel");
    QCOMPARE(addArticle(*rows, "c"), static_cast<int>(first));
  }

  void whatFailedCanBeWrittenAgain() {
    const auto rows = two_->openRecordset("Artikel");
    addArticle(*rows, "im Weg");
    Changes changes(*one_);
    changes.insert("Artikel", {{"Name", "neu"}});
    changes.insert("Artikel", {{"ID", stored(names().size(), "ID")}, {"Name", "wieder da"}});
    QCOMPARE(errorOf([&] { changes.write(); }), 3022);
    QCOMPARE(names(), QStringList{"im Weg"});
    two_->execute("Delete * from Artikel");
    changes.write();
    QStringList both = names();
    both.sort();
    QCOMPARE(both, QStringList({"neu", "wieder da"}));
  }

  void aStoreThatIsOnlyReadIsntWritten() {
    const auto reader = Database::open(store_->path(), true);
    Changes changes(*reader);
    changes.execute("Delete * from Artikel");
    QCOMPARE(errorOf([&] { changes.write(); }), 3027);
  }
};

QTEST_GUILESS_MAIN(TestChanges)
#include "test_changes.moc"
