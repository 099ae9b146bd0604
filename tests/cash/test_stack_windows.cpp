// The windows of the stacks, opened from the desk: administration, editor, evaluation.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "app/ground/settings_keys.h"
#include "cash/frmScheibenAuswertung.h"
#include "cash/frmScheibenStapel.h"
#include "cash/frmScheibenVerwaltung.h"
#include "cash/target_stacks.h"
#include "platform/look/look.h"
#include "platform/runtime/error.h"
#include "tests/cash/desk_window.h"
#include "tests/support/manners.h"
#include "tests/support/real_boxes.h"

using namespace qk;
using namespace qk::test;

namespace {

const char* const kHeld = R"(
Zeilen Schuetzen_ScheibenNummern
  ID | Startnummer | Scheibennummer | Kaufdatum  | Speicherdatum | DisziKombiWahl | DisziKombiID | StapelID
  1  | 107         | 7              | 19.11.2026 | 19.11.2026    | 0              | 1            | 1
  2  | 108         | 8              | 20.11.2026 |               | 0              | 1            | 1
)";
const QString kGone = "Der Stapel ist nicht mehr da; ein anderer Arbeitsplatz hat ihn gelöscht.";

}  // namespace

class TestStackWindows : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    till = std::make_unique<Till>();
    till->fillStacks();
    reports = NotedReports();
    windows = std::make_unique<RealBoxes>();
    desk = std::make_unique<DeskWindow>(*till, reports);
    desk->open("107", false);
  }
  void cleanup() {
    desk.reset();
    windows.reset();
    till.reset();
  }

  void theDeskShowsItsStacks();
  void editingFromThePopup();
  void aNewOneFromThePopup();
  void theAdministration();
  void numbersInHandAreNotHandedOutAgain();
  void aStackEditedWithItsNumbersInHand();
  void aStackMadeWithNumbersInHandIsShown();
  void theFirstStack();
  void anEditorThatIsGivenUp();
  void doubtsAreAsked();
  void aFailedStore();
  void aStackDeletedMeanwhile();
  void theTwoSettings();
  void keysOfTheList();
  void theEvaluation();
  void theList();
  void nothingIssued();
  void manners();

 private:
  frmFinanz& window() { return desk->window(); }
  void inAdministration(std::function<void(QWidget&)> act) {
    windows->expectWindow("frmScheibenVerwaltung", onceActive([act = std::move(act)](QWidget& admin) {
                            act(admin);
                            click(admin, "cmdClose");
                          }));
    trigger(window(), "mnuOptScheiben");
  }
  void inEditor(std::function<void(QWidget&)> act) {
    windows->expectWindow("frmScheibenStapel", onceActive(std::move(act)));
  }
  void inEvaluation(std::function<void(QWidget&)> act) {
    windows->expectWindow("frmScheibenAuswertung", onceActive([act = std::move(act)](QWidget& form) {
                            act(form);
                            click(form, "cmdClose");
                          }));
    trigger(window(), "mnuScheibenAuswertung");
  }
  QStringList popup(int row, const QString& entry) { return desk->pickOfStack(row, entry); }

  std::unique_ptr<Till> till;
  NotedReports reports;
  std::unique_ptr<RealBoxes> windows;
  std::unique_ptr<DeskWindow> desk;
};

void TestStackWindows::theDeskShowsItsStacks() {
  auto& tabs = desk->on<QTabWidget>("SSTab1");
  QVERIFY(tabs.isTabVisible(1) && tabs.isTabVisible(3));
  QCOMPARE(column(window(), "grdScheiben", 1), (QStringList{"Frei", "Nur B", "Pokale", "Zehner"}));
}

