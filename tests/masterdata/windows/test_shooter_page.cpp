// The page of the shooters on its real widgets: typed at the counter without a mouse.
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QCompleter>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTest>
#include <memory>

#include "masterdata/pages/page.h"
#include "masterdata/rows/renumber.h"
#include "masterdata/windows/shooter_form.h"
#include "masterdata/windows/shooter_page.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/look/look.h"
#include "tests/masterdata/counter/counter_bench.h"
#include "tests/support/drive.h"
#include "tests/support/manners.h"

using namespace qk;
using namespace qk::test;

namespace {

/// As at the keyboard: to whatever has the focus, and counted.
class Keyboard {
 public:
  void type(const QString& text) {
    for (const QChar c : text) press(0, QString(c));
  }
  void press(int key, const QString& text = {}) {
    ++keys_;
    QWidget* target =
        QApplication::activePopupWidget() ? QApplication::activePopupWidget() : QApplication::focusWidget();
    QVERIFY(target);
    if (text.isEmpty()) return QTest::keyClick(target, static_cast<Qt::Key>(key));
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QApplication::sendEvent(target, &down);
    QApplication::sendEvent(target, &up);
  }
  int keys() const { return keys_; }

 private:
  int keys_ = 0;
};

}  // namespace

class TestShooterPage : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { look::apply(*qApp, look::Scheme::Light); }
  void init() {
    bench = std::make_unique<CounterBench>();
    page = std::make_unique<ShooterPage>(bench->place.workplace());
    page->open(*bench->database);
    page->resize(1100, 640);
    page->show();
    QVERIFY(QTest::qWaitForWindowActive(page.get()));
    rows().waitForAll();
  }
  void cleanup() {
    page.reset();
    bench.reset();
  }

  void aShooterWithoutTheMouse();
  void theNextOneHasTheNextNumber();
  void aBirthDateIsShownAsItIsStored();
  void theClassFollowsWhileTyping();
  void aClassByHandStays();
  void aStoredClassStaysUntilSomethingChanges();
  void aClassThatIsGoneStays();
  void anUnknownClubIsOneQuestion();
  void whatTheOtherCounterStoredShows();
  void noShowsWhatTheOtherCounterStored();
  void aClubThatIsGoneIsToldAndWhatIsTypedStays();
  void theClassByCorrectedLimitsIsSaid();
  void nothingIsCompletedThatWasNotChosen();
  void aNamesakeStandsBeside();
  void walkingTheListShowsEach();
  void whatIsNotStoredIsAskedAbout();
  void dropTakesBack();
  void anotherClubAsksAboutResults();
  void aNumberIsOnlyChangedByItsAct();
  void filterAndOrder();
  void deletingFromTheList();
  void everyColumnThatIsReadIsEntered();
  void anEmptyCompetition();
  void manners();

 private:
  BoundRows& rows() { return *the<BoundGrid>(*page, "gridSchuetzen").rows(); }
  QLineEdit& field(const char* name) { return the<QLineEdit>(*page, name); }
  QComboBox& box(const char* name) { return the<QComboBox>(*page, name); }
  QString hint() { return the<QLabel>(*page, "lblHinweis").text(); }
  void goTo(const QString& number) {
    BoundGrid& grid = the<BoundGrid>(*page, "gridSchuetzen");
    grid.setFocus();
    for (int row = 0; row < rows().count(); ++row)
      if (rows().value(row, "Start").toString() == number) grid.setCurrentRow(row);
  }
  void show(const QString& number) {
    goTo(number);
    QTRY_COMPARE(field("txtStartnummer").text(), number);
  }
  QString stored(const QString& number, const QString& columns) {
    return bench->row("SELECT " + columns + " FROM Schützen WHERE Startnummer = '" + number + "'");
  }

  std::unique_ptr<CounterBench> bench;
  std::unique_ptr<ShooterPage> page;
};

void TestShooterPage::aShooterWithoutTheMouse() {
  const QString number = field("txtStartnummer").text();
  QCOMPARE(number, bench->counter->nextStartNumber());
  QVERIFY(field("txtNachname").hasFocus());
  QSignalSpy done(page.get(), &ShooterPage::done);
  Keyboard keyboard;
  keyboard.type("Huber");
  keyboard.press(Qt::Key_Tab);
  keyboard.type("Anna");
  keyboard.press(Qt::Key_Tab);
  keyboard.type("010280");
  keyboard.press(Qt::Key_Tab);
  keyboard.type("w");
  keyboard.press(Qt::Key_Tab);
  keyboard.type("grün");
  keyboard.press(Qt::Key_Down);
  keyboard.press(Qt::Key_Return);
  keyboard.press(Qt::Key_F9);
  QCOMPARE(done.size(), 1);
  QCOMPARE(done[0][0].toString(), "Gespeichert: " + number + "  Huber Anna");
  // Somebody who types three a second is through in less than ten seconds.
  QVERIFY2(keyboard.keys() <= 28, qPrintable(QString::number(keyboard.keys())));
  QCOMPARE(stored(number, "Name, Vorname, Gebdat, Geschlecht, VereinsID, KlassenID, bGebKlasseManuell"),
           "Huber Anna|Anna|01.02.1980|W|1|10|0");
}

