// What belongs to the process: the one place for errors that nobody handled, and the one instance.
#include <QFile>
#include <QLocalSocket>
#include <QSignalSpy>
#include <QSysInfo>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

#include "app/qk_application.h"
#include "app/single_instance.h"
#include "platform/grid/text_grid.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kWhatStays =
    "Die Dateien bleiben liegen: Nach dem Neustart liest F5 an dieser Linie sie wieder ein. Wiederholt sich "
    "der "
    "Fehler, räumt \"Intarso - Offene Linienbefehle löschen\" sie weg. Das fragt nicht und verwirft auch "
    "Meldungen aller Linien, die noch niemand gelesen hat.";

}  // namespace

class TestApplication : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void anErrorOutOfTheTickEndsTheProgram();
  void oneInstancePerSettingsAndKind();
  void theSecondBringsTheFirstToTheFront();
  void aCrashLeavesNoLock();

 private:
  static QkApplication& application() { return *static_cast<QkApplication*>(qApp); }
};

void TestApplication::anErrorOutOfTheTickEndsTheProgram() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  trigger(office.window(), "mnuHaeringAllePreismodusON");
  QTimer* timer = office.line(1).findChild<QTimer*>("Timer1");
  QTimer* other = office.line(2).findChild<QTimer*>("Timer1");
  QVERIFY(timer->isActive() && other->isActive());
  office.send(1, {});
  QVERIFY(QFile::remove(office.folderFile("HSlav1.nrt")));
  int status = -1;
  application().endProgram = [&](int ended) { status = ended; };
  application().onFatal = [&] { office.window().stopPolling(); };
  office.boxes
      .expect("Laufzeitfehler 13: " + errorDescription(13) + "\n\nLinie 1, " +
              office.folderFile("HSlav1.ctl") + ":\n53 - " + errorDescription(53) + "\n\n" + kWhatStays)
      .showing(BoxIcon::Critical)
      .unasked("")
      .during([&] {
        QVERIFY(!timer->isActive());
        QVERIFY(!other->isActive());
        QCOMPARE(status, -1);
      });
  QTimerEvent event(timer->timerId());
  QCoreApplication::sendEvent(timer, &event);
  QCOMPARE(status, 1);
  QVERIFY(QFile::exists(office.folderFile("HSlav1.ctl")));
  QVERIFY(QFile::exists(office.folderFile("HServ1.ctl")));
  application().onFatal = nullptr;
}

void TestApplication::oneInstancePerSettingsAndKind() {
  TestWorkplace place;
  SingleInstance first(place.path("einstellungen"), "instanz");
  QVERIFY(first.begin());
  SingleInstance other(place.path("andere"), "instanz");
  QVERIFY(other.begin());
  SingleInstance desk(place.path("einstellungen"), "kasse");
  QVERIFY(desk.begin());
  SingleInstance secondDesk(place.path("einstellungen"), "kasse");
  QVERIFY(!secondDesk.begin());
}

void TestApplication::theSecondBringsTheFirstToTheFront() {
  TestWorkplace place;
  SingleInstance first(place.path("einstellungen"), "instanz");
  QVERIFY(first.begin());
  QSignalSpy front(&first, &SingleInstance::comeToFront);
  SingleInstance second(place.path("einstellungen"), "instanz");
  QVERIFY(!second.begin());
  QTRY_COMPARE(front.count(), 1);
}

void TestApplication::aCrashLeavesNoLock() {
  TestWorkplace place;
  {
    // What a killed process leaves: a lock file of a process that is no more.
    QFile lock(place.path("einstellungen.instanz"));
    QVERIFY(lock.open(QIODevice::WriteOnly));
    lock.write("4194303\nqk-intarso\n" + QSysInfo::machineHostName().toUtf8() + "\n" +
               QSysInfo::machineUniqueId() + "\n" + QSysInfo::bootUniqueId() + "\n");
  }
  SingleInstance again(place.path("einstellungen"), "instanz");
  QVERIFY(again.begin());
}

int main(int argc, char** argv) {
  QkApplication application(argc, argv);
  TestApplication test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_application.moc"
