// What threatens the office, in the real main window: one line in its status bar, the details by click and by
// key, and nobody who types is disturbed.
#include <QDirIterator>
#include <QPushButton>
#include <QSignalSpy>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTextBrowser>
#include <QTimerEvent>
#include <QToolButton>

#include "app/cash_workstation.h"
#include "app/shell/frmHilfe.h"
#include "app/watch/frmWarnungen.h"
#include "platform/look/look.h"
#include "tests/app/range_office.h"
#include "tests/app/watch/test_storage.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr qint64 kMegabyte = 1000 * 1000;
const DiskRoom kPlenty{"/", 50'000 * kMegabyte, 100'000 * kMegabyte};
const DiskRoom kLittle{"/", 312 * kMegabyte, 100'000 * kMegabyte};

/// The office with a watch that looks at what the test sets.
struct WatchedOffice : RangeOffice {
  explicit WatchedOffice(const DiskRoom& room = kPlenty, const QString& copies = {}) : RangeOffice("11") {
    storage->setRoom(room);
    if (!copies.isEmpty()) {
      place.settings.setValue("Tarvex", "Daten", "KopienAktiv", "1");
      place.settings.setValue("Tarvex", "Daten", "KopienOrdner", copies);
    }
    openWith(storage);
    if (!QTest::qWaitFor([&] { return !this->copies().isBusy(); })) failTest("the look for copies hangs");
    settle();
  }

  bool settle() {
    return QTest::qWaitFor([&] { return !window().watch().keeper().isLooking(); });
  }
  /// So many seconds later.
  void later(int seconds) {
    settle();
    place.clock.advance(1000 * seconds);
    auto* timer = window().watch().keeper().findChild<QTimer*>();
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
    settle();
  }
  QToolButton& warning() { return the<QToolButton>(*window().statusBar(), "cmdWarnungen"); }
  QString said() { return warning().isVisible() ? warning().text() : QString(); }
  CopyKeeper& copies() { return *window().findChild<CopyKeeper*>(); }
  frmWarnungen* details() { return window().findChild<frmWarnungen*>(); }
  QString detailsText() { return the<QTextBrowser>(*details(), "txtWarnungen").toPlainText(); }

  const std::shared_ptr<TestStorage> storage = std::make_shared<TestStorage>();
};

}  // namespace

class TestOfficeWatch : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void aFullDiskShowsWhileItLasts();
  void aClickShowsTheDetails();
  void theKeyShowsTheDetails();
  void theDetailsKeepUp();
  void theHandbookOpensAtItsPlace();
  void whoTypesIsNotDisturbed();
  void nothingIsCutOffOnASmallScreen();
  void aSlowExchangeFolderShows();
  void aHangingFolderShowsInALivingWindow();
  void theWindowsThreadIsNeverAsked();
  void anotherCompetitionIsWatched();
  void theLastCopyIsNamed();
  void aCopyThatFailsShows();
  void closingWaitsForTheLastCopy();
  void closingMakesTheLastCopy();
  void nobodyClosesTheWindowBehindTheLastCopy();
  void theCashDeskAloneIsWarnedToo();
  void manners();
};

void TestOfficeWatch::aFullDiskShowsWhileItLasts() {
  WatchedOffice office;
  QVERIFY(!office.said().startsWith("Wenig"));
  office.storage->setRoom(kLittle);
  office.later(30);
  QCOMPARE(office.said(), QString("Wenig Platz: 312 MB"));
  QCOMPARE(office.warning().accessibleName(), office.said());
  QVERIFY(office.warning().accessibleDescription().startsWith("Auf »/« sind nur noch 312 MB"));
  office.storage->setRoom(kPlenty);
  office.later(30);
  QVERIFY(!office.said().startsWith("Wenig"));
}

void TestOfficeWatch::aClickShowsTheDetails() {
  WatchedOffice office(kLittle);
  QVERIFY(!office.details());
  click(office.window(), "cmdWarnungen");
  QVERIFY(office.details()->isVisible());
  QVERIFY(!office.details()->isModal());
  const QString text = office.detailsText();
  for (const char* part : {"Wenig Platz: 312 MB", "Achtung, seit 10:00", "Dort: ", "die Einstellungen",
                           "Wenn nichts geschieht:", "Was zu tun ist:", "Mehr im Handbuch"})
    QVERIFY2(text.contains(part), qPrintable(text));
  press(*office.details(), "txtWarnungen", Qt::Key_Escape);
  QVERIFY(!office.details()->isVisible());
}

