#include "platform/report/shown_grid.h"

#include <QHeaderView>
#include <QTableView>

namespace qk::report {

namespace {

Align alignOf(const QAbstractItemModel& model, int column) {
  const int shown = model.index(0, column).data(Qt::TextAlignmentRole).toInt();
  if (shown & Qt::AlignRight) return Align::Right;
  return shown & Qt::AlignHCenter ? Align::Centre : Align::Left;
}

}  // namespace

GridTable shownGrid(const QTableView& grid) {
  GridTable table;
  const QAbstractItemModel& model = *grid.model();
  QList<int> columns;
  for (int place = 0; place < grid.horizontalHeader()->count(); ++place) {
    const int column = grid.horizontalHeader()->logicalIndex(place);
    if (grid.isColumnHidden(column)) continue;
    columns << column;
    table.columns.push_back({.heading = model.headerData(column, Qt::Horizontal).toString(),
                             .width = double(grid.columnWidth(column)),
                             .align = alignOf(model, column)});
  }
  for (int row = 0; row < model.rowCount(); ++row) {
    QStringList& cells = table.rows.emplace_back();
    for (const int column : std::as_const(columns)) cells << model.index(row, column).data().toString();
  }
  return table;
}

}  // namespace qk::report
