// What the load of the main window takes from settings and competition, and what its loops over all lines let
// happen in between.
#include <QColorDialog>
#include <QComboBox>
#include <QContextMenuEvent>
#include <QLabel>
#include <QMenu>
#include <QTest>
#include <QToolBar>
#include <QToolButton>

#include "platform/dao/recordset.h"
#include "platform/grid/text_grid.h"
#include "platform/widgets/panel_splitter.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

class TestFormLoad : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void theRightComesFromTheSettings_data();
  void theRightComesFromTheSettings();
  void eachProtocolHasItsOwnCheckMark_data();
  void eachProtocolHasItsOwnCheckMark();
  void theInfoListHasItsHeight();
  void eachGridHasItsFontAndColours();
  void theFontMenusKeepTheColours_data();
  void theFontMenusKeepTheColours();
  void inactiveLinesGetTheirShotsAndGroupsToo();
  void theFirstNodeIsSelected();
  void closingAnsweredYesCloses();
  void onlyPriceModeLetsTheMessageLoopRun();
  void rightClickOnTheStationsDisciplines();
  void thePictureIsCaptioned();
  void buttonsWithoutATip();

 private:
  static QColor textOf(RangeOffice& office, int line, const char* grid) {
    return office.on<TextGrid>(line, grid).palette().color(QPalette::Text);
  }
};

void TestFormLoad::theRightComesFromTheSettings_data() {
  QTest::addColumn<QString>("rights");
  QTest::addColumn<bool>("mayChange");
  QTest::newRow("none said") << "" << true;
  QTest::newRow("seventh set") << "0000001" << true;
  QTest::newRow("seventh not set") << "1111110" << false;
}
void TestFormLoad::theRightComesFromTheSettings() {
  QFETCH(QString, rights);
  QFETCH(bool, mayChange);
  RangeOffice office("1");
  office.place.settings.setValue("Tarvex-40", "Allgemein", "Oberflaeche", rights);
  office.global().bErgebnisseAendern = !mayChange;
  QVERIFY(office.open());
  QCOMPARE(office.global().bErgebnisseAendern, mayChange);
}

void TestFormLoad::eachProtocolHasItsOwnCheckMark_data() {
  QTest::addColumn<QString>("input");
  QTest::addColumn<QString>("output");
  QTest::newRow("input") << "1"
                         << "0";
  QTest::newRow("output") << "0"
                          << "1";
}
void TestFormLoad::eachProtocolHasItsOwnCheckMark() {
  QFETCH(QString, input);
  QFETCH(QString, output);
  RangeOffice office("1");
  office.set("ProtokollAktiv", input);
  office.set("SendeProtokollAktiv", output);
  QVERIFY(office.open());
  QCOMPARE(office.action("mnuOptHaeringProtokoll").isChecked(), input == "1");
  QCOMPARE(office.action("mnuHaeringSendeProtokoll").isChecked(), output == "1");
}

void TestFormLoad::theInfoListHasItsHeight() {
  RangeOffice office("1");
  office.set("ShowLinienHoehe", "123");
  QVERIFY(office.open());
  QCOMPARE(the<PanelSplitter>(office.window(), "splitterHoehe").panelSize(1), 123);
}

void TestFormLoad::eachGridHasItsFontAndColours() {
  RangeOffice office("11");
  office.set("FlexFont_Font", "DejaVu Sans;13;0;-1;0;0");
  office.set("FlexFont_ForeColor", "128");  // dark red
  office.set("FontHDisziplin_Font", "DejaVu Sans;15;-1;0;0;0");
  office.set("FontHDisziplin_ForeColor", "8388608");  // dark blue
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.show(2);
  office.chooseShooter(2, "105");
  for (const int line : {1, 2}) {
    const QFont shots = office.on<TextGrid>(line, "flex").font();
    QCOMPARE(shots.pointSize(), 13);
    QVERIFY(shots.italic() && !shots.bold());
    QCOMPARE(textOf(office, line, "flex"), QColor(128, 0, 0));
    const QFont disciplines = office.on<TextGrid>(line, "flexHaeringDiszi").font();
    QCOMPARE(disciplines.pointSize(), 15);
    QVERIFY(disciplines.bold() && !disciplines.italic());
    QCOMPARE(textOf(office, line, "flexHaeringDiszi"), QColor(0, 0, 128));
  }
}

void TestFormLoad::theFontMenusKeepTheColours_data() {
  QTest::addColumn<QString>("entry");
  QTest::addColumn<QString>("setting");
  QTest::addColumn<QString>("grid");
  QTest::newRow("shots") << "mnuOptFontHaeringSchuss"
                         << "FlexFont"
                         << "flex";
  QTest::newRow("disciplines") << "mnuOptFontHaeringDisziplin"
                               << "FontHDisziplin"
                               << "flexHaeringDiszi";
}
void TestFormLoad::theFontMenusKeepTheColours() {
  QFETCH(QString, entry);
  QFETCH(QString, setting);
  QFETCH(QString, grid);
  RangeOffice office("1");
  office.set(setting + "_BackColor", "13434879");  // light yellow
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.boxes.expectFont(FontChoice{"DejaVu Sans;12;0;0;0;0", 0}).during([&] {
    office.boxes.expectWindow("QColorDialog", [](QWidget& chooser) {
      auto& colours = static_cast<QColorDialog&>(chooser);
      colours.setCurrentColor(QColor(128, 0, 0));
      colours.accept();
    });
    click(*QApplication::activeModalWidget(), "cmdFarbe");
  });
  trigger(office.window(), entry);
  const auto stored = [&](const char* end) {
    return office.place.settings.value("Tarvex", "Häring", setting + end);
  };
  QCOMPARE(stored("_ForeColor"), QString("128"));
  QCOMPARE(stored("_BackColor"), QString("13434879"));
  const QPalette look = office.on<TextGrid>(1, grid).palette();
  QCOMPARE(look.color(QPalette::Text), QColor(128, 0, 0));
  QCOMPARE(look.color(QPalette::Base), QColor(255, 255, 204));
}

