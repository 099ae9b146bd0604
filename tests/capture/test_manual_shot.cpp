// What the entry of a shot by hand computes: where it begins, what it refuses, what it makes of the fields.
#include <QTest>

#include "capture/manual_shot.h"
#include "tests/support/error_of.h"

using namespace qk;
using namespace qk::test;

namespace {

const QDateTime kNow(QDate(2026, 11, 20), QTime(10, 41, 7));

SchussFormular filled() {
  SchussFormular form;
  form.standort = "1";
  form.linie = "3";
  form.trefferNummer = "17";
  form.datum = "20.11.2026";
  form.zeit = "10:41:07";
  form.waffe = "LG";
  form.wertung = 3;
  form.ringwert = "9,7";
  form.radius = "123,4";
  form.teilerfaktor = "1";
  form.teiler = "123,4";
  return form;
}

/// Fills a shot; the number of the first Error, 0 when all went through.
int errorFilling(HaeringSchuss& schuss, const SchussFormular& form) {
  int error = 0;
  const auto abort = [&error](const Error& met) {
    error = met.number();
    return ErrorAnswer::Abort;
  };
  reported(abort, [&](Steps& step) { fillShot(schuss, form, step); });
  return error;
}

}  // namespace

class TestManualShot : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void firstShot();
  void nextShot();
  void noNumberBehindTheLast();
  void namesOfTheStation();
  void fieldsOfAShot();
  void wertung_data();
  void wertung();
  void unknownWertungStays();
  void derivedValues_data();
  void derivedValues();
  void untouchedFields();
  void teiler_data();
  void teiler();
  void faults_data();
  void faults();
  void unreadableNumbers_data();
  void unreadableNumbers();
  void thousandsPointsAreTaken();
};

void TestManualShot::firstShot() {
  const HaeringSchuss shot = manualShot(nullptr, {3, "107", "Müller, Jörg", "Herren I"}, kNow);
  QCOMPARE(shot.SchuetzeStartnummer, "107");
  QCOMPARE(shot.WettbewerbBezeichnung, "");
  QCOMPARE(shot.KlasseBezeichnung, "Herren I");
  QCOMPARE(shot.RegelNummerKlasse, "frei");
  QCOMPARE(shot.TrefferNummer, 1);
  QCOMPARE(shot.Datum, "20.11.2026");
  QCOMPARE(shot.AbsoluteZeit, "10:41:07");
  QCOMPARE(shot.sWaffe, "LG");
  QCOMPARE(shot.RegelNummerWettbewerb, "DSB 1.10");
  QCOMPARE(shot.OrtStandnummer, 1);
  QCOMPARE(shot.LinienNummer, 3);
  QCOMPARE(shot.SchuetzenName, "Müller, Jörg");
  QCOMPARE(shot.dblTeilerFaktor, 0.0);
  QVERIFY(!shot.bAngewaehlt);
}

void TestManualShot::nextShot() {
  HaeringSchuss last;
  last.Datum = "19.11.2026";
  last.dblTeilerFaktor = 2.5;
  last.Wertung = 11;
  last.SchuetzenName = "Ärmel, Ute";
  last.SchuetzeStartnummer = "105";
  last.KlasseBezeichnung = "Damen";
  last.LinienNummer = 8;
  last.OrtStandnummer = 2;
  last.ProbeMatch = "M";
  last.sWaffe = "LP";
  last.WettbewerbBezeichnung = "LP Meister";
  last.RegelNummerKlasse = "10";
  last.RegelNummerWettbewerb = "2.10";
  last.bAngewaehlt = true;
  last.TrefferNummer = 1;
  last.AbsoluteZeit = "09:00:00";
  last.RingMitZehntel = 10.4;
  last.Radius = 55;
  last.X = 7;
  last.ID = 99;
  last.Key = "alt";
  const HaeringSchuss shot = manualShot(&last, {3, "107", "Müller, Jörg", "Herren I"}, kNow);
  QCOMPARE(shot.Datum, "19.11.2026");
  QCOMPARE(shot.dblTeilerFaktor, 2.5);
  QCOMPARE(shot.Wertung, 11);
  QCOMPARE(shot.SchuetzenName, "Ärmel, Ute");
  QCOMPARE(shot.SchuetzeStartnummer, "105");
  QCOMPARE(shot.KlasseBezeichnung, "Damen");
  QCOMPARE(shot.LinienNummer, 8);
  QCOMPARE(shot.OrtStandnummer, 2);
  QCOMPARE(shot.ProbeMatch, "M");
  QCOMPARE(shot.sWaffe, "LP");
  QCOMPARE(shot.WettbewerbBezeichnung, "LP Meister");
  QCOMPARE(shot.RegelNummerKlasse, "10");
  QCOMPARE(shot.RegelNummerWettbewerb, "2.10");
  QVERIFY(shot.bAngewaehlt);
  QCOMPARE(shot.TrefferNummer, 2);
  QCOMPARE(shot.AbsoluteZeit, "10:41:07");
  QCOMPARE(shot.RingMitZehntel, 0.0);
  QCOMPARE(shot.Radius, 0.0);
  QCOMPARE(shot.X, 0.0);
  QCOMPARE(shot.ID, 0);
  QCOMPARE(shot.Key, "");
}

