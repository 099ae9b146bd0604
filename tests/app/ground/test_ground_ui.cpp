// Places of windows, and opening a file with its program.
#include <QDesktopServices>
#include <QScreen>
#include <QTableWidget>
#include <QTest>
#include <QUrl>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module_ui.h"
#include "platform/grid/text_grid.h"
#include "platform/widgets/panel_splitter.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

struct Form : QWidget {
  Form() : grid(2, 3, this) {
    setObjectName("frmTest");
    grid.setObjectName("grdListe");
    setGeometry(40, 50, 300, 200);
  }
  QTableWidget grid;
};

struct TwoPanels {
  PanelSplitter splitter;
  TwoPanels() {
    splitter.addWidget(new QWidget);
    splitter.addWidget(new QWidget);
    splitter.resize(400, 100);
  }
};

}  // namespace

class TestGroundUi : public QObject {
  Q_OBJECT

 public Q_SLOTS:
  void opened(const QUrl& url) { opened_ += url; }

 private Q_SLOTS:
  void aPlaceGoesAndComes();
  void aGridKeepsItsColumns();
  void aHiddenColumnKeepsItsWidth();
  void widthsOfATextGridAreRemembered();
  void anEmptyPlaceCentres();
  void onlyWhatMakesSenseIsTaken();
  void decimalCommasReadTheSame();
  void aMinimizedWindowSavesNothing();
  void aMaximizedWindowIsShrunk();
  void aPlaceThatCantBeKeptDisturbsNobody();
  void panelsKeepTheirSize();
  void aPanelSizeThatCantBeKeptDisturbsNobody();
  void reportWindowsFillTheScreen();
  void reportWindowsHaveAPlaceOfTheirOwn();
  void filesOpenWithTheirProgram();
#ifndef Q_OS_WIN  // there a real window would open
  void aFolderIsShownByTheDesktop();
#endif

 private:
  static QString stored(TestWorkplace& place, const QString& key) {
    return place.settings.value("Tarvex-40", "Positionen", key);
  }
  QList<QUrl> opened_;
};

void TestGroundUi::aPlaceGoesAndComes() {
  TestWorkplace place;
  Form form;
  PositionSpeichern(place.workplace(), form);
  QCOMPARE(stored(place, "frmTest-"), "40;50;300;200");
  Form again;
  again.setGeometry(0, 0, 100, 100);
  PositionLaden(place.workplace(), again);
  QCOMPARE(again.pos(), QPoint(40, 50));
  QCOMPARE(again.size(), QSize(300, 200));
}

void TestGroundUi::aGridKeepsItsColumns() {
  TestWorkplace place;
  Form form;
  form.grid.setColumnWidth(0, 30);
  form.grid.setColumnWidth(1, 80);
  form.grid.setColumnWidth(2, 120);
  PositionSpeichern(place.workplace(), form, &form.grid);
  QCOMPARE(stored(place, "frmTest-grdListe"), "40;50;300;200;30;80;120");
  QCOMPARE(stored(place, "frmTest-"), "");
  Form again;
  PositionLaden(place.workplace(), again, &again.grid);
  QCOMPARE(again.grid.columnWidth(1), 80);
  QCOMPARE(again.grid.columnWidth(2), 120);
  Form fewer;
  place.settings.setValue("Tarvex-40", "Positionen", "frmTest-grdListe", "1;2;300;200;44");
  const int designed = fewer.grid.columnWidth(1);
  PositionLaden(place.workplace(), fewer, &fewer.grid);
  QCOMPARE(fewer.grid.columnWidth(0), 44);
  QCOMPARE(fewer.grid.columnWidth(1), designed);
}

void TestGroundUi::aHiddenColumnKeepsItsWidth() {
  TestWorkplace place;
  Form form;
  form.grid.setColumnWidth(0, 30);
  form.grid.setColumnWidth(1, 80);
  form.grid.setColumnWidth(2, 120);
  form.grid.setColumnHidden(1, true);
  PositionSpeichern(place.workplace(), form, &form.grid);
  QCOMPARE(stored(place, "frmTest-grdListe"), "40;50;300;200;30;80;120");
  QVERIFY(form.grid.isColumnHidden(1));
  Form again;
  again.grid.setColumnHidden(1, true);
  PositionLaden(place.workplace(), again, &again.grid);
  QVERIFY(again.grid.isColumnHidden(1));
  again.grid.setColumnHidden(1, false);
  QCOMPARE(again.grid.columnWidth(1), 80);
}

