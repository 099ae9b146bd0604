// The grid of open shots, the result grid and the lists of best results, on their data.

#include <QTest>

#include "capture/discipline_loader.h"
#include "capture/result_grid.h"
#include "capture/views.h"
#include "platform/settings/settings.h"
#include "tests/capture/shots.h"
#include "tests/capture/workbench.h"

using namespace qk;
using namespace qk::test;

namespace {

QString rowText(const TextTable& table, int row) {
  QStringList cells;
  for (int column = 0; column < table.columns(); ++column) cells += table.text(row, column);
  return cells.join('|');
}

std::shared_ptr<QKRingDisziplin> series(const QString& name, double result) {
  auto r = std::make_shared<QKRingDisziplin>();
  r->DisziplinName = name;
  r->ergebnis = result;
  return r;
}

std::shared_ptr<QKTeilerDisziplin> teiler(const QString& name, double result) {
  auto r = std::make_shared<QKTeilerDisziplin>();
  r->DisziplinName = name;
  r->ergebnis = result;
  return r;
}

/// Series "name=value" and teilers, each under a key of its own.
PendingResults pendingOf(const QStringList& serien, const QStringList& teilers) {
  PendingResults pending;
  for (const QString& text : serien)
    pending.m_colRingErg.add(series(text.section('=', 0, 0), parseStrict(text.section('=', 1))),
                             QString::number(pending.m_colRingErg.count()));
  for (const QString& text : teilers)
    pending.m_colTeilerErg.add(teiler(text.section('=', 0, 0), parseStrict(text.section('=', 1))),
                               QString::number(pending.m_colTeilerErg.count()));
  return pending;
}

}  // namespace

class TestResultViews : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void shotGrid();
  void shotRow();
  void shotWithAKeyTwice();
  void resultRows_data();
  void resultRows();
  void halfPairAtTheEnd();
  void resultColumns_data();
  void resultColumns();
  void columnsThatTheDisciplinesWant();
  void resultLooks();
  void everyLookInItsCells();
  void looksThatNobodyHasChosen();
  void fillingTheResultGrid();
  void noRoomForTheTeilersOfAHalfPair();
  void emptyingSparesHeaderAndLabels();
  void bestOfEachDiscipline();
  void listsAreSortedByText();
  void valueWithThousandsPoint();
  void valueBeyondEightCharactersLosesItsFirstDigits();
  void onlyTeilers();
  void nothingPending();
  void differentAdditionsAreDifferentDisciplines();
};

void TestResultViews::shotGrid() {
  TextTable flex;
  FlexEinrichten(flex);
  QCOMPARE(flex.rows(), 1);
  QCOMPARE(flex.columns(), 32);
  QCOMPARE(rowText(flex, 0),
           QString(" |WettbewerbBezeichnung|Treffer|Ring|Ring (1/10)|Teiler|Zeit|Wettbewerb|Klasse|"
                   "WettbewerbBezeichnung|KlasseBezeichnung|StandnummerOrt|Linie|Schütze|ProbeMatch|Wertung|"
                   "Treffer|RingwertmitZehntel|Lagepfeil|X|Y|Teiler|Winkel|ZeitAbsolut|ZeitRelativ|Datum|"
                   "Wettbewerb|Klasse|Startnummer|Waffe|Radius|TF"));
  QCOMPARE(flex.columnWidth(0), 400);
  QCOMPARE(flex.columnWidth(1), 2000);
  for (int column = 2; column < 32; ++column)
    QCOMPARE(flex.columnWidth(column) == 0, column >= 9 && column <= 28);
  QVERIFY(flex.isEditable(0));
  QVERIFY(flex.isTickColumn(0));
  for (int column = 1; column < 32; ++column) QVERIFY(!flex.isEditable(column));
  QList<int> numbers;
  for (int column = 0; column < 32; ++column)
    if (flex.isRightAligned(column)) numbers += column;
  QCOMPARE(numbers, (QList<int>{2, 3, 4, 5, 11, 12, 15, 16, 17, 19, 20, 21, 22, 30, 31}));
}