void TestManualShot::noNumberBehindTheLast() {
  HaeringSchuss last;
  last.TrefferNummer = 32767;
  QCOMPARE(errorOf([&] { manualShot(&last, {}, kNow); }), 6);
}

void TestManualShot::namesOfTheStation() {
  TextTable grid(3);
  grid.setText(0, 1, "Disziplin");
  QCOMPARE(wettbewerbeText(grid), "");
  grid.addRow({"", "LG Auflage", "10"});
  grid.addRow({"", "LP 20", "20"});
  QCOMPARE(wettbewerbeText(grid), "LG Auflage|LP 20|");
  QCOMPARE(wettbewerbeListe("LG Auflage|LP 20|"), (QStringList{"LG Auflage", "LP 20"}));
  QCOMPARE(wettbewerbeListe(""), QStringList());
  QCOMPARE(wettbewerbeListe("ohne Ende"), QStringList());
}

void TestManualShot::fieldsOfAShot() {
  HaeringSchuss shot;
  SchussFormular form = formOf(shot);
  QCOMPARE(form.ringwert, "");
  QCOMPARE(form.radius, "");
  QCOMPARE(form.teiler, "");
  QCOMPARE(form.teilerfaktor, "0");
  QCOMPARE(form.wertung, 0);
  shot.RingMitZehntel = 9.7;
  shot.Radius = 1234.5;
  shot.dblTeilerFaktor = 2.5;
  shot.dblTeiler = 493.8;
  shot.LinienNummer = 12;
  form = formOf(shot);
  QCOMPARE(form.ringwert, "9,7");
  QCOMPARE(form.radius, "1234,5");
  QCOMPARE(form.teilerfaktor, "2,5");
  QCOMPARE(form.teiler, "493,8");
  QCOMPARE(form.linie, "12");
}

void TestManualShot::wertung_data() {
  QTest::addColumn<int>("index");
  QTest::addColumn<QString>("name");
  QTest::addColumn<int>("value");
  QTest::newRow("Ring") << 0 << "Ring" << 0;
  QTest::newRow("Zehntel") << 1 << "Zehntelringe" << 10;
  QTest::newRow("mit Teiler") << 2 << "Ring + Teiler" << 1;
  QTest::newRow("Zehntel mit Teiler") << 3 << "Zehntel + Teiler" << 11;
}

void TestManualShot::wertung() {
  QFETCH(int, index);
  QFETCH(QString, name);
  QFETCH(int, value);
  QCOMPARE(kWertungen.at(size_t(index)).name, name);
  SchussFormular form = filled();
  form.wertung = index;
  HaeringSchuss shot;
  shot.Wertung = 5;  // that of the shot before
  QCOMPARE(errorFilling(shot, form), 0);
  QCOMPARE(shot.Wertung, value);
  QCOMPARE(formOf(shot).wertung, index);
}

void TestManualShot::unknownWertungStays() {
  HaeringSchuss shot;
  shot.Wertung = 5;
  QCOMPARE(formOf(shot).wertung, -1);
  SchussFormular form = filled();
  form.wertung = -1;
  QCOMPARE(errorFilling(shot, form), 0);
  QCOMPARE(shot.Wertung, 5);
}

void TestManualShot::derivedValues_data() {
  QTest::addColumn<QString>("ring");
  QTest::addColumn<int>("whole");
  QTest::addColumn<double>("tenth");
  QTest::addColumn<double>("both");
  QTest::newRow("with tenths") << "9,7" << 9 << 7.0 << 16.0;
  QTest::newRow("whole") << "10" << 10 << 0.0 << 10.0;
  QTest::newRow("below one") << "0,9" << 0 << 9.0 << 9.0;
}

void TestManualShot::derivedValues() {
  QFETCH(QString, ring);
  QFETCH(int, whole);
  QFETCH(double, tenth);
  QFETCH(double, both);
  SchussFormular form = filled();
  form.ringwert = ring;
  HaeringSchuss shot;
  QCOMPARE(errorFilling(shot, form), 0);
  QCOMPARE(shot.RingOhneZehntel, whole);
  QCOMPARE(shot.Ring0XZehntel, tenth);
  QCOMPARE(shot.RingXXZehntel, both);
  QCOMPARE(shot.Key, "0030017-20.11.2026-10:41:07");
}

