// What only a server can do to us: a lost connection, a password, a failed transaction, a read that is given
// up.
#include <QtTest>
#include <atomic>
#include <cmath>
#include <limits>
#include <thread>

#include "platform/dao/postgres/postgres_engine.h"
#include "platform/dao/postgres/postgres_functions.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/postgres_server.h"

using namespace qk;
using namespace qk::dao;
using qk::test::PostgresServer;
using qk::test::ServerDatabase;

class TestPostgresEngine : public QObject {
  Q_OBJECT

  QTemporaryDir folder_;

  /// A file that opens a new database on the shared server, with the table of articles.
  QString furnished(const ServerDatabase& server) {
    static int count = 0;
    const QString path = folder_.filePath(QString("store%1.qkk").arg(++count));
    server.writeAddress(path);
    Database::create(path)->createTable(articles());
    return path;
  }
  /// Ends all connections to it and waits until the server has let go of them.
  static void endConnections(const ServerDatabase& server) {
    const QString others =
        " FROM pg_stat_activity WHERE datname = current_database() AND pid <> pg_backend_pid() AND "
        "backend_type = 'client backend'";
    server.native("SELECT pg_terminate_backend(pid, 5000)" + others);
    // The connection that asked is one of them itself until it has ended.
    for (int look = 0; look < 500 && server.native("SELECT count(*)" + others) != QStringList{"0"}; ++look)
      QTest::qWait(10);
  }

 private Q_SLOTS:
  void aDatabaseIsFurnishedOnce() {
    const ServerDatabase server;
    const QString path = folder_.filePath("einmal.qkk");
    server.writeAddress(path);
    QCOMPARE(errorOf([&] { Database::open(path); }), 3343);
    QCOMPARE(errorOf([&] { Database::create(path); }), 0);
    QCOMPARE(errorOf([&] { Database::create(path); }), 3204);
    QCOMPARE(errorOf([&] { Database::open(path); }), 0);
    QCOMPARE(Database::open(path)->path(), path);
  }

  /// Servers that stand already would keep the former functions.
  void changedFunctionsHaveANewVersion() {
    const QByteArray digest =
        QCryptographicHash::hash(sql::postgresFunctions().join('\n').toUtf8(), QCryptographicHash::Sha256)
            .toHex();
    QCOMPARE(QString("%1: %2").arg(sql::kPostgresFunctionsVersion).arg(QString::fromLatin1(digest)),
             QString("3: 9e20ee8c8d6590927bcef30ab2888b2122121975d7664db84a7c8b18056f807e"));
  }

