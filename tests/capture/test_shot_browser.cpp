// The browser of all shots: its query, and the real window on a competition.
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "capture/frmHaeringSchussAlle.h"
#include "capture/shot_browser_query.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/look/look.h"
#include "tests/capture/workbench.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

Q_DECLARE_METATYPE(BoxAnswer)

namespace {

const QString kBase = "Select * from Haering_Daten ";
const QString kQuestion = "Sollen alle bisherigen Intarsoeinträge gelöscht werden?";

QStringList filterOn(const QString& column, const QString& text) {
  QStringList texts(shotBrowserColumns().size());
  texts[shotBrowserColumns().indexOf(column)] = text;
  return texts;
}

}  // namespace

class TestShotBrowser : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { bench = std::make_unique<Workbench>(); }
  void cleanup() {
    window.reset();
    bench.reset();
  }

  void theFilterIsAPrefixOfEachColumn();
  void titlesSetAndFlipTheOrder();
  void aNameWithinTheOrderingOneFlips();
  void everyColumnFiltersAndSorts();
  void allRowsWhateverTheirState();
  void typingFilters();
  void aQuoteBreaksTheQuery_data();
  void aQuoteBreaksTheQuery();
  void theOrderStaysWhenTheFilterGoes();
  void aClickOnATitleSorts();
  void deletingFollowsTheFilter();
  void deletingNothing();
  void sayingNoDeletesNothing();
  void deletingStopsBetweenRows();
  void closingWhileDeletingStops();
  void theFirstRowsComeBeforeTheirCount();
  void aSortSaysSoAndKnowsTheCount();
  void aReadingThatFailsLaterIsReported();
  void aMissingFileIsReported();
  void usualTextsAreShownWhole();
  void numbersDontTakeTheRoomOfTexts();
  void manners();

 private:
  void addShots(int count) {
    const auto rows = bench->store().openRecordset("Haering_Daten");
    for (int i = 1; i <= count; ++i) {
      rows->addNew();
      rows->setValue("Schütze", i % 2 ? "Müller, Jörg" : "Ärmel, Ute");
      rows->setValue("Liniennummer", i);
      rows->setValue("Treffernummer", count - i);
      rows->setValue("RingwertmitZehntel", 9.5 + i);
      rows->setValue("Verbucht", i % 3 == 0);
      rows->setValue("Verworfen", i % 3 == 1);
      rows->update();
    }
  }
  /// More than are deleted in one go, whatever the disk.
  int addMany() {
    constexpr int kFirst = 5, kTimes = 12;
    addShots(kFirst);
    for (int times = 0; times < kTimes; ++times)
      bench->store().execute(
          "INSERT INTO Haering_Daten (Schütze, Liniennummer) SELECT Schütze, Liniennummer FROM "
          "Haering_Daten");
    return kFirst << kTimes;
  }
  void open() {
    bench->store();
    window = std::make_unique<frmHaeringSchussAlle>(bench->workplace());
    window->setWettkampf(bench->path("Pokal.qkk"));
    window->show();
    QVERIFY(QTest::qWaitForWindowActive(window.get()));
    QVERIFY(grid().rows()->waitForAll());
  }
  BoundGrid& grid() { return the<BoundGrid>(*window, "gridInput"); }
  int columnOf(const QString& name) { return int(shotBrowserColumns().indexOf(name)); }
  QString shown(const QString& column) {
    grid().rows()->waitForAll();
    QStringList cells;
    for (int row = 0; row < grid().rows()->count(); ++row)
      cells.append(grid().rows()->index(row, columnOf(column)).data().toString());
    return cells.join(" ");
  }
  void clickTitle(const QString& name) {
    QHeaderView* header = grid().horizontalHeader();
    const int column = columnOf(name);
    grid().scrollTo(grid().rows()->index(0, column));
    const QPoint title(header->sectionViewportPosition(column) + header->sectionSize(column) / 2, 5);
    QTest::mouseClick(header->viewport(), Qt::LeftButton, {}, title);
  }
  QString stored() {
    return bench->read("Select * from Haering_Daten order by ID", {"Liniennummer"}).join(" ");
  }

  std::unique_ptr<Workbench> bench;
  std::unique_ptr<frmHaeringSchussAlle> window;
};

