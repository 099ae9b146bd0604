// The transfer as tables: disciplines and shots in, results out.

#include <QTest>

#include "capture/transfer.h"
#include "tests/capture/shots.h"

using namespace qk;
using namespace qk::test;

namespace {

/// A result as one line: "20er=180 | 00000090 00000090 | 10 a shot" is easier to check by hand than fields.
QString line(const QKRingDisziplin& r) {
  QStringList blocks;
  for (int i = 0; i < r.Folge.size(); i += 8) blocks += r.Folge.mid(i, 8);
  return r.DisziplinName + ": " + r.Anz + " = " + numberText(r.ergebnis) + " [" + blocks.join(' ') + "] " +
         r.Einzelfolge + r.Einzelfolge2;
}

QString line(const QKTeilerDisziplin& r) {
  if (r.Art == "T")
    return r.DisziplinName + ": T " + numberText(r.ergebnis) + " Treffer " + QString::number(r.ScheibenNr);
  return r.DisziplinName + ": RT " + numberText(r.ergebnis) + " = " + numberText(r.DSBMaxRinge) + " - " +
         numberText(r.DSBRinge) + " + " + numberText(r.DSBTeiler) + " " + r.SerieXY;
}

QStringList lines(const PendingResults& results) {
  QStringList all;
  for (const auto& r : results.m_colTeilerErg.objects()) all += line(*r);
  for (const auto& r : results.m_colRingErg.objects()) all += line(*r);
  return all;
}

struct Range {
  CountingRandom random;
  Schuetze who = shooter();
  std::vector<QString> reports;
  ErrorAnswer answer = ErrorAnswer::Ignore;

  PendingResults transfer(const Shots& shots, const QString& disciplineText) {
    PendingResults results;
    transferShots(shots, disciplines(disciplineText), &who,
                  {noon(), random,
                   [this](const Error& error, const QString& routine) {
                     reports.push_back(QString::number(error.number()) + " " + routine);
                     return answer;
                   }},
                  results);
    for (const int extra : results.extraShots) clearRingValues(*shots[static_cast<size_t>(extra)]);
    return results;
  }
};

QString repeated(const QString& text, int times) {
  QString all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

}  // namespace

class TestTransfer : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void results_data();
  void results();
  void teilerRecord();
  void ringTeilerRecord();
  void seriesRecord();
  void longSeriesIsSplitAt250Characters();
  void extraShotIsZeroedForLaterDisciplinesAndTransfers();
  void weaponOfTheLastShot();
  void sameRandomNumberIsRefused();
  void eachRoutineReportsUnderItsName();
  void retryAddsOnceTheKeyIsFree();
  void withoutShooter();
  void noShots();
};

