// PDF files as other programs read them: texts, faces, places, pictures, bars.
#include <QBuffer>
#include <QFontDatabase>
#include <QPainter>
#include <QPdfWriter>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTest>
#include <QtEndian>

#include "platform/report/page_painter.h"
#include "platform/report/pdf_writer.h"
#include "tests/platform/report/pdf_reader.h"
#include "tests/support/error_of.h"
#include "tests/support/read_bars.h"

using namespace qk;
using namespace qk::report;
using namespace qk::test;

namespace {

constexpr double kMillimetre = kUnitsPerMillimetre;
const QSizeF kSheet = QSizeF(300, 400) * 25.4 / 72;  // in whole points, to which the toolkit rounds
const QString kMixed = "Jörg Größmann, Straße 5: 12,50 € – „Schützen“ (100 %) \\ Ärger";

const QString kLonely = "Liberation Solo", kKeptBack = "Liberation Kept";

constexpr double kSame = 3;    // per cent: rounding
constexpr double kDrawn = 20;  // and what readers make of letters that are small drawings

/// A page that is filled by hand, and the fonts of its texts.
struct Sheet {
  Fonts fonts;
  PageItems page;

  int font(const QString& family, bool bold = false, bool italic = false) {
    return fonts.number(family, 10, bold, italic);
  }
  /// One below the other.
  void put(const QString& text, int font, const QColor& colour = Qt::black) {
    const double y = (10 + 5.5 * double(page.items.size())) * kMillimetre;
    page.items.push_back(TextItem{{10 * kMillimetre, y}, {}, text, font, colour});
  }
  static QRectF box(double left, double top, double width, double height) {
    return {left * kMillimetre, top * kMillimetre, width * kMillimetre, height * kMillimetre};
  }

