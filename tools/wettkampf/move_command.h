// qk-wettkampf umziehen VON NACH [--von-vorn]
#pragma once

#include <QStringList>
#include <QTextStream>

namespace qk {

/// `arguments` behind the command's name. Writes how far it is to `out`, a line at a time. UsageError for a
/// wrong call, Error when the move failed.
void runMoveCommand(const QStringList& arguments, QTextStream& out);

}  // namespace qk
