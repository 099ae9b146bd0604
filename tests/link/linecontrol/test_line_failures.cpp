// What a line loses nothing by: the store or the network fails, lines are rebuilt, or something happens
// inside a wait or behind a box.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPointer>
#include <QTest>
#include <QTimer>
#include <QTimerEvent>

#include "link/linecontrol/line_disciplines.h"
#include "masterdata/making/competition.h"
#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "tests/app/range_office.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kNotThere = "Fehler: 3024 - " + errorDescription(3024) + "\nFehler bei Init_err!";
const QString kNotOpen =
    "Der Wettkampf ist auf dieser Linie nicht geöffnet. Sie versucht es von selbst wieder; mit F5 sofort.";
const QString kAskNone = "Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?";

}  // namespace

class TestLineFailures : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<RangeOffice>("1");
    QVERIFY(office_->open());
  }
  void cleanup() { office_.reset(); }

  void aShooterWhoCannotBeLoadedGetsNoShots();
  void missingTablesAreReported();
  void linesRebuiltInTheBoxOfInit();
  void additionalShotsGoOutOnceWhateverIsPressedMeanwhile();
  void aShotThatArrivesWhileOthersAreDiscardedStays();
  void unknownCompetitionIsReported();
  void aLineWithoutItsCompetitionSaysSoAndStartsNothing();
  void aLineOpensItsCompetitionByItself();
  void aClockSetBackKeepsNoLineWaiting();
  void aLineOpensItsCompetitionWithTheNextNeed_data();
  void aLineOpensItsCompetitionWithTheNextNeed();
  void failedStoringAsksAndKeepsTheFlagMeanwhile();
  void whatIsTypedBlindlyLosesNoShot();
  void aShotIsGivenUpOnPurposeOnly();
  void failedSendIsQuietWhereErrorsAreIgnored();
  void failedSendShowsWhereTheyAreNot();

 private:
  TextTable& stationGrid() { return *office_->on<TextGrid>(1, "flexHaeringDiszi").table(); }
  /// The line's competition isn't there, and the operator has given it up.
  void loseCompetition() {
    office_->boxes.expect(kNotThere, BoxAnswer::Abort).titled("Fehler");
    office_->line(1).Init(later());
  }
  /// It is there again, with a shot of an earlier run.
  void bringCompetition() {
    prepareStore(later());
    makeDemoCompetition(later());
    const auto db = dao::Database::open(later());
    db->createTable(office_->database()->tableDef("Haering_Daten"));
    db->createTable(office_->database()->tableDef("Haering_Gruppen"));
  }
  QString later() const { return office_->place.path("spaeter.qkk"); }
  QStringList emptyTexts() {
    QStringList texts;
    for (const char* grid : {"flexHaeringDiszi", "flex"})
      texts.append(office_->on<TextGrid>(1, grid).emptyText());
    for (const char* list : {"m_lstDisziTarvex", "m_lstKombiTarvex"})
      for (const QLabel* label : office_->on<QListView>(1, list).viewport()->findChildren<QLabel*>())
        if (!label->isHidden()) texts.append(label->text());
    return texts;
  }
  /// A second of the line that waits for its competition.
  void waitASecond() {
    office_->place.clock.advance(1000);
    auto* timer = office_->line(1).findChild<QTimer*>("timerWettkampf");
    if (!timer->isActive()) return;
    QTimerEvent event(timer->timerId());
    QCoreApplication::sendEvent(timer, &event);
  }
  int storedLater() const {
    const auto rows = dao::Database::open(later())->openRecordset("Select * from Haering_Daten");
    int count = 0;
    for (; !rows->eof(); rows->moveNext()) ++count;
    return count;
  }
  TextTable& shots() { return *office_->on<TextGrid>(1, "flex").table(); }
  /// Number and description of what the competition answers to a query.
  QString failureOf(const QString& query) {
    try {
      office_->database()->openRecordset(query);
    } catch (const Error& error) {
      return QString::number(error.number()) + " - " + error.description();
    }
    return "nothing";
  }

  std::unique_ptr<RangeOffice> office_;
};

