#include "tools/wettkampf/progress_lines.h"

#include <QLocale>

namespace qk {

namespace {

/// Rows between two lines about one table.
constexpr qint64 kRowsPerLine = 10000;

}  // namespace

QString counted(qint64 rows) {
  return QLocale(QLocale::German).toString(rows);
}

void ProgressLines::show(const MoveStep& step) {
  const bool copying = step.kind == MoveStep::Kind::Copying;
  if (step.done ? !copying : step.rows - shown_ < kRowsPerLine && step.rows > shown_) return;
  shown_ = step.done ? 0 : step.rows;
  out_ << (copying ? "" : "Prüfe ") << QString("[%1/%2] ").arg(step.number).arg(step.tables) << step.table
       << ": " << counted(step.rows) << (step.done ? " Zeilen" : " Zeilen ...") << Qt::endl;
}

void moveWithLines(const MoveRequest& request, QTextStream& out) {
  ProgressLines lines(out);
  const MoveResult result = moveCompetition(request, [&lines](const MoveStep& step) { lines.show(step); });
  out << QString("Geprüft: %1 Tabellen mit %2 Zeilen, alle Anzahlen und Summen stimmen überein.\n")
             .arg(result.tables)
             .arg(counted(result.rows));
}

}  // namespace qk
