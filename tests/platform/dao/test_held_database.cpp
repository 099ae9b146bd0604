// An open database file beside everything else: other code of the process, other processes, and hands that
// remove its log.
#include <fcntl.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QtTest>

#include "platform/dao/changes.h"
#include "platform/dao/engine/engine.h"
#include "platform/dao/sqlite/sqlite_engine.h"
#include "platform/runtime/files.h"
#include "platform/runtime/held_files.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/foreign/foreign_process.h"
#include "tests/support/lock_watch.h"

using namespace qk;
using namespace qk::dao;
using namespace qk::test;

class TestHeldDatabase : public QObject {
  Q_OBJECT

  std::unique_ptr<QTemporaryDir> folder_;
  QString path_;

  QString log() const { return path_ + "-wal"; }
  /// A database with a table, and a connection that stands.
  std::unique_ptr<Database> made() const {
    auto database = Database::create(path_);
    database->createTable(articles());
    addArticle(*database->openRecordset("Artikel"), "erster");
    return database;
  }
  /// What anybody finds who opens the file later.
  QStringList names() const {
    QStringList found =
        walk(*Database::open(path_)->openRecordset("Select * from Artikel order by ID"), "Name");
    return foreignCheck(path_) ? found : QStringList{"damaged"};
  }
  void bothLocksStand(const char* after) const {
    QVERIFY2(hasReadLock(path_) && hasReadLock(path_ + "-shm"), after);
    QVERIFY2(hasStandingLock(path_) && hasStandingLock(path_ + "-shm"), after);
  }

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    path_ = folder_->filePath("lager.qkk");
  }

  void nothingOfTheProcessOpensAnOpenDatabase() {
    const auto database = made();
    bothLocksStand("opening");
    QVERIFY(!isServerFile(path_));
    bothLocksStand("isServerFile");
    QVERIFY(!serverAddressIn(path_));
    bothLocksStand("serverAddressIn");
    Database::open(path_)->openRecordset("Artikel");
    bothLocksStand("a second connection");
    Database::open(path_, true)->openRecordset("Artikel");
    bothLocksStand("a connection for reading");
    QCOMPARE(errorOf([&] { Database::create(path_); }), 3204);
    bothLocksStand("create");
    Files files;
    QVERIFY(files.readable(path_));
    bothLocksStand("readable");
    QCOMPARE(errorOf([&] { files.read(path_); }), 55);
    bothLocksStand("read");
    QCOMPARE(errorOf([&] { files.copy(path_, path_ + "2"); }), 55);
    bothLocksStand("copy");
    QCOMPARE(errorOf([&] { files.write(path_, "x"); }), 55);
    bothLocksStand("write");
    QCOMPARE(errorOf([&] { files.append(path_, "x"); }), 55);
    bothLocksStand("append");
    QVERIFY(QFile::link(path_, folder_->filePath("zeiger.qkk")));
    QCOMPARE(errorOf([&] { files.read(folder_->filePath("zeiger.qkk")); }), 55);
    QVERIFY(!isServerFile(folder_->filePath("ZEIGER.qkk")));
    bothLocksStand("through a link");
    QVERIFY(files.exists(path_));
    bothLocksStand("exists");
  }

  void copiesBetweenTwoFilesLeaveTheLocks() {
    const auto database = made();
    const QString other = folder_->filePath("anderes.qkk");
    Database::create(other);
    database->execute("SELECT * INTO Kopie IN '" + other + "' FROM Artikel");
    database->execute("SELECT * INTO Kopie2 IN '" + path_ + "' FROM Artikel");
    bothLocksStand("SELECT INTO IN");
    const auto there = Database::open(other, true);
    there->execute("SELECT * INTO Kopie3 IN '" + path_ + "' FROM Kopie");
    bothLocksStand("SELECT INTO from another file");
  }

  void theStoreTellsWhetherItIsOpenElsewhere() {
    const auto database = made();
    QVERIFY(!database->isOpenElsewhere());
    {
      const auto second = Database::open(path_, true);
      QVERIFY(database->isOpenElsewhere() && second->isOpenElsewhere());
    }
    {
      const ForeignHolder holder(path_);
      QVERIFY(database->isOpenElsewhere());
    }
    QVERIFY(!database->isOpenElsewhere());
    bothLocksStand("asking");
  }

  void aFileIsFreeAgainWhenItsConnectionsAreClosed() {
    {
      const auto database = made();
      const auto reader = database->engine().reader([] { return false; });
      QVERIFY(isHeld(path_));
    }
    QVERIFY(!isHeld(path_));
    QVERIFY(!hasReadLock(path_) && !hasStandingLock(path_));
    QVERIFY(!QFile::exists(log()));
    QCOMPARE(Files().read(path_).left(15), QByteArray("SQLite format 3"));
  }

  /// Reading in other threads comes and goes as well.
  void readersInOtherThreadsLeaveTheLocks() {
    const auto database = made();
    QList<QThread*> threads;
    for (int i = 0; i < 4; ++i)
      threads.append(QThread::create([&] {
        for (int turn = 0; turn < 50; ++turn) {
          const auto reader = database->engine().reader([] { return false; });
          reader->read("SELECT count(*) FROM Artikel", {}, [](const NativeRow&) { return false; });
          isServerFile(path_);
        }
      }));
    for (QThread* thread : threads) thread->start();
    const auto rows = database->openRecordset("Artikel");
    for (int i = 0; i < 50; ++i) addArticle(*rows, "während");
    for (QThread* thread : threads) {
      thread->wait();
      delete thread;
    }
    bothLocksStand("reading threads");
    QCOMPARE(walk(*database->openRecordset("Artikel"), "ID").size(), 51);
  }

  void aForeignProcessThinksNeverThatItIsAlone() {
    const auto database = made();
    const auto log_ = identityOf(log());
    isServerFile(path_);
    Database::open(path_);
    QVERIFY(foreignRead(path_));
    QVERIFY(identityOf(log()) == log_);
    const auto rows = database->openRecordset("Artikel");
    addArticle(*rows, "zweiter");
    QVERIFY(foreignWrite(path_));
    QVERIFY(identityOf(log()) == log_);
    addArticle(*rows, "dritter");
    QCOMPARE(names(), QStringList({"erster", "zweiter", "dritter"}));
  }

  /// A library opens and closes the file behind everybody's back: to guess its kind for an icon, say.
  void aCloseBehindTheStoreDropsNoLockThatCounts() {
    const auto database = made();
    const auto log_ = identityOf(log());
    for (const QString& file : {path_, path_ + "-shm"})
      ::close(::open(QFile::encodeName(file).constData(), O_RDONLY));
    QVERIFY(!hasReadLock(path_));  // the danger is real
    QVERIFY(hasStandingLock(path_) && hasStandingLock(path_ + "-shm"));
    QVERIFY(foreignRead(path_));
    QVERIFY(foreignWrite(path_));
    QVERIFY(identityOf(log()) == log_);
    addArticle(*database->openRecordset("Artikel"), "zweiter");
    QVERIFY(foreignWrite(path_));
    QCOMPARE(names(), QStringList({"erster", "zweiter"}));
  }

  // --- the log is taken away in spite of all locks ---

  void aRowBesideALostLogIsNoSuccess() {
    const auto database = made();
    const auto rows = database->openRecordset("Artikel");
    QVERIFY(QFile::remove(log()));
    rows->addNew();
    rows->setValue("Name", "zweiter");
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    rows->update();
    addArticle(*rows, "dritter");
    QCOMPARE(names(), QStringList({"erster", "zweiter", "dritter"}));
  }

  /// In the moment between the look and the commit.
  void aCommitIntoALostLogIsNoSuccess() {
    const auto database = made();
    const auto rows = database->openRecordset("Artikel");
    rows->addNew();
    rows->setValue("Name", "zweiter");
    auto& engine = static_cast<SqliteEngine&>(database->engine());
    const QByteArray name = QFile::encodeName(log());
    sqlite3_update_hook(
        engine.handle(),
        [](void* path, int, const char*, const char*, sqlite3_int64) {
          ::unlink(static_cast<const QByteArray*>(path)->constData());
        },
        const_cast<QByteArray*>(&name));
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    rows->update();
    QCOMPARE(names(), QStringList({"erster", "zweiter"}));
  }

  void changesBesideALostLogAreStoredOnce() {
    const auto database = made();
    Changes changes(*database);
    changes.insert("Artikel", {{"Name", "zweiter"}, {"Preis", "1,2345"}, {"Am", "20.11.2026 10:41:07"}});
    changes.insert("Artikel", {{"Name", "dritter"}});
    changes.execute("Update Artikel set Menge = Menge + 1 where Name = 'erster'");
    QVERIFY(QFile::remove(log()));
    QCOMPARE(errorOf([&] { changes.write(); }), 3043);
    changes.write();
    QCOMPARE(names(), QStringList({"erster", "zweiter", "dritter"}));
  }

  /// In the moment between the look and the commit. The log may be put back, and hold them.
  void changesIntoALostLogAreStoredOnce_data() {
    QTest::addColumn<bool>("putBack");
    QTest::newRow("lost for good") << false;
    QTest::newRow("put back") << true;
  }
  void changesIntoALostLogAreStoredOnce() {
    QFETCH(bool, putBack);
    const auto database = made();
    Changes changes(*database);
    changes.insert("Artikel", {{"Name", "zweiter"}, {"Preis", "1,2345"}, {"Am", "20.11.2026 10:41:07"}});
    changes.insert("Artikel", {{"Name", "dritter"}});
    struct Log {
      QByteArray name, aside;
      bool gone = false;
    } lost{QFile::encodeName(log()), QFile::encodeName(folder_->filePath("beiseite"))};
    auto& engine = static_cast<SqliteEngine&>(database->engine());
    sqlite3_update_hook(
        engine.handle(),
        [](void* self, int, const char*, const char*, sqlite3_int64) {
          auto& log = *static_cast<Log*>(self);
          if (!std::exchange(log.gone, true)) ::rename(log.name.constData(), log.aside.constData());
        },
        &lost);
    QCOMPARE(errorOf([&] { changes.write(); }), 3043);
    if (putBack) ::rename(lost.aside.constData(), lost.name.constData());
    changes.write();
    QCOMPARE(names(), QStringList({"erster", "zweiter", "dritter"}));
  }

  void updatesAndDeletionsTellTheLossToo() {
    const auto database = made();
    QVERIFY(QFile::remove(log()));
    QCOMPARE(errorOf([&] { database->execute("UPDATE Artikel SET Menge = 7"); }), 3043);
    QCOMPARE(database->execute("UPDATE Artikel SET Menge = 7"), 1);
    QVERIFY(QFile::remove(log()));
    QCOMPARE(errorOf([&] { database->createTable({"T", {text("a")}, {}}); }), 3043);
    database->createTable({"T", {text("a")}, {}});
    QVERIFY(QFile::remove(log()));
    const auto rows = database->openRecordset("Artikel");
    QCOMPARE(errorOf([&] { rows->remove(); }), 3043);
    rows->remove();
    QCOMPARE(names(), QStringList());
  }

  void everyConnectionOpensAnew() {
    const auto one = made();
    const auto two = Database::open(path_);
    const auto rows = two->openRecordset("Artikel");
    QVERIFY(QFile::remove(log()));
    QCOMPARE(errorOf([&] { one->execute("UPDATE Artikel SET Menge = 1"); }), 3043);
    addArticle(*rows, "zweiter");
    one->execute("UPDATE Artikel SET Menge = 1");
    bothLocksStand("opening anew");
    addArticle(*one->openRecordset("Artikel"), "dritter");
    QCOMPARE(names(), QStringList({"erster", "zweiter", "dritter"}));
  }

  /// What a connection remembers of the lost log would mix with the new one.
  void nobodyOpensAnewWhileAnotherStillReadsTheLostLog() {
    const auto one = made();
    const auto two = Database::open(path_);
    two->engine().read("SELECT ID FROM Artikel", {}, [&](const NativeRow&) {
      QFile::remove(log());
      for (int turn = 0; turn < 2; ++turn)
        [&] { QCOMPARE(errorOf([&] { one->execute("UPDATE Artikel SET Menge = 1"); }), 3043); }();
      return true;
    });
    QCOMPARE(one->execute("UPDATE Artikel SET Menge = 1"), 1);
    QCOMPARE(two->openRecordset("Artikel")->value("Menge").toInt(), 1);
  }

  void anotherProcessOnTheLostLogMustCloseFirst() {
    const auto database = made();
    {
      const ForeignHolder holder(path_);
      QVERIFY(QFile::remove(log()));
      for (int turn = 0; turn < 2; ++turn)
        QCOMPARE(errorOf([&] { database->execute("UPDATE Artikel SET Menge = 1"); }), 3043);
    }
    QCOMPARE(database->execute("UPDATE Artikel SET Menge = 1"), 1);
    QCOMPARE(names(), QStringList({"erster"}));
  }

  void anEmptyLogOfAReaderIsNoLogOfSomebody() {
    const auto database = made();
    QVERIFY(QFile::remove(log()));
    QVERIFY(QFile(log()).open(QIODevice::WriteOnly));
    QCOMPARE(errorOf([&] { database->execute("UPDATE Artikel SET Menge = 1"); }), 3043);
    QCOMPARE(database->execute("UPDATE Artikel SET Menge = 1"), 1);
    QCOMPARE(names(), QStringList({"erster"}));
  }

  void aLossThatNobodyNoticedIsMendedAtTheEnd() {
    {
      const auto database = made();
      QVERIFY(QFile::remove(log()));
    }
    QCOMPARE(names(), QStringList({"erster"}));
  }

  void aTransactionUnderWayIsNotTornApart() {
    const auto one = made();
    const auto two = Database::open(path_);
    QCOMPARE(errorOf([&] {
               one->engine().transaction([&] {
                 one->execute("INSERT INTO Artikel (Name) VALUES ('a')");
                 QFile::remove(log());
                 [&] { QCOMPARE(errorOf([&] { two->execute("UPDATE Artikel SET Menge = 1"); }), 3043); }();
                 one->execute("INSERT INTO Artikel (Name) VALUES ('b')");
               });
             }),
             3043);
    const QStringList found = walk(*one->openRecordset("Artikel"), "Name");
    QVERIFY2(found == QStringList({"erster", "a", "b"}) || found == QStringList({"erster"}),
             qPrintable(found.join(' ')));
  }

  void aRemovedDatabaseTakesNoRow() {
    const auto database = made();
    QVERIFY(QFile::rename(path_, path_ + ".weg"));
    QCOMPARE(errorOf([&] { database->execute("UPDATE Artikel SET Menge = 1"); }), 3043);
    QVERIFY(errorOf([&] { database->execute("UPDATE Artikel SET Menge = 1"); }) != 0);
    QVERIFY(QFile::rename(path_ + ".weg", path_));
    QCOMPARE(database->execute("UPDATE Artikel SET Menge = 1"), 1);
    QCOMPARE(names(), QStringList({"erster"}));
  }
};

QTEST_GUILESS_MAIN(TestHeldDatabase)
#include "test_held_database.moc"
