// What belongs to the process: the one place for errors that nobody handled.
#include <QFile>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

#include "app/shell/qk_application.h"
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

int main(int argc, char** argv) {
  QkApplication application(argc, argv);
  TestApplication test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_application.moc"
