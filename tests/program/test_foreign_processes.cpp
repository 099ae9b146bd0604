// The real program on a file that others open and close meanwhile: whatever they do, every shot whose flag is
// gone is stored.
#include <QSet>
#include <QTest>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/program/range_folder.h"
#include "tests/support/foreign/foreign_process.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/reckoning_log.h"
#include "tools/rundgang/walk.h"

using namespace qk;

constexpr int kPatience = 120;  ///< seconds
constexpr int kShots = 18;      ///< one a second

class TestForeignProcesses : public QObject {
  Q_OBJECT

  struct Place {
    explicit Place(int shots) : range({folder.path(), "11", 0, 1, {"--schuss", QString::number(shots)}}) {}

    size_t fired() const { return firedShots(range.stationLog()).size(); }
    QSet<QString> firedKeys() const {
      QSet<QString> keys;
      for (const FiredShot& shot : firedShots(range.stationLog())) keys.insert(shot.key);
      return keys;
    }

    test::RangeFolder folder;
    Range range;
  };

  /// Sends a shooter, whereupon the station begins to shoot.
  static void shoot(const Place& place, DrivenProgram& program, int line) {
    Walk walk(program);
    walk.waitForMainWindow();
    walk.selectLine(line);
    if (!walk.hasShooter(line)) walk.chooseShooter(line, QString::number(104 + line));
    walk.priceModeOn(line);
    place.range.waitUntilTaken(program, line, {"76"});
    walk.tickAllStationDisciplines(line);
    walk.sendShooter(line);
  }
  static void waitForShots(const Place& place, DrivenProgram& program, size_t count) {
    program.waitUntil(
        "shots", [&] { return place.fired() >= count; }, kPatience);
  }
  /// All shots of the line are in the grid, and the station has got its answer to the last one.
  static void waitForTheLast(const Place& place, DrivenProgram& program, int line, int count) {
    Walk(program).waitForOpenShots(line, count);
    program.waitUntil(
        "the last answer", [&] { return !place.range.reportPending(line); }, kPatience);
  }

  static QStringList storedKeys(const QString& competition) {
    QStringList keys;
    const auto store = dao::Database::open(competition);
    const auto rows = store->openRecordset("Select * from Haering_Daten");
    for (; !rows->eof(); rows->moveNext())
      keys.append(QStringList{rows->value("Liniennummer").toString(), rows->value("Treffernummer").toString(),
                              rows->value("Datum").toString(), rows->value("ZeitAbsolut").toString()}
                      .join('/'));
    return keys;
  }
  /// Each shot once, and the file sound.
  static void everyShotIsStored(const Place& place) {
    const QStringList stored = storedKeys(place.range.competition());
    const QSet<QString> keys(stored.begin(), stored.end());
    QCOMPARE(keys, place.firedKeys());
    QCOMPARE(stored.size(), keys.size());
    QVERIFY(test::foreignCheck(place.range.competition()));
  }

 private Q_SLOTS:
  void aReaderComesAndTheProgramIsKilled() {
    Place place(kShots);
    place.range.startStations();
    const auto program = place.range.startProgram();
    shoot(place, *program, 1);
    waitForShots(place, *program, 6);
    QVERIFY(test::foreignRead(place.range.competition()));
    waitForTheLast(place, *program, 1, kShots);
    program->kill();
    program->waitForEnd();
    QCOMPARE(place.fired(), size_t(kShots));
    everyShotIsStored(place);
  }

  void aSecondDeskComesAndGoes() {
    Place place(kShots);
    place.range.startStations();
    const auto first = place.range.startDesk("buero1", "10");
    shoot(place, *first, 1);
    waitForShots(place, *first, 6);
    {
      const auto second = place.range.startDesk("buero2", "01");
      Walk walk(*second);
      walk.waitForMainWindow();
      walk.close(true);  // it counts the shots of all lines
      second->waitForEnd();
    }
    const auto second = place.range.startDesk("buero2", "01");
    shoot(place, *second, 2);
    waitForTheLast(place, *first, 1, kShots);
    waitForTheLast(place, *second, 2, kShots);
    Walk(*second).close(true);
    second->waitForEnd();
    Walk(*first).close(true);
    first->waitForEnd();
    QCOMPARE(place.fired(), size_t(2 * kShots));
    everyShotIsStored(place);
  }

  void aReaderAndLaterAWriterCome() {
    Place place(kShots);
    place.range.startStations();
    {
      const auto program = place.range.startProgram();
      shoot(place, *program, 1);
      waitForShots(place, *program, 6);
      QVERIFY(test::foreignRead(place.range.competition()));
      waitForShots(place, *program, 12);
      QVERIFY(test::foreignWrite(place.range.competition()));
      waitForTheLast(place, *program, 1, kShots);
      QVERIFY(test::foreignWrite(place.range.competition()));
      Walk(*program).close(true);
      program->waitForEnd();
    }
    everyShotIsStored(place);
    const auto next = place.range.startProgram();
    Walk walk(*next);
    walk.waitForMainWindow();
    walk.selectLine(1);
    walk.waitForOpenShots(1, kShots);
    next->kill();
  }

  /// In spite of all locks, by hand: the operator is told, and nothing is lost.
  void theLogIsRemovedUnderTheProgram() {
    Place place(kShots);
    place.range.startStations();
    const auto program = place.range.startProgram();
    shoot(place, *program, 1);
    waitForShots(place, *program, 6);
    QVERIFY(QFile::remove(place.range.competition() + "-wal"));
    program->answer("wurde von außen entfernt", "Wiederholen");
    waitForTheLast(place, *program, 1, kShots);
    program->kill();
    program->waitForEnd();
    everyShotIsStored(place);
  }
};

QTEST_GUILESS_MAIN(TestForeignProcesses)
#include "test_foreign_processes.moc"
