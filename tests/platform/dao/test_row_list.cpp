// The rows of a query by number, listed in a thread of their own.
#include <QSignalSpy>
#include <QTest>

#include "platform/dao/row_list.h"
#include "tests/platform/dao/store_factory.h"

using namespace qk;
using namespace qk::dao;

class TestRowList : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    store = newStore();
    database = store->connect();
    database->createTable(articles());
  }
  void cleanup() {
    database.reset();
    store.reset();
  }

  void aShortListIsThereAtOnce();
  void aLongListGrowsAndIsWhole();
  void aSortedListBeginsWithItsFirstPage();
  void theRestWaitsForTheFirstRows_data();
  void theRestWaitsForTheFirstRows();
  void othersWriteWhileTheListRests_data() { theRestWaitsForTheFirstRows_data(); }
  void othersWriteWhileTheListRests();
  void aSortedListIsCountedBefore();
  void aReadingThatFailsLaterKeepsItsRows();
  void theFirstRowOrNone();
  void whatIsWrongWithTheTextLeavesTheRows();
  void anotherQueryGivesUpTheOneBefore();
  void rowsOfOthersStayOutUntilRefresh();
  void aDeletedRowKeepsItsNumber();
  void changesGoStraightToTheRow();
  void rowsWithoutAKeyCantBeChanged();
  void joinsAreChangedThroughTheirTable();
  void findsByCriterionAndBookmark();
  void droppingFromFrontAndMiddle();
  void endsWhileItIsReading();

 private:
  void fill(int count) {
    const auto rows = database->openRecordset("Artikel");
    for (int i = 1; i <= count; ++i) addArticle(*rows, QString("Nr %1").arg(i * 7919 % 10007), i);
  }
  /// Far more rows than the store is asked for one by one.
  void fillLong() {
    fill(500);
    for (int times = 0; times < 6; ++times)
      database->execute("INSERT INTO Artikel (Name, Menge) SELECT Name, Menge FROM Artikel");
  }
  QString name(const RowList& list, int row) {
    QVariantList values;
    return list.read(row, values) ? values[list.fieldPosition("Name")].toString() : "fehlt";
  }

  std::unique_ptr<Store> store;
  std::unique_ptr<Database> database;
};

void TestRowList::aShortListIsThereAtOnce() {
  fill(3);
  RowList list;
  QVERIFY(!list.isOpen());
  list.open(*database, "Select * from Artikel");
  QVERIFY(list.waitForAll());
  QCOMPARE(list.count(), 3);
  QCOMPARE(name(list, 2), "Nr 3743");
  list.open(*database, "Select * from Artikel where Menge > 5");
  QVERIFY(list.waitForAll());
  QCOMPARE(list.count(), 0);
}

void TestRowList::aLongListGrowsAndIsWhole() {
  fillLong();
  RowList list;
  QSignalSpy growing(&list, &RowList::aboutToGrow), completed(&list, &RowList::completed);
  list.open(*database, "Select * from Artikel");
  QVERIFY(list.waitForAll());
  QCOMPARE(list.count(), 32000);
  QCOMPARE(completed.count(), 1);
  int expected = 0;
  for (const QList<QVariant>& growth : growing) {
    QCOMPARE(growth[0].toInt(), expected);
    expected = growth[1].toInt() + 1;
  }
  QCOMPARE(expected, 32000);
  const auto rows = database->openRecordset("Select * from Artikel");
  for (int row = 0; row < 32000; row += 997) {
    rows->setBookmark(list.bookmark(row));
    QCOMPARE(rows->value("Name").toString(), name(list, row));
  }
}

