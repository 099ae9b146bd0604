#include <QTest>
#include <cmath>

#include "masterdata/making/seeded_random.h"
#include "tools/station/shot_generator.h"

using namespace qk;

class TestShotGenerator : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void rings_data() {
    QTest::addColumn<QString>("weapon");
    QTest::addColumn<int>("radius");
    QTest::addColumn<int>("tenths");
    QTest::newRow("LG centre") << "LG" << 0 << 109;
    QTest::newRow("LG 10,9 ends") << "LG" << 250 << 109;
    QTest::newRow("LG 10,8 begins") << "LG" << 251 << 108;
    QTest::newRow("LG ten ends") << "LG" << 2500 << 100;
    QTest::newRow("LG 9,9 begins") << "LG" << 2501 << 99;
    QTest::newRow("LG one ends") << "LG" << 25000 << 10;
    QTest::newRow("LG miss") << "LG" << 25001 << 0;
    QTest::newRow("LP ten ends") << "LP" << 8000 << 100;
    QTest::newRow("LP one ends") << "LP" << 80000 << 10;
    QTest::newRow("KK ten ends") << "KK" << 8000 << 100;
    QTest::newRow("ZS ten ends") << "ZS" << 4575 << 100;
    QTest::newRow("unknown is LG") << "XX" << 2500 << 100;
  }
  void rings() {
    QFETCH(QString, weapon);
    QFETCH(int, radius);
    QTEST(ringTenths(targetFace(weapon), radius), "tenths");
  }

  void hitsAreConsistent() {
    SeededRandom random(7);
    const TargetFace face = targetFace("LG");
    for (int i = 0; i < 10000; ++i) {
      const Hit hit = makeHit(face, 1.0, random);
      QCOMPARE(hit.radius, qRound(std::hypot(hit.x, hit.y)));
      QCOMPARE(hit.ringTenths, ringTenths(face, hit.radius));
      QVERIFY(hit.angleTenths >= 0 && hit.angleTenths < 3600);
      const double angle = hit.angleTenths / 1800.0 * M_PI;
      QVERIFY(std::abs(hit.radius * std::cos(angle) - hit.x) <= 0.001 * hit.radius + 1);
      QVERIFY(std::abs(hit.radius * std::sin(angle) - hit.y) <= 0.001 * hit.radius + 1);
    }
  }

  void hitsScatterNormally() {
    SeededRandom random(3);
    const TargetFace face = targetFace("LG");
    const int count = 20000;
    double sumX = 0, sumY = 0, sumXX = 0, sumXY = 0;
    int inner = 0;
    for (int i = 0; i < count; ++i) {
      const Hit hit = makeHit(face, 0.5, random);
      sumX += hit.x;
      sumY += hit.y;
      sumXX += 1.0 * hit.x * hit.x;
      sumXY += 1.0 * hit.x * hit.y;
      inner += hit.radius <= 1250;
    }
    const double sigma = 1250;
    QVERIFY(std::abs(sumX / count) < 0.05 * sigma);
    QVERIFY(std::abs(sumY / count) < 0.05 * sigma);
    QVERIFY(std::abs(std::sqrt(sumXX / count) / sigma - 1) < 0.03);
    QVERIFY(std::abs(sumXY / count) < 0.03 * sigma * sigma);
    QVERIFY(std::abs(static_cast<double>(inner) / count - 0.3935) < 0.02);  // 1 - exp(-1/2)
  }

  void sameSeedSameHits() {
    SeededRandom first(5), second(5), other(6);
    const TargetFace face = targetFace("LP");
    const Hit a = makeHit(face, 1, first), b = makeHit(face, 1, second), c = makeHit(face, 1, other);
    QCOMPARE(a.x, b.x);
    QCOMPARE(a.y, b.y);
    QVERIFY(a.x != c.x || a.y != c.y);
  }

  void spreadBelongsToTheShooter() {
    QCOMPARE(spreadOfShooter("107", 1), spreadOfShooter("107", 1));
    QVERIFY(spreadOfShooter("107", 1) != spreadOfShooter("108", 1));
    for (int i = 0; i < 200; ++i) {
      const double spread = spreadOfShooter(QString::number(i), 1);
      QVERIFY(spread >= 0.45 && spread <= 2.0);
    }
  }

  void record() {
    ShotRecord shot;
    shot.code = "21";
    shot.discipline = "LG Meister";
    shot.className = "offene Klasse";
    shot.line = 3;
    shot.shooter = "Müller, Änne";
    shot.mode = "M";
    shot.scoring = 11;
    shot.number = 17;
    shot.hit = {-1234, 5, 1234, 1798, 105};
    shot.time = "10:41:07";
    shot.relativeTime = "03:15";
    shot.date = "20.11.2026";
    shot.disciplineKey = "1.10";
    shot.classKey = "frei";
    shot.startnummer = "107";
    QCOMPARE(recordLine(shot),
             "21 ; LG Meister ; offene Klasse ; 1 ; 3 ; Müller, Änne ; M ; 11 ; 17 ; 10,5 ; 4 ; -123,4 ; 0,5 "
             "; 123,4 ; "
             "179,8 ; 10:41:07 ; 03:15 ; 20.11.2026 ; 1.10 ; frei ; 107");
  }

  void arrows_data() {
    QTest::addColumn<int>("angle");
    QTest::addColumn<QString>("arrow");
    QTest::newRow("right") << 0 << "6";
    QTest::newRow("still right") << 3500 << "6";
    QTest::newRow("up right") << 450 << "9";
    QTest::newRow("up") << 900 << "8";
    QTest::newRow("up left") << 1350 << "7";
    QTest::newRow("left") << 1800 << "4";
    QTest::newRow("down left") << 2250 << "1";
    QTest::newRow("down") << 2700 << "2";
    QTest::newRow("down right") << 3150 << "3";
  }
  void arrows() {
    QFETCH(int, angle);
    ShotRecord shot;
    shot.hit = {1, 1, 1, angle, 100};
    QTEST(recordLine(shot).split(" ; ")[10], "arrow");
    shot.hit.radius = 0;
    QCOMPARE(recordLine(shot).split(" ; ")[10], "5");
  }
};

QTEST_APPLESS_MAIN(TestShotGenerator)
#include "test_shot_generator.moc"
