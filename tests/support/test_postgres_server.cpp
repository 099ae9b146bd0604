// The test server itself: databases of their own, a crash, roles.
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
