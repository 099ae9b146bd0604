// The life of a row of Haering_Daten: received, restored, handed to another shooter, booked, discarded.

#include <QTest>

#include "capture/open_shots.h"
#include "capture/views.h"
#include "tests/capture/workbench.h"

using namespace qk;
using namespace qk::test;

namespace {

const QStringList AllColumns{"WettbewerbBezeichnung",
                             "KlasseBezeichnung",
                             "StandnummerOrt",
                             "Liniennummer",
                             "Schütze",
                             "ProbeMatch",
                             "Wertung",
                             "Treffernummer",
                             "RingwertmitZehntel",
                             "Lagepfeil",
                             "X",
                             "Y",
                             "Radius",
                             "Winkel",
                             "ZeitAbsolut",
                             "ZeitRelativ",
                             "Datum",
                             "Wettbewerb",
                             "Klasse",
                             "Startnummer",
                             "Waffe",
                             "Teiler",
                             "Teilerfaktor",
                             "Key",
                             "Verbucht",
                             "Verworfen",
                             "BuchungsZeitpunkt"};

std::shared_ptr<HaeringSchuss> fullShot() {
  const auto s = shot(17, "9,7/123,4");
  s->KlasseBezeichnung = "Damen I";
  s->OrtStandnummer = 1;
  s->SchuetzenName = "O'Neil, Änne";
  s->ProbeMatch = "M";
  s->Wertung = 11;
  s->LagePfeilzeichen = "<";
  s->X = -12.5;
  s->Y = 3;
  s->Radius = 246.8;
  s->PHiPosition = 271.25;
  s->RelativeZeit = "00:31";
  s->RegelNummerWettbewerb = "1.10";
  s->RegelNummerKlasse = "30";
  s->SchuetzeStartnummer = "107";
  s->dblTeilerFaktor = 2;
  return s;
}

struct Line {
  Workbench bench;
  ShotCollection shots;
  TextTable flex;

  Line() { FlexEinrichten(flex); }

  std::shared_ptr<HaeringSchuss> receive(const std::shared_ptr<HaeringSchuss>& s) {
    TransferInGrid(bench.workplace(), flex, shots, s);
    SpeichereHaeringSchuss(bench.workplace(), &bench.store(), *s);
    return s;
  }
  QStringList restored(std::int16_t line = 3) {
    QStringList hits;
    LadeOffeneSchuesse(bench.workplace(), &bench.store(), line, [&](const std::shared_ptr<HaeringSchuss>& s) {
      hits += QString::number(s->TrefferNummer);
    });
    return hits;
  }
  QStringList states() {
    return bench.read("Select * from Haering_Daten order by ID",
                      {"Treffernummer", "Verbucht", "Verworfen", "BuchungsZeitpunkt"});
  }
};

}  // namespace

class TestOpenShots : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void storedColumns();
  void oneCommitAShot();
  void restoredShot();
  void bookedRowsSayWhen();
  void restoredOrderIsThatOfTheTexts();
  void onlyOpenShotsOfTheLineReturn();
  void firstRowNamesTheShooter();
  void newStartNumber();
  void discarding();
  void booking();
  void bookingARowThatIsGone();
  void messages_data();
  void messages();
  void aShotIsNotGivenUpByOneAnswer_data();
  void aShotIsNotGivenUpByOneAnswer();
  void anIgnoredColumnIsAskedAboutOnce();
  void aShotThatIsGivenUpKeepsItsNumber();
  void aShotThatIsGivenUpBeforeItsRowHasNone();
  void aShotWithoutARowTakesNoOthersNumber();
  void retryRepeatsTheStatementThatFailed();
  void ignoreGoesOn();
  void abortLeavesTheRowOut();
};

void TestOpenShots::storedColumns() {
  Line line;
  const auto s = line.receive(fullShot());
  QCOMPARE(
      line.bench.read("Select * from Haering_Daten", AllColumns),
      (QStringList{"20 Luftgewehr|Damen I|1|3|O'Neil, Änne|M|11|17|9,7|<|-12,5|3|246,8|271,25|10:00:17|00:31|"
                   "20.11.2026|1.10|30|107|LG|123,4|2|0030017-20.11.2026-10:00:17|0|0|00:00:00"}));
  QCOMPARE(line.bench.read("Select * from Haering_Daten", {"ID"}), QStringList{QString::number(s->ID)});
}

