// The second reckoning itself: what it takes for agreement, and what it makes of an operator's acts.
#include <QTest>

#include "tools/rundgang/reckoning_acts.h"

using namespace qk;

namespace {

/// A shot of line 1 on a target with factor 1: "9,7/72,4" is ring and radius.
FiredShot fired(int hit, const QString& ringAndRadius) {
  const QStringList parts = ringAndRadius.split('/');
  FiredShot shot;
  shot.line = 1;
  shot.hit = hit;
  shot.tenths = tenthsOf(parts[0]);
  shot.wholeRing = shot.tenths / 10;
  shot.record =
      QStringList{"21",     "LG",   "frei", "1",  "1",      "Name", "M",        "0",     QString::number(hit),
                  parts[0], "5",    "1,5",  "-2", parts[1], "90",   "10:00:01", "00:01", "20.11.2026",
                  "1.10",   "frei", "107"};
  return shot;
}

Facts facts(const QMap<QString, Rule>& rules) {
  Facts known;
  known.rules = rules;
  known.persons["107"] = {"Müller", "SV Grünau", 12, 5, 30};
  known.targets["1.10"] = {"LG", 10};
  known.targets["2.10"] = {"LP", 25};
  return known;
}

Act act(Act::Kind kind, const QList<int>& shots, const QStringList& disciplines = {}) {
  return {kind, 1, "107", shots, disciplines, {}, {}};
}

/// The expected values of a column, row by row.
QStringList column(const std::vector<ExpectedRow>& rows, const QString& name) {
  QStringList values;
  for (const ExpectedRow& row : rows)
    for (const Figure& figure : row.figures)
      if (figure.column == name) values << figure.expected;
  return values;
}

Rule ring(int id, int series, int extra = 0) {
  Rule rule;
  rule.id = rule.place = id;
  rule.rings = true;
  rule.series = series;
  rule.extra = extra;
  return rule;
}

}  // namespace

