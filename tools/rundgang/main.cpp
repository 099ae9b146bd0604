// Walks the road of a shot on the real program: shooter, price mode, registration, shots, a crash in
// mid-series, the way back, ticking, transfer, booking; then reckons everything again from the stations' log.
// Exit status 0 only if all agrees.
#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QTextStream>
#include <QThread>
#include <algorithm>

#include "tools/rundgang/range.h"
#include "tools/rundgang/reckoning.h"
#include "tools/rundgang/walk.h"

namespace {

using namespace qk;

struct Lane {
  int line;
  QString startNumber;
  QString stationDiscipline;
  int stationShots;    ///< of one registration
  QString discipline;  ///< the competition's, a ring series long enough for all
  int seriesLength;
  bool tenths;
};

const Lane kLanes[] = {
    {1, "105", "LG Serie 20", 20, "LG Meister", 40, false},
    {2, "107", "LG Serie 10", 10, "LG Meister Zehntel", 40, true},
};
constexpr int kShotsBeforeTheCrash = 4;

void say(const QString& text) {
  QTextStream(stdout) << text << Qt::endl;
}

void intoPriceMode(Range& range, DrivenProgram& program, const Lane& lane) {
  Walk walk(program);
  walk.selectLine(lane.line);
  walk.priceModeOn(lane.line);
  const auto taken = [&] { return !range.commandPending(lane.line); };
  program.waitUntil("command 76 taken", taken);
  walk.sendShooter(lane.line);
  program.waitUntil("command 75 taken", taken);
}

void untilTheCrash(Range& range) {
  const auto program = range.startProgram();
  Walk walk(*program);
  program->waitUntil("main window", [&] { return !program->items("tree").isEmpty(); });
  program->grab(range.picture("1-start"));
  for (const Lane& lane : kLanes) {
    walk.selectLine(lane.line);
    walk.chooseShooter(lane.line, lane.startNumber);
    walk.tickStationDiscipline(lane.line, lane.stationDiscipline);
    intoPriceMode(range, *program, lane);
  }
  for (const Lane& lane : kLanes) walk.waitForOpenShots(lane.line, kShotsBeforeTheCrash);
  program->grab(range.picture("2-vor-dem-absturz"));
  program->kill();
  say("Programm mitten in der Serie beendet (SIGKILL).");
}

int shotsOn(const std::vector<FiredShot>& shots, int line) {
  return static_cast<int>(
      std::count_if(shots.begin(), shots.end(), [line](const FiredShot& shot) { return shot.line == line; }));
}

/// The registration after the crash is shot to its end: nothing more comes, and all that came is open.
void waitForTheEnd(Range& range, DrivenProgram& program, const Lane& lane, int firedBefore) {
  Walk walk(program);
  const auto fired = [&] { return shotsOn(firedShots(range.stationLog()), lane.line); };
  program.waitUntil(
      QString("the last shot of line %1").arg(lane.line),
      [&] {
        const int before = fired();
        if (before < firedBefore + lane.stationShots || walk.openShots(lane.line) != before) return false;
        QThread::msleep(1500);  // longer than a poll: a station that had more to fire would have fired
        return fired() == before;
      },
      180);
}

/// What was fired before the crash, by line.
QMap<int, int> firedSoFar(const Range& range) {
  QMap<int, int> counts;
  for (const FiredShot& shot : firedShots(range.stationLog())) ++counts[shot.line];
  return counts;
}

void afterTheCrash(Range& range) {
  const QMap<int, int> before = firedSoFar(range);
  const auto program = range.startProgram();
  Walk walk(*program);
  program->waitUntil("main window", [&] { return !program->items("tree").isEmpty(); });
  program->grab(range.picture("3-nach-dem-absturz"));
  for (const Lane& lane : kLanes) {
    walk.selectLine(lane.line);
    if (walk.openShots(lane.line) < kShotsBeforeTheCrash)
      throw DriverError("open shots are missing after the crash");
    walk.tickStationDiscipline(lane.line, lane.stationDiscipline);
    intoPriceMode(range, *program, lane);
  }
  for (const Lane& lane : kLanes) {
    waitForTheEnd(range, *program, lane, before[lane.line]);
    walk.selectLine(lane.line);
    walk.tickDiscipline(lane.line, lane.discipline);
    walk.tickAllShots(lane.line);
    walk.transfer(lane.line);
    program->grab(range.picture(QString("4-linie-%1-uebertragen").arg(lane.line)));
    walk.saveAndBook(lane.line);
    program->grab(range.picture(QString("5-linie-%1-verbucht").arg(lane.line)));
    walk.signOffAndLeavePriceMode(lane.line);
  }
  walk.close(false);
  say("Alle Schuss verbucht, Programm geschlossen.");
}

bool agrees(const Range& range) {
  const auto fired = firedShots(range.stationLog());
  std::vector<ExpectedSeries> series;
  for (const Lane& lane : kLanes) {
    std::vector<FiredShot> own;
    for (const FiredShot& shot : fired)
      if (shot.line == lane.line) own.push_back(shot);
    for (const ExpectedSeries& s : seriesOf(own, lane.discipline, lane.seriesLength, lane.tenths))
      series.push_back(s);
  }
  return !fired.empty() && printTable(reckon(range.competition(), fired, 0, series));
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QCommandLineParser parser;
  parser.addOption({"ordner", "Leerer Ordner für Wettkampf, Austausch und Bilder.", "ORDNER"});
  parser.addHelpOption();
  parser.process(app);
  bool good = false;
  try {
    RangeOptions options;
    options.folder = QDir(parser.value("ordner")).absolutePath();
    Range range(options);
    range.startStations();
    untilTheCrash(range);
    afterTheCrash(range);
    range.stopStations();
    good = agrees(range);
    say("Bilder: " + options.folder + "/*.png");
  } catch (const std::exception& problem) {
    QTextStream(stderr) << problem.what() << Qt::endl;
    return 1;
  }
  return good ? 0 : 1;
}