void TestResultViews::shotRow() {
  Workbench bench;
  TextTable flex;
  FlexEinrichten(flex);
  const auto s = shot(17, "9,7/123,4");
  s->KlasseBezeichnung = "Damen I";
  s->OrtStandnummer = 1;
  s->SchuetzenName = "Müller, Änne";
  s->ProbeMatch = "M";
  s->Wertung = 11;
  s->LagePfeilzeichen = "<";
  s->X = -12.5;
  s->Y = 3;
  s->Radius = 246.8;
  s->PHiPosition = 271.25;
  s->RelativeZeit = "00:31";
  s->RegelNummerWettbewerb = "1.10";
  s->RegelNummerKlasse = "30";
  s->SchuetzeStartnummer = "107";
  s->dblTeilerFaktor = 2;
  ShotCollection shots;
  QVERIFY(TransferInGrid(bench.workplace(), flex, shots, s));
  QCOMPARE(flex.rows(), 2);
  QCOMPARE(rowText(flex, 1),
           QString("|20 Luftgewehr|17|9|9,7|123,4|10:00:17|1.10|30|20 Luftgewehr|Damen I|1|3|Müller, Änne|M|"
                   "11|17|9,7|<|-12,5|3|246,8|271,25|10:00:17|00:31|20.11.2026|1.10|30|107|LG|246,8|2"));
  QCOMPARE(flex.rowData(1), s->Key);
  QCOMPARE(shots.get(s->Key), s);
}

void TestResultViews::shotWithAKeyTwice() {
  Workbench bench;
  TextTable flex;
  FlexEinrichten(flex);
  ShotCollection shots;
  QVERIFY(TransferInGrid(bench.workplace(), flex, shots, shot(1, "9")));
  for (const BoxAnswer answer : {BoxAnswer::Abort, BoxAnswer::Ignore}) {
    bench.expectError(457, "Fehler beim Übertragen der Intarso-Schussdaten in die Gridanzeige!", answer);
    QCOMPARE(TransferInGrid(bench.workplace(), flex, shots, shot(1, "9")), answer == BoxAnswer::Ignore);
    QCOMPARE(shots.count(), 1);
    QCOMPARE(flex.rows(), 2);
  }
  // Another one comes under the box.
  bench
      .expectError(457, "Fehler beim Übertragen der Intarso-Schussdaten in die Gridanzeige!",
                   BoxAnswer::Abort)
      .during([&] { TransferInGrid(bench.workplace(), flex, shots, shot(2, "9")); });
  QVERIFY(!TransferInGrid(bench.workplace(), flex, shots, shot(1, "9")));
  QCOMPARE(flex.rows(), 3);
  QCOMPARE(flex.rowData(2), shots.keyAt(1));
}

void TestResultViews::resultRows_data() {
  QTest::addColumn<QString>("disciplineText");
  QTest::addColumn<int>("dataRows");
  QTest::addColumn<int>("capacity");
  QTest::addColumn<QString>("visible");  // of the first pair
  QTest::newRow("nothing ticked") << "" << 0 << 0 << "";
  QTest::newRow("a teiler alone") << "Teiler" << 2 << 10 << "T";
  QTest::newRow("a ring-teiler of no length") << "RT 0" << 2 << 10 << "T";
  QTest::newRow("10 rings") << "Ring 10" << 2 << 10 << "R";
  QTest::newRow("40 rings") << "Ring 40" << 8 << 40 << "R";
  QTest::newRow("15 rings: half a pair") << "Ring 15" << 5 << 25 << "R";
  QTest::newRow("12 rings") << "Ring 12" << 4 << 20 << "R";
  QTest::newRow("the largest decides") << "Ring 10 + Ring 40 + Ring 20" << 8 << 40 << "R";
  QTest::newRow("rings with teilers") << "Ring 20 + Teiler" << 4 << 20 << "RT";
  QTest::newRow("ring-teiler") << "RT 20" << 4 << 20 << "RT";
  QTest::newRow("the series length of a plain teiler says nothing") << "Teiler 40" << 2 << 10 << "T";
  QTest::newRow("neither, by its length") << "Nichts 20" << 4 << 20 << "R";
}

void TestResultViews::resultRows() {
  QFETCH(QString, disciplineText);
  QFETCH(int, dataRows);
  QFETCH(int, capacity);
  QFETCH(QString, visible);
  Workbench bench;
  TextTable grid;
  // Rows hidden by a former choice come back.
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Teiler")));
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 60")));
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines(disciplineText)));
  QCOMPARE(grid.rows(), dataRows + 1);
  QCOMPARE(resultCapacity(grid), capacity);
  for (int row = 1; row < grid.rows(); ++row)
    QCOMPARE(grid.rowHeight(row) != 0, visible.contains(row % 2 == 1 ? 'R' : 'T'));
}

