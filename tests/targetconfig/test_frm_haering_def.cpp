// The generator's window, driven by object names; every box through the strict queue.
#include <QAbstractItemView>
#include <QApplication>
#include <QComboBox>
#include <QDesktopServices>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "platform/grid/text_grid.h"
#include "platform/look/contrast.h"
#include "platform/look/look.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"
#include "tests/targetconfig/generator_window.h"

using namespace qk;
using namespace qk::test;
using C = DefinitionRows;

class TestFrmHaeringDef : public QObject, private GeneratorWindow {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() { begin(); }
  void cleanup() { end(); }

  void opensOnTheStoredFolder();
  void theFolderGetsItsSeparator();
  void theCompetitionIsTheCallers();
  void aCompetitionThatCannotBeRead();
  void anEmptyCompetitionSaysSo();
  void identityIsBlue();
  void selectAllAndNone();
  void filterHidesRows();
  void namingRewritesTitles();
  void outputSwitchesColumns();
  void theCurrentCellStaysInSight();
  void keysWorkOnRowsInSight();
  void theFooterNamesWhatWorks();
  void theCurrentCellIsFramed();
  void columnsGrowWithWhatIsTyped();
  void editingByKeyboard();
  void anotherFolder();
  void noOtherFolder();
  void explorer();
  void createsFromTheGrid();
  void createsFromAnOpenCell();
  void failedChecksShowTheirCell();
  void theFileOfAFailureIsNamed();
  void manyFilesShowProgressAndStop();
  void escKeepsEdits();
  void previewShowsWhatWillBeWritten();
  void opened(const QUrl& url) { openedUrl_ = url; }
  void manners();

 private:
  QUrl openedUrl_;
};

void TestFrmHaeringDef::opensOnTheStoredFolder() {
  openWith({"Glück", "Meister"}, {"LG", "LP"});
  QCOMPARE(window_->windowTitle(), "esa_preis.ini / def-Dateien erstellen");
  QCOMPARE(the<QLabel>(*window_, "lblHaeringPfad").text(), office_->folder());
  QCOMPARE(column(C::Name), (QStringList{"Glück", "Glück", "Meister", "Meister"}));
  QCOMPARE(column(C::Gewaehlt), QStringList(4, "-1"));
  QCOMPARE(count(), "4 von 4 gewählt");
  QCOMPARE(the<QPushButton>(*window_, "cmdErstellen").text(), "Erstellen");
  QCOMPARE(the<QPushButton>(*window_, "cmdSelAll").text(), "Alle wählen");
  QCOMPARE(the<QPushButton>(*window_, "cmdSelNone").text(), "Keine wählen");
  QCOMPARE(the<QPushButton>(*window_, "cmdClose").text(), "&Schließen");
  const QStringList options = {
      "Alle",  "nur Disziplinen", "nur Kombinationen",           "direkt",     "LG: XX",
      "LG_XX", "esa_preis.ini",   "esa_preis.ini + def-Dateien", "def-Dateien"};
  QStringList found;
  for (const char* array : {"optAuswahl_%1", "optHaeringBezeichnung_%1", "optOutput_%1"})
    for (int i = 0; i < 3; ++i) found << the<QRadioButton>(*window_, QString(array).arg(i)).text();
  QCOMPARE(found, options);
  QVERIFY(grid().hasFocus());
  QVERIFY(!the<QProgressBar>(*window_, "prgErstellen").isVisible());
}

void TestFrmHaeringDef::theFolderGetsItsSeparator() {
  office_->place.settings.setValue("Tarvex", "Häring", "Netzverzeichnis", office_->place.path("austausch"));
  open();
  QCOMPARE(the<QLabel>(*window_, "lblHaeringPfad").text(), office_->folder());
}

void TestFrmHaeringDef::theCompetitionIsTheCallers() {
  open();
  window_->setDataBaseName("x/y.qkk");
  QCOMPARE(window_->DataBaseName(), "x/y.qkk");
}