void TestStackWindows::editingFromThePopup() {
  desk->show(1);
  inEditor([](QWidget& editor) {
    QCOMPARE(editor.windowTitle(), "Scheibenstapel: Zehner");
    QCOMPARE(the<QLineEdit>(editor, "txtAktuelleNummer").text(), "10");
    QCOMPARE(the<QComboBox>(editor, "cmbVorgabe").currentText(), "LG Meister");
    type(editor, "txtAktuelleNummer", "33");
    the<QComboBox>(editor, "cmbVorgabe").setCurrentIndex(3);
    QCOMPARE(the<QComboBox>(editor, "cmbVorgabe").currentText(), "Pokal  (Kombination)");
    click(editor, "cmdOK");
  });
  till->dialogs
      .expect("Die Nummern 1 bis 100 gehören auch zum Stapel »Weg«.\r\nTrotzdem speichern?", BoxAnswer::Yes)
      .presetting(BoxAnswer::No);
  popup(4, "mnuStapelBearbeiten");
  QVERIFY(windows->done());
  QCOMPARE(desk->on<TextGrid>("grdScheiben").table()->text(4, 3), "33");
  QCOMPARE(desk->on<TextGrid>("grdScheiben").table()->text(4, 4), "Pokal");
}

void TestStackWindows::aNewOneFromThePopup() {
  desk->show(1);
  inEditor([](QWidget& editor) {
    QCOMPARE(editor.windowTitle(), "Neuer Scheibenstapel");
    QVERIFY(the<QLineEdit>(editor, "txtBezeichnung").hasFocus());
    type(editor, "txtBezeichnung", "Neu");
    type(editor, "txtStartnummer", "901");
    type(editor, "txtEndnummer", "999");
    press(editor, "txtEndnummer", Qt::Key_Return);
    QVERIFY(!editor.isVisible());
  });
  QCOMPARE(popup(1, "mnuStapelNeu"), (QStringList{"Neu...", "Bearbeiten..."}));
  QCOMPARE(column(window(), "grdScheiben", 1), (QStringList{"Frei", "Nur B", "Pokale", "Zehner", "Neu"}));
  QCOMPARE(till->read("Select * from ScheibenNummern where Bezeichnung = 'Neu'",
                      {"Startnummer", "AktuelleNummer", "PCAnzeige", "Sortierung", "VorgabeID"}),
           QStringList("901|901||6|0"));
}

void TestStackWindows::theAdministration() {
  till->execute("UPDATE ScheibenNummern SET PCAnzeige = Null WHERE ID = 4");
  inAdministration([this](QWidget& admin) {
    auto& grid = the<TextGrid>(admin, "grdStapel");
    QVERIFY(grid.hasFocus());
    QCOMPARE(column(admin, "grdStapel", 0), (QStringList{"Frei", "Nur B", "Pokale", "Zehner", "Weg"}));
    QCOMPARE(column(admin, "grdStapel", StackListColumn::Kasse),
             (QStringList{"nein, nie gespeichert", "ja", "ja", "ja", "nein, ausgeschaltet"}));
    QCOMPARE(grid.currentRow(), 1);
    QVERIFY(!the<QPushButton>(admin, "cmdHoch").isEnabled());
    inEditor([](QWidget& editor) { click(editor, "cmdOK"); });  // an empty text is written for Null
    till->dialogs.expect("Die Nummern 301 bis 400 gehören auch zum Stapel »Weg«.\r\nTrotzdem speichern?",
                         BoxAnswer::Yes);
    click(admin, "cmdBearbeiten");
    QCOMPARE(column(admin, "grdStapel", StackListColumn::Kasse).first(), "ja");
    click(admin, "cmdRunter");
    QCOMPARE(grid.currentRow(), 2);
    QCOMPARE(column(admin, "grdStapel", 0), (QStringList{"Nur B", "Frei", "Pokale", "Zehner", "Weg"}));
    click(admin, "cmdHoch");
    grid.setCurrentRow(5);
    QVERIFY(!the<QPushButton>(admin, "cmdRunter").isEnabled());
    till->dialogs.expect("Soll der Stapel: Weg wirklich gelöscht werden?", BoxAnswer::Yes);
    click(admin, "cmdLoeschen");
    QCOMPARE(grid.currentRow(), 4);
  });
  QVERIFY(till->dialogs.done() && windows->done());
  QCOMPARE(column(window(), "grdScheiben", 1), (QStringList{"Frei", "Nur B", "Pokale", "Zehner"}));
}

