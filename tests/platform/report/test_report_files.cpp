// Report files: what can be written, and what is said to whom who writes something else.
#include <QRandomGenerator>
#include <QTest>

#include "platform/report/formats.h"
#include "platform/report/parser.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "tests/support/failing_files.h"

using namespace qk;
using namespace qk::report;

namespace {

const char* const kWhole = R"(# Ein Bericht mit allem.
Bericht "Liste der Orte"
Seite A5 quer
  Ränder 10 11 12 13,5
  Schrift "DejaVu Sans" 8,5
Parameter Tag
Werte
  SELECT Titel AS Kopf FROM Angaben
Seitenkopf
  Text 0 0 * 6 "{Kopf} ""wörtlich"" {{" fett 12 Punkt Farbe #1F3A5F
  Strich 0 7 * Stärke 0,3 grau
Seitenfuß
  Text 0 0 * 5 "Seite {Seite} von {Seiten}" rechts
Abfrage
  SELECT Name, [Zahl der Leute] FROM Orte
  WHERE Seit = {Tag}
Gruppe Name neue Seite
  Titel "{Name}"
  Summe "Summe {Name}"
Gruppenkopf
  Kasten 0 0 * 3 gefüllt #EEEEEE
Gruppenfuß
  Text 0 0 * 4 "{Anzahl} Zeilen" wenn Anzahl
Spalten
  "Ort"    Name              *  einzeilig
  "Leute"  [Zahl der Leute]  20 rechts #.##0 Summe
  "Code"   Name              40 Code39 Höhe 6
  Gesamt "Alle"
Zeile
  Werte 0 0 * 4 E 1 3 je 2 Format 0,0 7 Punkt
Teil "Anhang" neue Seite
  Überschrift "Bilder"
  Leer "Keine."
  Weglassen wenn leer
  Nebeneinander 3 Abstand 2,5
Tabelle Bilder
Zeile
  Bild 0 0 30 20 "{Datei}"
  Strichcode 0 21 30 9 EAN13 "{Nummer}" ohneText wenn nicht Leer
)";

QString errorOf(const QString& text) {
  try {
    parseReport(text, "x.rpt");
    return {};
  } catch (const Error& error) {
    return (error.number() == 321 ? QString() : QString::number(error.number()) + " ") + error.description();
  }
}

}  // namespace