void TestGroundUi::widthsOfATextGridAreRemembered() {
  TestWorkplace place;
  const QString key = keys::KasseFlex.toString();
  {
    TextTable table(3);
    TextGrid grid;
    grid.setTable(&table);
    SpaltenbreitenMerken(place.workplace(), grid, key);
    Q_EMIT grid.columnDrawn(0, 1111);
    Q_EMIT grid.columnDrawn(2, 3333);
  }
  TextTable table(3);
  TextGrid grid;
  grid.setTable(&table);
  SpaltenbreitenMerken(place.workplace(), grid, key);
  QCOMPARE(table.columnWidth(0), 1111);
  QCOMPARE(table.columnWidth(1), -1);
  QCOMPARE(table.columnWidth(2), 3333);
}

void TestGroundUi::anEmptyPlaceCentres() {
  TestWorkplace place;
  Form form;
  PositionLaden(place.workplace(), form);
  const QPoint off = form.frameGeometry().center() - form.screen()->availableGeometry().center();
  QVERIFY(qAbs(off.x()) <= 1 && qAbs(off.y()) <= 1);
  QCOMPARE(form.size(), QSize(300, 200));
}

void TestGroundUi::onlyWhatMakesSenseIsTaken() {
  TestWorkplace place;
  Form form;
  place.settings.setValue("Tarvex-40", "Positionen", "frmTest-", "-5;60;0;220");
  PositionLaden(place.workplace(), form);
  QCOMPARE(form.pos(), QPoint(40, 60));
  QCOMPARE(form.size(), QSize(300, 220));
  place.settings.setValue("Tarvex-40", "Positionen", "frmTest-", "0;0;300;220");
  PositionLaden(place.workplace(), form);
  QCOMPARE(form.pos(), QPoint(0, 0));
  form.move(40, 60);
  place.settings.setValue("Tarvex-40", "Positionen", "frmTest-", "x;;99999999999;-3");
  PositionLaden(place.workplace(), form);
  QCOMPARE(form.pos(), QPoint(40, 60));
  QCOMPARE(form.size(), QSize(300, 220));
}

void TestGroundUi::decimalCommasReadTheSame() {
  TestWorkplace place;
  Form form;
  for (const char* value : {"10,4;20,6;300,2;199,8", "10.4;20.6;300.2;199.8"}) {
    place.settings.setValue("Tarvex-40", "Positionen", "frmTest-", value);
    form.setGeometry(0, 0, 50, 50);
    PositionLaden(place.workplace(), form);
    QCOMPARE(form.pos(), QPoint(10, 21));
    QCOMPARE(form.size(), QSize(300, 200));
  }
}

void TestGroundUi::aMinimizedWindowSavesNothing() {
  TestWorkplace place;
  Form form;
  form.setWindowState(Qt::WindowMinimized);
  PositionSpeichern(place.workplace(), form);
  QCOMPARE(stored(place, "frmTest-"), "");
}

void TestGroundUi::aMaximizedWindowIsShrunk() {
  TestWorkplace place;
  Form form;
  form.setWindowState(Qt::WindowMaximized);
  const QStringList expected{QString::number(form.x()), QString::number(form.y()),
                             QString::number(form.width() - 20), QString::number(form.height() - 20)};
  PositionSpeichern(place.workplace(), form);
  QCOMPARE(stored(place, "frmTest-"), expected.join(';'));
}

void TestGroundUi::aPlaceThatCantBeKeptDisturbsNobody() {
  TestWorkplace place;
  place.files.write(place.path("datei"), "");
  Settings blocked(place.path("datei/einstellungen"));
  const Workplace all = place.workplace();
  Form form;
  PositionSpeichern({all.clock, all.random, all.waits, all.files, blocked, all.dialogs}, form);
}