void TestShooterPage::theNextOneHasTheNextNumber() {
  const int number = field("txtStartnummer").text().toInt();
  type(*page, "txtNachname", "Huber");
  press(*page, "txtNachname", Qt::Key_F9);
  QCOMPARE(field("txtStartnummer").text(), QString::number(number + 1));
  QCOMPARE(field("txtNachname").text(), "");
  QVERIFY(field("txtNachname").hasFocus());
  QCOMPARE(stored(QString::number(number), "Name, Gebdat, KlassenID"), "Huber|00.00.0000|0");
  // F9 without anything typed stores nobody.
  press(*page, "txtNachname", Qt::Key_F9);
  QCOMPARE(field("txtStartnummer").text(), QString::number(number + 1));
}

void TestShooterPage::aBirthDateIsShownAsItIsStored() {
  type(*page, "txtGeburtsdatum", "1.2.80");
  press(*page, "txtGeburtsdatum", Qt::Key_Return);
  QCOMPARE(field("txtGeburtsdatum").text(), "01.02.1980");
  type(*page, "txtGeburtsdatum", "31.2.80");
  press(*page, "txtGeburtsdatum", Qt::Key_Return);
  QCOMPARE(field("txtGeburtsdatum").text(), "31.2.80");  // what was typed stays, to be mended
  QCOMPARE(hint(), "»31.2.80« ist kein Geburtsdatum (TT.MM.JJJJ).");
  type(*page, "txtNachname", "Huber");
  bench->place.dialogs.expect(
      "Das Geburtsdatum stimmt nicht.\n»31.2.80« ist kein Geburtsdatum (TT.MM.JJJJ).");
  press(*page, "txtNachname", Qt::Key_F9);
  QVERIFY(field("txtGeburtsdatum").hasFocus());
}

void TestShooterPage::theClassFollowsWhileTyping() {
  QVERIFY(!box("cboKlasse").isEnabled());
  QCOMPARE(box("cboKlasse").currentText(), "keine");
  type(*page, "txtGeburtsdatum", "01021980");
  QCOMPARE(hint(), "Keine Klasse nimmt Jahrgang 1980, ohne Geschlecht.");
  box("cboGeschlecht").setCurrentIndex(1);
  QCOMPARE(box("cboKlasse").currentText(), "Herren II (H2)");
  QCOMPARE(hint(), "");
  box("cboGeschlecht").setCurrentIndex(2);
  QCOMPARE(box("cboKlasse").currentText(), "Damen II (D2)");
  type(*page, "txtGeburtsdatum", "01.02.2012");
  QCOMPARE(box("cboKlasse").currentText(), "Schüler weiblich (SchW)");
}

void TestShooterPage::aClassByHandStays() {
  const QString number = field("txtStartnummer").text();
  type(*page, "txtNachname", "Huber");
  the<QCheckBox>(*page, "chkKlasseManuell").setChecked(true);
  QVERIFY(box("cboKlasse").isEnabled());
  box("cboKlasse").setCurrentText("Herren I (H1)");
  type(*page, "txtGeburtsdatum", "01.02.2012");
  QCOMPARE(box("cboKlasse").currentText(), "Herren I (H1)");
  QVERIFY(page->save());
  QCOMPARE(stored(number, "KlassenID, bGebKlasseManuell"), "7|-1");
  QCOMPARE(box("cboKlasse").currentText(), "Herren I (H1)");
  the<QCheckBox>(*page, "chkKlasseManuell").setChecked(false);
  QCOMPARE(box("cboKlasse").currentText(), "keine");  // without a sex no class takes him
}

void TestShooterPage::aStoredClassStaysUntilSomethingChanges() {
  bench->database->execute("UPDATE Schützen SET KlassenID = 3 WHERE Startnummer = '109'");
  show("109");
  QCOMPARE(box("cboKlasse").currentText(), "Jugend männlich (JugM)");
  QCOMPARE(hint(), "Nach Geburtsdatum und Geschlecht: Damen III.");
  QVERIFY(!page->isEdited());
  type(*page, "txtAusweisNr", "1");
  QVERIFY(page->save());
  QCOMPARE(stored("109", "KlassenID, AusweisNr"), "3|1");
  type(*page, "txtGeburtsdatum", "09.11.1972");
  QCOMPARE(box("cboKlasse").currentText(), "Damen III (D3)");
}