/// The list alone counts what is in hand: who looks at the administration meanwhile doesn't set it back.
void TestStackWindows::numbersInHandAreNotHandedOutAgain() {
  desk->show(1);
  desk->on<TextGrid>("grdScheiben").setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  QCOMPARE(column(window(), "grdScheiben", 3).last(), "11");
  inAdministration([](QWidget&) {});
  QCOMPARE(column(window(), "grdScheiben", 3).last(), "11");
}

/// The list counts what is in hand: to hand it out again isn't what editing the stack's name means.
void TestStackWindows::aStackEditedWithItsNumbersInHand() {
  till->execute("DELETE * FROM ScheibenNummern WHERE ID = 5");
  desk->show(1);
  desk->on<TextGrid>("grdScheiben").setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  desk->press("cmdScheibeAdd");
  const auto change = [this](const QString& field, const QString& text) {
    inEditor([field, text](QWidget& editor) {
      type(editor, field, text);
      click(editor, "cmdOK");
    });
    popup(4, "mnuStapelBearbeiten");
    QVERIFY(windows->done());
  };
  change("txtBezeichnung", "Zehnter");
  QCOMPARE(column(window(), "grdScheiben", 1).last(), "Zehnter");
  QCOMPARE(column(window(), "grdScheiben", 3).last(), "12");
  change("txtAktuelleNummer", "33");
  QCOMPARE(column(window(), "grdScheiben", 3).last(), "33");
  desk->press("cmdVerbuchen");
  QCOMPARE(till->read("Select * from Schuetzen_ScheibenNummern order by ID", {"Scheibennummer"}),
           (QStringList{"10", "11"}));
  QCOMPARE(till->read("Select * from ScheibenNummern where ID = 1", {"AktuelleNummer"}), QStringList("33"));
  change("txtAktuelleNummer", "5");  // with nothing in hand the operator's word holds
  QCOMPARE(column(window(), "grdScheiben", 3).last(), "5");
}

void TestStackWindows::aStackMadeWithNumbersInHandIsShown() {
  desk->show(1);
  desk->on<TextGrid>("grdScheiben").setCurrentRow(4);
  desk->press("cmdScheibeAdd");
  inAdministration([this](QWidget& admin) {
    inEditor([](QWidget& editor) {
      type(editor, "txtBezeichnung", "Neu");
      type(editor, "txtStartnummer", "901");
      type(editor, "txtEndnummer", "999");
      click(editor, "cmdOK");
    });
    click(admin, "cmdNeu");
  });
  QCOMPARE(column(window(), "grdScheiben", 1).last(), "Neu");
  QCOMPARE(column(window(), "grdScheiben", 3).at(3), "11");
}

void TestStackWindows::theFirstStack() {
  till->execute("DELETE * FROM ScheibenNummern");
  inAdministration([this](QWidget& admin) {
    QCOMPARE(the<TextGrid>(admin, "grdStapel").emptyText(), "Noch kein Stapel angelegt: Neu...");
    for (const char* name : {"cmdBearbeiten", "cmdLoeschen", "cmdHoch", "cmdRunter"})
      QVERIFY(!the<QPushButton>(admin, name).isEnabled());
    inEditor([](QWidget& editor) {
      type(editor, "txtBezeichnung", "Erster");
      type(editor, "txtStartnummer", "1");
      type(editor, "txtEndnummer", "100");
      click(editor, "cmdOK");
    });
    click(admin, "cmdNeu");
    QVERIFY(the<QPushButton>(admin, "cmdBearbeiten").isEnabled());
  });
  QVERIFY(desk->on<QTabWidget>("SSTab1").isTabVisible(1));
}