void TestRowList::aSortedListBeginsWithItsFirstPage() {
  fillLong();
  const QString query = "Select * from Artikel where Menge > 3 order by Name desc";
  const auto rows = database->openRecordset(query);
  RowList list;
  QSignalSpy restarted(&list, &RowList::restarted);
  list.open(*database, query);
  QVERIFY(list.waitForAll());
  QCOMPARE(restarted.count(), 1);
  QCOMPARE(list.count(), 32000 - 3 * 64);
  for (int row = 0; row < list.count(); ++row, rows->moveNext())
    QCOMPARE(list.bookmark(row), rows->bookmark());
}

void TestRowList::theRestWaitsForTheFirstRows_data() {
  QTest::addColumn<QString>("query");
  QTest::newRow("unsorted") << "Select * from Artikel";
  QTest::newRow("sorted") << "Select * from Artikel order by Name desc, ID";
  QTest::newRow("without keys") << "Select * from Liste";
  QTest::newRow("without keys, sorted") << "Select * from Liste order by Name desc, ID";
}

void TestRowList::theRestWaitsForTheFirstRows() {
  QFETCH(QString, query);
  fillLong();
  database->createQuery("Liste", "Select ID, Name from Artikel");
  RowList list;
  QSignalSpy restarted(&list, &RowList::restarted);
  list.open(*database, query);
  list.waitForFirst();
  // Nothing comes while nobody calls for it.
  QCOMPARE(list.count(), 50);
  QVERIFY(!list.isComplete());
  QTRY_VERIFY(list.isComplete());
  QCOMPARE(list.count(), 32000);
  QCOMPARE(restarted.count(), 1);
  const auto rows = database->openRecordset(query);
  for (int row = 0; row < 300; ++row, rows->moveNext())
    QCOMPARE(name(list, row), rows->value("Name").toString());
}

void TestRowList::othersWriteWhileTheListRests() {
  QFETCH(QString, query);
  fillLong();
  database->createQuery("Liste", "Select ID, Name from Artikel");
  RowList list;
  list.open(*database, query);
  list.waitForFirst();
  QCOMPARE(list.count(), 50);
  const auto other = store->connect();
  for (Database* writer : {database.get(), other.get()}) {
    addArticle(*writer->openRecordset("Artikel"), "Neu");
    writer->execute("UPDATE Artikel SET Menge = 9 WHERE Menge = 400");
    writer->execute("DELETE FROM Artikel WHERE Menge = 9");
  }
  QVERIFY(!list.isComplete());
  QVERIFY(list.waitForAll());
  QVERIFY(!list.isBroken());
  QCOMPARE(walk(*database->openRecordset("Select * from Artikel where Menge = 400"), "Menge").size(), 0);
}

void TestRowList::aSortedListIsCountedBefore() {
  fillLong();
  RowList list;
  QList<int> known;
  connect(&list, &RowList::counted, [&] {
    QVERIFY(list.isSorting());
    known.append(list.expected());
  });
  list.open(*database, "Select * from Artikel where Menge > 3 order by Name desc");
  list.waitForFirst();
  QVERIFY(list.isSorting());
  QCOMPARE(list.expected(), -1);
  QVERIFY(list.waitForAll());
  QCOMPARE(known, QList<int>{32000 - 3 * 64});
  QVERIFY(!list.isSorting());
  // One page needs no counting, and rows in their own order no sorting.
  list.open(*database, "Select * from Artikel where Menge = 1 and ID < 2000 order by Name desc");
  QVERIFY(list.waitForAll());
  list.open(*database, "Select * from Artikel");
  QVERIFY(!list.isSorting());
  QVERIFY(list.waitForAll());
  QCOMPARE(known.size(), 1);
}

void TestRowList::aReadingThatFailsLaterKeepsItsRows() {
  fillLong();
  database->createQuery("Liste", "Select ID, Name from Artikel");
  RowList list;
  QSignalSpy failed(&list, &RowList::failed), completed(&list, &RowList::completed);
  list.open(*database, "Select * from Liste order by Name, ID");
  list.waitForFirst();
  const QString first = name(list, 0);
  // The page was read; what is behind it is read from something else.
  database->dropTable("Artikel");
  QVERIFY(list.waitForAll());
  QCOMPARE(failed.count(), 1);
  QCOMPARE(completed.count(), 0);
  QVERIFY(list.isBroken());
  QCOMPARE(list.count(), 50);
  QCOMPARE(name(list, 0), first);
  database->createTable(articles());
  fill(3);
  list.open(*database, "Artikel");
  QVERIFY(list.waitForAll());
  QVERIFY(!list.isBroken());
  QCOMPARE(list.count(), 3);
}

