#include "benchmarks/counting.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <stdexcept>

namespace qk::bench {

namespace {

constexpr auto kHouse = "house";

[[noreturn]] void fail(const QString& why) {
  throw std::runtime_error(why.toStdString());
}

/// No hash that differs by run, no address that differs by run.
void run(const QStringList& before, const QString& name, const QString& side) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_HASH_SEED", "0");
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start("setarch", QStringList{"--addr-no-randomize"} + before +
                               QStringList{QCoreApplication::applicationFilePath(), "--gezaehlt", name,
                                           "--seite", side});
  if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
    fail(name + ", " + side + ": " + process.errorString() + "\n" +
         QString::fromLocal8Bit(process.readAll()));
}

/// The instructions that a file of callgrind's tells, if they are of a measured stretch.
qint64 measuredIn(const QString& path) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) fail(path + ": " + file.errorString());
  bool measured = false;
  while (!file.atEnd()) {
    const QByteArray line = file.readLine().trimmed();
    if (line.startsWith("desc: Trigger:")) measured = line.endsWith(kMeasured);
    if (line.startsWith("summary:")) return measured ? line.mid(8).trimmed().toLongLong() : 0;
  }
  return 0;
}

double instructionsOf(const Pair& pair, const QString& side) {
  const QTemporaryDir folder;
  run({"valgrind", "--tool=callgrind", "--instr-atstart=no", "--compress-strings=yes",
       "--callgrind-out-file=" + folder.filePath("counts")},
      pair.name, side);
  qint64 all = 0;
  for (const QString& file : QDir(folder.path()).entryList({"counts*"}, QDir::Files))
    all += measuredIn(folder.filePath(file));
  if (all == 0) fail(pair.name + ", " + side + ": nothing was counted");
  return static_cast<double>(all) / pair.counted;
}

}  // namespace

double countedRatio(const Pair& pair) {
  if (pair.ground) pair.ground();
  double counts[2] = {};
  for (int side = 0; side < 2; ++side) counts[side] = instructionsOf(pair, side == 0 ? kHouse : "bare");
  QTextStream(stdout) << QString("  %1: %2 gegen %3 Befehle\n")
                             .arg(pair.name)
                             .arg(counts[0], 0, 'f', 0)
                             .arg(counts[1], 0, 'f', 0);
  return counts[0] / counts[1];
}

int runCounted(const QString& name, const QString& side) {
  const auto pair =
      std::find_if(pairs().begin(), pairs().end(), [&](const Pair& one) { return one.name == name; });
  if (pair == pairs().end()) return 2;
  Rounds rounds(pair->counted);
  (side == kHouse ? pair->house : pair->bare)(rounds);
  QTextStream(stderr) << QString::fromStdString(rounds.failure());
  return rounds.failure().empty() ? 0 : 1;
}

}  // namespace qk::bench
