// A grid on the screen as a table for the report control: what stands there, as it stands there.
#pragma once

#include "platform/report/grid_report.h"

class QTableView;

namespace qk::report {

/// The shown columns in their order from left to right, with their titles, widths and alignments, and all
/// rows in their order. Title and head are the caller's to add.
GridTable shownGrid(const QTableView& grid);

}  // namespace qk::report
