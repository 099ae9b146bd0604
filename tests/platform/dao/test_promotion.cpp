// A server that dies and whose standby takes over: work goes on there, nothing is lost and nothing doubled;
// and the old one, when it comes back, gets nothing.
#include <QtTest>

#include "platform/dao/postgres/postgres_engine.h"
#include "platform/dao/standby.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/postgres_server.h"
#include "tests/support/stopped_server.h"

using namespace qk;
using namespace qk::dao;
using qk::test::PostgresServer;
using qk::test::ServerDatabase;
using qk::test::StoppedServer;

class TestPromotion : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    if (!first_) makePair();
  }
  void cleanup() { database_.reset(); }

  void thePrimaryIsFoundWhateverTheOrder() {
    QCOMPARE(refusalAt({second_->folder()}), isStandby(*second_));
    for (const QStringList& folders :
         {QStringList{first_->folder(), second_->folder()}, {second_->folder(), first_->folder()}}) {
      database_ = Database::open(fileFor(folders));
      addArticle(*articlesNow(), "a");
    }
    QCOMPARE(namesAt(*first_), QStringList({"a", "a"}));
    QCOMPARE(namesAt(*second_), QStringList({"a", "a"}));
    database_.reset();
    // One that says nothing stands in nobody's way.
    StoppedServer stopped;
    stopped.stopWhole(second_->folder(), *server_);
    first_->waitForStandby({});
    database_ = Database::open(fileFor({second_->folder(), first_->folder()}, 600));
    QVERIFY(ServerMemory::ofProgram().wasSilent({second_->folder()}));
    addArticle(*articlesNow(), "b");
    database_.reset();
    stopped.goOn();
    QCOMPARE(refusalAt({second_->folder()}), isStandby(*second_));
    QVERIFY(!ServerMemory::ofProgram().wasSilent({second_->folder()}));
    first_->waitForStandby("zweiter");
    database_.reset();
    // Nor does a standby's answer wait long for a primary that said nothing a moment ago.
    stopped.stopWhole(first_->folder(), *server_);
    ServerMemory::ofProgram().noteSilence({first_->folder()}, true);
    const QString refusal = refusalAt({first_->folder(), second_->folder()}, 600);
    QVERIFY2(refusal.startsWith("Der Rechner '" + first_->folder() + "' gibt keine Antwort."),
             qPrintable(refusal));
    QVERIFY2(refusal.endsWith(isStandby(*second_)), qPrintable(refusal));
    stopped.goOn();
  }

  /// Numbers that the standby doesn't know of yet it would give again.
  void noNumberIsGivenThatTheStandbyDoesntKnow() {
    database_ = Database::open(path_);
    second_->kill();
    // A step that is written down for the next 32 numbers, too: to give those needs nothing more.
    at(*first_,
       R"(SET synchronous_commit = off; SELECT nextval(pg_get_serial_sequence('dao."Artikel"', 'ID')))");
    const auto rows = articlesNow();
    QCOMPARE(errorOf([&] { rows->addNew(); }), 3043);
    second_->again();
    rows->addNew();
    const int given = rows->value("ID").toInt();
    const QString last = "SELECT last_value FROM pg_sequences WHERE schemaname = 'dao'";
    QVERIFY(at(*second_, last).first().toInt() >= given + Engine::kNumberBlock - 1);
  }

  /// The server has stored the row, and waits for its standby; to be seen it is, when that wait is given up.
  void whatTheStandbyLacksIsNotTakenForStored_data() {
    QTest::addColumn<bool>("promoted");
    QTest::newRow("the standby comes back") << false;
    QTest::newRow("the standby takes over") << true;
  }
  void whatTheStandbyLacksIsNotTakenForStored() {
    QFETCH(bool, promoted);
    database_ = Database::open(path_);
    database_->execute("Delete * from Artikel");
    database_->execute("INSERT INTO Artikel (ID, Name, Menge) VALUES (1000, 'zwei', 1)");
    const auto rows = articlesNow();
    addArticle(*rows, "a");
    const QString more = R"(UPDATE "Artikel" SET "Menge" = "Menge" + 1 WHERE "ID" = 1000)";
    rows->addNew();
    rows->setValue("Name", "b");
    second_->kill();
    const auto other = Database::open(path_);
    try {
      rows->update();
      QFAIL("stored without the standby");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 3043);
      QVERIFY2(error.description().contains("Ersatzserver"), qPrintable(error.description()));
    }
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    QCOMPARE(namesAt(*first_), QStringList({"a", "b", "zwei"}));
    Engine& counting = other->engine();
    QCOMPARE(errorOf([&] { counting.execute(more, {}); }), 3043);
    QCOMPARE(errorOf([&] { counting.execute(more, {}); }), 3043);
    if (promoted) {
      first_->kill();
      second_->again();
      second_->promote();
    } else {
      second_->again();
    }
    rows->update();
    QCOMPARE(counting.execute(more, {}), 1);
    const PostgresServer& primary = promoted ? *second_ : *first_;
    QCOMPARE(namesAt(primary), QStringList({"a", "b", "zwei"}));
    QCOMPARE(namesAt(*second_), QStringList({"a", "b", "zwei"}));
    QCOMPARE(at(*second_, R"(SELECT "Menge" FROM dao."Artikel" WHERE "ID" = 1000)"), QStringList{"2"});
  }

  /// Who follows the handbook does what these tests do.
  void theHandbookSaysTheSame() {
    const QString page = textOf("data/handbuch/ersatzserver.html");
    QString copying = textOf("tests/support/postgres-cluster");
    copying = copying.mid(copying.indexOf("pg_basebackup\" -d") + 14).section("\n    launch", 0, 0);
    copying.replace("$followed", "erster").replace("\"$folder/data\"", "/var/lib/postgresql/15/main");
    copying = copying.remove(u'\\').simplified();
    QVERIFY2(copying.startsWith("-d \"host=erster "), qPrintable(copying));
    for (const QString& command :
         {"pg_basebackup " + copying, QString("CREATE ROLE qk_ersatz LOGIN REPLICATION"),
          QString("SELECT pg_promote()"), QString("ALTER SYSTEM SET synchronous_standby_names = 'zweiter'"),
          QString("ALTER SYSTEM SET synchronous_standby_names = ''"), QString("SELECT pg_reload_conf()"),
          QString("main/standby.signal"), QString("host=erster, zweiter")})
      QVERIFY2(page.contains(command), qPrintable(command));
  }

  void workGoesOnAtTheStandby() {
    makePair();
    database_ = Database::open(path_);
    const auto rows = articlesNow();
    const int a = addArticle(*rows, "a");
    rows->addNew();
    rows->setValue("Name", "b");
    const int b = rows->value("ID").toInt();
    first_->kill();
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    QVERIFY2(refusalAt({first_->folder(), second_->folder()}).endsWith(isStandby(*second_)), "");
    // As a copy of the first one it would wait for a standby, too.
    second_->waitForStandby("erster");
    second_->promote();
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    second_->waitForStandby({});
    rows->update();
    QCOMPARE(namesAt(*second_), QStringList({"a", "b"}));
    const int c = addArticle(*rows, "c");
    QCOMPARE(walk(*articlesNow(), "ID"),
             QStringList({QString::number(a), QString::number(b), QString::number(c)}));
    QVERIFY(c > b);

    // The old one comes back, and thinks itself the primary.
    first_->again();
    first_->waitForStandby({});
    addArticle(*Database::open(path_)->openRecordset("Artikel"), "d");
    addArticle(*articlesNow(), "e");
    QCOMPARE(namesAt(*first_), QStringList{"a"});
    QCOMPARE(namesAt(*second_), QStringList({"a", "b", "c", "d", "e"}));
    const QString outOfDate = "'" + first_->folder() + "' war früher der Hauptserver";
    QVERIFY2(refusalAt({first_->folder()}).startsWith(outOfDate), qPrintable(refusalAt({first_->folder()})));
    second_->kill();
    QCOMPARE(errorOf([&] { addArticle(*articlesNow(), "f"); }), 3043);
    QCOMPARE(errorOf([&] { Database::open(path_); }), 3043);
    QCOMPARE(namesAt(*first_), QStringList{"a"});
    second_->again();
    addArticle(*articlesNow(), "f");
    QCOMPARE(namesAt(*second_), QStringList({"a", "b", "c", "d", "e", "f"}));

    // If it is the only one left it may be made the primary on a timeline of its own.
    second_->kill();
    first_->kill();
    QVERIFY(QFile(first_->folder() + "/data/standby.signal").open(QIODevice::WriteOnly));
    first_->again();
    first_->promote();
    addArticle(*articlesNow(), "g");
    QCOMPARE(namesAt(*first_), QStringList({"a", "g"}));
    second_->again();
  }

  /// Both live: what is open goes on at the first until somebody meets the second.
  void aServerThatIsOvertakenIsLeft() {
    makePair();
    database_ = Database::open(path_);
    first_->waitForStandby({});
    second_->waitForStandby({});
    const auto rows = articlesNow();
    addArticle(*rows, "a");
    QVERIFY(QTest::qWaitFor([this] { return namesAt(*second_) == QStringList{"a"}; }));
    second_->promote();
    QVERIFY(standbyOf(path_));
    addArticle(*rows, "b");
    QCOMPARE(namesAt(*first_), QStringList{"a"});
    QCOMPARE(namesAt(*second_), QStringList({"a", "b"}));
  }

  /// It was about to store a row when it stopped, and may do so when it goes on: at a place that doesn't
  /// count.
  void aServerThatHangsComesBackWithNothing() {
    makePair();
    database_ = Database::open(path_);
    first_->waitForStandby({});
    second_->waitForStandby({});
    const auto rows = articlesNow();
    rows->addNew();
    rows->setValue("Name", "a");
    StoppedServer stopped;
    stopped.stopWhole(first_->folder(), *server_);
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    second_->promote();
    rows->update();
    stopped.goOn();
    addArticle(*rows, "b");
    QCOMPARE(namesAt(*second_), QStringList({"a", "b"}));
    QVERIFY(!namesAt(*first_).contains("b"));
  }

  /// The pair's second server is a primary by now.
  void anotherServerIsTakenOnlyAfresh() {
    const PostgresServer other;
    other.native("CREATE DATABASE " + server_->address().database + " OWNER qk_test");
    Database::create(fileFor({other.folder()}))->createTable(articles());
    const QString both = fileFor({second_->folder(), other.folder()});
    database_ = Database::open(both);
    addArticle(*articlesNow(), "a");
    second_->kill();
    QCOMPARE(errorOf([&] { addArticle(*articlesNow(), "b"); }), 3043);
    try {
      Database::open(both);
      QFAIL("opened another server");
    } catch (const Error& error) {
      QVERIFY2(error.description().endsWith("'" + other.folder() +
                                            "' ist ein anderer Server als der, mit dem dieses Programm "
                                            "bisher gearbeitet hat."),
               qPrintable(error.description()));
    }
    QVERIFY(namesAt(other).isEmpty());
    database_.reset();
    database_ = Database::open(both);
    addArticle(*articlesNow(), "c");
    QCOMPARE(namesAt(other), QStringList{"c"});
  }

 private:
  static QString textOf(const QString& path) {
    QFile file(QK_SOURCE_DIR "/" + path);
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
  }
  /// A primary, and a standby that each commit waits for.
  void makePair() {
    server_.reset();
    second_.reset();
    first_ = std::make_unique<PostgresServer>();
    server_ = std::make_unique<ServerDatabase>(first_->folder());
    Database::create(fileFor({first_->folder()}))->createTable(articles());
    second_ = PostgresServer::synchronousStandbyOf(*first_);
    path_ = fileFor({first_->folder(), second_->folder()});
  }
  /// A file that names the database on these hosts.
  QString fileFor(const QStringList& folders, int patience = 1) {
    const QString path = folder_.filePath(QString("store%1.qkk").arg(++files_));
    server_->writeAddress(path, folders, patience);
    return path;
  }
  std::unique_ptr<Recordset> articlesNow() const { return database_->openRecordset("Artikel"); }
  QStringList at(const PostgresServer& server, const QString& text) const {
    return server.native(text, server_->address().database);
  }
  QStringList namesAt(const PostgresServer& server) const {
    return at(server, R"(SELECT "Name" FROM dao."Artikel" ORDER BY "Name", "ID")");
  }
  static QString isStandby(const PostgresServer& server) {
    return "'" + server.folder() +
           "' antwortet, ist aber noch Ersatz: Er muss erst zum Hauptserver gemacht werden.";
  }
  /// Why these hosts can't be worked with.
  QString refusalAt(const QStringList& folders, int patience = 1) {
    const QString path = fileFor(folders, patience);
    try {
      Database::open(path);
    } catch (const Error& error) {
      return error.description().section(" ist nicht erreichbar: ", 1);
    }
    return "opened";
  }

  QTemporaryDir folder_;
  int files_ = 0;
  std::unique_ptr<PostgresServer> first_, second_;
  std::unique_ptr<ServerDatabase> server_;
  QString path_;
  std::unique_ptr<Database> database_;
};

QTEST_GUILESS_MAIN(TestPromotion)
#include "test_promotion.moc"
