// What is read from a list as text, and what is refused.
#include <QtTest>

#include "masterdata/lists/csv_text.h"
#include "platform/runtime/formula_guard.h"
#include "platform/runtime/textcodec.h"

using namespace qk;
using namespace qk::lists;

namespace {

/// Cells by "|", rows by "/", a cell that is Null as "~".
QString shown(const std::vector<QStringList>& rows) {
  QStringList all;
  for (const QStringList& row : rows) {
    QStringList cells;
    for (const QString& cell : row) cells << (cell.isNull() ? "~" : cell);
    all << cells.join('|');
  }
  return all.join('/');
}

QByteArray utf16(const QString& text) {
  QStringEncoder encode(QStringEncoder::Utf16LE, QStringEncoder::Flag::WriteBom);
  return encode(text);
}

}  // namespace

class TestCsvText : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void reads_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("rows");
    QTest::addColumn<QString>("separator");
    QTest::addColumn<QString>("encoding");
    const auto row = [](const char* name, const QByteArray& bytes, const char* rows,
                        const char* separator = ";", const char* encoding = "UTF-8") {
      QTest::newRow(name) << bytes << QString(rows) << QString(separator) << QString(encoding);
    };
    row("semicolon", "Name;Ort\r\nMüller;Öd\r\n", "Name|Ort/Müller|Öd");
    row("comma", "Name,Ort\nA,B\n", "Name|Ort/A|B", ",");
    row("tab", "Name\tOrt\nA\tB\n", "Name|Ort/A|B", "\t");
    row("commas within semicolons", "Name;Ort\n\"A, B\";C\nD, E, F;G\n", "Name|Ort/A, B|C/D, E, F|G");
    row("separator within quotes of the heading", "\"a;b;c\",d\n1,2\n", "a;b;c|d/1|2", ",");
    row("told separator", "sep=,\r\na;b,c\r\n", "a;b|c", ",");
    row("told tab", "sep=\t\r\na;b\tc\r\n", "a;b|c", "\t");
    row("one column", "Name\nA\nB\n", "Name/A/B");
    row("carriage returns", "a;b\rc;d\r", "a|b/c|d");
    row("no end", "a;b\nc;d", "a|b/c|d");
    row("blank lines", "a;b\n\n\nc;d\n\n", "a|b/c|d");
    row("quotes doubled", "a;\"sagt \"\"ja\"\"\"\n", "a|sagt \"ja\"");
    row("line break in quotes", "a;\"b\r\nc\"\nd;e\n", "a|b\r\nc/d|e");
    row("quotes inside a bare cell", "a;Verein \"Adler\" e.V.\nb;c\n", "a|Verein \"Adler\" e.V./b|c");
    row("quotes at the end of a bare cell", "5\";x\ny;z\n", "5\"|x/y|z");
    row("blanks around", " a ; b c \n\" d \";e\n", "a|b c/ d |e");
    row("null and empty", "a;;\"\"\n;;\n", "a|~|/~|~|~");
    row("mark", "\xEF\xBB\xBFÄ;b\n", "Ä|b");
    row("utf-16", utf16("Ä;b\r\nc;€\r\n"), "Ä|b/c|€", ";", "UTF-16");
    row("windows", qk::toWindows1252("Größe;Straße €\n"), "Größe|Straße €", ";", "Windows-1252");
    row("umlauts of two characters", "Schu\xCC\x88tzen;O\xCC\x88\n", "Schützen|Ö");
    row("rows of other lengths", "a;b;c\nd\ne;f;g;h\n", "a|b|c/d/e|f|g|h");
  }
  void reads() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, rows);
    QFETCH(QString, separator);
    QFETCH(QString, encoding);
    const CsvReading reading = readCsv(bytes);
    QCOMPARE(reading.refusal, QString());
    QCOMPARE(shown(reading.table.rows), rows);
    QCOMPARE(QString(reading.table.separator), separator);
    QCOMPARE(reading.table.encoding, encoding);
    QCOMPARE(reading.table.lines.size(), reading.table.rows.size());
  }

  void refuses_data() {
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("refusal");
    const QString noText =
        "Die Datei ist keine Textdatei. Eine Arbeitsmappe bitte zuerst in der Tabellenkalkulation als CSV "
        "speichern.";
    QTest::newRow("nothing") << QByteArray() << "Die Datei ist leer.";
    QTest::newRow("only ends of lines") << QByteArray("\r\n\n\r") << "Die Datei ist leer.";
    QTest::newRow("workbook") << QByteArray("PK\x03\x04\x14\0\x06\0", 8) << noText;
    QTest::newRow("a nought in utf-16") << utf16(QString("a;") + QChar(u'\0')) << noText;
    QTest::newRow("half a character in utf-16")
        << utf16("a;b").chopped(1)
        << "Die Datei ist beschädigt: Ihr UTF-16-Text bricht mitten in einem Zeichen ab.";
    QTest::newRow("two encodings")
        << QByteArray("Müller;a\n") + qk::toWindows1252("Größl;b\n")
        << "In der Datei mischen sich zwei Zeichensätze (UTF-8 und ein anderer, zuerst in Zeile 2). Umlaute "
           "würden falsch gelesen. Bitte die Datei neu als CSV UTF-8 speichern.";
    QTest::newRow("a wrong mark") << QByteArray("\xEF\xBB\xBF") + "a;b\n" + qk::toWindows1252("Größl;b\n")
                                  << "Die Datei nennt sich UTF-8, ist es aber ab Zeile 2 nicht.";
    QTest::newRow("quote never closed")
        << QByteArray("a;b\nc;d\n\"e;f\ng;h\n")
        << "Zeile 3: Ein Anführungszeichen wird bis zum Ende der Datei nicht geschlossen.";
    QTest::newRow("text behind a quote")
        << QByteArray("a;b\n\"c\"d;e\n")
        << "Zeile 2: Hinter einem schließenden Anführungszeichen steht noch Text; davor fehlt eines, oder "
           "eines ist zu viel.";
    QTest::newRow("torn quote closed by the next")
        << QByteArray("a;b\n\"c;d\n\"e\";f\n")
        << "Zeile 3: Hinter einem schließenden Anführungszeichen steht noch Text; davor fehlt eines, oder "
           "eines ist zu viel.";
    QTest::newRow("too wide") << QByteArray(600, ';') << "Zeile 1: Die Zeile hat mehr als 500 Spalten.";
    QTest::newRow("too long") << QByteArray("a;b\n").repeated(kMostRows + 2)
                              << "Zeile 100002: Die Liste ist zu lang. Bitte auf mehrere Dateien aufteilen.";
    QTest::newRow("too big") << QByteArray(kLongestFile + 1, 'a') << "Die Datei ist größer als 64 MB.";
  }
  void refuses() {
    QFETCH(QByteArray, bytes);
    QFETCH(QString, refusal);
    const CsvReading reading = readCsv(bytes);
    QCOMPARE(reading.refusal, refusal);
    QVERIFY(reading.table.rows.empty());
  }

  void takesTheLongestList() {
    const CsvReading reading = readCsv(QByteArray("a;b\n").repeated(kMostRows + 1));
    QCOMPARE(reading.refusal, QString());
    QCOMPARE(reading.table.rows.size(), size_t{kMostRows} + 1);
  }

  void takesACellOfTenMegabytes() {
    const QByteArray cell(10 * 1024 * 1024, 'x');
    const CsvReading reading = readCsv("a;\"" + cell + "\"\nb;c\n");
    QCOMPARE(reading.refusal, QString());
    QCOMPARE(reading.table.rows.at(0).at(1).size(), cell.size());
    QCOMPARE(reading.table.rows.at(1).at(1), QString("c"));
  }

  void knowsTheLines() {
    const CsvReading reading = readCsv("sep=;\r\na;b\r\n\r\n\"c\r\nd\";e\r\nf;g\r\n");
    QCOMPARE(reading.table.lines, (std::vector<int>{2, 4, 6}));
  }

  void canBeStopped() {
    int asked = 0;
    const CsvReading reading = readCsv(QByteArray("a;b\n").repeated(90'000), [&asked](int done, int all) {
      ++asked;
      return done < all / 100;
    });
    QVERIFY(reading.stopped);
    QVERIFY(!reading.ok());
    QVERIFY(reading.table.rows.empty());
    QCOMPARE(asked, 1);
  }

  void writesWhatItReads() {
    const std::vector<QStringList> rows = {
        {"Name", "Ort", "c"},    {"Müller", QString(), ""}, {" a", "b;c", "d\"e\""},    {"a ", "b", "c"},
        {"f\r\ng", "\t", "h,i"}, {"€ Dvořák", "=1+1", "'"}, {QString(), "x", QString()}};
    const QByteArray text = writeCsv(rows);
    QVERIFY(text.startsWith("\xEF\xBB\xBFName;Ort;c\r\nMüller;;\"\"\r\n"));
    QCOMPARE(shown(readCsv(text).table.rows), shown(rows));
  }

  void guardsFormulas_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("cell");
    for (const char* text : {"=1+1", "+49 89", "-5", "@x", "\tx", "'=1", "''+2"})
      QTest::newRow(text) << QString(text) << QString("'") + text;
    for (const char* text : {"", "a=b", "O'Connor", "'s Gravenhage", "'"})
      QTest::newRow(text) << QString(text) << QString(text);
  }
  void guardsFormulas() {
    QFETCH(QString, text);
    QFETCH(QString, cell);
    QCOMPARE(guarded(text), cell);
    QCOMPARE(unguarded(cell), text);
  }
};

QTEST_APPLESS_MAIN(TestCsvText)
#include "test_csv_text.moc"