void TestOpenShots::oneCommitAShot() {
  Line line;
  line.receive(shot(1, "9"));
  const qint64 before = line.bench.store().commitCount();
  line.receive(shot(2, "9"));
  QCOMPARE(line.bench.store().commitCount() - before, 1);
}

void TestOpenShots::restoredShot() {
  Line line;
  const auto stored = line.receive(fullShot());
  std::shared_ptr<HaeringSchuss> s;
  QVERIFY(
      LadeOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 3, [&](auto loaded) { s = loaded; }));
  QVERIFY(s);
  QCOMPARE(s->ID, stored->ID);
  QCOMPARE(shotCells(*s), shotCells(*stored));
  QCOMPARE(s->Key, stored->Key);
  QCOMPARE(s->RingOhneZehntel, qint16(9));
  QVERIFY(qFuzzyCompare(s->Ring0XZehntel, 7.0));
  QVERIFY(qFuzzyCompare(s->RingXXZehntel, 16.0));
  QCOMPARE(s->Verbucht, false);
  QCOMPARE(s->VerbuchtDatum, QString("00:00:00"));
  // What was ticked before the restart isn't any more.
  QVERIFY(stored->bAngewaehlt);
  QVERIFY(!s->bAngewaehlt);
}

void TestOpenShots::bookedRowsSayWhen() {
  Line line;
  line.receive(shot(1, "9"));
  line.bench.clock.set("21.11.2026 17:30:05");
  QVERIFY(VerbucheHaeringSchuss(line.bench.workplace(), &line.bench.store(), line.shots, line.flex));
  const auto rs = line.bench.store().openRecordset("Select * from Haering_Daten");
  HaeringSchuss booked;
  QVERIFY(LadeHaeringSchuss(line.bench.workplace(), *rs, booked));
  QVERIFY(booked.Verbucht);
  QCOMPARE(booked.VerbuchtDatum, QString("21.11.2026 17:30:05"));
}

void TestOpenShots::restoredOrderIsThatOfTheTexts() {
  Line line;
  for (const auto& [hit, date, time] :
       {std::tuple{1, "9.11.2026", "08:00:00"}, std::tuple{2, "20.11.2026", "9:00:00"},
        std::tuple{3, "20.11.2026", "10:00:00"}}) {
    const auto s = shot(hit, "9");
    s->Datum = date;
    s->AbsoluteZeit = time;
    line.receive(s);
  }
  QCOMPARE(line.restored(), (QStringList{"3", "2", "1"}));
}

void TestOpenShots::onlyOpenShotsOfTheLineReturn() {
  Line line;
  const auto open = line.receive(shot(1, "9"));
  const auto discarded = line.receive(shot(2, "9"));
  const auto booked = line.receive(shot(3, "9"));
  const auto other = shot(4, "9");
  other->LinienNummer = 13;
  line.receive(other);
  open->bAngewaehlt = discarded->bAngewaehlt = other->bAngewaehlt = false;
  QVERIFY(VerwerfeHaeringSchuss(line.bench.workplace(), &line.bench.store(), *discarded));
  QVERIFY(VerbucheHaeringSchuss(line.bench.workplace(), &line.bench.store(), line.shots, line.flex));
  QCOMPARE(line.restored(), QStringList{"1"});
  QCOMPARE(AnzahlOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 3), std::int16_t(1));
  QCOMPARE(AnzahlOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 13), std::int16_t(1));
  QCOMPARE(AnzahlOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 1), std::int16_t(0));
}

void TestOpenShots::firstRowNamesTheShooter() {
  Line line;
  QCOMPARE(StartnummerOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 3), QString());
  for (const char* number : {"107", "9a"}) {
    const auto s = shot(line.shots.count() + 1, "9");
    s->SchuetzeStartnummer = number;
    line.receive(s);
  }
  QCOMPARE(StartnummerOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 3), QString("107"));
  QCOMPARE(AnzahlOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 3), std::int16_t(2));
}