void TestLineFailures::aShooterWhoCannotBeLoadedGetsNoShots() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  office_->database()->dropTable("Mannschaften");
  office_->boxes
      .expect(
          "Fehler: " + failureOf("Select * from Mannschaften") + "\nFehler bei SucheUndLadeSchuetzen_err!",
          BoxAnswer::Abort)
      .titled("Fehler");
  office_->chooseShooter(1, "105");
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Startnummer = '107'"), 1);
}

void TestLineFailures::missingTablesAreReported() {
  auto& combo = office_->on<QComboBox>(1, "cmbHaeringGruppen");
  const auto db = office_->database();
  db->execute("INSERT INTO Haering_Gruppen (GruppenName) VALUES ('Pistole')");
  office_->line(1).Fill_HaeringGruppen();
  db->dropTable("Haering_Gruppen_Disziplinen");
  office_->boxes
      .expect("Fehler: " + failureOf("Select * from Haering_Gruppen_Disziplinen") +
                  "\nFehler bei cmbHaeringGruppen_Click_err!",
              BoxAnswer::Abort)
      .titled("Fehler");
  combo.setFocus();
  QTest::keyClick(&combo, Qt::Key_Down);
  db->dropTable("Haering_Gruppen");
  office_->boxes
      .expect("Fehler: " + failureOf("Select * from Haering_Gruppen") +
                  "\nFehler beim Ermitteln der Intarso-Gruppen in Linie!",
              BoxAnswer::Abort)
      .titled("Fehler");
  office_->line(1).Fill_HaeringGruppen();
}

void TestLineFailures::linesRebuiltInTheBoxOfInit() {
  office_->boxes
      .expect("Fehler: 3024 - " + errorDescription(3024) + "\nFehler bei Init_err!", BoxAnswer::Ignore)
      .during([this] { office_->window().Load_Settings(); });
  office_->line(1).Init(office_->place.path("fort.qkk"));
  QCOMPARE(office_->line(1).sWettkampf(), office_->competition);
}

void TestLineFailures::additionalShotsGoOutOnceWhateverIsPressedMeanwhile() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  stationGrid().setText(1, LineDisciplines::Nachkauf, "5");
  stationGrid().setText(2, LineDisciplines::Nachkauf, "9");
  QStringList taken;
  office_->place.waits.clear();
  office_->place.waits.inEachSleep([&](int number) {
    if (number == 1) office_->press(1, "cmdNachkauf");
    taken << office_->takeCommand(1);
  });
  office_->boxes.expect("Nachkauf senden: \r\n- LG Meister\t(Gesamt: 40 - Akt. Nachkauf: 5 )       \r\n- " +
                            stationGrid().text(2, 1) + "\t(Gesamt: " + stationGrid().text(2, 3) +
                            " - Akt. Nachkauf: 9 )       \r\n",
                        BoxAnswer::Yes);
  office_->press(1, "cmdNachkauf");
  taken << office_->takeCommand(1);
  QCOMPARE(taken, (QStringList{"76 'Umschalten auf Preismodus", "801;5", "802;9"}));
}

void TestLineFailures::aShotThatArrivesWhileOthersAreDiscardedStays() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  const auto db = office_->database();
  const dao::TableDef table = db->tableDef("Haering_Daten");
  db->dropTable("Haering_Daten");
  office_->boxes.expect("Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?",
                        BoxAnswer::Yes);
  office_->boxes
      .expect(failureOf("Select * from Haering_Daten") +
                  "\nFehler beim Verwerfen der Intarso-Ergebnisse in die Datenbank!",
              BoxAnswer::Abort)
      .during([&] {
        db->createTable(table);
        office_->fire(1, shotRecord(1, 2, "8,1", "400"));
      });
  office_->press(1, "m_cmdVerwerfen");
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  QCOMPARE(shots().rows(), 2);
  QCOMPARE(shots().text(1, 4), QString("8,1"));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten where Verworfen = 0"), 1);
}