void TestTransfer::results_data() {
  QTest::addColumn<QString>("disciplines");
  QTest::addColumn<QString>("shots");
  QTest::addColumn<QStringList>("expected");

  QTest::newRow("a whole series of ten, whole rings")
      << "Ring 10"
      << "9x9,7 10,3" << QStringList{"Ring 10: 10er = 91 [00000091] 9|9|9|9|9|9|9|9|9|10|-"};
  QTest::newRow("with tenths")
      << "Ring 10 Zehntel"
      << "8x9,8 10,3 9,7"
      << QStringList{"Ring 10 Zehntel: 10er = 98,4 [000098,4] 9,8|9,8|9,8|9,8|9,8|9,8|9,8|9,8|10,3|9,7|-"};
  QTest::newRow("35 shots of 40: one series of three blocks")
      << "Ring 40"
      << "35x9,7"
      << QStringList{"Ring 40: 40er = 315 [00000090 00000090 00000090] " +
                     repeated(repeated("9|", 10) + "-", 3) + repeated("9|", 5)};
  QTest::newRow("the last block of a series may be short")
      << "Ring 5"
      << "7x10" << QStringList{"Ring 5: 5er = 50 [00000050] 10|10|10|10|10|-", "Ring 5: 5er = 20 [] 10|10|"};
  QTest::newRow("21 shots on 40 and 20")
      << "Ring 40 + Ring 20"
      << "21x10"
      << QStringList{
             "Ring 40: 40er = 210 [00000100 00000100] " + repeated(repeated("10|", 10) + "-", 2) + "10|",
             "Ring 20: 20er = 200 [00000100 00000100] " + repeated(repeated("10|", 10) + "-", 2),
             "Ring 20: 20er = 10 [] 10|"};
  QTest::newRow("a lone extra shot gives no series with exactly 1")
      << "Ring 20 Zusatz=1"
      << "21x10"
      << QStringList{"Ring 20 Zusatz=1: 20er = 190 [00000100 00000090] " + repeated("10|", 10) + "-" +
                     repeated("10|", 9) + "0|-"};
  QTest::newRow("but with the flag -1")
      << "Ring 20 Zusatz=-1"
      << "21x10"
      << QStringList{"Ring 20 Zusatz=-1: 20er = 190 [00000100 00000090] " + repeated("10|", 10) + "-" +
                         repeated("10|", 9) + "0|-",
                     "Ring 20 Zusatz=-1: 20er = 10 [] 10|"};
  QTest::newRow("two left-over shots give a series with the extra shot's value 1 too")
      << "Ring 20 Zusatz=1"
      << "22x10"
      << QStringList{"Ring 20 Zusatz=1: 20er = 190 [00000100 00000090] " + repeated("10|", 10) + "-" +
                         repeated("10|", 9) + "0|-",
                     "Ring 20 Zusatz=1: 20er = 20 [] 10|10|"};
  QTest::newRow("binary noise of a tenth digit stands as it is")
      << "Ring 1 Zehntelziffer"
      << "9,7" << QStringList{"Ring 1 Zehntelziffer: 1er = 6,99999999999999 [99999999] 9,7|-"};
  QTest::newRow("tenth digits only, single values stay readable")
      << "Ring 2 Zehntelziffer"
      << "7,5 8,5" << QStringList{"Ring 2 Zehntelziffer: 2er = 10 [00000010] 7,5|8,5|-"};
  QTest::newRow("tenth digits win over tenths")
      << "Ring 2 Zehntelziffer Zehntel"
      << "7,5 8,5" << QStringList{"Ring 2 Zehntelziffer Zehntel: 2er = 10 [00000010] 7,5|8,5|-"};
  QTest::newRow("tenth digits win over whole ring plus digit")
      << "Ring 2 Gemischt Zehntelziffer"
      << "7,5 8,5" << QStringList{"Ring 2 Gemischt Zehntelziffer: 2er = 10 [00000010] 7,5|8,5|-"};
  QTest::newRow("whole ring plus tenth digit")
      << "Ring 2 Gemischt Zehntel"
      << "7,5 8,5" << QStringList{"Ring 2 Gemischt Zehntel: 2er = 25 [00000025] 7,5|8,5|-"};
  QTest::newRow("a series of nothing") << "Ring 0"
                                       << "5x10" << QStringList{};
  QTest::newRow("a ring-teiler batch of nothing") << "RT 0"
                                                  << "5x10" << QStringList{};
  QTest::newRow("neither rings nor teiler") << "Nichts 10"
                                            << "5x10" << QStringList{};

  QTest::newRow("every shot its teiler")
      << "Teiler"
      << "9/72,4 10/12,3" << QStringList{"Teiler: T 72,4 Treffer 1", "Teiler: T 12,3 Treffer 2"};
  QTest::newRow("teiler and ring share the shots")
      << "Teiler + Ring 2"
      << "9/72,4 10/12,3"
      << QStringList{"Teiler: T 72,4 Treffer 1", "Teiler: T 12,3 Treffer 2",
                     "Ring 2: 2er = 19 [00000019] 9|10|-"};

  QTest::newRow("ring-teiler: what lacks on the maximum, plus the best teiler")
      << "RT 2 Max=20"
      << "9,7/72,4 10,3/12,3" << QStringList{"RT 2 Max=20: RT 13,3 = 20 - 19 + 12,3 R:9;T:72,4;R:10;T:12,3;"};
  QTest::newRow("with tenths") << "RT 2 Max=21,8 Zehntel"
                               << "9,7/72,4 10,3/12,3"
                               << QStringList{
                                      "RT 2 Max=21,8 Zehntel: RT 14,1 = 21,8 - 20 + 12,3 "
                                      "R:9,7;T:72,4;R:10,3;T:12,3;"};
  QTest::newRow("a best teiler beyond the limit counts as the limit")
      << "RT 2 Max=20 Grenze=50"
      << "9/72,4 9/80" << QStringList{"RT 2 Max=20 Grenze=50: RT 52 = 20 - 18 + 50 R:9;T:72,4;R:9;T:80;"};
  QTest::newRow("a best teiler within the limit counts itself")
      << "RT 2 Max=20 Grenze=50"
      << "9/72,4 9/12,3"
      << QStringList{"RT 2 Max=20 Grenze=50: RT 14,3 = 20 - 18 + 12,3 R:9;T:72,4;R:9;T:12,3;"};
  QTest::newRow("without a limit the constant beats any miss")
      << "RT 1 Max=10"
      << "0/12000" << QStringList{"RT 1 Max=10: RT 10009,9 = 10 - 0 + 9999,9 R:0;T:12000;"};
  QTest::newRow("an incomplete batch starts from the full maximum")
      << "RT 2 Max=20"
      << "9/30 9/20 10/5"
      << QStringList{"RT 2 Max=20: RT 22 = 20 - 18 + 20 R:9;T:30;R:9;T:20;",
                     "RT 2 Max=20: RT 15 = 20 - 10 + 5 R:10;T:5;"};
  QTest::newRow("a ring-teiler discipline ignores the flags of ring series")
      << "RT 2 Max=20 Zehntelziffer Gemischt Zusatz=1"
      << "9,7/30 9,7/20"
      << QStringList{"RT 2 Max=20 Zehntelziffer Gemischt Zusatz=1: RT 22 = 20 - 18 + 20 R:9;T:30;R:9;T:20;"};
}