void TestShooterPage::aClassThatIsGoneStays() {
  bench->database->execute("UPDATE Schützen SET KlassenID = 99 WHERE Startnummer IN ('101', '109')");
  for (const char* number : {"101", "109"}) {
    show(number);
    QCOMPARE(box("cboKlasse").currentText(), "unbekannt (Nr. 99)");
    QVERIFY(!page->isEdited());
    type(*page, "txtAusweisNr", "1");
    QVERIFY(page->save());
    QCOMPARE(stored(number, "KlassenID, AusweisNr"), "99|1");
  }
}

void TestShooterPage::anUnknownClubIsOneQuestion() {
  type(*page, "txtNachname", "Huber");
  type(*page, "txtVerein", "SV Neuland");
  bench->place.dialogs.expect("Den Verein »SV Neuland« gibt es noch nicht.\nSoll er angelegt werden?",
                              BoxAnswer::Yes);
  press(*page, "txtVerein", Qt::Key_F9);
  QCOMPARE(bench->count("Verein", "Name = 'SV Neuland'"), 1);
  // From now on it is suggested and known.
  type(*page, "txtNachname", "Maier");
  type(*page, "txtVerein", "sv neuland");
  press(*page, "txtVerein", Qt::Key_F9);
  QCOMPARE(bench->count("Verein", "Name = 'SV Neuland'"), 1);
}

void TestShooterPage::whatTheOtherCounterStoredShows() {
  show("107");
  the<QTabWidget>(*page, "tabsSchuetze").setCurrentIndex(1);
  type(*page, "txtOrt", "Grünau");
  const auto other = dao::Database::open(bench->path());
  renumber(*other, 7, "777", Renumbering::WithResults);
  other->execute("UPDATE Schützen SET Ort = 'Höfen', IBAN = 'DE77' WHERE ID = 7");
  bench->place.dialogs.expect(
      "Diesen Schützen hat inzwischen jemand anderes geändert.\n\nOrt: dort jetzt »Höfen«, hier »Grünau«\n\n"
      "Soll gelten, was hier steht?",
      BoxAnswer::Yes);
  QSignalSpy done(page.get(), &ShooterPage::done);
  QVERIFY(page->save());
  QCOMPARE(field("txtStartnummer").text(), "777");
  QCOMPARE(field("txtOrt").text(), "Grünau");
  QCOMPARE(field("txtIBAN").text(), "DE77");
  QVERIFY(!page->isEdited());
  QCOMPARE(done[0][0].toString(), "Gespeichert: 777  Müller Jörg");
}

void TestShooterPage::noShowsWhatTheOtherCounterStored() {
  show("107");
  the<QTabWidget>(*page, "tabsSchuetze").setCurrentIndex(1);
  type(*page, "txtOrt", "Grünau");
  type(*page, "txtTelefon", "0815");
  const auto other = dao::Database::open(bench->path());
  other->execute("UPDATE Schützen SET Ort = 'Höfen', IBAN = 'DE77' WHERE ID = 7");
  bench->place.dialogs.expect(
      "Diesen Schützen hat inzwischen jemand anderes geändert.\n\nOrt: dort jetzt »Höfen«, hier »Grünau«\n\n"
      "Soll gelten, was hier steht?",
      BoxAnswer::No);
  QVERIFY(!page->save());
  QCOMPARE(field("txtOrt").text(), "Höfen");
  QCOMPARE(field("txtIBAN").text(), "DE77");
  QCOMPARE(field("txtTelefon").text(), "");
  QVERIFY(!page->isEdited());
}

void TestShooterPage::aClubThatIsGoneIsToldAndWhatIsTypedStays() {
  bench->database->execute("INSERT INTO Verein (Name) VALUES ('Kurzlebig')");
  page->refresh();
  type(*page, "txtNachname", "Huber");
  type(*page, "txtVerein", "Kurzlebig");
  QCOMPARE(field("txtVerein").completer()->completionCount(), 1);
  bench->database->execute("DELETE FROM Verein WHERE Name = 'Kurzlebig'");
  bench->place.dialogs.expect("Verein: »Kurzlebig« hat inzwischen jemand gelöscht.");
  QVERIFY(!page->save());
  QVERIFY(field("txtVerein").hasFocus());
  QCOMPARE(field("txtNachname").text(), "Huber");
  QCOMPARE(field("txtVerein").text(), "Kurzlebig");
  QCOMPARE(bench->count("Schützen", "Name = 'Huber'"), 0);
  // It is suggested no more.
  type(*page, "txtVerein", "Kurzleb");
  QCOMPARE(field("txtVerein").completer()->completionCount(), 0);
}

