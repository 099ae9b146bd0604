// A connection to a file on which another one of the process stands learns the tables with its first
// statement. Until then it costs next to nothing, and guards the file like any other.
#include <sqlite3.h>

#include <QtTest>

#include "platform/dao/sqlite/sqlite_engine.h"
#include "platform/runtime/held_files.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/foreign/foreign_process.h"
#include "tests/support/lock_watch.h"

using namespace qk;
using namespace qk::dao;
using namespace qk::test;

namespace {

/// The statements of all connections that are opened while it lives.
class Heard {
 public:
  Heard() {
    current = this;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&onConnection));
  }
  ~Heard() {
    sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&onConnection));
    current = nullptr;
  }
  QStringList texts;

 private:
  static int onConnection(sqlite3* connection, char**, const void*) {
    return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, &onStatement, nullptr);
  }
  static int onStatement(unsigned, void*, void* statement, void*) {
    if (current) current->texts << QString::fromUtf8(sqlite3_sql(static_cast<sqlite3_stmt*>(statement)));
    return 0;
  }

  inline static Heard* current = nullptr;
};

}  // namespace

class TestLateConnections : public QObject {
  Q_OBJECT

  std::unique_ptr<QTemporaryDir> folder_;
  QString path_;
  std::unique_ptr<Database> first_;

