// The configuration checker on its real window.
#include <QApplication>
#include <QClipboard>
#include <QDesktopServices>
#include <QHelpEvent>
#include <QLabel>
#include <QPushButton>
#include <QTest>
#include <QTextDocumentFragment>
#include <QToolTip>

#include "platform/grid/text_grid.h"
#include "platform/look/look.h"
#include "targetconfig/check_delegate.h"
#include "targetconfig/frmHaeringIniPruefung.h"
#include "tests/support/drive.h"
#include "tests/support/image_paper.h"
#include "tests/support/manners.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

namespace {

const QColor kGreen(0, 128, 0);
const QColor kRed(255, 0, 0);

int pixelsOf(const QImage& image, const QColor& colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y)
    for (int x = 0; x < image.width(); ++x) count += image.pixelColor(x, y) == colour;
  return count;
}

}  // namespace

class TestFrmHaeringIniPruefung : public QObject {
  Q_OBJECT

 public Q_SLOTS:
  void opened(const QUrl& url) { shown_ << url; }

 private Q_SLOTS:
  void init() {
    look::apply(*qApp, look::Scheme::Light);
    shown_.clear();
    place = std::make_unique<TestWorkplace>();
    place->files.makeFolder(place->path("esa"));
    place->settings.setValue("Tarvex", "Häring", "Netzverzeichnis", place->path("esa"));
  }
  void cleanup() {
    dialog.reset();
    place.reset();
  }

  void opensOnTheStoredFolder();
  void opensOnTheDefaultFolder();
  void anotherFolderIsChecked();
  void noFolderChosenKeepsTheResult();
  void aChosenSeparatorIsNotDoubled();
  void theExplorerShowsTheFolder();
  void rowsAndColours();
  void everyCheckStartsAnew();
  void aMissingIniIsReported();
  void aRedRowSaysWhatIsMissing();
  void otherRowsSayNothing();
  void aCutRowShowsWholeUnderThePointer();
  void enterChecksWhereItIsDrawnSo();
  void copies();
  void prints();
  void aFailedPrinterIsReported();
  void closingStopsARunningCheck();
  void chosenRowsKeepTheirColour_data();
  void chosenRowsKeepTheirColour();
  void whatIsMissingStandsOut();
  void manners();

 private:
  void write(const QString& name, const QByteArray& content) {
    place->files.write(place->path("esa/" + name), content);
  }
  void writeSample() {
    write("esa_preis.ini", "[W1]\nBezeichnung = \"LG\"\nDefinition = \"a.def\"\nDefinition = \"b.def\"\n");
    write("a.def", "\">DateiWaffe\"\n\"w.def\"\n\">DateiScheibe\"\n\"s.def\"\n");
    write("w.def", "");
  }
  void open() {
    dialog = std::make_unique<frmHaeringIniPruefung>(place->workplace());
    dialog->setPaper(paper);
    dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(dialog.get()));
  }
  TextGrid& grid() { return the<TextGrid>(*dialog, "flexPruefung"); }
  QStringList texts() {
    QStringList all;
    for (int row = 1; row < grid().table()->rows(); ++row) all << grid().table()->text(row, 0);
    return all;
  }
  QString label(const QString& name) { return the<QLabel>(*dialog, name).text(); }
  bool usable(const QString& button) { return the<QPushButton>(*dialog, button).isEnabled(); }
  void doubleClickRow(int row) {
    const QRect cell = grid().visualRect(grid().table()->index(row - 1, 0));
    QTest::mouseClick(grid().viewport(), Qt::LeftButton, {}, cell.center());
    QTest::mouseDClick(grid().viewport(), Qt::LeftButton, {}, cell.center());
  }

  std::unique_ptr<TestWorkplace> place;
  ImagePaper paper;
  std::unique_ptr<frmHaeringIniPruefung> dialog;
  QList<QUrl> shown_;
};

void TestFrmHaeringIniPruefung::opensOnTheStoredFolder() {
  open();
  QCOMPARE(dialog->windowTitle(), "Prüfung esa_preis.ini + def-Dateien");
  QCOMPARE(label("lblHaeringPfad"), place->path("esa") + QDir::separator());
  QCOMPARE(grid().table()->rows(), 1);
  QCOMPARE(grid().table()->columns(), 1);
  for (const auto& [name, caption] :
       {std::pair{"cmdCheck", "Prüfen"}, {"cmdExplorer", "Explorer"}, {"cmdClose", "&Schließen"}})
    QCOMPARE(the<QPushButton>(*dialog, name).text(), caption);
  QVERIFY(!usable("cmdKopieren"));
  QVERIFY(!usable("cmdDrucken"));
}

