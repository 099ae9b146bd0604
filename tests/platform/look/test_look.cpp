// The look: contrast of both schemes, German texts of the toolkit, font and distances.
#include <QApplication>
#include <QFontInfo>
#include <QLabel>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QStyle>
#include <QTest>
#include <cmath>

#include "platform/look/look.h"

using qk::look::Scheme;

namespace {

double luminance(const QColor& colour) {
  const auto channel = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * channel(colour.redF()) + 0.7152 * channel(colour.greenF()) +
         0.0722 * channel(colour.blueF());
}

double contrast(const QColor& one, const QColor& other) {
  const double a = luminance(one);
  const double b = luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
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

QTEST_MAIN(TestLook)
#include "test_look.moc"
