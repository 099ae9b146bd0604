// The menu entries about the stations: what comes of their dialogs at the lines, and what the protocols hold.
#include <QFile>
#include <QLabel>
#include <QListWidget>
#include <QTableView>
#include <QTest>
#include <array>

#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestStationMenus : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void disciplineKeys();
  void advertsOfChosenLines();
  void advertOfTheCurrentLine();
  void commandsByHand();
  void protocols();
  void protocolSwitchesSurviveARestart();
};

void TestStationMenus::disciplineKeys() {
  RangeOffice office;
  QVERIFY(office.open());
  office.boxes.expectWindow("frmDisziKZ", [&](QWidget& window) {
    QCOMPARE(the<QLabel>(window, "lblDatenbank").text(), office.competition);
    click(window, "cmdCancel");
  });
  trigger(office.window(), "mnuDisziplinenSPOWettkampf");
  office.boxes.expect("Das Bearbeiten des Standardvorlage ist derzeit nicht möglich!");
  office.boxes.expectWindow("frmDisziKZ", [&](QWidget& window) {
    QVERIFY(the<QLabel>(window, "lblDatenbank").text().endsWith("LeerSA.mdb"));
    QVERIFY(the<QTableView>(window, "TDBGrid1").model()->rowCount() > 20);
    click(window, "cmdCancel");
  });
  trigger(office.window(), "mnuDisziplinenSPOStandard");
  QVERIFY(QFile::rename(office.competition, office.competition + "x"));
  office.boxes.expect("Bitte öffnen Sie einen Wettkampf.").titled("Hinweis");
  trigger(office.window(), "mnuDisziplinenSPOWettkampf");
}

void TestStationMenus::advertsOfChosenLines() {
  RangeOffice office("1011");
  for (const char* name : {"/a.bmp", "/b.bmp"}) office.place.files.write(office.folder + name, "");
  QVERIFY(office.open());
  office.boxes.expectWindow("frmWerbeFenster", [](QWidget& window) {
    tick(window, "List1", "Linie 1", false);
    tick(window, "lstBilder", "b.bmp");
    click(window, "cmdOK");
  });
  trigger(office.window(), "mnuHaerinAlleWerbeEIN");
  QCOMPARE(office.takeCommand(1), QString());
  QCOMPARE(office.takeCommand(2), QString());
  QCOMPARE(office.takeCommand(3), QString("45 b.bmp"));
  QCOMPARE(office.takeCommand(4), QString("45 b.bmp"));
  office.boxes.expectWindow("frmWerbeFenster", [](QWidget& window) { click(window, "cmdCancel"); });
  trigger(office.window(), "mnuHaerinAlleWerbeEIN");
  QCOMPARE(office.takeCommand(3), QString());
  // The line that failed ends it: those behind it get nothing.
  office.place.files.fail(FileStep::Write, "HServ3.nrt", 70);
  office.boxes.expectWindow("frmWerbeFenster", [](QWidget& window) { click(window, "cmdOK"); });
  office.boxes.expect(
      "Fehler: 13 - " + errorDescription(13) + "\nFehler beim Klick mnuHaerinAlleWerbeEIN_Click_err!",
      BoxAnswer::Abort);
  trigger(office.window(), "mnuHaerinAlleWerbeEIN");
  QCOMPARE(office.takeCommand(1), QString("45 a.bmp"));
  QCOMPARE(office.takeCommand(4), QString());
}

