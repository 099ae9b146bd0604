#include "tools/wettkampf/move_command.h"

#include "tools/wettkampf/progress_lines.h"
#include "tools/wettkampf/usage_error.h"

namespace qk {

namespace {

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

}  // namespace

void runMoveCommand(const QStringList& arguments, QTextStream& out) {
  const MoveRequest request = parseMove(arguments);
  out << "Umzug von " << request.from << " nach " << request.to << Qt::endl;
  moveWithLines(request, out);
  out << "Umgezogen nach " << request.to << ". " << request.from << " ist unverändert." << Qt::endl;
}

}  // namespace qk
