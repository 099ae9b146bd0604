// The server dies and stays away: one desk goes on from the last copy, by the steps of the handbook, with the
// real programs.
#include <QElapsedTimer>
#include <QTemporaryDir>
#include <QTest>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/support/postgres_server.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/walk.h"

using namespace qk;

namespace {

constexpr int kShots = 4;  ///< of one shooter
constexpr qint64 kMinute = 60000;

/// What the command says; empty when it failed.
QString called(const QStringList& arguments) {
  QProcess process;
  process.start(QString(QK_BIN_FOLDER) + "/qk-wettkampf", arguments);
  const bool done = process.waitForFinished() && process.exitCode() == 0;
  if (!done) qWarning("%s", process.readAllStandardError().constData());
  return done ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

/// A shooter on line 1, and so many shots more on it.
void shoot(const Range& range, DrivenProgram& program, int before) {
  Walk walk(program);
  walk.waitForMainWindow();
  walk.selectLine(1);
  if (!walk.hasShooter(1)) walk.chooseShooter(1, "105");
  walk.priceModeOn(1);
  range.waitUntilTaken(program, 1, {"76"});
  walk.tickAllStationDisciplines(1);
  walk.sendShooter(1);
  walk.waitForOpenShots(1, before + kShots);
  program.waitUntil("the last answer", [&] { return !range.reportPending(1); });
}

int shotsIn(const QString& competition) {
  const auto store = dao::Database::open(competition, true);
  return store->openRecordset("Select Count(*) as Anzahl from Haering_Daten")->value("Anzahl").toInt();
}

}  // namespace

class TestServerLost : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void oneDeskGoesOnWithinAMinute() {
    const QTemporaryDir folder;
    test::PostgresServer server;
    const test::ServerDatabase database(server.folder());
    database.writeAddress(folder.filePath("demo.qkk"));
    Range range({folder.path(), "1", 60, 1, {"--schuss", QString::number(kShots)}});
    range.startStations();
    const auto desk = range.startProgram();
    shoot(range, *desk, 0);

    const QString said = called({"sichern", range.competition(), folder.filePath("Kopien")});
    const QString copy = said.section('\n', 0, 0).section(": ", 1);
    QVERIFY2(QFile::exists(copy), qPrintable(said));
    server.kill();
    range.stopStations();
    desk->kill();
    desk->waitForEnd();

    QElapsedTimer lost;
    lost.start();
    const QString next = folder.filePath("weiter.qkk");
    QVERIFY(!called({"zurueck", copy, next}).isEmpty());
    QCOMPARE(shotsIn(next), kShots);
    range.startStations();
    DrivenProgram office(QString(QK_BIN_FOLDER) + "/qk-intarso", {next}, range.environment());
    shoot(range, office, kShots);
    const qint64 took = lost.elapsed();
    qInfo("from the loss to the next shots: %lld s", took / 1000);
    QVERIFY(took < kMinute);
    QCOMPARE(shotsIn(next), 2 * kShots);
    Walk(office).close(true);
    QCOMPARE(office.waitForEnd(), 0);
  }
};

QTEST_GUILESS_MAIN(TestServerLost)
#include "test_server_lost.moc"
