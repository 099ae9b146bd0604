// The test server itself: databases of their own, a crash, roles.
#include <signal.h>

#include <QtTest>

#include "tests/support/postgres_server.h"

using namespace qk::test;

class TestPostgresServer : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void eachDatabaseIsEmptyAndItsOwn() {
    const ServerDatabase one, two;
    QVERIFY(one.address() != two.address());
    one.native("CREATE TABLE t(a int)");
    QCOMPARE(two.native("SELECT count(*) FROM pg_class WHERE relname = 't'"), QStringList{"0"});
    QCOMPARE(one.native("SELECT pg_get_userbyid(datdba) FROM pg_database WHERE datname = current_database()"),
             QStringList{"qk_test"});
    QCOMPARE(one.native("SELECT rolsuper FROM pg_roles WHERE rolname = 'qk_test'"), QStringList{"f"});
  }

  void aKilledServerComesBackWithWhatItHad() {
    PostgresServer server;
    const ServerDatabase database(server.folder());
    database.native("CREATE TABLE t AS SELECT 5 AS a");
    server.kill();
    QVERIFY_THROWS_EXCEPTION(std::runtime_error, database.native("SELECT 1"));
    server.again();
    QCOMPARE(database.native("SELECT a FROM t"), QStringList{"5"});
  }

  /// As a run is ended that hangs: all of its processes at once, without a word.
  void aServerGoesWhenAllOfItsOwnerAreKilled() {
    const QTemporaryDir place(QDir::tempPath() + "/qkXXXXXX");
    const QString folder = place.filePath("pg");
    QFile::setPermissions(place.path(), QFile::permissions(place.path()) | QFile::ReadOther |
                                            QFile::ExeOther | QFile::ReadGroup | QFile::ExeGroup);
    QProcess owner;
    owner.start("setsid",
                {"bash", "-c", "'" QK_POSTGRES_CLUSTER "' start '" + folder + "' $$; echo; sleep 600"});
    QVERIFY(owner.waitForStarted());
    QVERIFY(QTest::qWaitFor([&] { return owner.bytesAvailable() > 0; }, 60000));
    QFile file(folder + "/data/postmaster.pid");
    QVERIFY(file.open(QIODevice::ReadOnly));
    const auto server = static_cast<pid_t>(file.readLine().trimmed().toLongLong());
    QCOMPARE(::kill(server, 0), 0);
    QCOMPARE(::kill(static_cast<pid_t>(-owner.processId()), SIGKILL), 0);
    owner.waitForFinished();
    const bool gone =
        QTest::qWaitFor([&] { return ::kill(server, 0) != 0 && !QDir(folder).exists(); }, 20000);
    if (!gone) QProcess::execute(QK_POSTGRES_CLUSTER, {"stop", folder});
    QVERIFY(gone);
  }

  void aServerGoesWithItsOwner() {
    QString folder;
    {
      const PostgresServer server;
      folder = server.folder();
      QVERIFY(QDir(folder).exists());
    }
    QVERIFY(!QDir(folder).exists());
  }
};

QTEST_GUILESS_MAIN(TestPostgresServer)
#include "test_postgres_server.moc"
