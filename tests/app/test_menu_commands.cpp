// What the entries that command stations ask, write and report: a table, driven by name on the real window.
#include <QDir>
#include <QFile>
#include <QTest>

#include "app/ground/printing.h"
#include "platform/dialog/printer_setup_dialog.h"
#include "platform/runtime/textcodec.h"
#include "tests/app/range_office.h"

using namespace qk;
using namespace qk::test;

namespace {

enum class Reach { AllLines, CurrentLine };

/// An entry of menu or toolbar: the question before it, the commands each line gets, whether it stays silent
/// about a failed send.
struct Command {
  const char* action;
  const char* question;
  Reach reach;
  QStringList commands;
  bool silent = false;
};

const QStringList kOn{"H014", "76 'Umschalten auf Preismodus"};
const QStringList kOff{"77 'UmschaltenAuf Fernbedienung"};
const QStringList kSignOff{"52", "66", "53"};
const QStringList kWindows{"50 'Zurück zu Windows"};
const QStringList kShutDown{"99 'Rechner herunterfahren"};
const QStringList kAdvertOff{"46 'Werbefenster ausblenden"};
constexpr auto kAll = Reach::AllLines;
constexpr auto kCurrent = Reach::CurrentLine;

const Command kCommands[] = {
    {"mnuHaeringAllePreismodusON", "", kAll, kOn, true},
    {"mnuHaeringAllePreismodusOFF", "", kAll, kOff, true},
    {"mnuHaeringAlleSchuetzenOFF", "", kAll, kSignOff, true},
    {"mnuHaeringAlleWindows", "Sollen wirklich alle Linienrechner zurück zu Windows gesetzt werden?", kAll,
     kWindows},
    {"mnuHaeringAlleShutDown", "Sollen wirklich alle Linienrechner heruntergefahren werden?", kAll,
     kShutDown},
    {"mnuHaerinAlleWerbeAUS", "", kAll, kAdvertOff},
    {"linienstopAll", "", kAll, kOn, true},
    {"abmeldenAll", "", kAll, kSignOff, true},
    {"linienfreiAll", "", kAll, kOff, true},
    {"mnuHaeringAktLinieWerbeAUS", "", kCurrent, kAdvertOff},
    {"mnuHaeringAktWindows", "Sollen wirklich der Rechner an der aktuellen Linie zurück zu Windows wechseln?",
     kCurrent, kWindows},
    {"mnuHaeringAktShutDown", "Sollen wirklich der Rechner an der aktuellen Linie heruntergefahren werden?",
     kCurrent, kShutDown},
    {"linienstop", "", kCurrent, kOn, true},
    {"linienfrei", "", kCurrent, kOff, true},
    {"abmelden", "", kCurrent, kSignOff, true},
    {"wkvorbereiten", "", kCurrent, {"12"}},
    {"wkstarten", "", kCurrent, {"13"}},
    {"wkstop", "", kCurrent, {"52"}},
};

/// Line 2 isn't in use; line 3 is the one shown.
constexpr int kLines = 3;
constexpr int kShown = 3;

QList<int> linesOf(const Command& command) {
  return command.reach == Reach::AllLines ? QList<int>{1, 2, 3} : QList<int>{kShown};
}

QByteArray bytes(const QString& command) {
  return toWindows1252('"' + command + "\"\r\n");
}

}  // namespace