void TestOpenShots::newStartNumber() {
  Line line;
  line.receive(shot(1, "9"));
  const auto s = line.receive(shot(2, "9"));
  s->SchuetzeStartnummer = "8'b";
  QVERIFY(UpdateHaeringStartnummer(line.bench.workplace(), &line.bench.store(), *s));
  QCOMPARE(line.bench.read("Select * from Haering_Daten order by ID", {"Startnummer"}),
           (QStringList{"", "8'b"}));
}

void TestOpenShots::discarding() {
  Line line;
  const auto s = line.receive(shot(1, "9"));
  line.receive(shot(2, "9"));
  line.bench.clock.set("21.11.2026 17:30:05");
  QVERIFY(VerwerfeHaeringSchuss(line.bench.workplace(), &line.bench.store(), *s));
  QCOMPARE(line.states(), (QStringList{"1|0|-1|21.11.2026 17:30:05", "2|0|0|00:00:00"}));
  // Collection and grid are the caller's.
  QCOMPARE(line.shots.count(), 2);
  QCOMPARE(line.flex.rows(), 3);
  const auto never = shot(3, "9");
  never->ID = 999999;
  QVERIFY(VerwerfeHaeringSchuss(line.bench.workplace(), &line.bench.store(), *never));
  QCOMPARE(line.states().size(), 2);
}

void TestOpenShots::booking() {
  Line line;
  for (int hit = 1; hit <= 4; ++hit) line.receive(shot(hit, "9"))->bAngewaehlt = hit % 2 == 0;
  line.bench.clock.set("21.11.2026 17:30:05");
  QVERIFY(VerbucheHaeringSchuss(line.bench.workplace(), &line.bench.store(), line.shots, line.flex));
  QCOMPARE(line.states(), (QStringList{"1|0|0|00:00:00", "2|-1|0|21.11.2026 17:30:05", "3|0|0|00:00:00",
                                       "4|-1|0|21.11.2026 17:30:05"}));
  QCOMPARE(line.shots.count(), 2);
  QCOMPARE(line.flex.rows(), 3);
  QCOMPARE(line.flex.text(1, 2), QString("1"));
  QCOMPARE(line.flex.text(2, 2), QString("3"));
}

void TestOpenShots::bookingARowThatIsGone() {
  Line line;
  line.receive(shot(1, "9"));
  line.bench.store().execute("Delete * from Haering_Daten");
  QVERIFY(VerbucheHaeringSchuss(line.bench.workplace(), &line.bench.store(), line.shots, line.flex));
  QCOMPARE(line.shots.count(), 0);
  QCOMPARE(line.flex.rows(), 1);
}

void TestOpenShots::messages_data() {
  QTest::addColumn<QString>("text");
  QTest::addColumn<std::function<void(const Workplace&)>>("operation");
  const auto row = [](const char* name, const QString& text,
                      std::function<void(const Workplace&)> operation) {
    QTest::newRow(name) << text << operation;
  };
  static const auto s = shot(1, "9");
  row("SpeichereHaeringSchuss", "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!",
      [](const Workplace& w) { QVERIFY(!SpeichereHaeringSchuss(w, nullptr, *s)); });
  row("VerwerfeHaeringSchuss", "Fehler beim Verwerfen der Intarso-Ergebnisse in die Datenbank!",
      [](const Workplace& w) { QVERIFY(!VerwerfeHaeringSchuss(w, nullptr, *s)); });
  row("VerbucheHaeringSchuss", "Fehler beim Verbuchen der Intarso-Ergebnisse in die Datenbank!",
      [](const Workplace& w) {
        ShotCollection shots;
        shots.add(s, s->Key);
        TextTable flex(2);
        QVERIFY(!VerbucheHaeringSchuss(w, nullptr, shots, flex));
        QCOMPARE(shots.count(), 1);
      });
  row("AnzahlOffeneSchuesse", "Fehler beim Ermitteln noch nicht verbuchter Schussdaten!",
      [](const Workplace& w) { QCOMPARE(AnzahlOffeneSchuesse(w, nullptr, 1), std::int16_t(0)); });
  row("StartnummerOffeneSchuesse",
      "Fehler beim Ermitteln des Schützen mit noch nicht verbuchter Schussdaten!",
      [](const Workplace& w) { QCOMPARE(StartnummerOffeneSchuesse(w, nullptr, 1), QString()); });
  row("LadeOffeneSchuesse", "Fehler beim Laden der noch nicht verbuchter Schussdaten!",
      [](const Workplace& w) { QVERIFY(!LadeOffeneSchuesse(w, nullptr, 1, [](const auto&) {})); });
  row("UpdateHaeringStartnummer", "Fehler bei UpdateHaeringStartnummer_err!",
      [](const Workplace& w) { QVERIFY(!UpdateHaeringStartnummer(w, nullptr, *s)); });
}

