// Lists as text: comma separated values as spreadsheets and member programs write them, and back.
//
// A list is read whole before anybody looks at it. What can't be read for certain is refused with one German
// sentence: half a list, or one whose cells have slipped, is worse than none.
#pragma once

#include <QByteArray>
#include <QStringList>
#include <functional>
#include <vector>

namespace qk::lists {

/// Asked now and then during long work; false stops it.
using GoesOn = std::function<bool(int done, int all)>;

/// A list in a file is at most this long; beyond it the file is refused.
inline constexpr qint64 kLongestFile = 64 * 1024 * 1024;
inline constexpr int kMostRows = 100'000;
inline constexpr int kMostCells = 5'000'000;

struct CsvTable {
  /// The first one is the heading. A cell with nothing in it is Null, an empty pair of quotes is empty: an
  /// export tells "never entered" from "empty" by it.
  std::vector<QStringList> rows;
  std::vector<int> lines;  ///< the line of the file, from 1, on which each row begins
  QChar separator = u';';
  QString encoding;  ///< "UTF-8", "UTF-16" or "Windows-1252"
};

struct CsvReading {
  CsvTable table;
  QString refusal;       ///< why it can't be read; empty when it could
  bool stopped = false;  ///< `goesOn` said so
  bool ok() const { return refusal.isEmpty() && !stopped; }
};

/// Separator `;`, `,` or tab, found by looking; a first line "sep=;" (spreadsheets write it) says it
/// outright. UTF-8, UTF-16 with its mark, else Windows-1252. Quoted cells may hold line breaks and doubled
/// quotes; blanks around cells without quotes are no part of them. Lines end in CR, LF or both; empty ones
/// don't count.
CsvReading readCsv(const QByteArray& bytes, const GoesOn& goesOn = {});

/// UTF-8 with its mark, `;`, CR LF: what a German spreadsheet opens by a double click. Null cells stay bare.
/// Reading it again gives the same cells, in Unicode's form C.
QByteArray writeCsv(const std::vector<QStringList>& rows);

}  // namespace qk::lists