void TestGroundUi::panelsKeepTheirSize() {
  TestWorkplace place;
  schreibe(place.settings, keys::BreiteSchuetzen, 120);
  TwoPanels two;
  PanelGroesseMerken(place.workplace(), two.splitter, 0, keys::BreiteSchuetzen, 80);
  two.splitter.show();
  QCOMPARE(two.splitter.panelSize(0), 120);
  two.splitter.setSizes({150, 250 - two.splitter.handleWidth()});
  QCOMPARE(liesZahl(place.settings, keys::BreiteSchuetzen), 120);
  Q_EMIT two.splitter.released();
  QCOMPARE(liesZahl(place.settings, keys::BreiteSchuetzen), 150);
  TwoPanels unknown;
  PanelGroesseMerken(place.workplace(), unknown.splitter, 0, keys::BreiteDisziKombi, 80);
  unknown.splitter.show();
  QCOMPARE(unknown.splitter.panelSize(0), 80);
}

void TestGroundUi::aPanelSizeThatCantBeKeptDisturbsNobody() {
  TestWorkplace place;
  place.files.write(place.path("datei"), "");
  Settings blocked(place.path("datei/einstellungen"));
  const Workplace all = place.workplace();
  TwoPanels two;
  PanelGroesseMerken({all.clock, all.random, all.waits, all.files, blocked, all.dialogs}, two.splitter, 0,
                     keys::BreiteSchuetzen, 80);
  two.splitter.show();
  Q_EMIT two.splitter.released();
  QCOMPARE(two.splitter.panelSize(0), 80);
}

void TestGroundUi::reportWindowsFillTheScreen() {
  TestWorkplace place;
  Form form;
  AnzeigeLage(place.workplace(), form, "Liste");
  const QSize screen = form.screen()->geometry().size();
  QCOMPARE(form.pos(), QPoint(2, 2));
  QCOMPARE(form.size(), QSize(screen.width() - 4, screen.height() - 30));
}

void TestGroundUi::reportWindowsHaveAPlaceOfTheirOwn() {
  TestWorkplace place;
  schreibe(place.settings, keys::AnzeigeScreen, false);
  Form form;
  const int inch = form.logicalDpiX();
  place.settings.setValue("Tarvex-40", "Anzeige", "Main_LeftListe", "1440");
  place.settings.setValue("Tarvex-40", "Anzeige", "Main_TopListe", "0");
  place.settings.setValue("Tarvex-40", "Anzeige", "Main_WidthListe", "2880");
  place.settings.setValue("Tarvex-40", "Anzeige", "Main_Width", "720");
  AnzeigeLage(place.workplace(), form, "Liste");
  QCOMPARE(form.pos(), QPoint(inch, 0));
  QCOMPARE(form.width(), 2 * inch);
  QCOMPARE(form.height(), 200);
}

void TestGroundUi::filesOpenWithTheirProgram() {
  TestWorkplace place;
  const QString path = place.path("Liste.txt");
  MitProgrammOeffnen(place.workplace(), path);  // missing: nothing at all
  place.files.write(path, "x");
  QDesktopServices::setUrlHandler("file", this, "opened");
  MitProgrammOeffnen(place.workplace(), path);
  QDesktopServices::unsetUrlHandler("file");
  QCOMPARE(opened_, QList<QUrl>({QUrl::fromLocalFile(path)}));
#ifndef Q_OS_WIN
  // The platform without a screen opens nothing.
  place.dialogs.expect("Für diese Datei ist kein Programm zugeordnet:\n" + path)
      .showing(BoxIcon::Exclamation);
  MitProgrammOeffnen(place.workplace(), path);
#endif
}

#ifndef Q_OS_WIN
void TestGroundUi::aFolderIsShownByTheDesktop() {
  TestWorkplace place;
  opened_.clear();
  QDesktopServices::setUrlHandler("file", this, "opened");
  ExplorerStarten(place.workplace(), place.path() + "/");
  QDesktopServices::unsetUrlHandler("file");
  QCOMPARE(opened_, QList<QUrl>({QUrl::fromLocalFile(place.path())}));
  const QString gone = place.path("fehlt/");
  place.dialogs.expect("Der Ordner lässt sich nicht anzeigen:\n" + gone).showing(BoxIcon::Exclamation);
  ExplorerStarten(place.workplace(), gone);
}
#endif

QTEST_MAIN(TestGroundUi)
#include "test_ground_ui.moc"