  QString log() const { return path_ + "-wal"; }
  static QStringList names(Database& database) {
    return walk(*database.openRecordset("Select * from Artikel order by ID"), "Name");
  }

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    path_ = folder_->filePath("lager.qkk");
    first_ = Database::create(path_);
    first_->createTable(articles());
    addArticle(*first_->openRecordset("Artikel"), "erster");
  }
  void cleanup() { first_.reset(); }

  void onlyTheFirstLearnsTheTablesAtOnce() {
    first_.reset();
    Heard heard;
    first_ = Database::open(path_);
    QVERIFY(heard.texts.size() > 1);
    heard.texts.clear();
    const auto second = Database::open(path_);
    const auto reader = first_->engine().reader([] { return false; });
    QCOMPARE(heard.texts, (QStringList{"PRAGMA schema_version", "PRAGMA schema_version"}));
  }

  void theFirstStatementFindsAllItNeeds() {
    addArticle(*first_->openRecordset("Artikel"), "Äpfel");
    const auto second = Database::open(path_);
    QCOMPARE(single(*second, "PRAGMA synchronous"), QString("2"));
    QCOMPARE(single(*second, "PRAGMA journal_mode"), QString("wal"));
    const auto third = Database::open(path_);
    QCOMPARE(walk(*third->openRecordset("Select Name from Artikel where Name like 'ä*'"), "Name"),
             QStringList{"Äpfel"});
    const auto fourth = Database::open(path_, OpenOptions{.durable = false});
    QCOMPARE(single(*fourth, "PRAGMA synchronous"), QString("0"));
    QCOMPARE(fourth->commitCount(), 0);
    addArticle(*fourth->openRecordset("Artikel"), "Birnen");
    QVERIFY(fourth->commitCount() > 0);
    QCOMPARE(names(*second), QStringList({"erster", "Äpfel", "Birnen"}));
  }

  void whatIsOpenedForReadingWritesNothing() {
    const auto reading = Database::open(path_, true);
    QVERIFY(errorOf([&] { reading->engine().write("DELETE FROM Artikel", {}); }) != 0);
    QCOMPARE(names(*reading), QStringList{"erster"});
  }

  /// Whoever opened the file first may go first.
  void itHoldsTheFileBeforeItsFirstStatement() {
    auto second = Database::open(path_);
    first_.reset();
    QVERIFY(isHeld(path_));
    QVERIFY(hasReadLock(path_) && hasReadLock(path_ + "-shm"));
    QVERIFY(hasStandingLock(path_) && hasStandingLock(path_ + "-shm"));
    const auto log_ = identityOf(log());
    QVERIFY(log_);
    QVERIFY(foreignWrite(path_));
    QVERIFY(identityOf(log()) == log_);
    QVERIFY(second->isOpenElsewhere() == false);
    QCOMPARE(names(*second).first(), QString("erster"));
  }

  /// One file, no log.
  void theLastOneLeavesTheFileWhole() {
    auto second = Database::open(path_);
    first_.reset();
    QVERIFY(QFile::exists(log()));
    second.reset();
    QVERIFY(!QFile::exists(log()) && !QFile::exists(path_ + "-shm"));
    QVERIFY(!isHeld(path_));
    QCOMPARE(names(*Database::open(path_)), QStringList{"erster"});
  }

  void itNoticesALogThatWasTakenAway() {
    const auto second = Database::open(path_);
    QVERIFY(QFile::remove(log()));
    QCOMPARE(errorOf([&] { addArticle(*second->openRecordset("Artikel"), "zweiter"); }), 3043);
    addArticle(*second->openRecordset("Artikel"), "Öfen");
    QCOMPARE(walk(*second->openRecordset("Select Name from Artikel where Name like 'ö*'"), "Name"),
             QStringList{"Öfen"});
    QCOMPARE(names(*first_), QStringList({"erster", "Öfen"}));
    QVERIFY(foreignCheck(path_));
  }

  /// The others have given the lost log up by then; this one has had no need yet.
  void itFollowsTheOthersOverALoss() {
    const auto second = Database::open(path_);
    QVERIFY(QFile::remove(log()));
    QCOMPARE(errorOf([&] { first_->execute("UPDATE Artikel SET Menge = 7"); }), 3043);
    QCOMPARE(first_->execute("UPDATE Artikel SET Menge = 7"), 1);
    addArticle(*second->openRecordset("Artikel"), "zweiter");
    QCOMPARE(names(*first_), QStringList({"erster", "zweiter"}));
    QVERIFY(foreignCheck(path_));
  }

  /// Whoever opens the file then isn't in the way of those who want to store.
  void oneOpenedAfterALossStopsNobody() {
    QVERIFY(QFile::remove(log()));
    QCOMPARE(errorOf([&] { first_->execute("UPDATE Artikel SET Menge = 7"); }), 3043);
    const auto second = Database::open(path_);
    const auto third = Database::open(path_);
    QCOMPARE(first_->execute("UPDATE Artikel SET Menge = 7"), 1);
    addArticle(*third->openRecordset("Artikel"), "zweiter");
    QCOMPARE(names(*second), QStringList({"erster", "zweiter"}));
    QVERIFY(foreignCheck(path_));
  }

  /// It is whoever closes that notices the loss; nobody else has had a need since.
  void aLossNoticedByOneThatClosesStopsNobody() {
    const auto idle = Database::open(path_);
    auto shortLived = Database::open(path_);
    QVERIFY(QFile::remove(log()));
    shortLived.reset();
    QCOMPARE(first_->execute("UPDATE Artikel SET Menge = 7"), 1);
    addArticle(*idle->openRecordset("Artikel"), "zweiter");
    QCOMPARE(names(*first_), QStringList({"erster", "zweiter"}));
    QVERIFY(foreignCheck(path_));
  }

  /// The need says why; the next one finds a connection that is whole.
  void whatCouldntLearnTheTablesLearnsThemWithTheNextNeed() {
    const auto second = Database::open(path_, OpenOptions{.durable = false});
    auto& engine = static_cast<SqliteEngine&>(second->engine());
    sqlite3_set_authorizer(
        engine.handle(),
        [](void*, int act, const char* name, const char*, const char*, const char*) {
          return act == SQLITE_PRAGMA && qstrcmp(name, "synchronous") == 0 ? SQLITE_DENY : SQLITE_OK;
        },
        nullptr);
    QVERIFY(errorOf([&] { second->hasTable("Artikel"); }) != 0);
    QVERIFY(second->hasTable("Artikel"));
    QCOMPARE(single(*second, "PRAGMA synchronous"), QString("0"));
  }

  void nobodyOpensALostLogOnWhichOthersWork() {
    {
      const ForeignHolder holder(path_);
      QVERIFY(QFile::remove(log()));
      QCOMPARE(errorOf([&] { first_->execute("UPDATE Artikel SET Menge = 7"); }), 3043);
      QCOMPARE(errorOf([&] { Database::open(path_); }), 3043);
      QVERIFY(!QFile::exists(log()));  // a new one would be in the way of the lost
    }
    const auto second = Database::open(path_);
    addArticle(*second->openRecordset("Artikel"), "zweiter");
    QCOMPARE(names(*second), QStringList({"erster", "zweiter"}));
    QVERIFY(foreignCheck(path_));
  }
};

QTEST_GUILESS_MAIN(TestLateConnections)
#include "test_late_connections.moc"
