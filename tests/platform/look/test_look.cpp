// The look: contrast of both schemes, German texts of the toolkit, font and distances.
#include <QApplication>
#include <QFontInfo>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPainter>
#include <QPushButton>
#include <QStyle>
#include <QStyleOptionHeader>
#include <QTest>
#include <cmath>

#include "platform/look/contrast.h"
#include "platform/look/look.h"

using qk::look::contrast;
using qk::look::Scheme;

namespace {

/// The colours that a region of a picture shows.
QSet<QRgb> coloursIn(const QImage& picture, const QRect& region) {
  QSet<QRgb> colours;
  for (int y = region.top(); y <= region.bottom(); ++y)
    for (int x = region.left(); x <= region.right(); ++x) colours.insert(picture.pixel(x, y));
  return colours;
}

}  // namespace

class TestLook : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void textStandsOut_data();
  void textStandsOut();
  void theSystemDecidesOnTheScheme();
  void numbersAndBoxesAreGerman();
  void theFontIsTheHouses();
  void distancesFollowTheFont();
  void contrastOfKnownPairs();
  void unreadableTextKeepsItsHue_data();
  void unreadableTextKeepsItsHue();
  void cutTitleEndsInAnEllipsis();
  void markOfAChosenRowKeepsItsColours();
  void disabledIconsFade();
};

void TestLook::textStandsOut_data() {
  QTest::addColumn<Scheme>("scheme");
  QTest::newRow("light") << Scheme::Light;
  QTest::newRow("dark") << Scheme::Dark;
}

void TestLook::textStandsOut() {
  QFETCH(Scheme, scheme);
  const QPalette colours = qk::look::palette(scheme);
  const auto of = [&](QPalette::ColorRole text, QPalette::ColorRole ground,
                      QPalette::ColorGroup group = QPalette::Active) {
    return contrast(colours.color(group, text), colours.color(group, ground));
  };
  QVERIFY(of(QPalette::WindowText, QPalette::Window) >= 4.5);
  QVERIFY(of(QPalette::Text, QPalette::Base) >= 4.5);
  QVERIFY(of(QPalette::Text, QPalette::AlternateBase) >= 4.5);
  QVERIFY(of(QPalette::ButtonText, QPalette::Button) >= 4.5);
  QVERIFY(of(QPalette::HighlightedText, QPalette::Highlight) >= 4.5);
  QVERIFY(of(QPalette::ToolTipText, QPalette::ToolTipBase) >= 4.5);
  QVERIFY(of(QPalette::Link, QPalette::Window) >= 4.5);
  QVERIFY(of(QPalette::PlaceholderText, QPalette::Base) >= 4.5);
  QVERIFY(of(QPalette::WindowText, QPalette::Window, QPalette::Disabled) >= 3.0);
  QVERIFY(of(QPalette::ButtonText, QPalette::Button, QPalette::Disabled) >= 3.0);
}

void TestLook::theSystemDecidesOnTheScheme() {
  QApplication::setPalette(qk::look::palette(Scheme::Dark));
  QCOMPARE(qk::look::systemScheme(), Scheme::Dark);
  QApplication::setPalette(qk::look::palette(Scheme::Light));
  QCOMPARE(qk::look::systemScheme(), Scheme::Light);
}

void TestLook::numbersAndBoxesAreGerman() {
  qk::look::apply(*qApp, Scheme::Light);
  QCOMPARE(QLocale().toString(1573.45, 'f', 2), "1.573,45");
  QMessageBox box;
  box.setStandardButtons(QMessageBox::Yes | QMessageBox::Cancel);
  QCOMPARE(box.button(QMessageBox::Yes)->text(), "&Ja");
  QCOMPARE(box.button(QMessageBox::Cancel)->text().remove('&'), "Abbrechen");
}

void TestLook::theFontIsTheHouses() {
  qk::look::apply(*qApp, Scheme::Light);
  QVERIFY((QStringList{"Liberation Sans", "DejaVu Sans"}).contains(QApplication::font().family()));
  QCOMPARE(QApplication::font().pointSizeF(), 9.0);
  QVERIFY(!QFontInfo(QApplication::font()).fixedPitch());
}

