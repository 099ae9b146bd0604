// Several connections at once, auto numbers, commits.
#include <QtTest>

#include "tests/platform/dao/store_factory.h"

using namespace qk::dao;

class TestSharing : public QObject {
  Q_OBJECT

  std::unique_ptr<Store> store_;
  std::unique_ptr<Database> one_, two_;

  static qint64 lastNumber(Database& database, const QString& table = "Artikel") {
    const auto catalogue = database.engine().catalogue();
    return database.engine().lastNumber(*catalogue->info(table));
  }
  static void goOnAfter(Database& database, qint64 number, const QString& table = "Artikel") {
    const auto catalogue = database.engine().catalogue();
    database.engine().goOnAfter(*catalogue->info(table), number);
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

  void openRecordsetsDontLockEachOtherOut() {
    const auto walking = one_->openRecordset("Select * from Artikel");
    const auto adding = two_->openRecordset("Select * from Artikel");
    for (int i = 0; i < 5; ++i) addArticle(*adding, "x" + QString::number(i));
    QCOMPARE(walking->value("Name").toString(), "x0");
    addArticle(*adding, "während");
    walking->edit();
    walking->setValue("Name", "y");
    walking->update();
    adding->findFirst("Name = 'y'");
    adding->edit();
    walking->moveNext();
    adding->setValue("Menge", 3);
    adding->update();
    walking->moveFirst();
    QCOMPARE(walking->value("Menge").toInt(), 3);
  }

  void rowsThatOthersAddLaterStayOut() {
    const auto adding = two_->openRecordset("Artikel");
    for (int i = 0; i < 100; ++i) addArticle(*adding, "x");
    const auto walking = one_->openRecordset("Artikel");
    int walked = 0;
    for (; !walking->eof(); walking->moveNext()) {
      addArticle(*adding, "noch einer");
      QVERIFY(++walked <= 100);
    }
    QCOMPARE(walked, 100);
    walking->requery();
    walking->moveLast();
    QCOMPARE(walking->recordCount(), 200);
  }

  void aRowThatOthersDeletedIsGone() {
    const auto adding = two_->openRecordset("Artikel");
    for (int i = 0; i < 3; ++i) addArticle(*adding, QString::number(i));
    const auto rows = one_->openRecordset("Artikel");
    rows->moveLast();
    rows->movePrevious();
    rows->edit();
    rows->setValue("Name", "x");
    QCOMPARE(two_->execute("Delete * from Artikel where Name = '1'"), 1);
    QCOMPARE(errorOf([&] { rows->update(); }), 3167);
    rows->cancelUpdate();
    QCOMPARE(errorOf([&] { rows->remove(); }), 3167);
    rows->moveFirst();
    rows->moveNext();
    QCOMPARE(errorOf([&] { rows->value("Name"); }), 3167);
    rows->moveNext();
    QCOMPARE(rows->value("Name").toString(), "2");
  }

  void numbersAreNeverHandedOutTwice() {
    QSet<int> numbers;
    const auto first = one_->openRecordset("Artikel");
    const auto second = two_->openRecordset("Artikel");
    for (int i = 0; i < 100; ++i) {
      numbers.insert(addArticle(*first, "a"));
      numbers.insert(addArticle(*second, "b"));
      two_->execute("INSERT INTO Artikel (Name) VALUES ('c')");
    }
    QCOMPARE(numbers.size(), 200);
    QCOMPARE(walk(*one_->openRecordset("Artikel"), "ID").size(), 300);
  }

  void numbersFollowWhatIsThere() {
    one_->execute("INSERT INTO Artikel (ID, Name) VALUES (500, 'hoch')");
    QVERIFY(addArticle(*one_->openRecordset("Artikel"), "a") > 500);
  }

  void theLastNumberOutlivesItsRow() {
    QCOMPARE(lastNumber(*one_), 0);
    const int number = addArticle(*one_->openRecordset("Artikel"), "a");
    one_->execute("Delete * from Artikel");
    const qint64 last = lastNumber(*two_);
    QVERIFY(last >= number);
    QCOMPARE(addArticle(*two_->openRecordset("Artikel"), "b"), last + 1);
  }

  void aNumberThatARowBroughtAlongIsTheLast() {
    one_->execute("INSERT INTO Artikel (ID, Name) VALUES (-3, 'tief')");
    QCOMPARE(lastNumber(*two_), 0);
    one_->execute("INSERT INTO Artikel (ID, Name) VALUES (500, 'hoch')");
    QCOMPARE(lastNumber(*two_), 500);
    one_->execute("UPDATE Artikel SET ID = 600 WHERE ID = 500");
    QCOMPARE(lastNumber(*two_), 600);
  }

  /// What a held moment doesn't show may have been named by what it shows.
  void theLastNumberIsNeverBehindAHeldMoment() {
    const int number = addArticle(*two_->openRecordset("Artikel"), "a");
    const auto reader = one_->engine().reader([] { return false; });
    two_->execute("Delete * from Artikel");
    reader->hold();
    const auto catalogue = reader->catalogue();  // the first read is the moment
    const auto rows = two_->openRecordset("Artikel");
    for (int i = 0; i < 40; ++i) addArticle(*rows, "später");
    QVERIFY(reader->lastNumber(*catalogue->info("Artikel")) >= number);
    reader->release();
  }

  void numbersGoOnWhereTheyAreTold() {
    const auto rows = one_->openRecordset("Artikel");
    QCOMPARE(addArticle(*rows, "a"), 1);
    goOnAfter(*one_, 700);  // with numbers in hand
    QCOMPARE(lastNumber(*two_), 700);
    QCOMPARE(addArticle(*rows, "b"), 701);
    one_->execute("Delete * from Artikel");
    goOnAfter(*two_, 100);
    QVERIFY(addArticle(*two_->openRecordset("Artikel"), "c") > 701);
  }

  void nothingGivenOutIsNothingToGoOnAfter() {
    goOnAfter(*one_, 0);
    QCOMPARE(lastNumber(*one_), 0);
    QCOMPARE(addArticle(*one_->openRecordset("Artikel"), "a"), 1);
    one_->createTable({"Ohne", {number("Wert")}, {}});
    one_->execute("INSERT INTO Ohne (Wert) VALUES (7)");
    goOnAfter(*one_, 5, "Ohne");
    QCOMPARE(lastNumber(*one_, "Ohne"), 0);
  }

  void aCancelledNumberIsUsedAgain() {
    const auto rows = one_->openRecordset("Artikel");
    const int first = addArticle(*rows, "a");
    rows->addNew();
    rows->cancelUpdate();
    rows->addNew();
    QCOMPARE(rows->value("ID").toInt(), first + 1);
    rows->moveFirst();
    QCOMPARE(addArticle(*rows, "b"), first + 1);
  }

  void aRowIsExactlyOneCommit() {
    one_->reserveNumbers("Artikel");
    for (int i = 0; i < 200; ++i) {
      const qint64 before = one_->commitCount();
      const auto rows = one_->openRecordset("Select * from Artikel");
      addArticle(*rows, "a");
      QCOMPARE(one_->commitCount() - before, 1);
    }
  }

  void reservingTwiceCostsNothing() {
    const qint64 before = one_->commitCount();
    one_->reserveNumbers("Artikel");
    QCOMPARE(one_->commitCount() - before, 1);
    one_->reserveNumbers("ARTIKEL");
    QCOMPARE(one_->commitCount() - before, 1);
  }

  void readingCommitsNothingAndEachChangeOnce() {
    const auto rows = one_->openRecordset("Artikel");
    addArticle(*rows, "a");
    addArticle(*rows, "b");
    const qint64 before = one_->commitCount();
    const auto reading = one_->openRecordset("Select * from Artikel order by Name");
    walk(*reading, "Name");
    reading->findFirst("ID = 1");
    QCOMPARE(one_->commitCount(), before);
    reading->edit();
    reading->setValue("Name", "c");
    reading->update();
    QCOMPARE(one_->commitCount(), before + 1);
    reading->remove();
    QCOMPARE(one_->commitCount(), before + 2);
    one_->execute("UPDATE Artikel SET Menge = 1");
    QCOMPARE(one_->commitCount(), before + 3);
  }

  void aFailedRowLeavesNothingBehind() {
    one_->appendIndex("Artikel", {"Name", {"Name"}, false, true, false});
    const auto rows = one_->openRecordset("Artikel");
    for (int i = 0; i < 70; ++i) {  // past the ends of blocks of numbers
      addArticle(*rows, "n" + QString::number(i));
      rows->addNew();
      rows->setValue("Name", "n0");
      QCOMPARE(errorOf([&] { rows->update(); }), 3022);
      rows->setValue("Name", "m" + QString::number(i));
      rows->update();
    }
    QCOMPARE(walk(*one_->openRecordset("Artikel"), "ID").size(), 140);
  }

  void definitionsOfOthersAreSeen() {
    QVERIFY(!two_->hasTable("Neu"));
    one_->createTable({"Neu", {text("a")}, {}});
    QVERIFY(two_->hasTable("Neu"));
    const auto rows = two_->openRecordset("Neu");
    QCOMPARE(rows->fieldCount(), 1);
    one_->dropTable("Neu");
    QVERIFY(!two_->hasTable("Neu"));
    QCOMPARE(errorOf([&] { two_->openRecordset("Neu"); }), 3078);
  }
};

QTEST_GUILESS_MAIN(TestSharing)
#include "test_sharing.moc"
