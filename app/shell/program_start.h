// The start of a program with a window: what it answers on a console, the workplace, the one instance of its
// kind, and the place above the event loop where an error that nobody handled ends it.
#pragma once

#include <QString>
#include <QStringList>
#include <functional>

#include "app/shell/qk_application.h"
#include "app/shell/single_instance.h"
#include "platform/workplace.h"

class QWidget;

namespace qk {

/// One of the things that a program may be started for.
struct ProgramCall {
  QString kind;         ///< of which there is one on a workstation, "instanz"
  QString path;         ///< of a competition; empty for the last one
  QString alreadyRuns;  ///< for the console, when there is one already
};

struct Program {
  QString name;   ///< of the executable
  QString title;  ///< on the screen
  QString help;
  /// What the arguments (without the program's name) ask for.
  std::function<ProgramCall(const QStringList& arguments)> call;
  /// Shows the window and runs until it goes; the process's exit status.
  std::function<int(QkApplication&, const Workplace&, SingleInstance&, const ProgramCall&)> run;
};

/// Runs the program; the process's exit status. A second instance brings the first one to the front.
int startProgram(int argc, char** argv, const Program& program);

/// The window comes to the front whenever a second instance was started.
void comeToFrontWith(SingleInstance& instance, QWidget& window);

}  // namespace qk
