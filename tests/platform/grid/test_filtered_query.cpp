// The query behind filter cells and titles, alone and behind a grid.
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QVBoxLayout>

#include "platform/dao/database.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/grid_browser.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

FilteredQuery artikel(FilteredQuery::Quote quote = FilteredQuery::Quote::IsText) {
  return FilteredQuery(
      {.base = "Select * from Artikel where Menge > 0",
       .joint = " AND ",
       .columns = {{.filter = "Name"}, {.filter = "Artikel.Am", .order = {"DateValue(Am)", "Am"}}},
       .firstOrder = " order by Menge",
       .quote = quote});
}

const QString kBase = "Select * from Artikel where Menge > 0";

}  // namespace

class TestFilteredQuery : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void theFirstOrderHoldsUntilATitleIsClicked() {
    FilteredQuery query = artikel();
    QCOMPARE(query.text(), kBase + " order by Menge");
    QCOMPARE(query.orderColumn(), -1);
    query.clickTitle(0);
    QCOMPARE(query.text(), kBase + " ORDER BY Name ASC");
    query.clickTitle(0);
    QCOMPARE(query.text(), kBase + " ORDER BY Name DESC");
    QVERIFY(query.isDescending());
    query.clickTitle(1);
    QCOMPARE(query.text(), kBase + " ORDER BY DateValue(Am) ASC, Am ASC");
    query.clickTitle(1);
    QCOMPARE(query.text(), kBase + " ORDER BY DateValue(Am) DESC, Am DESC");
    QCOMPARE(query.orderColumn(), 1);
  }

  void filtersJoinTheBase() {
    FilteredQuery query = artikel();
    QVERIFY(!query.isFiltered());
    query.setFilter({"A", " "});
    QCOMPARE(query.text(), kBase + " AND Name LIKE 'A*' order by Menge");
    QVERIFY(query.isFiltered());
    query.setFilter({"A", "1."});
    QCOMPARE(query.text(), kBase + " AND Name LIKE 'A*' AND Artikel.Am LIKE '1.*' order by Menge");
    query.clearFilter();
    QCOMPARE(query.text(), kBase + " order by Menge");
    QVERIFY(query.filterTexts().isEmpty());
  }

  void quotes() {
    FilteredQuery query = artikel();
    query.setFilter({"O'", ""});
    QCOMPARE(query.text(), kBase + " AND Name LIKE 'O''*' order by Menge");
    query = artikel(FilteredQuery::Quote::Breaks);
    query.setFilter({"O'", ""});
    QCOMPARE(query.text(), kBase + " AND Name LIKE 'O'*' order by Menge");
  }

  void anEditedRowKeepsItsList() {
    TestWorkplace place;
    prepareStore(place.path("lager"));
    const auto database = dao::Database::create(place.path("lager"), {.durable = false});
    dao::FieldDef id{.name = "ID", .type = dao::FieldType::Long, .autoNumber = true};
    database->createTable({"Artikel",
                           {id, {.name = "Name"}, {.name = "Menge", .type = dao::FieldType::Long}},
                           {{"PrimaryKey", {"ID"}, true, true, true}}});
    for (const char* name : {"B", "A"})
      database->execute(QString("INSERT INTO Artikel (Name, Menge) VALUES ('%1', 1)").arg(name));
    int reports = 0;
    BoundRows rows([&](const Error&) {
      ++reports;
      return ErrorAnswer::Abort;
    });
    rows.setColumns({{.field = "Name"}});
    BoundGrid grid;
    grid.setRows(&rows);
    grid.setFilterRow(true, "_1");
    std::vector<GridBrowser::Act> acts;
    std::unique_ptr<GridBrowser> browser;
    browser = std::make_unique<GridBrowser>(
        grid,
        FilteredQuery({.base = "Select * from Artikel", .joint = " where ", .columns = {{.filter = "Name"}}}),
        [&](GridBrowser::Act act) {
          acts.push_back(act);
          rows.open(*database, browser->query().text());
        });
    rows.open(*database, browser->query().text());
    QVERIFY(rows.waitForAll());
    auto* cell = grid.findChild<QLineEdit*>("filter_Name_1");
    QVERIFY(cell);
    cell->setText("A");
    QCOMPARE(rows.count(), 1);
    Q_EMIT grid.titleClicked(0);
    QVERIFY(grid.horizontalHeader()->isSortIndicatorShown());
    browser->clearFilter();
    QVERIFY(rows.waitForAll());
    QCOMPARE(rows.count(), 2);
    QCOMPARE(cell->text(), "");
    using Act = GridBrowser::Act;
    QCOMPARE(acts, (std::vector{Act::Filter, Act::Order, Act::Clear}));

    rows.setValue(0, "Name", "C");
    database->execute("DELETE * FROM Artikel");
    cell->setText("B");
    Q_EMIT grid.titleClicked(0);
    browser->clearFilter();
    QCOMPARE(reports, 3);
    QCOMPARE(cell->text(), "");
    QVERIFY(rows.isEdited());
    QCOMPARE(acts.size(), size_t(3));
    QCOMPARE(grid.horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);

    rows.cancelRow();
    browser->setQuery(FilteredQuery({.base = "Select * from Artikel", .columns = {{.filter = "Name"}}}));
    QVERIFY(!grid.horizontalHeader()->isSortIndicatorShown());
    QCOMPARE(acts.size(), size_t(3));
  }
};

QTEST_MAIN(TestFilteredQuery)
#include "test_filtered_query.moc"
