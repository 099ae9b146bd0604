// The sheet of the current line's shooter, from the entries, buttons and keys of the real window.
#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QStatusBar>
#include <QTest>
#include <QTimer>

#include "app/shell/waiting_window.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kRefused = " geht erst, wenn das Blatt gedruckt oder seine Vorschau geschlossen ist.";

}  // namespace

class TestQuickSheet : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();

  void nobodyAtTheLine_data();
  void nobodyAtTheLine();
  void thePreview_data();
  void thePreview();
  void theCompetitionChooses();
  void thePreviewOpensInItsPlace();
  void thePrinter_data();
  void thePrinter();
  void whatIsRefusedMeanwhile();
  void yieldsRefuseToo();
  void theCompetitionCannotBeRead();
  void withoutACompetition();
  void aMissingReport();
  void theLineInSightCounts();
  void aHeldKeyAsksOnce();
  void longWorkIsShown();

 private:
  QStringList left() { return QDir(qEnvironmentVariable("temp")).entryList(QDir::Files); }
  void run(const QString& statement) { office->database()->execute(statement); }
  void open(const QString& lines = "1") {
    office.reset();  // what it sets outside is put back first
    office = std::make_unique<RangeOffice>(lines);
    office->place.random.give({0.1, 0.2, 0.3, 0.4});
    const QString system = office->place.path("programm/System/");
    for (const char* name : {"ergschdruck.mdb", "kurzauswertung.rpt", "schnell.rpt"})
      QVERIFY(QFile::copy(QString(QK_PROGRAM_FOLDER "System/") + name, system + name));
    run("INSERT INTO SchussSerien (Startnummer, DisziID, Ergebnis, WTyp) SELECT TOP 1 '107', ID, 97, 'LG' "
        "FROM "
        "Disziplin");
    QVERIFY(office->open());
  }
  /// What an evaluation that runs refuses.
  void expectRefusals() {
    for (const char* act : {"Eine weitere", "Ein anderer Wettkampf", "Das Schließen"})
      office->boxes.expect(QString("Die Kurzauswertung läuft noch. ") + act + kRefused);
  }
  void tryEverythingElse() {
    office->action("mnuDateiKurzauswertungPreview").trigger();
    office->action("mnuDateiWettkampfOpen").trigger();
    QVERIFY(!office->window().close());
  }
  /// A preview in which the text is found; `meanwhile` before it is closed.
  void expectPreview(const QString& text, const std::function<void(QWidget&)>& meanwhile = {}) {
    office->boxes.expectWindow("ReportPreview", [text, meanwhile](QWidget& shown) {
      QCOMPARE(shown.windowTitle(), "Kurzauswertung");
      QTRY_VERIFY(!the<QLabel>(shown, "lblSeiten").text().contains("…"));
      the<QLineEdit>(shown, "txtSuche").setText(text);
      QVERIFY2(!the<QLabel>(shown, "lblStand").text().contains("nirgends"), qPrintable(text));
      if (meanwhile) meanwhile(shown);
      click(shown, "cmdSchliessen");
    });
  }
  void ask(const QString& entry) { trigger(office->window(), entry); }

  std::unique_ptr<RangeOffice> office;
};

void TestQuickSheet::init() {
  open();
}

void TestQuickSheet::cleanup() {
  QCOMPARE(left(), QStringList());
  QVERIFY(!QApplication::overrideCursor());
  QVERIFY(office->boxes.done());
  office.reset();
}

void TestQuickSheet::nobodyAtTheLine_data() {
  QTest::addColumn<QString>("entry");
  for (const char* entry :
       {"mnuDateiKurzauswertungPreview", "mnuDateiKurzauswertungPrint", "vorschau", "Print1"})
    QTest::newRow(entry) << entry;
}

void TestQuickSheet::nobodyAtTheLine() {
  QFETCH(const QString, entry);
  office->boxes.expect("Bitte wählen Sie einen Schützen an der aktuellen Linie!").titled("Hinweis");
  ask(entry);
}

