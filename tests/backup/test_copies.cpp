// A copy of a competition in work counts only when it is whole: byte by byte as it was written, and table by
// table what the competition held at one moment.
#include <QDirIterator>
#include <QTemporaryDir>
#include <QtTest>

#include "backup/copy_making.h"
#include "masterdata/making/competition.h"
#include "platform/dao/moving/snapshot.h"
#include "platform/dao/moving/table_figures.h"
#include "platform/runtime/error.h"
#include "tests/backup/copy_figures.h"
#include "tests/masterdata/demo_store.h"
#include "tests/support/error_of.h"
#include "tests/support/failing_files.h"
#include "tests/support/postgres_server.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;
using dao::Database;

namespace {

constexpr int kDifferent = errors::kChangedMeanwhile;
constexpr int kGivenUp = errors::kCancelled;

}  // namespace

class TestCopies : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    store_ = std::make_unique<DemoStore>();
    moment_ = QDateTime(QDate(2026, 11, 22), QTime(15, 10));
    cancelled_ = false;
  }

  void holdsWhatTheCompetitionHeld();
  void isOneFileThatNeedsNoOther();
  void showsTheMomentAtWhichItBegan();
  void givesNoNumberAgainThatWasGone();
  void makesNoSecondOfTheSame();
  void theLastOfOneSecondIsTheLast();
  void aClockSetBackChangesNoOrder();
  void eachMachineHasItsOwn();
  void takesWhatAnotherProgramHasJustMade();
  void leavesTheFolderToWhoeverMakesOne();
  void aWrongByteBeforeTheProofIsSeen_data();
  void aWrongByteBeforeTheProofIsSeen();
  void aWrongByteAfterwardsIsSeen();
  void aMissingEndIsSeen();
  void aDamagedCompetitionIsNeverProven();
  void givenUpLeavesNothing();
  void aLossGivesItUp();
  void aFailureLeavesNothing_data();
  void aFailureLeavesNothing();
  void removesTheDraftsOfTheDead();
  void deletesWhatIsNeededNoLonger();
  void neverDeletesWhatSomebodyChanged();
  void neverDeletesWhatSomebodyRenamed();
  void neverDeletesBeforeTheNewOneCounts();
  void makesTheFolder();

 private:
  CopyResult make(const CopyHooks& hooks = {}, const dao::PartDone& done = {}) {
    dao::SnapshotReader reader(store_->path(), [this] { return cancelled_; });
    return makeCopy(reader, {store_->path(), folder_->path(), moment_}, files_, done, hooks);
  }
  /// Another row, and another moment.
  CopyResult makeNext() {
    moment_ = moment_.addSecs(600);
    store_->addShot("1", 1, ++place_);
    return make();
  }
  /// So many copies of before, all like one that is made now, ten minutes apart.
  std::vector<ProvenCopy> makeMany(int count) {
    std::vector<ProvenCopy> made = {*makeNext().copy};
    while (static_cast<int>(made.size()) < count) {
      moment_ = moment_.addSecs(600);
      ProvenCopy copy = made.front();
      copy.path = copyStemOf(folder_->path(), store_->path(), moment_) + ".qkk";
      copy.evidence.moment = moment_;
      copy.evidence.sequence = made.back().evidence.sequence + 1;
      copy.evidence.file = QFileInfo(copy.path).fileName();
      QFile::copy(made.front().path, copy.path);
      files_.write(evidencePathOf(copy.path), evidenceText(copy.evidence));
      made.push_back(copy);
    }
    return made;
  }
  std::vector<ProvenCopy> proven() { return provenCopies(files_, folder_->path(), sourceOf(store_->path())); }
  QStringList names(const QString& pattern = "*") const {
    return QDir(folder_->path()).entryList({pattern}, QDir::Files, QDir::Name);
  }

  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<DemoStore> store_;
  FailingFiles files_;
  QDateTime moment_;
  bool cancelled_ = false;
  int place_ = 0;
};