  QByteArray written() const {
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    PdfWriter writer(pdf, fonts, kSheet * kMillimetre);
    writer.page({writer.content(page)});
    writer.finish("Titel", {});
    return pdf.data();
  }
  /// The same by the toolkit, as it stands on the screen.
  QByteArray painted() const {
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    QPdfWriter writer(&pdf);
    writer.setResolution(kUnitsPerInch);
    writer.setPageLayout(QPageLayout(QPageSize(kSheet, QPageSize::Millimeter, {}, QPageSize::ExactMatch),
                                     QPageLayout::Portrait, {}));
    QPainter painter(&writer);
    paintPage(painter, page, fonts);
    painter.end();
    return pdf.data();
  }
};

/// How much of the ink isn't where it is on the other picture, in per cent.
double difference(const QImage& one, const QImage& other) {
  if (one.size() != other.size()) return 100;
  qint64 ink = 0, wrong = 0;
  for (int y = 0; y < one.height(); ++y) {
    const uchar *first = one.constScanLine(y), *second = other.constScanLine(y);
    for (int i = 0; i < 3 * one.width(); ++i) {
      ink += 255 - std::min(first[i], second[i]);
      wrong += std::abs(first[i] - second[i]);
    }
  }
  return ink == 0 ? 100 : 100 * double(wrong) / double(ink);
}

/// As paper shows it, against what the toolkit makes of it: in dots that are larger than what two ways of
/// rounding tell apart.
double difference(const Sheet& sheet) {
  constexpr int kDots = 400, kCoarser = 5;
  const auto seen = [](const QByteArray& pdf) {
    const QImage page = PdfReader(pdf).page(1, kDots);
    return page.scaled(page.size() / kCoarser, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
        .convertToFormat(QImage::Format_RGB888);
  };
  return difference(seen(sheet.written()), seen(sheet.painted()));
}

template <class Number>
QByteArray bigEndian(Number number) {
  const Number swapped = qToBigEndian(number);
  return {reinterpret_cast<const char*>(&swapped), sizeof swapped};
}

double inkIn(const QImage& page) {
  double ink = 0;
  for (int y = 0; y < page.height(); ++y)
    for (int x = 0; x < page.width(); ++x) ink += 255 - qGray(page.pixel(x, y));
  return ink;
}

QByteArray bigEndian(const QString& text) {
  QByteArray bytes;
  for (const QChar c : text) bytes += bigEndian(c.unicode());
  return bytes;
}

/// The upright face of Liberation Sans as a family of its own, without brothers: bold and slanting letters
/// are made of it by hand. `kind` is what its maker lets others do with it.
void addFamily(const QString& name, quint16 kind) {
  const QString known = "Liberation Sans";
  const QRawFont face = QRawFont::fromFont(QFont(known));
  const QList<QByteArray> tags = {"OS/2", "cmap", "cvt ", "fpgm", "glyf", "head", "hhea",
                                  "hmtx", "loca", "maxp", "name", "post", "prep"};
  QByteArray directory = QByteArray::fromHex("00010000") + bigEndian(quint16(tags.size())) + QByteArray(6, 0),
             content;
  const qsizetype start = directory.size() + 16 * tags.size();
  for (const QByteArray& tag : tags) {
    QByteArray table = face.fontTable(tag);
    if (tag == "name")
      table.replace(bigEndian(known), bigEndian(name)).replace(known.toLatin1(), name.toLatin1());
    if (tag == "OS/2") table.replace(8, 2, bigEndian(kind));
    directory += tag + QByteArray(4, 0) + bigEndian(quint32(start + content.size())) +
                 bigEndian(quint32(table.size()));
    content += table + QByteArray((4 - table.size() % 4) % 4, 0);
  }
  const int added = QFontDatabase::addApplicationFontFromData(directory + content);
  if (QFontDatabase::applicationFontFamilies(added) != QStringList(name)) failTest("no family " + name);
}

/// A device that is full after so many bytes.
class FullDevice : public QIODevice {
 public:
  explicit FullDevice(qint64 room) : room_(room) { open(WriteOnly | Unbuffered); }

 protected:
  qint64 readData(char*, qint64) override { return -1; }
  qint64 writeData(const char*, qint64 size) override {
    const qint64 taken = std::min(size, room_);
    room_ -= taken;
    return taken;
  }

 private:
  qint64 room_;
};

}  // namespace

class TestReportPdf : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    addFamily(kLonely, 0);
    addFamily(kKeptBack, 2);
  }

  void textsComeBackAsTheyWere_data() {
    QTest::addColumn<QString>("text");
    for (const char* text :
         {"Jörg Größmann, Straße 5: 12,50 € – „Schützen“ …", "(100 %) \\ ) ( [x] <y> {z} / # %",
          "Łódź Ōmura Đorđe", "Αθήνα Москва", "café naïve fi fl ffi"})
      QTest::newRow(text) << text;
    QTest::newRow("one beside the other") << "A B";
    QTest::newRow("no face has it") << "ab \U00020000 cd";
    QTest::newRow("what ends a line in other texts") << QString("a\u2028b\u2029c\u0085d");
  }
  void textsComeBackAsTheyWere() {
    QFETCH(const QString, text);
    QString shown = text;
    for (const char16_t c : {u'\u2028', u'\u2029', u'\u0085'}) shown.replace(c, u' ');
    for (const QString& family : {QString("Liberation Sans"), kLonely, kKeptBack}) {
      Sheet sheet;
      sheet.put(text, sheet.font(family));
      QCOMPARE(PdfReader(sheet.written()).lines(), QStringList(shown));
    }
  }

  void whatMustBeShapedComesBack() {
    const QStringList texts = {"e\u0301 x\u0302 a\u0308", "→ ☺ a", "Ωმ 字 b"};
    Sheet sheet;
    for (const QString& text : texts) sheet.put(text, sheet.font("Liberation Sans"));
    QCOMPARE(PdfReader(sheet.written()).lines(), texts);
  }

  void writingFromRightToLeftComesBack() {
    Sheet sheet;
    sheet.put("שלום", sheet.font("DejaVu Sans"));
    sheet.put("العربية", sheet.font("DejaVu Sans"));
    QStringList lines = PdfReader(sheet.written()).lines();
    for (QString& line : lines) line.remove(u'\u202B').remove(u'\u202C');  // the reader's own marks
    QCOMPARE(lines, QStringList({"שלום", "العربية"}));
  }

  /// Codes go through all bytes, those that mean something in a string too.
  void hundredsOfLettersComeBack() {
    for (const QString& family : {QString("DejaVu Sans"), kKeptBack}) {
      Sheet sheet;
      QStringList texts;
      const QRawFont face = QRawFont::fromFont(QFont(family));
      QString text;
      for (char16_t c = 0x21; c < 0x500 && texts.size() < 22; ++c) {
        if (!QChar(c).isLetterOrNumber() || QChar(c).isMark() || !face.supportsCharacter(QChar(c))) continue;
        text += QChar(c);
        if (text.size() == 32) texts << text, text.clear();
      }
      QVERIFY(texts.size() * 32 > 350);
      for (const QString& one : texts) sheet.put(one, sheet.font(family));
      QCOMPARE(PdfReader(sheet.written()).lines(), texts);
      QVERIFY(difference(sheet) < (family == kKeptBack ? kDrawn : kSame));
    }
  }

  /// Some readers take a bare end of line in a string for another one.
  void bytesThatMeanSomethingAreTold() {
    const PdfFace face(QRawFont::fromFont(QFont("Liberation Sans")), 0);
    std::string codes;
    for (const int code : {int('('), int(')'), int('\\'), int('\r'), 0x0141}) face.append(codes, code);
    const char told[] = "\0\\(\0\\)\0\\\\\0\\r\1A";
    QCOMPARE(codes, std::string(told, sizeof told - 1));
  }

  void lettersStandWhereTheScreenShowsThem_data() {
    QTest::addColumn<QString>("family");
    QTest::addColumn<bool>("bold");
    QTest::addColumn<bool>("italic");
    QTest::addColumn<double>("allowed");
    QTest::newRow("upright") << "Liberation Sans" << false << false << kSame;
    QTest::newRow("bold") << "Liberation Sans" << true << false << kSame;
    QTest::newRow("italic") << "Liberation Sans" << false << true << kSame;
    QTest::newRow("bold italic") << "Liberation Sans" << true << true << kSame;
    QTest::newRow("slanted by hand") << kLonely << false << true << kSame;
    QTest::newRow("drawn") << kKeptBack << false << false << kDrawn;
    QTest::newRow("drawn, slanted") << kKeptBack << false << true << kDrawn;
  }
  void lettersStandWhereTheScreenShowsThem() {
    QFETCH(const QString, family);
    QFETCH(const bool, bold);
    QFETCH(const bool, italic);
    QFETCH(const double, allowed);
    Sheet sheet;
    const int font = sheet.font(family, bold, italic);
    sheet.put(kMixed, font);
    sheet.put("שלום עולם abc", font);
    sheet.put("e\u0301 x\u0302 字 →", font);
    sheet.put("upright behind it", sheet.font("Liberation Sans"), QColor(200, 30, 60));
    const double found = difference(sheet);
    QVERIFY2(found < allowed, qPrintable(QString::number(found)));
  }

  void boldLettersAreMadeByHand() {
    double ink[2] = {};
    for (const bool bold : {false, true}) {
      Sheet sheet;
      sheet.put(kMixed, sheet.font(kLonely, bold));
      sheet.put(kMixed, sheet.font("Liberation Sans"));  // not this
      ink[bold] = inkIn(PdfReader(sheet.written()).page(1, 200));
    }
    QVERIFY2(ink[1] > 1.1 * ink[0], qPrintable(QString::number(ink[1] / ink[0])));
    QVERIFY2(ink[1] < 1.4 * ink[0], qPrintable(QString::number(ink[1] / ink[0])));
  }

  void facesAreEmbeddedOnceAndCutDown() {
    Sheet sheet;
    for (int i = 0; i < 20; ++i)
      sheet.put(kMixed, sheet.fonts.number("Liberation Sans", 6 + i, false, false));
    sheet.put(kMixed, sheet.font("Liberation Sans", true));
    const QByteArray pdf = sheet.written();
    QVERIFY2(pdf.size() < 30'000, qPrintable(QString::number(pdf.size())));
    const QStringList fonts = PdfReader(pdf).fonts().trimmed().split(u'\n').sliced(2);
    QCOMPARE(fonts.size(), 2);
    for (const QString& font : fonts)
      QVERIFY2(font.contains("CID TrueType") && font.contains("yes yes yes"), qPrintable(font));
    QVERIFY(fonts[0].section(u'+', 0, 0) != fonts[1].section(u'+', 0, 0));
  }

  void aFaceThatIsKeptBackIsDrawn() {
    Sheet sheet;
    sheet.put(kMixed, sheet.font(kKeptBack));
    const QString fonts = PdfReader(sheet.written()).fonts();
    QVERIFY2(fonts.contains("Type 3") && !fonts.contains("TrueType"), qPrintable(fonts));
  }

  void linesBoxesAndPicturesStandWhereTheScreenShowsThem() {
    Sheet sheet;
    const auto font = sheet.font("Liberation Sans");
    sheet.put("davor", font, QColor(0, 0, 160));
    auto& items = sheet.page.items;
    items.push_back(BoxItem{Sheet::box(10, 30, 60, 20), 0, Qt::black, QColor(0xE6, 0xEB, 0xF1)});
    items.push_back(BoxItem{Sheet::box(15, 35, 30, 20), 1 * kMillimetre, QColor(200, 0, 0), {}});
    items.push_back(
        BoxItem{Sheet::box(80, 30, 30, 20), 0.5 * kMillimetre, QColor(0, 0, 200), QColor(255, 255, 0)});
    sheet.page.items.push_back(
        LineItem{{10 * kMillimetre, 60 * kMillimetre, 100 * kMillimetre, 70 * kMillimetre},
                 0.8 * kMillimetre,
                 QColor(0, 120, 0)});
    items.push_back(LineItem{{10 * kMillimetre, 80 * kMillimetre, 100 * kMillimetre, 80 * kMillimetre},
                             0.1 * kMillimetre,
                             Qt::black});
    QImage picture(40, 20, QImage::Format_RGB32);
    for (int y = 0; y < 20; ++y)
      for (int x = 0; x < 40; ++x) picture.setPixel(x, y, qRgb(6 * x, 12 * y, 128));
    items.push_back(PictureItem{Sheet::box(10, 90, 40, 20), picture});
    QImage glass(30, 30, QImage::Format_ARGB32);
    glass.fill(QColor(255, 0, 0, 128));
    items.push_back(PictureItem{Sheet::box(40, 95, 30, 30), glass});
    items.push_back(
        TextItem{{15 * kMillimetre, 45 * kMillimetre}, {}, "auf dem Kasten", font, QColor(0, 0, 160)});
    const double found = difference(sheet);
    QVERIFY2(found < kSame, qPrintable(QString::number(found)));
  }

  void aPictureIsInTheFileOnce() {
    Sheet sheet;
    QImage one(64, 64, QImage::Format_RGB32), other(64, 64, QImage::Format_RGB32);
    one.fill(Qt::red);
    other.fill(Qt::blue);
    for (const QImage& picture : {one, other, one, one})
      sheet.page.items.push_back(
          PictureItem{Sheet::box(10, 10 + 30.0 * double(sheet.page.items.size()), 20, 20), picture});
    QCOMPARE(sheet.written().count("/Subtype/Image"), 2);
    QVERIFY(difference(sheet) < kSame);
  }

  void photographsAreCompressedAsSuchAndDrawingsStayExact() {
    QRandomGenerator random(7);
    QImage photograph(400, 300, QImage::Format_RGB32), drawing(400, 300, QImage::Format_RGB32);
    for (int y = 0; y < 300; ++y)
      for (int x = 0; x < 400; ++x) {
        const int grain = random.bounded(12);
        photograph.setPixel(x, y, qRgb(x / 2 + grain, y / 2 + grain, (x + y) / 4 + grain));
      }
    drawing.fill(Qt::white);
    for (int x = 0; x < 300; ++x) drawing.setPixel(x, x, qRgb(x % 251, 10, 20));
    for (const QImage& picture : {photograph, drawing}) {
      Sheet sheet;
      sheet.page.items.push_back(PictureItem{Sheet::box(10, 10, 80, 60), picture});
      const PdfReader pdf(sheet.written());
      QCOMPARE(pdf.pictures().contains(" jpeg "), picture == photograph);
      if (picture == drawing) QCOMPARE(pdf.picture().convertToFormat(QImage::Format_RGB32), drawing);
      if (picture == photograph) QVERIFY(difference(sheet) < kSame);
    }
  }

  void barsScanFromTheFile() {
    for (const auto& [kind, text] : {std::pair(Symbology::Code128, QString("BC.107.1.23")),
                                     std::pair(Symbology::Code39, QString("A107")),
                                     std::pair(Symbology::Ean13, QString("4006381333931"))}) {
      Sheet sheet;
      sheet.page.items.push_back(BoxItem{Sheet::box(0, 0, 1, 1), 0, Qt::black, QColor(255, 200, 0)});
      sheet.page.items.push_back(BarItem{Sheet::box(10, 20, 60, 15), kind, text});
      const PdfReader pdf(sheet.written());
      for (const int dots : {203, 300, 600}) QCOMPARE(barsOn(pdf.page(1, dots)), text);
      QCOMPARE(inkOn(pdf.page(1, 254)).top(), 200);
      QCOMPARE(inkOn(pdf.page(1, 254)).bottom(), 349);
    }
  }

  void barsThatCantBeDrawnSayWhy() {
    Sheet sheet;
    sheet.font("Liberation Sans");
    sheet.page.items.push_back(BarItem{Sheet::box(20, 20, 100, 15), Symbology::Ean13, "Müller"});
    QCOMPARE(PdfReader(sheet.written()).lines(),
             QStringList("(\"Müller\" lässt sich nicht als EAN 13 drucken)"));
    QVERIFY(difference(sheet) < kSame);
  }

  void theFileTellsWhatItIs() {
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    const Sheet sheet;
    PdfWriter writer(pdf, sheet.fonts, QSizeF(210, 297) * kMillimetre);
    writer.page({0, writer.content(sheet.page)});  // an empty page is one too
    writer.page({});
    writer.finish("Übersicht (Köln)", QDateTime(QDate(2026, 11, 22), QTime(10, 5), Qt::UTC));
    const QString info = PdfReader(pdf.data()).info();
    QVERIFY2(info.contains(QRegularExpression("Title: +Übersicht \\(Köln\\)\n")), qPrintable(info));
    for (const char* who : {"Creator", "Producer"})
      QVERIFY2(info.contains(QRegularExpression(QString("%1: +%2\n").arg(who, qApp->applicationName()))),
               qPrintable(info));
    QVERIFY2(info.contains(QRegularExpression("CreationDate: +Sun Nov 22 10:05:00 2026")), qPrintable(info));
    QVERIFY2(info.contains(QRegularExpression("Pages: +2\n")), qPrintable(info));
    QVERIFY2(info.contains("595.276 x 841.89 pts (A4)"), qPrintable(info));
  }

  void partsOfAPageStandOneOverTheOther() {
    QBuffer pdf;
    pdf.open(QIODevice::WriteOnly);
    Sheet below, above;
    below.page.items.push_back(BoxItem{Sheet::box(0, 0, 106, 142), 0, Qt::black, Qt::blue});
    above.page.items.push_back(BoxItem{Sheet::box(0, 0, 106, 70), 0, Qt::black, Qt::green});
    PdfWriter writer(pdf, below.fonts, kSheet * kMillimetre);
    const int over = writer.content(above.page);  // comes first
    writer.page({writer.content(below.page), over});
    writer.finish("", {});
    const QImage page = PdfReader(pdf.data()).page(1, 72);
    QCOMPARE(page.pixelColor(100, 100), QColor(Qt::green));
    QCOMPARE(page.pixelColor(100, 300), QColor(Qt::blue));
  }

  void aFullDiskIsSaid() {
    Sheet sheet;
    sheet.put(kMixed, sheet.font("Liberation Sans"));
    const auto write = [&](QIODevice& device) {
      PdfWriter writer(device, sheet.fonts, kSheet * kMillimetre);
      writer.page({writer.content(sheet.page)});
      writer.finish("", {});
    };
    const qint64 size = sheet.written().size();
    for (const qint64 room : {qint64(0), qint64(10), size / 2, size - 200}) {
      FullDevice device(room);
      QCOMPARE(errorOf([&] { write(device); }), 75);
    }
    QFile full("/dev/full");  // what is kept back until the end finds no room either
    QVERIFY(full.open(QIODevice::WriteOnly));
    QCOMPARE(errorOf([&] { write(full); }), 75);
  }
};

QTEST_MAIN(TestReportPdf)
#include "test_report_pdf.moc"
