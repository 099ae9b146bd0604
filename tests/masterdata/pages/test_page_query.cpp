// What the grids show of a competition.
#include <QTemporaryDir>
#include <QTest>

#include "masterdata/making/competition.h"
#include "masterdata/pages/opened_competition.h"
#include "masterdata/pages/page_query.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/numbers.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

class TestPageQuery : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    path_ = folder_.filePath("Pokal.qkk");
    prepareStore(path_);
    makeDemoCompetition(path_);
    database_ = openForMasterData(path_);
  }
  void cleanupTestCase() { database_.reset(); }

  void everyGridCanBeRead_data() {
    QTest::addColumn<QString>("key");
    for (const Page& page : masterDataPages()) QTest::newRow(qPrintable(page.key)) << page.key;
  }
  void everyGridCanBeRead() {
    QFETCH(QString, key);
    const Page& page = masterDataPage(key);
    const FilteredQuery::Shape shape = gridQuery(page);
    FilteredQuery query(shape);
    const auto rows = database_->openRecordset(query.text());
    QVERIFY(rows->fieldPosition(page.keyColumn) >= 0);
    for (const PageColumn& column : page.columns)
      if (column.inGrid > 0) QVERIFY(rows->fieldPosition(fieldOf(column)) >= 0);
    for (int column = 0; column < int(shape.columns.size()); ++column) {
      query.clickTitle(column);
      QVERIFY(database_->openRecordset(query.text()));
      QStringList filter(qsizetype(shape.columns.size()));
      filter[column] = "a";
      query.setFilter(filter);
      QVERIFY(database_->openRecordset(query.text()));
    }
    QVERIFY(countOf(*database_, page) >= 0);
  }

  void namesStandForNumbers() {
    FilteredQuery query(gridQuery(masterDataPage("Mannschaften")));
    query.setFilter({"", "Edelweiß", ""});
    const auto rows = database_->openRecordset(query.text());
    QVERIFY(!rows->eof());
    for (; !rows->eof(); rows->moveNext())
      QCOMPARE(rows->value("Text zu VereinID").toString(), QString("Edelweiß Höfen"));
  }

  void whatACellShowsIsWhatFilters() {
    const auto count = [this](const QString& key, int column, const QString& text) {
      FilteredQuery query(gridQuery(masterDataPage(key)));
      QStringList filter(column + 1);
      filter[column] = text;
      query.setFilter(filter);
      int rows = 0;
      for (const auto found = database_->openRecordset(query.text()); !found->eof(); found->moveNext())
        ++rows;
      return rows;
    };
    const auto stored = [this](const QString& from) {
      return database_->openRecordset("SELECT Count(*) AS n FROM " + from)->value(0).toInt();
    };
    QCOMPARE(count("Klassen", 4, "weib"), stored("Schützenklassen WHERE Geschlecht = 2"));
    QCOMPARE(count("Klassen", 5, "ja"), stored("Schützenklassen WHERE Auflage <> 0"));
    QCOMPARE(count("Profile", 2, "0 – S"), stored("AuswertProfil WHERE Typ = 0"));
    QVERIFY(count("Klassen", 4, "weib") > 0 && count("Klassen", 5, "ja") > 0);
    QCOMPARE(count("Schuetzen", 4, "M"), stored("Schützen WHERE Geschlecht = 'M'"));
  }

  void startNumbersSortAsNumbers() {
    FilteredQuery query(gridQuery(masterDataPage("Schuetzen")));
    const auto rows = database_->openRecordset(query.text());
    double last = 0;
    for (; !rows->eof(); rows->moveNext()) {
      const double number = parsePrefix(rows->value("Startnummer").toString());
      QVERIFY(number >= last);
      last = number;
    }
    QVERIFY(last > 100);
  }

  void membersComeFirst() {
    const LinkedList& link = masterDataPage("Disziplinen").links[0];
    const auto all = sourceRows(*database_, link.source, {}, {9, 3}, 5);
    QCOMPARE(all.size(), 7);
    QCOMPARE(all[0].text, QString("Herren II"));
    QCOMPARE(all[1].text, QString("Jugend männlich"));
    const auto some = sourceRows(*database_, link.source, "jugend", {9, 3}, 5);
    QCOMPARE(some.size(), 2);
    QCOMPARE(some[0].key, 3);
    QCOMPARE(some[1].text, QString("Jugend weiblich"));
    QVERIFY(sourceRows(*database_, link.source, "o'", {}, 5).empty());
  }

 private:
  QTemporaryDir folder_;
  QString path_;
  std::unique_ptr<dao::Database> database_;
};

QTEST_GUILESS_MAIN(TestPageQuery)
#include "test_page_query.moc"
