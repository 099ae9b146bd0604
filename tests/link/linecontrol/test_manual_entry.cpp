// A shot by hand on the real line: from the popup of the shot grid into grid, collection and table.
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "platform/runtime/numbers.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestManualEntry : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<RangeOffice>("1");
    QVERIFY(office_->open());
  }
  void cleanup() { office_.reset(); }

  void popupOnTheRightButton();
  void wantsAShooter();
  void twoShots();
  void followsAReceivedShot();
  void goesTheWayOfAnyShot();
  void noNumberBehindTheLastIsReported();
  void cancelAddsNothing();
  void secondOfTheSameKeyIsRefused();
  void linesRebuiltWhileTyping();

 private:
  TextTable& shots() { return *office_->on<TextGrid>(1, "flex").table(); }
  void enter(const std::function<void(QWidget&)>& drive) {
    office_->boxes.expectWindow("frmHaeringEinzelschuss", drive);
    the<QAction>(office_->line(1), "mnuPopHaeringManuellNeu").trigger();
  }
  static void hit(QWidget& window, const QString& ring, const QString& radius) {
    type(window, "txtTeilerFaktor", "1");
    type(window, "txtRingWertMit", ring);
    type(window, "txtRadius", radius);
    click(window, "cmdSave");
  }
  int rows() { return office_->rowsOf("Select * from Haering_Daten"); }

  std::unique_ptr<RangeOffice> office_;
};

void TestManualEntry::popupOnTheRightButton() {
  auto& flex = office_->on<TextGrid>(1, "flex");
  auto& popup = the<QMenu>(office_->line(1), "mnuPopManuellerSchuss");
  QTest::mouseClick(flex.viewport(), Qt::RightButton, {}, QPoint(5, 5));
  QContextMenuEvent event(QContextMenuEvent::Mouse, QPoint(5, 5), flex.viewport()->mapToGlobal(QPoint(5, 5)));
  QCoreApplication::sendEvent(flex.viewport(), &event);
  QVERIFY(popup.isVisible());
  QStringList entries;
  for (QAction* action : popup.actions()) {
    entries << action->objectName() + ": " + action->text();
    QVERIFY(action->isEnabled());
  }
  QCOMPARE(entries, (QStringList{"mnuPopHaeringManuellNeu: Schuss manuell hinzufügen...",
                                 "mnuPopHaeringManSchussSerie: Serie wählen (DEF)"}));
  popup.close();
}

void TestManualEntry::wantsAShooter() {
  office_->boxes.expect("Bitte wählen Sie einen Schützen!").titled("Hinweis");
  the<QAction>(office_->line(1), "mnuPopHaeringManuellNeu").trigger();
  QCOMPARE(shots().rows(), 1);
}

void TestManualEntry::twoShots() {
  office_->chooseShooter(1, "107");
  enter([&](QWidget& window) {
    QCOMPARE(the<QLineEdit>(window, "txtKlasse").text(), "frei");
    QCOMPARE(the<QLineEdit>(window, "txtWaffe").text(), "LG");
    QCOMPARE(the<QLineEdit>(window, "txtTeilerFaktor").text(), "0");
    QCOMPARE(the<QLineEdit>(window, "txtStartnummer").text(), "107");
    QVERIFY(the<QComboBox>(window, "cmbWettbewerbe").count() > 3);
    type(window, "txtKlasse", "20");
    type(window, "txtWaffe", "LP");
    office_->boxes.expect("Schuss hinzugefügt").titled("Hinweis");
    hit(window, "9,7", "123,4");
  });
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  enter([&](QWidget& window) {
    QCOMPARE(the<QLineEdit>(window, "txtKlasse").text(), "20");
    QCOMPARE(the<QLineEdit>(window, "txtWaffe").text(), "LP");
    QCOMPARE(the<QLineEdit>(window, "txtTeilerFaktor").text(), "1");
    QCOMPARE(the<QLineEdit>(window, "txtTrefferNummer").text(), "2");
    office_->boxes.expect("Schuss hinzugefügt");
    hit(window, "8", "300");
  });
  QCOMPARE(office_->line(1).nOffeneSchuss(), 2);
  QCOMPARE(shots().rowData(2), "0010002-20.11.2026-10:00:00");
  QCOMPARE(rows(), 2);
}