void TestShotBrowser::theFilterIsAPrefixOfEachColumn() {
  FilteredQuery query = shotBrowserQuery();
  QCOMPARE(query.text(), kBase);
  QStringList texts = filterOn("Schütze", "Mü");
  query.setFilter(texts);
  QCOMPARE(query.text(), kBase + " WHERE Schütze LIKE 'Mü*'");
  texts[columnOf("Key")] = " 4 ";
  texts[columnOf("X")] = "   ";
  query.setFilter(texts);
  QCOMPARE(query.text(), kBase + " WHERE Schütze LIKE 'Mü*' AND Key LIKE ' 4 *'");
  query.clickTitle(columnOf("Datum"));
  QCOMPARE(query.text(), kBase + " WHERE Schütze LIKE 'Mü*' AND Key LIKE ' 4 *' ORDER BY Datum ASC");
  query.clearFilter();
  QCOMPARE(query.text(), kBase + " ORDER BY Datum ASC");
}

void TestShotBrowser::titlesSetAndFlipTheOrder() {
  FilteredQuery query = shotBrowserQuery();
  query.clickTitle(columnOf("Datum"));
  QCOMPARE(query.text(), kBase + " ORDER BY Datum ASC");
  query.clickTitle(columnOf("Datum"));
  QCOMPARE(query.text(), kBase + " ORDER BY Datum DESC");
  query.clickTitle(columnOf("Datum"));
  QCOMPARE(query.text(), kBase + " ORDER BY Datum ASC");
}

void TestShotBrowser::aNameWithinTheOrderingOneFlips() {
  FilteredQuery query = shotBrowserQuery();
  query.clickTitle(columnOf("KlasseBezeichnung"));
  query.clickTitle(columnOf("Klasse"));
  QCOMPARE(query.text(), kBase + " ORDER BY KlasseBezeichnung DESC");
  query.clickTitle(columnOf("Klasse"));
  QCOMPARE(query.text(), kBase + " ORDER BY KlasseBezeichnung ASC");
  query.clickTitle(columnOf("Waffe"));
  query.clickTitle(columnOf("Klasse"));
  QCOMPARE(query.text(), kBase + " ORDER BY Klasse ASC");
  // The words of the query are part of that text.
  query.clickTitle(columnOf("Y"));
  QCOMPARE(query.text(), kBase + " ORDER BY Klasse DESC");
  FilteredQuery fresh = shotBrowserQuery();
  fresh.clickTitle(columnOf("Y"));
  QCOMPARE(fresh.text(), kBase + " ORDER BY Y ASC");
}

void TestShotBrowser::everyColumnFiltersAndSorts() {
  // One row holds the first value of each column, the other the second; the filter is the beginning of one.
  const QList<std::tuple<QString, QVariant, QVariant, QString>> columns{
      {"WettbewerbBezeichnung", "LG Meister", "LP Meister", "lg"},
      {"KlasseBezeichnung", "Herren I", "Damen I", "Herren"},
      {"StandnummerOrt", 12, 21, "1"},
      {"Liniennummer", 34, 43, "3"},
      {"Schütze", "Ärmel, Ute", "Müller, Jörg", "är"},
      {"ProbeMatch", "P", "M", "P"},
      {"Wertung", 10, 0, "1"},
      {"Treffernummer", 56, 65, "56"},
      {"RingwertmitZehntel", 9.75, 8.5, "9,7"},
      {"Lagepfeil", "o", "u", "o"},
      {"X", -12.5, 12.5, "-12,"},
      {"Y", 3.25, -3.25, "3,2"},
      {"Radius", 123.5, 321.5, "123,"},
      {"Winkel", 271.5, 90.5, "27"},
      {"ZeitAbsolut", "10:41:07", "11:41:07", "10:41"},
      {"ZeitRelativ", "00:31", "01:31", "00"},
      {"Datum", "20.11.2026", "21.11.2026", "20.11."},
      {"Wettbewerb", "1.10", "2.10", "1."},
      {"Klasse", "frei", "alle", "fr"},
      {"Startnummer", "107", "701", "10"},
      {"Waffe", "LG", "LP", "LG"},
      {"Teiler", 61.5, 16.5, "61,5"},
      {"Teilerfaktor", 2.5, 1.0, "2,5"},
      {"Verbucht", true, false, "-1"},
      {"Verworfen", true, false, "-"},
      {"BuchungsZeitpunkt", QDateTime(QDate(2026, 11, 20), QTime(17, 30, 5)),
       QDateTime(QDate(2025, 12, 31), QTime(8, 0)), "20.11.2026 17"},
      {"Key", "0030017-20.11.2026-10:41:07", "0040017-20.11.2026-10:41:07", "003"},
  };
  const auto rows = bench->store().openRecordset("Haering_Daten");
  for (const int number : {1, 2}) {
    rows->addNew();
    for (const auto& [column, first, second, filter] : columns)
      rows->setValue(column, number == 1 ? first : second);
    rows->update();
  }
  QCOMPARE(columns.size(), shotBrowserColumns().size());
  const auto found = [&](const FilteredQuery& query) {
    return bench->read(query.text(), {"Liniennummer"}).join(" ");
  };
  for (const auto& [column, first, second, filter] : columns) {
    FilteredQuery query = shotBrowserQuery();
    query.setFilter(filterOn(column, filter));
    query.clickTitle(columnOf(column));
    QVERIFY2(found(query) == "34", qPrintable(column + ": " + found(query)));
    query.setFilter(filterOn(column, "gibt es nicht"));
    QVERIFY2(found(query).isEmpty(), qPrintable(column));
    query.clearFilter();
    const QString ascending = found(query);
    query.clickTitle(columnOf(column));
    QVERIFY2(found(query) == (ascending == "34 43" ? "43 34" : "34 43"), qPrintable(column));
  }
}

