// Receipts, lists and start cards from the real window of the desk, through the real report control: what is
// shown, what comes out of the printer, and what becomes of the booking when nothing comes out.
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScreen>
#include <QStatusBar>
#include <QTest>
#include <memory>

#include "app/ground/control_door.h"
#include "app/ground/settings_keys.h"
#include "cash/frmKasseReports.h"
#include "cash/frmTageswahl.h"
#include "platform/dialog/message_boxes.h"
#include "platform/look/look.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "tests/cash/desk_window.h"
#include "tests/support/image_paper.h"
#include "tests/support/manners.h"
#include "tests/support/read_bars.h"
#include "tests/support/real_boxes.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString kNoReceipt =
    "Fehler: 482 - " + errorDescription(482) + "\nFehler beim Drucken der Kasseneingänge!";

}  // namespace

class TestDeskReports : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    boxes = std::make_unique<RealBoxes>();
    till = std::make_unique<Till>(&real);
    till->deliver();
    till->random.give({0.1, 0.2, 0.3, 0.4});
    direct = std::make_unique<ImagePaper>(QSizeF(148, 210));
    asked = std::make_unique<ImagePaper>(QSizeF(148, 210));
    door = std::make_unique<ControlDoor>(till->workplace(), ReportControl::Papers{*direct, *asked},
                                         keys::BerichtsfensterKasse.toString());
    desk = std::make_unique<DeskWindow>(*till, *door);
  }
  void cleanup() {
    desk.reset();
    door.reset();
    till.reset();
    boxes.reset();
  }

  void thePreviewShowsTheReceipt();
  void thePreviewOpensWhereReportsDo();
  void theReceiptIsPrinted();
  void theReceiptBelongsToTheTab();
  void bookingPrintsTheReceiptFirst();
  void aFailedReceiptGoesOnToTheBooking();
  void theStartCardIsPrinted();
  void aStartCardThatFailsSaysNothing();
  void theListsOfTheDesk();
  void noListIsChosen();
  void theDayIsChosen();
  void withoutAChoiceTheLastDayCounts();
  void withoutPaymentsThereIsNoDay();
  void aDamagedReportIsNamed();
  void aMissingCatalogueIsSaidOnce();
  void aDamagedTemplate();
  void aDamagedCatalogue();
  void noRoomForTheReceipt();
  void severalDays();
  void theSetup();
  void theSetupIsCancelled();

 private:
  frmFinanz& window() { return desk->window(); }
  QStringList left() { return QDir(qEnvironmentVariable("temp")).entryList(QDir::Files); }
  /// Opens the lists by the menu, works them, and closes them.
  void inLists(const std::function<void(QWidget&)>& work) {
    boxes->expectWindow("frmKasseReports", [&](QWidget& lists) {
      QCoreApplication::processEvents();
      work(lists);
      click(lists, "cmdCancel");
    });
    trigger(window(), "mnuDateiAuswertung");
    QVERIFY(boxes->done());
  }
  void show(QWidget& lists, int row) {
    the<QListWidget>(lists, "lstAuswahl").setCurrentRow(row);
    click(lists, "cmdOK");
  }
  /// A preview, whose search finds the text.
  void expectPreview(const QString& title, const QString& text) {
    boxes->expectWindow("ReportPreview", [title, text](QWidget& shown) {
      QCOMPARE(shown.windowTitle(), title);
      QTRY_VERIFY(!the<QLabel>(shown, "lblSeiten").text().contains("…"));
      the<QLineEdit>(shown, "txtSuche").setText(text);
      QVERIFY2(!the<QLabel>(shown, "lblStand").text().contains("nirgends"), qPrintable(text));
      click(shown, "cmdSchliessen");
    });
  }
  /// Half of a delivered file, and rubbish for the rest.
  void spoil(const QString& name) {
    QFile file(till->path("programm/" + name));
    QVERIFY(file.open(QIODevice::ReadWrite));
    const qint64 size = file.size();
    QVERIFY(file.seek(40) && file.write(QByteArray(static_cast<int>(size - 40), 'x')) > 0);
  }
  void pay(const QString& rows) {
    till->fill("Zeilen Kasse_Eingang\n  Startnummer | KasseID | Offen | Betrag | DatumEingang\n" + rows);
  }

  SystemClock clock;
  MessageBoxes real{clock};
  std::unique_ptr<RealBoxes> boxes;
  std::unique_ptr<Till> till;
  std::unique_ptr<ImagePaper> direct, asked;
  std::unique_ptr<ControlDoor> door;
  std::unique_ptr<DeskWindow> desk;
};

