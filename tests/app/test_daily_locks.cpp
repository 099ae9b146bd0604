// Nothing that a day brings makes the program drop its locks on the competition: whoever opened the file then
// would think himself alone and remove the log that shots are being written to.
#include <QAbstractFileIconProvider>
#include <QFileDialog>
#include <QTest>

#include "masterdata/making/move.h"
#include "tests/app/days_work.h"
#include "tests/support/error_of.h"
#include "tests/support/foreign/foreign_process.h"
#include "tests/support/lock_watch.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kOpenFilter = "Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*";

/// Shows every file dialog what it would meet in the competition's folder.
class FolderOfDialogs : public QObject {
 public:
  explicit FolderOfDialogs(const QString& file) : file_(file) { qApp->installEventFilter(this); }
  int shown() const { return shown_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* dialog = qobject_cast<QFileDialog*>(watched);
    if (dialog && event->type() == QEvent::Show) {
      ++shown_;
      dialog->iconProvider()->icon(QFileInfo(file_));
      dialog->iconProvider()->type(QFileInfo(file_));
    }
    return false;
  }

 private:
  QString file_;
  int shown_ = 0;
};

}  // namespace

class TestDailyLocks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void aDaysWorkKeepsItsLocks() {
    RangeOffice office;
    LockWatch watch(office.competition);
    const FolderOfDialogs folder(office.competition);
    workADay(office);
    QVERIFY(hasReadLock(office.competition));

    office.boxes.expectOpenFile(kOpenFilter, std::nullopt);
    office.action("mnuDateiWettkampfOpen").trigger();
    QCOMPARE(folder.shown(), 1);
    office.boxes.expectOpenFile(kOpenFilter, office.competition);
    office.action("mnuDateiWettkampfOpen").trigger();

    QVERIFY(!dao::isServerFile(office.competition));
    QVERIFY(office.rowsOf("Select * from Haering_Daten") > 0);
    QCOMPARE(
        errorOf([&] {
          moveCompetition({office.competition, office.folderFile("umgezogen.qkk")}, [](const MoveStep&) {});
        }),
        3045);
    QVERIFY(foreignRead(office.competition) && foreignWrite(office.competition));
    QVERIFY(QFile::exists(office.competition + "-wal"));

    QVERIFY(watch.looks() > 100);
    QVERIFY2(watch.losses() == 0, qPrintable(watch.firstLoss()));
  }

  /// The watch sees what it is there for.
  void aLostLockIsSeen() {
    RangeOffice office;
    LockWatch watch(office.competition);
    QVERIFY(office.open());
    watch.look();
    { QVERIFY(QFile(office.competition).open(QIODevice::ReadOnly)); }
    watch.look();
    QCOMPARE(watch.losses(), 1);
  }
};

QTEST_MAIN(TestDailyLocks)
#include "test_daily_locks.moc"