void TestOfficeWatch::theKeyShowsTheDetails() {
  WatchedOffice office;
  office.activate();
  QTest::keyClick(&office.window(), Qt::Key_F1, Qt::ShiftModifier);
  QVERIFY(office.details() && office.details()->isVisible());
  office.details()->close();
  trigger(office.window(), "mnuEditWarnungen");
  QVERIFY(office.details()->isVisible());
  QCOMPARE(office.window().findChildren<frmWarnungen*>().size(), 1);
}

void TestOfficeWatch::theDetailsKeepUp() {
  WatchedOffice office(kLittle);
  trigger(office.window(), "mnuEditWarnungen");
  office.storage->setRoom(kPlenty);
  office.later(7 * 60);
  QVERIFY(!office.detailsText().contains("seit 10:00"));
  QVERIFY2(office.detailsText().contains("10:00 bis 10:07"), qPrintable(office.detailsText()));
}

void TestOfficeWatch::theHandbookOpensAtItsPlace() {
  WatchedOffice office(kLittle);
  trigger(office.window(), "mnuEditWarnungen");
  Q_EMIT the<QTextBrowser>(*office.details(), "txtWarnungen").anchorClicked(QUrl("stoerungen.html#platz"));
  auto* help = office.details()->findChild<frmHilfe*>();
  QVERIFY(help && help->isVisible());
}

void TestOfficeWatch::whoTypesIsNotDisturbed() {
  WatchedOffice office;
  office.activate();
  QWidget* field = office.line(1).txtStartnummer();
  field->setFocus();
  typeInto(*field, "10");
  office.storage->setRoom(kLittle);
  office.later(30);
  QCOMPARE(office.said(), QString("Wenig Platz: 312 MB"));
  QCOMPARE(QApplication::focusWidget(), field);
  QVERIFY(office.window().isActiveWindow());
  typeInto(*field, "7");
  QCOMPARE(office.line(1).txtStartnummer()->text(), QString("107"));
  QVERIFY(!office.details());
}

void TestOfficeWatch::nothingIsCutOffOnASmallScreen() {
  WatchedOffice office(kLittle);
  office.window().resize(1366, 740);
  QCoreApplication::processEvents();
  auto& keys = the<QLabel>(*office.window().statusBar(), "lblTasten");
  QVERIFY2(keys.fontMetrics().horizontalAdvance(keys.text()) <= keys.width(),
           qPrintable(QString::number(keys.width())));
  QVERIFY(office.warning().fontMetrics().horizontalAdvance(office.warning().text()) <
          office.warning().width());
}

void TestOfficeWatch::aSlowExchangeFolderShows() {
  WatchedOffice office;
  office.press(1, "cmdPreisModus");
  office.storage->setTime(1400);
  for (int second = 0; second < 25; ++second) office.later(1);
  QCOMPARE(office.said(), QString("Austauschordner langsam"));
}

void TestOfficeWatch::aHangingFolderShowsInALivingWindow() {
  WatchedOffice office;
  office.press(1, "cmdPreisModus");
  office.settle();
  office.storage->hang(office.folder);
  auto* timer = office.window().watch().keeper().findChild<QTimer*>();
  for (int second = 0; second < 12; ++second) {
    office.place.clock.advance(1000);
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
  }
  QVERIFY2(office.said().startsWith("Austauschordner hängt"), qPrintable(office.said()));
  QVERIFY(the<QLabel>(office.line(1), "lblAustausch").isVisible());
  office.storage->letGo();
  office.later(1);
  QVERIFY(!office.said().startsWith("Austauschordner"));
  QVERIFY(!the<QLabel>(office.line(1), "lblAustausch").isVisible());
}

void TestOfficeWatch::theWindowsThreadIsNeverAsked() {
  WatchedOffice office;
  office.press(1, "cmdPreisModus");
  office.place.files.clearLooks();
  const int before = office.storage->asked();
  for (int minute = 0; minute < 5; ++minute) office.later(60);
  QVERIFY(office.storage->asked() > before + 10);
  QVERIFY(!office.storage->wasAskedIn(std::this_thread::get_id()));
  QCOMPARE(office.place.files.looks(), 0);
}

void TestOfficeWatch::anotherCompetitionIsWatched() {
  WatchedOffice office;
  const QString elsewhere = office.place.path("zweiter");
  office.storage->setRoom(elsewhere, kLittle);
  office.window().watch().watchCompetition(elsewhere + "/Pokal.qkk");
  office.later(1);
  QCOMPARE(office.said(), QString("Wenig Platz: 312 MB"));
  office.window().watch().watchCompetition({});
  QVERIFY(!office.said().startsWith("Wenig"));
}