void TestDeskReports::thePreviewShowsTheReceipt() {
  desk->open("107");
  desk->article("200");
  boxes->expectWindow("ReportPreview", [](QWidget& shown) {
    QCOMPARE(shown.windowTitle(), "Kasse Eingänge");
    QCOMPARE(the<QComboBox>(shown, "cmbZoom").currentText(), "90 %");
    QTRY_VERIFY(!the<QLabel>(shown, "lblSeiten").text().contains("…"));
    for (const char* text : {"Müller Jörg", "Nachkauf Serie", "3,50"}) {
      the<QLineEdit>(shown, "txtSuche").setText(text);
      QVERIFY2(!the<QLabel>(shown, "lblStand").text().contains("nirgends"), text);
    }
    click(shown, "cmdSchliessen");
  });
  trigger(window(), "mnuDateiVorschau");
  QVERIFY(boxes->done());
  QCOMPARE(left(), QStringList());
  QCOMPARE(window().focusWidget(), &desk->on<QWidget>("txtArtikelnummer"));
  expectPreview("Kasse Eingänge", "107");
  trigger(window(), "vorschau");
  QCOMPARE(direct->names, QStringList());
}

void TestDeskReports::thePreviewOpensWhereReportsDo() {
  schreibe(till->settings, keys::AnzeigeScreen, false);
  till->settings.setValue("Tarvex-40", "Anzeige", "Main_WidthKasse", "9000");
  till->settings.setValue("Tarvex-40", "Anzeige", "Main_HeightKasse", "7500");
  desk->open("107");
  boxes->expectWindow("ReportPreview", [](QWidget& shown) {
    QCOMPARE(shown.size(), QSize(9000 * shown.logicalDpiX() / 1440, 7500 * shown.logicalDpiY() / 1440));
    click(shown, "cmdSchliessen");
  });
  trigger(window(), "vorschau");
  QVERIFY(boxes->done());
}

void TestDeskReports::theReceiptIsPrinted() {
  desk->open("107");
  desk->article("100");
  trigger(window(), "mnuDateiDrucken");
  QCOMPARE(direct->names, QStringList("Kasse Eingänge"));
  QCOMPARE(direct->sheets.size(), 1);
  trigger(window(), "Drucken");
  QCOMPARE(direct->sheets.size(), 2);
  QVERIFY(asked->names.isEmpty());
  QCOMPARE(left(), QStringList());
}

void TestDeskReports::theReceiptBelongsToTheTab() {
  pay("  107 | 5 | ja | 12,5 | 19.11.2026\n");
  till->fillStacks();
  desk->open("107", false);
  desk->article("200");
  desk->show(1);  // the targets belong to the purchase
  expectPreview("Kasse Eingänge", "Nachkauf Serie");
  trigger(window(), "vorschau");
  desk->show(2);
  expectPreview("Kasse Eingänge", "Festabend");
  trigger(window(), "vorschau");
  desk->show(0);
  expectPreview("Kasse Eingänge", "Nachkauf Serie");
  trigger(window(), "vorschau");
}

