// Ticking shots on a line, and what ticks do to the transfer button.

#include <QSignalSpy>
#include <QTest>

#include "tests/capture/line.h"

using namespace qk;
using namespace qk::test;

class TestLineTicking : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void transferButton();
  void countIsNotTouchedByAnEmptyGrid();
  void tickingOneRow();
  void clickElsewhereTicksNothing();
  void tickingAllTransfers();
  void tickingAllWithoutAShooter();
  void tickingASeries();
  void aSeriesEndsWithItsCompetition();
  void tickingASeriesOfACombination();
  void theFirstMatchCounts();
  void tickingASeriesOfNobody();
  void tickingASeriesWithoutARow();
  void tickingTheStationsSeries_data();
  void tickingTheStationsSeries();
  void aCountBeyondAnyGridIsReported();
  void aRowThatIsGoneIsReported();
  void overwrittenShotKeepsItsRow();
};

void TestLineTicking::transferButton() {
  Line line;
  line.receive(shots("2x9"));
  line.choose({0});
  QVERIFY(!line.enabled);
  line.tick(1);
  QVERIFY(line.enabled);
  QCOMPARE(line.count, QString("Gesamt: 2 Gewählt: 1"));
  line.capture->setShooter(nullptr);
  QVERIFY(!line.enabled);
  line.capture->setShooter(std::make_shared<Schuetze>(shooter()));
  QVERIFY(line.enabled);
  line.choose({});
  QVERIFY(!line.enabled);
}

void TestLineTicking::countIsNotTouchedByAnEmptyGrid() {
  Line line;
  QSignalSpy states(line.capture.get(), &LineCapture::transferStateChanged);
  line.choose({0});
  QCOMPARE(states.last().at(1).toString(), QString());
}

void TestLineTicking::tickingOneRow() {
  Line line;
  line.receive(shots("3x9"));
  line.choose({0});
  line.tick(2);
  QCOMPARE(line.ticks(), QString(".x."));
  // A single tick doesn't transfer.
  QCOMPARE(line.pending(), QStringList());
  line.tick(2, "0");
  QCOMPARE(line.ticks(), QString("..."));
}

void TestLineTicking::clickElsewhereTicksNothing() {
  Line line;
  line.receive(shots("9"));
  line.capture->flex().setText(1, 0, "-1");
  line.capture->flex_click(1, 1);
  line.capture->flex_click(0, 0);
  QCOMPARE(line.capture->m_colHaeringSchuss().at(0)->bAngewaehlt, false);
}

