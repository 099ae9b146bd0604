// Reports laid out on a store of either engine: what stands on which page, and what the sums are.
#include <QBuffer>
#include <QPainter>
#include <QSignalSpy>
#include <QTest>

#include "platform/dao/database.h"
#include "platform/report/document.h"
#include "platform/report/grid_report.h"
#include "platform/report/page_painter.h"
#include "platform/report/parser.h"
#include "platform/runtime/money.h"
#include "tests/platform/report/pdf_reader.h"
#include "tests/platform/report/printed.h"
#include "tests/platform/report/report_store.h"
#include "tests/support/read_bars.h"

using namespace qk;
using namespace qk::report;
using namespace qk::test;

namespace {

QByteArray pdfOf(Document& document) {
  QBuffer pdf;
  pdf.open(QIODevice::WriteOnly);
  if (!document.writePdf(pdf, "Liste")) failTest("no PDF");
  return pdf.data();
}

QStringList sorted(QStringList lines) {
  lines.sort();
  return lines;
}

/// A page as a printer of 203 dpi draws it.
QImage painted(const PageItems& page, const Fonts& fonts) {
  QImage sheet(1700, 2400, QImage::Format_RGB32);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  painter.scale(203.0 / kUnitsPerInch, 203.0 / kUnitsPerInch);
  paintPage(painter, page, fonts);
  return sheet;
}

QString errorOf(const Store& store, const QString& text) {
  try {
    made(store, text)->finish();
    return {};
  } catch (const Error& error) {
    return QString::number(error.number()) + " " + error.description();
  }
}

Money sumOf(int first, int last) {
  Money sum;
  for (int id = first; id <= last; ++id) sum += amountOf(id);
  return sum;
}

}  // namespace