void TestRowList::theFirstRowOrNone() {
  fill(3);
  RowList list;
  list.open(*database, "Select * from Artikel where Menge = 2");
  list.waitForFirst();
  QCOMPARE(list.count(), 1);
  list.open(*database, "Select * from Artikel where Menge = 9");
  list.waitForFirst();
  QVERIFY(list.isComplete());
  QCOMPARE(list.count(), 0);
}

void TestRowList::whatIsWrongWithTheTextLeavesTheRows() {
  fill(3);
  RowList list;
  list.open(*database, "Artikel");
  QVERIFY(list.waitForAll());
  QCOMPARE(errorOf([&] { list.open(*database, "Select * from Artikel where Name like 'a'b*'"); }), 3075);
  QCOMPARE(errorOf([&] { list.open(*database, "Fehlt"); }), 3078);
  QCOMPARE(list.count(), 3);
  QVERIFY(list.isComplete());
}

void TestRowList::anotherQueryGivesUpTheOneBefore() {
  fillLong();
  RowList list;
  for (int i = 0; i < 40; ++i) list.open(*database, "Select * from Artikel order by Name, Menge desc");
  list.open(*database, "Select * from Artikel where Menge = 7");
  QVERIFY(list.waitForAll());
  QCOMPARE(list.count(), 64);
  QCoreApplication::processEvents();  // nothing of the lists before comes late
  QCOMPARE(list.count(), 64);
}

void TestRowList::rowsOfOthersStayOutUntilRefresh() {
  fill(3);
  RowList list;
  list.open(*database, "Artikel");
  QVERIFY(list.waitForAll());
  const auto other = store->connect();
  addArticle(*other->openRecordset("Artikel"), "Neu");
  QCOMPARE(list.count(), 3);
  list.refresh();
  QVERIFY(list.waitForAll());
  QCOMPARE(list.count(), 4);
  QCOMPARE(name(list, 3), "Neu");
}

void TestRowList::aDeletedRowKeepsItsNumber() {
  fill(3);
  RowList list;
  list.open(*database, "Artikel");
  QVERIFY(list.waitForAll());
  database->execute("Delete * from Artikel where Menge = 2");
  QCOMPARE(name(list, 1), "fehlt");
  QCOMPARE(name(list, 2), "Nr 3743");
  QCOMPARE(errorOf([&] { list.update(1, {{list.fieldPosition("Name"), "x"}}); }), 3167);
  list.remove(1);  // somebody was faster
  QCOMPARE(list.count(), 3);
}

void TestRowList::changesGoStraightToTheRow() {
  fill(3);
  RowList list;
  list.open(*database, "Select * from Artikel order by Menge desc");
  QVERIFY(list.waitForAll());
  const int amount = list.fieldPosition("Menge");
  list.update(0, {{amount, "30"}, {list.fieldPosition("Name"), QVariant()}});
  QVariantList values;
  QVERIFY(list.read(0, values));
  QCOMPARE(values[amount].toInt(), 30);
  QVERIFY(!values[list.fieldPosition("Name")].isValid());
  QCOMPARE(errorOf([&] { list.update(0, {{amount, "viele"}}); }), 3421);
  QCOMPARE(errorOf([&] { list.update(0, {{list.fieldPosition("ID"), 9}}); }), 3164);

  list.insert({{list.fieldPosition("Name"), "Letzter"}});
  QCOMPARE(list.count(), 4);
  QCOMPARE(name(list, 3), "Letzter");
  QCOMPARE(errorOf([&] { list.insert({{amount, "viele"}}); }), 3421);
  QCOMPARE(list.count(), 4);

  list.remove(1);
  QCOMPARE(walk(*database->openRecordset("Select * from Artikel order by Menge"), "Menge"),
           (QStringList{"", "1", "30"}));
}