class TestMenuCommands : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    office_ = std::make_unique<RangeOffice>("101");
    QVERIFY(office_->open());
    office_->show(kShown);
    office_->place.files.clearJournal();
  }
  void cleanup() { office_.reset(); }

  void writes_data() { rows(); }
  void writes();
  void noAsksForNothing_data() { rows(); }
  void noAsksForNothing();
  void failures_data() { rows(); }
  void failures();
  void retryRepeatsTheFailedLineOnly();
  void ignoredFailureEndsTheLoopToo();
  void allLinesEndWhenTheLinesAreRebuilt();
  void viewerGetsCompetitionAndStartNumber();
  void aViewerThatCannotBeStartedIsTold();
  void printerSetup();
  void testDataDialogCancelled();
  void settingsThatCannotBeStored_data();
  void settingsThatCannotBeStored();
  void aLastCompetitionThatCannotBeKeptOpensAllTheSame();
  void eventsOfALineThatIsGone();

 private:
  static void rows() {
    QTest::addColumn<int>("row");
    for (int row = 0; row < int(std::size(kCommands)); ++row) QTest::newRow(kCommands[row].action) << row;
  }
  QString file(int line, const char* end) const {
    return office_->folderFile("HServ" + QString::number(line) + end);
  }
  QByteArray content(const QString& path) const {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("fehlt");
  }
  void expectQuestion(const Command& command, BoxAnswer answer) {
    if (*command.question)
      office_->boxes.expect(command.question, answer)
          .titled("Hinweis")
          .showing(BoxIcon::Question)
          .with(BoxButtons::YesNo)
          .presetting(BoxAnswer::No);
  }
  Expectation& expectFailure(const QString& action, BoxAnswer answer) {
    return office_->boxes
        .expect("Fehler: 13 - " + errorDescription(13) + "\nFehler beim Klick " + action + "_Click_err!",
                answer)
        .titled("Fehler")
        .showing(BoxIcon::Exclamation)
        .with(BoxButtons::AbortRetryIgnore);
  }
  void run(const QString& action) { office_->action(action).trigger(); }
  int written(int line) const {
    return int(office_->place.files.journal().count("write HServ" + QString::number(line) + ".nrt"));
  }

  std::unique_ptr<RangeOffice> office_;
};

void TestMenuCommands::writes() {
  QFETCH(int, row);
  const Command& command = kCommands[row];
  QStringList sent;
  office_->place.files.before([&](FileStep step, const QString& path) {
    // The flag goes out behind its data.
    if (step == FileStep::Write && path.endsWith(".ctl"))
      sent << fromWindows1252(content(QString(path).replace(".ctl", ".nrt"))).remove('"').trimmed();
  });
  expectQuestion(command, BoxAnswer::Yes);
  run(command.action);
  office_->place.files.before({});
  const QList<int> lines = linesOf(command);
  QStringList expected;
  for (int line = 1; line <= kLines; ++line) {
    if (lines.contains(line)) {
      expected << command.commands;
      QCOMPARE(content(file(line, ".nrt")), bytes(command.commands.last()));
      QCOMPARE(content(file(line, ".ctl")), QByteArray("\"\"\r\n"));
    } else {
      QVERIFY(!QFile::exists(file(line, ".nrt")));
    }
  }
  QCOMPARE(sent, expected);
}

void TestMenuCommands::noAsksForNothing() {
  QFETCH(int, row);
  const Command& command = kCommands[row];
  expectQuestion(command, BoxAnswer::No);
  run(command.action);
  if (*command.question) QVERIFY(office_->place.files.list(office_->folder, "HServ*").isEmpty());
}

void TestMenuCommands::failures() {
  QFETCH(int, row);
  const Command& command = kCommands[row];
  const QList<int> lines = linesOf(command);
  const int failing = lines.size() > 1 ? 2 : kShown;
  office_->place.files.fail(FileStep::Write, QString("HServ%1.nrt").arg(failing), 70);
  expectQuestion(command, BoxAnswer::Yes);
  if (!command.silent) expectFailure(command.action, BoxAnswer::Abort);
  run(command.action);
  QVERIFY(!QFile::exists(file(failing, ".nrt")));
  if (lines.size() > 1) {
    QVERIFY(QFile::exists(file(1, ".nrt")));
    QCOMPARE(QFile::exists(file(3, ".nrt")), command.silent);
  }
}