void TestShotBrowser::allRowsWhateverTheirState() {
  addShots(6);
  open();
  QCOMPARE(window->windowTitle(), "Alle gespeicherten Schussdaten Häring");
  QCOMPARE(shown("Liniennummer"), "1 2 3 4 5 6");
  QCOMPARE(shown("Verbucht"), "0 0 -1 0 0 -1");
  QCOMPARE(grid().rows()->index(0, columnOf("RingwertmitZehntel")).data().toString(), "10,5");
  QCOMPARE(the<QLabel>(*window, "lblAnzahl").text(), "6 Schüsse");
  QStringList titles;
  for (int column = 0; column < grid().model()->columnCount(); ++column)
    titles.append(grid().model()->headerData(column, Qt::Horizontal).toString());
  QCOMPARE(titles, shotBrowserColumns());
  for (const auto& [name, text] :
       {std::pair{"cmdClearFilter", "Filter löschen"}, std::pair{"cmdDeleteHaering", "Einträge löschen"},
        std::pair{"cmdClose", "Schließen"}})
    QCOMPARE(the<QPushButton>(*window, name).text().remove('&'), QString(text));
}

void TestShotBrowser::typingFilters() {
  addShots(6);
  open();
  type(*window, "filter_Schütze", "mü");
  QCOMPARE(shown("Liniennummer"), "1 3 5");
  QCOMPARE(the<QLabel>(*window, "lblAnzahl").text(), "3 Schüsse");
  QVERIFY(the<QLineEdit>(*window, "filter_Schütze").hasFocus());
  type(*window, "filter_Liniennummer", "5");
  QCOMPARE(shown("Liniennummer"), "5");
  QCOMPARE(the<QLabel>(*window, "lblAnzahl").text(), "1 Schuss");
}

void TestShotBrowser::aQuoteBreaksTheQuery_data() {
  QTest::addColumn<BoxAnswer>("answer");
  QTest::newRow("abort") << BoxAnswer::Abort;
  QTest::newRow("ignore") << BoxAnswer::Ignore;
}

void TestShotBrowser::aQuoteBreaksTheQuery() {
  QFETCH(BoxAnswer, answer);
  addShots(3);
  open();
  const Error error =
      bench->failureOf([this] { bench->store().openRecordset(kBase + " WHERE Schütze LIKE 'O'*'"); });
  bench->expectError(error, "Fehler bei gridInput_FilterChange_err!", answer, "Fehler: ");
  the<QLineEdit>(*window, "filter_Schütze").setText("O'");
  QVERIFY(bench->dialogs.done());
  // Rows that the query in force doesn't give aren't shown, and so aren't deleted.
  QCOMPARE(shown("Liniennummer"), "");
  bench->dialogs.expect(kQuestion, BoxAnswer::Yes);
  bench->expectError(error, "Fehler bei cmdDeleteHaering_Click_err!", answer, "Fehler: ");
  click(*window, "cmdDeleteHaering");
  QCOMPARE(stored(), "1 2 3");
}

void TestShotBrowser::theOrderStaysWhenTheFilterGoes() {
  addShots(6);
  open();
  clickTitle("Treffernummer");
  type(*window, "filter_Schütze", "Ä");
  QCOMPARE(shown("Liniennummer"), "6 4 2");
  click(*window, "cmdClearFilter");
  QCOMPARE(shown("Liniennummer"), "6 5 4 3 2 1");
  QCOMPARE(the<QLineEdit>(*window, "filter_Schütze").text(), "");
}

