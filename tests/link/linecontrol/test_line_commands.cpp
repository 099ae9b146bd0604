// The command routines of a line on a line that only keeps a journal: what goes out, in which order, waiting
// or not, what is asked, which event follows.
#include <QTest>

#include "link/linecontrol/line_commands.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;
using Column = LineDisciplines::Column;

namespace {

class JournalLine : public LineSide {
 public:
  void Output_2_ESA(const QString& sCommand, bool bWarten, const std::function<bool()>& wanted) override {
    if (failing) throw Error(13);
    if (const auto during = std::exchange(duringWait, {})) during();
    if (wanted && !wanted()) return;
    journal << (bWarten ? "warten " : "") + sCommand;
    if (journal.size() == diesAfter) living = false;
  }
  bool lives() const override { return living; }
  bool opens() override { return open; }
  QString startnummer() const override { return number; }
  QString schuetzenName() const override { return "Müller"; }
  void setTimerEnabled(bool enabled) override { journal << (enabled ? "Timer an" : "Timer aus"); }
  void clearShooterInput() override { journal << "Eingabe leer"; }
  void clearShooterLabels() override { journal << "Beschriftung leer"; }
  void raise(LineEvent event) override {
    static const QHash<LineEvent, QString> names = {{LineEvent::PreisModusGestartet, "gestartet"},
                                                    {LineEvent::PreisModusBeendet, "beendet"},
                                                    {LineEvent::WettkampfBeendet, "abgemeldet"},
                                                    {LineEvent::SchuetzeGesendet, "gesendet"}};
    journal << "Ereignis " + names.value(event);
  }

  QStringList journal;
  QString number = "107";
  bool failing = false;
  bool living = true;
  bool open = true;
  int diesAfter = -1;
  std::function<void()> duringWait;  // of the next command
};

const QString kNone30(30, '-');

}  // namespace