void TestLook::distancesFollowTheFont() {
  qk::look::apply(*qApp, Scheme::Light);
  const auto metric = [](QStyle::PixelMetric which, double pointSize) {
    QLabel label;
    QFont font = label.font();
    font.setPointSizeF(pointSize);
    label.setFont(font);
    return QApplication::style()->pixelMetric(which, nullptr, &label);
  };
  for (const auto which : {QStyle::PM_LayoutLeftMargin, QStyle::PM_LayoutVerticalSpacing,
                           QStyle::PM_IndicatorWidth, QStyle::PM_ButtonIconSize}) {
    QVERIFY(metric(which, 9) > 0);
    QVERIFY(metric(which, 18) > metric(which, 9));
  }
}

void TestLook::contrastOfKnownPairs() {
  QCOMPARE(contrast(Qt::black, Qt::white), 21.0);
  QCOMPARE(contrast(Qt::white, Qt::black), 21.0);
  QCOMPARE(contrast(QColor(1, 2, 3), QColor(1, 2, 3)), 1.0);
  QCOMPARE(std::round(100 * contrast(QColor(0x777777), Qt::white)), 448.0);
}

void TestLook::unreadableTextKeepsItsHue_data() {
  QTest::addColumn<QColor>("text");
  QTest::addColumn<QColor>("ground");
  const QColor dark = qk::look::palette(Scheme::Dark).color(QPalette::Base);
  QTest::newRow("blue on dark") << QColor(0, 0, 255) << dark;
  QTest::newRow("magenta on white") << QColor(255, 0, 255) << QColor(Qt::white);
  QTest::newRow("black on dark") << QColor(Qt::black) << dark;
  QTest::newRow("white on white") << QColor(Qt::white) << QColor(Qt::white);
  QTest::newRow("yellow on grey") << QColor(255, 255, 0) << QColor(0x808080);
  QTest::newRow("red on red") << QColor(255, 0, 0) << QColor(255, 0, 0);
}

void TestLook::unreadableTextKeepsItsHue() {
  QFETCH(QColor, text);
  QFETCH(QColor, ground);
  QVERIFY(contrast(text, ground) < qk::look::kLeastContrast);
  const QColor shade = qk::look::readable(text, ground);
  QVERIFY(contrast(shade, ground) >= qk::look::kLeastContrast);
  // The nearest such shade, unless it had to go to the other end.
  QVERIFY(contrast(shade, ground) < qk::look::kLeastContrast + 0.3);
  if (text.hslHue() >= 0) QCOMPARE(shade.hslHue(), text.hslHue());
  QCOMPARE(qk::look::readable(shade, ground), shade);
}

void TestLook::cutTitleEndsInAnEllipsis() {
  qk::look::apply(*qApp, Scheme::Light);
  const QString title = "Eine lange Überschrift", cut = title.left(10) + QChar(0x2026);
  QHeaderView header(Qt::Horizontal);
  QStyleOptionHeader option;
  option.initFrom(&header);
  option.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
  option.rect = QRect(0, 0, header.fontMetrics().horizontalAdvance(cut) + 1, 20);
  const auto painted = [&](const QString& text) {
    option.text = text;
    QImage picture(option.rect.size(), QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    QApplication::style()->drawControl(QStyle::CE_HeaderLabel, &option, &painter, &header);
    return picture;
  };
  QCOMPARE(painted(title), painted(cut));
}

void TestLook::markOfAChosenRowKeepsItsColours() {
  qk::look::apply(*qApp, Scheme::Light);
  QPixmap mark(16, 16);
  mark.fill(Qt::green);
  const QImage chosen = QIcon(mark).pixmap(QSize(16, 16), QIcon::Selected).toImage();
  QCOMPARE(coloursIn(chosen, chosen.rect()), QSet<QRgb>{QColor(Qt::green).rgb()});
  mark.fill(Qt::transparent);
  const QImage ground = QIcon(mark).pixmap(QSize(16, 16), QIcon::Selected).toImage();
  QCOMPARE(ground.pixelColor(8, 8), qk::look::palette(Scheme::Light).color(QPalette::Base));
}

void TestLook::disabledIconsFade() {
  qk::look::apply(*qApp, Scheme::Dark);
  QPixmap mark(16, 16);
  mark.fill(Qt::gray);
  const QImage disabled = QIcon(mark).pixmap(QSize(16, 16), QIcon::Disabled).toImage();
  QVERIFY(disabled.pixelColor(8, 8).alphaF() < 0.6F);
}

QTEST_MAIN(TestLook)
#include "test_look.moc"