void TestFrmHaeringIniPruefung::opensOnTheDefaultFolder() {
  place->settings.setValue("Tarvex", "Häring", "Netzverzeichnis", "");
  TestWorkplace fresh;
  frmHaeringIniPruefung window(fresh.workplace());
  QCOMPARE(the<QLabel>(window, "lblHaeringPfad").text(), "C:\\Programme\\ESA2002\\");
}

void TestFrmHaeringIniPruefung::anotherFolderIsChecked() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  QCOMPARE(texts().size(), 5);
  place->files.makeFolder(place->path("neu"));
  place->files.write(place->path("neu/esa_preis.ini"), "Bezeichnung = Neu\n");
  place->dialogs.expectFolder("Bitte Intarso-Pfad auswählen:", place->path("neu"));
  click(*dialog, "cmdPfad");
  QCOMPARE(label("lblHaeringPfad"), place->path("neu") + QDir::separator());
  // What was found stays, and tells of the folder that was checked.
  QCOMPARE(texts().size(), 5);
  QCOMPARE(label("lblAnzahl"), "1 Disziplin, 2 Dateien vorhanden, 2 fehlen");
  const QString checked = "Ordner: " + place->path("esa") + QDir::separator();
  place->dialogs.expect("Es fehlt die def-Datei: b.def\n" + checked + "\nGenannt wird sie in: esa_preis.ini");
  doubleClickRow(5);
  click(*dialog, "cmdKopieren");
  QVERIFY(QApplication::clipboard()->text().contains('\n' + checked + '\n'));
  click(*dialog, "cmdCheck");
  QCOMPARE(texts(), QStringList{"Neu"});
  QCOMPARE(place->settings.value("Tarvex", "Häring", "Netzverzeichnis"), place->path("esa"));
}

void TestFrmHaeringIniPruefung::noFolderChosenKeepsTheResult() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  place->dialogs.expectFolder("Bitte Intarso-Pfad auswählen:", std::nullopt);
  click(*dialog, "cmdPfad");
  QCOMPARE(label("lblHaeringPfad"), place->path("esa") + QDir::separator());
  QCOMPARE(texts().size(), 5);
}

void TestFrmHaeringIniPruefung::aChosenSeparatorIsNotDoubled() {
  open();
  place->dialogs.expectFolder("Bitte Intarso-Pfad auswählen:", "\\\\server\\esa\\");
  click(*dialog, "cmdPfad");
  QCOMPARE(label("lblHaeringPfad"), "\\\\server\\esa\\");
}

void TestFrmHaeringIniPruefung::theExplorerShowsTheFolder() {
#ifndef Q_OS_WIN
  open();
  QDesktopServices::setUrlHandler("file", this, "opened");
  click(*dialog, "cmdExplorer");
  QDesktopServices::unsetUrlHandler("file");
  QCOMPARE(shown_, QList<QUrl>{QUrl::fromLocalFile(place->path("esa"))});
#endif
}

void TestFrmHaeringIniPruefung::rowsAndColours() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  QCOMPARE(texts(), (QStringList{"\"LG\"", "\ta.def", "\t\tDateiWaffe: w.def",
                                 "\t\tDatei nicht vorhanden: DateiScheibe: s.def",
                                 "\tDatei nicht vorhanden: Definition = \"b.def\""}));
  const TextTable& table = *grid().table();
  QVERIFY(!table.cellLook(1, 0).fore);
  QCOMPARE(*table.cellLook(2, 0).fore, kGreen);
  QCOMPARE(*table.cellLook(3, 0).fore, kGreen);
  QCOMPARE(*table.cellLook(4, 0).fore, kRed);
  QCOMPARE(*table.cellLook(5, 0).fore, kRed);
  QCOMPARE(label("lblAnzahl"), "1 Disziplin, 2 Dateien vorhanden, 2 fehlen");
  QVERIFY(usable("cmdKopieren") && usable("cmdDrucken") && usable("cmdCheck"));
}

void TestFrmHaeringIniPruefung::everyCheckStartsAnew() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  click(*dialog, "cmdCheck");
  QCOMPARE(texts().size(), 5);
  write("b.def", "");
  write("s.def", "");
  click(*dialog, "cmdCheck");
  QCOMPARE(label("lblAnzahl"), "1 Disziplin, 4 Dateien vorhanden, keine fehlt");
}

