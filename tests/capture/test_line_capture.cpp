// Transfer, storing and discarding on a line, as the operator works it.

#include <QSignalSpy>
#include <QTest>

#include "tests/capture/line.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString StoreFirst =
    "Bitte wählen Sie zuerst die Schüsse.\r\nund übertragen diese in die Disziplin(en).";
const QString StoreOnlyFirst =
    "Bitte wählen Sie zuerst die Schüsse\r\nund übertragen diese in die Disziplin(en).";
const QString DiscardAll = "Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?";
const QString DiscardTicked = "Sollen die gewählten Intarso Schuss dieser Linie verworfen werden?";

}  // namespace

class TestLineCapture : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void newLine();
  void transferRebuildsAll();
  void sightersCount();
  void tooManyShots();
  void teilerAloneHoldsTen();
  void sameKeyTwiceInATransfer();
  void sameRandomNumberTwice();
  void extraShotIsZeroedInPlace();
  void storingWithBooking();
  void storingOnlyThenAgain();
  void storingOnlySurvivesARestart();
  void tickAfterTheTransfer();
  void failedStoringKeepsAll();
  void aFailedPictureEndsNothing();
  void eachKindOfResultIsCounted();
  void successSaysWhatWasStored();
  void bookingGivenUpIsNoSuccess();
  void whatIsBookedIsOpenNoMore_data();
  void whatIsBookedIsOpenNoMore();
  void bookingTakesNoOtherShotAway();
  void storingNeedsATransfer();
  void discardingAll();
  void discardingNothing();
  void discardingTheTicked();
  void aRefusedShotTicksNoOther();
  void anotherShooter();
  void anotherShooterWantsHisOwnTransfer();
  void withoutADatabase();
  void vanishedDiscipline();
};

void TestLineCapture::newLine() {
  Line line;
  QCOMPARE(line.capture->flex().columns(), 32);
  QCOMPARE(line.capture->ffErg().rows(), 1);
  QCOMPARE(line.capture->ffErg().text(0, 11), QString("Serie"));
  QCOMPARE(line.capture->lstDisziTarvex().count(), 4);
  QCOMPARE(line.capture->lstKombiTarvex().count(), 1);
  QCOMPARE(line.capture->nOffeneSchuss(), 0);
}

void TestLineCapture::transferRebuildsAll() {
  Line line;
  line.receive(shots("9,7/72,4 10/12,3 8/5"));
  line.choose({0, 1});
  line.tick(1);
  line.tick(3);
  line.capture->m_cmdUebertragenTarvex_Click();
  QCOMPARE(line.pending(), (QStringList{"Glücksscheibe 72,4", "Glücksscheibe 5", "10m Luftgewehr 17"}));
  QCOMPARE(line.capture->m_colGewaehlt().count(), 2);
  QCOMPARE(line.capture->ffErg().text(1, 2), QString("8"));
  QCOMPARE(line.capture->bestResults().beste,
           (QStringList{"    17,0 - 10m Luftgewehr", "   ", "     5,0 - Glücksscheibe"}));
  line.tick(3, "0");
  line.capture->m_cmdUebertragenTarvex_Click();
  QCOMPARE(line.pending(), (QStringList{"Glücksscheibe 72,4", "10m Luftgewehr 9"}));
  QCOMPARE(line.capture->ffErg().text(1, 2), QString());
}

void TestLineCapture::sightersCount() {
  Line line;
  const Shots all = shots("2x9");
  all[0]->ProbeMatch = "P";
  line.receive(all);
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.pending(), QStringList{"10m Luftgewehr 18"});
}

void TestLineCapture::tooManyShots() {
  Line line;
  line.receive(shots("41x9"));
  line.choose({3});
  for (int row = 1; row <= 40; ++row) line.tick(row);
  line.capture->m_cmdUebertragenTarvex_Click();
  const QStringList before = line.pending();
  QCOMPARE(before.size(), 1);
  line.tick(41);
  line.bench.dialogs.expect(tooMany(41, 40)).titled("Hinweis").with(BoxButtons::Ok);
  line.capture->m_cmdUebertragenTarvex_Click();
  QCOMPARE(line.pending(), before);
  QCOMPARE(line.capture->m_colGewaehlt().count(), 40);
}