void TestTransfer::results() {
  QFETCH(QString, disciplines);
  QFETCH(QString, shots);
  QFETCH(QStringList, expected);
  Range range;
  QCOMPARE(lines(range.transfer(qk::test::shots(shots), disciplines)), expected);
  QVERIFY(range.reports.empty());
}

void TestTransfer::teilerRecord() {
  Range range;
  const auto s = shots("9,7/72,4");
  const auto r = range.transfer(s, "Teiler").m_colTeilerErg.at(0);
  QCOMPARE(r->Key, QString("Zt-1-Teiler-1-") + s[0]->Key);
  QCOMPARE(r->Art, QString("T"));
  QCOMPARE(r->bManuell, false);
  QCOMPARE(r->Datum, QString("20.11.2026 12:00:00"));
  QCOMPARE(r->DisziID, 1);
  QCOMPARE(r->DisziplinName, QString("Teiler"));
  QCOMPARE(r->ergebnis, 72.4);
  QCOMPARE(r->ScheibenNr, 1);
  QCOMPARE(r->WTyp, QString("LG"));
  QCOMPARE(r->X, 10.0);
  QCOMPARE(r->Y, -1.0);
  QCOMPARE(r->Startnummer, QString("107"));
  QCOMPARE(r->MannId, 12);
  QCOMPARE(r->KlassenID, 30);
  QCOMPARE(r->VorMannId, 5);
  QVERIFY(r->SerieXY.isEmpty());
  QCOMPARE(r->DSBTeiler, 0.0);
}

void TestTransfer::ringTeilerRecord() {
  Range range;
  const auto r = range.transfer(shots("9/72,4"), "RT 10 Max=100").m_colTeilerErg.at(0);
  QCOMPARE(r->Key, QString("Zt0-20.11.2026 12:00:00"));
  QCOMPARE(r->Art, QString("RT"));
  QCOMPARE(r->Datum, QString("20.11.2026 12:00:00"));
  QCOMPARE(r->ScheibenNr, 0);
  QCOMPARE(r->X, 0.0);
  QCOMPARE(r->MannId, 12);
  QCOMPARE(r->VorMannId, 5);
  QCOMPARE(r->DSBMaxRinge, 100.0);
}

void TestTransfer::seriesRecord() {
  Range range;
  range.who.lMannID = 0;
  const auto r = range.transfer(shots("9,7/72,4 10/3"), "Ring 2").m_colRingErg.at(0);
  QCOMPARE(r->Key, QString("Zt0-20.11.2026 12:00:00"));
  QCOMPARE(r->Datum, QString("20.11.2026 12:00:00"));
  QCOMPARE(r->EinzelfolgeTeiler, QString("72,4|3|"));
  QCOMPARE(r->Startnummer, QString("107"));
  QCOMPARE(r->MannId, 12);
  QCOMPARE(r->VorMannId, 0);
  QCOMPARE(r->KlassenID, 30);
  QCOMPARE(r->DisziID, 1);
  QCOMPARE(r->WTyp, QString("LG"));
}

void TestTransfer::longSeriesIsSplitAt250Characters() {
  Range range;
  const auto r = range.transfer(shots("60x10,9"), "Ring 60 Zehntel").m_colRingErg.at(0);
  const QString all = repeated(repeated("10,9|", 10) + "-", 6);
  QCOMPARE(all.size(), 306);
  QCOMPARE(r->Einzelfolge, all.left(250));
  QCOMPARE(r->Einzelfolge2, all.mid(250));
}