void TestStackWindows::anEditorThatIsGivenUp() {
  inAdministration([this](QWidget& admin) {
    inEditor([this](QWidget& editor) {
      type(editor, "txtBezeichnung", " ");
      till->dialogs.expect("Bitte geben Sie eine Bezeichnung ein.").showing(BoxIcon::Exclamation);
      click(editor, "cmdOK");
      QVERIFY(editor.isVisible());
      const QString ask = "Die Änderungen am Scheibenstapel sind nicht gespeichert.\r\nVerwerfen?";
      till->dialogs.expect(ask, BoxAnswer::No).presetting(BoxAnswer::No);
      click(editor, "cmdCancel");
      QVERIFY(editor.isVisible());
      till->dialogs.expect(ask, BoxAnswer::Yes);
      QTest::keyClick(&editor, Qt::Key_Escape);
      QVERIFY(!editor.isVisible());
    });
    click(admin, "cmdBearbeiten");
    inEditor([](QWidget& editor) { click(editor, "cmdCancel"); });  // nothing typed, nothing asked
    click(admin, "cmdBearbeiten");
  });
  QCOMPARE(till->read("Select * from ScheibenNummern where ID = 4", {"Bezeichnung"}), QStringList("Frei"));
}

void TestStackWindows::doubtsAreAsked() {
  inAdministration([this](QWidget& admin) {
    inEditor([this](QWidget& editor) {
      type(editor, "txtAktuelleNummer", "900");
      till->dialogs.expect(
          "Die nächste Nummer 900 liegt nicht zwischen 301 und 400.\r\nDie Nummern 301 bis 400 gehören auch "
          "zum "
          "Stapel »Weg«.\r\nTrotzdem speichern?",
          BoxAnswer::No);
      click(editor, "cmdOK");
      QVERIFY(editor.isVisible());
      type(editor, "txtAktuelleNummer", "310");
      click(editor, "cmdCancel");
    });
    click(admin, "cmdBearbeiten");
  });
}

void TestStackWindows::aFailedStore() {
  refuseChanges(till->competition(), "ScheibenNummern", 4);
  till->execute("UPDATE ScheibenNummern SET Startnummer = 1000, Endnummer = 1100 WHERE ID = 5");
  inAdministration([this](QWidget& admin) {
    inEditor([this](QWidget& editor) {
      type(editor, "txtBezeichnung", "Anders");
      QString failure;
      try {
        till->execute("UPDATE ScheibenNummern SET Bezeichnung = 'x' WHERE ID = 4");
      } catch (const Error& error) {
        failure = "Fehler: " + QString::number(error.number()) + " - " + error.description();
      }
      failure += "\nFehler beim Speichern des Scheibenstapels!";
      till->dialogs.expect(failure, BoxAnswer::Retry).with(BoxButtons::AbortRetryIgnore);
      till->dialogs.expect(failure, BoxAnswer::Ignore);
      click(editor, "cmdOK");
      QVERIFY(editor.isVisible());  // nothing typed is lost
      QCOMPARE(the<QLineEdit>(editor, "txtBezeichnung").text(), "Anders");
      till->dialogs.expect(failure, BoxAnswer::Abort);
      click(editor, "cmdOK");
      QVERIFY(editor.isVisible());
      type(editor, "txtBezeichnung", "Frei");
      click(editor, "cmdCancel");
    });
    click(admin, "cmdBearbeiten");
  });
}

void TestStackWindows::aStackDeletedMeanwhile() {
  inAdministration([this](QWidget& admin) {
    till->execute("DELETE * FROM ScheibenNummern WHERE ID = 4");
    till->dialogs.expect("Fehler: 3167 - " + kGone);
    click(admin, "cmdBearbeiten");
  });
}

void TestStackWindows::theTwoSettings() {
  inAdministration([](QWidget& admin) {
    type(admin, "txtKennung", "C");
    press(admin, "txtKennung", Qt::Key_Tab);
    QCOMPARE(column(admin, "grdStapel", StackListColumn::Kasse).at(1), "nein, anderer Arbeitsplatz");
    click(admin, "chkSortiert");
  });
  QCOMPARE(till->settings.value("Tarvex-40", "Daten", "LokalePCKennung"), "C");
  QCOMPARE(till->settings.value("Tarvex-40", "Daten", "SortedScheibenNummern"), "1");
  QCOMPARE(column(window(), "grdScheiben", 1), (QStringList{"Frei", "Pokale", "Zehner"}));
  inAdministration([](QWidget& admin) {
    QCOMPARE(the<QLineEdit>(admin, "txtKennung").text(), "C");
    QVERIFY(the<QCheckBox>(admin, "chkSortiert").isChecked());
  });
}