void TestLineCapture::teilerAloneHoldsTen() {
  Line line;
  line.receive(shots("11x9/30"));
  line.choose({1});
  line.bench.dialogs.expect(tooMany(11, 10));
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.pending(), QStringList());
  line.tick(11, "0");
  line.capture->m_cmdUebertragenTarvex_Click();
  QCOMPARE(line.pending().size(), 10);
}

void TestLineCapture::sameKeyTwiceInATransfer() {
  Line line;
  line.receive(shots("2x9"));
  line.choose({0});
  // The station's next record overwrote the first object in place.
  line.capture->m_colHaeringSchuss().at(0)->Key = line.capture->m_colHaeringSchuss().at(1)->Key;
  for (const auto& s : line.capture->m_colHaeringSchuss().objects()) s->bAngewaehlt = true;
  line.bench.expectError(457, "Fehler beim Übertragen der Ergebnisse zu den Disziplinen!", BoxAnswer::Abort);
  line.capture->m_cmdUebertragenTarvex_Click();
  QCOMPARE(line.capture->m_colGewaehlt().count(), 1);
}

void TestLineCapture::sameRandomNumberTwice() {
  Line line;
  line.receive(shots("8x9"));
  line.choose({0, 2});
  line.bench.chance.constant = 5;
  line.bench.expectError(457, "Fehler bei SaveSerieInKlasse_err!", BoxAnswer::Ignore);
  line.bench.expectError(457, "Fehler bei SaveSerieInKlasse_err!", BoxAnswer::Abort);
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.pending(), QStringList{"10m Luftgewehr 36"});
}

void TestLineCapture::extraShotIsZeroedInPlace() {
  Line line;
  line.bench.store().execute("UPDATE Disziplin SET RingSerie = 2 WHERE ID = 4");
  line.receive(shots("2x9,7"));
  line.choose({3});
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.pending(), QStringList{"Kette 9"});
  line.choose({0});
  line.capture->m_cmdUebertragenTarvex_Click();
  QCOMPARE(line.pending(), QStringList{"10m Luftgewehr 9"});
  // Grid and table keep the true value.
  QCOMPARE(line.capture->flex().text(2, 4), QString("9,7"));
  QCOMPARE(line.rows("Haering_Daten", "RingwertmitZehntel"), (QStringList{"9,7", "9,7"}));
}

void TestLineCapture::storingWithBooking() {
  Line line;
  line.receive(shots("9,7/72,4 10/12,3 8/5"));
  line.choose({0, 1});
  line.tick(1);
  line.tick(2);
  line.capture->m_cmdUebertragenTarvex_Click();
  QSignalSpy best(line.capture.get(), &LineCapture::bestResultsChanged);
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.rows("Schuss", "Ergebnis"), (QStringList{"72,4", "12,3"}));
  QCOMPARE(line.rows("SchussSerien", "Ergebnis"), QStringList{"19"});
  QCOMPARE(line.rows("Grafik_Scheibe", "Name"), QStringList{"Müller, Änne"});
  QCOMPARE(line.rows("Grafik_Schuss", "Ringwert"), (QStringList{"9,7", "10"}));
  QCOMPARE(line.rows("Haering_Daten", "Verbucht"), (QStringList{"-1", "-1", "0"}));
  QCOMPARE(line.capture->nOffeneSchuss(), 1);
  QCOMPARE(line.capture->flex().rows(), 2);
  QCOMPARE(line.capture->flex().text(1, 2), QString("3"));
  QCOMPARE(line.pending(), QStringList());
  QCOMPARE(line.capture->m_colGewaehlt().count(), 0);
  QCOMPARE(line.capture->ffErg().text(1, 1), QString());
  QCOMPARE(line.capture->ffErg().text(1, 0), QString(" R10"));
  QVERIFY(line.capture->bestResults().beste.isEmpty());
  QCOMPARE(best.count(), 1);
  QCOMPARE(line.count, QString("Gesamt: 1 Gewählt: 0"));
  QVERIFY(!line.enabled);
}

