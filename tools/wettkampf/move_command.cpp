#include "tools/wettkampf/move_command.h"

#include <QLocale>

#include "masterdata/making/move.h"
#include "tools/wettkampf/usage_error.h"

namespace qk {

namespace {

/// Rows between two lines about one table.
constexpr qint64 kRowsPerLine = 10000;

MoveRequest parseMove(const QStringList& arguments) {
  MoveRequest request;
  QStringList paths;
  for (const QString& argument : arguments) {
    if (argument == "--von-vorn")
      request.again = true;
    else if (argument.startsWith("--"))
      throw UsageError{QString("Unbekannte Angabe »%1«.").arg(argument)};
    else
      paths.append(argument);
  }
  if (paths.size() != 2) throw UsageError{"Es fehlt, von wo und wohin: umziehen VON NACH."};
  request.from = paths.at(0);
  request.to = paths.at(1);
  return request;
}

/// One line for each table, and for a long one how far it is.
class ProgressLines {
 public:
  explicit ProgressLines(QTextStream& out) : out_(out) {}

  void show(const MoveStep& step) {
    const bool copying = step.kind == MoveStep::Kind::Copying;
    if (step.done ? !copying : step.rows - shown_ < kRowsPerLine && step.rows > shown_) return;
    shown_ = step.done ? 0 : step.rows;
    out_ << (copying ? "" : "Prüfe ") << QString("[%1/%2] ").arg(step.number).arg(step.tables) << step.table
         << ": " << QLocale(QLocale::German).toString(step.rows) << (step.done ? " Zeilen" : " Zeilen ...")
         << Qt::endl;
  }

 private:
  QTextStream& out_;
  qint64 shown_ = 0;
};

}  // namespace

void runMoveCommand(const QStringList& arguments, QTextStream& out) {
  const MoveRequest request = parseMove(arguments);
  out << "Umzug von " << request.from << " nach " << request.to << Qt::endl;
  ProgressLines lines(out);
  const MoveResult result = moveCompetition(request, [&lines](const MoveStep& step) { lines.show(step); });
  out << QString("Geprüft: %1 Tabellen mit %2 Zeilen, alle Anzahlen und Summen stimmen überein.")
             .arg(result.tables)
             .arg(QLocale(QLocale::German).toString(result.rows))
      << "\nUmgezogen nach " << request.to << ". " << request.from << " ist unverändert." << Qt::endl;
}

}  // namespace qk
