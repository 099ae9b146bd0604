// The command line of qk-wettkampf.
#pragma once

#include <QStringList>
#include <QTextStream>

namespace qk {

/// `arguments` without the program's name. Returns the exit status: 0 done, 1 failed, 2 wrong call.
int runCompetitionTool(const QStringList& arguments, QTextStream& out, QTextStream& errors);

}  // namespace qk