void TestLineCapture::storingOnlyThenAgain() {
  Line line;
  line.receive(shots("4x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  line.capture->cmd_SaveOnlyTarvex_Click();
  QCOMPARE(line.rows("SchussSerien", "Ergebnis"), QStringList{"36"});
  QCOMPARE(line.rows("Haering_Daten", "Verbucht"), (QStringList{"0", "0", "0", "0"}));
  QCOMPARE(line.ticks(), QString("xxxx"));
  line.bench.dialogs.expect(StoreOnlyFirst).titled("Hinweis").with(BoxButtons::Ok);
  line.capture->cmd_SaveOnlyTarvex_Click();
  // Nothing keeps the shots from being stored once more after a transfer.
  line.capture->m_cmdUebertragenTarvex_Click();
  line.capture->cmd_SaveOnlyTarvex_Click();
  QCOMPARE(line.rows("SchussSerien", "Ergebnis"), (QStringList{"36", "36"}));
}

void TestLineCapture::storingOnlySurvivesARestart() {
  Line line;
  line.receive(shots("2x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  line.capture->cmd_SaveOnlyTarvex_Click();
  line.restart();
  QCOMPARE(line.capture->AnzahlOffeneSchuesse(3), std::int16_t(2));
  line.capture->LadeOffeneSchuesse(3);
  QCOMPARE(line.capture->nOffeneSchuss(), 2);
  QCOMPARE(line.ticks(), QString(".."));
  QCOMPARE(line.capture->flex().text(1, 0), QString());
}

void TestLineCapture::tickAfterTheTransfer() {
  Line line;
  line.receive(shots("3x9"));
  line.choose({0});
  line.tick(1);
  line.tick(2);
  line.capture->m_cmdUebertragenTarvex_Click();
  line.tick(3);
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.rows("SchussSerien", "Ergebnis"), QStringList{"18"});
  QCOMPARE(line.rows("Grafik_Scheibe", "AnzEinschuesse"), QStringList{"3"});
  QCOMPARE(line.rows("Haering_Daten", "Verbucht"), (QStringList{"-1", "-1", "-1"}));
}

void TestLineCapture::failedStoringKeepsAll() {
  Line line;
  line.receive(shots("2x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  line.bench.store().dropTable("SchussSerien");
  line.bench.expectError(
      line.bench.failureOf([&] { line.bench.store().openRecordset("Select * from SchussSerien"); }),
      "Fehler beim Speichern der Ergebnisse in die Datenbank!", BoxAnswer::Abort);
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.pending(), QStringList{"10m Luftgewehr 18"});
  QCOMPARE(line.rows("Haering_Daten", "Verbucht"), (QStringList{"0", "0"}));
  QCOMPARE(line.rows("Grafik_Scheibe", "ID"), QStringList());
}

void TestLineCapture::aFailedPictureEndsNothing() {
  Line line;
  line.receive(shots("4x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  line.bench.store().dropTable("Grafik_Scheibe");
  line.bench.expectError(line.bench.failureOf([&] {
    line.bench.store().openRecordset("Grafik_Scheibe", dao::RecordsetType::Table);
  }),
                         "Fehler bei SpeichernInGrafikDatenbank_err!", BoxAnswer::Abort, "Fehler: ");
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.rows("SchussSerien", "Ergebnis"), QStringList{"36"});
  QCOMPARE(line.rows("Haering_Daten", "Verbucht"), (QStringList{"-1", "-1", "-1", "-1"}));
  QCOMPARE(line.capture->nOffeneSchuss(), 0);
  QCOMPARE(line.pending(), QStringList());
}

void TestLineCapture::eachKindOfResultIsCounted() {
  QCOMPARE(storedText({1, 1, 1}, "Huber", {}),
           "1 Serie, 1 Teiler und 1 Ring-Teiler für Huber gespeichert; die Schüsse bleiben offen.");
  QCOMPARE(storedText({2, 0, 0}, "Huber", 1), "2 Serien für Huber gespeichert, 1 Schuss verbucht.");
  QCOMPARE(storedText({0, 1, 0}, "", 0), "1 Teiler gespeichert, kein Schuss verbucht.");
  QCOMPARE(storedText({0, 0, 1}, "", 2), "1 Ring-Teiler gespeichert, 2 Schüsse verbucht.");
  QCOMPARE(storedText({}, "Huber", 2), "");
}

void TestLineCapture::successSaysWhatWasStored() {
  Line line;
  QSignalSpy said(line.capture.get(), &LineCapture::stored);
  line.receive(shots("5x9/30"));
  line.choose({0, 1});
  line.capture->HaeringSchussAnAbwaehlen(true);
  line.capture->cmd_SaveOnlyTarvex_Click();
  QCOMPARE(said.takeFirst().at(0).toString(),
           QString("2 Serien und 5 Teiler für Müller, Änne gespeichert; die Schüsse bleiben offen."));
  line.choose({0});
  line.tick(5, "0");
  line.capture->m_cmdUebertragenTarvex_Click();
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(said.takeFirst().at(0).toString(),
           QString("1 Serie für Müller, Änne gespeichert, 4 Schüsse verbucht."));
  line.choose({1});
  line.tick(1);
  line.capture->m_cmdUebertragenTarvex_Click();
  // A row that was deleted meanwhile can't be booked.
  line.bench.store().execute("Delete * from Haering_Daten where Verbucht = 0");
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(said.takeFirst().at(0).toString(),
           QString("1 Teiler für Müller, Änne gespeichert, kein Schuss verbucht."));
  // What failed says so itself.
  line.receive(shots("9/30", 11));
  line.tick(1);
  line.capture->m_cmdUebertragenTarvex_Click();
  line.bench.store().dropTable("Schuss");
  line.bench.expectError(
      line.bench.failureOf([&] { line.bench.store().openRecordset("Select * from Schuss"); }),
      "Fehler beim Speichern der Ergebnisse in die Datenbank!", BoxAnswer::Abort);
  line.capture->m_cmdSaveTarvex_Click();
  QVERIFY(said.isEmpty());
}

/// "Stored" alone would sound as if the shots were booked.
void TestLineCapture::bookingGivenUpIsNoSuccess() {
  Line line;
  QSignalSpy said(line.capture.get(), &LineCapture::stored);
  line.receive(shots("4x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  line.bench.store().dropTable("Haering_Daten");
  line.bench.expectError(
      line.bench.failureOf([&] { line.bench.store().openRecordset("Select * from Haering_Daten"); }),
      "Fehler beim Verbuchen der Intarso-Ergebnisse in die Datenbank!", BoxAnswer::Abort);
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.rows("SchussSerien", "Ergebnis"), QStringList{"36"});
  QVERIFY(said.isEmpty());
}

void TestLineCapture::whatIsBookedIsOpenNoMore_data() {
  QTest::addColumn<bool>("overwritten");
  QTest::newRow("under its key") << false;
  QTest::newRow("under another key") << true;
}

/// A booking that is given up in the middle: the next shooter must not be credited with these.
void TestLineCapture::whatIsBookedIsOpenNoMore() {
  QFETCH(bool, overwritten);
  Line line;
  line.receive(shots("4x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  // A file of two shots: the object has the fields of the second, its row and its place those of the first.
  if (overwritten) line.capture->m_colHaeringSchuss().at(0)->Key = "another";
  const int third = line.capture->m_colHaeringSchuss().at(2)->ID;
  refuseChanges(line.bench.path("Pokal.qkk"), "Haering_Daten", third);
  const Error failure = line.bench.failureOf([&] {
    line.bench.store().execute("UPDATE Haering_Daten SET Verbucht = True WHERE ID = " +
                               QString::number(third));
  });
  line.bench.expectError(failure, "Fehler beim Verbuchen der Intarso-Ergebnisse in die Datenbank!",
                         BoxAnswer::Abort);
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.rows("Haering_Daten", "Verbucht"), (QStringList{"-1", "-1", "0", "0"}));
  QCOMPARE(line.capture->nOffeneSchuss(), 2);
  if (!overwritten) QCOMPARE(line.ticks(), QString("xx"));
  QCOMPARE(line.count, QString("Gesamt: 2 Gewählt: 2"));
}

void TestLineCapture::bookingTakesNoOtherShotAway() {
  Line line;
  line.receive(shots("3x9"));
  line.choose({0});
  line.tick(1);
  line.capture->m_cmdUebertragenTarvex_Click();
  const auto& open = line.capture->m_colHaeringSchuss();
  open.at(0)->Key = open.keyAt(1);
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.rows("Haering_Daten", "Verbucht"), (QStringList{"-1", "0", "0"}));
  QCOMPARE(line.capture->nOffeneSchuss(), 2);
}

void TestLineCapture::storingNeedsATransfer() {
  Line line;
  line.bench.dialogs.expect(StoreFirst).titled("Hinweis").with(BoxButtons::Ok);
  line.capture->m_cmdSaveTarvex_Click();
  line.receive(shots("2x9"));
  line.choose({1});
  line.tick(1);
  line.capture->m_cmdUebertragenTarvex_Click();
  // Chosen shots, but no discipline that counts them.
  line.choose({});
  line.tick(1, "0");
  line.capture->m_cmdUebertragenTarvex_Click();
  line.bench.dialogs.expect(StoreOnlyFirst);
  line.capture->cmd_SaveOnlyTarvex_Click();
}

void TestLineCapture::discardingAll() {
  Line line;
  line.receive(shots("3x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  line.bench.dialogs.expect(DiscardAll, BoxAnswer::No)
      .titled("Hinweis")
      .with(BoxButtons::YesNo)
      .presetting(BoxAnswer::No);
  line.capture->HaeringSchussVerwerfenAlle();
  QCOMPARE(line.capture->nOffeneSchuss(), 3);
  line.bench.dialogs.expect(DiscardAll, BoxAnswer::Yes);
  line.capture->HaeringSchussVerwerfenAlle();
  QCOMPARE(line.capture->nOffeneSchuss(), 0);
  QCOMPARE(line.capture->flex().rows(), 1);
  QCOMPARE(line.rows("Haering_Daten", "Verworfen"), (QStringList{"-1", "-1", "-1"}));
  QCOMPARE(line.pending(), QStringList());
  QVERIFY(line.capture->bestResults().serien.isEmpty());
  QCOMPARE(line.capture->ffErg().text(1, 1), QString());
  QVERIFY(!line.enabled);
}

void TestLineCapture::discardingNothing() {
  Line line;
  line.bench.dialogs.expect(DiscardAll, BoxAnswer::Yes);
  line.capture->HaeringSchussVerwerfenAlle();
  QCOMPARE(line.rows("Haering_Daten", "ID"), QStringList());
}

void TestLineCapture::discardingTheTicked() {
  Line line;
  line.receive(shots("4x9"));
  line.choose({0});
  line.tick(1);
  line.tick(3);
  line.capture->m_cmdUebertragenTarvex_Click();
  QCOMPARE(line.pending(), QStringList{"10m Luftgewehr 18"});
  line.bench.dialogs.expect(DiscardTicked, BoxAnswer::No)
      .titled("Hinweis")
      .with(BoxButtons::YesNo)
      .presetting(BoxAnswer::No);
  line.capture->HaeringSchussVerwerfenGewaehlte();
  QCOMPARE(line.capture->nOffeneSchuss(), 4);
  line.bench.dialogs.expect(DiscardTicked, BoxAnswer::Yes);
  line.capture->HaeringSchussVerwerfenGewaehlte();
  QCOMPARE(line.rows("Haering_Daten", "Verworfen"), (QStringList{"-1", "0", "-1", "0"}));
  QCOMPARE(line.pending(), QStringList());
  QCOMPARE(line.capture->ffErg().text(1, 1), QString());
  QCOMPARE(line.ticks(), QString(".."));
  QCOMPARE(line.capture->flex().text(1, 2), QString("2"));
  QCOMPARE(line.capture->flex().text(2, 2), QString("4"));
}

void TestLineCapture::aRefusedShotTicksNoOther() {
  Line line;
  line.receive(shots("1x9"));
  const auto twin = shots("1x9").front();
  QCOMPARE(twin->Key, line.capture->m_colHaeringSchuss().keyAt(0));
  twin->bAngewaehlt = true;
  line.bench.expectError(457, "Fehler beim Übertragen der Intarso-Schussdaten in die Gridanzeige!",
                         BoxAnswer::Ignore);
  QVERIFY(line.capture->uebernehmeManuellenSchuss(twin));
  QCOMPARE(line.ticks(), QString("."));
}

void TestLineCapture::anotherShooter() {
  Line line;
  line.receive(shots("2x9"));
  line.capture->assignOpenShots("8'b");
  QCOMPARE(line.rows("Haering_Daten", "Startnummer"), (QStringList{"8'b", "8'b"}));
  QCOMPARE(line.capture->m_colHaeringSchuss().at(1)->SchuetzeStartnummer, QString("8'b"));
  QCOMPARE(line.capture->StartnummerOffeneSchuesse(3), QString("8'b"));
}

void TestLineCapture::anotherShooterWantsHisOwnTransfer() {
  Line line;
  line.receive(shots("4x9"));
  line.choose({0});
  line.capture->HaeringSchussAnAbwaehlen(true);
  QCOMPARE(line.pending().size(), 1);
  QSignalSpy best(line.capture.get(), &LineCapture::bestResultsChanged);
  line.capture->assignOpenShots("105");
  QCOMPARE(line.pending(), QStringList());
  QCOMPARE(best.count(), 1);
  QVERIFY(line.capture->bestResults().beste.isEmpty());
  QCOMPARE(line.capture->ffErg().text(1, 1), QString());
  line.bench.dialogs.expect(StoreFirst);
  line.capture->m_cmdSaveTarvex_Click();
  QCOMPARE(line.rows("SchussSerien", "Startnummer"), QStringList());
  QCOMPARE(line.ticks(), QString("xxxx"));
}

void TestLineCapture::withoutADatabase() {
  Line line;
  line.receive(shots("2x9"));
  line.capture->setDatabase(nullptr);
  line.bench.expectError(91, "Fehler bei Select_Disziplinen_err!", BoxAnswer::Abort, "Fehler: ");
  line.choose({0});
  line.bench.expectError(91, "Fehler bei m_lstKombiTarvex_Click_err!", BoxAnswer::Abort, "Fehler: ");
  line.bench.expectError(91, "Fehler bei Select_Disziplinen_err!", BoxAnswer::Abort, "Fehler: ");
  line.capture->m_lstKombiTarvex_Click();
  line.bench.expectError(91, "Fehler beim Anwählen der Intarso-Disziplin!", BoxAnswer::Abort);
  line.capture->HaeringSchussWettbewerbAnwaehlen(1, [](int) {});
  line.bench.expectError(91, "Fehler beim Speichern der Intarso-Ergebnisse in die Datenbank!",
                         BoxAnswer::Abort);
  line.bench.expectLoss(*shot(3, "9"), BoxAnswer::Abort, BoxAnswer::Yes);
  QVERIFY(!line.capture->SpeichereHaeringSchuss(*shot(3, "9")));
}

void TestLineCapture::vanishedDiscipline() {
  Line line;
  line.bench.store().execute("Delete * from Disziplin where ID = 1");
  line.bench.expectError(91, "Fehler bei Select_Disziplinen_err!", BoxAnswer::Ignore, "Fehler: ");
  line.choose({0, 1});
  QCOMPARE(line.capture->m_colDisziplinen().count(), 1);
}

QTEST_MAIN(TestLineCapture)
#include "test_line_capture.moc"
