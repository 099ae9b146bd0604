#include <QElapsedTimer>
#include <QFileInfo>
#include <QProcess>
#include <QTextStream>
#include <algorithm>
#include <random>

#include "backup/copy_folder.h"
#include "benchmarks/faults/faults.h"
#include "benchmarks/faults/stored_shots.h"
#include "masterdata/making/competition.h"
#include "masterdata/making/move.h"
#include "platform/dao/moving/snapshot.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/files.h"
#include "tests/support/foreign/foreign_process.h"
#include "tests/support/postgres_server.h"

namespace qk::faults {

namespace {

constexpr int kShots = 4000;
constexpr int kPatience = 60000;

/// The office: it has the competition open, and stores shots.
class Office {
 public:
  explicit Office(const QString& competition) : store_(dao::Database::open(competition)) {
    if (!store_->hasTable("Haering_Daten"))
      store_->createTable(*embeddedSchema("LeerSA.txt").table("Haering_Daten"));
    rows_ = store_->openRecordset("Select * from Haering_Daten");
  }
  void store(int shots) {
    for (int i = 0; i < shots; ++i) {
      rows_->addNew();
      rows_->setValue("Treffernummer", QString::number(++stored_));
      rows_->setValue("Liniennummer", 1);
      rows_->update();
    }
  }
  int stored() const { return stored_; }

 private:
  std::unique_ptr<dao::Database> store_;
  std::unique_ptr<dao::Recordset> rows_;
  int stored_ = 0;
};

/// The process that makes copies.
class Copier {
 public:
  Copier(QString competition, QString folder)
      : competition_(std::move(competition)), folder_(std::move(folder)) {}

  void start() {
    process_.start(QString(QK_BIN_FOLDER) + "/qk-wettkampf", {"sichern", competition_, folder_});
    process_.waitForStarted();
  }
  bool ended() const { return process_.exitStatus() == QProcess::NormalExit && process_.exitCode() == 0; }
  bool runToEnd() {
    start();
    return process_.waitForFinished(kPatience) && ended();
  }
  /// False when it had ended before.
  bool killAfter(int microseconds) {
    QElapsedTimer life;
    life.start();
    while (process_.state() != QProcess::NotRunning && life.nsecsElapsed() / 1000 < microseconds)
      process_.waitForFinished(1);
    process_.kill();
    process_.waitForFinished(kPatience);
    return !ended();
  }

  /// What counts, the oldest first.
  std::vector<ProvenCopy> proven() const {
    Files files;
    return provenCopies(files, folder_, sourceOf(competition_));
  }

 private:
  QString competition_, folder_;
  QProcess process_;
};

/// What is wrong with the copies that count.
int faultsOf(const std::vector<ProvenCopy>& copies, const QString& lastBefore) {
  int faults = copies.size() < kKeptCopies ? 1 : 0;
  for (const ProvenCopy& copy : copies) {
    const bool whole = isUnchanged(copy) && dao::flawsOfSnapshot(copy.path, [] { return false; }).isEmpty();
    if (!whole) ++faults;
  }
  const auto isLast = [&](const ProvenCopy& copy) { return copy.path == lastBefore; };
  if (std::none_of(copies.begin(), copies.end(), isLast)) ++faults;
  return faults;
}

bool run(const QString& competition, const QString& folder, int runs, unsigned seed) {
  std::mt19937 random(seed);
  Office office(competition);
  Copier copier(competition, folder + "/kopien");
  office.store(kShots);
  QElapsedTimer clock;
  int longest = 0, faults = 0, killed = 0, made = 0;
  for (int i = 0; i < kKeptCopies; ++i) {
    office.store(1);
    clock.start();
    if (!copier.runToEnd()) ++faults;
    longest = std::max(longest, static_cast<int>(clock.nsecsElapsed() / 1000));
  }
  for (int i = 0; i < runs && faults == 0; ++i) {
    const QString last = copier.proven().back().path;
    office.store(1);
    copier.start();
    office.store(1);  // beside it
    const bool inTime = copier.killAfter(static_cast<int>(random() % static_cast<unsigned>(longest)));
    if (inTime) ++killed;
    const auto copies = copier.proven();
    const bool isNew = copies.back().path != last;
    if (isNew) ++made;
    faults += isNew || inTime ? 0 : 1;
    faults += faultsOf(copies, last);
    faults += storedShots(competition).rows == office.stored() ? 0 : 1;
  }
  // And after all that one more, which is whole.
  office.store(1);
  const bool goesOn =
      copier.runToEnd() && faults == 0 && storedShots(copier.proven().back().path).rows == office.stored();
  QTextStream(stdout)
      << QString(
             "%1 Sicherungen, %2 davon durch SIGKILL beendet, %3 neue Kopien, danach %4 ganze: %5 Fehler\n")
             .arg(runs)
             .arg(killed)
             .arg(made)
             .arg(goesOn ? "eine" : "keine")
             .arg(faults);
  return goesOn && killed >= std::max(1, runs / 4);  // by chance some are whole before
}

}  // namespace

bool runCopies(const QString& folder, int runs, unsigned seed) {
  const QString competition = folder + "/pokal.qkk";
  makeDemoCompetition(competition);
  return run(competition, folder, runs, seed) && test::foreignCheck(competition);
}

bool runServerCopies(const QString& folder, int runs, unsigned seed) {
  const test::PostgresServer server;
  const test::ServerDatabase database(server.folder());
  const QString file = folder + "/datei.qkk", competition = folder + "/pokal.qkk";
  makeDemoCompetition(file);
  database.writeAddress(competition);
  moveCompetition({file, competition}, [](const MoveStep&) {});
  return run(competition, folder, runs, seed);
}

}  // namespace qk::faults