void TestQuickSheet::thePreview_data() {
  QTest::addColumn<QString>("way");
  QTest::newRow("entry") << "mnuDateiKurzauswertungPreview";
  QTest::newRow("button") << "vorschau";
  QTest::newRow("key") << "";
}

void TestQuickSheet::thePreview() {
  QFETCH(const QString, way);
  office->chooseShooter(1, "107");
  expectPreview("97");
  if (way.isEmpty()) {
    office->activate();
    QTest::keyClick(&office->window(), Qt::Key_F9, Qt::ShiftModifier);
  } else {
    ask(way);
  }
}

void TestQuickSheet::theCompetitionChooses() {
  office->chooseShooter(1, "107");
  run("UPDATE Wettkampf SET KurzauswertungDiszi = True");
  run("Delete * from AuswertProfil");
  office->boxes.expect(
      "Es wurden noch keine Wettkämpfe/Setups im aktuellen Wettkampf gespeichert oder konfiguriert.\r\n"
      "Bitte prüfen Sie Ihre Einstellungen.");
  ask("vorschau");
  run("INSERT INTO AuswertProfil (ID, Name, Typ, Anzahl, nShowKurzAuswertung) VALUES (1, 'Nachtpokal', 0, 1, "
      "1)");
  run("INSERT INTO AwProfilDiszi (AwProfilID, DisziID) SELECT 1, ID FROM Disziplin");
  run("UPDATE Disziplin SET Teiler = False");
  expectPreview("Nachtpokal");
  ask("vorschau");
  run("UPDATE Wettkampf SET KurzauswertungDiszi = False");
  expectPreview("Serien");
  ask("vorschau");
}

void TestQuickSheet::thePreviewOpensInItsPlace() {
  office->chooseShooter(1, "107");
  schreibe(office->place.settings, keys::AnzeigeScreen, false);
  office->place.settings.setValue("Tarvex-40", "Anzeige", "Main_Width", "10500");
  office->place.settings.setValue("Tarvex-40", "Anzeige", "Main_Height", "7500");
  expectPreview("97", [](QWidget& shown) {
    QCOMPARE(shown.size(), QSize(10500 * shown.logicalDpiX() / 1440, 7500 * shown.logicalDpiY() / 1440));
  });
  ask("vorschau");
}

void TestQuickSheet::thePrinter_data() {
  QTest::addColumn<QString>("way");
  QTest::newRow("entry") << "mnuDateiKurzauswertungPrint";
  QTest::newRow("button") << "Print1";
  QTest::newRow("key") << "";
}

/// There is none: the door to paper says so, and no window has opened.
void TestQuickSheet::thePrinter() {
  QFETCH(const QString, way);
  office->place.messages.expect("QPainter::begin");
  office->chooseShooter(1, "107");
  office->boxes.expect(
      "Fehler: 482 - " + errorDescription(482) + "\nEs ist ein Fehler beim Drucken aufgetreten!",
      BoxAnswer::Abort);
  if (way.isEmpty()) {
    office->activate();
    QTest::keyClick(&office->window(), Qt::Key_P, Qt::ControlModifier);
  } else {
    ask(way);
  }
}

void TestQuickSheet::whatIsRefusedMeanwhile() {
  office->chooseShooter(1, "107");
  expectPreview("97", [this](QWidget&) {
    expectRefusals();
    tryEverythingElse();
    QVERIFY(office->boxes.done());
  });
  ask("vorschau");
  expectPreview("97");  // nothing of it stays
  ask("vorschau");
  QVERIFY(office->window().close());
}