void TestLineFailures::unknownCompetitionIsReported() {
  office_->boxes
      .expect("Fehler: 3024 - " + errorDescription(3024) + "\nFehler bei Init_err!", BoxAnswer::Abort)
      .titled("Fehler");
  office_->line(1).Init(office_->place.path("fort.qkk"));
}

void TestLineFailures::aLineWithoutItsCompetitionSaysSoAndStartsNothing() {
  loseCompetition();
  QCOMPARE(emptyTexts(), QStringList(4, kNotOpen));
  office_->boxes.expect(kNotThere, BoxAnswer::Abort);
  office_->press(1, "cmdPreisModus");
  QCOMPARE(office_->takeCommand(1), QString());
  QCOMPARE(office_->mark(1), QString("pfeil"));
  office_->boxes.expect(kNotThere, BoxAnswer::Abort);
  office_->chooseShooter(1, "107");
  QCOMPARE(office_->line(1).sStartnummer(), QString());
  for (int second = 0; second < 60; ++second) waitASecond();  // no box of its own
  QCOMPARE(emptyTexts(), QStringList(4, kNotOpen));
}

void TestLineFailures::aLineOpensItsCompetitionByItself() {
  loseCompetition();
  waitASecond();
  bringCompetition();
  for (int second = 0; second < 15; ++second) waitASecond();
  QVERIFY(office_->on<QListView>(1, "m_lstDisziTarvex").model()->rowCount() > 0);
  QCOMPARE(emptyTexts(), QStringList({"Die Station bietet keine Disziplinen an.", "Keine offenen Schüsse"}));
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  QCOMPARE(office_->takeCommand(1), QString("76 'Umschalten auf Preismodus"));
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  QCOMPARE(storedLater(), 1);
  QVERIFY(!QFile::exists(office_->folderFile("HSlav1.ctl")));
}

void TestLineFailures::aClockSetBackKeepsNoLineWaiting() {
  loseCompetition();
  waitASecond();
  bringCompetition();
  office_->place.clock.advance(-3600 * 1000);
  waitASecond();
  QVERIFY(office_->on<QListView>(1, "m_lstDisziTarvex").model()->rowCount() > 0);
}

void TestLineFailures::aLineOpensItsCompetitionWithTheNextNeed_data() {
  QTest::addColumn<QString>("need");
  for (const char* need : {"price mode", "shooter"}) QTest::newRow(need) << QString(need);
}

void TestLineFailures::aLineOpensItsCompetitionWithTheNextNeed() {
  QFETCH(QString, need);
  loseCompetition();
  bringCompetition();
  if (need == "price mode") office_->press(1, "cmdPreisModus");
  office_->chooseShooter(1, "107");
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
  if (need != "price mode") office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  QCOMPARE(storedLater(), 1);
  QVERIFY(!QFile::exists(office_->folderFile("HSlav1.ctl")));
}

void TestLineFailures::failedStoringAsksAndKeepsTheFlagMeanwhile() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  const auto db = office_->database();
  const dao::TableDef table = db->tableDef("Haering_Daten");
  db->dropTable("Haering_Daten");
  const QString why = failureOf("Select * from Haering_Daten");
  const QString flag = office_->folderFile("HSlav1.ctl");
  bool waiting = false;
  office_->boxes
      .expect(why + "\nFehler beim Speichern der Intarso-Ergebnisse in die Datenbank!", BoxAnswer::Retry)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .presetting(BoxAnswer::Retry)
      .unasked("Linie 1")
      .during([&] {
        waiting = QFile::exists(flag);
        db->createTable(table);
      });
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  QVERIFY(waiting);
  QVERIFY(!QFile::exists(flag));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten"), 1);
  QCOMPARE(shots().rows(), 2);
}