  void aServerThatIsNotThereIsTold() {
    const QString path = folder_.filePath("weg.qkk");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(serverAddressText({{{"/nirgendwo"}}, "db", "u"}));
    file.close();
    try {
      Database::open(path);
      QFAIL("opened");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 3043);
      QVERIFY(error.description().startsWith("Die Datenbank db auf /nirgendwo ist nicht erreichbar: "));
    }
  }

  /// Then nobody can tell a primary that was given up from another: it counts as what it says.
  void aRoleThatMayNotKnowTheServersNumberWorks() {
    const ServerDatabase server;
    const QString path = furnished(server);
    server.native("REVOKE EXECUTE ON FUNCTION pg_control_system() FROM PUBLIC");
    const auto database = Database::open(path);
    addArticle(*database->openRecordset("Artikel"), "a");
    QCOMPARE(walk(*database->openRecordset("Artikel"), "Name"), QStringList{"a"});
  }

  void aPasswordIsAskedForUntilItIsRight() {
    PostgresServer own;
    const ServerDatabase server(own.folder(), "qk_secret");
    const QString path = folder_.filePath("geheim.qkk");
    server.writeAddress(path);
    qunsetenv("PGPASSWORD");
    QCOMPARE(errorOf([&] { Database::create(path); }), 3029);

    QList<bool> asked;
    OpenOptions options;
    options.askPassword = [&](const ServerAddress& address, bool again) -> std::optional<QString> {
      asked.append(again);
      return address.user == "qk_secret" && again ? "geheim" : "falsch";
    };
    const auto database = Database::create(path, options);
    QCOMPARE(asked, QList<bool>({false, true}));
    database->createTable(articles());
    asked.clear();
    const auto reader = database->engine().reader([] { return false; });
    QCOMPARE(reader->catalogue()->tableNames(), QStringList{"Artikel"});
    QVERIFY(asked.isEmpty());

    options.askPassword = [](const ServerAddress&, bool) { return std::optional<QString>(); };
    QCOMPARE(errorOf([&] { Database::open(path, options); }), 3029);
    qputenv("PGPASSWORD", "geheim");
    QCOMPARE(errorOf([&] { Database::open(path); }), 0);
    qunsetenv("PGPASSWORD");
  }

  void anEndedConnectionIsMadeAnewByTheNextCall() {
    const ServerDatabase server;
    const auto database = Database::open(furnished(server));
    const auto rows = database->openRecordset("Select * from Artikel");
    addArticle(*rows, "a");
    endConnections(server);
    addArticle(*rows, "b");
    endConnections(server);
    QCOMPARE(walk(*database->openRecordset("Select * from Artikel"), "Name"), QStringList({"a", "b"}));
  }

  void aKilledServerFailsTheRowAndARetryStoresItOnce() {
    PostgresServer own;
    const ServerDatabase server(own.folder());
    const auto database = Database::open(furnished(server));
    const auto rows = database->openRecordset("Select * from Artikel");
    addArticle(*rows, "a");
    rows->addNew();
    rows->setValue("Name", "b");
    own.kill();
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    own.again();
    rows->update();
    QCOMPARE(walk(*database->openRecordset("Select * from Artikel"), "Name"), QStringList({"a", "b"}));
  }

  /// The server stores the row and ends the connection before it answers.
  void aRowWhoseAnswerGotLostIsNotStoredTwice() {
    const ServerDatabase server;
    const auto database = Database::open(furnished(server));
    const auto rows = database->openRecordset("Select * from Artikel");
    rows->addNew();
    const int id = rows->value("ID").toInt();
    rows->setValue("Name", "Schuß");
    rows->setValue("Preis", "1,25");
    rows->setValue("Am", "20.11.2026 10:41:07");
    // A deferred trigger runs within the commit, where the connection can be ended behind the row's storing
    // by another one: here the row is stored by somebody else with the same values, and ours is ended.
    server.native(
        "CREATE FUNCTION dao.cut() RETURNS trigger LANGUAGE plpgsql AS $$ BEGIN "
        "PERFORM pg_terminate_backend(pg_backend_pid()); RETURN NEW; END $$");
    server.native(
        "CREATE TRIGGER cut AFTER INSERT ON dao.\"Artikel\" FOR EACH ROW EXECUTE FUNCTION dao.cut()");
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    server.native("DROP TRIGGER cut ON dao.\"Artikel\"");
    QCOMPARE(server.native("SELECT count(*) FROM dao.\"Artikel\""), QStringList{"0"});
    server.native(
        QString("INSERT INTO dao.\"Artikel\" (\"ID\", \"Name\", \"Preis\", \"Am\", \"Fertig\") VALUES "
                "(%1, 'Schuß', 1.25, '2026-11-20 10:41:07', 0)")
            .arg(id));
    rows->update();
    QCOMPARE(server.native("SELECT \"ID\", \"Name\" FROM dao.\"Artikel\""),
             QStringList{QString("%1|Schuß").arg(id)});
    rows->moveLast();
    QCOMPARE(rows->value("ID").toInt(), id);
  }

  void aFailedStatementPoisonsNothing() {
    const ServerDatabase server;
    const auto database = Database::open(furnished(server));
    Engine& engine = database->engine();
    const auto add = [&](int id) {
      engine.write(QString("INSERT INTO \"Artikel\" (\"ID\", \"Name\") VALUES (%1, 'x')").arg(id), {});
    };
    QCOMPARE(errorOf([&] { engine.write("INSERT INTO fehlt VALUES (1)", {}); }), 3078);
    add(1);
    QCOMPARE(errorOf([&] { add(1); }), 3022);
    QCOMPARE(errorOf([&] {
               engine.transaction([&] {
                 add(2);
                 add(1);
               });
             }),
             3022);
    add(3);
    // Whoever swallows a failure within a transaction doesn't get half of it stored.
    QCOMPARE(errorOf([&] {
               engine.transaction([&] {
                 add(4);
                 errorOf([&] { add(1); });
                 errorOf([&] { add(5); });
               });
             }),
             3022);
    add(6);
    QCOMPARE(walk(*database->openRecordset("Artikel"), "ID"), QStringList({"1", "3", "6"}));
  }

  void aTransactionThatLosesItsConnectionStoresNothing() {
    const ServerDatabase server;
    const auto database = Database::open(furnished(server));
    const auto add = [&] { database->execute("INSERT INTO Artikel (Name) VALUES ('x')"); };
    QCOMPARE(errorOf([&] {
               database->engine().transaction([&] {
                 add();
                 endConnections(server);
                 add();
               });
             }),
             3043);
    QVERIFY(database->openRecordset("Artikel")->eof());
    add();
    QCOMPARE(walk(*database->openRecordset("Artikel"), "Name"), QStringList{"x"});
  }

  void numbersArriveAsTheyAre() {
    const ServerDatabase server;
    const auto database = Database::open(furnished(server));
    PostgresConnection& connection = static_cast<PostgresEngine&>(database->engine()).connection();
    using Limits = std::numeric_limits<double>;
    for (const double number : {0.1, 0.1 + 0.2, 1.0 / 3, 1e5, -1e5, 1e16, 1e17, 12345678901234567890.0, 1e-5,
                                Limits::max(), Limits::min(), -Limits::denorm_min(), 0.0}) {
      const QVariant text = connection.value("SELECT (?::float8)::text", {number});
      QCOMPARE(text.toString().toDouble(), number);
    }
    QVERIFY(std::signbit(connection.value("SELECT ?::float8", {-0.0}).toDouble()));
    for (const double number : {0.0, 100000.0, -2e9})  // where an exponent would not be read
      QCOMPARE(connection.value("SELECT ?::integer", {number}).toDouble(), number);
  }

  void aReadIsGivenUpWithinAMoment() {
    const ServerDatabase server;
    const auto database = Database::open(furnished(server));
    std::atomic<bool> cancelled = false;
    const auto reader = database->engine().reader([&] { return cancelled.load(); });
    std::thread canceller([&] {
      while (server.native("SELECT count(*) FROM pg_stat_activity WHERE query LIKE '%pg_sleep%' AND state = "
                           "'active' AND pid <> pg_backend_pid()") == QStringList{"0"})
        std::this_thread::yield();
      cancelled = true;
    });
    const auto take = [](const NativeRow&) { return true; };
    QCOMPARE(errorOf([&] { reader->read("SELECT pg_sleep(600)", {}, take); }), 3059);
    canceller.join();
    cancelled = false;
    QCOMPARE(errorOf([&] { reader->read("SELECT 1", {}, take); }), 0);
    QCOMPARE(errorOf([&] { reader->write("DELETE FROM \"Artikel\"", {}); }), 3027);
  }

  void numbersStayApartWhileOthersInsertTheirOwn() {
    const ServerDatabase server;
    const QString path = furnished(server);
    const auto one = Database::open(path), two = Database::open(path);
    const auto rows = one->openRecordset("Artikel");
    addArticle(*rows, "a");
    two->execute("INSERT INTO Artikel (ID, Name) VALUES (5000, 'eigen')");
    QSet<int> numbers;
    for (int i = 0; i < 100; ++i) {
      numbers.insert(addArticle(*rows, "b"));
      two->execute("INSERT INTO Artikel (Name) VALUES ('c')");
    }
    QCOMPARE(numbers.size(), 100);
    QCOMPARE(walk(*one->openRecordset("Artikel"), "ID").size(), 202);
  }

  void longNamesAreToldApart() {
    const ServerDatabase server;
    const auto database = Database::open(furnished(server));
    QCOMPARE(errorOf([&] { database->createTable({QString(64, 'x'), {text("a")}, {}}); }), 3125);
    const QString table(40, 't'), index(60, 'i');
    database->createTable({table, {text("a"), number("b")}, {}});
    database->appendIndex(table, {index + "1", {"a"}, false, false, false});
    database->appendIndex(table, {index + "2", {"b"}, false, true, false});
    const TableDef def = database->tableDef(table);
    QCOMPARE(def.indexes.size(), size_t(2));
    QCOMPARE(def.indexes[1].name, index + "2");
  }
};

QTEST_GUILESS_MAIN(TestPostgresEngine)
#include "test_postgres_engine.moc"
