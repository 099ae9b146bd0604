// A line by keyboard: one key to each place of work, and no way across what ends something.
#include <QApplication>
#include <QStatusBar>
#include <QTest>

#include "platform/grid/text_grid.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestLineKeys : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void oneKeyToEachPlace_data();
  void oneKeyToEachPlace();
  void theGridsHaveACurrentRowAtOnce();
  void withoutALineTheKeysSayWhy();
  void tabAvoidsWhatEnds();
  void whatEndsHasAKeyOfItsOwn();
  void everyColumnOfTheStationHasATitle();
};

void TestLineKeys::oneKeyToEachPlace_data() {
  QTest::addColumn<Qt::Key>("key");
  QTest::addColumn<QString>("control");
  QTest::newRow("start number") << Qt::Key_F2 << "m_txtStartNummer";
  QTest::newRow("station") << Qt::Key_F4 << "flexHaeringDiszi";
  QTest::newRow("shots") << Qt::Key_F10 << "flex";
  QTest::newRow("disciplines") << Qt::Key_F11 << "m_lstDisziTarvex";
}

void TestLineKeys::oneKeyToEachPlace() {
  QFETCH(Qt::Key, key);
  QFETCH(QString, control);
  RangeOffice office("11");
  QVERIFY(office.open());
  office.activate();
  office.chooseShooter(1, "107");
  for (int line : {1, 2}) {
    office.show(line);
    office.on<QWidget>(line, "m_txtStartNummer").setFocus();
    if (key == Qt::Key_F2) office.on<QWidget>(line, "flex").setFocus();
    QTest::keyClick(QApplication::focusWidget(), key);
    QCOMPARE(QApplication::focusWidget()->objectName(), control);
    QVERIFY(office.line(line).isAncestorOf(QApplication::focusWidget()));
  }
}

void TestLineKeys::theGridsHaveACurrentRowAtOnce() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.activate();
  office.chooseShooter(1, "107");
  QTest::keyClick(&office.window(), Qt::Key_F4);
  auto& station = office.on<TextGrid>(1, "flexHaeringDiszi");
  QCOMPARE(station.currentRow(), 1);
  QTest::keyClick(&station, Qt::Key_Space);
  QCOMPARE(station.table()->text(1, 0), QString("1"));

  office.press(1, "cmdPreisModus");
  office.fire(1, shotRecord(1, 1, "9,7", "123,4"));
  QTest::keyClick(&office.window(), Qt::Key_F11);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Space);
  QTest::keyClick(&office.window(), Qt::Key_F10);
  QCOMPARE(office.on<TextGrid>(1, "flex").currentRow(), 1);
  QTest::keyClick(&office.on<TextGrid>(1, "flex"), Qt::Key_Space);
  QVERIFY(office.on<QPushButton>(1, "m_cmdUebertragenTarvex").isEnabled());
}

void TestLineKeys::withoutALineTheKeysSayWhy() {
  RangeOffice office("0");
  QVERIFY(office.open());
  for (const Qt::Key key : {Qt::Key_F4, Qt::Key_F10, Qt::Key_F11}) {
    office.window().statusBar()->clearMessage();
    QTest::keyClick(&office.window(), key);
    QVERIFY(office.window().statusBar()->currentMessage().startsWith("Keine Linie"));
  }
}

void TestLineKeys::tabAvoidsWhatEnds() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.activate();
  office.chooseShooter(1, "107");
  QWidget* const start = &office.on<QWidget>(1, "m_txtStartNummer");
  start->setFocus();
  QStringList way;
  do {
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    way << QApplication::focusWidget()->objectName();
  } while (QApplication::focusWidget() != start && way.size() < 60);
  QVERIFY2(QApplication::focusWidget() == start, qPrintable(way.join(", ")));
  for (const QString ends :
       {"cmdAbmeldenSchuetze", "Command2", "cmdLinieClear", "m_cmdVerwerfen", "m_cmdVerwerfenGewaehlte"})
    QVERIFY2(!way.contains(ends), qPrintable(way.join(", ")));
  // The way of a shooter: number, disciplines of the station, sending, shots, disciplines, storing.
  QStringList stops;
  for (const QString& stop : way)
    if (QStringList{"flexHaeringDiszi", "cmdSendenSchuetzenDisziplinen", "flex", "m_lstDisziTarvex",
                    "lstBesteErg", "m_cmdSaveTarvex"}
            .contains(stop))
      stops << stop;
  QCOMPARE(stops.join(' '), QString("flexHaeringDiszi cmdSendenSchuetzenDisziplinen flex m_lstDisziTarvex "
                                    "lstBesteErg m_cmdSaveTarvex"));
}

void TestLineKeys::whatEndsHasAKeyOfItsOwn() {
  RangeOffice office("1");
  QVERIFY(office.open());
  for (const QString ends :
       {"cmdAbmeldenSchuetze", "Command2", "cmdLinieClear", "m_cmdVerwerfen", "m_cmdVerwerfenGewaehlte"})
    QVERIFY2(!office.on<QPushButton>(1, ends).shortcut().isEmpty(), qPrintable(ends));
}

void TestLineKeys::everyColumnOfTheStationHasATitle() {
  RangeOffice office("1");
  QVERIFY(office.open());
  const auto& grid = office.on<TextGrid>(1, "flexHaeringDiszi");
  QStringList titles;
  for (int column = 1; column < grid.table()->columns(); ++column)
    if (!grid.isColumnHidden(column)) titles << grid.table()->text(0, column);
  QCOMPARE(titles.join(' '), QString("Disziplin Schuss Ges. Nachk."));
}

QTEST_MAIN(TestLineKeys)
#include "test_line_keys.moc"