void TestShotBrowser::aClickOnATitleSorts() {
  addShots(4);
  open();
  clickTitle("Schütze");
  QCOMPARE(shown("Liniennummer"), "2 4 1 3");  // "Ä" stands with "A"
  QCOMPARE(grid().horizontalHeader()->sortIndicatorSection(), columnOf("Schütze"));
  QCOMPARE(grid().horizontalHeader()->sortIndicatorOrder(), Qt::AscendingOrder);
  clickTitle("Schütze");
  QCOMPARE(shown("Liniennummer"), "1 3 2 4");
  QCOMPARE(grid().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
  // The mark stands where the order comes from, which isn't always where the click was.
  clickTitle("KlasseBezeichnung");
  clickTitle("Klasse");
  QVERIFY(grid().horizontalHeader()->isSortIndicatorShown());
  QCOMPARE(grid().horizontalHeader()->sortIndicatorSection(), columnOf("KlasseBezeichnung"));
  QCOMPARE(grid().horizontalHeader()->sortIndicatorOrder(), Qt::DescendingOrder);
}

void TestShotBrowser::deletingFollowsTheFilter() {
  addShots(6);
  open();
  type(*window, "filter_Schütze", "Mü");
  bench->dialogs.expect(kQuestion, BoxAnswer::Yes).titled("Hinweis").with(BoxButtons::YesNo);
  click(*window, "cmdDeleteHaering");
  QCOMPARE(stored(), "2 4 6");
  QCOMPARE(shown("Liniennummer"), "");
  click(*window, "cmdClearFilter");
  QCOMPARE(shown("Liniennummer"), "2 4 6");
}

void TestShotBrowser::deletingNothing() {
  open();
  bench->dialogs.expect(kQuestion, BoxAnswer::Yes);
  click(*window, "cmdDeleteHaering");
  QVERIFY(bench->dialogs.done());
  QCOMPARE(the<QLabel>(*window, "lblAnzahl").text(), "0 Schüsse");
}

void TestShotBrowser::sayingNoDeletesNothing() {
  addShots(3);
  open();
  bench->dialogs.expect(kQuestion, BoxAnswer::No);
  click(*window, "cmdDeleteHaering");
  QCOMPARE(stored(), "1 2 3");
}

void TestShotBrowser::deletingStopsBetweenRows() {
  const int all = addMany();
  open();
  const QByteArray last = grid().rows()->bookmark(all - 1);
  bench->dialogs.expect(kQuestion, BoxAnswer::Yes);
  bool seen = false;
  QMetaObject::invokeMethod(
      window.get(),
      [&] {
        seen = the<QWidget>(*window, "prgDelete").isVisible();
        QVERIFY(!the<QPushButton>(*window, "cmdDeleteHaering").isEnabled());
        click(*window, "cmdStop");
      },
      Qt::QueuedConnection);
  the<QPushButton>(*window, "cmdDeleteHaering").click();
  QVERIFY(seen);
  QVERIFY(grid().rows()->waitForAll());
  const int left = grid().rows()->count();
  QVERIFY(left > 0 && left < all);
  QCOMPARE(grid().rows()->rowOf(last), left - 1);  // the first ones go first
  QVERIFY(!the<QPushButton>(*window, "cmdStop").isVisible());
  QVERIFY(the<QPushButton>(*window, "cmdDeleteHaering").isEnabled());
}

void TestShotBrowser::closingWhileDeletingStops() {
  addMany();
  open();
  bench->dialogs.expect(kQuestion, BoxAnswer::Yes);
  QMetaObject::invokeMethod(
      window.get(), [this] { window->close(); }, Qt::QueuedConnection);
  the<QPushButton>(*window, "cmdDeleteHaering").click();
  QVERIFY(window->isVisible());
  QVERIFY(grid().rows()->count() > 0);
  click(*window, "cmdClose");
  QVERIFY(!window->isVisible());
}

void TestShotBrowser::theFirstRowsComeBeforeTheirCount() {
  const int all = addMany();
  window = std::make_unique<frmHaeringSchussAlle>(bench->workplace());
  window->setWettkampf(bench->path("Pokal.qkk"));
  // The rest is called for from the event loop, which doesn't run: the count is held back.
  window->show();
  grid().rows()->waitForFirst();
  const QImage held = grid().viewport()->grab().toImage();
  QVERIFY(!grid().rows()->isComplete());
  QCOMPARE(the<QLabel>(*window, "lblAnzahl").text(), "50 Schüsse, es werden mehr…");
  QVERIFY(grid().rows()->waitForAll());
  QCOMPARE(the<QLabel>(*window, "lblAnzahl").text(), QLocale().toString(all) + " Schüsse");
  QVERIFY(grid().rowViewportPosition(49) > grid().viewport()->height());
  QCOMPARE(held, grid().viewport()->grab().toImage());
}

void TestShotBrowser::aSortSaysSoAndKnowsTheCount() {
  const QString all = QLocale().toString(addMany()) + " Schüsse";
  open();
  QStringList said;
  connect(grid().rows(), &BoundRows::counted, window.get(), [&] {
    const QString text = the<QLabel>(*window, "lblAnzahl").text();
    if (said.isEmpty() || said.last() != text) said.append(text);
  });
  clickTitle("Schütze");
  QVERIFY(grid().rows()->waitForAll());
  QCOMPARE(said, (QStringList{"Wird sortiert…", all + ", wird sortiert…", all}));
  said.clear();
  type(*window, "filter_Schütze", "gibt es nicht");
  QVERIFY(grid().rows()->waitForAll());
  QCOMPARE(said.last(), "0 Schüsse");
}

void TestShotBrowser::aReadingThatFailsLaterIsReported() {
  addMany();
  bench->damageStore();
  const Error error = bench->failureOf([this] {
    const auto rows = bench->store().openRecordset("Select * from Haering_Daten");
    rows->moveLast();
  });
  window = std::make_unique<frmHaeringSchussAlle>(bench->workplace());
  window->setWettkampf(bench->path("Pokal.qkk"));
  bench->expectError(error, "Fehler bei gridInput_Fetch_err!", BoxAnswer::Abort, "Fehler: ");
  window->show();
  QTRY_VERIFY(bench->dialogs.done());
  // The rows that came stay.
  const int came = grid().rows()->count();
  QVERIFY(came >= 50);
  QCOMPARE(the<QLabel>(*window, "lblAnzahl").text(),
           QLocale().toString(came) + " Schüsse, nicht alle gelesen");
  QCOMPARE(grid().rows()->index(0, columnOf("Liniennummer")).data().toString(), "1");

  // The window goes on: what the damage doesn't touch is found, and said again is what it does.
  bench->expectError(error, "Fehler bei gridInput_Fetch_err!", BoxAnswer::Abort, "Fehler: ");
  type(*window, "filter_Liniennummer", "3");
  QTRY_VERIFY(bench->dialogs.done());
  if (!storesOnServer()) {  // a server sorts what it has found, and all of it, before the first row comes
    QVERIFY(grid().rows()->count() > 0);
    QCOMPARE(grid().rows()->index(0, columnOf("Liniennummer")).data().toString(), "3");
  }
  click(*window, "cmdClose");
  QVERIFY(!window->isVisible());
}

void TestShotBrowser::aMissingFileIsReported() {
  bench->expectError(3024, "Fehler bei Form_Load_err!", BoxAnswer::Abort, "Fehler: ");
  window = std::make_unique<frmHaeringSchussAlle>(bench->workplace());
  window->setWettkampf(bench->path("fehlt.qkk"));
  window->show();
  QVERIFY(bench->dialogs.done());
  clickTitle("Datum");
  bench->dialogs.expect(kQuestion, BoxAnswer::Yes);
  click(*window, "cmdDeleteHaering");
}

void TestShotBrowser::usualTextsAreShownWhole() {
  open();
  const QMap<QString, int> lengths{
      {"KlasseBezeichnung", 20}, {"Schütze", 20}, {"Key", 18},   {"BuchungsZeitpunkt", 18},
      {"Wettbewerb", 11},        {"Klasse", 11},  {"Datum", 11}, {"ZeitAbsolut", 11}};
  QStringList cut;
  for (const QString& name : shotBrowserColumns()) {
    const QString usual(lengths.value(name, 7), 'n');
    if (grid().columnWidth(columnOf(name)) < grid().fontMetrics().horizontalAdvance(usual)) cut << name;
  }
  QCOMPARE(cut, QStringList());
}

void TestShotBrowser::numbersDontTakeTheRoomOfTexts() {
  open();
  for (const char* name : {"X", "Y", "Radius", "Winkel", "Teiler"})
    QVERIFY2(grid().columnWidth(columnOf(name)) < grid().fontMetrics().horizontalAdvance(QString(12, 'n')),
             name);
}

void TestShotBrowser::manners() {
  addShots(3);
  open();
  QCOMPARE(badManners(*window), QStringList());
}

QTEST_MAIN(TestShotBrowser)
#include "test_shot_browser.moc"