void TestLineTicking::tickingAllTransfers() {
  Line line;
  line.receive(shots("4x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.ticks(), QString("xxxx"));
  QCOMPARE(line.pending(), QStringList{"10m Luftgewehr 36"});
  line.capture->HaeringSchussAnAbwaehlen(false);
  QCOMPARE(line.ticks(), QString("...."));
  QCOMPARE(line.capture->flex().text(1, 0), QString("0"));
  QCOMPARE(line.pending(), QStringList());
  QVERIFY(!line.enabled);
}

void TestLineTicking::tickingAllWithoutAShooter() {
  Line line;
  line.receive(shots("4x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.capture->bestResults().beste, QStringList{"    36,0 - 10m Luftgewehr"});
  line.capture->setShooter(nullptr);
  line.bench.expectError(91, "Fehler bei SaveSerieInKlasse_err!", BoxAnswer::Abort);
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.pending(), QStringList());
  // The lists say what is pending: nothing.
  QCOMPARE(line.capture->bestResults().beste, QStringList());
  QCOMPARE(line.capture->bestResults().serien, QStringList());
}

void TestLineTicking::tickingASeries() {
  Line line;
  const Shots all = shots("8x9");
  all[0]->WettbewerbBezeichnung = "20 Luftpistole";
  all[7]->WettbewerbBezeichnung = "20 Luftpistole";
  line.receive(all);
  line.choose({2});
  line.tick(8);
  QList<int> shown;
  // From the middle of the block up to its first row, then four down: the length of the discipline's series.
  line.capture->HaeringSchussWettbewerbAnwaehlen(5, [&](int row) { shown += row; });
  QCOMPARE(line.ticks(), QString(".xxxx..."));
  QCOMPARE(shown, (QList<int>{2, 3, 4, 5}));
  QVERIFY(line.capture->lstDisziTarvex().isTicked(0));
  QVERIFY(!line.capture->lstDisziTarvex().isTicked(2));
  QCOMPARE(line.pending(), QStringList{"10m Luftgewehr 36"});
}

void TestLineTicking::aSeriesEndsWithItsCompetition() {
  Line line;
  const Shots all = shots("6x9");
  for (const int other : {0, 3, 4, 5}) all[other]->WettbewerbBezeichnung = "20 Luftpistole";
  line.receive(all);
  line.capture->HaeringSchussWettbewerbAnwaehlen(3, [](int) {});
  QCOMPARE(line.ticks(), QString(".xx..."));
}

void TestLineTicking::tickingASeriesOfACombination() {
  Line line;
  const Shots all = shots("12x9");
  for (const auto& s : all) s->WettbewerbBezeichnung = "20 POKAL";
  line.receive(all);
  line.capture->HaeringSchussWettbewerbAnwaehlen(1, [](int) {});
  QCOMPARE(line.ticks(), QString("xxxx........"));
  QVERIFY(line.capture->lstKombiTarvex().isTicked(0));
  QCOMPARE(line.capture->m_colDisziplinen().count(), 2);
  QCOMPARE(line.pending().size(), 5);
}

void TestLineTicking::theFirstMatchCounts() {
  Line line;
  line.bench.fill(R"(
Zeilen Disziplin
  ID | Name        | CmdIndex | Ringe | Teiler | RingSerie
  8  | 50m LG Pokal | 8       | ja    | nein   | 2
  9  | 25m LG Pokal | 9       | ja    | nein   | 3
Zeilen Kombination_Name
  ID | Kombinationsname | CmdIndex
  8  | Zum Königspaar   | 8
  9  | Vom Königspaar   | 9
Zeilen Kombination_Diszi
  ID | KombiID | disziID
  8  | 8       | 8
  9  | 9       | 9
)");
  line.capture->fillLists(*LadeListen(line.bench.store()));
  const Shots all = shots("4x9");
  for (const auto& s : all) s->WettbewerbBezeichnung = "20 LG Pokal";
  line.receive(all);
  line.capture->HaeringSchussWettbewerbAnwaehlen(1, [](int) {});
  QCOMPARE(line.ticks(), QString("xx.."));
  QCOMPARE(line.capture->m_colDisziplinen().at(0)->Name, QString("50m LG Pokal"));
  for (int row = 1; row <= 4; ++row) line.capture->flex().setText(row, 1, "Königspaar");
  line.capture->HaeringSchussWettbewerbAnwaehlen(1, [](int) {});
  QCOMPARE(line.ticks(), QString("xx.."));
  QVERIFY(line.capture->lstKombiTarvex().isTicked(1));
  QVERIFY(!line.capture->lstKombiTarvex().isTicked(2));
}

void TestLineTicking::tickingASeriesOfNobody() {
  Line line;
  const Shots all = shots("12x9");
  for (const auto& s : all) s->WettbewerbBezeichnung = "Armbrust";
  line.receive(all);
  line.choose({});
  line.capture->HaeringSchussWettbewerbAnwaehlen(2, [](int) {});
  // No discipline tells how long a series is: all of them.
  QCOMPARE(line.ticks(), QString("xxxxxxxxxxxx"));
  QVERIFY(!line.enabled);
  QCOMPARE(line.pending(), QStringList());

  // A teiler discipline has no series length: ten.
  Line teilers;
  const Shots many = shots("12x9");
  for (const auto& s : many) s->WettbewerbBezeichnung = "20 Glücksscheibe";
  teilers.receive(many);
  teilers.capture->HaeringSchussWettbewerbAnwaehlen(12, [](int) {});
  QCOMPARE(teilers.ticks(), QString("xxxxxxxxxx.."));
}

void TestLineTicking::tickingASeriesWithoutARow() {
  Line line;
  line.receive(shots("2x9"));
  line.tick(1);
  line.capture->HaeringSchussWettbewerbAnwaehlen(0, [](int) { QFAIL("shown"); });
  QCOMPARE(line.ticks(), QString("x."));
}

void TestLineTicking::tickingTheStationsSeries_data() {
  QTest::addColumn<QString>("marks");
  QTest::addColumn<QString>("count");
  QTest::addColumn<QString>("ticks");
  QTest::newRow("the first marked row") << "0 1 1"
                                        << "2"
                                        << "xx..x";
  QTest::newRow("no mark") << "0 0 0"
                           << "2"
                           << "....x";
  QTest::newRow("more than there are") << "0 1 0"
                                       << "40"
                                       << "xxxxx";
  QTest::newRow("rounded to even") << "0 1 0"
                                   << "2,5"
                                   << "xx..x";
  QTest::newRow("no number") << "0 1 0"
                             << ""
                             << "....x";
}

void TestLineTicking::tickingTheStationsSeries() {
  QFETCH(QString, marks);
  QFETCH(QString, count);
  QFETCH(QString, ticks);
  Line line;
  line.receive(shots("5x9"));
  line.choose({0});
  line.tick(5);
  TextTable flexHaeringDiszi(6);
  for (const QString& mark : marks.split(' ')) flexHaeringDiszi.addRow({mark, "Luftgewehr", "99"});
  flexHaeringDiszi.setText(2, 2, count);
  line.capture->HaeringSchussSerieAnwaehlen(flexHaeringDiszi);
  QCOMPARE(line.ticks(), ticks);
  QVERIFY(line.enabled);
  QCOMPARE(line.pending(), QStringList());
}

void TestLineTicking::aCountBeyondAnyGridIsReported() {
  Line line;
  line.receive(shots("2x9"));
  TextTable flexHaeringDiszi(6);
  flexHaeringDiszi.addRow({"1", "Luftgewehr", "40000"});
  line.bench.expectError(6, "Fehler beim Anwählen der Serie!", BoxAnswer::Abort);
  line.capture->HaeringSchussSerieAnwaehlen(flexHaeringDiszi);
  QCOMPARE(line.ticks(), QString(".."));
}

void TestLineTicking::aRowThatIsGoneIsReported() {
  Line line;
  line.receive(shots("2x9"));
  line.bench.expectError(9, "Fehler bei flex_click_err!", BoxAnswer::Abort);
  line.capture->flex_click(3, 0);
  QCOMPARE(line.ticks(), QString(".."));
}

void TestLineTicking::overwrittenShotKeepsItsRow() {
  Line line;
  line.receive(shots("9"));
  const QString key = line.capture->flex().rowData(1);
  line.capture->m_colHaeringSchuss().at(0)->Key = "0030099-20.11.2026-10:00:00";
  QCOMPARE(line.capture->flex().rowData(1), key);
  QCOMPARE(line.capture->m_colHaeringSchuss().keyAt(0), key);
  // The row's shot isn't found under its old key any more.
  line.tick(1);
  QCOMPARE(line.capture->m_colHaeringSchuss().at(0)->bAngewaehlt, false);
}

QTEST_MAIN(TestLineTicking)
#include "test_line_ticking.moc"