void TestResultViews::halfPairAtTheEnd() {
  Workbench bench;
  TextTable grid;
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 15 + Teiler")));
  ErgebnislisteEinrichten(bench.workplace(), grid, "1", {});
  QStringList labels;
  for (int row = 1; row < grid.rows(); ++row) labels += grid.text(row, 0);
  QCOMPARE(labels, (QStringList{" R10", " T10", " R20", " T20", " R30"}));
  QCOMPARE(rowText(grid, 0), QString("|1|2|3|4|5|6|7|8|9|10|Serie|1/10|DSB"));
}

void TestResultViews::resultColumns_data() {
  QTest::addColumn<QString>("code");
  QTest::addColumn<QString>("shown");
  QTest::newRow("none") << ""
                        << "";
  QTest::newRow("whole rings") << "1"
                               << "11";
  QTest::newRow("tenths") << "2"
                          << "12";
  QTest::newRow("ring-teiler") << "3"
                               << "13";
  QTest::newRow("half tenths") << "4"
                               << "12";
  QTest::newRow("all") << "1234"
                       << "11 12 13";
}

void TestResultViews::resultColumns() {
  QFETCH(QString, code);
  QFETCH(QString, shown);
  Workbench bench;
  bench.settings.setValue("Tarvex-40", "OptikAufnahme", "SpaltenbreiteGesamt", "900");
  TextTable grid;
  ErgebnislisteEinrichten(bench.workplace(), grid, code, {});
  QCOMPARE(grid.columns(), 14);
  QCOMPARE(grid.columnWidth(0), 500);
  for (int column = 1; column <= 10; ++column) QCOMPARE(grid.columnWidth(column), 743);
  for (int column = 11; column <= 13; ++column)
    QCOMPARE(grid.columnWidth(column), shown.contains(QString::number(column)) ? 900 : 0);
  for (int column = 0; column <= 13; ++column) QCOMPARE(grid.isRightAligned(column), column > 0);
}

void TestResultViews::columnsThatTheDisciplinesWant() {
  Workbench bench;
  const auto shown = [&](const QString& ticked) {
    TextTable grid(14);
    grid.setColumnWidth(1, 743);
    FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines(ticked)));
    return QString("%1 %2").arg(grid.columnWidth(12)).arg(grid.columnWidth(13));
  };
  QCOMPARE(shown("Ring 10 + Teiler"), "0 0");
  QCOMPARE(shown("Ring 10 Zehntel"), "743 0");
  QCOMPARE(shown("RT 10 Max=100"), "0 743");
}

void TestResultViews::resultLooks() {
  Workbench bench;
  bench.settings.setValue("Tarvex-40", "OptikAufnahme", "FontTeiler", "Arial;12;-1;0;-1;0");
  bench.settings.setValue("Tarvex-40", "OptikAufnahme", "BackColorRinge", "255");
  const ResultLook look = LadeSchriftenErgebnisse(bench.workplace());
  QCOMPARE(look.ring.font->family(), QString("Tahoma"));
  QCOMPARE(look.ring.font->pointSize(), 10);
  QCOMPARE(look.teiler.font->family(), QString("Arial"));
  QVERIFY(look.teiler.font->bold() && look.teiler.font->underline());
  QVERIFY(!look.teiler.font->italic() && !look.teiler.font->strikeOut());
  // Blue-green-red: 255 is red, 16711935 magenta, 16711680 blue.
  QCOMPARE(*look.ring.back, QColor(255, 0, 0));
  QCOMPARE(*look.ring.fore, QColor(0, 0, 0));
  QCOMPARE(*look.teiler.fore, QColor(255, 0, 255));
  QCOMPARE(*look.teiler.back, QColor(255, 255, 255));
  QCOMPARE(*look.serie.fore, QColor(0, 0, 255));

  TextTable grid;
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 10 + Teiler")));
  ErgebnislisteEinrichten(bench.workplace(), grid, "1", look);
  const auto seen = [&](int row, int column, int role) {
    return grid.data(grid.index(row - 1, column), role);
  };
  QCOMPARE(seen(1, 1, Qt::BackgroundRole).value<QBrush>().color(), QColor(255, 0, 0));
  QCOMPARE(seen(2, 10, Qt::ForegroundRole).value<QBrush>().color(), QColor(255, 0, 255));
  QCOMPARE(seen(2, 1, Qt::FontRole).value<QFont>().family(), QString("Arial"));
  QCOMPARE(seen(1, 11, Qt::ForegroundRole).value<QBrush>().color(), QColor(0, 0, 255));
  QCOMPARE(seen(1, 13, Qt::BackgroundRole).value<QBrush>().color(), QColor(255, 0, 0));
  QCOMPARE(seen(1, 1, Qt::ForegroundRole).value<QBrush>().color(), QColor(0, 0, 0));
  // A ground that nobody has chosen is the house's, light or dark.
  QVERIFY(!seen(2, 1, Qt::BackgroundRole).isValid());
  QVERIFY(!seen(2, 11, Qt::BackgroundRole).isValid());
}