void TestDeskReports::bookingPrintsTheReceiptFirst() {
  desk->open("107");
  desk->article("200");
  desk->press("chkAutoDruck");
  desk->press("cmdVerbuchen");
  QCOMPARE(direct->names, QStringList("Kasse Eingänge"));
  QCOMPARE(till->payments().size(), 1);
}

void TestDeskReports::aFailedReceiptGoesOnToTheBooking() {
  desk->open("107");
  desk->article("200");
  desk->press("chkAutoDruck");
  direct->error = 482;
  boxes->expect(kNoReceipt, BoxAnswer::Abort).titled("Fehler").with(BoxButtons::AbortRetryIgnore);
  desk->press("cmdVerbuchen");
  QVERIFY(boxes->done());
  QCOMPARE(till->payments().size(), 1);
  QCOMPARE(desk->purchase(), QStringList());
}

void TestDeskReports::theStartCardIsPrinted() {
  desk->open("107");
  trigger(window(), "mnuDateiPrintStartKarte");
  QCOMPARE(direct->names, QStringList("Startkarte 107"));
  QCOMPARE(barsOn(direct->sheets.at(0)), "107");
  trigger(window(), "kladde");
  QCOMPARE(direct->sheets.size(), 2);
  QCOMPARE(left(), QStringList());
}

void TestDeskReports::aStartCardThatFailsSaysNothing() {
  desk->open("107");
  direct->error = 482;
  trigger(window(), "kladde");
  QVERIFY(QFile::remove(till->path("programm/Startkarte.mdb")));
  trigger(window(), "kladde");
  QVERIFY(window().isVisible());
}

void TestDeskReports::theListsOfTheDesk() {
  pay("  107 | 1 | nein | 15 | 19.11.2026\n");
  desk->open("107");
  inLists([&](QWidget& lists) {
    QCOMPARE(lists.windowTitle(), "QK-Kasse Auswertungen");
    auto& list = the<QListWidget>(lists, "lstAuswahl");
    QCOMPARE(list.count(), 11);
    QCOMPARE(list.item(0)->text(), "Kassenjournal eines Tages");
    for (int row = 1; row < list.count(); ++row) {
      expectPreview("Auswertung - " + list.item(row)->text(), "Seite 1");
      show(lists, row);
    }
    QCOMPARE(badManners(lists), QStringList());
  });
  QCOMPARE(till->read("Select * from Kasse_Eingang", {"VereinIDBasis"}), QStringList("1"));
  QCOMPARE(window().focusWidget(), &desk->on<QWidget>("txtArtikelnummer"));
}

void TestDeskReports::noListIsChosen() {
  desk->open("107");
  inLists([&](QWidget& lists) {
    boxes->expect("Es wurde keine Liste ausgewäht!").titled("Hinweis").showing(BoxIcon::Exclamation);
    click(lists, "cmdOK");
    test::press(lists, "lstAuswahl", Qt::Key_Down);
    QCOMPARE(the<QListWidget>(lists, "lstAuswahl").currentRow(), 0);
  });
}

void TestDeskReports::theDayIsChosen() {
  pay("  107 | 1 | nein | 15 | 18.11.2026 09:00:00\n  107 | 5 | nein | 12,5 | 19.11.2026\n");
  desk->open("107");
  inLists([&](QWidget& lists) {
    boxes->expectWindow("frmTageswahl", [](QWidget& days) {
      auto& list = the<QListWidget>(days, "lstTage");
      QCOMPARE(list.count(), 2);
      QCOMPARE(list.item(0)->text(), "Donnerstag, 19.11.2026");
      QCOMPARE(list.selectionMode(), QAbstractItemView::SingleSelection);
      QCOMPARE(badManners(days), QStringList());
      list.setCurrentRow(1);
      click(days, "cmdOK");
    });
    expectPreview("Auswertung - Kassenjournal eines Tages", "vom 18.11.2026");
    show(lists, 0);
  });
}