void TestRowList::rowsWithoutAKeyCantBeChanged() {
  fill(3);
  database->createQuery("Liste", "Select Name, Menge, Am from Artikel where Menge > 1");
  RowList list;
  list.open(*database, "Select * from Liste order by Menge desc");
  QVERIFY(list.waitForAll());
  QCOMPARE(list.count(), 2);
  QCOMPARE(name(list, 0), "Nr 3743");
  QVariantList values;
  QVERIFY(list.read(0, values));
  QCOMPARE(values[1].toInt(), 3);
  QVERIFY(!values[2].isValid());
  QVERIFY(!list.isUpdatable());
  QCOMPARE(errorOf([&] { list.update(0, {{0, "x"}}); }), 3027);
  QCOMPARE(errorOf([&] { list.insert({}); }), 3027);
  QCOMPARE(errorOf([&] { list.remove(0); }), 3027);
}

void TestRowList::joinsAreChangedThroughTheirTable() {
  fill(3);
  database->createTable({"Preise", {counter("ID"), number("ArtikelID"), number("Wert")}, {}});
  database->execute("INSERT INTO Preise (ArtikelID, Wert) SELECT ID, 10 FROM Artikel");
  RowList list;
  list.open(
      *database,
      "SELECT Preise.Wert, Artikel.Name FROM Preise INNER JOIN Artikel ON Preise.ArtikelID = Artikel.ID "
      "ORDER BY Artikel.Menge");
  QVERIFY(list.waitForAll());
  QCOMPARE(list.count(), 3);
  list.update(1, {{0, 11}, {1, "Neu"}});
  QCOMPARE(name(list, 1), "Neu");
  list.remove(1);
  list.drop(1, 1);
  QCOMPARE(list.count(), 2);
  QCOMPARE(walk(*database->openRecordset("Select * from Artikel"), "Menge").size(), 3);
  QCOMPARE(walk(*database->openRecordset("Preise"), "Wert"), (QStringList{"10", "10"}));
}

void TestRowList::findsByCriterionAndBookmark() {
  fill(300);
  RowList list;
  list.open(*database, "Select * from Artikel order by Menge desc");
  QVERIFY(list.waitForAll());
  QCOMPARE(list.findFirst("Menge = 290"), 10);
  QCOMPARE(list.findFirst("Menge = 999"), -1);
  QCOMPARE(list.rowOf(list.bookmark(77)), 77);
  QCOMPARE(list.rowOf("unsinn"), -1);
}

void TestRowList::droppingFromFrontAndMiddle() {
  fill(9);
  RowList list;
  list.open(*database, "Select * from Artikel");
  QVERIFY(list.waitForAll());
  const QByteArray first = list.bookmark(0), fourth = list.bookmark(3);
  list.drop(0, 2);
  QCOMPARE(list.count(), 7);
  QCOMPARE(list.rowOf(fourth), 1);
  QCOMPARE(list.rowOf(first), -1);
  list.drop(1, 2);
  QCOMPARE(list.count(), 5);
  QCOMPARE(list.rowOf(fourth), -1);
  QVariantList values;
  QVERIFY(list.read(1, values));
  QCOMPARE(values[list.fieldPosition("Menge")].toInt(), 6);
}

void TestRowList::endsWhileItIsReading() {
  fillLong();
  for (int i = 0; i < 20; ++i) {
    RowList list;
    list.open(*database, "Select * from Artikel order by Name");
  }
  QCoreApplication::processEvents();
}

QTEST_GUILESS_MAIN(TestRowList)
#include "test_row_list.moc"