class TestReckoning : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void tenthsAreTextAndBack() {
    for (const char* number : {"9,7", "10", "0", "-12,3", "0,5", "-0,5"})
      QCOMPARE(tenthsText(tenthsOf(number)), QString(number));
  }

  void numbersAgreeWithinAMillionth() {
    QVERIFY(tenths("a", 984).agrees(0.1 * 984));
    QVERIFY(tenths("a", 70).agrees((9.7 - 9) * 10));
    QVERIFY(!tenths("a", 984).agrees(98.5));
    QVERIFY(!number("a", 3).agrees(4));
    QVERIFY(number("a", 0).agrees({}));
  }

  void blockSumsAreCleanOrARest() {
    const Figure sums = blockSums("Folge", {984, 510}, false);
    QVERIFY(sums.agrees("000098,400000051"));
    QVERIFY(sums.agrees("000098,499999999"));
    QVERIFY(!sums.agrees("000098,500000051"));
    QVERIFY(!sums.agrees("000098,400000052"));
    QVERIFY(!sums.agrees("000098,4"));
    QVERIFY(!blockSums("Folge", {510}, true).agrees("99999999"));
    QCOMPARE(binaryRests("000098,499999999"), 1);
  }

  void aMomentLiesBetweenItsEnds() {
    const QDateTime ten(QDate(2026, 11, 20), QTime(10, 0, 0, 700));
    const Figure figure = moment("Datum", ten, ten.addSecs(2));
    QVERIFY(figure.agrees("20.11.2026 10:00:00"));
    QVERIFY(figure.agrees(ten.addSecs(1)));
    QVERIFY(!figure.agrees("20.11.2026 09:59:59"));
    QVERIFY(!figure.agrees("20.11.2026 10:00:03"));
    QVERIFY(never("a").agrees(QDateTime(QDate(1899, 12, 30), QTime(0, 0))));
    QVERIFY(!never("a").agrees(ten));
  }

  void aTeilerIsCutAndMayFallShortOnlyWithoutARest() {
    FiredShot even = fired(1, "9,7/12,5"), odd = fired(2, "9,7/12,4");
    even.record[18] = odd.record[18] = "2.10";
    const auto shots = receivedShots({even, odd}, facts({}));
    QCOMPARE(shots[0].teiler, 50);
    QVERIFY(shots[0].teilerMayBeLess);
    QCOMPARE(shots[1].teiler, 49);
    QVERIFY(!shots[1].teilerMayBeLess);
  }

  void anExtraShotLosesItsRingsForAllThatFollows() {
    const std::vector<FiredShot> log{fired(1, "9,7/72,4"), fired(2, "8,4/90"), fired(3, "10,9/3,1")};
    const Facts known = facts({{"vorher", ring(1, 10)}, {"Zusatz", ring(2, 2, 1)}, {"nachher", ring(3, 10)}});
    auto shots = receivedShots(log, known);
    const QStringList all{"nachher", "Zusatz", "vorher"};
    const Expected expected =
        replay({act(Act::Kind::Transfer, {0, 1, 2}, all), act(Act::Kind::Store, {0, 1, 2}),
                act(Act::Kind::Transfer, {0, 1, 2}, all), act(Act::Kind::Book, {0, 1, 2})},
               known, shots);
    QCOMPARE(column(expected.series, "Ergebnis"), (QStringList{"27", "9", "19", "19", "9", "19"}));
    QCOMPARE(column(expected.series, "Einzelfolge").first(), QString("9|8|10|"));
    QCOMPARE(column(expected.pictures, "ringem"), (QStringList{"20,6", "20,6"}));
    QCOMPARE(shots[2].state, ReckonedShot::State::Booked);
  }

  void ringTeilersStartFromTheMaximumAndKeepTheLimit() {
    const std::vector<FiredShot> log{fired(1, "9,7/12,3"), fired(2, "8,4/90")};
    Rule free = ring(1, 2), limited = ring(2, 2);
    free.teilers = limited.teilers = limited.limited = limited.tenths = true;
    free.maximum = limited.maximum = 1000;
    limited.limit = 100;
    const Facts known = facts({{"frei", free}, {"Grenze", limited}});
    auto shots = receivedShots(log, known);
    const Expected expected = replay(
        {act(Act::Kind::Transfer, {0, 1}, {"frei", "Grenze"}), act(Act::Kind::Store, {0, 1})}, known, shots);
    QCOMPARE(column(expected.teilers, "Ergebnis"), (QStringList{"95,3", "91,9"}));
    QCOMPARE(column(expected.teilers, "SerieXY"),
             (QStringList{"R:9;T:12,3;R:8;T:90;", "R:9,7;T:12,3;R:8,4;T:90;"}));
    QCOMPARE(column(expected.teilers, "MannID"), (QStringList{"12", "12"}));
    QCOMPARE(column(expected.teilers, "VorMannID"), (QStringList{"5", "5"}));
  }

  void discardedShotsLeaveTheirPlacesToTheNext() {
    const std::vector<FiredShot> log{fired(1, "9,7/1"), fired(2, "8,4/2"), fired(3, "7/3")};
    const Facts known = facts({{"Serie", ring(1, 10)}});
    auto shots = receivedShots(log, known);
    const Expected expected = replay(
        {act(Act::Kind::Discard, {0}), act(Act::Kind::Transfer, {0}, {"Serie"}), act(Act::Kind::Book, {0})},
        known, shots);
    QCOMPARE(column(expected.series, "Einzelfolge"), QStringList{"8|"});
    QCOMPARE(shots[0].state, ReckonedShot::State::Discarded);
    QCOMPARE(shots[1].state, ReckonedShot::State::Booked);
    QCOMPARE(shots[2].state, ReckonedShot::State::Open);
  }
};

QTEST_GUILESS_MAIN(TestReckoning)
#include "test_reckoning.moc"