void TestFrmHaeringDef::aCompetitionThatCannotBeRead() {
  office_->database().dropTable("DisziplinWaffen");
  office_->addDiscipline({"a", 10, false, {}});
  box("Fehler: 3078 - Die Tabelle oder Abfrage 'DisziplinWaffen' wurde nicht gefunden.\nFehler bei "
      "Form_Load_err!",
      BoxAnswer::Abort)
      .with(BoxButtons::AbortRetryIgnore);
  open();
  QCOMPARE(table().rows(), 1);
}

void TestFrmHaeringDef::anEmptyCompetitionSaysSo() {
  open();
  QCOMPARE(table().rows(), 1);
  QCOMPARE(preview(), "");
  box(kCreated);
  click(*window_, "cmdErstellen");
  QCOMPARE(office_->names(), QStringList{"esa_preis.ini"});
}

void TestFrmHaeringDef::identityIsBlue() {
  openWith({"a"});
  const auto foreground = [&](int number) {
    return table().index(0, number).data(Qt::ForegroundRole).value<QBrush>().color();
  };
  const QColor blue = window_->palette().color(QPalette::Link);
  QVERIFY(blue.blue() > blue.red() && blue.blue() > blue.green());
  for (const int number : {C::Gewaehlt, C::Name, C::Waffe}) QCOMPARE(foreground(number), blue);
  QVERIFY(foreground(C::Bezeichnung) != blue);
  QPalette dark = look::palette(look::Scheme::Dark);
  window_->setPalette(dark);
  QCOMPARE(foreground(C::Name), dark.color(QPalette::Link));
}

void TestFrmHaeringDef::selectAllAndNone() {
  const int one = office_->addDiscipline({"a"});
  office_->addCombination("k", {one});
  open();
  click(*window_, "optAuswahl_1");
  click(*window_, "cmdSelNone");
  QCOMPARE(column(C::Gewaehlt), QStringList(2, "0"));
  QCOMPARE(count(), "0 von 2 gewählt");
  click(*window_, "cmdSelAll");
  QCOMPARE(column(C::Gewaehlt), QStringList(2, "-1"));
  QCOMPARE(count(), "1 von 2 gewählt, 1 weitere ausgeblendet");
  stand(1, C::Gewaehlt);
  QTest::keyClick(&grid(), Qt::Key_Space);
  QCOMPARE(column(C::Gewaehlt), (QStringList{"0", "-1"}));
}

void TestFrmHaeringDef::filterHidesRows() {
  const int one = office_->addDiscipline({"a"});
  office_->addCombination("k", {one});
  open();
  const auto hidden = [&] {
    QCoreApplication::processEvents();
    return QList<bool>{grid().isRowHidden(0), grid().isRowHidden(1)};
  };
  QCOMPARE(hidden(), (QList<bool>{false, false}));
  click(*window_, "optAuswahl_1");
  QCOMPARE(hidden(), (QList<bool>{false, true}));
  click(*window_, "optAuswahl_2");
  QCOMPARE(hidden(), (QList<bool>{true, false}));
  click(*window_, "optAuswahl_0");
  QCOMPARE(hidden(), (QList<bool>{false, false}));
  QCOMPARE(column(C::Gewaehlt), QStringList(2, "-1"));
}

void TestFrmHaeringDef::namingRewritesTitles() {
  openWith({"Glück"});
  enter(1, C::Bezeichnung, "anders");
  QCOMPARE(text(1, C::Bezeichnung), "anders");
  click(*window_, "optHaeringBezeichnung_1");
  QCOMPARE(text(1, C::Bezeichnung), "LG: Glück");
  click(*window_, "optHaeringBezeichnung_2");
  QCOMPARE(text(1, C::Bezeichnung), "LG_Glück");
  click(*window_, "optHaeringBezeichnung_0");
  QCOMPARE(text(1, C::Bezeichnung), "Glück");
  QCOMPARE(text(1, C::DateiName), "0_hd_LG_Glück.def");
}

