#include "benchmarks/counting.h"

#include <valgrind/callgrind.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextStream>
#include <algorithm>
#include <limits>
#include <stdexcept>
#include <string_view>

#include "platform/dao/rows/list_pace.h"

namespace qk::bench {

namespace {

constexpr auto kHouse = "house", kFromStart = "--erstmals";

[[noreturn]] void fail(const QString& why) {
  throw std::runtime_error(why.toStdString());
}

/// No hash that differs by run, no address that differs by run.
void run(const QStringList& before, const QString& name, const QString& side, const QStringList& behind) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("QT_HASH_SEED", "0");
  process.setProcessEnvironment(environment);
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start(
      "setarch",
      QStringList{"--addr-no-randomize"} + before +
          QStringList{QCoreApplication::applicationFilePath(), "--gezaehlt", name, "--seite", side} + behind);
  if (!process.waitForFinished(-1) || process.exitStatus() != QProcess::NormalExit || process.exitCode() != 0)
    fail(name + ", " + side + ": " + process.errorString() + "\n" +
         QString::fromLocal8Bit(process.readAll()));
}

/// Lines of a file, in turn.
void eachLine(const QString& path, const std::function<void(const QByteArray&)>& take) {
  QFile file(path);
  if (!file.open(QIODevice::ReadOnly)) fail(path + ": " + file.errorString());
  while (!file.atEnd()) take(file.readLine().trimmed());
}

/// The instructions that a file of callgrind's tells, if they are of a measured stretch.
qint64 measuredIn(const QString& path) {
  bool measured = false;
  qint64 instructions = 0;
  eachLine(path, [&](const QByteArray& line) {
    if (line.startsWith("desc: Trigger:")) measured = line.endsWith(kMeasured);
    if (line.startsWith("summary:") && measured) instructions = line.mid(8).trimmed().toLongLong();
  });
  return instructions;
}

/// The calls of the system in the measured stretches of valgrind's log, each told by a line of its own; one
/// that may wait has another line for its end.
qint64 callsIn(const QString& path) {
  static const QRegularExpression call(R"(^SYSCALL\[\d+,\d+\]\( *\d+\)(?! \.\.\. \[async\]))");
  bool measured = false;
  qint64 calls = 0;
  eachLine(path, [&](const QByteArray& line) {
    if (line.endsWith(kMeasured)) measured = true;
    if (line.endsWith(kPaused)) measured = false;
    if (measured && call.match(QString::fromLatin1(line)).hasMatch()) ++calls;
  });
  return calls;
}

struct Count {
  double instructions = 0;
  double calls = 0;  ///< of the system, where they are asked for
};

/// Of one round.
Count countOf(const Pair& pair, const QString& side) {
  run({}, pair.name, side, {"--bereiten"});
  const QTemporaryDir folder;
  QStringList valgrind{"valgrind",
                       "--tool=callgrind",
                       "--instr-atstart=no",
                       "--fair-sched=try",
                       "--compress-strings=yes",
                       "--callgrind-out-file=" + folder.filePath("counts"),
                       "--log-file=" + folder.filePath("log")};
  if (pair.calls) valgrind << "--trace-syscalls=yes";
  run(valgrind, pair.name, side, pair.fromStart ? QStringList{kFromStart} : QStringList());
  qint64 instructions = 0;
  for (const QString& file : QDir(folder.path()).entryList({"counts*"}, QDir::Files))
    instructions += measuredIn(folder.filePath(file));
  if (instructions == 0) fail(pair.name + ", " + side + ": nothing was counted");
  Count count{static_cast<double>(instructions) / pair.counted};
  if (pair.calls) count.calls = static_cast<double>(callsIn(folder.filePath("log"))) / pair.counted;
  return count;
}

}  // namespace

double countedRatio(const Pair& pair) {
  if (pair.ground) pair.ground();
  const Count house = countOf(pair, kHouse), bare = countOf(pair, "bare");
  QTextStream out(stdout);
  out << QString("  %1: %2 gegen %3 Befehle")
             .arg(pair.name)
             .arg(house.instructions, 0, 'f', 0)
             .arg(bare.instructions, 0, 'f', 0);
  if (pair.calls)
    out << QString(", %1 gegen %2 Systemaufrufe").arg(house.calls, 0, 'f', 1).arg(bare.calls, 0, 'f', 1);
  out << "\n";
  return pair.calls ? house.calls / bare.calls : house.instructions / bare.instructions;
}

void countFromHere(int argc, const char* const* argv) {
  const auto isAsked = [](const char* argument) { return std::string_view(argument) == kFromStart; };
  if (std::none_of(argv, argv + argc, isAsked)) return;
  CALLGRIND_START_INSTRUMENTATION;
  CALLGRIND_ZERO_STATS;
}

int runCounted(const QString& name, const QString& side, bool onlyMakes) {
  const auto pair =
      std::find_if(pairs().begin(), pairs().end(), [&](const Pair& one) { return one.name == name; });
  if (pair == pairs().end()) return 2;
  // Under callgrind everything takes fifty times as long. What is done because time has passed would differ
  // from run to run.
  constexpr int kNever = std::numeric_limits<int>::max();
  dao::listPace() = {kNever, kNever, kNever};
  QApplication::setCursorFlashTime(0);
  Rounds rounds = onlyMakes         ? Rounds::none()
                  : pair->fromStart ? Rounds::first()
                                    : Rounds::counted(pair->counted);
  (side == kHouse ? pair->house : pair->bare)(rounds);
  if (onlyMakes) return 0;
  QTextStream(stderr) << QString::fromStdString(rounds.failure());
  return rounds.failure().empty() ? 0 : 1;
}

}  // namespace qk::bench