void TestOfficeWatch::theLastCopyIsNamed() {
  QCOMPARE(WatchedOffice().said(), QString("Sicherung aus"));
  const QTemporaryDir folder;
  WatchedOffice office(kPlenty, folder.path());
  QCOMPARE(office.said(), QString("Noch keine Sicherung"));
  QVERIFY(office.copies().makeNow());
  QTRY_COMPARE(office.said(), QString("Sicherung 10:00"));
  office.later(29 * 60);
  QCOMPARE(office.said(), QString("Sicherung 10:00"));
  office.later(2 * 60);
  QCOMPARE(office.said(), QString("Sicherung alt: 10:00"));
}

void TestOfficeWatch::aCopyThatFailsShows() {
  const QTemporaryDir folder;
  WatchedOffice office(kPlenty, folder.filePath("fehlt/ganz"));
  QVERIFY(office.copies().makeNow());
  QTRY_COMPARE(office.said(), QString("Sicherung misslungen"));
  trigger(office.window(), "mnuEditWarnungen");
  QVERIFY2(office.detailsText().contains("fehlt"), qPrintable(office.detailsText()));
}

void TestOfficeWatch::closingWaitsForTheLastCopy() {
  const QTemporaryDir folder;
  WatchedOffice office(kPlenty, folder.filePath("fehlt/ganz"));
  bool waited = false;
  office.boxes.expectWindow("frmSicherung", [&](QWidget& waiting) {
    waited = true;
    click(waiting, "cmdOhne");
  });
  QVERIFY(office.window().close());
  QVERIFY(waited);
}

/// The stick for the copies is plugged in when its lack is said.
void TestOfficeWatch::closingMakesTheLastCopy() {
  const QTemporaryDir stick;
  WatchedOffice office(kPlenty, stick.filePath("fehlt/ganz"));
  office.boxes.expectWindow("frmSicherung", [&](QWidget& waiting) {
    QTRY_VERIFY(the<QPushButton>(waiting, "cmdNochmal").isVisible());
    QVERIFY(QDir().mkpath(stick.filePath("fehlt")));
    click(waiting, "cmdNochmal");
    QTRY_VERIFY(!waiting.isVisible());
  });
  QVERIFY(office.window().close());
  QVERIFY(QDirIterator(stick.path(), {"*.qkk"}, QDir::Files, QDirIterator::Subdirectories).hasNext());
}

/// As a session does that ends while the competition is changed.
void TestOfficeWatch::nobodyClosesTheWindowBehindTheLastCopy() {
  const QTemporaryDir folder;
  WatchedOffice office(kPlenty, folder.filePath("fehlt/ganz"));
  const QSignalSpy ended(&office.window(), &frmLindorm::unloaded);
  office.boxes.expectWindow("frmSicherung", [&](QWidget& waiting) {
    QVERIFY(!office.window().close());
    QVERIFY(ended.isEmpty());
    click(waiting, "cmdOhne");
  });
  QVERIFY(office.window().setWettkampf(office.competition));
  QVERIFY(office.window().isVisible());
  QVERIFY(office.global().Datenbank);
  office.boxes.expectWindow("frmSicherung", [&](QWidget& waiting) { click(waiting, "cmdOhne"); });
  QVERIFY(office.window().close());
  QCOMPARE(ended.size(), 1);
}

void TestOfficeWatch::theCashDeskAloneIsWarnedToo() {
  RangeOffice place;
  GlobalVariablen global;
  const auto storage = std::make_shared<TestStorage>();
  storage->setRoom(kLittle);
  CashWorkstation desk(place.workplace(), global, storage);
  QVERIFY(desk.form_load(place.competition));
  desk.window().show();
  QTRY_COMPARE(the<QToolButton>(desk.window(), "cmdWarnungen").text(), QString("Wenig Platz: 312 MB"));
  QVERIFY(the<QToolButton>(desk.window(), "cmdWarnungen").isVisible());
  QTest::keyClick(&desk.window(), Qt::Key_F1, Qt::ShiftModifier);
  QVERIFY(desk.window().findChild<frmWarnungen*>());
}

void TestOfficeWatch::manners() {
  WatchedOffice office(kLittle);
  trigger(office.window(), "mnuEditWarnungen");
  QCOMPARE(badManners(*office.details()).join('\n'), QString());
  QCOMPARE(office.warning().focusPolicy(), Qt::NoFocus);
}

QTEST_MAIN(TestOfficeWatch)
#include "test_office_watch.moc"