void TestFrmHaeringDef::outputSwitchesColumns() {
  openWith({"Glück"});
  const auto shown = [&](int number) {
    QCoreApplication::processEvents();
    return !grid().isColumnHidden(number);
  };
  QVERIFY(!shown(C::DefDatei) && shown(C::KennNummer) && shown(C::DateiName) && shown(C::Rest));
  click(*window_, "optOutput_0");
  QVERIFY(shown(C::DefDatei) && !shown(C::KennNummer) && !shown(C::DateiName) && !shown(C::Rest));
  click(*window_, "optOutput_2");
  QVERIFY(!shown(C::DefDatei) && shown(C::KennNummer) && shown(C::DateiName));
}

void TestFrmHaeringDef::theCurrentCellStaysInSight() {
  openWith({"Glück", "Meister"});
  stand(2, C::DateiScheibe);
  click(*window_, "optOutput_0");
  QTRY_COMPARE(grid().currentIndex(), table().index(1, C::DefDatei));
  click(*window_, "optOutput_1");
  QTRY_COMPARE(grid().currentIndex(), table().index(1, C::Bezeichnung));
  click(*window_, "optOutput_0");
  QCOMPARE(grid().currentIndex(), table().index(1, C::Bezeichnung));
}

/// Space, F2 and a failed check never mean a row that the filter hides.
void TestFrmHaeringDef::keysWorkOnRowsInSight() {
  const int one = office_->addDiscipline({"a"});
  office_->addCombination("k", {one});
  open();
  grid().setFocus();
  QCOMPARE(grid().currentRow(), 1);
  click(*window_, "optAuswahl_2");
  grid().setFocus();
  QTest::keyClick(&grid(), Qt::Key_Space);
  QCOMPARE(column(C::Gewaehlt), (QStringList{"-1", "0"}));
  QVERIFY(editor());
  QCOMPARE(grid().currentRow(), 2);
  QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
  box("Prüfung fehlgeschlagen\r\nFür die Erstellung der def-Dateien müssen die Einträge >DateiWaffe und "
      ">DateiScheibe vorhanden sein");
  click(*window_, "cmdErstellen");
  QCOMPARE(grid().currentIndex(), table().index(1, C::DateiWaffe));
}

void TestFrmHaeringDef::theFooterNamesWhatWorks() {
  openWith({"a"});
  const auto footer = [this] { return the<QLabel>(*window_, "lblTasten").text(); };
  QVERIFY(footer().contains("F2 Eingabe") && footer().contains("F4 Vorschläge"));
  stand(1, C::Name);
  the<QPushButton>(*window_, "cmdExplorer").setFocus();
  QTest::keyClick(&the<QPushButton>(*window_, "cmdExplorer"), Qt::Key_F4);
  auto* list = grid().findChild<QComboBox*>();
  QVERIFY(list && list->view()->isVisible());
  QTest::keyClick(list->view(), Qt::Key_Escape);
  QTest::keyClick(list, Qt::Key_Escape);
  stand(1, C::Bezeichnung);
  the<QPushButton>(*window_, "cmdExplorer").setFocus();
  QTest::keyClick(&the<QPushButton>(*window_, "cmdExplorer"), Qt::Key_F2);
  auto* field = qobject_cast<QLineEdit*>(QApplication::focusWidget());
  QVERIFY(field);
  QTest::keyClick(field, Qt::Key_F2);  // in the editor it begins nothing anew
  QCOMPARE(QApplication::focusWidget(), field);
  QTest::keyClick(field, Qt::Key_Escape);
  // No def file in the folder: nothing to suggest, and none is promised.
  click(*window_, "optOutput_0");
  QVERIFY(!footer().contains("F4") && footer().contains("F2"));
}

