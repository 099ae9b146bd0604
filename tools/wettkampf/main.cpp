// qk-wettkampf: makes competitions, empty or for the demo, and moves them between files and servers.

#include <QCoreApplication>
#include <QTextStream>

#include "tools/wettkampf/commands.h"
#include "tools/wettkampf/console_password.h"

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QTextStream out(stdout);
  QTextStream errors(stderr);
  const qk::dao::SharedPasswords passwords(qk::passwordOnTerminal(errors));
  return qk::runCompetitionTool(application.arguments().mid(1), out, errors);
}
