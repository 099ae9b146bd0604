#include <QFile>
#include <QProcess>
#include <QTextStream>
#include <random>

#include "app/ground/unfinished_move.h"
#include "benchmarks/faults/faults.h"
#include "benchmarks/faults/stored_shots.h"
#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "tests/support/foreign/foreign_process.h"

namespace qk::faults {

namespace {

constexpr int kShots = 500;
constexpr unsigned kLongestLife = 400;  ///< milliseconds of a move that is killed
constexpr int kPatience = 60000;

void addShots(const QString& competition) {
  const auto store = dao::Database::open(competition, dao::OpenOptions{.durable = false});
  if (!store->hasTable("Haering_Daten"))
    store->createTable(*embeddedSchema("LeerSA.txt").table("Haering_Daten"));
  const auto rows = store->openRecordset("Select * from Haering_Daten");
  for (int shot = 1; shot <= kShots; ++shot) {
    rows->addNew();
    rows->setValue("Treffernummer", QString::number(shot));
    rows->setValue("Liniennummer", 1);
    rows->update();
  }
}

QProcess& started(QProcess& move, const QString& from, const QString& to, bool again) {
  QStringList arguments{"umziehen", from, to};
  if (again) arguments << "--von-vorn";
  move.setProcessChannelMode(QProcess::MergedChannels);
  move.start(QString(QK_BIN_FOLDER) + "/qk-wettkampf", arguments);
  move.waitForStarted();
  return move;
}

/// Whether what lies there says of itself that it is whole.
bool isWhole(const QString& competition) {
  return QFile::exists(competition) && !isUnfinishedMove(*dao::Database::open(competition));
}

/// Until it is done. The source may be in somebody's hands just then: the move says so, and is begun again.
bool moveAtLast(const QString& from, const QString& to) {
  constexpr int kTrials = 200;
  for (int trial = 0; trial < kTrials; ++trial) {
    QProcess move;
    if (started(move, from, to, QFile::exists(to)).waitForFinished(kPatience) && move.exitCode() == 0)
      return true;
    if (QFile::exists(to) && isWhole(to)) return false;
  }
  return false;
}

}  // namespace

bool runMoves(const QString& folder, int runs, unsigned seed) {
  std::mt19937 random(seed);
  QString from = folder + "/umzug0.qkk";
  makeDemoCompetition(from);
  addShots(from);
  int kills = 0, visits = 0, missing = 0;
  for (int run = 1; run <= runs; ++run) {
    const QString to = folder + QString("/umzug%1.qkk").arg(run);
    // A writer would be noticed by the comparison, and the move never be done.
    test::ForeignVisitor atSource(from, static_cast<unsigned>(random()), test::ForeignVisitor::Manner::Read);
    if (run % 2 == 0) {
      QProcess move;
      started(move, from, to, false).waitForFinished(static_cast<int>(random() % kLongestLife));
      move.kill();
      move.waitForFinished(kPatience);
      ++kills;
      // Killed at any moment, the target is nothing, or unfinished and says so, or whole.
      if (isWhole(to)) missing += kShots - storedShots(to).rows;
    }
    if (!isWhole(to) && !moveAtLast(from, to)) ++missing;
    const int visited = atSource.end();
    if (visited < 0 || !test::foreignCheck(to)) ++missing;
    visits += std::max(visited, 0);
    missing += kShots - storedShots(to).rows;
    from = to;
  }
  QTextStream(stdout) << QString("%1 Umzüge, %2 SIGKILL, %3 fremde Öffnungen: %4 Schuss fehlen\n")
                             .arg(runs)
                             .arg(kills)
                             .arg(visits)
                             .arg(missing);
  return missing == 0 && visits > 0;
}

}  // namespace qk::faults
