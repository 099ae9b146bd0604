// A grid on the screen as a table to be printed.
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>
#include <QTest>

#include "platform/report/shown_grid.h"

using namespace qk;
using namespace qk::report;

class TestShownGrid : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void whatIsShownAsItIsShown() {
    QStandardItemModel model(2, 4);
    model.setHorizontalHeaderLabels({"Nr", "Ort", "Versteckt", "Mitte"});
    for (int row = 0; row < 2; ++row)
      for (int column = 0; column < 4; ++column)
        model.setItem(row, column, new QStandardItem(QString("%1/%2").arg(row).arg(column)));
    model.item(0, 0)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
    model.item(0, 3)->setTextAlignment(Qt::AlignCenter);
    QTableView view;
    view.setModel(&model);
    view.setColumnHidden(2, true);
    view.setColumnWidth(0, 40);
    view.setColumnWidth(1, 160);
    view.setColumnWidth(3, 80);
    view.horizontalHeader()->moveSection(3, 0);
    const GridTable table = shownGrid(view);
    QStringList columns;
    for (const GridColumn& each : table.columns)
      columns << QString("%1 %2 %3").arg(each.heading).arg(each.width).arg(int(each.align));
    QCOMPARE(columns, (QStringList{"Mitte 80 1", "Nr 40 2", "Ort 160 0"}));
    QCOMPARE(table.rows, (std::vector<QStringList>{{"0/3", "0/0", "0/1"}, {"1/3", "1/0", "1/1"}}));
    model.removeRows(0, 2);
    QVERIFY(shownGrid(view).rows.empty());
    QCOMPARE(shownGrid(view).columns.size(), size_t(3));
  }
};

QTEST_MAIN(TestShownGrid)
#include "test_shown_grid.moc"
