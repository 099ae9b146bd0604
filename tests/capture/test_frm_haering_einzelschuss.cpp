// The entry of a shot by hand on its real window.
#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "capture/frmHaeringEinzelschuss.h"
#include "platform/look/look.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmHaeringEinzelschuss : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    place = std::make_unique<TestWorkplace>();
    shot = manualShot(nullptr, {3, "107", "Müller, Jörg", "Herren I"}, place->clock.now());
  }
  void cleanup() {
    dialog.reset();
    place.reset();
  }

  void showsTheShot();
  void competitionsToChooseFrom();
  void unknownWertungLeavesTheList();
  void radiusMakesTheTeiler();
  void aLateFactorMakesTheMissingTeiler();
  void theTeilerFollowsTheFactorBeingTyped();
  void whatIsTypedIsNotCompleted();
  void okTakesTheFields();
  void faultsKeepTheWindow();
  void unreadableNumberKeepsTheWindow();
  void cancelLeavesTheShot();
  void enterIsOk();
  void manners();

 private:
  void open(const QString& names = "LG Auflage|LP 20|") {
    dialog = std::make_unique<frmHaeringEinzelschuss>(place->workplace(), shot, names);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  QString text(const QString& name) { return the<QLineEdit>(*dialog, name).text(); }
  QComboBox& box(const QString& name) { return the<QComboBox>(*dialog, name); }
  void enterGoodHit() {
    type(*dialog, "txtTeilerFaktor", "1");
    type(*dialog, "txtRingWertMit", "9,7");
    type(*dialog, "txtRadius", "123,4");
  }

  std::unique_ptr<TestWorkplace> place;
  HaeringSchuss shot;
  std::unique_ptr<frmHaeringEinzelschuss> dialog;
};

void TestFrmHaeringEinzelschuss::showsTheShot() {
  open();
  QCOMPARE(dialog->windowTitle(), "Häring Einzelschuss");
  const std::pair<const char*, const char*> expected[] = {{"txtStandort", "1"},
                                                          {"txtLinie", "3"},
                                                          {"txtschuetze", "Müller, Jörg"},
                                                          {"txtStartnummer", "107"},
                                                          {"txtKlassebezeichnung", "Herren I"},
                                                          {"txtDatum", "20.11.2026"},
                                                          {"txtZeit", "10:00:00"},
                                                          {"txtWettbewerb", "DSB 1.10"},
                                                          {"txtKlasse", "frei"},
                                                          {"txtWaffe", "LG"},
                                                          {"txtTrefferNummer", "1"},
                                                          {"txtRingWertMit", ""},
                                                          {"txtRadius", ""},
                                                          {"txtTeilerFaktor", "0"},
                                                          {"txtTeiler", ""}};
  for (const auto& [name, value] : expected) QCOMPARE(text(name), value);
  QCOMPARE(box("Combo1").count(), 4);
  QStringList labels;
  for (const QLabel* label : dialog->findChildren<QLabel*>())
    if (label->text().endsWith(':')) labels << label->text();
  QCOMPARE(labels,
           (QStringList{"Standort / Linie:", "Schütze:", "Klassebezeichnung:", "Datum / Zeit:", "Wettbewerb:",
                        "Klasse:", "Wettbewerbbezeichnung:", "Waffe:", "Treffernummer:", "Wertung:",
                        "Ringwert:", "Radius:", "Teilerfaktor:", "Teiler:"}));
  QCOMPARE(the<QPushButton>(*dialog, "cmdSave").text(), "&OK");
  QCOMPARE(the<QPushButton>(*dialog, "cmdCancel").text(), "&Abbrechen");
  QCOMPARE(box("Combo1").currentText(), "Ring");
  QVERIFY(the<QLineEdit>(*dialog, "txtRingWertMit").hasFocus());
}

void TestFrmHaeringEinzelschuss::competitionsToChooseFrom() {
  open();
  QCOMPARE(box("cmbWettbewerbe").count(), 2);
  QCOMPARE(box("cmbWettbewerbe").itemText(1), "LP 20");
  QCOMPARE(box("cmbWettbewerbe").currentText(), "");
  open("");
  QCOMPARE(box("cmbWettbewerbe").count(), 0);
  shot.WettbewerbBezeichnung = "Königsschuss";
  open();
  QCOMPARE(box("cmbWettbewerbe").currentText(), "Königsschuss");
}

void TestFrmHaeringEinzelschuss::unknownWertungLeavesTheList() {
  shot.Wertung = 11;
  open();
  QCOMPARE(box("Combo1").currentIndex(), 3);
  shot.Wertung = 7;
  open();
  QCOMPARE(box("Combo1").currentIndex(), -1);
}

void TestFrmHaeringEinzelschuss::radiusMakesTheTeiler() {
  open();
  type(*dialog, "txtRadius", "12,34");
  QCOMPARE(text("txtTeiler"), "");
  type(*dialog, "txtTeilerFaktor", "1");
  type(*dialog, "txtRadius", "12,34");
  QCOMPARE(text("txtTeiler"), "12,3");
  type(*dialog, "txtRadius", "12,36");
  QCOMPARE(text("txtTeiler"), "12,4");
  type(*dialog, "txtTeiler", "55,5");
  type(*dialog, "txtTeilerFaktor", "0");
  type(*dialog, "txtRadius", "99");
  QCOMPARE(text("txtTeiler"), "55,5");
}