void TestMenuCommands::retryRepeatsTheFailedLineOnly() {
  office_->place.files.fail(FileStep::Write, "HServ2.nrt", 70, 1);
  office_->boxes.expect("Sollen wirklich alle Linienrechner heruntergefahren werden?", BoxAnswer::Yes);
  expectFailure("mnuHaeringAlleShutDown", BoxAnswer::Retry);
  run("mnuHaeringAlleShutDown");
  QCOMPARE(written(1), 1);
  QCOMPARE(written(3), 1);
  QVERIFY(QFile::exists(file(2, ".nrt")));
  office_->place.files.fail(FileStep::Write, "HServ3.nrt", 70, 1);
  office_->boxes.expect("Sollen wirklich der Rechner an der aktuellen Linie heruntergefahren werden?",
                        BoxAnswer::Yes);
  expectFailure("mnuHaeringAktShutDown", BoxAnswer::Retry);
  run("mnuHaeringAktShutDown");
  QCOMPARE(written(3), 2);
}

void TestMenuCommands::ignoredFailureEndsTheLoopToo() {
  office_->place.files.fail(FileStep::Write, "HServ2.nrt", 70);
  expectFailure("mnuHaerinAlleWerbeAUS", BoxAnswer::Ignore);
  run("mnuHaerinAlleWerbeAUS");
  QCOMPARE(written(1), 1);
  QCOMPARE(written(3), 0);
}

void TestMenuCommands::allLinesEndWhenTheLinesAreRebuilt() {
  office_->place.files.fail(FileStep::Write, "HServ2.nrt", 70);
  expectFailure("mnuHaerinAlleWerbeAUS", BoxAnswer::Ignore).during([this] {
    office_->window().Load_Settings();
  });
  run("mnuHaerinAlleWerbeAUS");
  QCOMPARE(written(3), 0);
}

void TestMenuCommands::viewerGetsCompetitionAndStartNumber() {
  const QString viewer = office_->place.path("programm/QK-Grafik.exe");
  const QString seen = office_->place.path("gesehen.txt");
  QFile script(viewer);
  QVERIFY(script.open(QIODevice::WriteOnly));
  script.write("#!/bin/sh\nprintf '%s|%s' \"$#\" \"$1\" > '" + seen.toUtf8() + ".neu'\nmv '" + seen.toUtf8() +
               ".neu' '" + seen.toUtf8() + "'\n");
  script.close();
  QVERIFY(script.setPermissions(script.permissions() | QFile::ExeOwner | QFile::ExeUser));
  office_->chooseShooter(kShown, "107");
  run("mnuEditSchussbilder");
  QTRY_VERIFY(QFile::exists(seen));
  QCOMPARE(QString::fromUtf8(content(seen)), "1|" + office_->competition + ";107");
  QVERIFY(QFile::remove(seen));
  office_->show(1);
  run("schussbild");
  QTRY_VERIFY(QFile::exists(seen));
  QCOMPARE(QString::fromUtf8(content(seen)), "1|" + office_->competition + ";");
}

void TestMenuCommands::aViewerThatCannotBeStartedIsTold() {
  const QString viewer = office_->place.path("programm/QK-Grafik.exe");
  office_->place.files.write(viewer, "kein Programm");
  office_->boxes.expect("QK-Grafik.exe lässt sich nicht starten: " + viewer)
      .titled("Fehler")
      .showing(BoxIcon::Exclamation);
  run("mnuEditSchussbilder");
  QVERIFY(office_->boxes.done());
}

void TestMenuCommands::printerSetup() {
  for (const char* action : {"mnuDateiPrinterSetup", "prsetup"}) {
    const PrinterSetup chosen{action, "A5", true};
    office_->boxes.expectPrinterSetup(chosen).titled("Druckereinrichtung");
    run(action);
    QVERIFY(office_->boxes.done());
    // Another program start reads it from the same place.
    Settings later(office_->place.settings.filePath());
    QCOMPARE(CurrentPrinter(later, "Tarvex", "Häring").setup(), chosen);
    QCOMPARE(currentPrinter(office_->workplace()).setup(), chosen);
    office_->boxes.expectPrinterSetup(std::nullopt).during([&] {
      auto* dialog = qobject_cast<PrinterSetupDialog*>(QApplication::activeModalWidget());
      QVERIFY(dialog);
      QCOMPARE(dialog->setup(), chosen);
    });
    run(action);
    QCOMPARE(currentPrinter(office_->workplace()).setup(), chosen);
  }
}