void TestCopies::holdsWhatTheCompetitionHeld() {
  store_->addShot("7", 3, 1);
  const auto wanted = figuresOfAll(store_->database());
  const CopyResult result = make();
  QCOMPARE(result.kind, CopyResult::Kind::Made);
  QVERIFY(result.copy.has_value());
  QCOMPARE(result.copy->evidence.source, sourceOf(store_->path()));
  QCOMPARE(result.copy->evidence.moment, moment_);
  QCOMPARE(result.copy->evidence.size, QFileInfo(result.copy->path).size());
  QVERIFY(isUnchanged(*result.copy));
  const auto copy = Database::open(result.copy->path, true);
  QVERIFY(figuresOfAll(*copy) == wanted);
  QStringList queries = copy->queryNames(), wantedQueries = store_->database().queryNames();
  queries.sort();
  wantedQueries.sort();
  QCOMPARE(queries, wantedQueries);
  for (const QString& table : copy->tableNames())
    QCOMPARE(dao::differenceOf(store_->database().tableDef(table), copy->tableDef(table)), QString());
  // What the folder tells is what was made.
  QCOMPARE(proven().size(), 1u);
  auto told = proven().front().evidence.tables;
  std::sort(told.begin(), told.end(), [](const auto& a, const auto& b) { return a.table < b.table; });
  QVERIFY(told == wanted);
}

void TestCopies::isOneFileThatNeedsNoOther() {
  const CopyResult result = make();
  const QString stem = copyBaseOf(store_->path()) + " 2026-11-22 15-10-00";
  QCOMPARE(names(), QStringList({stem + ".beleg", stem + ".qkk"}));
  { const auto opened = Database::open(result.copy->path, true); }
  QCOMPARE(names(), QStringList({stem + ".beleg", stem + ".qkk"}));
  QVERIFY(isUnchanged(*result.copy));
}

/// Others go on working while it is made, between any two steps.
void TestCopies::showsTheMomentAtWhichItBegan() {
  for (int i = 0; i < 40; ++i) store_->addShot("9", 4, i);
  const auto wanted = figuresOfAll(store_->database());
  int written = 0;
  double last = 0;
  const CopyResult result = make({}, [&](double part) {
    QVERIFY2(part >= last, "it began anew");
    last = part;
    store_->addShot("8", 2, ++written);
  });
  QVERIFY(written > 10);
  QVERIFY(last > 0.99);
  QVERIFY(figuresOfAll(*Database::open(result.copy->path, true)) == wanted);
  QCOMPARE(store_->count("Haering_Daten"), 40 + written);
}

/// Whatever others insert and delete while it is made: the numbers of the copy go on behind all that its
/// moment had seen.
void TestCopies::givesNoNumberAgainThatWasGone() {
  qint64 last = 0;
  for (int i = 0; i < 40; ++i) last = store_->addShot("9", 4, i);
  store_->database().execute("DELETE * FROM Haering_Daten WHERE Liniennummer = 4");
  int written = 0;
  const CopyResult result = make({}, [&](double) {
    const qint64 key = store_->addShot("8", 2, ++written);
    if (written % 2 == 0)
      store_->database().execute(QString("DELETE * FROM Haering_Daten WHERE ID = %1").arg(key));
  });
  QVERIFY(written > 10);
  const auto copy = Database::open(result.copy->path);
  const auto rows = copy->openRecordset("Haering_Daten");
  rows->addNew();
  QVERIFY(rows->value("ID").toLongLong() > last);
}

void TestCopies::makesNoSecondOfTheSame() {
  const CopyResult first = make();
  moment_ = moment_.addSecs(600);
  const CopyResult second = make();
  QCOMPARE(second.kind, CopyResult::Kind::Current);
  QCOMPARE(second.copy->path, first.copy->path);
  QCOMPARE(names("*.qkk").size(), 1);
  QCOMPARE(makeNext().kind, CopyResult::Kind::Made);
  QCOMPARE(names("*.qkk").size(), 2);
}