void TestFrmHaeringEinzelschuss::aLateFactorMakesTheMissingTeiler() {
  open();
  type(*dialog, "txtTeilerFaktor", "2,5");
  QCOMPARE(text("txtTeiler"), "");  // there is no radius yet
  type(*dialog, "txtRadius", "100");
  type(*dialog, "txtTeilerFaktor", "2,5");
  press(*dialog, "txtTeilerFaktor", Qt::Key_Tab);
  QCOMPARE(text("txtTeiler"), "40,0");
  type(*dialog, "txtTeiler", "41");
  type(*dialog, "txtTeilerFaktor", "5");
  press(*dialog, "txtTeilerFaktor", Qt::Key_Tab);
  QCOMPARE(text("txtTeiler"), "41");
}

void TestFrmHaeringEinzelschuss::theTeilerFollowsTheFactorBeingTyped() {
  open();
  type(*dialog, "txtRadius", "100");
  auto& factor = the<QLineEdit>(*dialog, "txtTeilerFaktor");
  factor.setFocus();
  factor.clear();
  typeInto(factor, "2");
  QCOMPARE(text("txtTeiler"), "50,0");
  typeInto(factor, ",");
  QCOMPARE(text("txtTeiler"), "50,0");
  typeInto(factor, "5");
  QCOMPARE(text("txtTeiler"), "40,0");
  // A teiler of the operator's own stays; so does one that came with the radius.
  type(*dialog, "txtTeiler", "41");
  type(*dialog, "txtTeilerFaktor", "5");
  QCOMPARE(text("txtTeiler"), "41");
  type(*dialog, "txtRadius", "200");
  QCOMPARE(text("txtTeiler"), "40,0");
  type(*dialog, "txtTeilerFaktor", "4");
  QCOMPARE(text("txtTeiler"), "40,0");
}

void TestFrmHaeringEinzelschuss::whatIsTypedIsNotCompleted() {
  for (const QString typed : {"LG", "lp 20"}) {
    open();
    enterGoodHit();
    type(*dialog, "cmbWettbewerbe", typed);
    press(*dialog, "cmbWettbewerbe", Qt::Key_Return);
    QVERIFY(dialog->bOK());
    QCOMPARE(shot.WettbewerbBezeichnung, typed);
  }
}

void TestFrmHaeringEinzelschuss::okTakesTheFields() {
  open();
  enterGoodHit();
  type(*dialog, "txtTrefferNummer", "17");
  type(*dialog, "cmbWettbewerbe", "LP 20");
  box("Combo1").setCurrentIndex(3);
  click(*dialog, "cmdSave");
  QVERIFY(dialog->bOK());
  QVERIFY(!dialog->isVisible());
  QCOMPARE(shot.RingMitZehntel, 9.7);
  QCOMPARE(shot.RingXXZehntel, 16.0);
  QCOMPARE(shot.Radius, 123.4);
  QCOMPARE(shot.dblTeiler, 123.4);
  QCOMPARE(shot.dblTeilerFaktor, 1.0);
  QCOMPARE(shot.Wertung, 11);
  QCOMPARE(shot.WettbewerbBezeichnung, "LP 20");
  QCOMPARE(shot.Key, "0030017-20.11.2026-10:00:00");
}

void TestFrmHaeringEinzelschuss::faultsKeepTheWindow() {
  open();
  type(*dialog, "txtWaffe", "");
  place->dialogs
      .expect(
          "Waffenkennzeichen fehlt!\r\nKeine gültige Ringzahl!\r\nKeine gültiger Radius!\r\n"
          "Keine gültiger Teiler!\r\n")
      .titled("Fehler")
      .showing(BoxIcon::Critical)
      .with(BoxButtons::Ok);
  click(*dialog, "cmdSave");
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
}

void TestFrmHaeringEinzelschuss::unreadableNumberKeepsTheWindow() {
  open();
  enterGoodHit();
  type(*dialog, "txtRingWertMit", "9.7");
  place->dialogs
      .expect("Fehler: 13 - " + errorDescription(13) +
                  ": Ringwert „9.7“ (Dezimalstellen stehen hinter einem Komma: 9,7)\nFehler bei "
                  "FormularInSchuss_err!",
              BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore);
  click(*dialog, "cmdSave");
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
}

void TestFrmHaeringEinzelschuss::cancelLeavesTheShot() {
  open();
  enterGoodHit();
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QVERIFY(!dialog->bOK());
  QCOMPARE(shot.RingMitZehntel, 0.0);
  QCOMPARE(shot.Key, "");
}

void TestFrmHaeringEinzelschuss::enterIsOk() {
  open();
  enterGoodHit();
  press(*dialog, "txtRadius", Qt::Key_Return);
  QVERIFY(dialog->bOK());
}

void TestFrmHaeringEinzelschuss::manners() {
  open();
  QCOMPARE(badManners(*dialog), QStringList());
}

QTEST_MAIN(TestFrmHaeringEinzelschuss)
#include "test_frm_haering_einzelschuss.moc"