void TestLineFailures::whatIsTypedBlindlyLosesNoShot() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->on<QLineEdit>(1, "m_txtStartNummer").setFocus();
  const auto db = office_->database();
  const dao::TableDef table = db->tableDef("Haering_Daten");
  db->dropTable("Haering_Daten");
  QStringList seen;
  office_->boxes
      .expect(failureOf("Select * from Haering_Daten") +
                  "\nFehler beim Speichern der Intarso-Ergebnisse in die Datenbank!",
              BoxAnswer::Retry)
      .unasked("Linie 1")
      .during([&] {
        const QPointer<QWidget> box = QApplication::activeModalWidget();
        for (const Qt::Key typed : {Qt::Key_1, Qt::Key_0, Qt::Key_7, Qt::Key_Return, Qt::Key_Escape})
          QTest::keyClick(box->windowHandle(), typed);
        seen << (box && box->isVisible() ? "offen" : "beantwortet");
        db->createTable(table);
        // Somebody reads it, and presses Enter.
        office_->place.clock.advance(1000);
        QTest::keyClick(box->windowHandle(), Qt::Key_Return);
        seen << (box && box->isVisible() ? "offen" : "beantwortet");
      });
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  QCOMPARE(seen, (QStringList{"offen", "beantwortet"}));
  QCOMPARE(office_->rowsOf("Select * from Haering_Daten"), 1);
  QVERIFY(!QFile::exists(office_->folderFile("HSlav1.ctl")));
  QCOMPARE(office_->line(1).sStartnummer(), QString("107"));
}

void TestLineFailures::aShotIsGivenUpOnPurposeOnly() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  const auto db = office_->database();
  db->dropTable("Haering_Daten");
  const QString failure = failureOf("Select * from Haering_Daten") +
                          "\nFehler beim Speichern der Intarso-Ergebnisse in die Datenbank!";
  const QString loss =
      "Der Schuss 1 an Linie 1 (9,7 Ringe, Startnummer 107) ist nicht gespeichert.\r\n\r\nWenn Sie "
      "abbrechen, "
      "geht er verloren: In der Liste steht er nur bis zum Ende des Programms, und niemand meldet ihn ein "
      "zweites Mal.\r\n\r\nTrotzdem abbrechen?";
  const QString flag = office_->folderFile("HSlav1.ctl");
  office_->boxes.expect(failure, BoxAnswer::Abort);
  office_->boxes.expect(loss, BoxAnswer::No).presetting(BoxAnswer::No).unasked("Linie 1").during([&] {
    // This question is no stray Enter's either.
    QTest::keyClick(QApplication::activeModalWidget()->windowHandle(), Qt::Key_J, Qt::AltModifier);
    QVERIFY(QApplication::activeModalWidget());
  });
  office_->boxes.expect(failure, BoxAnswer::Abort).during([&] { QVERIFY(QFile::exists(flag)); });
  office_->boxes.expect(loss, BoxAnswer::Yes);
  office_->fire(1, shotRecord(1, 1, "9,7", "123,4"));
  QVERIFY(!QFile::exists(flag));
  QCOMPARE(shots().rows(), 2);
}

void TestLineFailures::failedSendIsQuietWhereErrorsAreIgnored() {
  office_->place.files.unplug();
  office_->press(1, "cmdPreisModus");
  QCOMPARE(office_->mark(1), QString("go"));
  office_->place.files.heal();
}

void TestLineFailures::failedSendShowsWhereTheyAreNot() {
  office_->chooseShooter(1, "107");
  office_->place.files.unplug();
  office_->boxes.expect(kAskNone, BoxAnswer::Yes);
  office_->boxes.expect(
      "Fehler: 13 - " + errorDescription(13) + "\nFehler bei Set_Anmelden_SchuetzeDisziplinen_err!",
      BoxAnswer::Abort);
  office_->press(1, "cmdSendenSchuetzenDisziplinen");
  QCOMPARE(office_->mark(1), QString("pfeil"));
  office_->place.files.heal();
}

QTEST_MAIN(TestLineFailures)
#include "test_line_failures.moc"