class TestLineCommands : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    line_ = std::make_unique<JournalLine>();
    grid_ = std::make_unique<LineDisciplines>(place_->workplace());
    commands_ = std::make_unique<LineCommands>(place_->workplace(), *line_, *grid_);
    addRows(2);
  }
  void cleanup() {
    commands_.reset();
    grid_.reset();
    line_.reset();
    place_.reset();
  }

  void priceModeOn() {
    commands_->Set_Linie_PreisModus_ON();
    QCOMPARE(line_->journal,
             (QStringList{"H014", "76 'Umschalten auf Preismodus", "Timer an", "Ereignis gestartet"}));
  }

  void aLineWithoutItsCompetitionStartsNothing() {
    line_->open = false;
    commands_->Set_Linie_PreisModus_ON();
    QCOMPARE(line_->journal, QStringList());
  }

  void priceModeOff() {
    commands_->Set_Linie_PreisModus_OFF();
    QCOMPARE(line_->journal,
             (QStringList{"77 'UmschaltenAuf Fernbedienung", "Ereignis beendet", "Timer aus"}));
  }

  void signOff() {
    commands_->Set_Abmelden_Schuetze();
    QCOMPARE(line_->journal,
             (QStringList{"52", "66", "53", "Ereignis abgemeldet", "Eingabe leer", "Beschriftung leer"}));
    QCOMPARE(place_->waits.sleeps(), (QList<int>{200, 200}));
  }

  void errorsDisturbNobody() {
    line_->failing = true;
    commands_->Set_Linie_PreisModus_ON();
    commands_->Set_Linie_PreisModus_OFF();
    commands_->Set_Abmelden_Schuetze();
    QCOMPARE(line_->journal, (QStringList{"Timer an", "Ereignis gestartet", "Ereignis beendet", "Timer aus",
                                          "Ereignis abgemeldet", "Eingabe leer", "Beschriftung leer"}));
  }

  void theOthersPassTheirErrorOn() {
    line_->failing = true;
    QVERIFY_THROWS_EXCEPTION(Error, commands_->Set_Linie_ShutDown());
  }

  void onlySenders() {
    commands_->Set_Linie_ZurueckWindows();
    commands_->Set_Linie_ShutDown();
    commands_->Set_Linie_Werbefenster_EIN("bild.bmp");
    commands_->Set_Linie_Werbefenster_AUS();
    commands_->Wettkampf_Vorbereiten();
    commands_->Wettkampf_Starten();
    commands_->Wettkampf_Stoppen();
    QCOMPARE(line_->journal,
             (QStringList{"50 'Zurück zu Windows", "99 'Rechner herunterfahren", "45 bild.bmp",
                          "46 'Werbefenster ausblenden", "warten 12", "warten 13", "warten 52"}));
  }

  void registrationWithoutShooter() {
    line_->number.clear();
    place_->dialogs.expect("Bitte Schützen wählen!").titled("Hinweis").showing(BoxIcon::Exclamation);
    commands_->Set_Anmelden_SchuetzeDisziplinen(true);
    QCOMPARE(line_->journal, QStringList());
  }

  void registrationOfASelection() {
    grid_->table().setText(2, Column::Auswahl, "1");
    place_->dialogs
        .expect(
            "Disziplinen senden: \r\n\r\n- D2    (Schuss: 40)       \r\n\r\n\r\nHINWEIS:\r\n"
            "Evtl. gesendete Diziplinen werden zurückgesetzt!",
            BoxAnswer::Yes)
        .titled("Hinweis")
        .showing(BoxIcon::Question)
        .with(BoxButtons::YesNo);
    commands_->Set_Anmelden_SchuetzeDisziplinen(true);
    QCOMPARE(line_->journal,
             (QStringList{"75107 ; Müller ; 107 ; 107 ; -1" + QString(28, '-'), "Ereignis gesendet"}));
    QCOMPARE(place_->waits.messageLoops(), 1);
  }

  void registrationRefused() {
    grid_->selectAll(true);
    place_->dialogs.expect(frageDisziplinenSenden(names(false)), BoxAnswer::No);
    commands_->Set_Anmelden_SchuetzeDisziplinen(true);
    QCOMPARE(line_->journal, QStringList());
  }

  void noSelectionIsAsked() {
    place_->dialogs.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::Yes);
    commands_->Set_Anmelden_SchuetzeDisziplinen(true);
    QCOMPARE(line_->journal, (QStringList{"75107 ; Müller ; 107 ; 107 ; " + kNone30, "Ereignis gesendet"}));
  }

  void withoutQuestionASelectionSendsNothing() {
    grid_->selectAll(true);
    commands_->Set_Anmelden_SchuetzeDisziplinen(false);
    QCOMPARE(line_->journal, QStringList());
  }

  void withoutQuestionNoSelectionStillAsks() {
    place_->dialogs.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::No);
    commands_->Set_Anmelden_SchuetzeDisziplinen(false);
    QCOMPARE(line_->journal, QStringList());
  }

  void aMaskHoldsThirtyRows() {
    addRows(29);
    grid_->selectAll(true);
    place_->dialogs.expect(frageDisziplinenSenden(names(false)), BoxAnswer::Yes);
    commands_->Set_Anmelden_SchuetzeDisziplinen(true);
    QCOMPARE(grid_->table().rows(), 32);
    QCOMPARE(line_->journal.value(0), "75107 ; Müller ; 107 ; 107 ; " + QString(30, '1'));
  }

  void registrationReportsAFailedSend() {
    line_->failing = true;
    place_->dialogs.expect("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?", BoxAnswer::Yes);
    place_->dialogs.expect(
        "Fehler: 13 - " + errorDescription(13) + "\nFehler bei Set_Anmelden_SchuetzeDisziplinen_err!",
        BoxAnswer::Abort);
    commands_->Set_Anmelden_SchuetzeDisziplinen(true);
    QCOMPARE(line_->journal, QStringList());
  }

  void additionalShots() {
    grid_->enterExtra(2, 10);
    place_->dialogs
        .expect("Nachkauf senden: \r\n- D2\t(Gesamt: 50 - Akt. Nachkauf: 10 )       \r\n", BoxAnswer::Yes)
        .titled("Hinweis")
        .showing(BoxIcon::Question);
    commands_->Nachkauf_Senden(true);
    QCOMPARE(line_->journal, QStringList("warten 802;10"));
    QCOMPARE(grid_->table().text(2, Column::Auswahl), QString("1"));
    QCOMPARE(grid_->table().text(2, Column::Nachkauf), QString());
    QCOMPARE(grid_->table().text(2, Column::Grundwert), QString("50"));
  }

  void nothingEnteredSendsNothing() {
    grid_->table().setText(1, Column::Nachkauf, "viele");
    commands_->Nachkauf_Senden(false);
    QCOMPARE(line_->journal, QStringList());
    QCOMPARE(grid_->table().text(1, Column::Nachkauf), QString("viele"));
  }

  void additionalShotsRefused() {
    grid_->enterExtra(1, 10);
    place_->dialogs.expect(frageNachkaufSenden(names(true)), BoxAnswer::No);
    commands_->Nachkauf_Senden(true);
    QCOMPARE(line_->journal, QStringList());
    QCOMPARE(grid_->table().text(1, Column::Nachkauf), QString("10"));
  }

  void aFailedAdditionalShotCanBeRepeated() {
    grid_->enterExtra(1, 10);
    line_->failing = true;
    place_->dialogs
        .expect("Fehler: 13 - " + errorDescription(13) + "\nFehler bei Nachkauf_Senden_err!",
                BoxAnswer::Retry)
        .during([this] { line_->failing = false; });
    commands_->Nachkauf_Senden(false);
    QCOMPARE(line_->journal, QStringList("warten 801;10"));
  }

  void additionalShotsGoToWhomTheyWereMeantFor() {
    grid_->enterExtra(1, 10);
    grid_->enterExtra(2, 5);
    line_->duringWait = [this] { line_->number = "105"; };
    QCOMPARE(commands_->Nachkauf_Senden(false), QString());
    QCOMPARE(line_->journal, QStringList());
    QCOMPARE(grid_->table().text(1, Column::Nachkauf), QString("10"));
    QCOMPARE(grid_->table().text(2, Column::Nachkauf), QString("5"));
  }

  void theNextOnesAdditionalShotsDoNotWaitForThem() {
    grid_->enterExtra(1, 10);
    line_->duringWait = [this] {
      line_->number = "105";
      grid_->enterExtra(1, 3);
      QCOMPARE(commands_->Nachkauf_Senden(false), QString("Nachkauf gesendet"));
    };
    commands_->Nachkauf_Senden(false);
    QCOMPARE(line_->journal, QStringList("warten 801;3"));
    QCOMPARE(grid_->table().text(1, Column::Nachkauf), QString());
    QCOMPARE(grid_->table().text(1, Column::Grundwert), QString("43"));
  }

  void whoComesBackIsNotSentTwice() {
    grid_->enterExtra(1, 10);
    line_->duringWait = [this] {
      line_->number = "105";
      line_->duringWait = [this] {
        line_->number = "107";
        QCOMPARE(commands_->Nachkauf_Senden(false), QString());
      };
      commands_->Nachkauf_Senden(false);
    };
    commands_->Nachkauf_Senden(false);
    QCOMPARE(line_->journal, QStringList("warten 801;10"));
  }

  void whoIsNoLongerOnTheLineIsNotSaidToBeSent() {
    grid_->table().setText(1, Column::Auswahl, "1");
    grid_->enterExtra(1, 10);
    place_->dialogs.expect(frageDisziplinenSenden(names(false)), BoxAnswer::Yes);
    line_->duringWait = [this] { line_->number = "105"; };
    QCOMPARE(commands_->Set_Anmelden_SchuetzeDisziplinen(), QString());
  }

  void whatIsTypedMeanwhileIsStillToBeSent() {
    grid_->enterExtra(1, 10);
    line_->duringWait = [this] { grid_->enterExtra(1, 20); };
    commands_->Nachkauf_Senden(false);
    QCOMPARE(line_->journal, QStringList("warten 801;10"));
    QCOMPARE(grid_->table().text(1, Column::Nachkauf), QString("20"));
    QCOMPARE(grid_->table().text(1, Column::Grundwert), QString("50"));
    QCOMPARE(grid_->table().text(1, Column::Gesamt), QString("70"));
    commands_->Nachkauf_Senden(false);
    QCOMPARE(line_->journal.last(), QString("warten 801;20"));
    QCOMPARE(grid_->table().text(1, Column::Grundwert), QString("70"));
  }

  void aLineTakenDownGoesNoFurther() {
    line_->diesAfter = 1;
    commands_->Set_Abmelden_Schuetze();
    QCOMPARE(line_->journal, QStringList("52"));
    QVERIFY(place_->waits.sleeps().isEmpty());
  }

  void aLineTakenDownSendsNoFurtherAdditionalShots() {
    grid_->enterExtra(1, 1);
    grid_->enterExtra(2, 2);
    line_->diesAfter = 1;
    commands_->Nachkauf_Senden(false);
    QCOMPARE(line_->journal, QStringList("warten 801;1"));
    QCOMPARE(grid_->table().text(1, Column::Nachkauf), QString("1"));
  }

 private:
  QString names(bool bNachkauf) const { return disziplinAuswahlNamen(grid_->rows(), bNachkauf); }
  void addRows(int count) {
    for (int i = 0; i < count; ++i) {
      const int row = grid_->table().rows();
      grid_->table().addRow({"0", "D" + QString::number(row), "40", "40", "", "40"},
                            disziplinSchluessel(row));
    }
  }

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<JournalLine> line_;
  std::unique_ptr<LineDisciplines> grid_;
  std::unique_ptr<LineCommands> commands_;
};

QTEST_GUILESS_MAIN(TestLineCommands)
#include "test_line_commands.moc"
