// A server and its standby: what is told of them, and what happens when the first is lost.
#include <QtTest>

#include "platform/dao/standby.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/postgres_server.h"

using namespace qk;
using namespace qk::dao;
using qk::test::PostgresServer;
using qk::test::ServerDatabase;

namespace {

bool isCaughtUp(const std::optional<StandbyState>& state) {
  return state && state->connected && state->bytesBehind == 0;
}

}  // namespace

class TestStandby : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    first_ = std::make_unique<PostgresServer>();
    server_ = std::make_unique<ServerDatabase>(first_->folder());
    path_ = folder_.filePath("pokal.qkk");
    server_->writeAddress(path_);
    Database::create(path_)->createTable(articles());
  }

  void aFileHasNone() {
    const QString path = folder_.filePath("datei.qkk");
    Database::create(path);
    QVERIFY(!standbyOf(path));
    QVERIFY(!standbyOf(folder_.filePath("fehlt.qkk")));
  }

  void aServerThatStandsAloneHasNone() { QVERIFY(!standbyOf(path_)); }

  void aStandbyThatIsMissedIsTold() {
    first_->waitForStandby("zweiter");
    const auto reset = qScopeGuard([this] { first_->waitForStandby({}); });
    QVERIFY(QTest::qWaitFor([this] { return standbyOf(path_).has_value(); }));
    const StandbyState state = *standbyOf(path_);
    QVERIFY(!state.connected && state.synchronous && state.commitsWait);
    QVERIFY(!state.bytesBehind && !state.behind);
  }

  void aStandbyIsTold() {
    second_ = PostgresServer::standbyOf(first_->folder());
    // Without the right to know, that there is one is all that can be told.
    QVERIFY(QTest::qWaitFor([this] { return standbyOf(path_).has_value(); }));
    QVERIFY(standbyOf(path_)->connected && !standbyOf(path_)->bytesBehind && !standbyOf(path_)->behind);
    first_->native("GRANT pg_read_all_stats TO qk_test");
    QVERIFY(QTest::qWaitFor([this] { return isCaughtUp(standbyOf(path_)); }));
    const StandbyState state = *standbyOf(path_);
    QCOMPARE(state.name, QString("zweiter"));
    QCOMPARE(state.behind, std::chrono::seconds(0));
    QVERIFY(!state.synchronous && !state.commitsWait);
    first_->waitForStandby("zweiter");
    QVERIFY(QTest::qWaitFor([this] { return standbyOf(path_)->synchronous; }));
    QVERIFY(QTest::qWaitFor([this] { return !standbyOf(path_)->commitsWait; }));
  }

  void aStandbyThatIsAwayIsTold() {
    second_->kill();
    QVERIFY(QTest::qWaitFor([this] { return !standbyOf(path_)->connected; }));
    QVERIFY(standbyOf(path_)->commitsWait);
    second_->again();
    QVERIFY(QTest::qWaitFor([this] { return isCaughtUp(standbyOf(path_)); }));
    QVERIFY(!standbyOf(path_)->commitsWait);
  }

  void aServerThatIsAwayIs3043() {
    first_->kill();
    QCOMPARE(errorOf([this] { standbyOf(path_); }), 3043);
    first_->again();
  }

 private:
  QTemporaryDir folder_;
  std::unique_ptr<PostgresServer> first_, second_;
  std::unique_ptr<ServerDatabase> server_;
  QString path_;
};

QTEST_GUILESS_MAIN(TestStandby)
#include "test_standby.moc"