/// While a filter lets events run, and nothing stands over the window.
void TestQuickSheet::yieldsRefuseToo() {
  office->chooseShooter(1, "107");
  run("UPDATE Wettkampf SET KurzauswertungDiszi = True");
  run("Delete * from AuswertProfil");
  run("INSERT INTO AuswertProfil (ID, Name, Typ, nShowKurzAuswertung, OptKlassen) VALUES (1, 'Nachtpokal', "
      "1, 1, "
      "1)");
  run("INSERT INTO AwProfilDiszi (AwProfilID, DisziID) SELECT 1, ID FROM Disziplin");
  run("UPDATE Disziplin SET Teiler = False");
  run("INSERT INTO Auswert_Klassen (AuswertID, KlassenID) VALUES (1, 4711)");
  bool asked = false;
  expectRefusals();
  QTimer::singleShot(0, this, [&] {
    asked = true;
    QVERIFY(QGuiApplication::overrideCursor());
    QCOMPARE(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    tryEverythingElse();
  });
  expectPreview("Müller");
  ask("vorschau");
  QVERIFY(asked);
}

void TestQuickSheet::theCompetitionCannotBeRead() {
  office->chooseShooter(1, "107");
  const dao::TableDef definition = office->database()->tableDef("Wettkampf");
  office->database()->dropTable("Wettkampf");
  QString failure;
  try {
    office->database()->openRecordset("Wettkampf");
  } catch (const Error& error) {
    failure = QString("Fehler: %1 - %2").arg(error.number()).arg(error.description());
  }
  office->boxes.expect(failure + "\nFehler bei Kurzauswertung_err!", BoxAnswer::Abort).titled("Fehler");
  ask("vorschau");
  office->boxes.expect(failure + "\nFehler bei Kurzauswertung_err!", BoxAnswer::Retry).during([&] {
    office->database()->createTable(definition);
  });
  expectPreview("97");
  ask("vorschau");
}

void TestQuickSheet::withoutACompetition() {
  office->chooseShooter(1, "107");
  const auto open = std::move(office->global().Datenbank);
  office->boxes.expect("Bitte öffnen Sie einen Wettkampf.");
  ask("vorschau");
}

void TestQuickSheet::aMissingReport() {
  office->chooseShooter(1, "107");
  const QString report = office->place.path("programm/System/schnell.rpt");
  QVERIFY(QFile::rename(report, report + ".weg"));
  office->boxes
      .expect(
          "Fehler: 53 - schnell.rpt: Die Berichtsdatei fehlt.\nEs ist ein Fehler beim Drucken aufgetreten!",
          BoxAnswer::Retry)
      .during([&] { QVERIFY(QFile::rename(report + ".weg", report)); });
  expectPreview("97");
  ask("vorschau");
}

void TestQuickSheet::theLineInSightCounts() {
  open("11");
  office->chooseShooter(1, "107");
  office->show(2);
  office->boxes.expect("Bitte wählen Sie einen Schützen an der aktuellen Linie!");
  ask("vorschau");
  office->show(1);
  expectPreview("97");
  ask("vorschau");
}

void TestQuickSheet::aHeldKeyAsksOnce() {
  for (const char* entry : {"mnuDateiKurzauswertungPreview", "mnuDateiKurzauswertungPrint"})
    QVERIFY(!office->action(entry).autoRepeat());
}

void TestQuickSheet::longWorkIsShown() {
  QStatusBar& bar = *office->window().statusBar();
  QStringList shown;
  connect(&bar, &QStatusBar::messageChanged, this, [&](const QString& text) { shown << text; });
  const auto work = std::make_unique<dao::Work>();
  const dao::WorkSign sign = showWorkIn(bar, "Die Ergebnisse werden abgeglichen");
  work->done(0.5);
  QCOMPARE(shown, QStringList());  // no flicker for what is done in a moment
  QElapsedTimer time;
  for (time.start(); shown.isEmpty() && time.elapsed() < 60000;) work->done(0.5);
  QCOMPARE(shown, QStringList{"Die Ergebnisse werden abgeglichen: 50 %"});
}

QTEST_MAIN(TestQuickSheet)
#include "test_quick_sheet.moc"