/// The frame of the current cell is seen on the mark of its row.
void TestFrmHaeringDef::theCurrentCellIsFramed() {
  for (const look::Scheme scheme : {look::Scheme::Light, look::Scheme::Dark}) {
    look::apply(*qApp, scheme);
    if (!window_) openWith({"Glück"});
    for (const int number : {C::Gewaehlt, C::Name, C::Bezeichnung}) {
      stand(1, number);
      const QRect cell = grid().visualRect(grid().currentIndex());
      const QImage picture = grid().viewport()->grab(cell).toImage();
      const QColor frame = picture.pixelColor(picture.width() / 2, 1);
      const QColor ground = picture.pixelColor(4, 4);
      QVERIFY2(look::contrast(frame, ground) >= 3, qPrintable(frame.name() + " on " + ground.name()));
      grid().setCurrentIndex(table().index(0, C::SchiessZeit));
      const QImage without = grid().viewport()->grab(cell).toImage();
      QVERIFY(look::contrast(without.pixelColor(picture.width() / 2, 1), ground) < 1.2);
    }
  }
  look::apply(*qApp, look::Scheme::Light);
}

void TestFrmHaeringDef::columnsGrowWithWhatIsTyped() {
  openWith({"a", "b"});
  const QString longName = "0_hw_" + QString(40, 'x') + ".def";
  for (const int number : {C::SchiessZeit, C::DateiWaffe}) {
    if (number == C::DateiWaffe) box(kColumnQuestion, BoxAnswer::Yes);
    enter(1, number, longName);
    QVERIFY(grid().columnWidth(number) > grid().fontMetrics().horizontalAdvance(longName));
  }
}

void TestFrmHaeringDef::editingByKeyboard() {
  office_->addKey("1.10", "Luftgewehr", "LG");
  openWith({"a"});
  enter(1, C::SchiessZeit, "30 min");
  QCOMPARE(text(1, C::SchiessZeit), "30 min");
  // A suggestion by the arrow keys.
  stand(1, C::Wertung);
  QWidget* box = editor();
  QVERIFY(qobject_cast<QComboBox*>(box));
  QTest::keyClick(box, Qt::Key_Up);
  QTest::keyClick(box, Qt::Key_Return);
  QTRY_COMPARE(text(1, C::Wertung), "Zehntelringe");
  // The key's number, chosen from the dropped list.
  stand(1, C::KennNummer);
  QTest::keyClick(&grid(), Qt::Key_F4);
  auto* list = grid().findChild<QComboBox*>();
  QVERIFY(list && list->view()->isVisible());
  QCOMPARE(list->itemText(0), "1 – 1.10 – Luftgewehr");
  QTest::keyClick(list->view(), Qt::Key_Return);
  QTRY_COMPARE(text(1, C::KennNummer), "1");
  // The source of a row isn't edited.
  table().setText(1, C::Name, "a");
  QVERIFY(!(table().flags(table().index(0, C::Name)) & Qt::ItemIsEditable));
}

void TestFrmHaeringDef::anotherFolder() {
  const int one = office_->addDiscipline({"a"});
  office_->addCombination("k", {one});
  office_->place.files.makeFolder(office_->place.path("anderer"));
  office_->place.files.write(office_->place.path("anderer/0_hwX.def"), "x");
  open();
  click(*window_, "optAuswahl_2");
  enter(2, C::Bezeichnung, "geändert");
  office_->place.dialogs.expectFolder("Bitte Pfad auswählen:", office_->place.path("anderer"));
  click(*window_, "cmdAuswahlDirecotry");
  QCOMPARE(the<QLabel>(*window_, "lblHaeringPfad").text(), office_->place.path("anderer") + "/");
  // Edits are lost, the filter holds, the lists are those of the folder.
  QCOMPARE(text(2, C::Bezeichnung), "k");
  QCoreApplication::processEvents();
  QVERIFY(grid().isRowHidden(0) && !grid().isRowHidden(1));
  stand(2, C::DateiWaffe);
  auto* list = qobject_cast<QComboBox*>(editor());
  QVERIFY(list);
  QCOMPARE(list->itemText(0), "0_hwX.def");
}

