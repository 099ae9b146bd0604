// A grid as a report: its rows as they stand on the screen, in its order and its widths.
#pragma once

#include "platform/report/report_data.h"

namespace qk::report {

struct GridColumn {
  QString heading;
  double width = 1;  ///< in whatever unit; all columns together fill the page
  Align align = Align::Left;
};

struct GridTable {
  QString title;
  QStringList head;  ///< lines below the title
  std::vector<GridColumn> columns;
  std::vector<QStringList> rows;
};

struct GridReport {
  Definition definition;
  std::shared_ptr<const TableRows> rows;
};

/// For ReportControl: the definition, and the rows that it is run on. A table wider than it is readable
/// upright lies across the page.
GridReport gridReport(const GridTable& table);

}  // namespace qk::report