class TestReportFiles : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everythingIsRead() {
    const Definition report = parseReport(kWhole, "x.rpt");
    QCOMPARE(report.title, "Liste der Orte");
    QCOMPARE(report.page, QSizeF(210, 148));
    QCOMPARE(report.margins, QMarginsF(13.5, 10, 11, 12));
    QCOMPARE(report.font.family, "DejaVu Sans");
    QCOMPARE(report.font.points, 8.5);
    QCOMPARE(report.parameters.size(), size_t(1));
    QCOMPARE(report.values.front().query, "SELECT Titel AS Kopf FROM Angaben");
    QCOMPARE(report.parts.size(), size_t(2));
    const auto& head = std::get<TextElement>(report.pageHead.elements[0].shape);
    QCOMPARE(head.text.pieces[0].text, "Kopf");
    QCOMPARE(head.text.pieces[1].text, " \"wörtlich\" {");
    QVERIFY(head.style.bold);
    QCOMPARE(head.style.points, 12.0);
    QCOMPARE(head.style.colour, QColor(0x1F, 0x3A, 0x5F));
    QVERIFY(report.pageHead.elements[0].place.width < 0);
    const Part& main = report.parts[0];
    QCOMPARE(main.query, "SELECT Name, [Zahl der Leute] FROM Orte\nWHERE Seit = {Tag}");
    QVERIFY(main.groups[0].newPage);
    QCOMPARE(main.groups[0].foot.elements[0].when->value.pieces[0].kind, Piece::Kind::Count);
    QCOMPARE(main.columns.size(), size_t(3));
    QVERIFY(main.columns[0].share && main.columns[0].oneLine);
    QCOMPARE(main.columns[1].value.pieces[0].text, "Zahl der Leute");
    QCOMPARE(*main.columns[1].value.pieces[0].format, (Format{Format::Kind::Number, 0, true}));
    QVERIFY(main.columns[1].summed);
    QVERIFY(main.columns[2].bars == Symbology::Code39);
    QCOMPARE(std::get<ValuesElement>(main.row.elements[0].shape).values.size(), size_t(3));
    const Part& second = report.parts[1];
    QVERIFY(second.newPage && second.leaveOut);
    QCOMPARE(second.sideBySide, 3);
    QCOMPARE(second.gap, 2.5);
    QCOMPARE(second.query, "Bilder");
    QVERIFY(second.row.elements[1].when->negated);
    QVERIFY(!std::get<BarElement>(second.row.elements[1].shape).withText);
  }

  void mistakesNameFileAndLine_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("message");
    const auto row = [](const char* text, const char* message) { QTest::newRow(text) << text << message; };
    row("", "x.rpt: Der Bericht enthält keine Abfrage und keinen Teil.");
    row("Quatsch", "x.rpt, Zeile 1: Den Abschnitt \"Quatsch\" gibt es nicht.");
    row("  Text 0 0 5 5 \"a\"",
        "x.rpt, Zeile 1: Diese Zeile ist eingerückt, gehört aber zu keinem Abschnitt.");
    row("Zeile\n  Text 0 0 5 \"a\"", "x.rpt, Zeile 2: Hier fehlt eine Zahl: Höhe in mm.");
    row("Zeile\n  Text 0 0 5 5 \"a", "x.rpt, Zeile 2: Das Anführungszeichen wird nicht geschlossen.");
    row("Zeile\n  Text 0 0 5 5 \"{a\"", "x.rpt, Zeile 2: Zu { fehlt }.");
    row("Zeile\n  Text 0 0 5 5 \"{}\"", "x.rpt, Zeile 2: Zwischen { und } fehlt ein Name.");
    row("Zeile\n  Text 0 0 5 5 \"{a:Blau}\"", "x.rpt, Zeile 2: Das Format \"Blau\" gibt es nicht.");
    row("Zeile\n  Text 0 0 5 5 \"a\" schräg", "x.rpt, Zeile 2: \"schräg\" ist hier nicht zu verstehen.");
    row("Zeile\n  Text 0 0 5 5 \"a\" 12", "x.rpt, Zeile 2: Hinter der Schriftgröße steht \"Punkt\".");
    row("Zeile\n  Text 0 0 5 5 \"a\" 1000 Punkt",
        "x.rpt, Zeile 2: Schriftgröße in Punkt muss zwischen 3 und 200 liegen.");
    row("Zeile\n  Text 0 0 5 5 \"a\" Farbe rot",
        "x.rpt, Zeile 2: Hinter Farbe steht eine Farbe wie #1F3A5F.");
    row("Zeile\n  Kreis 0 0 5",
        "x.rpt, Zeile 2: \"Kreis\" gibt es hier nicht. Erlaubt sind Text, Strich, Kasten, "
        "Bild, Strichcode, Werte, Höhe und wenn.");
    row("Zeile\n  Strichcode 0 0 9 9 QR \"a\"",
        "x.rpt, Zeile 2: Einen Strichcode gibt es als Code128, Code39 oder EAN13.");
    row("Zeile\n  Werte 0 0 9 9 E 1 9",
        "x.rpt, Zeile 2: Hinter den Nummern steht \"je\" und wie viele in einer Zeile "
        "stehen.");
    row("Zeile\n  Werte 0 0 9 9 E 1 9 je 3 gleiche Ziffern", "x.rpt, Zeile 2: Es heißt: gleiche Stellen");
    row("Seite B7", "x.rpt, Zeile 1: Hinter Seite steht A4, A5, A6 oder Breite und Höhe in mm.");
    row("Seite A4\n  Ränder 1 2 3", "x.rpt, Zeile 2: Hier fehlt eine Zahl: Rand links in mm.");
    row("Seite A5\n  Ränder 0 80 0 80\nZeile\n  Höhe 4",
        "x.rpt: Die Ränder lassen keinen Platz auf der Seite.");
    row("Abfrage\nZeile", "x.rpt, Zeile 1: Die Abfrage fehlt.");
    row("Abfrage", "x.rpt, Zeile 1: Die Abfrage fehlt.");
    row("Abfrage\n  a\nAbfrage\n  b", "x.rpt, Zeile 3: Dieser Teil hat schon eine Abfrage.");
    row("Gruppenfuß", "x.rpt, Zeile 1: Davor fehlt der Abschnitt Gruppe.");
    row("Spalten\n  \"A\" a 10", "x.rpt: Zu den Spalten fehlt die Abfrage.");
    row("Tabelle t\nSpalten\n  \"A\" a", "x.rpt, Zeile 3: Hier fehlt eine Zahl: Breite in mm oder *.");
    row("Tabelle t\nSpalten\n  \"A\" a 10 blau", "x.rpt, Zeile 3: \"blau\" ist hier nicht zu verstehen.");
    row("Tabelle t\nSpalten\n  \"A\" \"{a} {b}\" 10 Währung",
        "x.rpt, Zeile 3: Das Format steht hier im Text: {Name:Format}.");
    row("Teil \"a\" neue Zeile", "x.rpt, Zeile 1: Es heißt: neue Seite");
  }

  void mistakesNameFileAndLine() {
    QFETCH(QString, text);
    QFETCH(QString, message);
    QCOMPARE(errorOf(text), message);
  }

  void aMissingFileIsNamed() {
    Files files;
    try {
      readReport(files, "/nirgends/fehlt.rpt");
      QFAIL("no error");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 53);
      QCOMPARE(error.description(), "fehlt.rpt: Die Berichtsdatei fehlt.");
    }
  }

  void whatIsNoTextIsNoReport() {
    QCOMPARE(errorOf(QString("Abfrage\n  a") + QChar(0)), "x.rpt: Die Datei ist kein Text.");
    QCOMPARE(errorOf(QString(2 << 20, 'x')), "x.rpt: Die Datei ist zu groß für einen Bericht.");
  }

  /// Whatever is cut, doubled or strewn in: a report or a message, never anything else.
  void mutilatedFilesNeverCrash() {
    QRandomGenerator random(20261122);
    const QStringList strewn = {"{",
                                "}",
                                "\"",
                                "[",
                                "]",
                                "*",
                                "\n",
                                "  ",
                                "-1",
                                "999999999999",
                                "NaN",
                                "#",
                                "{{",
                                "Ü",
                                QString(QChar(0xD800)),
                                "Teil \"x\"\n",
                                "Gruppe a\n",
                                "Weglassen wenn leer\n"};
    int good = 0;
    for (int i = 0; i < 4000; ++i) {
      QString text = kWhole;
      for (int wound = random.bounded(1, 6); wound > 0; --wound) {
        const int at = random.bounded(int(text.size()));
        const int length = random.bounded(0, 40);
        switch (random.bounded(3)) {
          case 0:
            text.remove(at, length);
            break;
          case 1:
            text.insert(at, strewn[random.bounded(int(strewn.size()))]);
            break;
          default:
            text.insert(random.bounded(int(text.size())), text.mid(at, length));
        }
      }
      const QString message = errorOf(text);
      good += message.isEmpty();
      QVERIFY2(message.isEmpty() || message.startsWith("x.rpt"), qPrintable(message));
    }
    QVERIFY(good > 50 && good < 3900);
  }

  void valuesAreWrittenGerman_data() {
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("format");
    QTest::addColumn<QString>("text");
    const QVariant money = QVariant::fromValue(Money::fromUnits(15734500));
    const QDateTime date(QDate(2026, 11, 5), QTime(9, 7));
    QTest::newRow("money") << money << ""
                           << "1.573,45 €";
    QTest::newRow("money number") << money << "0,0"
                                  << "1573,5";
    QTest::newRow("currency of a number") << QVariant(12.5) << "Währung"
                                          << "12,50 €";
    QTest::newRow("currency of a text") << QVariant("12,5") << "Currency"
                                        << "12,50 €";
    QTest::newRow("no currency") << QVariant("viel") << "Währung"
                                 << "viel";
    QTest::newRow("number") << QVariant(9.7) << ""
                            << "9,7";
    QTest::newRow("grouped") << QVariant(12345678) << "#.##0"
                             << "12.345.678";
    QTest::newRow("decimals") << QVariant(12.345) << "#.##0,00"
                              << "12,35";
    QTest::newRow("date") << QVariant(date) << "Datum"
                          << "05.11.2026";
    QTest::newRow("date and time") << QVariant(date) << ""
                                   << "05.11.2026 09:07:00";
    QTest::newRow("time") << QVariant(date) << "Uhrzeit"
                          << "09:07";
    QTest::newRow("date of a text") << QVariant("5.11.26") << "Short Date"
                                    << "05.11.2026";
    QTest::newRow("no date") << QVariant("00.00.0000") << "Datum"
                             << "00.00.0000";
    QTest::newRow("yes") << QVariant(-1) << "Ja/Nein"
                         << "ja";
    QTest::newRow("no") << QVariant(0) << "Ja/Nein"
                        << "nein";
    QTest::newRow("null") << QVariant() << "Währung"
                          << "";
  }

  void valuesAreWrittenGerman() {
    QFETCH(QVariant, value);
    QFETCH(QString, format);
    QFETCH(QString, text);
    QCOMPARE(formatted(value, formatNamed(format)), text);
  }

  void conditionsAskForAValue() {
    QVERIFY(!isThere(QVariant()));
    QVERIFY(!isThere(0));
    QVERIFY(!isThere(" "));
    QVERIFY(!isThere(QVariant::fromValue(Money())));
    QVERIFY(isThere(-1));
    QVERIFY(isThere("x"));
    QVERIFY(isThere(QVariant::fromValue(Money::fromUnits(1))));
  }
};

QTEST_GUILESS_MAIN(TestReportFiles)
#include "test_report_files.moc"