void TestDeskReports::withoutAChoiceTheLastDayCounts() {
  pay("  107 | 1 | nein | 15 | 18.11.2026 09:00:00\n  107 | 5 | nein | 12,5 | 19.11.2026\n");
  desk->open("107");
  inLists([&](QWidget& lists) {
    boxes->expectWindow("frmTageswahl", [](QWidget& days) {
      QCOMPARE(the<QLabel>(days, "lblLetzter").text(), "Ohne Auswahl gilt der letzte Tag, 19.11.2026.");
      the<QListWidget>(days, "lstTage").setCurrentRow(1);
      click(days, "cmdCancel");
    });
    expectPreview("Auswertung - Kassenjournal eines Tages", "vom 19.11.2026");
    show(lists, 0);
  });
}

void TestDeskReports::withoutPaymentsThereIsNoDay() {
  desk->open("107");
  inLists([&](QWidget& lists) {
    boxes->expectWindow("frmTageswahl", [](QWidget& days) {
      QCOMPARE(the<QListWidget>(days, "lstTage").count(), 0);
      click(days, "cmdOK");
    });
    expectPreview("Auswertung - Kassenjournal eines Tages", "Kassenjournal aller Tage");
    show(lists, 0);
  });
}

void TestDeskReports::aDamagedReportIsNamed() {
  till->files.write(till->path("programm/spenden.rpt"), "Murks");
  desk->open("107");
  inLists([&](QWidget& lists) {
    boxes
        ->expect(
            "Fehler: 321 - spenden.rpt, Zeile 1: Den Abschnitt \"Murks\" gibt es nicht.\nFehler beim "
            "Auswerten der Kasse",
            BoxAnswer::Abort)
        .titled("Fehler");
    show(lists, 8);
  });
}

void TestDeskReports::aMissingCatalogueIsSaidOnce() {
  QVERIFY(QFile::remove(till->path("programm/AwListenKasse.mdb")));
  const QString failure = till->failureOfOpening(till->path("programm/AwListenKasse.mdb"));
  desk->open("107");
  boxes->expectWindow("frmKasseReports", [&](QWidget& lists) {
    boxes->expect(failure).titled("Fehler").with(BoxButtons::Ok);
    QTRY_VERIFY(boxes->done());
    QCOMPARE(the<QListWidget>(lists, "lstAuswahl").count(), 0);
    click(lists, "cmdCancel");
  });
  trigger(window(), "mnuDateiAuswertung");
}

void TestDeskReports::aDamagedTemplate() {
  spoil("ErgKasseDruck.mdb");
  const QString failure = till->failureOfOpening(till->path("programm/ErgKasseDruck.mdb"));
  desk->open("107");
  desk->article("200");
  desk->press("chkAutoDruck");
  boxes->expect(failure + "\nFehler beim Drucken der Kasseneingänge!", BoxAnswer::Abort);
  desk->press("cmdVerbuchen");
  QVERIFY(boxes->done());
  QCOMPARE(till->payments().size(), 1);  // once
}

void TestDeskReports::aDamagedCatalogue() {
  spoil("AwListenKasse.mdb");
  const QString failure = till->failureOfOpening(till->path("programm/AwListenKasse.mdb"));
  desk->open("107");
  boxes->expectWindow("frmKasseReports", [&](QWidget& lists) {
    boxes->expect(failure).titled("Fehler").with(BoxButtons::Ok);
    QTRY_VERIFY(boxes->done());
    click(lists, "cmdCancel");
  });
  trigger(window(), "mnuDateiAuswertung");
}