void TestMenuCommands::testDataDialogCancelled() {
  office_->boxes.expectOpenFile("Intarso-Logdateien (*.txt)|*.txt|Alle Dateien (*.*)|*.*", std::nullopt);
  run("mnuOptLoadTestDaten");
  QCOMPARE(office_->line(kShown).nOffeneSchuss(), 0);
}

void TestMenuCommands::settingsThatCannotBeStored_data() {
  QTest::addColumn<QString>("action");
  for (const char* action : {"mnuOptHaeringProtokoll", "mnuHaeringSendeProtokoll", "mnuOptHaeringNetzPfad"})
    QTest::newRow(action) << action;
}

void TestMenuCommands::settingsThatCannotBeStored() {
  QFETCH(QString, action);
  const QString store = qEnvironmentVariable("QK_EINSTELLUNGEN");
  QVERIFY(QFile::remove(store) && QDir().mkpath(store));
  if (action == "mnuOptHaeringNetzPfad")
    office_->boxes.expectFolder("Bitte Intarso-Netzwerk-Pfad auswählen:\r\n" + office_->folder + "/",
                                office_->folder);
  office_->boxes
      .expect("Fehler: 75 - " + errorDescription(75) + ": " + store + "\nFehler beim Klick " + action +
                  "_Click_err!",
              BoxAnswer::Abort)
      .titled("Fehler");
  run(action);
  QVERIFY(!office_->action(action).isChecked());
  QCOMPARE(office_->window().lineCount(), kLines);
}

void TestMenuCommands::aLastCompetitionThatCannotBeKeptOpensAllTheSame() {
  const QString other = office_->place.path("Zweiter.qkk");
  QVERIFY(QFile::copy(office_->competition, other));
  const QString store = qEnvironmentVariable("QK_EINSTELLUNGEN");
  const QByteArray kept = content(store);
  QVERIFY(QFile::remove(store) && QDir().mkpath(store));
  const QString why = "Fehler: 75 - " + errorDescription(75) + ": " + store + "\nFehler ";
  office_->boxes.expectOpenFile("Wettkampf (*.qkk)|*.qkk|Alle Dateien (*.*)|*.*", other);
  office_->boxes.expect(why + "beim Klick mnuDateiWettkampfOpen_Click_err!", BoxAnswer::Ignore);
  office_->boxes.expect(why + "bei sWettkampf_err!", BoxAnswer::Retry).during([&] {
    QVERIFY(QDir().rmdir(store));
    office_->place.files.write(store, kept);
  });
  run("mnuDateiWettkampfOpen");
  QCOMPARE(office_->window().sWettkampf(), other);
  QCOMPARE(office_->line(1).sWettkampf(), other);
}

void TestMenuCommands::eventsOfALineThatIsGone() {
  const int none = 99;
  UserControl1& line = office_->line(1);
  for (const auto& [raised, name] :
       {std::pair{&UserControl1::cmdXSchutzenlisteClick, "cmdXSchutzenlisteClick"},
        std::pair{&UserControl1::cmdXSucheStartnummerClick, "cmdXSucheStartnummerClick"},
        std::pair{&UserControl1::txtXStartNummerValidate, "txtXStartNummerValidate"}}) {
    office_->boxes
        .expect("Fehler: 9 - " + errorDescription(9) + "\nFehler beim Klick cline_" + name + "!",
                BoxAnswer::Abort)
        .titled("Fehler")
        .with(BoxButtons::AbortRetryIgnore);
    Q_EMIT(line.*raised)(none);
  }
  const QStringList before{office_->node(1), office_->mark(1), office_->node(2), office_->mark(2)};
  for (auto raised : {&UserControl1::cmdXPreisModusGestartet, &UserControl1::XPreisModusBeendetClick,
                      &UserControl1::cmdXSchuetzeGesendet, &UserControl1::XGruenClick,
                      &UserControl1::cmdXStopClick, &UserControl1::workChanged})
    Q_EMIT(line.*raised)(none);
  QCOMPARE((QStringList{office_->node(1), office_->mark(1), office_->node(2), office_->mark(2)}), before);
}

QTEST_MAIN(TestMenuCommands)
#include "test_menu_commands.moc"