void TestFormLoad::inactiveLinesGetTheirShotsAndGroupsToo() {
  RangeOffice office("11");
  QVERIFY(office.open());
  office.show(2);
  office.chooseShooter(2, "107");
  office.press(2, "cmdPreisModus");
  office.fire(2, shotRecord(2, 1, "9,7", "123,4"));
  office.drop();
  office.database()->execute("INSERT INTO Haering_Gruppen (GruppenName) VALUES ('Pistole')");
  office.set("LinienAktiv", "10");
  QVERIFY(office.open());
  QVERIFY(!office.line(2).isVisible());
  QCOMPARE(office.line(2).nOffeneSchuss(), 1);
  QCOMPARE(office.line(2).sStartnummer(), QString("107"));
  QVERIFY(office.on<QComboBox>(2, "cmbHaeringGruppen").findText("Pistole") > 0);
}

void TestFormLoad::theFirstNodeIsSelected() {
  RangeOffice office("011");
  QVERIFY(office.open());
  QCOMPARE(office.tree().currentItem(), office.tree().topLevelItem(0));
  QVERIFY(office.line(2).isVisible());
  // A line whose shots came back is selected on the way, for its name.
  office.show(3);
  office.chooseShooter(3, "107");
  office.press(3, "cmdPreisModus");
  office.fire(3, shotRecord(3, 1, "9,7", "123,4"));
  office.drop();
  QVERIFY(office.open());
  QCOMPARE(office.node(2), QString(" 3 - Müller Jörg"));
  QCOMPARE(office.tree().currentItem(), office.tree().topLevelItem(0));
  QVERIFY(office.line(2).isVisible());
  QVERIFY(!office.line(3).isVisible());
}

void TestFormLoad::closingAnsweredYesCloses() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.set("SchliessenSicherheitsabfrage", "1");
  office.boxes.expect("Soll QK-Intarso geschlossen werden?", BoxAnswer::Yes);
  office.window().close();
  QVERIFY(!office.window().isVisible());
  QCOMPARE(office.window().lineCount(), 0);
}

void TestFormLoad::onlyPriceModeLetsTheMessageLoopRun() {
  RangeOffice office("101");
  QVERIFY(office.open());
  const auto loops = [&](const char* entry) {
    office.place.waits.clear();
    trigger(office.window(), entry);
    for (int line = 1; line <= 3; ++line) office.takeCommand(line);
    return office.place.waits.messageLoops();
  };
  QCOMPARE(loops("mnuHaeringAllePreismodusON"), 3);
  QCOMPARE(loops("mnuHaerinAlleWerbeAUS"), 0);
  QCOMPARE(loops("mnuHaeringAllePreismodusOFF"), 3);
}

void TestFormLoad::rightClickOnTheStationsDisciplines() {
  RangeOffice office("1");
  QVERIFY(office.open());
  auto& grid = office.on<TextGrid>(1, "flexHaeringDiszi");
  auto& popup = the<QMenu>(office.line(1), "mnuPopSchuss");
  const QPoint at(5, 5);
  QContextMenuEvent event(QContextMenuEvent::Mouse, at, grid.viewport()->mapToGlobal(at));
  QCoreApplication::sendEvent(grid.viewport(), &event);
  QVERIFY(popup.isVisible());
  QVERIFY(!the<QMenu>(office.line(1), "mnuPopManuellerSchuss").isVisible());
  popup.close();
}

void TestFormLoad::thePictureIsCaptioned() {
  RangeOffice office("1");
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  office.fire(1, shotRecord(1, 1, "9,7", "123,4"));
  office.tickEntry(1, "m_lstDisziTarvex", "LG Meister");
  office.place.random.give({0.1, 0.2});
  office.press(1, "m_cmdAlleWaehlenHaering");
  office.press(1, "m_cmdUebertragenTarvex");
  office.press(1, "m_cmdSaveTarvex");
  const auto db = office.database();
  const auto picture = db->openRecordset("Select * from Grafik_Scheibe");
  QVERIFY(!picture->eof());
  const auto label = [&](const char* name) { return office.on<QLabel>(1, name).text(); };
  const QStringList shown = {label("m_lblStartnummer"), label("m_lblSchuetzenName"),
                             label("m_lblVereinsName")};
  QCOMPARE(QSet<QString>(shown.begin(), shown.end()).size(), 3);
  QCOMPARE((QStringList{picture->value("StartNr").toString(), picture->value("Name").toString(),
                        picture->value("Verein").toString()}),
           shown);
}

void TestFormLoad::buttonsWithoutATip() {
  RangeOffice office("1");
  QVERIFY(office.open());
  auto& bar = the<QToolBar>(office.window(), "Toolbar1");
  const auto tip = [&](const char* key) { return bar.widgetForAction(&office.action(key))->toolTip(); };
  QCOMPARE(tip("exit"), QString());
  QCOMPARE(tip("euro"), QString());
  QCOMPARE(tip("prsetup"), QString("Druckereinrichtung"));
  // Whatever else is changed about the button.
  office.action("euro").setEnabled(!office.action("euro").isEnabled());
  QCOMPARE(tip("euro"), QString());
}

QTEST_MAIN(TestFormLoad)
#include "test_form_load.moc"
