// The settings of the link on their real window.
#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QSpinBox>
#include <QTest>
#include <memory>

#include "platform/look/look.h"
#include "targetconfig/frmHaeringEinstellungen.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestFrmHaeringEinstellungen : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { place = std::make_unique<TestWorkplace>(); }
  void cleanup() {
    dialog.reset();
    place.reset();
  }

  void opensOnTheDefaults();
  void opensOnWhatIsStored();
  void anEndingSeparatorIsKeptOrAdded_data();
  void anEndingSeparatorIsKeptOrAdded();
  void aChosenFolderIsShownAndNotStored();
  void noFolderChosenChangesNothing();
  void okStores();
  void cancelStoresNothing();
  void aFailedStoreKeepsTheWindow();
  void copiesAreShownAndStored();
  void copiesKeepTheirPresets();
  void aLongPathKeepsTheWindowSmall();
  void manners();

 private:
  void set(const QString& key, const QString& value) {
    place->settings.setValue("Tarvex", "Häring", key, value);
  }
  QString stored(const QString& key) { return place->settings.value("Tarvex", "Häring", key, "nichts"); }
  void open() { open(place->workplace()); }
  void open(const Workplace& workplace) {
    dialog = std::make_unique<frmHaeringEinstellungen>(workplace);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  QString path() { return the<QLabel>(*dialog, "lblHaeringNetzwerkpfad").text(); }
  QCheckBox& box(const QString& name) { return the<QCheckBox>(*dialog, name); }

  std::unique_ptr<TestWorkplace> place;
  std::unique_ptr<frmHaeringEinstellungen> dialog;
};

void TestFrmHaeringEinstellungen::opensOnTheDefaults() {
  open();
  QCOMPARE(dialog->windowTitle(), "Intarso Einstellungen");
#ifdef Q_OS_WIN
  QCOMPARE(path(), "C:\\Programme\\ESA2002\\");
#else
  // Nobody has that folder here: nothing proposes it, and OK doesn't store it.
  QCOMPARE(path(), QString("noch nicht gewählt"));
  place->dialogs.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n", std::nullopt);
  click(*dialog, "cmdHaeringPfad");
#endif
  QVERIFY(!box("chkDeleteDisziplinenAbmelden").isChecked());
  QVERIFY(!box("chkCloseAbfrage").isChecked());
  QVERIFY(!box("chkKassenfenster").isChecked());
  QVERIFY(!dialog->bOK());
#ifndef Q_OS_WIN
  click(*dialog, "cmdOK");
  QCOMPARE(stored("Netzverzeichnis"), QString("nichts"));
#endif
}

void TestFrmHaeringEinstellungen::opensOnWhatIsStored() {
  set("DisziDeleteAbmelden", "1");
  set("SchliessenSicherheitsabfrage", "0");
  set("OpenKassenfenster", "1");
  set("Netzverzeichnis", "/netz/esa/");
  open();
  QVERIFY(box("chkDeleteDisziplinenAbmelden").isChecked());
  QVERIFY(!box("chkCloseAbfrage").isChecked());
  QVERIFY(box("chkKassenfenster").isChecked());
  QCOMPARE(path(), "/netz/esa/");
}

void TestFrmHaeringEinstellungen::copiesAreShownAndStored() {
  schreibe(place->settings, keys::SicherungsVerzeichnis, QString("/dokumente/Sicherung"));
  open();
  auto& minutes = the<QSpinBox>(*dialog, "spnKopienMinuten");
  QVERIFY(box("chkKopien").isChecked());
  QCOMPARE(minutes.value(), 10);
  QCOMPARE(the<QLabel>(*dialog, "lblKopienOrdner").text(), "/dokumente/Sicherung");
  minutes.setValue(5);
  place->dialogs.expectFolder("Bitte den Ordner der Sicherungen auswählen:", "/stick/kopien");
  click(*dialog, "cmdKopienOrdner");
  QCOMPARE(the<QLabel>(*dialog, "lblKopienOrdner").text(), "/stick/kopien/");
  place->dialogs.expectFolder("Bitte den Ordner der Sicherungen auswählen:", std::nullopt);
  click(*dialog, "cmdKopienOrdner");
  click(*dialog, "cmdOK");
  QVERIFY(liesKopien(place->settings) == (CopySettings{true, std::chrono::minutes(5), "/stick/kopien/"}));
  open();
  box("chkKopien").setChecked(false);
  for (const char* name : {"spnKopienMinuten", "lblKopienOrdner", "cmdKopienOrdner"})
    QVERIFY(!the<QWidget>(*dialog, name).isEnabled());
  click(*dialog, "cmdOK");
  QVERIFY(!liesKopien(place->settings).enabled);
}

