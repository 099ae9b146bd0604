// The main window while its database server says nothing: it shows so and is painted, and the shot is stored
// over another connection.
#include <QStatusBar>
#include <QTest>

#include "app/shell/waiting_window.h"
#include "tests/app/range_office.h"
#include "tests/support/stopped_server.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Counts what is painted while the status bar speaks of the server.
class PaintCount : public QObject {
 public:
  explicit PaintCount(frmLindorm& window) : window_(window) { window.installEventFilter(this); }
  int whileWaiting() const { return whileWaiting_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    const bool says = window_.statusBar()->currentMessage() == "Der Datenbankserver antwortet nicht ...";
    whileWaiting_ += event->type() == QEvent::Paint && says;
    return QObject::eventFilter(watched, event);
  }

 private:
  frmLindorm& window_;
  int whileWaiting_ = 0;
};

}  // namespace

class TestWaitingWindow : public QObject {
  Q_OBJECT

 public:
  static void initMain() { qputenv("QK_TEST_ENGINE", "postgres"); }

 private Q_SLOTS:
  void aShotWaitsForTheServerInALivingWindow() {
    RangeOffice office("1");
    dao::ServerAddress address = *dao::serverAddressIn(office.competition);
    address.patience = 1;
    office.place.files.write(office.competition, serverAddressText(address));
    QVERIFY(office.open());
    office.chooseShooter(1, "107");
    office.press(1, "cmdPreisModus");
    const dao::WaitingSign sign = showWaitingIn(*office.window().statusBar());
    const PaintCount painted(office.window());
    const ServerDatabase& server = serverDatabase(office.competition);
    const StoppedServer stopped(server);
    office.fire(1, shotRecord(1, 1, "9,7", "123,4"));
    QVERIFY2(painted.whileWaiting() >= 3, qPrintable(QString::number(painted.whileWaiting())));
    QVERIFY(office.window().statusBar()->currentMessage().isEmpty());
    QVERIFY(!QFile::exists(office.folderFile("HSlav1.ctl")));
    QCOMPARE(server.native("SELECT count(*) FROM dao.\"Haering_Daten\""), QStringList{"1"});
  }
};

QTEST_MAIN(TestWaitingWindow)
#include "test_waiting_window.moc"