/// Eight values of their own, and every cell of two pairs of rows.
void TestResultViews::everyLookInItsCells() {
  Workbench bench;
  const auto set = [&](const QString& key, const QString& value) {
    bench.settings.setValue("Tarvex-40", "OptikAufnahme", key, value);
  };
  set("FontRinge", "Arial;11;-1;0;0;0");
  set("FontTeiler", "Courier;12;0;-1;0;0");
  set("FontSerie", "Times;13;0;0;-1;-1");
  set("ForeColorRinge", "1");
  set("ForeColorTeiler", "2");
  set("ForeColorSerie", "3");
  set("BackColorRinge", "13434879");
  set("BackColorTeiler", "16764057");
  TextTable grid;
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 20 + Teiler")));
  ErgebnislisteEinrichten(bench.workplace(), grid, "1", LadeSchriftenErgebnisse(bench.workplace()));
  const auto seen = [&](int row, int column) {
    const TextTable::CellLook look = grid.cellLook(row, column);
    if (!look.font || !look.fore || !look.back) return QString("incomplete");
    const QFont& font = *look.font;
    return font.family() + QString::number(font.pointSize()) + (font.bold() ? " fett" : "") +
           (font.italic() ? " kursiv" : "") + (font.underline() ? " unterstrichen" : "") +
           (font.strikeOut() ? " durchgestrichen" : "") + " " + look.fore->name() + " " + look.back->name();
  };
  for (int row = 1; row <= 4; ++row) {
    const bool ring = row % 2 == 1;
    const QString ground = ring ? "#ffffcc" : "#99ccff";
    const QString shots = ring ? "Arial11 fett #010000 " : "Courier12 kursiv #020000 ";
    for (int column = 1; column <= 13; ++column)
      QCOMPARE(seen(row, column),
               (column <= 10 ? shots : "Times13 unterstrichen durchgestrichen #030000 ") + ground);
  }
}

void TestResultViews::looksThatNobodyHasChosen() {
  Workbench bench;
  TextTable grid;
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 10 + Teiler")));
  ErgebnislisteEinrichten(bench.workplace(), grid, "1", LadeSchriftenErgebnisse(bench.workplace()));
  for (int row = 0; row < 2; ++row)
    for (int column = 1; column < 14; ++column) {
      const QModelIndex cell = grid.index(row, column);
      QVERIFY(!grid.data(cell, Qt::BackgroundRole).isValid());
      QCOMPARE(grid.data(cell, Qt::ForegroundRole).isValid(), row == 1 || column > 10);
    }
}

void TestResultViews::fillingTheResultGrid() {
  Workbench bench;
  TextTable grid;
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 20 + Teiler")));
  ErgebnislisteEinrichten(bench.workplace(), grid, "1", {});
  grid.setText(4, 3, "alt");
  fillResultGrid(grid, shots("9x9,7/72,4 10,9/12,3 8,5/100"));
  QCOMPARE(rowText(grid, 1), QString(" R10|9,7|9,7|9,7|9,7|9,7|9,7|9,7|9,7|9,7|10,9|91|98,2|"));
  QCOMPARE(rowText(grid, 2), QString(" T10|72,4|72,4|72,4|72,4|72,4|72,4|72,4|72,4|72,4|12,3|||"));
  QCOMPARE(rowText(grid, 3), QString(" R20|8,5||||||||||8|8,5|"));
  QCOMPARE(rowText(grid, 4), QString(" T20|100||||||||||||"));
}

void TestResultViews::noRoomForTheTeilersOfAHalfPair() {
  Workbench bench;
  TextTable grid;
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 15")));
  fillResultGrid(grid, shots("25x9/30"));
  QCOMPARE(rowText(grid, 5), QString("|9|9|9|9|9||||||45|45|"));
}