/// Their names run ahead of the clock, and the names of those that are needed no longer are free again.
void TestCopies::theLastOfOneSecondIsTheLast() {
  for (int i = 0; i < static_cast<int>(kKeptCopies) + 4; ++i) {
    store_->addShot("1", 1, ++place_);
    const CopyResult result = make();
    QCOMPARE(result.kind, CopyResult::Kind::Made);
    QCOMPARE(proven().back().path, result.copy->path);
    QCOMPARE(result.copy->evidence.moment, moment_);
  }
  QCOMPARE(proven().size(), size_t(kKeptCopies));
  QCOMPARE(make().kind, CopyResult::Kind::Current);
}

void TestCopies::aClockSetBackChangesNoOrder() {
  moment_ = moment_.addSecs(3600);
  QStringList ahead;
  for (int i = 0; i < kKeptCopies; ++i) ahead.append(makeNext().copy->path);
  moment_ = moment_.addSecs(-9000);
  const QString behind = makeNext().copy->path;
  QCOMPARE(proven().back().path, behind);
  QVERIFY(!QFile::exists(ahead[0]));
  QVERIFY(QFile::exists(ahead[1]));
  moment_ = moment_.addSecs(600);
  QCOMPARE(make().kind, CopyResult::Kind::Current);
  QCOMPARE(make().copy->path, behind);
  // What tells no place in the order is from before there was one.
  ProvenCopy old = proven().back();
  old.evidence.sequence = 0;
  QByteArray text = evidenceText(old.evidence).replace("Folge: 0\n", "");
  text.truncate(text.lastIndexOf("Beleg: "));
  text += "Beleg: " + QCryptographicHash::hash(text, QCryptographicHash::Sha256).toHex() + "\n";
  files_.write(evidencePathOf(old.path), text);
  QCOMPARE(proven().front().path, old.path);
}

void TestCopies::eachMachineHasItsOwn() {
  const ProvenCopy own = *make().copy;
  const QString other = folder_->filePath("other.qkk");
  QFile::link(store_->path(), other);
  QCOMPARE(sourceOf(other), sourceOf(store_->path()));
  if (storesOnServer()) return;
  QVERIFY2(own.evidence.source.endsWith(" auf " + QSysInfo::machineHostName()),
           qPrintable(own.evidence.source));
  ProvenCopy strange = own;
  strange.evidence.source.replace(" auf ", " auf X");
  files_.write(evidencePathOf(own.path), evidenceText(strange.evidence));
  QCOMPARE(proven().size(), 0u);
  QCOMPARE(make().kind, CopyResult::Kind::Made);
  QCOMPARE(names("*.qkk").size(), 3);
}

void TestCopies::takesWhatAnotherProgramHasJustMade() {
  const CopyResult first = make();
  store_->addShot("7", 3, 1);
  dao::SnapshotReader reader(store_->path(), [] { return false; });
  const auto after = [&](int seconds) {
    return makeCopy(reader,
                    {store_->path(), folder_->path(), moment_.addSecs(seconds), std::chrono::minutes(10)},
                    files_);
  };
  QCOMPARE(after(599).kind, CopyResult::Kind::Young);
  QCOMPARE(after(599).copy->path, first.copy->path);
  QCOMPARE(after(600).kind, CopyResult::Kind::Made);
  // A clock that was set back makes no copy eternally young.
  store_->addShot("7", 3, 2);
  QCOMPARE(after(-600).kind, CopyResult::Kind::Made);
}

void TestCopies::leavesTheFolderToWhoeverMakesOne() {
  CopyResult::Kind other = CopyResult::Kind::Made;
  const CopyResult result = make({[&](const QString&) { other = make().kind; }});
  QCOMPARE(other, CopyResult::Kind::Elsewhere);
  QCOMPARE(result.kind, CopyResult::Kind::Made);
  QCOMPARE(proven().size(), 1u);
}

void TestCopies::aWrongByteBeforeTheProofIsSeen_data() {
  QTest::addColumn<double>("place");
  const int places = storesOnServer() ? 3 : 40;  // what is flipped is a file either way
  for (int i = 0; i <= places; ++i) QTest::newRow(qPrintable(QString::number(i))) << double(i) / places;
}