class TestReportPages : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everyRowStandsOnceUnderItsHead() {
    const Store store;
    const auto report =
        made(store, kHead + kTable +
                        "Spalten\n  \"Nr.\" ID 20\n  \"Ort\" Ort 30\n  \"Betrag\" Betrag 30 Summe\n"
                        "  Gesamt \"Gesamt {Anzahl}\"\n");
    const QList<QStringList> pages = printedPages(*report);
    QVERIFY(pages.size() > 5);
    QStringList rows;
    for (int page = 0; page < pages.size(); ++page) {
      QCOMPARE(pages[page].first(), "Kopf");
      QCOMPARE(pages[page][1], "Nr.|Ort|Betrag");
      QCOMPARE(pages[page].last(), QString("Seite %1 von %2").arg(page + 1).arg(pages.size()));
      rows += pages[page].sliced(2, pages[page].size() - 3);
    }
    QCOMPARE(rows.size(), kRows + 1);
    for (int id = 1; id <= kRows; ++id)
      QCOMPARE(rows[id - 1],
               QString("%1|Ort %2|%3").arg(id).arg((id - 1) / 100).arg(amountOf(id).toCurrencyText()));
    QCOMPARE(rows.last(), "Gesamt 400|" + sumOf(1, kRows).toCurrencyText());
  }

  void groupsHaveTheirSumsAndAreNamedAgain() {
    const Store store;
    const auto report =
        made(store, kTable +
                        "Gruppe Ort\n  Titel \"{Ort}\"\n  Summe \"Summe {Ort} ({Anzahl})\"\n"
                        "Spalten\n  \"Nr.\" ID 20\n  \"Betrag\" Betrag 30 Summe\n  Gesamt \"Gesamt\"\n");
    const QList<QStringList> pages = printedPages(*report);
    QStringList lines;
    for (const QStringList& page : pages) lines += page;
    for (int place = 0; place < 4; ++place) {
      const QString name = QString("Ort %1").arg(place);
      QCOMPARE(lines.count(name), 1);
      const QString sum =
          QString("Summe %1 (100)|%2").arg(name, sumOf(place * 100 + 1, place * 100 + 100).toCurrencyText());
      QCOMPARE(lines.count(sum), 1);
      QVERIFY(lines.contains(name + " (Fortsetzung)"));
    }
    QCOMPARE(lines.last(), "Gesamt|" + sumOf(1, kRows).toCurrencyText());
    for (int page = 1; page < pages.size(); ++page) {
      QCOMPARE(pages[page].first(), "Nr.|Betrag");
      QVERIFY2(pages[page][1].startsWith("Ort "), qPrintable(pages[page][1]));
    }
    // A title never stands last on its page, nor a sum first.
    for (const QStringList& page : pages) {
      QVERIFY(!page.last().startsWith("Ort "));
      QVERIFY(!page[1].startsWith("Summe"));
    }
  }

  void aGroupMayWantItsOwnPage() {
    const Store store;
    const auto report = made(store,
                             "Abfrage\n  SELECT Ort, ID FROM Posten WHERE ID > 98 AND ID < 105 ORDER BY ID\n"
                             "Gruppe Ort neue Seite\n  Titel \"{Ort}\"\nSpalten\n  \"Nr.\" ID 20\n");
    const QList<QStringList> pages = printedPages(*report);
    QCOMPARE(pages.size(), 2);
    QCOMPARE(pages[0], QStringList({"Nr.", "Ort 0", "99", "100"}));
    QCOMPARE(pages[1], QStringList({"Nr.", "Ort 1", "101", "102", "103", "104"}));
  }

  void longTextsWrapAndRowsStayWhole() {
    const Store store;
    const auto report = made(store, kTable + "Spalten\n  \"Nr.\" ID 20\n  \"Name\" Name 60\n");
    const QList<QStringList> pages = printedPages(*report);
    int wrapped = 0;
    for (const QStringList& page : pages) {
      // The lines of row 50, 100 … stand behind the one with its number, on the same page.
      QVERIFY(!page[1].startsWith("lang"));
      for (const QString& line : page) wrapped += line.startsWith("lang");
    }
    QVERIFY(wrapped >= 8 * 3);
    QCOMPARE(wrapped % 8, 0);
  }

  void oneLineEndsInDots() {
    const Store store;
    const auto report = made(
        store, "Abfrage\n  SELECT Name FROM Posten WHERE ID = 50\nSpalten\n  \"Name\" Name 30 einzeilig\n");
    const QStringList lines = printedLines(*report);
    QCOMPARE(lines.size(), 2);
    QVERIFY(lines[1].endsWith("…"));
  }

  void rowsFlowBesideEachOther() {
    const Store store;
    const auto report = made(store, "Teil \"a\"\n  Nebeneinander 4 Abstand 2\n" + kTable +
                                        "Zeile\n  Text 0 0 * 4 \"{ID}\"\n  Höhe 4.5\n");
    const QList<QStringList> pages = printedPages(*report);
    QCOMPARE(pages[0][0], "1|2|3|4");
    QStringList all;
    for (const QStringList& page : pages)
      for (const QString& line : page) all += line.split('|');
    QCOMPARE(all.size(), kRows);
    QCOMPARE(all.last(), QString::number(kRows));
    QCOMPARE(pages.size(), 2);
  }

  void aHundredValuesFitOnASheet() {
    TableRows rows;
    QVariantList row;
    for (int i = 1; i <= 100; ++i) {
      rows.names << QString("E%1").arg(i);
      row << (i == 7 ? QVariant() : QVariant(i * 1.5));
    }
    rows.rows.push_back(row);
    Input input;
    input.table = std::make_shared<TableRows>(rows);
    Document report(
        parseReport(
            "Tabelle t\nZeile\n  Werte 0 0 * 5 E 1 100 je 10 Format 0,0\n  Text 0 5 20 4 \"darunter\"\n",
            "x.rpt"),
        input);
    const QList<QStringList> pages = printedPages(report);
    QCOMPARE(pages.size(), 1);
    QCOMPARE(pages[0].size(), 11);
    QCOMPARE(pages[0][0], "1,5|3,0|4,5|6,0|7,5|9,0|12,0|13,5|15,0|16,5");
    QCOMPARE(pages[0].last(), "darunter");
  }

  void numberedValuesWithEvenDecimals_data() {
    QTest::addColumn<QVariantList>("values");
    QTest::addColumn<QString>("line");
    QTest::newRow("some with decimals") << QVariantList{109.5, 109, 98.25, -3} << "109,50|109,00|98,25|-3,00";
    QTest::newRow("whole ones") << QVariantList{98, 97} << "98|97";
    QTest::newRow("some missing") << QVariantList{98.5, QVariant(), 97} << "98,5|97,0";
    QTest::newRow("texts among them") << QVariantList{98.5, "fehlt", "7"} << "98,5|fehlt|7,0";
  }
  void numberedValuesWithEvenDecimals() {
    QFETCH(const QVariantList, values);
    QFETCH(const QString, line);
    TableRows rows;
    for (qsizetype i = 1; i <= values.size(); ++i) rows.names << QString("E%1").arg(i);
    rows.rows.push_back(values);
    Input input;
    input.table = std::make_shared<TableRows>(rows);
    const QString text =
        QString("Tabelle t\nZeile\n  Werte 0 0 * 5 E 1 %1 je 10 gleiche Stellen\n").arg(values.size());
    Document report(parseReport(text, "x.rpt"), input);
    QCOMPARE(printedLines(report), QStringList{line});
  }

  void aDayRestrictsTheQuery() {
    const Store store;
    const QString text =
        "Parameter Tag\nAbfrage\n  SELECT ID, Tag FROM Posten\n  WHERE Tag = {Tag}\n  ORDER BY ID\n"
        "Seitenkopf\n  Text 0 0 * 5 \"Tag {Tag:Datum}\" wenn Tag\nSpalten\n  \"Nr.\" ID 20 Summe\n  Gesamt "
        "\"{Anzahl}\"\n";
    Input input = inputFor(store.path());
    Document all(parseReport(text, "x.rpt"), input);
    QVERIFY(printedLines(all).last().startsWith("400|"));
    input.parameters.insert("Tag", QDateTime(QDate(2026, 11, 2), QTime(0, 0)));
    Document one(parseReport(text, "x.rpt"), input);
    const QStringList lines = printedLines(one);
    QCOMPARE(lines.first(), "Tag 02.11.2026");
    QVERIFY2(lines.last().startsWith("134|"), qPrintable(lines.last()));
  }

  void aTextParameterIsQuoted() {
    const Store store;
    Input input = inputFor(store.path());
    input.parameters.insert("Ort", "Ort 2' OR '1'='1");
    Document none(parseReport("Parameter Ort\nTeil \"a\"\n  Leer \"nichts\"\nAbfrage\n  SELECT ID FROM "
                              "Posten WHERE Ort = {Ort}\nSpalten\n  \"Nr.\" ID 20\n",
                              "x.rpt"),
                  input);
    QCOMPARE(printedLines(none), QStringList("nichts"));
  }

  void partsFollowEachOtherWithDataOfTheirOwn() {
    const Store store, other;
    dao::Database::open(other.path())->execute("Delete * from Posten where ID > 2");
    const QString text =
        "Teil \"eins\"\n  Überschrift \"Erster\"\nAbfrage\n  SELECT ID FROM Posten WHERE ID <= 3 ORDER BY "
        "ID\n"
        "Spalten\n  \"Nr.\" ID 20\n"
        "Teil \"leer\"\n  Überschrift \"Leer\"\n  Weglassen wenn leer\nAbfrage\n  SELECT ID FROM Posten "
        "WHERE ID < 0\nSpalten\n  \"Nr.\" ID 20\n"
        "Teil \"zwei\" neue Seite\n  Überschrift \"Zweiter\"\nAbfrage\n  SELECT ID FROM Posten ORDER BY ID "
        "DESC\nSpalten\n  \"Nr.\" ID 20\n";
    Input input = inputFor(store.path());
    input.partFiles.insert("Zwei", other.path());
    Document report(parseReport(text, "x.rpt"), input);
    const QList<QStringList> pages = printedPages(report);
    QCOMPARE(pages.size(), 2);
    QCOMPARE(pages[0], QStringList({"Erster", "Nr.", "1", "2", "3"}));
    QCOMPARE(pages[1], QStringList({"Zweiter", "Nr.", "2", "1"}));
  }

  void valuesOfOtherTablesStandEverywhere() {
    const Store store;
    const auto report =
        made(store,
             "Werte\n  SELECT Sum(Betrag) AS Alles, Count(*) AS Zahl FROM Posten\n"
             "Seitenkopf\n  Text 0 0 * 5 \"{Alles:Währung} aus {Zahl}\"\nZeile\n  Text 0 0 * 5 \"{Zahl}\"\n");
    QCOMPARE(printedLines(*report), QStringList({sumOf(1, kRows).toCurrencyText() + " aus 400", "400"}));
  }

  void conditionsLeaveOut() {
    const Store store;
    const auto report =
        made(store,
             "Abfrage\n  SELECT ID, IIf(ID = 2, 'x', '') AS Da FROM Posten WHERE ID < 4 ORDER BY ID\n"
             "Zeile\n  Text 0 0 20 5 \"{ID}\"\n  Text 30 0 20 5 \"da\" wenn Da\n  Text 60 0 20 5 \"fehlt\" "
             "wenn nicht Da\n  Höhe 6\n");
    QCOMPARE(printedLines(*report), QStringList({"1|fehlt", "2|da", "3|fehlt"}));
  }

  void barsAreEncodedAndOthersAreNamed() {
    const Store store;
    const auto report = made(
        store,
        "Abfrage\n  SELECT ID FROM Posten WHERE ID = 7\nZeile\n  Strichcode 0 0 60 15 Code128 \"BC.{ID}\"\n");
    report->finish();
    const auto bars = itemsOf<BarItem>(report->page(0));
    QCOMPARE(bars.size(), size_t(1));
    QCOMPARE(bars[0].text, "BC.7");
    QCOMPARE(barsOn(painted(report->page(0), report->fonts())), "BC.7");
  }

  void barsThatCantBeDrawnSayWhy_data() {
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("content");
    QTest::addColumn<QString>("said");
    QTest::newRow("letters") << "EAN13"
                             << "Müller"
                             << "(\"Müller\" lässt sich nicht als EAN 13 drucken)";
    QTest::newRow("too short") << "EAN13"
                               << "1234"
                               << "(\"1234\" lässt sich nicht als EAN 13 drucken)";
    QTest::newRow("another alphabet") << "Code128"
                                      << "Ω"
                                      << "(\"Ω\" lässt sich nicht als Code 128 drucken)";
    QTest::newRow("lower case") << "Code39"
                                << "a_b"
                                << "(\"a_b\" lässt sich nicht als Code 39 drucken)";
  }
  /// The page itself says it: what is painted is that sentence, where the bars would stand.
  void barsThatCantBeDrawnSayWhy() {
    QFETCH(QString, kind);
    QFETCH(QString, content);
    QFETCH(QString, said);
    const Store store;
    const auto report =
        made(store, "Abfrage\n  SELECT ID FROM Posten WHERE ID = 7\nZeile\n  Strichcode 10 20 100 15 " +
                        kind + " \"" + content + "\" ohnetext\n");
    report->finish();
    const PageItems page = report->page(0);
    const auto bars = itemsOf<BarItem>(page);
    QCOMPARE(bars.size(), size_t(1));
    TextItem sentence;
    sentence.base = bars[0].place.topLeft() + QPointF(0, report->fonts().ascent(0));
    sentence.text = said;
    sentence.colour = Qt::darkGray;
    const QImage seen = painted(page, report->fonts());
    QCOMPARE(seen, painted({{sentence}}, report->fonts()));
    QVERIFY(seen != painted({}, report->fonts()));
  }

  void mistakesAreNamed_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("start");
    const auto row = [](const char* text, const char* start) { QTest::newRow(text) << text << start; };
    row("Abfrage\n  SELECT Farbe FROM Posten\nZeile\n  Text 0 0 * 5 \"{Farbe}\"\n", "3061 x.rpt, Zeile 1: ");
    row("Abfrage\n  SELEKT\nZeile\n  Text 0 0 * 5 \"a\"\n", "3078 x.rpt, Zeile 1: ");
    row("Abfrage\n  SELECT ID FROM\nZeile\n  Höhe 4\n", "3075 x.rpt, Zeile 1: ");
    row("Tabelle Fehlt\nZeile\n  Höhe 5\n", "3078 x.rpt, Zeile 1: ");
    row("Werte\n  SELECT x FROM Posten\nZeile\n  Höhe 5\n", "3061 x.rpt, Zeile 1: ");
    row("Tabelle Posten\nSpalten\n  \"A\" Farbe 20\n",
        "321 x.rpt, Zeile 3: Die Spalte \"Farbe\" gibt es nicht.");
    row("Tabelle Posten\nSpalten\n  \"A\" \"{ID}x\" 20 Summe\n",
        "321 x.rpt, Zeile 3: Summieren lässt sich nur eine Spalte der Abfrage.");
    row("Tabelle Posten\nSpalten\n  \"A\" ID 200\n",
        "321 x.rpt, Zeile 3: Die Spalten sind zusammen breiter als die Seite.");
    row("Tabelle Posten\nZeile\n  Text 0 0 * 5 \"{Summe(ID)}\"\n",
        "321 x.rpt, Zeile 3: Summen und Anzahl sind erst am Ende der Zeilen bekannt.");
    row("Tabelle Posten\nEnde\n  Text 0 0 * 5 \"{Summe(Farbe)}\"\n",
        "321 x.rpt, Zeile 3: Die Spalte \"Farbe\" gibt es nicht.");
    row("Seitenkopf\n  Höhe 500\nTabelle Posten\nZeile\n  Höhe 5\n",
        "321 x.rpt: Seitenkopf und Seitenfuß lassen keinen Platz auf der Seite.");
    row("Abfrage\n  SELECT ID FROM Posten WHERE Tag = {Tag}\nZeile\n  Höhe 4\n",
        "321 x.rpt, Zeile 1: Den Parameter \"Tag\" gibt es nicht.");
  }

  void mistakesAreNamed() {
    const Store store;
    QFETCH(QString, text);
    QFETCH(QString, start);
    const QString message = errorOf(store, text);
    QVERIFY2(message.startsWith(start), qPrintable(message));
  }

  void anUnreadableDataFileIsNamed() {
    try {
      Document report(parseReport(kTable + "Zeile\n  Höhe 5\n", "x.rpt"), inputFor("/nirgends/daten.qkk"));
      QFAIL("no error");
    } catch (const Error& error) {
      QVERIFY2(error.description().startsWith("Die Datendatei \"/nirgends/daten.qkk\" ist nicht zu lesen: "),
               qPrintable(error.description()));
    }
  }

  void theFirstPageComesBeforeTheRest() {
    const Store store;
    const auto report = made(store, kTable + "Spalten\n  \"Nr.\" ID 20\n");
    QVERIFY(report->waitForPage(0));
    QCOMPARE(report->pageCount(), 1);
    QVERIFY(!report->isComplete());
    QCOMPARE(linesOf(report->page(0)).first(), "Nr.");
    report->finish();
    QVERIFY(report->isComplete());
    QVERIFY(report->pageCount() > 5);
    QVERIFY(!report->waitForPage(100));
  }

  void pagesComeFromTheEventLoopAndCanBeStopped() {
    const Store store;
    const auto report = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n");
    QSignalSpy grown(report.get(), &Document::grown), completed(report.get(), &Document::completed);
    report->start();
    QVERIFY(completed.wait());
    QVERIFY(grown.size() >= 2);
    const auto stopped = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n");
    connect(stopped.get(), &Document::grown, stopped.get(), &Document::stop);
    QSignalSpy first(stopped.get(), &Document::grown);
    stopped->start();
    QVERIFY(first.wait());
    QCOMPARE(stopped->pageCount(), 1);
    QVERIFY(stopped->isStopped());
    QVERIFY(linesOf(stopped->page(0)).last().endsWith("von …"));
  }

  void aRowTallerThanThePageDoesntHoldUpTheRest() {
    const Store store;
    const auto report = made(
        store, "Seite 60 60\n  Ränder 5 5 5 5\n" + kTable + "Spalten\n  \"Nr.\" ID 12\n  \"Name\" Name 12\n");
    report->finish();
    QVERIFY(report->isComplete());
  }

  /// Written while it is laid out, and again when all pages are known: the same file.
  void thePdfHasAllPages() {
    const Store store;
    const auto report = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n  \"Betrag\" Betrag 30\n");
    const QByteArray pdf = pdfOf(*report);
    const int pages = report->pageCount();
    QVERIFY(pages > 5);
    QStringList expected;
    for (const QStringList& page : printedPages(*report)) expected << page;
    QCOMPARE(sorted(PdfReader(pdf).lines()), sorted(expected.replaceInStrings("|", " ")));
    QVERIFY(expected.contains(QString("Seite %1 von %1").arg(pages)));
    QCOMPARE(pdfOf(*report), pdf);
  }

  void aPdfSaysHowFarItIsAndCanBeStopped() {
    const Store store;
    const auto report = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n");
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    int asked = 0;
    QVERIFY(report->writePdf(pdf, "Liste", [&](int done, int all) {
      ++asked;
      return done == asked && all == (report->isComplete() ? report->pageCount() : 0);
    }));
    QCOMPARE(asked, report->pageCount());
    const auto other = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n");
    QVERIFY(!other->writePdf(pdf, "Liste", [](int done, int) { return done < 2; }));
    QCOMPARE(other->pageCount(), 2);
  }

  /// Rows too may name the number of pages: nothing is written before it is known.
  void rowsThatNameTheNumberOfPagesAreRight() {
    const Store store;
    const QString rows = "Zeile\n  Text 0 0 * 40 \"{ID}: {Seite} von {Seiten}\"\n";
    const auto report = made(store, "Abfrage\n  SELECT ID FROM Posten WHERE ID < 20 ORDER BY ID\n" + rows);
    const QStringList lines = PdfReader(pdfOf(*report)).lines();
    QCOMPARE(lines.size(), 19);
    QCOMPARE(report->pageCount(), 4);
    QCOMPARE(lines.first(), "1: 1 von 4");
    QCOMPARE(lines[6], "7: 2 von 4");  // it was tried on the first page before
    QCOMPARE(lines.last(), "19: 4 von 4");
    const auto stopped = made(store, kHead + kTable + rows);
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QVERIFY(!stopped->writePdf(pdf, "Liste", [](int done, int all) { return done > 0 || all > 0; }));
  }

  void aStoppedReportIsWrittenAsFarAsItIs() {
    const Store store;
    const auto report = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n");
    QVERIFY(report->waitForPage(1));
    report->stop();
    const QStringList lines = PdfReader(pdfOf(*report)).lines();
    QVERIFY(lines.contains("Seite 2 von …"));
    QVERIFY(!lines.contains("Seite 3 von …"));
  }

  void wholeNumbersAddUp() {
    const Store store;
    const auto report =
        made(store, kTable + "Spalten\n  \"Nr.\" ID 20 Summe\n  Gesamt \"Gesamt {Anzahl}\"\n");
    const QString sum = QString::number(kRows * (kRows + 1) / 2);
    QCOMPARE(printedPages(*report).last().last().section(u'|', -1), sum);
  }

  void aGridIsPrintedAsItStands() {
    GridTable table{
        "Serien", {"Müller, Jörg", "22.11.2026"}, {{"Ergebnis", 100, Align::Right}, {"Name", 300}}, {}};
    for (int i = 0; i < 120; ++i) table.rows.push_back({QString::number(i), "Zeile"});
    const GridReport grid = gridReport(table);
    Input input;
    input.table = grid.rows;
    Document report(grid.definition, input);
    const QList<QStringList> pages = printedPages(report);
    QVERIFY(pages.size() > 1);
    QCOMPARE(pages[1].first(3), QStringList({"Serien", "Müller, Jörg", "22.11.2026"}));
    QCOMPARE(pages[0][3], "Ergebnis|Name");
    QCOMPARE(pages[0][4], "0|Zeile");
    QCOMPARE(pages.last().sliced(pages.last().size() - 2),
             QStringList({"119|Zeile", QString("Seite %1 von %1").arg(pages.size())}));
  }

  /// The picture itself: ink where texts stand, nothing beyond the margins, whatever the resolution.
  void thePictureIsThatOfThePage() {
    const Store store;
    const auto report = made(store, kHead + kTable + "Spalten\n  \"Nr.\" ID 20\n  \"Betrag\" Betrag 30\n");
    report->finish();
    for (const int dotsPerInch : {75, 150}) {
      QImage sheet((report->millimetres() * dotsPerInch / 25.4).toSize(), QImage::Format_RGB32);
      sheet.setDotsPerMeterX(qRound(dotsPerInch / 0.0254));
      sheet.setDotsPerMeterY(qRound(dotsPerInch / 0.0254));
      sheet.fill(Qt::white);
      QPainter painter(&sheet);
      report->paint(painter, 0);
      painter.end();
      const double scale = dotsPerInch / double(kUnitsPerInch);
      const PageItems items = report->page(0);
      for (const TextItem& text : itemsOf<TextItem>(items)) {
        int ink = 0;
        for (int y = int(text.place.top() * scale); y < int(text.place.bottom() * scale); ++y)
          for (int x = int(text.place.left() * scale); x < int(text.place.right() * scale); ++x)
            ink += qGray(sheet.pixel(x, y)) < 160;
        QVERIFY2(ink > 2, qPrintable(text.text));
      }
      const int margin = int(14 / 25.4 * dotsPerInch);
      for (int y = 0; y < sheet.height(); ++y)
        for (int x = 0; x < margin; ++x) QCOMPARE(sheet.pixelColor(x, y), QColor(Qt::white));
    }
  }
};

QTEST_MAIN(TestReportPages)
#include "test_report_pages.moc"