void TestResultViews::emptyingSparesHeaderAndLabels() {
  Workbench bench;
  TextTable grid;
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, {});
  clearResultGrid(grid);
  FFerg_AufnahmeVorbereiten(bench.workplace(), grid, collected(disciplines("Ring 10")));
  ErgebnislisteEinrichten(bench.workplace(), grid, "1", {});
  fillResultGrid(grid, shots("3x9"));
  clearResultGrid(grid);
  QCOMPARE(rowText(grid, 0), QString("|1|2|3|4|5|6|7|8|9|10|Serie|1/10|DSB"));
  QCOMPARE(rowText(grid, 1), QString(" R10|||||||||||||"));
}

void TestResultViews::bestOfEachDiscipline() {
  Workbench bench;
  BestResults lists;
  PruefeBesteErgebnisse(
      bench.workplace(),
      pendingOf({"LG 10=91", "LG 10=98,4", "LP 10=80", "LP 10=80"}, {"Glück=72,4", "Glück=12,3", "Ehre=100"}),
      lists);
  QCOMPARE(lists.beste, (QStringList{"    80,0 - LP 10", "    98,4 - LG 10", "   ", "    12,3 - Glück",
                                     "   100,0 - Ehre"}));
}

void TestResultViews::listsAreSortedByText() {
  Workbench bench;
  BestResults lists;
  PruefeBesteErgebnisse(bench.workplace(), pendingOf({"b=100", "Ä=9,5", "z=9,5", "a=9,5", "Z=9,5"}, {}),
                        lists);
  // What differs in its capitals alone stays in its order.
  QCOMPARE(lists.serien,
           (QStringList{"     9,5 - a", "     9,5 - Ä", "     9,5 - z", "     9,5 - Z", "   100,0 - b"}));
  PruefeBesteErgebnisse(bench.workplace(), pendingOf({"Z=9,5", "z=9,5"}, {}), lists);
  QCOMPARE(lists.serien, (QStringList{"     9,5 - Z", "     9,5 - z"}));
}

void TestResultViews::valueWithThousandsPoint() {
  Workbench bench;
  BestResults lists;
  PruefeBesteErgebnisse(bench.workplace(), pendingOf({"Viele=1234,5", "Viele=999"}, {}), lists);
  QVERIFY(lists.serien.contains(" 1.234,5 - Viele"));
  QCOMPARE(lists.beste, QStringList{" 1.234,5 - Viele"});
}

void TestResultViews::valueBeyondEightCharactersLosesItsFirstDigits() {
  Workbench bench;
  BestResults lists;
  PruefeBesteErgebnisse(bench.workplace(), pendingOf({"Viele=1234567,8", "Viele=235000"}, {}), lists);
  QVERIFY(lists.serien.contains("34.567,8 - Viele"));
  QCOMPARE(lists.beste, QStringList{"35.000,0 - Viele"});
}

void TestResultViews::onlyTeilers() {
  Workbench bench;
  BestResults lists;
  PruefeBesteErgebnisse(bench.workplace(), pendingOf({}, {"Glück=72,4", "Glück=12,3"}), lists);
  QCOMPARE(lists.beste, QStringList{"    12,3 - Glück"});
}

void TestResultViews::nothingPending() {
  Workbench bench;
  BestResults lists{{"alt"}, {"alt"}, {"alt"}};
  PruefeBesteErgebnisse(bench.workplace(), {}, lists);
  QVERIFY(lists.beste.isEmpty() && lists.serien.isEmpty() && lists.teiler.isEmpty());
}

void TestResultViews::differentAdditionsAreDifferentDisciplines() {
  Workbench bench;
  PendingResults pending;
  for (const double rings : {91.0, 95.5}) {
    const auto r = teiler("Pokal", 109 - rings + 12.3);
    r->DSBMaxRinge = 109;
    r->DSBRinge = rings;
    r->DSBTeiler = 12.3;
    pending.m_colTeilerErg.add(r, QString::number(rings));
  }
  BestResults lists;
  PruefeBesteErgebnisse(bench.workplace(), pending, lists);
  QCOMPARE(lists.beste,
           (QStringList{"    25,8 - Pokal (109 - 95,5 + 12,3)", "    30,3 - Pokal (109 - 91 + 12,3)"}));
}

QTEST_MAIN(TestResultViews)
#include "test_result_views.moc"
