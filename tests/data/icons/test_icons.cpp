// The pictures: each key has one, it shows on light and on dark ground, and the marks differ in shape.
#include <QImage>
#include <QPainter>
#include <QSet>
#include <QTest>

#include "data/icons/icons.h"

namespace {

const QStringList kMarks{"pfeil", "go", "gruen", "stop"};
const QStringList kButtons{"exit",     "Speichern",  "Löschen",  "prsetup",       "Print1",     "vorschau",
                           "ErgEdit",  "schussbild", "euro",     "einstellungen", "linienstop", "anmelden",
                           "abmelden", "linienfrei", "wechseln", "printbarcode",  "kladde",     "Drucken"};

QImage drawn(const QString& key, QColor ground) {
  QImage image(48, 48, QImage::Format_ARGB32_Premultiplied);
  image.fill(ground);
  QPainter painter(&image);
  qk::icon(key).paint(&painter, image.rect());
  return image;
}

/// How many pixels only one of the two covers, whatever the colours.
int coveredByOneOnly(const QString& key, const QString& other) {
  const QImage a = drawn(key, Qt::transparent);
  const QImage b = drawn(other, Qt::transparent);
  int count = 0;
  for (int y = 0; y < a.height(); ++y)
    for (int x = 0; x < a.width(); ++x)
      if ((qAlpha(a.pixel(x, y)) > 127) != (qAlpha(b.pixel(x, y)) > 127)) ++count;
  return count;
}

int pixelsThatDiffer(const QImage& image, const QImage& other, int atLeast) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x)
      if (std::abs(qGray(image.pixel(x, y)) - qGray(other.pixel(x, y))) >= atLeast) ++count;
  return count;
}

}  // namespace

class TestIcons : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void eachPictureIsReadOnce() {
    QCOMPARE(qk::icon("go").cacheKey(), qk::icon("go").cacheKey());
    QVERIFY(qk::icon("go").cacheKey() != qk::icon("stop").cacheKey());
    QVERIFY(qk::icon("gibt es nicht").isNull() && qk::icon("gibt es nicht").isNull());
  }

  void everyKeyShowsOnEitherGround_data() {
    QTest::addColumn<QString>("key");
    for (const QString& key : kMarks + kButtons) QTest::newRow(qPrintable(key)) << key;
  }
  void everyKeyShowsOnEitherGround() {
    QFETCH(QString, key);
    QVERIFY(!qk::icon(key).isNull());
    for (const QColor ground : {QColor(0xf2f3f4), QColor(0x2a2d31)}) {
      QImage empty(48, 48, QImage::Format_ARGB32_Premultiplied);
      empty.fill(ground);
      QVERIFY(pixelsThatDiffer(drawn(key, ground), empty, 40) > 100);
    }
  }
  void marksDifferInShape() {
    for (const QString& one : kMarks)
      for (const QString& other : kMarks)
        if (one < other) QVERIFY2(coveredByOneOnly(one, other) > 150, qPrintable(one + " " + other));
  }
  void anUnknownKeyIsEmpty() { QVERIFY(qk::icon("unbekannt").isNull()); }
};

QTEST_MAIN(TestIcons)
#include "test_icons.moc"
