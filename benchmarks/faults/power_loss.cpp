// One process shoots on a file layer that forgets what wasn't synced, until a random write is the last one;
// the next one finds the files as a machine would after the power came back.
#include <unistd.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QSet>
#include <QTextStream>
#include <random>

#include "benchmarks/bench_line.h"
#include "benchmarks/faults/faults.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/support/foreign/foreign_process.h"
#include "tests/support/lossy/lossy_vfs.h"

namespace qk::faults {

namespace {

constexpr int kMostWrites = 400;
constexpr int kPowerGone = 77;

QString ackFile(const QString& folder) {
  return folder + "/quittiert";
}
QString flagOf(const QString& folder) {
  return folder + "/austausch/HSlav1.ctl";
}

/// What a station knows for sure: the shots whose flag it saw disappear. Survives the power failure.
QStringList acknowledged(const QString& folder) {
  QFile file(ackFile(folder));
  if (!file.open(QIODevice::ReadOnly)) return {};
  return QString::fromUtf8(file.readAll()).split('\n', Qt::SkipEmptyParts);
}

void acknowledge(const QString& folder, int shot) {
  QFile file(ackFile(folder));
  if (file.open(QIODevice::Append)) file.write(QByteArray::number(shot) + "\n");
}

/// The hit number is the shot's own number: records are told apart by it.
int highestFired(const QString& folder) {
  QFile file(folder + "/gefeuert");
  return file.open(QIODevice::ReadOnly) ? file.readAll().toInt() : 0;
}

void fire(const QString& folder, int shot) {
  QFile file(folder + "/gefeuert");
  if (file.open(QIODevice::WriteOnly)) file.write(QByteArray::number(shot));
  file.close();
  bench::report(folder + "/austausch/", bench::record(shot));
}

}  // namespace

int powerLossChild(const QString& folder, unsigned seed) {
  std::mt19937 random(seed);
  const std::int64_t lastWrite = static_cast<std::int64_t>(random() % kMostWrites);
  lossy::install();
  lossy::onWrite([=](std::int64_t write) {
    if (write < lastWrite) return;
    lossy::loseUnsynced(seed);
    _exit(kPowerGone);
  });
  bench::BenchPlace place(bench::OnFolder{folder});
  UserControl1 line(place.workplace(), place.global(), 0);
  line.setLinie(1);
  line.Init(place.competition());
  line.Check_Old_Schuss(1);
  int shot = highestFired(folder);
  if (QFile::exists(flagOf(folder))) {
    bench::tick(line);
    if (!QFile::exists(flagOf(folder))) acknowledge(folder, shot);
  }
  for (;;) {
    fire(folder, ++shot);
    bench::tick(line);
    if (QFile::exists(flagOf(folder))) return 1;  // without a failure every shot is taken at once
    acknowledge(folder, shot);
  }
}

bool runPowerLosses(const QString& folder, int runs, unsigned seed) {
  { const bench::BenchPlace made(bench::InFolder{folder}); }
  for (int run = 0; run < runs; ++run) {
    QProcess child;
    child.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    child.start(QCoreApplication::applicationFilePath(),
                {"--power-child", folder, "--zufall", QString::number(seed + static_cast<unsigned>(run))});
    if (!child.waitForFinished(60000) || child.exitCode() != kPowerGone) {
      QTextStream(stdout) << "Stromausfall " << run << ": der Prozess endete mit " << child.exitCode()
                          << Qt::endl;
      return false;
    }
    // Whoever opens the file first when the power is back mends it: often enough that isn't our program.
    if (run % 2 == 0 && !(run % 4 == 0 ? test::foreignRead : test::foreignWrite)(folder + "/wettkampf.qkk")) {
      QTextStream(stdout) << "Stromausfall " << run << ": die Datei ist beschädigt" << Qt::endl;
      return false;
    }
  }
  QMap<int, int> stored;
  const auto store = dao::Database::open(folder + "/wettkampf.qkk");
  const auto rows = store->openRecordset("Select * from Haering_Daten");
  for (; !rows->eof(); rows->moveNext()) ++stored[bench::shotOf(*rows)];
  int missing = 0, doubled = 0;
  const QStringList known = acknowledged(folder);
  for (const QString& shot : known)
    if (!stored.contains(shot.toInt())) ++missing;
  for (const int count : stored)
    if (count > 1) ++doubled;
  QTextStream(stdout) << QString(
                             "%1 Stromausfälle, %2 fremde Öffnungen: %3 Schuss quittiert, %4 gespeichert, %5 "
                             "fehlen, %6 doppelt\n")
                             .arg(runs)
                             .arg((runs + 1) / 2)
                             .arg(known.size())
                             .arg(stored.size())
                             .arg(missing)
                             .arg(doubled);
  return missing == 0 && doubled == 0 && known.size() > runs;
}

}  // namespace qk::faults