void TestFrmHaeringDef::noOtherFolder() {
  openWith({"a"});
  enter(1, C::Bezeichnung, "geändert");
  office_->place.dialogs.expectFolder("Bitte Pfad auswählen:", std::nullopt);
  click(*window_, "cmdAuswahlDirecotry");
  QCOMPARE(text(1, C::Bezeichnung), "geändert");
  QCOMPARE(the<QLabel>(*window_, "lblHaeringPfad").text(), office_->folder());
}

void TestFrmHaeringDef::explorer() {
  open();
  QDesktopServices::setUrlHandler("file", this, "opened");
  click(*window_, "cmdExplorer");
  QDesktopServices::unsetUrlHandler("file");
  QCOMPARE(openedUrl_.adjusted(QUrl::StripTrailingSlash).toLocalFile(), office_->place.path("austausch"));
}

void TestFrmHaeringDef::createsFromTheGrid() {
  openWith({"Glück", "Meister"});
  fillFiles();
  for (int row = 1; row <= 2; ++row) table().setText(row, C::DefDatei, "x.def");
  const auto createdBy = [&](const QString& option) {
    for (const QString& name : office_->names()) office_->place.files.remove(office_->folder() + name);
    click(*window_, option);
    box(kCreated).titled("Hinweis").showing(BoxIcon::Information);
    click(*window_, "cmdErstellen");
    return office_->names();
  };
  QCOMPARE(createdBy("optOutput_0"), QStringList{"esa_preis.ini"});
  QVERIFY(office_->content("esa_preis.ini").contains("Definition = \"x.def\""));
  const QStringList definitions = {"0_hd_LG_Glück.def", "0_hd_LG_Meister.def"};
  QCOMPARE(createdBy("optOutput_1"), definitions + QStringList{"esa_preis.ini"});
  QVERIFY(office_->content("esa_preis.ini")
              .contains("Definition = \"0_hd_LG_Gl\xFC"
                        "ck.def\""));
  QCOMPARE(createdBy("optOutput_2"), definitions);
  QVERIFY(the<QPushButton>(*window_, "cmdErstellen").isEnabled());
  QVERIFY(grid().isEnabled());
}

void TestFrmHaeringDef::createsFromAnOpenCell() {
  openWith({"a"});
  fillFiles();
  stand(1, C::Bezeichnung);
  QWidget* field = editor();
  QVERIFY(field);
  typeInto(*field, "Letzte Eingabe");
  box(kCreated);
  QTest::keyClick(field, Qt::Key_F9);
  QTRY_VERIFY(office_->place.dialogs.done());
  QVERIFY(office_->content("0_hd_LG_a.def").contains("\"Letzte Eingabe\""));
}

void TestFrmHaeringDef::failedChecksShowTheirCell() {
  openWith({"a", "b", "c"});
  box("Prüfung fehlgeschlagen\r\nFür die Erstellung der def-Dateien müssen die Einträge >DateiWaffe und "
      ">DateiScheibe vorhanden sein")
      .titled("Hinweis")
      .showing(BoxIcon::Exclamation);
  click(*window_, "cmdErstellen");
  QCOMPARE(grid().currentIndex(), table().index(0, C::DateiWaffe));
  QVERIFY(grid().viewport()->rect().intersects(grid().visualRect(grid().currentIndex())));
  QCOMPARE(office_->names(), QStringList());

  fillFiles();
  table().setText(3, C::Bezeichnung, "Łódź");
  box("Prüfung fehlgeschlagen\r\nDiese Zeichen können die Stationen nicht lesen:\r\nZeile 3 (LG, c), "
      ">Bezeichnung: Ł");
  click(*window_, "cmdErstellen");
  QCOMPARE(grid().currentIndex(), table().index(2, C::Bezeichnung));
  QCOMPARE(office_->names(), QStringList());
}