void TestCopies::aWrongByteBeforeTheProofIsSeen() {
  QFETCH(double, place);
  const CopyHooks hooks{[&](const QString& draft) {
    flip(draft, std::min<qint64>(QFileInfo(draft).size() - 1,
                                 static_cast<qint64>(place * static_cast<double>(QFileInfo(draft).size()))));
  }};
  QCOMPARE(errorOf([&] { make(hooks); }), kDifferent);
  QCOMPARE(names(), QStringList());
  QCOMPARE(make().kind, CopyResult::Kind::Made);
}

void TestCopies::aWrongByteAfterwardsIsSeen() {
  const CopyResult result = make();
  for (const qint64 at : {qint64(0), qint64(5000), result.copy->evidence.size - 1}) {
    QVERIFY(isUnchanged(*result.copy));
    flip(result.copy->path, at);
    QVERIFY(!isUnchanged(*result.copy));
    flip(result.copy->path, at);
  }
}

void TestCopies::aMissingEndIsSeen() {
  const CopyHooks hooks{
      [](const QString& draft) { QVERIFY(QFile::resize(draft, QFileInfo(draft).size() - 4096)); }};
  QCOMPARE(errorOf([&] { make(hooks); }), kDifferent);
  QCOMPARE(names(), QStringList());
}

void TestCopies::aDamagedCompetitionIsNeverProven() {
  const QTemporaryDir folder;
  const QString competition = folder.filePath("Schaden.qkk");
  StoreOriginal(makeDemoCompetition).copyTo(competition);
  const auto makeOfIt = [&] {
    dao::SnapshotReader reader(competition, [] { return false; });
    makeCopy(reader, {competition, folder_->path(), moment_}, files_);
  };
  damage(competition, "Schützen");
  QVERIFY(errorOf(makeOfIt) != 0);
  QCOMPARE(names(), QStringList());
}

void TestCopies::givenUpLeavesNothing() {
  for (int step = 1; step < 60; step += 7) {
    int steps = 0;
    cancelled_ = false;
    const dao::PartDone stop = [&](double) { cancelled_ = ++steps >= step; };
    const int error = errorOf([&] { make({}, stop); });
    if (steps < step) break;
    QCOMPARE(error, kGivenUp);
    QCOMPARE(names(), QStringList());
  }
  cancelled_ = false;
  QCOMPARE(make().kind, CopyResult::Kind::Made);
}

/// Nobody waits for the copy then: what was lost is mended by whoever works with the competition.
void TestCopies::aLossGivesItUp() {
  int steps = 0;
  const int error = errorOf([&] {
    make({}, [&](double) {
      if (++steps != 5) return;
      if (storesOnServer()) {
        serverDatabase(store_->path())
            .native(
                "SELECT pg_terminate_backend(pid) FROM pg_stat_activity WHERE datname = current_database() "
                "AND pid <> pg_backend_pid()");
        return;
      }
      QVERIFY(QFile::remove(store_->path() + "-wal"));
      QCOMPARE(errorOf([&] { store_->addShot("1", 1, 1); }), errors::kConnectionLost);
    });
  });
  QCOMPARE(error, errors::kConnectionLost);
  QVERIFY(steps < 8);
  QCOMPARE(names(), QStringList());
  const auto before = store_->count("Haering_Daten");
  store_->addShot("1", 1, 2);
  QCOMPARE(store_->count("Haering_Daten"), before + 1);
  QCOMPARE(make().kind, CopyResult::Kind::Made);
}

void TestCopies::aFailureLeavesNothing_data() {
  QTest::addColumn<FileStep>("step");
  QTest::newRow("rename") << FileStep::Rename;
}

void TestCopies::aFailureLeavesNothing() {
  QFETCH(FileStep, step);
  files_.fail(step, "*", 70);
  QCOMPARE(errorOf([&] { make(); }), 70);
  files_.heal();
  QCOMPARE(names(), QStringList());
  QVERIFY(proven().empty());
  QCOMPARE(make().kind, CopyResult::Kind::Made);
}

