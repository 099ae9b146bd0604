// The first minute: nothing to open yet. The program says so and offers something to try.
#include <QDir>
#include <QLabel>
#include <QTest>

#include "tests/app/range_office.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kOpenFilter = "Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*";

QString textOf(QWidget& window, const QString& label) {
  return the<QLabel>(window, label).text();
}

}  // namespace

class TestFirstStart : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void manners();
  void escEndsTheProgram();
  void theDialogOpensTheChosenOne();
  void whatIsMissingIsNamed();
  void anotherKindOfFileGoesToTheDialogAtOnce();
  void theDemoOpensWithLinesAndStations();
  void theDemoLeavesTheSettingsOfARangeAlone();
  void theDemoIsMadeOnce();
  void aDemoThatCannotBeMadeEndsTheProgram();

 private:
  /// The program that makes competitions stands beside this one.
  static void install(RangeOffice& office) {
    QVERIFY(QFile::link(QK_WETTKAMPF, office.place.path("programm/qk-wettkampf")));
  }
  static QString demoFile(RangeOffice& office) { return office.place.path("dokumente/Tarvex/Demo/Demo.qkk"); }
  static void expectStart(RangeOffice& office, const QString& button) {
    office.boxes.expectWindow("frmStart", [button](QWidget& start) { click(start, button); });
  }
};

void TestFirstStart::manners() {
  RangeOffice office;
  office.boxes.expectWindow("frmStart", [](QWidget& start) {
    QCOMPARE(badManners(start).join('\n'), QString());
    QVERIFY(the<QPushButton>(start, "cmdOeffnen").isDefault());
    press(start, "cmdOeffnen", Qt::Key_Escape);
  });
  QVERIFY(!office.open(""));
}

void TestFirstStart::escEndsTheProgram() {
  RangeOffice office;
  office.boxes.expectWindow("frmStart", [](QWidget& start) {
    QCOMPARE(textOf(start, "lblGrund"), QString("Es ist noch kein Wettkampf gewählt."));
    QVERIFY(textOf(start, "lblBeenden").contains("beendet das Programm"));
    press(start, "cmdDemo", Qt::Key_Escape);
  });
  QVERIFY(!office.open(""));
  expectStart(office, "cmdBeenden");
  QVERIFY(!office.open(""));
}

void TestFirstStart::theDialogOpensTheChosenOne() {
  RangeOffice office;
  expectStart(office, "cmdOeffnen");
  office.boxes.expectOpenFile(kOpenFilter, office.competition);
  QVERIFY(office.open(""));
  QCOMPARE(office.window().sWettkampf(), office.competition);
}

void TestFirstStart::whatIsMissingIsNamed() {
  RangeOffice office;
  const QString gone = office.place.path("fort.qkk");
  const auto named = [gone](QWidget& start) {
    QVERIFY2(textOf(start, "lblGrund").contains(gone), qPrintable(textOf(start, "lblGrund")));
    click(start, "cmdBeenden");
  };
  office.boxes.expectWindow("frmStart", named);
  QVERIFY(!office.open(gone));
  office.set("Letzter Wettkampf", gone);
  office.boxes.expectWindow("frmStart", named);
  QVERIFY(!office.open(""));
}

void TestFirstStart::anotherKindOfFileGoesToTheDialogAtOnce() {
  RangeOffice office;
  const QString text = office.place.path("liste.txt");
  office.place.files.write(text, "x");
  office.boxes.expectOpenFile(kOpenFilter, office.competition);
  QVERIFY(office.open(text));
}

void TestFirstStart::theDemoOpensWithLinesAndStations() {
  RangeOffice office;
  install(office);
  QVERIFY(QFile::remove(office.place.settings.filePath()));
  office.boxes.expectWindow("frmStart", [](QWidget& start) {
    QVERIFY(textOf(start, "lblDemo").contains("Tarvex"));
    click(start, "cmdDemo");
  });
  QVERIFY(office.open(""));
  QCOMPARE(office.window().sWettkampf(), demoFile(office));
  QCOMPARE(office.window().lineCount(), 6);
  office.chooseShooter(1, "107");
  QVERIFY(!office.line(1).schuetzenName().isEmpty());
  QCOMPARE(office.place.settings.value("Tarvex", "Häring", "Letzter Wettkampf"), demoFile(office));
  // The next start finds it by itself.
  office.drop();
  QVERIFY(office.open(""));
}

void TestFirstStart::theDemoLeavesTheSettingsOfARangeAlone() {
  RangeOffice office("11");
  install(office);
  expectStart(office, "cmdDemo");
  QVERIFY(office.open(""));
  QCOMPARE(office.window().lineCount(), 2);
  QCOMPARE(office.place.settings.value("Tarvex", "Häring", "Netzverzeichnis"), office.folder + "/");
}

void TestFirstStart::theDemoIsMadeOnce() {
  RangeOffice office;
  const QString file = demoFile(office);
  QVERIFY(QDir().mkpath(QFileInfo(file).path()));
  QVERIFY(QFile::copy(office.competition, file));
  expectStart(office, "cmdDemo");
  QVERIFY(office.open(""));  // no program to make one is there
  QCOMPARE(office.window().sWettkampf(), file);
}

void TestFirstStart::aDemoThatCannotBeMadeEndsTheProgram() {
  RangeOffice office;
  expectStart(office, "cmdDemo");
  office.boxes
      .expect("Der Demo-Wettkampf konnte nicht angelegt werden.\nDas Programm lässt sich nicht starten: " +
              office.place.path("programm/qk-wettkampf"))
      .showing(BoxIcon::Exclamation)
      .titled("Fehler");
  QVERIFY(!office.open(""));
}

QTEST_MAIN(TestFirstStart)
#include "test_first_start.moc"
