// qk-faults: the runs that try to lose a shot. Exit status 0 only when none got lost and none doubled.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QTextStream>

#include "benchmarks/faults/faults.h"
#include "platform/runtime/program_call.h"

int main(int argc, char** argv) {
  QApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addOption({"ordner", "Empty folder for the runs.", "FOLDER"});
  parser.addOption({"kills", "How often the program is ended by SIGKILL.", "N", "0"});
  parser.addOption({"power", "How often the power fails.", "N", "0"});
  parser.addOption({"desks", "Two programs on one server, and how many shots they get.", "N", "0"});
  parser.addOption({"server-kills", "How often the server of the desks is ended by SIGKILL.", "N", "3"});
  parser.addOption(
      {"promotion", "Two programs, a server and its standby, and how many shots they get.", "N", "0"});
  parser.addOption({"file-desks", "Two programs on one file, and how many shots they get.", "N", "0"});
  parser.addOption({"tills", "Two cash desks on one server, and how many stakes they sell.", "N", "0"});
  parser.addOption({"moves", "How often a competition is moved.", "N", "0"});
  parser.addOption({"copies", "How often the making of a copy is ended by SIGKILL.", "N", "0"});
  parser.addOption({"server-copies", "The same with the competition on a server.", "N", "0"});
  parser.addOption({"zufall", "Seed of all chance.", "N", "1"});
  parser.addOption({"power-child", "One power failure, in a process of its own.", "FOLDER"});
  if (qk::answeredCall(app.arguments().mid(1), "qk-faults", parser.helpText())) return 0;
  parser.process(app);

  const unsigned seed = parser.value("zufall").toUInt();
  if (parser.isSet("power-child")) return qk::faults::powerLossChild(parser.value("power-child"), seed);

  const QDir folder(parser.value("ordner"));
  bool good = true;
  try {
    if (const int runs = parser.value("kills").toInt()) {
      folder.mkpath("kills");
      good = qk::faults::runKills(folder.absoluteFilePath("kills"), runs, seed) && good;
    }
    if (const int shots = parser.value("desks").toInt()) {
      folder.mkpath("desks");
      const int kills = parser.value("server-kills").toInt();
      good = qk::faults::runDesks(folder.absoluteFilePath("desks"), shots, kills, seed) && good;
    }
    if (const int shots = parser.value("promotion").toInt()) {
      folder.mkpath("promotion");
      good = qk::faults::runPromotion(folder.absoluteFilePath("promotion"), shots, seed) && good;
    }
    if (const int shots = parser.value("file-desks").toInt()) {
      folder.mkpath("file-desks");
      good = qk::faults::runFileDesks(folder.absoluteFilePath("file-desks"), shots, seed) && good;
    }
    if (const int stakes = parser.value("tills").toInt()) {
      folder.mkpath("tills");
      const int kills = parser.value("server-kills").toInt();
      good = qk::faults::runTills(folder.absoluteFilePath("tills"), stakes, kills, seed) && good;
    }
    if (const int runs = parser.value("moves").toInt()) {
      folder.mkpath("moves");
      good = qk::faults::runMoves(folder.absoluteFilePath("moves"), runs, seed) && good;
    }
    if (const int runs = parser.value("copies").toInt()) {
      folder.mkpath("copies");
      good = qk::faults::runCopies(folder.absoluteFilePath("copies"), runs, seed) && good;
    }
    if (const int runs = parser.value("server-copies").toInt()) {
      folder.mkpath("server-copies");
      good = qk::faults::runServerCopies(folder.absoluteFilePath("server-copies"), runs, seed) && good;
    }
    if (const int runs = parser.value("power").toInt()) {
      folder.mkpath("power");
      good = qk::faults::runPowerLosses(folder.absoluteFilePath("power"), runs, seed) && good;
    }
  } catch (const std::exception& problem) {
    QTextStream(stderr) << problem.what() << Qt::endl;
    return 1;
  }
  return good ? 0 : 1;
}
