// A server that stops answering while its connections live: every call ends, nothing is stored twice, and the
// window shows meanwhile that the program waits.
#include <signal.h>

#include <QtTest>
#include <vector>

#include "platform/dao/postgres/postgres_engine.h"
#include "platform/dao/signs/waiting_sign.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/postgres_server.h"
#include "tests/support/stopped_server.h"

using namespace qk;
using namespace qk::dao;
using qk::test::PostgresServer;
using qk::test::ServerDatabase;
using qk::test::StoppedServer;

class TestSilentServer : public QObject {
  Q_OBJECT

  QTemporaryDir folder_;
  std::unique_ptr<ServerDatabase> server_;
  QString path_;
  std::unique_ptr<Database> database_;

  void open(std::unique_ptr<ServerDatabase> server) {
    server_ = std::move(server);
    ServerAddress address = server_->address();
    address.patience = 1;
    path_ = folder_.filePath(address.database + ".qkk");
    QFile file(path_);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(serverAddressText(address));
    file.close();
    database_ = Database::create(path_);
    database_->createTable(articles());
  }
  QStringList stored() const {
    return server_->native("SELECT \"ID\", \"Name\" FROM dao.\"Artikel\" ORDER BY \"ID\"");
  }
  static int begin(Recordset& rows, const QString& name) {
    rows.addNew();
    rows.setValue("Name", name);
    return rows.value("ID").toInt();
  }

 private Q_SLOTS:
  void init() { open(std::make_unique<ServerDatabase>()); }
  void cleanup() {
    database_.reset();
    server_.reset();
  }

  void aRowIsStoredOnce() {
    const auto rows = database_->openRecordset("Artikel");
    const int id = begin(*rows, "a");
    StoppedServer stopped(*server_);
    try {
      rows->update();
      QFAIL("stored by a server that is stopped");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 3043);
      QVERIFY2(error.description().contains("antwortet nicht"), qPrintable(error.description()));
    }
    rows->update();
    QCOMPARE(stored(), QStringList{QString("%1|a").arg(id)});
    stopped.goOn();
    QCOMPARE(stored(), QStringList{QString("%1|a").arg(id)});
  }

  /// What the stopped process has before it must not come behind the row that took its place.
  void aRowThatWasGivenUpDoesntComeLater() {
    const auto rows = database_->openRecordset("Artikel");
    begin(*rows, "a");
    StoppedServer stopped(*server_);
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    rows->cancelUpdate();
    const int id = begin(*rows, "a");
    rows->update();
    stopped.goOn();
    QCOMPARE(stored(), QStringList{QString("%1|a").arg(id)});
  }

  void aReadGoesOnByItself() {
    addArticle(*database_->openRecordset("Artikel"), "a");
    StoppedServer stopped(*server_);
    QCOMPARE(walk(*database_->openRecordset("Select * from Artikel where Name = 'a'"), "Name"),
             QStringList{"a"});
  }

  /// The question for the definitions meets the silence, before anything is in doubt.
  void aRowThatIsBegunInTheSilenceGoesOnByItself() {
    addArticle(*database_->openRecordset("Artikel"), "a");
    StoppedServer stopped(*server_);
    addArticle(*database_->openRecordset("Artikel"), "b");
    stopped.goOn();
    QCOMPARE(walk(*database_->openRecordset("Artikel"), "Name"), QStringList({"a", "b"}));
  }

  void whatCountsOnIsDoneOnce() {
    database_->execute("INSERT INTO Artikel (ID, Name, Preis) VALUES (1, 'a', 1)");
    const QString more = "UPDATE \"Artikel\" SET \"Preis\" = \"Preis\" + 1";
    Engine& engine = database_->engine();
    StoppedServer stopped(*server_);
    QCOMPARE(errorOf([&] { engine.execute(more, {}); }), 3043);
    QCOMPARE(engine.execute(more, {}), 1);
    stopped.goOn();
    QCOMPARE(server_->native("SELECT \"Preis\" FROM dao.\"Artikel\""), QStringList{"2.0000"});
  }

  /// It has done all of it, and holds it, when the commit no longer gets through.
  void aCommitThatIsNotHeardIsOpenUntilTheServerGoesOn() {
    const auto add = [&](const std::function<void()>& last) {
      database_->engine().transaction([&] {
        database_->execute("INSERT INTO Artikel (ID, Name) VALUES (1, 'a')");
        last();
      });
    };
    StoppedServer stopped;
    QCOMPARE(errorOf([&] { add([&] { stopped.stop(*server_); }); }), 3043);
    stopped.goOn();
    QVERIFY(stored().isEmpty());
    add([] {});
    QCOMPARE(stored(), QStringList{"1|a"});
  }

  void aServerThatIsWhollyStoppedIsToldAndComesBack() {
    PostgresServer own;
    cleanup();
    open(std::make_unique<ServerDatabase>(own.folder()));
    const auto rows = database_->openRecordset("Artikel");
    const int id = begin(*rows, "a");
    StoppedServer stopped;
    stopped.stopWhole(own.folder(), *server_);
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    QCOMPARE(errorOf([&] { Database::open(path_); }), 3043);
    stopped.goOn();
    rows->update();
    QCOMPARE(stored(), QStringList{QString("%1|a").arg(id)});
    cleanup();
  }

  void theWaitShowsAndReadsNothing() {
    int shown = 0, hidden = 0, refused = 0;
    const auto other = Database::open(path_);
    const WaitingSign sign(
        [&] {
          ++shown;
          refused += errorOf([&] { database_->openRecordset("Artikel"); }) == 3260;
          refused += errorOf([&] { other->openRecordset("Artikel"); }) == 3260;
          refused += errorOf([&] { Database::open(path_); }) == 3260;
        },
        [&] { ++hidden; });
    walk(*database_->openRecordset("Artikel"), "Name");
    QCOMPARE(shown, 0);
    StoppedServer stopped(*server_);
    walk(*database_->openRecordset("Select * from Artikel"), "Name");
    QVERIFY2(shown >= 3, qPrintable(QString::number(shown)));
    QCOMPARE(refused, 3 * shown);
    QVERIFY(hidden >= 1 && hidden < shown);
  }

  /// Events are not delivered while a call waits: who called stands between two rows.
  void nothingElseRunsMeanwhile() {
    bool ran = false;
    QTimer::singleShot(0, this, [&] { ran = true; });
    StoppedServer stopped(*server_);
    walk(*database_->openRecordset("Select * from Artikel"), "Name");
    QVERIFY(!ran);
  }
};

QTEST_GUILESS_MAIN(TestSilentServer)
#include "test_silent_server.moc"