void TestFrmHaeringIniPruefung::aMissingIniIsReported() {
  open();
  place->dialogs.expect("Fehler: 53 - Datei nicht gefunden\nFehler bei cmdCheck_Click_err!", BoxAnswer::Abort)
      .titled("Fehler")
      .with(BoxButtons::AbortRetryIgnore)
      .showing(BoxIcon::Exclamation);
  click(*dialog, "cmdCheck");
  QCOMPARE(grid().table()->rows(), 1);
  QCOMPARE(label("lblAnzahl"), "");
  QVERIFY(usable("cmdCheck"));
  const QImage unreadable = grid().viewport()->grab().toImage();
  // Passing over it doesn't make it a file without disciplines.
  place->dialogs.expect("Fehler: 53 - Datei nicht gefunden\nFehler bei cmdCheck_Click_err!",
                        BoxAnswer::Ignore);
  click(*dialog, "cmdCheck");
  QCOMPARE(grid().viewport()->grab().toImage(), unreadable);
  // An empty file that came back at the second look isn't a missing one.
  place->dialogs.expect("Fehler: 53 - Datei nicht gefunden\nFehler bei cmdCheck_Click_err!", BoxAnswer::Retry)
      .during([this] { write("esa_preis.ini", ""); });
  click(*dialog, "cmdCheck");
  QVERIFY(grid().viewport()->grab().toImage() != unreadable);
  place->files.remove(place->path("esa/esa_preis.ini"));
  // The folder came back while the box stood open.
  place->dialogs.expect("Fehler: 53 - Datei nicht gefunden\nFehler bei cmdCheck_Click_err!", BoxAnswer::Retry)
      .during([this] { writeSample(); });
  click(*dialog, "cmdCheck");
  QCOMPARE(texts().size(), 5);
}

void TestFrmHaeringIniPruefung::aRedRowSaysWhatIsMissing() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  const QString folder = place->path("esa") + QDir::separator();
  const QString target =
      "Es fehlt die Scheibendatei: s.def\nOrdner: " + folder + "\nGenannt wird sie in: a.def";
  place->dialogs.expect(target).titled("Hinweis").showing(BoxIcon::Information);
  doubleClickRow(4);
  grid().setCurrentRow(5);
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
    place->dialogs.expect("Es fehlt die def-Datei: b.def\nOrdner: " + folder +
                          "\nGenannt wird sie in: esa_preis.ini");
    press(*dialog, "flexPruefung", key);
  }
  QCOMPARE(texts().size(), 5);
}

void TestFrmHaeringIniPruefung::otherRowsSayNothing() {
  writeSample();
  open();
  press(*dialog, "flexPruefung", Qt::Key_Return);
  click(*dialog, "cmdCheck");
  for (const int row : {1, 2, 3}) doubleClickRow(row);
  QVERIFY(place->dialogs.asked().isEmpty());
}

void TestFrmHaeringIniPruefung::aCutRowShowsWholeUnderThePointer() {
  const QString title = QString("Luftgewehr & <mehr> ").repeated(20).trimmed();
  write("esa_preis.ini", ("Bezeichnung = kurz\nBezeichnung = " + title + "\n").toUtf8());
  open();
  click(*dialog, "cmdCheck");
  const auto tip = [this](int row) {
    const QPoint at = grid().visualRect(grid().table()->index(row - 1, 0)).topLeft() + QPoint(30, 5);
    QHelpEvent event(QEvent::ToolTip, at, grid().viewport()->mapToGlobal(at));
    QCoreApplication::sendEvent(grid().viewport(), &event);
    return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
  };
  QCOMPARE(texts(), (QStringList{"kurz", title}));
  QCOMPARE(tip(2), title);
  tip(1);
  QTRY_VERIFY(!QToolTip::isVisible());
}

void TestFrmHaeringIniPruefung::enterChecksWhereItIsDrawnSo() {
  writeSample();
  open();
  auto& check = the<QPushButton>(*dialog, "cmdCheck");
  QVERIFY(check.isDefault());
  QTest::keyClick(dialog->focusWidget(), Qt::Key_Return);
  QCOMPARE(texts().size(), 5);
  grid().setFocus();
  QVERIFY(!check.isDefault());
  write("esa_preis.ini", "Bezeichnung = Neu\n");
  the<QPushButton>(*dialog, "cmdPfad").setFocus();
  QVERIFY(check.isDefault());
  press(*dialog, "cmdPfad", Qt::Key_Return);
  QCOMPARE(texts(), QStringList{"Neu"});
}

void TestFrmHaeringIniPruefung::copies() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  click(*dialog, "cmdKopieren");
  const QString expected =
      "Prüfung esa_preis.ini + def-Dateien\nOrdner: " + place->path("esa") + QDir::separator() +
      "\nStand: 20.11.2026 10:00\n1 Disziplin, 2 Dateien vorhanden, 2 fehlen\n\n" + texts().join('\n') + '\n';
  QCOMPARE(QApplication::clipboard()->text(), expected);
  QApplication::clipboard()->clear();
  press(*dialog, "flexPruefung", Qt::Key_C, Qt::ControlModifier);
  QCOMPARE(QApplication::clipboard()->text(), expected);
}