void TestManualShot::untouchedFields() {
  HaeringSchuss shot;
  QCOMPARE(errorFilling(shot, filled()), 0);
  QCOMPARE(shot.X, 0.0);
  QCOMPARE(shot.Y, 0.0);
  QCOMPARE(shot.PHiPosition, 0.0);
  QCOMPARE(shot.LagePfeilzeichen, "");
  QCOMPARE(shot.RelativeZeit, "");
}

void TestManualShot::teiler_data() {
  QTest::addColumn<QString>("radius");
  QTest::addColumn<QString>("factor");
  QTest::addColumn<QString>("teiler");
  QTest::newRow("down") << "12,34"
                        << "1"
                        << "12,3";
  QTest::newRow("up") << "12,36"
                      << "1"
                      << "12,4";
  QTest::newRow("half") << "12,35"
                        << "1"
                        << "12,4";
  QTest::newRow("divided") << "100"
                           << "2,5"
                           << "40,0";
  QTest::newRow("grouped") << "2500"
                           << "2"
                           << "1.250,0";
  QTest::newRow("no radius") << ""
                             << "1"
                             << "0,0";
  QTest::newRow("point is dropped") << "12.50"
                                    << "1"
                                    << "1.250,0";
}

void TestManualShot::teiler() {
  QFETCH(QString, radius);
  QFETCH(QString, factor);
  QTEST(teilerText(radius, factor).value_or("nichts"), "teiler");
  QVERIFY(!teilerText(radius, "0"));
  QVERIFY(!teilerText(radius, ""));
}

void TestManualShot::faults_data() {
  QTest::addColumn<QString>("waffe");
  QTest::addColumn<QString>("ring");
  QTest::addColumn<QString>("radius");
  QTest::addColumn<QString>("teiler");
  QTest::addColumn<QString>("faults");
  QTest::newRow("good") << "LG"
                        << "9,7"
                        << "12"
                        << "12,0"
                        << "";
  QTest::newRow("no weapon") << ""
                             << "9,7"
                             << "12"
                             << "12"
                             << "Waffenkennzeichen fehlt!\r\n";
  QTest::newRow("a miss") << "LG"
                          << "0"
                          << "12"
                          << "12"
                          << "Keine gültige Ringzahl!\r\n";
  QTest::newRow("no radius") << "LG"
                             << "9"
                             << ""
                             << "12"
                             << "Keine gültiger Radius!\r\n";
  QTest::newRow("teiler 0") << "LG"
                            << "9"
                            << "12"
                            << "0,0"
                            << "Keine gültiger Teiler!\r\n";
  QTest::newRow("all") << ""
                       << "x"
                       << ""
                       << ""
                       << "Waffenkennzeichen fehlt!\r\nKeine gültige Ringzahl!\r\nKeine gültiger "
                          "Radius!\r\nKeine gültiger Teiler!\r\n";
}

void TestManualShot::faults() {
  QFETCH(QString, waffe);
  QFETCH(QString, ring);
  QFETCH(QString, radius);
  QFETCH(QString, teiler);
  SchussFormular form = filled();
  form.waffe = waffe;
  form.ringwert = ring;
  form.radius = radius;
  form.teiler = teiler;
  QTEST(formFaults(form), "faults");
}

void TestManualShot::unreadableNumbers_data() {
  QTest::addColumn<int>("field");
  QTest::addColumn<QString>("text");
  QTest::addColumn<int>("error");
  QTest::newRow("ring with a point") << 0 << "9.7" << 13;
  QTest::newRow("radius with a word") << 1 << "12 mm" << 13;
  QTest::newRow("no factor") << 2 << "" << 13;
  QTest::newRow("wrong groups") << 3 << "12.50" << 13;
  QTest::newRow("no hit number") << 4 << "" << 13;
  QTest::newRow("hit number too large") << 4 << "40000" << 6;
}

void TestManualShot::unreadableNumbers() {
  QFETCH(int, field);
  QFETCH(QString, text);
  SchussFormular form = filled();
  QString SchussFormular::*const fields[] = {&SchussFormular::ringwert, &SchussFormular::radius,
                                             &SchussFormular::teilerfaktor, &SchussFormular::teiler,
                                             &SchussFormular::trefferNummer};
  form.*fields[field] = text;
  HaeringSchuss shot;
  QTEST(errorFilling(shot, form), "error");
}

void TestManualShot::thousandsPointsAreTaken() {
  SchussFormular form = filled();
  form.radius = "2500";
  form.teiler = teilerText(form.radius, "1").value();
  HaeringSchuss shot;
  QCOMPARE(errorFilling(shot, form), 0);
  QCOMPARE(shot.dblTeiler, 2500.0);
}

QTEST_GUILESS_MAIN(TestManualShot)
#include "test_manual_shot.moc"