void TestStackWindows::keysOfTheList() {
  inAdministration([this](QWidget& admin) {
    const auto active = [&] {
      admin.activateWindow();  // without a window manager nobody else does it
      return QApplication::activeWindow() == &admin;
    };
    inEditor([](QWidget& editor) { click(editor, "cmdCancel"); });
    press(admin, "grdStapel", Qt::Key_Return);
    QTRY_VERIFY(active());
    inEditor([](QWidget& editor) {
      QCOMPARE(editor.windowTitle(), "Neuer Scheibenstapel");
      click(editor, "cmdCancel");
    });
    press(admin, "grdStapel", Qt::Key_Insert);
    QTRY_VERIFY(active());
    till->dialogs.expect("Soll der Stapel: Frei wirklich gelöscht werden?", BoxAnswer::No);
    press(admin, "grdStapel", Qt::Key_Delete);
    QVERIFY(till->dialogs.done() && windows->done());
  });
}

void TestStackWindows::theEvaluation() {
  till->fill(kHeld);
  inEvaluation([](QWidget& form) {
    QCOMPARE(column(form, "grdAuswertung", 0), QStringList("Zehner"));
    QCOMPARE(the<QLabel>(form, "lblSumme").text(), "Summe: 2 ausgegeben, 1 abgegeben, 1 noch draußen");
    auto& by = the<QComboBox>(form, "cmbGruppe");
    by.setCurrentIndex(2);
    Q_EMIT by.activated(2);
    QCOMPARE(column(form, "grdAuswertung", 0), (QStringList{"107  Müller Jörg", "108  Süß Benno"}));
    QCOMPARE(the<TextGrid>(form, "grdAuswertung").table()->text(0, 0), "Schütze");
    auto& day = the<QComboBox>(form, "cmbTag");
    QCOMPARE(day.count(), 3);
    day.setCurrentIndex(2);
    Q_EMIT day.activated(2);
    QCOMPARE(column(form, "grdAuswertung", 0), QStringList("107  Müller Jörg"));
    click(form, "cmdAktualisieren");
    QCOMPARE(day.currentText(), "19.11.2026");
    QCOMPARE(the<QLabel>(form, "lblSumme").text(), "Summe: 1 ausgegeben, 1 abgegeben, 0 noch draußen");
  });
}

void TestStackWindows::theList() {
  inEvaluation([this](QWidget& form) {
    click(form, "cmdListe");
    QCOMPARE(reports.orders.size(), size_t(1));
    QVERIFY(reports.orders[0].reportFile.endsWith("scheiben.rpt"));
    QCOMPARE(reports.orders[0].dataFile, till->competition());
    QCOMPARE(reports.orders[0].ziel, ReportOrder::Ziel::Fenster);
    reports.error = 53;
    till->dialogs.expect("Fehler: 53 - " + errorDescription(53) + "\nFehler bei der Liste der Scheiben!",
                         BoxAnswer::Abort);
    click(form, "cmdListe");
  });
}

void TestStackWindows::nothingIssued() {
  inEvaluation([](QWidget& form) {
    QCOMPARE(the<TextGrid>(form, "grdAuswertung").emptyText(), "Keine Scheiben ausgegeben.");
    QCOMPARE(the<QLabel>(form, "lblSumme").text(), "Summe: 0 ausgegeben, 0 abgegeben, 0 noch draußen");
  });
}

void TestStackWindows::manners() {
  inAdministration([this](QWidget& admin) {
    QCOMPARE(badManners(admin), QStringList());
    inEditor([](QWidget& editor) {
      QCOMPARE(badManners(editor), QStringList());
      click(editor, "cmdCancel");
    });
    click(admin, "cmdNeu");
  });
  inEvaluation([](QWidget& form) { QCOMPARE(badManners(form), QStringList()); });
}

QTEST_MAIN(TestStackWindows)
#include "test_stack_windows.moc"
