// qk-wettkampf: makes competitions, empty or for the demo, moves them between files and servers, makes proven
// copies of them and brings those back.

#include <QCoreApplication>
#include <QTextStream>

#include "app/shell/kept_timelines.h"
#include "platform/settings/settings.h"
#include "tools/wettkampf/commands.h"
#include "tools/wettkampf/console_password.h"

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QTextStream out(stdout);
  QTextStream errors(stderr);
  const qk::dao::SharedPasswords passwords(qk::passwordOnTerminal(errors));
  const qk::dao::KeptTimelines timelines(qk::timelinesIn(qk::Settings::defaultFilePath()));
  return qk::runCompetitionTool(application.arguments().mid(1), out, errors);
}