void TestTransfer::extraShotIsZeroedForLaterDisciplinesAndTransfers() {
  Range range;
  const auto s = shots("9,7/30 9,7/20");
  // The first discipline comes before the extra shot is known, the third after it.
  QCOMPARE(lines(range.transfer(s, "Ring 2 + Ring 2 Zusatz=1 + Ring 2 Zehntel")),
           (QStringList{"Ring 2: 2er = 18 [00000018] 9|9|-", "Ring 2 Zusatz=1: 2er = 9 [00000009] 9|0|-",
                        "Ring 2 Zehntel: 2er = 9,7 [000009,7] 9,7|0|-"}));
  QCOMPARE(
      lines(range.transfer(s, "Ring 2 + Teiler")),
      (QStringList{"Teiler: T 30 Treffer 1", "Teiler: T 20 Treffer 2", "Ring 2: 2er = 9 [00000009] 9|0|-"}));
  QCOMPARE(s[1]->RingMitZehntel, 0.0);
  QCOMPARE(s[1]->RingOhneZehntel, qint16(0));
  QCOMPARE(s[1]->Ring0XZehntel, 0.0);
  QCOMPARE(s[1]->RingXXZehntel, 0.0);
  QCOMPARE(s[1]->dblTeiler, 20.0);
}

void TestTransfer::weaponOfTheLastShot() {
  Range range;
  const auto s = shots("9/30 9/20");
  s[1]->sWaffe = "LP";
  const PendingResults results = range.transfer(s, "RT 2 + Ring 2");
  QCOMPARE(results.m_colTeilerErg.at(0)->WTyp, QString("LP"));
  QCOMPARE(results.m_colRingErg.at(0)->WTyp, QString("LP"));
}

void TestTransfer::sameRandomNumberIsRefused() {
  Range range;
  range.random.constant = 17.5;
  const PendingResults results = range.transfer(shots("4x9/30"), "Ring 2 + RT 4");
  QCOMPARE(results.m_colRingErg.count(), 1);
  QCOMPARE(results.m_colRingErg.keyAt(0), QString("Zt17-20.11.2026 12:00:00"));
  // The two kinds of results don't share their keys.
  QCOMPARE(results.m_colTeilerErg.count(), 1);
  QCOMPARE(range.reports, (std::vector<QString>{"457 SaveSerieInKlasse"}));
}

void TestTransfer::eachRoutineReportsUnderItsName() {
  Range range;
  range.random.constant = 17.5;
  Shots twice = shots("9");
  twice.push_back(twice[0]);
  QCOMPARE(lines(range.transfer(twice, "Teiler")).size(), 1);
  QCOMPARE(lines(range.transfer(shots("2x9"), "RT 1")).size(), 1);
  QCOMPARE(range.reports, (std::vector<QString>{"457 SaveTeilerInKlasse", "457 SaveDSBInKlasse"}));
}

void TestTransfer::retryAddsOnceTheKeyIsFree() {
  Range range;
  range.random.constant = 17.5;
  PendingResults results;
  int asked = 0;
  transferShots(shots("4x9"), disciplines("Ring 2"), &range.who,
                {noon(), range.random,
                 [&](const Error&, const QString&) {
                   if (++asked == 2) results.m_colRingErg.clear();
                   return ErrorAnswer::Retry;
                 }},
                results);
  QCOMPARE(asked, 2);
  QCOMPARE(results.m_colRingErg.count(), 1);
}

/// The four statements that ask the shooter fail in the routine that saves, one after the other.
void TestTransfer::withoutShooter() {
  CountingRandom random;
  PendingResults results;
  QStringList reports;
  ErrorAnswer answer = ErrorAnswer::Ignore;
  const TransferSurroundings surroundings{noon(), random, [&](const Error& error, const QString& routine) {
                                            reports << QString::number(error.number()) + " " + routine;
                                            return answer;
                                          }};
  const QList<std::pair<QString, QString>> kinds{
      {"Teiler", "SaveTeilerInKlasse"}, {"RT 1", "SaveDSBInKlasse"}, {"Ring 1", "SaveSerieInKlasse"}};
  for (const auto& [discipline, routine] : kinds) {
    results = {};
    reports.clear();
    answer = ErrorAnswer::Ignore;
    transferShots(shots("9"), disciplines(discipline), nullptr, surroundings, results);
    QCOMPARE(reports, QStringList(4, "91 " + routine));
    QCOMPARE(results.m_colTeilerErg.count() + results.m_colRingErg.count(), 1);
    results = {};
    reports.clear();
    // What is aborted is one record; the next one is tried.
    answer = ErrorAnswer::Abort;
    transferShots(shots("2x9"), disciplines(discipline), nullptr, surroundings, results);
    QCOMPARE(reports, QStringList(2, "91 " + routine));
    QCOMPARE(results.m_colTeilerErg.count() + results.m_colRingErg.count(), 0);
  }
  transferShots({}, disciplines("Ring 2"), nullptr, surroundings, results);
  QVERIFY(results.m_colRingErg.isEmpty());
}

void TestTransfer::noShots() {
  Range range;
  QCOMPARE(lines(range.transfer({}, "Ring 2 + Teiler + RT 2")), QStringList());
}

QTEST_APPLESS_MAIN(TestTransfer)
#include "test_transfer.moc"