void TestOpenShots::messages() {
  QFETCH(QString, text);
  QFETCH(std::function<void(const Workplace&)>, operation);
  Workbench bench;
  bench.expectError(91, text, BoxAnswer::Retry);
  bench.expectError(91, text, BoxAnswer::Abort);
  if (text.contains("Speichern der Intarso"))
    bench.expectLoss(*shot(1, "9"), BoxAnswer::Abort, BoxAnswer::Yes);
  operation(bench.workplace());
}

void TestOpenShots::aShotIsNotGivenUpByOneAnswer_data() {
  QTest::addColumn<BoxAnswer>("given");
  QTest::newRow("abort") << BoxAnswer::Abort;
  QTest::newRow("ignore") << BoxAnswer::Ignore;
}
void TestOpenShots::aShotIsNotGivenUpByOneAnswer() {
  QFETCH(BoxAnswer, given);
  Line line;
  dao::Database& db = line.bench.store();
  const dao::TableDef table = db.tableDef("Haering_Daten");
  db.dropTable("Haering_Daten");
  const Error failure =
      line.bench.failureOf([&] { line.bench.store().openRecordset("Select * from Haering_Daten"); });
  const QString text = "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!";
  const auto s = shot(17, "9,7");
  line.bench.expectError(failure, text, given).presetting(BoxAnswer::Retry);
  line.bench.expectLoss(*s, given, BoxAnswer::No);
  line.bench.expectError(failure, text, BoxAnswer::Retry).during([&] { db.createTable(table); });
  QVERIFY(SpeichereHaeringSchuss(line.bench.workplace(), &db, *s));
  QCOMPARE(line.states(), QStringList{"17|0|0|00:00:00"});
}

void TestOpenShots::anIgnoredColumnIsAskedAboutOnce() {
  Line line;
  dao::Database& db = line.bench.store();
  dao::TableDef table = db.tableDef("Haering_Daten");
  db.dropTable("Haering_Daten");
  for (const char* missing : {"X", "Y"})
    table.fields.erase(std::find_if(table.fields.begin(), table.fields.end(),
                                    [missing](const dao::FieldDef& field) { return field.name == missing; }));
  db.createTable(table);
  const QString text = "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!";
  const auto s = shot(17, "9,7");
  line.bench.expectError(3265, text, BoxAnswer::Ignore);
  line.bench.expectLoss(*s, BoxAnswer::Ignore, BoxAnswer::Yes);
  line.bench.expectError(3265, text, BoxAnswer::Ignore);
  QVERIFY(SpeichereHaeringSchuss(line.bench.workplace(), &db, *s));
  QCOMPARE(line.states(), QStringList{"17|0|0|00:00:00"});
}

/// Else what happens to it would happen to the next one's row.
void TestOpenShots::aShotThatIsGivenUpKeepsItsNumber() {
  Line line;
  line.receive(shot(1, "9"));
  const QString path = line.bench.path("Pokal.qkk");
  refuse(path, StoreAct::Insert, "Haering_Daten", "Treffernummer", 2);
  const auto lost = shot(2, "9");
  const Error failure = line.bench.failureOf([&] {
    const auto rows = line.bench.store().openRecordset("Select * from Haering_Daten");
    rows->addNew();
    rows->setValue("Treffernummer", 2);
    rows->update();
  });
  line.bench.expectError(failure, "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!",
                         BoxAnswer::Abort);
  line.bench.expectLoss(*lost, BoxAnswer::Abort, BoxAnswer::Yes);
  line.receive(lost);
  const auto next = line.receive(shot(3, "9"));
  QVERIFY(next->ID != lost->ID);
  QVERIFY(VerwerfeHaeringSchuss(line.bench.workplace(), &line.bench.store(), *lost));
  QCOMPARE(line.restored(), (QStringList{"1", "3"}));
}

