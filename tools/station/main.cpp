// qk-station: simulated stations on an exchange folder.

#include <QCoreApplication>
#include <QFileSystemWatcher>
#include <QTextStream>
#include <QTimer>
#include <csignal>
#include <memory>

#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/program_call.h"
#include "platform/runtime/textcodec.h"
#include "tools/station/options.h"

namespace {

volatile std::sig_atomic_t stopWanted = 0;
void wantStop(int) {
  stopWanted = 1;
}

constexpr int lookMilliseconds = 25;

std::vector<std::unique_ptr<qk::Station>> makeStations(const qk::StationOptions& options, qk::Files& files,
                                                       const qk::Clock& clock, QTextStream& out) {
  std::vector<qk::RecordedLine> recorded;
  if (!options.replayFile.isEmpty()) recorded = qk::readShotLog(files.read(options.replayFile));
  const auto log = [&files, name = options.logFile](const QString& line) {
    if (!name.isEmpty()) files.append(name, qk::toWindows1252(line + "\r\n"));
  };
  const auto note = [&out](const QString& text) { out << text << Qt::endl; };

  std::vector<std::unique_ptr<qk::Station>> stations;
  for (const int line : options.lines) {
    qk::StationSetup setup;
    setup.line = line;
    setup.folder = options.folder;
    setup.paceMs = options.paceMs;
    setup.seed = options.seed;
    setup.shotLimit = options.shotLimit;
    setup.faults = options.faults;
    setup.faultPercent = options.faultPercent;
    if (!options.replayFile.isEmpty()) setup.replay.emplace();
    for (const qk::RecordedLine& shot : recorded)
      if (shot.line == line) setup.replay->push_back(shot.text);
    stations.push_back(std::make_unique<qk::Station>(std::move(setup), files, clock, log, note));
  }
  return stations;
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication application(argc, argv);
  QTextStream out(stdout);
  QTextStream errors(stderr);
  QString fault;
  const QStringList arguments = application.arguments().mid(1);
  if (qk::answeredCall(arguments, "qk-station", qk::stationHelp())) return 0;
  const qk::StationOptions options = qk::parseStationOptions(arguments, &fault);
  qk::Files files;
  if (fault.isEmpty() && !files.folderExists(options.folder)) fault = "Der Ordner fehlt: " + options.folder;
  if (!fault.isEmpty()) {
    errors << fault << "\nHilfe: qk-station --hilfe" << Qt::endl;
    return 2;
  }

  const qk::SystemClock clock;
  std::vector<std::unique_ptr<qk::Station>> stations;
  try {
    stations = makeStations(options, files, clock, out);
  } catch (const qk::Error& error) {
    errors << options.replayFile << ": " << error.description() << Qt::endl;
    return 2;
  }

  QString lastTrouble;
  const auto lookAround = [&] {
    QString trouble;
    bool done = true;
    for (const auto& station : stations) {
      try {
        station->look();
      } catch (const qk::Error& error) {
        trouble = error.description();  // a folder that is gone for a moment comes back
      }
      done &= station->isFinished();
    }
    if (!trouble.isEmpty() && trouble != lastTrouble) errors << trouble << Qt::endl;
    lastTrouble = trouble;
    if (stopWanted || (done && options.endWhenDone)) application.quit();
  };

  std::signal(SIGTERM, wantStop);
  std::signal(SIGINT, wantStop);
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, lookAround);
  timer.start(lookMilliseconds);
  // The watcher only makes the stations quicker; on a network folder the timer carries them.
  QFileSystemWatcher watcher({options.folder});
  QObject::connect(&watcher, &QFileSystemWatcher::directoryChanged, lookAround);
  return application.exec();
}