void TestFrmHaeringDef::theFileOfAFailureIsNamed() {
  openWith({"a", "b"});
  fillFiles();
  office_->place.files.fail(FileStep::Write, "0_hd_LG_b.def.neu", 70, 1);
  box("Fehler: 70 - " + errorDescription(70) + "\nFehler beim Schreiben der Datei " + office_->folder() +
          "0_hd_LG_b.def!",
      BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .showing(BoxIcon::Exclamation);
  click(*window_, "cmdErstellen");
  QCOMPARE(office_->names(), QStringList{"0_hd_LG_a.def"});
  QVERIFY(grid().isEnabled());
}

void TestFrmHaeringDef::manyFilesShowProgressAndStop() {
  QStringList names;
  for (int i = 0; i < 60; ++i) names << QString("D%1").arg(i, 2, 10, QChar('0'));
  openWith(names);
  fillFiles();
  auto& bar = the<QProgressBar>(*window_, "prgErstellen");
  int writes = 0;
  bool shown = false, locked = false;
  office_->place.files.before([&](FileStep step, const QString&) {
    if (step != FileStep::Write || ++writes != 10) return;
    shown = bar.isVisible() && bar.maximum() == 61;
    locked = !grid().isEnabled();
    // Closing while files are written means stopping.
    the<QPushButton>(*window_, "cmdClose").click();
  });
  box("Angehalten: 10 von 61 Dateien erstellt").showing(BoxIcon::Exclamation);
  click(*window_, "cmdErstellen");
  QVERIFY(shown && locked);
  QVERIFY(window_->isVisible());
  QVERIFY(!bar.isVisible() && grid().isEnabled());
  QCOMPARE(office_->names().size(), 10);

  office_->place.files.before({});
  writes = 0;
  office_->place.files.before([&](FileStep step, const QString&) {
    if (step == FileStep::Write && ++writes == 5) click(*window_, "cmdStop");
  });
  box("Angehalten: 5 von 61 Dateien erstellt");
  click(*window_, "cmdErstellen");
  office_->place.files.before({});
  box(kCreated);
  click(*window_, "cmdErstellen");
  QCOMPARE(office_->names().size(), 61);
}

void TestFrmHaeringDef::escKeepsEdits() {
  openWith({"a"});
  enter(1, C::Bezeichnung, "mühsam");
  QTest::keyClick(&grid(), Qt::Key_Escape);
  QVERIFY(window_->isVisible());
  QVERIFY(the<QLabel>(*window_, "lblTasten").text().contains("noch nicht geschrieben"));
  fillFiles();
  box(kCreated);
  click(*window_, "cmdErstellen");
  QTest::keyClick(&grid(), Qt::Key_Escape);
  QVERIFY(!window_->isVisible());
}

void TestFrmHaeringDef::previewShowsWhatWillBeWritten() {
  openWith({"Glück", "Meister"});
  stand(1, C::Bezeichnung);
  QVERIFY(
      preview().startsWith("0_hd_LG_Glück.def:\n\n\">Bezeichnung\"\n\"Glück\"\n\">KennNummer\"\n\"0\"\n"));
  QVERIFY(preview().contains("\">Wertung\"\n\"10\""));
  table().setText(1, C::Wertung, "1");
  QVERIFY(preview().contains("\">Wertung\"\n\"\""));
  table().setText(1, C::ZeitenAnzahl, "99999");
  QVERIFY(preview().contains(errorDescription(6)));
  stand(2, C::Bezeichnung);
  QVERIFY(preview().contains("\"Meister\""));
  table().setText(2, C::DateiName, "");
  QCOMPARE(preview(), "Ohne >DateiName wird nichts erstellt.");
  click(*window_, "optOutput_2");
  QCOMPARE(preview(), "Diese Zeile wird nicht geschrieben: sie hat keinen >DateiName.");
  table().setText(2, C::DefDatei, "m.def");
  click(*window_, "optOutput_0");
  QVERIFY(preview().contains("Bezeichnung = \"Meister\"\nDefinition = \"m.def\""));
  click(*window_, "cmdSelNone");
  QVERIFY(preview().contains("nicht geschrieben"));
}

void TestFrmHaeringDef::manners() {
  openWith({"Glück", "Meister"}, {"LG", "LP"});
  QCOMPARE(badManners(*window_), QStringList());
}

QTEST_MAIN(TestFrmHaeringDef)
#include "test_frm_haering_def.moc"
