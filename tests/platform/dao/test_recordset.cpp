// Recordsets: places, changes, look-ups, bookmarks.
#include <QtTest>

#include "tests/platform/dao/store_factory.h"

using namespace qk::dao;

class TestRecordset : public QObject {
  Q_OBJECT

  std::unique_ptr<Store> store_;
  std::unique_ptr<Database> database_;

  std::unique_ptr<Recordset> all() { return database_->openRecordset("Select * from Artikel"); }
  void fill(int count) {
    const auto rows = all();
    for (int i = 1; i <= count; ++i) addArticle(*rows, "N" + QString::number(i), i);
  }

 private Q_SLOTS:
  void init() {
    store_ = newStore();
    database_ = store_->connect();
    database_->createTable(articles());
  }
  void cleanup() {
    database_.reset();
    store_.reset();
  }

  void anEmptyOneStandsNowhere() {
    const auto rows = all();
    QVERIFY(rows->bof() && rows->eof());
    QCOMPARE(rows->recordCount(), 0);
    QCOMPARE(errorOf([&] { rows->moveFirst(); }), 3021);
    QCOMPARE(errorOf([&] { rows->moveLast(); }), 3021);
    QCOMPARE(errorOf([&] { rows->moveNext(); }), 3021);
    QCOMPARE(errorOf([&] { rows->movePrevious(); }), 3021);
    QCOMPARE(errorOf([&] { rows->value("Name"); }), 3021);
    QCOMPARE(errorOf([&] { rows->edit(); }), 3021);
    QCOMPARE(errorOf([&] { rows->remove(); }), 3021);
    QCOMPARE(errorOf([&] { rows->bookmark(); }), 3021);
  }