void TestCopies::removesTheDraftsOfTheDead() {
  const QString base = folder_->filePath(copyBaseOf(store_->path()));
  const auto put = [](const QString& path) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("x");
  };
  // Killed just before the last step, and in the midst of a server's rows.
  put(base + " 2026-11-22 15-00-00.entwurf");
  put(base + " 2026-11-22 15-00-00.beleg");
  put(base + " 2026-11-22 14-00-00.entwurf-zeilen-wal");
  // Other people's.
  const QStringList others = {"fremd 2026-11-22 15-00-00.entwurf", copyBaseOf(store_->path()) + ".entwurf",
                              "notiz.beleg"};
  for (const QString& name : others) put(folder_->filePath(name));
  const CopyResult result = make();
  QStringList wanted = others + QStringList{QFileInfo(result.copy->path).fileName(),
                                            QFileInfo(evidencePathOf(result.copy->path)).fileName()};
  wanted.sort();
  QStringList found = names();
  found.sort();
  QCOMPARE(found, wanted);
}

void TestCopies::deletesWhatIsNeededNoLonger() {
  makeMany(kKeptCopies + 2);
  QCOMPARE(proven().size(), static_cast<size_t>(kKeptCopies) + 2);
  QCOMPARE(makeNext().kind, CopyResult::Kind::Made);
  QCOMPARE(names("*.qkk").size(), kKeptCopies);
  QCOMPARE(names("*.beleg").size(), kKeptCopies);
  QCOMPARE(proven().size(), static_cast<size_t>(kKeptCopies));
  QCOMPARE(proven().back().evidence.moment, moment_);
  for (const ProvenCopy& copy : proven()) QVERIFY(isUnchanged(copy));
}

void TestCopies::neverDeletesWhatSomebodyChanged() {
  const std::vector<ProvenCopy> made = makeMany(kKeptCopies + 2);
  Database::open(made[0].path)->execute("DELETE FROM Haering_Daten");
  const auto inWork = Database::open(made[1].path, true);
  makeNext();
  QVERIFY(QFile::exists(made[0].path));
  QVERIFY(QFile::exists(made[1].path));
  QVERIFY(!QFile::exists(made[2].path));
}

void TestCopies::neverDeletesWhatSomebodyRenamed() {
  const std::vector<ProvenCopy> made = makeMany(kKeptCopies + 2);
  const QString kept = folder_->filePath("vor dem Finale.qkk");
  QVERIFY(QFile::rename(made[0].path, kept));
  QVERIFY(QFile::rename(evidencePathOf(made[0].path), evidencePathOf(kept)));
  makeNext();
  QVERIFY(QFile::exists(kept));
  QVERIFY(QFile::exists(evidencePathOf(kept)));
  QVERIFY(!QFile::exists(made[1].path));
}

void TestCopies::neverDeletesBeforeTheNewOneCounts() {
  makeMany(kKeptCopies);
  const QStringList before = names();
  store_->addShot("1", 1, 99);
  moment_ = moment_.addSecs(600);
  const CopyHooks hooks{[&](const QString& draft) {
    QCOMPARE(names("*.qkk").size(), kKeptCopies);
    flip(draft, 3000);
  }};
  QCOMPARE(errorOf([&] { make(hooks); }), kDifferent);
  QCOMPARE(names(), before);
}

void TestCopies::makesTheFolder() {
  QDir(folder_->path()).removeRecursively();
  QCOMPARE(make().kind, CopyResult::Kind::Made);
  QDir(folder_->path()).removeRecursively();
  dao::SnapshotReader reader(store_->path(), [] { return false; });
  const auto into = [&](const QString& folder) {
    return errorOf([&] { makeCopy(reader, {store_->path(), folder, moment_}, files_); });
  };
  QCOMPARE(into(folder_->path() + "/gibt/es/nicht"), 76);
  QCOMPARE(into({}), 76);
  QCOMPARE(into("X:\\Sicherung"), 76);
}

QTEST_GUILESS_MAIN(TestCopies)
#include "test_copies.moc"
