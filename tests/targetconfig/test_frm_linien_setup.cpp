// The line set-up on its real window.
#include <QApplication>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <memory>

#include "platform/look/look.h"
#include "targetconfig/frmLinienSetup.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmLinienSetup : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { place = std::make_unique<TestWorkplace>(); }
  void cleanup() {
    dialog.reset();
    place.reset();
  }

  void opensOnWhatIsStored();
  void anEmptySettingGivesAnEmptyList();
  void takingOverLosesTheSelection();
  void takingOverNothingGivesNothing_data();
  void takingOverNothingGivesNothing();
  void numbersReadAsFarAsTheyGo();
  void noLineSelectedIsARowOfZeros();
  void allAndNone();
  void okStoresInListOrder();
  void cancelStoresNothing();
  void enterTakesOverWhileTyping();
  void enterElsewhereIsOk();
  void aFailedStoreKeepsTheWindow();
  void manners();

 private:
  void open(const QString& stored) {
    place->settings.setValue("Tarvex", "Häring", "LinienAktiv", stored);
    open(place->workplace());
  }
  void open(const Workplace& workplace) {
    dialog = std::make_unique<frmLinienSetup>(workplace);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  QListWidget& list() { return the<QListWidget>(*dialog, "List1"); }
  QString selection() {
    QString result;
    for (int i = 0; i < list().count(); ++i) result += list().item(i)->isSelected() ? '1' : '0';
    return result;
  }
  QString stored() { return place->settings.value("Tarvex", "Häring", "LinienAktiv", "nichts"); }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<frmLinienSetup> dialog;
};

void TestFrmLinienSetup::opensOnWhatIsStored() {
  open("10x1");
  QCOMPARE(dialog->windowTitle(), "Häring - Linien");
  QCOMPARE(the<QLineEdit>(*dialog, "txtLinieMax").text(), "4");
  QCOMPARE(list().count(), 4);
  QCOMPARE(list().item(0)->text(), "Linie 1");
  QCOMPARE(list().item(3)->text(), "Linie 4");
  QCOMPARE(selection(), "1001");
  QCOMPARE(dialog->SettingsLinie(), "10x1");
  QVERIFY(!dialog->bOK());
}

void TestFrmLinienSetup::anEmptySettingGivesAnEmptyList() {
  open(place->workplace());
  QCOMPARE(the<QLineEdit>(*dialog, "txtLinieMax").text(), "0");
  QCOMPARE(list().count(), 0);
}

void TestFrmLinienSetup::takingOverLosesTheSelection() {
  open("111");
  click(*dialog, "cmdUebertrag");
  QCOMPARE(list().count(), 3);
  QCOMPARE(selection(), "000");
  type(*dialog, "txtLinieMax", "12");
  click(*dialog, "cmdUebertrag");
  QCOMPARE(list().count(), 12);
  QCOMPARE(list().item(11)->text(), "Linie 12");
  QCOMPARE(selection(), QString(12, '0'));
}

void TestFrmLinienSetup::takingOverNothingGivesNothing_data() {
  QTest::addColumn<QString>("text");
  QTest::newRow("empty") << "";
  QTest::newRow("word") << "alle";
  QTest::newRow("negative") << "-3";
}

void TestFrmLinienSetup::takingOverNothingGivesNothing() {
  QFETCH(QString, text);
  open("101");
  type(*dialog, "txtLinieMax", text);
  click(*dialog, "cmdUebertrag");
  QCOMPARE(list().count(), 0);
  click(*dialog, "cmdOK");
  QVERIFY(dialog->bOK());
  QCOMPARE(stored(), "");
}

void TestFrmLinienSetup::numbersReadAsFarAsTheyGo() {
  open("1");
  type(*dialog, "txtLinieMax", "3.7");
  click(*dialog, "cmdUebertrag");
  QCOMPARE(list().count(), 3);
  type(*dialog, "txtLinieMax", "5 L");
  click(*dialog, "cmdUebertrag");
  QCOMPARE(list().count(), 5);
}

void TestFrmLinienSetup::noLineSelectedIsARowOfZeros() {
  open("1111");
  click(*dialog, "cmdKeineWaehlen");
  click(*dialog, "cmdOK");
  QCOMPARE(stored(), "0000");
}

void TestFrmLinienSetup::allAndNone() {
  open("0100");
  const auto count = [this] { return the<QLabel>(*dialog, "lblAnzahl").text(); };
  QCOMPARE(count(), "1 von 4 gewählt");
  click(*dialog, "cmdAlleWaehlen");
  QCOMPARE(selection(), "1111");
  QCOMPARE(count(), "4 von 4 gewählt");
  click(*dialog, "cmdKeineWaehlen");
  QCOMPARE(selection(), "0000");
  QCOMPARE(count(), "0 von 4 gewählt");
}

void TestFrmLinienSetup::okStoresInListOrder() {
  open("0000");
  tick(*dialog, "List1", "Linie 4");
  tick(*dialog, "List1", "Linie 2");
  click(*dialog, "cmdOK");
  QCOMPARE(stored(), "0101");
  QCOMPARE(dialog->SettingsLinie(), "0101");
  QVERIFY(dialog->bOK());
  QVERIFY(!dialog->isVisible());
}

void TestFrmLinienSetup::cancelStoresNothing() {
  open("10");
  click(*dialog, "cmdAlleWaehlen");
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QVERIFY(!dialog->bOK());
  QCOMPARE(stored(), "10");
  open("10");
  click(*dialog, "cmdAlleWaehlen");
  press(*dialog, "List1", Qt::Key_Escape);
  QVERIFY(!dialog->isVisible());
  QCOMPARE(stored(), "10");
}

void TestFrmLinienSetup::enterTakesOverWhileTyping() {
  open("11");
  type(*dialog, "txtLinieMax", "6");
  QTest::keyClick(&the<QLineEdit>(*dialog, "txtLinieMax"), Qt::Key_Return);
  QVERIFY(dialog->isVisible());
  QCOMPARE(list().count(), 6);
  list().setFocus();
  QTest::keyClick(&list(), Qt::Key_Return);
  QVERIFY(dialog->bOK());
  QCOMPARE(stored(), "000000");
}

void TestFrmLinienSetup::enterElsewhereIsOk() {
  open("11");
  QVERIFY(list().hasFocus());
  QTest::keyClick(&list(), Qt::Key_Return);
  QVERIFY(dialog->bOK());
  QCOMPARE(stored(), "11");
}

void TestFrmLinienSetup::aFailedStoreKeepsTheWindow() {
  place->files.write(place->path("datei"), "keine Einstellungen");
  Settings unwritable(place->path("datei/einstellungen.ini"));
  Workplace workplace = place->workplace();
  open({workplace.clock, workplace.random, workplace.waits, workplace.files, unwritable, workplace.dialogs});
  place->dialogs
      .expect("Fehler: 75 - " + errorDescription(75) + ": " + unwritable.filePath() +
                  "\nFehler bei cmdOK_Click_err!",
              BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .showing(BoxIcon::Exclamation);
  click(*dialog, "cmdOK");
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
}

void TestFrmLinienSetup::manners() {
  open(QString(24, '1'));
  QCOMPARE(badManners(*dialog), QStringList());
}

QTEST_MAIN(TestFrmLinienSetup)
#include "test_frm_linien_setup.moc"