  void walksForwardsAndBackwards() {
    fill(3);
    const auto rows = all();
    QVERIFY(!rows->bof() && !rows->eof());
    QCOMPARE(rows->value("Name").toString(), "N1");
    rows->moveNext();
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "N3");
    rows->moveNext();
    QVERIFY(rows->eof() && !rows->bof());
    QCOMPARE(errorOf([&] { rows->value("Name"); }), 3021);
    QCOMPARE(errorOf([&] { rows->moveNext(); }), 3021);
    rows->movePrevious();
    QCOMPARE(rows->value("Name").toString(), "N3");
    rows->moveFirst();
    rows->movePrevious();
    QVERIFY(rows->bof() && !rows->eof());
    QCOMPARE(errorOf([&] { rows->movePrevious(); }), 3021);
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "N1");
    rows->moveLast();
    QCOMPARE(rows->value("Name").toString(), "N3");
  }

  void countsWhatWasVisited() {
    fill(5);
    const auto rows = all();
    QCOMPARE(rows->recordCount(), 1);
    rows->moveNext();
    QCOMPARE(rows->recordCount(), 2);
    rows->moveFirst();
    QCOMPARE(rows->recordCount(), 2);
    rows->moveLast();
    QCOMPARE(rows->recordCount(), 5);
    rows->remove();
    QCOMPARE(rows->recordCount(), 4);
    addArticle(*rows, "neu");
    QCOMPARE(rows->recordCount(), 5);
  }

  void afterAddingTheFormerRowIsCurrentAndTheNewOneLast() {
    fill(3);
    const auto rows = database_->openRecordset("Select * from Artikel order by Name");
    rows->moveNext();
    addArticle(*rows, "A0");
    QCOMPARE(rows->value("Name").toString(), "N2");
    QCOMPARE(walk(*rows, "Name"), QStringList({"N1", "N2", "N3", "A0"}));
    rows->requery();
    QCOMPARE(walk(*rows, "Name"), QStringList({"A0", "N1", "N2", "N3"}));
  }

  void addsBeforeAnyoneHasLooked() {
    fill(2);
    const auto rows = all();
    addArticle(*rows, "neu");
    QCOMPARE(rows->value("Name").toString(), "N1");
    QCOMPARE(walk(*rows, "Name"), QStringList({"N1", "N2", "neu"}));
    rows->moveLast();
    QCOMPARE(rows->value("Name").toString(), "neu");
    QCOMPARE(rows->recordCount(), 3);
    rows->movePrevious();
    QCOMPARE(rows->value("Name").toString(), "N2");
  }

  void addsToAnEmptyOne() {
    const auto rows = all();
    QVERIFY(rows->eof());
    addArticle(*rows, "eins");
    QVERIFY(!rows->eof() && !rows->bof());
    QCOMPARE(rows->value("Name").toString(), "eins");
  }

  void theAutoNumberCanBeReadBeforeUpdate() {
    const auto rows = all();
    rows->addNew();
    const int id = rows->value("ID").toInt();
    QVERIFY(id > 0);
    rows->setValue("Name", "x");
    rows->update();
    rows->moveLast();
    QCOMPARE(rows->value("ID").toInt(), id);
  }

  void yesNoOfANewRowIsZero() {
    const auto rows = all();
    rows->addNew();
    QCOMPARE(rows->value("Fertig").toInt(), 0);
    QVERIFY(!rows->value("Name").isValid());
    rows->update();
    rows->moveFirst();
    QVERIFY(rows->value("Fertig").isValid());
    QCOMPARE(rows->value("Fertig").toInt(), 0);
    QVERIFY(!rows->value("Name").isValid());
  }

  void editsTheRowItStandsOn() {
    fill(3);
    const auto rows = all();
    rows->moveNext();
    rows->edit();
    rows->setValue("Name", "anders");
    QCOMPARE(rows->value("Name").toString(), "anders");
    QCOMPARE(rows->value("Menge").toInt(), 2);
    rows->update();
    QCOMPARE(rows->value("Name").toString(), "anders");
    QCOMPARE(walk(*all(), "Name"), QStringList({"N1", "anders", "N3"}));
  }

  void aRowThatNoLongerFitsStaysInTheList() {
    fill(3);
    const auto rows = database_->openRecordset("Select * from Artikel where Menge < 3");
    rows->edit();
    rows->setValue("Menge", 30);
    rows->update();
    QCOMPARE(walk(*rows, "Menge"), QStringList({"30", "2"}));
    rows->requery();
    QCOMPARE(walk(*rows, "Menge"), QStringList({"2"}));
  }

  void changesNeedAddNewOrEdit() {
    fill(1);
    const auto rows = all();
    QCOMPARE(errorOf([&] { rows->setValue("Name", "x"); }), 3020);
    QCOMPARE(errorOf([&] { rows->update(); }), 3020);
    QCOMPARE(errorOf([&] { rows->cancelUpdate(); }), 3020);
    rows->edit();
    rows->setValue("Name", "x");
    rows->cancelUpdate();
    QCOMPARE(rows->value("Name").toString(), "N1");
    rows->edit();
    rows->setValue("Name", "x");
    rows->moveFirst();
    QCOMPARE(rows->value("Name").toString(), "N1");
    QCOMPARE(errorOf([&] { rows->update(); }), 3020);
  }

  void aFailedUpdateKeepsTheBuffer() {
    database_->appendIndex("Artikel", {"Name", {"Name"}, false, true, false});
    fill(2);
    const auto rows = all();
    rows->addNew();
    const int id = rows->value("ID").toInt();
    rows->setValue("Name", "n1");
    QCOMPARE(errorOf([&] { rows->update(); }), 3022);
    QCOMPARE(errorOf([&] { rows->update(); }), 3022);
    QCOMPARE(rows->value("Name").toString(), "n1");
    rows->setValue("Name", "N3");
    rows->update();
    rows->moveLast();
    QCOMPARE(rows->value("ID").toInt(), id);
    QCOMPARE(walk(*all(), "Name"), QStringList({"N1", "N2", "N3"}));

    rows->moveFirst();
    rows->edit();
    rows->setValue("Name", "N2");
    QCOMPARE(errorOf([&] { rows->update(); }), 3022);
    rows->setValue("Name", "N4");
    rows->update();
    QCOMPARE(rows->value("Name").toString(), "N4");
  }

  void aDeletedRowStaysCurrentAndUnreadable() {
    fill(3);
    const auto rows = all();
    rows->moveNext();
    rows->remove();
    QCOMPARE(errorOf([&] { rows->value("Name"); }), 3167);
    QCOMPARE(errorOf([&] { rows->remove(); }), 3167);
    QVERIFY(!rows->eof() && !rows->bof());
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "N3");
    rows->movePrevious();
    QCOMPARE(rows->value("Name").toString(), "N1");
    QCOMPARE(walk(*all(), "Name"), QStringList({"N1", "N3"}));
  }

  void deletesWhileWalking() {
    fill(200);
    const auto rows = all();
    int deleted = 0;
    for (; !rows->eof(); rows->moveNext()) {
      rows->remove();
      ++deleted;
      if (rows->eof()) break;
    }
    QCOMPARE(deleted, 200);
    QVERIFY(all()->eof());
  }

  void deletesTheFirstUntilNoneIsLeft() {
    fill(150);
    const auto rows = all();
    int deleted = 0;
    while (!rows->eof()) {
      rows->moveFirst();
      rows->remove();
      ++deleted;
    }
    QCOMPARE(deleted, 150);
    QVERIFY(rows->bof());
    QCOMPARE(rows->recordCount(), 0);
  }

  void deletesAnOwnAddition() {
    fill(1);
    const auto rows = all();
    addArticle(*rows, "neu");
    rows->moveLast();
    rows->remove();
    rows->movePrevious();
    QCOMPARE(rows->value("Name").toString(), "N1");
    QCOMPARE(walk(*rows, "Name"), QStringList({"N1"}));
  }

  void findsByKeyAndByContent() {
    fill(300);
    const auto rows = all();
    rows->findFirst("ID = 250");
    QVERIFY(!rows->noMatch());
    QCOMPARE(rows->value("Name").toString(), "N250");
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "N251");
    rows->findFirst("Name = 'n7'");
    QCOMPARE(rows->value("Menge").toInt(), 7);
    rows->movePrevious();
    QCOMPARE(rows->value("Menge").toInt(), 6);
    rows->findFirst("Menge > 290");
    QCOMPARE(rows->value("Menge").toInt(), 291);
    rows->findFirst("ID = 1000");
    QVERIFY(rows->noMatch());
    QCOMPARE(rows->value("Menge").toInt(), 291);
  }

  void findingTestsTheOwnCondition() {
    fill(5);
    const auto rows = database_->openRecordset("Select * from Artikel where Menge < 3 order by Name DESC");
    rows->findFirst("ID = 4");
    QVERIFY(rows->noMatch());
    rows->findFirst("ID > 0");
    QCOMPARE(rows->value("Name").toString(), "N2");
    QCOMPARE(errorOf([&] { rows->findFirst("Unbekannt = 1"); }), 3061);
    QVERIFY(errorOf([&] { rows->findFirst("ID = "); }) != 0);
  }

  void findsOnlyItsOwnRows() {
    fill(2);
    const auto rows = all();
    rows->moveLast();
    const auto other = all();
    addArticle(*other, "fremd");
    rows->findFirst("Name = 'fremd'");
    QVERIFY(rows->noMatch());
    other->findFirst("Name = 'fremd'");
    QVERIFY(!other->noMatch());
    QVERIFY(!other->eof());
    other->moveNext();
    QVERIFY(other->eof());
  }

  void deletesWhatWasFound() {
    fill(5);
    const auto rows = all();
    rows->findFirst("ID = 3");
    rows->remove();
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "N4");
    const auto sorted = database_->openRecordset("Select * from Artikel order by Name DESC");
    sorted->findFirst("Name = 'N4'");
    sorted->remove();
    sorted->moveNext();
    QCOMPARE(sorted->value("Name").toString(), "N2");
    QCOMPARE(walk(*sorted, "Name"), QStringList({"N5", "N2", "N1"}));
  }

  void aBookmarkLeadsBack() {
    fill(3);
    const auto rows = all();
    rows->moveNext();
    const QByteArray second = rows->bookmark();
    rows->moveLast();
    rows->setBookmark(second);
    QCOMPARE(rows->value("Name").toString(), "N2");
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "N3");
    for (const QByteArray& wrong : {QByteArray("Unsinn"), QByteArray(), second + "x", second.left(3)})
      QCOMPARE(errorOf([&] { rows->setBookmark(wrong); }), 3159);
    rows->setBookmark(second);
    rows->remove();
    rows->moveFirst();
    rows->setBookmark(second);
    QCOMPARE(errorOf([&] { rows->value("Name"); }), 3167);
  }

  void bookmarksOfEveryKindOfKey() {
    database_->createTable(
        {"Paare", {text("a"), {"b", FieldType::Double}}, {{"PrimaryKey", {"a", "b"}, true, true, true}}});
    const auto rows = database_->openRecordset("Paare");
    for (const auto& [a, b] : {std::pair("ä", 1.5), std::pair("z", -2.25)}) {
      rows->addNew();
      rows->setValue("a", a);
      rows->setValue("b", b);
      rows->update();
    }
    const QByteArray first = rows->bookmark();
    rows->moveLast();
    QVERIFY(rows->bookmark() != first);
    rows->setBookmark(first);
    QCOMPARE(rows->value("b").toDouble(), 1.5);
    QCOMPARE(errorOf([&] { all()->setBookmark(first); }), 3159);
  }

  void fieldsByNameWhateverTheirCase() {
    const auto rows = all();
    QCOMPARE(rows->fieldCount(), 6);
    QCOMPARE(rows->fieldPosition("menge"), 2);
    QCOMPARE(rows->fieldDef(4).type, FieldType::Currency);
    QCOMPARE(errorOf([&] { rows->fieldPosition("fehlt"); }), 3265);
    QCOMPARE(errorOf([&] { rows->value(17); }), 3265);
  }

  /// Whatever was asked for before.
  void ofColumnsThatShareANameTheLastIsMeant() {
    fill(1);
    const auto rows = database_->openRecordset("Select ID as x, Name, Menge as x from Artikel");
    const std::vector<std::pair<QString, int>> asked = {
        {"x", 2}, {"Name", 1}, {"x", 2}, {"x", 2}, {"NAME", 1}};
    for (const auto& [name, position] : asked) QCOMPARE(rows->fieldPosition(name), position);
  }

  /// Rows that are written alike share a statement; these aren't, and those before don't count.
  void eachRowIsWrittenWithItsOwnColumns() {
    fill(2);
    const auto rows = all();
    const auto change = [&](const QVariantMap& values, bool added) {
      added ? rows->addNew() : rows->edit();
      for (auto it = values.begin(); it != values.end(); ++it) rows->setValue(it.key(), *it);
      rows->update();
    };
    change({{"Name", "a"}}, false);
    change({{"Menge", 7}}, false);
    change({{"Menge", 8}, {"Name", "b"}}, false);
    rows->moveNext();
    change({{"Menge", 9}, {"Name", "c"}}, false);
    change({{"Name", "d"}}, true);
    change({{"Menge", 10}}, true);
    change({{"ID", 50}, {"Name", "e"}}, true);
    change({{"Am", QDate(2026, 11, 20)}}, true);
    change({{"Name", "f"}}, true);
    QCOMPARE(walk(*rows, "Name"), QStringList({"b", "c", "d", "", "e", "", "f"}));
    QCOMPARE(walk(*rows, "Menge"), QStringList({"8", "9", "", "10", "", "", ""}));
    rows->moveLast();
    rows->movePrevious();
    QCOMPARE(rows->value("Am").toDate(), QDate(2026, 11, 20));
    rows->movePrevious();
    QCOMPARE(rows->value("ID").toInt(), 50);
  }

  void aSnapshotRefusesChanges() {
    fill(2);
    const auto rows = database_->openRecordset("Artikel", RecordsetType::Snapshot);
    QCOMPARE(rows->value("Name").toString(), "N1");
    QCOMPARE(errorOf([&] { rows->addNew(); }), 3027);
    QCOMPARE(errorOf([&] { rows->edit(); }), 3027);
    QCOMPARE(errorOf([&] { rows->remove(); }), 3027);
  }

  void aTableSeeksOverItsIndexes() {
    database_->appendIndex("Artikel", {"NachMenge", {"Menge", "Name"}, false, false, false});
    const auto adding = all();
    for (const auto& [name, amount] :
         {std::pair("c", 3), std::pair("b", 2), std::pair("a", 2), std::pair("d", 5)})
      addArticle(*adding, name, amount);
    const auto rows = database_->openRecordset("Artikel", RecordsetType::Table);
    QCOMPARE(errorOf([&] { rows->setIndex("fehlt"); }), 3015);
    QCOMPARE(errorOf([&] { rows->seek("=", {2}); }), 3019);
    rows->setIndex("nachmenge");
    QCOMPARE(walk(*rows, "Name"), QStringList({"a", "b", "c", "d"}));
    rows->seek("=", {2});
    QCOMPARE(rows->value("Name").toString(), "a");
    rows->seek("=", {2, "b"});
    QCOMPARE(rows->value("Name").toString(), "b");
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "c");
    rows->seek(">", {3});
    QCOMPARE(rows->value("Name").toString(), "d");
    rows->seek(">=", {2, "b"});
    QCOMPARE(rows->value("Name").toString(), "b");
    rows->seek("<", {3});
    QCOMPARE(rows->value("Name").toString(), "b");
    rows->seek("<=", {2, "a"});
    QCOMPARE(rows->value("Name").toString(), "a");
    rows->seek("=", {4});
    QVERIFY(rows->noMatch());
    rows->setIndex("PrimaryKey");
    rows->seek("=", {1});
    QCOMPARE(rows->value("Name").toString(), "c");
    QCOMPARE(errorOf([&] { all()->setIndex("PrimaryKey"); }), 3251);
  }

  void aTableWithoutPrimaryKeyWorksToo() {
    database_->createTable({"Lose", {text("Name")}, {}});
    const auto rows = database_->openRecordset("Lose");
    for (const char* name : {"a", "b", "b"}) {
      rows->addNew();
      rows->setValue("Name", name);
      rows->update();
    }
    QCOMPARE(rows->fieldCount(), 1);
    rows->findFirst("Name = 'b'");
    rows->edit();
    rows->setValue("Name", "B2");
    rows->update();
    QCOMPARE(walk(*rows, "Name"), QStringList({"a", "B2", "b"}));
    rows->findFirst("Name = 'b'");
    rows->remove();
    QCOMPARE(walk(*database_->openRecordset("Lose"), "Name"), QStringList({"a", "B2"}));
  }

  void aTextKeyTellsRowsApart() {
    database_->createTable(
        {"Worte", {text("Wort"), number("Anzahl")}, {{"Schluessel", {"Wort"}, true, true, true}}});
    const auto rows = database_->openRecordset("Worte");
    for (const char* word : {"zebra", "Übung", "affe"}) {
      rows->addNew();
      rows->setValue("Wort", word);
      rows->setValue("Anzahl", 1);
      rows->update();
    }
    rows->findFirst("Wort = 'übung'");
    QVERIFY(!rows->noMatch());
    rows->edit();
    rows->setValue("Wort", "Uhr");
    rows->update();
    QCOMPARE(rows->value("Wort").toString(), "Uhr");
    rows->addNew();
    rows->setValue("Wort", "AFFE");
    QCOMPARE(errorOf([&] { rows->update(); }), 3022);
    rows->setValue("Wort", {});
    QCOMPARE(errorOf([&] { rows->update(); }), 3314);
  }

  void outlivesItsDatabaseObject() {
    fill(1);
    const auto rows = all();
    database_.reset();
    QCOMPARE(rows->value("Name").toString(), "N1");
  }
};

QTEST_GUILESS_MAIN(TestRecordset)
#include "test_recordset.moc"