/// Who changes nothing follows the program's other folders.
void TestFrmHaeringEinstellungen::copiesKeepTheirPresets() {
  schreibe(place->settings, keys::SicherungsVerzeichnis, QString("/dokumente/Sicherung"));
  open();
  click(*dialog, "cmdOK");
  QCOMPARE(liesText(place->settings, keys::KopienOrdner), QString());
  schreibe(place->settings, keys::KopienMinuten, 100000);
  QCOMPARE(liesKopien(place->settings).interval, std::chrono::minutes(kMostCopyMinutes));
  schreibe(place->settings, keys::KopienMinuten, 0);
  QCOMPARE(liesKopien(place->settings).interval, std::chrono::minutes(kFewestCopyMinutes));
}

void TestFrmHaeringEinstellungen::anEndingSeparatorIsKeptOrAdded_data() {
  QTest::addColumn<QString>("folder");
  QTest::addColumn<QString>("shown");
  QTest::newRow("without") << "/netz/esa"
                           << "/netz/esa/";
  QTest::newRow("with") << "/netz/esa/"
                        << "/netz/esa/";
  QTest::newRow("backslash") << "\\\\server\\esa\\"
                             << "\\\\server\\esa\\";
}

void TestFrmHaeringEinstellungen::anEndingSeparatorIsKeptOrAdded() {
  QFETCH(QString, folder);
  QFETCH(QString, shown);
  set("Netzverzeichnis", folder);
  open();
  QCOMPARE(path(), shown);
  place->dialogs.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n" + folder, folder);
  click(*dialog, "cmdHaeringPfad");
  QCOMPARE(path(), shown);
}

void TestFrmHaeringEinstellungen::aChosenFolderIsShownAndNotStored() {
  set("Netzverzeichnis", "/alt/");
  open();
  place->dialogs.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n/alt/", "/neu");
  click(*dialog, "cmdHaeringPfad");
  QCOMPARE(path(), "/neu/");
  QCOMPARE(stored("Netzverzeichnis"), "/alt/");
  // The prompt names what is stored, not what is shown.
  place->dialogs.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n/alt/", "/neuer/");
  click(*dialog, "cmdHaeringPfad");
  QCOMPARE(path(), "/neuer/");
}

void TestFrmHaeringEinstellungen::noFolderChosenChangesNothing() {
  set("Netzverzeichnis", "/alt/");
  open();
  place->dialogs.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n/alt/", {});
  click(*dialog, "cmdHaeringPfad");
  QCOMPARE(path(), "/alt/");
}

void TestFrmHaeringEinstellungen::okStores() {
  set("Netzverzeichnis", "/alt/");
  set("OpenKassenfenster", "1");
  open();
  place->dialogs.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n/alt/", "/neu");
  click(*dialog, "cmdHaeringPfad");
  box("chkDeleteDisziplinenAbmelden").setFocus();
  press(*dialog, "chkDeleteDisziplinenAbmelden", Qt::Key_Space);
  press(*dialog, "chkKassenfenster", Qt::Key_Space);
  click(*dialog, "cmdOK");
  QCOMPARE(stored("Netzverzeichnis"), "/neu/");
  QCOMPARE(stored("DisziDeleteAbmelden"), "1");
  QCOMPARE(stored("SchliessenSicherheitsabfrage"), "0");
  QCOMPARE(stored("OpenKassenfenster"), "0");
  QVERIFY(dialog->bOK());
  QVERIFY(!dialog->isVisible());
}

void TestFrmHaeringEinstellungen::cancelStoresNothing() {
  open();
  press(*dialog, "chkCloseAbfrage", Qt::Key_Space);
  click(*dialog, "cmdCancel");
  QVERIFY(!dialog->isVisible());
  QVERIFY(!dialog->bOK());
  QCOMPARE(stored("SchliessenSicherheitsabfrage"), "nichts");
  QCOMPARE(stored("Netzverzeichnis"), "nichts");
}

void TestFrmHaeringEinstellungen::aFailedStoreKeepsTheWindow() {
  place->files.write(place->path("datei"), "keine Einstellungen");
  Settings unwritable(place->path("datei/einstellungen.ini"));
  Workplace workplace = place->workplace();
  open({workplace.clock, workplace.random, workplace.waits, workplace.files, unwritable, workplace.dialogs});
  place->dialogs.expect(
      "Fehler: 75 - " + errorDescription(75) + ": " + unwritable.filePath() + "\nFehler bei cmdOK_Click_err!",
      BoxAnswer::Abort);
  click(*dialog, "cmdOK");
  QVERIFY(dialog->isVisible());
  QVERIFY(!dialog->bOK());
}

void TestFrmHaeringEinstellungen::aLongPathKeepsTheWindowSmall() {
  open();
  const int width = dialog->sizeHint().width();
  set("Netzverzeichnis", "/" + QString("sehrlangerordner/").repeated(20));
  open();
  QVERIFY(dialog->sizeHint().width() < 2 * width);
}

void TestFrmHaeringEinstellungen::manners() {
  open();
  QCOMPARE(badManners(*dialog), QStringList());
}

QTEST_MAIN(TestFrmHaeringEinstellungen)
#include "test_frm_haering_einstellungen.moc"
