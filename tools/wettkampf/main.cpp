// qk-wettkampf: makes competition files, empty or for the demo.

#include <QCoreApplication>
#include <QTextStream>

#include "tools/wettkampf/commands.h"

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QTextStream out(stdout);
  QTextStream errors(stderr);
  return qk::runCompetitionTool(application.arguments().mid(1), out, errors);
}
