// The targets on a sheet: which of a shooter's pictures it is, and where rings and hits stand on it.
#include <QGuiApplication>
#include <QImage>
#include <QTest>
#include <cmath>
#include <limits>

#include "evaluation/target_pictures.h"
#include "platform/dao/recordset.h"
#include "tests/evaluation/shooting_day.h"

using namespace qk;
using namespace qk::test;

namespace {

const QRgb kMark = QColor(0x1F, 0x3A, 0x5F).rgb();

QImage drawn(const std::vector<Treffer>& hits) {
  return QImage::fromData(scheibenbild(hits), "PNG");
}

/// The middle of what has the colour of a hit, from the middle of the picture, in parts of its half width.
QPointF markOf(const QImage& picture) {
  double x = 0, y = 0;
  int count = 0;
  for (int row = 0; row < picture.height(); ++row)
    for (int column = 0; column < picture.width(); ++column)
      if (picture.pixel(column, row) == kMark) x += column, y += row, ++count;
  if (count == 0) return {99, 99};
  const double half = picture.width() / 2.0;
  return {x / count / half - 1, y / count / half - 1};
}

}  // namespace

class TestTargetPictures : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void widthOfARing_data();
  void widthOfARing();
  void aHitStandsInItsPlace();
  void aHitBesideTheTarget();
  void whatCannotBeDrawn_data();
  void whatCannotBeDrawn();
  void theNewestOfEachDiscipline();
  void aRetryLeavesOneOfEach();
  void withoutPictures();
};

void TestTargetPictures::widthOfARing_data() {
  QTest::addColumn<QList<QPointF>>("hits");  // distance, value
  QTest::addColumn<double>("least");
  QTest::addColumn<double>("most");
  QTest::newRow("one ring out") << QList<QPointF>{{2500, 10.0}, {250, 10.9}} << 2400.0 << 2800.0;
  // It may stand for every hit between one ring and two.
  QTest::newRow("a whole value alone") << QList<QPointF>{{3750, 9}} << 1875.0 << 3750.0;
  QTest::newRow("tenths") << QList<QPointF>{{7900, 10.0}, {15900, 9.0}, {4100, 10.4}} << 7800.0 << 8300.0;
  QTest::newRow("whole rings") << QList<QPointF>{{1200, 10}, {3700, 9}, {6200, 8}} << 2300.0 << 2700.0;
  QTest::newRow("a miss tells nothing") << QList<QPointF>{{3700, 9.5}, {99000, 0}} << 2400.0 << 2700.0;
  QTest::newRow("misses alone") << QList<QPointF>{{99000, 0}} << 0.0 << 0.0;
  QTest::newRow("the very middle") << QList<QPointF>{{0, 10.9}} << 0.0 << 0.0;
  QTest::newRow("none") << QList<QPointF>{} << 0.0 << 0.0;
}

void TestTargetPictures::widthOfARing() {
  QFETCH(const QList<QPointF>, hits);
  QFETCH(const double, least);
  QFETCH(const double, most);
  std::vector<Treffer> treffer;
  for (const QPointF& hit : hits) treffer.push_back({hit.x(), 0, hit.y()});
  const double width = ringbreite(treffer);
  QVERIFY2(width >= least && width <= most, qPrintable(QString::number(width)));
}

/// 9,0 lies two rings out: right of the middle, and above it.
void TestTargetPictures::aHitStandsInItsPlace() {
  const QPointF right = markOf(drawn({{5000, 0, 9.0}}));
  QVERIFY2(right.x() > 0.45 && right.x() < 0.7, qPrintable(QString::number(right.x())));
  QVERIFY(std::abs(right.y()) < 0.01);
  const QPointF above = markOf(drawn({{0, 5000, 9.0}}));
  QVERIFY(above.y() < -0.45 && above.y() > -0.7);
  QVERIFY(std::abs(above.x()) < 0.01);
  const QPointF middle = markOf(drawn({{0, 0, 10.9}}));
  QVERIFY(std::hypot(middle.x(), middle.y()) < 0.01);
}

void TestTargetPictures::aHitBesideTheTarget() {
  const QImage picture = drawn({{2500, 0, 10.0}, {-60000, 0, 0}});
  int left = picture.width();
  for (int x = 0; x < picture.width() / 2; ++x)
    if (picture.pixel(x, picture.height() / 2) == kMark) left = std::min(left, x);
  QVERIFY2(left > 0 && left < picture.width() / 10, qPrintable(QString::number(left)));
}