void TestOpenShots::aShotThatIsGivenUpBeforeItsRowHasNone() {
  Line line;
  dao::Database& db = line.bench.store();
  dao::TableDef table = db.tableDef("Haering_Daten");
  db.dropTable("Haering_Daten");
  std::erase_if(table.fields, [](const dao::FieldDef& field) { return field.name == "BuchungsZeitpunkt"; });
  db.createTable(table);
  const auto lost = shot(1, "9");
  line.bench.expectError(3265, "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!",
                         BoxAnswer::Abort);
  line.bench.expectLoss(*lost, BoxAnswer::Abort, BoxAnswer::Yes);
  QVERIFY(!SpeichereHaeringSchuss(line.bench.workplace(), &db, *lost));
  QCOMPARE(lost->ID, 0);
}

void TestOpenShots::aShotWithoutARowTakesNoOthersNumber() {
  Line line;
  line.receive(shot(1, "9"));
  dao::Database& db = line.bench.store();
  const dao::TableDef table = db.tableDef("Haering_Daten");
  db.execute("Select * Into Kopie From Haering_Daten");
  db.dropTable("Haering_Daten");
  db.createQuery("Haering_Daten", "Select Distinct * From Kopie");
  const QString text = "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!";
  const auto s = shot(2, "9");
  line.bench.expectError(errors::kNotUpdatable, text, BoxAnswer::Ignore);
  line.bench.expectLoss(*s, BoxAnswer::Ignore, BoxAnswer::Yes);
  // Each column but the number and Verworfen, and the row itself.
  for (size_t i = 0; i < table.fields.size() - 1; ++i)
    line.bench.expectError(errors::kNotEditing, text, BoxAnswer::Ignore);
  SpeichereHaeringSchuss(line.bench.workplace(), &db, *s);
  QCOMPARE(s->ID, 0);
}

void TestOpenShots::retryRepeatsTheStatementThatFailed() {
  Line line;
  dao::Database& db = line.bench.store();
  const dao::TableDef table = db.tableDef("Haering_Daten");
  db.dropTable("Haering_Daten");
  line.bench
      .expectError(
          line.bench.failureOf([&] { line.bench.store().openRecordset("Select * from Haering_Daten"); }),
          "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!", BoxAnswer::Retry)
      .during([&] { db.createTable(table); });
  QVERIFY(SpeichereHaeringSchuss(line.bench.workplace(), &db, *shot(1, "9")));
  QCOMPARE(line.states(), QStringList{"1|0|0|00:00:00"});
}

void TestOpenShots::ignoreGoesOn() {
  Line line;
  const auto s = line.receive(shot(1, "9"));
  line.bench.store().execute("UPDATE Haering_Daten SET RingwertmitZehntel = 40000");
  line.bench.expectError(6, "Fehler beim Laden der offenen Intarso-Ergebnisse aus der Datenbank!",
                         BoxAnswer::Ignore);
  std::shared_ptr<HaeringSchuss> loaded;
  LadeOffeneSchuesse(line.bench.workplace(), &line.bench.store(), 3, [&](auto shot) { loaded = shot; });
  QVERIFY(loaded);
  QCOMPARE(loaded->RingMitZehntel, 40000.0);
  QCOMPARE(loaded->RingOhneZehntel, qint16(0));
  QCOMPARE(loaded->Key, s->Key);
}

void TestOpenShots::abortLeavesTheRowOut() {
  Line line;
  const auto broken = line.receive(shot(1, "9"));
  line.receive(shot(2, "9"));
  line.bench.store().execute("UPDATE Haering_Daten SET RingwertmitZehntel = 40000 WHERE ID = " +
                             QString::number(broken->ID));
  line.bench.expectError(6, "Fehler beim Laden der offenen Intarso-Ergebnisse aus der Datenbank!",
                         BoxAnswer::Abort);
  QCOMPARE(line.restored(), QStringList{"2"});
}

QTEST_MAIN(TestOpenShots)
#include "test_open_shots.moc"