void TestShooterPage::theClassByCorrectedLimitsIsSaid() {
  const QString number = field("txtStartnummer").text();
  type(*page, "txtNachname", "Huber");
  type(*page, "txtGeburtsdatum", "01021980");
  box("cboGeschlecht").setCurrentIndex(2);
  QCOMPARE(box("cboKlasse").currentText(), "Damen II (D2)");
  bench->database->execute("UPDATE Schützenklassen SET [Alter von] = 98, [Alter bis] = 99 WHERE ID = 10");
  bench->database->execute("UPDATE Schützenklassen SET [Alter von] = 21 WHERE ID = 14");
  QSignalSpy done(page.get(), &ShooterPage::done);
  QVERIFY(page->save());
  QCOMPARE(stored(number, "KlassenID"), "14");
  QCOMPARE(done[0][0].toString(),
           "Gespeichert: " + number + "  Huber, jetzt in der Klasse: " + box("cboKlasse").currentText());
  QVERIFY(page->save());
  press(*page, "txtNachname", Qt::Key_F9);
  // The next one's class follows from them at once.
  type(*page, "txtGeburtsdatum", "01021980");
  box("cboGeschlecht").setCurrentIndex(2);
  QCOMPARE(box("cboKlasse").currentData().toInt(), 14);
}

void TestShooterPage::nothingIsCompletedThatWasNotChosen() {
  type(*page, "txtVerein", "grü");
  QCOMPARE(field("txtVerein").text(), "grü");
  QCOMPARE(field("txtVerein").completer()->completionCount(), 1);
  press(*page, "txtVerein", Qt::Key_Tab);
  QCOMPARE(field("txtVerein").text(), "grü");
}

void TestShooterPage::aNamesakeStandsBeside() {
  type(*page, "txtNachname", "Müller");
  type(*page, "txtVorname", "Jörg");
  type(*page, "txtGeburtsdatum", "14.05.1928");
  press(*page, "txtGeburtsdatum", Qt::Key_Return);
  QCOMPARE(hint(), "Gibt es schon: 107  Müller Jörg, 14.05.28, Schützenlust Äußere Au");
  bench->place.dialogs.expect(
      "Diesen Namen mit diesem Geburtsdatum gibt es schon.\n\nneu: " + field("txtStartnummer").text() +
          "  Müller Jörg, 14.05.1928\nvorhanden: 107  Müller Jörg, 14.05.28, "
          "Schützenlust Äußere Au\n\nTrotzdem speichern?",
      BoxAnswer::No);
  press(*page, "txtGeburtsdatum", Qt::Key_F9);
  QVERIFY(field("txtNachname").hasFocus());
}

void TestShooterPage::walkingTheListShowsEach() {
  show("107");
  QCOMPARE(field("txtNachname").text(), "Müller");
  QCOMPARE(field("txtVorname").text(), "Jörg");
  QCOMPARE(field("txtGeburtsdatum").text(), "14.05.28");
  QCOMPARE(field("txtVerein").text(), "Schützenlust Äußere Au");
  QCOMPARE(field("txtMannschaft").text(), "Äußere Au I (Schützenlust Äußere Au)");
  QVERIFY(!page->isEdited());
  for (const char* number : {"101", "102", "103", "104", "108", "112", "7a"}) {
    show(number);
    QVERIFY2(!page->isEdited(), number);
  }
}

void TestShooterPage::whatIsNotStoredIsAskedAbout() {
  show("107");
  field("txtAusweisNr").setText("1");
  const QString question =
      "Der Schütze 107  Müller Jörg ist noch nicht gespeichert.\n\nJetzt speichern? (Nein kehrt zurück; dort "
      "nimmt Esc die Eingaben zurück.)";
  bench->place.dialogs.expect(question, BoxAnswer::No).presetting(BoxAnswer::Yes);
  goTo("108");
  QTRY_VERIFY(bench->place.dialogs.done());
  QCOMPARE(field("txtStartnummer").text(), "107");
  QCOMPARE(field("txtAusweisNr").text(), "1");
  QTRY_COMPARE(rows().value(the<BoundGrid>(*page, "gridSchuetzen").currentRow(), "Start").toString(), "107");
  bench->place.dialogs.expect(question, BoxAnswer::Yes);
  show("108");
  QCOMPARE(stored("107", "AusweisNr"), "1");
}