void TestTargetPictures::whatCannotBeDrawn_data() {
  QTest::addColumn<double>("x");
  QTest::newRow("no number") << std::nan("");
  QTest::newRow("endless") << std::numeric_limits<double>::infinity();
  QTest::newRow("beyond measure") << 1e308;
}

void TestTargetPictures::whatCannotBeDrawn() {
  QFETCH(const double, x);
  const QImage picture = drawn({{x, x, 9.0}, {0, 0, 10.9}});
  QCOMPARE(picture.size(), QSize(720, 720));
  QVERIFY(std::abs(markOf(picture).x()) < 0.01);
}

void TestTargetPictures::theNewestOfEachDiscipline() {
  ShootingDay day;
  const auto add = [&](const QString& number, const QString& discipline, const QVariant& when, int hits) {
    const auto target = day.wettkampf->openRecordset("Grafik_Scheibe");
    target->addNew();
    target->setValue("StartNr", number);
    target->setValue("Wettkampf", discipline);
    target->setValue("Datum", when);
    target->setValue("ringem", hits * 10);
    const int id = target->value("ID").toInt();
    target->update();
    const auto shots = day.wettkampf->openRecordset("Grafik_Schuss");
    for (int i = 0; i < hits; ++i) {
      shots->addNew();
      shots->setValue("ScheibenID", id);
      shots->update();
    }
  };
  const auto at = [](int hour) { return QDateTime(QDate(2026, 11, 21), QTime(hour, 0)); };
  add("107", "LG Serie", at(11), 3);
  add("107", "lg serie", at(12), 4);  // the newest, however written
  add("107", "LG Serie", at(10), 5);
  add("107", "LG Serie", QVariant(), 6);
  add("108", "LG Serie", at(13), 7);
  add("107", "LP", at(14), 8);
  add("107", "Auflage", at(9), 1);
  add("107", "Auflage", at(9), 2);  // the later one of two at a time
  const auto druck = dao::Database::open(day.printTemplate());
  schreibeScheibenbilder(*day.wettkampf, *druck, "107", {"LG Serie", "LG Teiler", "Auflage", "LG Serie"});
  QCOMPARE(read(*druck, "Select * from Scheibenbilder order by ID", {"Disziplin", "Schuss", "Ringe"}),
           (QStringList{"LG Serie|4|40", "Auflage|2|20"}));
  const auto rows = druck->openRecordset("Scheibenbilder");
  QVERIFY(!QImage::fromData(rows->value("Bild").toByteArray()).isNull());
  QCOMPARE(rows->value("Datum").toDateTime(), at(12));
}

void TestTargetPictures::aRetryLeavesOneOfEach() {
  ShootingDay day;
  day.wettkampf->execute("INSERT INTO Grafik_Scheibe (StartNr, Wettkampf) VALUES ('107', 'LG Serie')");
  const auto druck = dao::Database::open(day.printTemplate());
  for (int i = 0; i < 2; ++i) schreibeScheibenbilder(*day.wettkampf, *druck, "107", {"LG Serie"});
  QCOMPARE(read(*druck, "Scheibenbilder", {"Disziplin", "Datum", "Schuss"}), QStringList{"LG Serie|Null|0"});
}

void TestTargetPictures::withoutPictures() {
  ShootingDay day;
  const auto druck = dao::Database::open(day.printTemplate());
  schreibeScheibenbilder(*day.wettkampf, *druck, "107", {"LG Serie"});
  QCOMPARE(read(*druck, "Scheibenbilder", {"ID"}), QStringList());
  day.wettkampf->execute("INSERT INTO Grafik_Scheibe (StartNr, Wettkampf) VALUES ('107', 'LG Serie')");
  for (const char* table : {"Grafik_Schuss", "Grafik_Scheibe"}) {
    day.wettkampf->dropTable(table);
    schreibeScheibenbilder(*day.wettkampf, *druck, "107", {"LG Serie"});
    QCOMPARE(read(*druck, "Scheibenbilder", {"ID"}), QStringList());
  }
}

int main(int argc, char** argv) {
  QGuiApplication app(argc, argv);
  TestTargetPictures test;
  return QTest::qExec(&test, argc, argv);
}
#include "test_target_pictures.moc"