/// The folder for temporary files is full, and then gone: nothing comes out, nothing is lost.
void TestDeskReports::noRoomForTheReceipt() {
  desk->open("107");
  desk->article("200");
  till->files.fail(FileStep::Copy, "ZVA*", 61);
  till->files.fail(FileStep::Copy, "ZVK*", 61);
  const QString full = "Fehler: 61 - " + errorDescription(61);
  boxes->expect(full + "\nFehler beim Drucken der Kasseneingänge!", BoxAnswer::Abort);
  trigger(window(), "Drucken");
  QVERIFY(boxes->done());
  trigger(window(), "kladde");
  QCOMPARE(the<QStatusBar>(window(), "statusBar").currentMessage(),
           "Die Startkarte wurde nicht gedruckt: " + errorDescription(61));
  QVERIFY(direct->sheets.isEmpty());
  QCOMPARE(left(), QStringList());
  till->files.heal();
  const QString folder = qEnvironmentVariable("temp");
  qputenv("temp", (folder + "/weg").toUtf8());
  boxes->expect("Fehler: 76 - " + errorDescription(76) + "\nFehler beim Drucken der Kasseneingänge!",
                BoxAnswer::Abort);
  trigger(window(), "Drucken");
  qputenv("temp", folder.toUtf8());
  QCOMPARE(desk->purchase().size(), 1);
}

void TestDeskReports::severalDays() {
  frmTageswahl days({QDate(2026, 11, 20), QDate(2026, 11, 19), QDate(2026, 11, 18)});
  days.setBSingleSel(false);
  auto& list = the<QListWidget>(days, "lstTage");
  list.item(0)->setSelected(true);
  list.item(2)->setSelected(true);
  QVERIFY(days.GetTage().empty());
  days.accept();
  QCOMPARE(days.GetTage(), (std::vector<QDate>{QDate(2026, 11, 20), QDate(2026, 11, 18)}));
  QCOMPARE(days.GetLetzenTag(), std::optional(QDate(2026, 11, 20)));
}

void TestDeskReports::theSetup() {
  desk->open("107");
  boxes->expectWindow("frmKasseSetup", [](QWidget& setup) {
    QCOMPARE(setup.windowTitle(), "QK-Kasse Setup");
    const std::tuple<const char*, const char*, bool> choices[] = {
        {"chkAbfrage", "Sicherheitsabfrage bei Eingaben über die Symbolleiste", true},
        {"chkAufnahme", "Automatische Anzeige bei Neuaufnahme von Schützen aus der Gesamtdatenbank", false},
        {"chkWechsel", "Automatische Anzeige beim Wechsel von Schützen in der Ergebnisaufnahme", false},
        {"chkExport", "Kasseneingänge bei Gesamtauswertung (Kumulieren) mit exportieren", false},
        {"chkAbfrage0Euro", "Sicherheitsabfrage bei 0,- € Kasseneingängen", true}};
    for (const auto& [name, caption, preset] : choices) {
      auto& box = the<QCheckBox>(setup, name);
      QCOMPARE(box.text().remove('&'), caption);
      QCOMPARE(box.isChecked(), preset);
      click(setup, name);
    }
    QCOMPARE(badManners(setup), QStringList());
    click(setup, "cmdOK");
  });
  trigger(window(), "mnuOptKasseSetup");
  for (const auto& [key, value] :
       {std::pair("Abfrage", "0"), std::pair("NeuAufnahme", "1"), std::pair("AnzeigeWechsel", "1"),
        std::pair("ExportKumulieren", "1"), std::pair("Abfrage0Euro", "0")})
    QCOMPARE(till->settings.value("Tarvex-40", "Kasse", key), value);
}

void TestDeskReports::theSetupIsCancelled() {
  schreibe(till->settings, keys::ExportKumulieren, true);
  desk->open("107");
  boxes->expectWindow("frmKasseSetup", [](QWidget& setup) {
    QVERIFY(the<QCheckBox>(setup, "chkExport").isChecked());
    click(setup, "chkExport");
    click(setup, "cmdCancel");
  });
  trigger(window(), "mnuOptKasseSetup");
  QCOMPARE(till->settings.value("Tarvex-40", "Kasse", "ExportKumulieren"), "1");
}

QTEST_MAIN(TestDeskReports)
#include "test_desk_reports.moc"
