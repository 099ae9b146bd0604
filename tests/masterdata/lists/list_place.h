// A small competition that lists are judged against and taken over into.
#pragma once

#include <memory>

#include "masterdata/lists/judge.h"
#include "platform/dao/database.h"
#include "tests/support/test_workplace.h"

namespace qk::test {

/// Shooters: 101 Müller Jörg (14.05.1980, M, licence L1, club 1, team 1, H2), 102 Böhm Käthe (unknown birth
/// date, W), twice 103 (Huber Max, Huber Moritz), 104 Weiß Toni (01.02.1990, no licence). Clubs: SG Grünau,
/// and twice Doppelt. Classes H1 and D1 from 21 to 40, H2 and D2 from 41 to 99; none below.
class ListPlace {
 public:
  ListPlace();

  dao::Database& store() { return *store_; }
  QString path() const { return path_; }
  /// Cells by ";", rows by line; columns by their headings.
  lists::Judgement judged(const QString& text, lists::ListKind kind = lists::ListKind::Shooters);
  /// The only row of it.
  lists::JudgedRow judgedRow(const QString& headings, const QString& cells,
                             lists::ListKind kind = lists::ListKind::Shooters);
  /// Judged, taken over without a remainder.
  void take(const QString& text, lists::ListKind kind = lists::ListKind::Shooters);
  /// A row of a query as "a|b|c", rows by "/".
  QString rows(const QString& query);

  TestWorkplace place;

 private:
  QString path_;
  std::unique_ptr<dao::Database> store_;
};

/// "neu: Startnummer= > 5, …; faults; remarks" in one line.
QString shown(const lists::JudgedRow& row);

/// Cells as a list's table, the first row being the heading.
std::shared_ptr<const lists::CsvTable> listOf(const QString& text);

}  // namespace qk::test