void TestManualEntry::followsAReceivedShot() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 7, "9,7", "123,4", "LG Serie 10"));
  shots().setText(1, 0, "-1");
  Q_EMIT office_->on<TextGrid>(1, "flex").clickedAt(1, 0);
  enter([&](QWidget& window) {
    QCOMPARE(the<QLineEdit>(window, "txtTrefferNummer").text(), "8");
    QCOMPARE(the<QComboBox>(window, "cmbWettbewerbe").currentText(), "LG Serie 10");
    office_->boxes.expect("Schuss hinzugefügt");
    hit(window, "10", "25");
  });
  QCOMPARE(shots().text(2, 0), "-1");  // ticked as the shot before it was
}

void TestManualEntry::goesTheWayOfAnyShot() {
  office_->chooseShooter(1, "107");
  office_->boxes.expectWindow("frmHaeringEinzelschuss", [&](QWidget& window) {
    office_->boxes.expect("Schuss hinzugefügt");
    hit(window, "9,7", "123,4");
  });
  the<QAction>(office_->line(1), "mnuPopHaeringManuellNeu").trigger();
  office_->drop();
  QVERIFY(office_->open());
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  office_->tickEntry(1, "m_lstDisziTarvex", "LG Meister");
  office_->place.random.give({0.1});
  office_->press(1, "m_cmdAlleWaehlenHaering");
  office_->press(1, "m_cmdSaveTarvex");
  QCOMPARE(office_->line(1).nOffeneSchuss(), 0);
  const auto db = office_->database();
  QCOMPARE(db->openRecordset("Select * from Haering_Daten")->value("Verbucht").toInt(), -1);
}

void TestManualEntry::noNumberBehindTheLastIsReported() {
  office_->chooseShooter(1, "107");
  office_->press(1, "cmdPreisModus");
  office_->fire(1, shotRecord(1, 32767, "9,7", "123,4"));
  office_->boxes
      .expect("Fehler: 6 - " + errorDescription(6) + "\nFehler bei mnuPopHaeringManuellNeu_Click_err!",
              BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  the<QAction>(office_->line(1), "mnuPopHaeringManuellNeu").trigger();
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
}

void TestManualEntry::cancelAddsNothing() {
  office_->chooseShooter(1, "107");
  enter([](QWidget& window) { click(window, "cmdCancel"); });
  QCOMPARE(shots().rows(), 1);
  QCOMPARE(rows(), 0);
}

void TestManualEntry::secondOfTheSameKeyIsRefused() {
  office_->chooseShooter(1, "107");
  enter([&](QWidget& window) {
    office_->boxes.expect("Schuss hinzugefügt");
    hit(window, "9,7", "123,4");
  });
  enter([&](QWidget& window) {
    type(window, "txtTrefferNummer", "1");
    office_->boxes
        .expect("457 - " + errorDescription(457) +
                    "\nFehler beim Übertragen der Intarso-Schussdaten in die Gridanzeige!",
                BoxAnswer::Abort)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore);
    hit(window, "9,7", "123,4");
  });
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  QCOMPARE(rows(), 1);
  QCOMPARE(shots().rows(), 2);
  // Ignored, it is stored, and open after the next start.
  shots().setText(1, 0, "0");
  enter([&](QWidget& window) {
    type(window, "txtTrefferNummer", "1");
    office_->boxes.expect("457 - " + errorDescription(457) +
                              "\nFehler beim Übertragen der Intarso-Schussdaten in die Gridanzeige!",
                          BoxAnswer::Ignore);
    office_->boxes.expect("Schuss hinzugefügt");
    hit(window, "9,7", "123,4");
  });
  QCOMPARE(office_->line(1).nOffeneSchuss(), 1);
  QCOMPARE(rows(), 2);
  QCOMPARE(shots().rows(), 2);
  QCOMPARE(shots().text(1, 0), QString("0"));
}

void TestManualEntry::linesRebuiltWhileTyping() {
  office_->chooseShooter(1, "107");
  enter([&](QWidget& window) {
    office_->window().Load_Settings();
    hit(window, "9,7", "123,4");
  });
  QCOMPARE(office_->line(1).nOffeneSchuss(), 0);
  QCOMPARE(rows(), 0);
}

QTEST_MAIN(TestManualEntry)
#include "test_manual_entry.moc"
