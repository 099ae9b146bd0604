// qk-wettkampf sichern WETTKAMPF ORDNER
// qk-wettkampf zurueck KOPIE ZIEL [--ungeprueft] [--von-vorn]
#pragma once

#include <QStringList>
#include <QTextStream>

namespace qk {

/// `arguments` behind the command's name. UsageError for a wrong call, Error when it failed.

/// Makes a proven copy, beside whatever programs work with the competition.
void runCopyCommand(const QStringList& arguments, QTextStream& out);

/// Brings a copy back, after its evidence has been compared with it, into a new file or an empty store on a
/// server. Without the comparison only what SQLite finds flawless.
void runBringBackCommand(const QStringList& arguments, QTextStream& out);

}  // namespace qk