void TestFrmHaeringIniPruefung::prints() {
  look::apply(*qApp, look::Scheme::Dark);
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  paper = ImagePaper();
  click(*dialog, "cmdDrucken");
  QCOMPARE(paper.names, QStringList{"Prüfung esa_preis.ini + def-Dateien"});
  QCOMPARE(paper.sheets.size(), 1);
  QVERIFY(pixelsOf(paper.sheets[0], kRed) > 10);
  QVERIFY(pixelsOf(paper.sheets[0], kGreen) > 10);
  QVERIFY(pixelsOf(paper.sheets[0], Qt::black) > 10);
}

void TestFrmHaeringIniPruefung::aFailedPrinterIsReported() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  paper = ImagePaper();
  paper.error = 482;
  place->dialogs.expect("Fehler: 482 - Druckerfehler\nFehler bei cmdDrucken_Click_err!", BoxAnswer::Abort);
  click(*dialog, "cmdDrucken");
  paper = ImagePaper();
  paper.cancelled = true;
  click(*dialog, "cmdDrucken");
  QVERIFY(paper.sheets.isEmpty());
}

void TestFrmHaeringIniPruefung::closingStopsARunningCheck() {
  writeSample();
  open();
  bool closing = false;
  place->files.before([&](FileStep step, const QString& path) {
    if (step != FileStep::Read || !path.endsWith("a.def")) return;
    QCOMPARE(the<QPushButton>(*dialog, "cmdClose").text(), "&Anhalten");
    QVERIFY(!usable("cmdCheck") && !usable("cmdPfad") && !usable("cmdKopieren"));
    click(*dialog, "cmdClose");
    closing = true;
  });
  click(*dialog, "cmdCheck");
  place->files.before({});
  QVERIFY(closing);
  QVERIFY(dialog->isVisible());
  QCOMPARE(texts().size(), 3);
  QVERIFY(label("lblAnzahl").endsWith("abgebrochen"));
  click(*dialog, "cmdClose");
  QVERIFY(!dialog->isVisible());
}

void TestFrmHaeringIniPruefung::chosenRowsKeepTheirColour_data() {
  QTest::addColumn<bool>("dark");
  QTest::newRow("light") << false;
  QTest::newRow("dark") << true;
}

void TestFrmHaeringIniPruefung::chosenRowsKeepTheirColour() {
  QFETCH(bool, dark);
  look::apply(*qApp, dark ? look::Scheme::Dark : look::Scheme::Light);
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  for (const int row : {2, 5}) {
    const QRect cell = grid().visualRect(grid().table()->index(row - 1, 0));
    const QColor colour = row == 2 ? kGreen : kRed;
    grid().setCurrentRow(1);
    const int usual = pixelsOf(grid().viewport()->grab(cell).toImage(), colour);
    QVERIFY(usual > 10);
    grid().setCurrentRow(row);
    const QImage chosen = grid().viewport()->grab(cell).toImage();
    QVERIFY(pixelsOf(chosen, colour) > usual * 3 / 4);
    QVERIFY(pixelsOf(chosen, dark ? Qt::black : Qt::white) > chosen.width() * chosen.height() / 2);
  }
  const QColor ground = grid().palette().color(QPalette::Base);
  QCOMPARE(ground, dark ? QColor(Qt::black) : QColor(Qt::white));
}

/// In bold: the colour alone would say nothing to who can't tell it.
void TestFrmHaeringIniPruefung::whatIsMissingStandsOut() {
  const std::vector<CheckRow> rows = {{CheckKind::Title, CheckState::Plain, "LG", {}, {}},
                                      {CheckKind::Definition, CheckState::Found, "\ta.def", "a.def", {}},
                                      {CheckKind::Definition, CheckState::Missing, "\tb.def", "b.def", {}}};
  struct Shown : CheckDelegate {
    using CheckDelegate::CheckDelegate;
    using CheckDelegate::initStyleOption;
  } delegate(rows, nullptr);
  TextTable table(1);
  for (const CheckRow& row : rows) table.addRow({row.text});
  QStringList seen;
  for (int row = 0; row < 3; ++row) {
    QStyleOptionViewItem option;
    delegate.initStyleOption(&option, table.index(row, 0));
    seen += option.text + (option.font.bold() ? " fett" : "");
  }
  QCOMPARE(seen, (QStringList{"LG", "a.def", "b.def fett"}));
}

void TestFrmHaeringIniPruefung::manners() {
  writeSample();
  open();
  click(*dialog, "cmdCheck");
  QCOMPARE(badManners(*dialog).join('\n'), QString());
}

QTEST_MAIN(TestFrmHaeringIniPruefung)
#include "test_frm_haering_ini_pruefung.moc"