void TestStationMenus::advertOfTheCurrentLine() {
  RangeOffice office("1011");
  office.place.files.write(office.folder + "/a.bmp", "");
  QVERIFY(office.open());
  office.show(3);
  office.boxes.expectWindow("frmWerbeFenster", [](QWidget& window) {
    QCOMPARE(the<QListWidget>(window, "List1").item(0)->text(), QString("Linie 3"));
    click(window, "cmdOK");
  });
  trigger(office.window(), "mnuHaeringAktLinieWerbeEIN");
  QCOMPARE(office.takeCommand(3), QString("45 0\ta.bmp;"));
  QCOMPARE(office.takeCommand(1), QString());
  office.place.files.fail(FileStep::Write, "HServ3.nrt", 70);
  office.boxes.expectWindow("frmWerbeFenster", [](QWidget& window) { click(window, "cmdOK"); });
  office.boxes.expect(
      "Fehler: 13 - " + errorDescription(13) + "\nFehler beim Klick mnuHaeringAktLinieWerbeEIN_Click_err!",
      BoxAnswer::Abort);
  trigger(office.window(), "mnuHaeringAktLinieWerbeEIN");
}

void TestStationMenus::commandsByHand() {
  RangeOffice office("1011");
  QVERIFY(office.open());
  office.show(3);
  const QString user = office.place.settings.value("Tarvex-40", "Daten", "SystemVerzeichnisUser");
  office.boxes.expect("Intarso-Steuerdatei nicht vorhanden:\r\n" + user + "Intarso-Befehle.txt");
  office.boxes.expectWindow("frmHaeringOutput", [](QWidget& window) {
    type(window, "cmbOutput", "H014");
    click(window, "cmdSenden");
    click(window, "cmdClose");
  });
  trigger(office.window(), "mnuEditHaeringOutput");
  QCOMPARE(office.takeCommand(3), QString("H014"));
  QCOMPARE(office.takeCommand(1), QString());
}

void TestStationMenus::protocols() {
  RangeOffice office("1");
  QVERIFY(office.open());
  const QString data = office.place.path("dokumente/Tarvex/Daten/");
  trigger(office.window(), "mnuHaeringSendeProtokoll");
  trigger(office.window(), "mnuOptHaeringProtokoll");
  QVERIFY(office.action("mnuOptHaeringProtokoll").isChecked());
  office.press(1, "cmdPreisModus");
  office.fire(1, "22;Serie 98");
  QVERIFY(QFile::exists(data + "OutputIntarsoProtokoll.txt"));
  QCOMPARE(office.place.files.read(data + "InputIntarsoProtokoll.txt"), QByteArray("22;Serie 98\r\n"));
  trigger(office.window(), "mnuOptHaeringProtokoll");
  QCOMPARE(office.place.settings.value("Tarvex", "Häring", "ProtokollAktiv"), QString("0"));
  office.fire(1, "22;Serie 99");
  QCOMPARE(office.place.files.read(data + "InputIntarsoProtokoll.txt"), QByteArray("22;Serie 98\r\n"));
}

void TestStationMenus::protocolSwitchesSurviveARestart() {
  RangeOffice office;
  QVERIFY(office.open());
  const auto stored = [&](const QString& key) {
    return office.place.settings.value("Tarvex", "Häring", key);
  };
  const QList<std::array<QString, 3>> switches{
      {"mnuHaeringSendeProtokoll", "SendeProtokollAktiv", "ProtokollAktiv"},
      {"mnuOptHaeringProtokoll", "ProtokollAktiv", "SendeProtokollAktiv"}};
  for (const auto& [entry, own, other] : switches) {
    const QString before = stored(other);
    trigger(office.window(), entry);
    QCOMPARE(stored(own), QString("1"));
    QVERIFY(office.action(entry).isChecked());
    trigger(office.window(), entry);
    QCOMPARE(stored(own), QString("0"));
    QVERIFY(!office.action(entry).isChecked());
    QCOMPARE(stored(other), before);
  }
  QVERIFY(!office.action("mnuHaeringSendeProtokoll").isChecked());
  trigger(office.window(), "mnuHaeringSendeProtokoll");
  office.drop();
  QVERIFY(office.open());
  QVERIFY(office.action("mnuHaeringSendeProtokoll").isChecked());
  QVERIFY(!office.action("mnuOptHaeringProtokoll").isChecked());
}

QTEST_MAIN(TestStationMenus)
#include "test_station_menus.moc"
