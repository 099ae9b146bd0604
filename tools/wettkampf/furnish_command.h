// qk-wettkampf einrichten SERVERDATEI
#pragma once

#include <QStringList>
#include <QTextStream>

namespace qk {

/// Brings what this program keeps on the server of a competition to its own state, which only the owner of
/// the database may. `arguments` behind the command's name. UsageError for a wrong call or a file that names
/// no server, else the errors of opening.
void runFurnishCommand(const QStringList& arguments, QTextStream& out);

}  // namespace qk
