// A range has more lines than anybody looks at: what they cost, and that they work unseen.
#include <QComboBox>
#include <QLabel>
#include <QStatusBar>
#include <QTest>

#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestManyLines : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void viewsComeWithTheirFirstShowing();
  void aLineThatNobodyLooksAtWorks();
  void manyLinesAreSeenComing();
};

/// Making what is seen of a line is most of what it costs: 240 lines would wait for it at the start.
void TestManyLines::viewsComeWithTheirFirstShowing() {
  RangeOffice office("111");
  QVERIFY(office.open());
  office.drop();
  {
    const auto groups = office.database()->openRecordset("Haering_Gruppen");
    groups->addNew();
    groups->setValue("GruppenName", "Jugend");
    groups->update();
  }
  office.set("FlexFont_Font", "DejaVu Sans;13;0;0;0;0");
  office.set("FontHDisziplin_Font", "DejaVu Sans;12;0;0;0;0");
  QVERIFY(office.open());
  const auto grids = [&](int line) { return office.line(line).findChildren<TextGrid*>().size(); };
  QCOMPARE(grids(1), 3);
  QCOMPARE(grids(2), 0);
  QCOMPARE(office.line(2).schuetzenName(), "");
  office.show(2);
  QCOMPARE(grids(2), 3);
  QCOMPARE(grids(3), 0);
  QCOMPARE(office.on<QLabel>(2, "lblLinie").text(), "2");
  QCOMPARE(office.on<QComboBox>(2, "cmbHaeringGruppen").itemText(1), "Jugend");
  QCOMPARE(office.on<TextGrid>(2, "flex").font().pointSize(), 13);
  QCOMPARE(office.on<TextGrid>(2, "flexHaeringDiszi").font().pointSize(), 12);
  QCOMPARE(office.on<TextGrid>(2, "flexHaeringDiszi").table()->rows(),
           office.on<TextGrid>(1, "flexHaeringDiszi").table()->rows());
  QVERIFY(!office.on<QPushButton>(2, "cmdNachkauf").isEnabled());
  QVERIFY(!office.on<QPushButton>(2, "m_cmdUebertragenTarvex").isEnabled());
  QVERIFY(!office.on<QLabel>(2, "lblSenden").isVisible());
}

void TestManyLines::aLineThatNobodyLooksAtWorks() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.line(2).command(&LineCommands::Set_Linie_PreisModus_ON);
  QCOMPARE(office.takeCommand(2), "76 'Umschalten auf Preismodus");
  QCOMPARE(office.mark(2), "go");
  office.fire(2, shotRecord(2, 1, "9,7", "123,4"));
  office.line(2).Set_Font_Flex({{"DejaVu Sans", 15, false, false, false, false}, 16777215, 0});
  QCOMPARE(office.line(2).nOffeneSchuss(), 1);
  QCOMPARE(office.rowsOf("Select * from Haering_Daten where Liniennummer = 2"), 1);
  QVERIFY(office.line(2).findChildren<TextGrid*>().isEmpty());
  office.show(2);
  QCOMPARE(office.on<TextGrid>(2, "flex").table()->rows(), 2);
  QCOMPARE(office.on<TextGrid>(2, "flex").font().pointSize(), 15);
  QCOMPARE(office.on<QLabel>(2, "lblSchusszahl").text(), "Gesamt: 1 Gewählt: 0");
}

/// The window is there before its lines are, and says how far they are.
void TestManyLines::manyLinesAreSeenComing() {
  struct Watch : QObject {
    bool eventFilter(QObject* watched, QEvent* event) override {
      auto* window = qobject_cast<frmLindorm*>(watched);
      if (window && event->type() == QEvent::Show && atShow < 0) atShow = window->lineCount();
      if (window && event->type() == QEvent::Paint) said << window->statusBar()->currentMessage();
      return false;
    }
    int atShow = -1;
    QStringList said;
  };
  for (const auto& [lines, atShow] : {std::pair{101, 0}, {3, 3}}) {
    RangeOffice office(QString(lines, '1'));
    Watch watch;
    qApp->installEventFilter(&watch);
    QVERIFY(office.open());
    QCOMPARE(watch.atShow, atShow);
    QCOMPARE(office.window().lineCount(), lines);
    if (lines > 3) QVERIFY(watch.said.contains("Linie 41 von 101 wird geladen ..."));
    QCOMPARE(office.window().statusBar()->currentMessage(), "");
  }
}

QTEST_MAIN(TestManyLines)
#include "test_many_lines.moc"