void TestShooterPage::dropTakesBack() {
  show("107");
  type(*page, "txtNachname", "Maier");
  QVERIFY(the<QPushButton>(*page, "cmdVerwerfen").isEnabled());
  press(*page, "txtNachname", Qt::Key_Escape);
  QCOMPARE(field("txtNachname").text(), "Müller");
  QVERIFY(!the<QPushButton>(*page, "cmdVerwerfen").isEnabled());
}

void TestShooterPage::anotherClubAsksAboutResults() {
  bench->database->execute(
      "INSERT INTO SchussSerien (Startnummer, MannID, KlassenID, VorMannID, DisziID, Ergebnis) VALUES "
      "('107', 4, 14, 5, 1, 98)");
  show("107");
  type(*page, "txtVerein", "Edelweiß");
  bench->place.dialogs.expect(
      "1 Ergebnis von 107  Müller Jörg trägt noch, was vorher galt (Verein).\n"
      "Soll das angeglichen werden?\n\nZahlungen bleiben, wie sie sind.",
      BoxAnswer::Yes);
  QVERIFY(page->save());
  QCOMPARE(bench->count("SchussSerien", "Startnummer = '107' AND MannID = 3"), 1);
}

void TestShooterPage::aNumberIsOnlyChangedByItsAct() {
  show("107");
  QVERIFY(field("txtStartnummer").isReadOnly());
  bench->place.dialogs.expectInput("Neue Startnummer für 107  Müller Jörg:", "900");
  click(*page, "cmdUmnummerieren");
  QCOMPARE(field("txtStartnummer").text(), "900");
  page->addRow();
  QVERIFY(!field("txtStartnummer").isReadOnly());
  QVERIFY(!the<QPushButton>(*page, "cmdUmnummerieren").isEnabled());
}

void TestShooterPage::filterAndOrder() {
  BoundGrid& grid = the<BoundGrid>(*page, "gridSchuetzen");
  QCOMPARE(rows().value(0, "Start").toString(), "7a");
  type(*page, "filter_Name", "Müller");
  rows().waitForAll();
  QVERIFY(rows().count() > 0);
  for (int row = 0; row < rows().count(); ++row)
    QVERIFY(rows().value(row, "Wer").toString().startsWith("Müller"));
  type(*page, "filter_Name", "");
  Q_EMIT grid.titleClicked(1);
  rows().waitForAll();
  QVERIFY(rows().value(0, "Wer").toString() < QString("C"));
}

void TestShooterPage::deletingFromTheList() {
  type(*page, "txtNachname", "Huber");
  const QString number = field("txtStartnummer").text();
  QVERIFY(page->save());
  rows().waitForAll();
  goTo(number);
  // Only that key, and only there.
  press(*page, "gridSchuetzen", Qt::Key_F12);
  press(*page, "cmdNaechster", Qt::Key_Delete);
  bench->place.dialogs.expect("Soll der Schütze " + number + "  Huber gelöscht werden?", BoxAnswer::Yes);
  press(*page, "gridSchuetzen", Qt::Key_Delete);
  QCOMPARE(bench->count("Schützen", "Startnummer = '" + number + "'"), 0);
}

/// And its control says what it does to results.
void TestShooterPage::everyColumnThatIsReadIsEntered() {
  const auto& form = the<ShooterForm>(*page, "formSchuetze");
  const Page& description = masterDataPage("Schuetzen");
  const QString unread = description.column("AmateurSchuetze")->effect;
  QStringList missing;
  for (const PageColumn& column : description.columns) {
    const QWidget* control = form.controlOf(column.column);
    if (control ? control->toolTip() != column.effect : column.effect != unread) missing << column.column;
  }
  QCOMPARE(missing.join(' '), QString());
}

void TestShooterPage::anEmptyCompetition() {
  bench->database->execute("DELETE FROM Schützen");
  bench->database->execute("DELETE FROM Schützenklassen");
  page->refresh();
  rows().waitForAll();
  QCOMPARE(the<QLabel>(*page, "lblAnzahl").text(), "0 Schützen");
  QCOMPARE(field("txtStartnummer").text(), "1");
  type(*page, "txtGeburtsdatum", "01.02.1980");
  QCOMPARE(hint(), "Der Wettkampf hat noch keine Klassen.");
}

void TestShooterPage::manners() {
  QCOMPARE(badManners(*page).join('\n'), QString());
}

QTEST_MAIN(TestShooterPage)
#include "test_shooter_page.moc"
