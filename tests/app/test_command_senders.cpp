// Every row of the table of station commands has something in the window that sends it, and nothing else goes
// out.
#include <QTest>

#include "link/linecontrol/line_disciplines.h"
#include "link/station_commands.h"
#include "platform/grid/text_grid.h"
#include "platform/runtime/textcodec.h"
#include "tests/app/range_office.h"
#include "tests/support/compare_lines.h"

using namespace qk;
using namespace qk::test;

class TestCommandSenders : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everyCommandHasItsSender();

 private:
  void driveAll(RangeOffice& office);
};

void TestCommandSenders::driveAll(RangeOffice& office) {
  const auto yes = [&](const QString& question) { office.boxes.expect(question, BoxAnswer::Yes); };
  office.chooseShooter(1, "107");
  trigger(office.window(), "linienstop");
  yes("Keine Disziplin für den Schützen gewählt!\r\nTrotzdem senden?");
  trigger(office.window(), "anmelden");
  office.on<TextGrid>(1, "flexHaeringDiszi").table()->setText(1, LineDisciplines::Nachkauf, "5");
  yes("Nachkauf senden: \r\n- LG Meister\t(Gesamt: 40 - Akt. Nachkauf: 5 )       \r\n");
  office.press(1, "cmdNachkauf");
  office.fire(1, shotRecord(1, 1, "9,7", "123,4").replace(0, 2, "78"));
  for (const char* key : {"wkvorbereiten", "wkstarten", "wkstop", "abmelden", "linienfrei"})
    trigger(office.window(), key);
  office.boxes.expectWindow("frmWerbeFenster", [](QWidget& window) { click(window, "cmdOK"); });
  trigger(office.window(), "mnuHaeringAktLinieWerbeEIN");
  trigger(office.window(), "mnuHaeringAktLinieWerbeAUS");
  yes("Sollen wirklich der Rechner an der aktuellen Linie zurück zu Windows wechseln?");
  trigger(office.window(), "mnuHaeringAktWindows");
  yes("Sollen wirklich der Rechner an der aktuellen Linie heruntergefahren werden?");
  trigger(office.window(), "mnuHaeringAktShutDown");
}

void TestCommandSenders::everyCommandHasItsSender() {
  RangeOffice office("1");
  office.place.files.write(office.folder + "/a.bmp", "");
  QVERIFY(office.open());
  QStringList sent;
  office.place.files.before([&](FileStep step, const QString& path) {
    // The flag goes out behind its data.
    if (step != FileStep::Write || !path.endsWith("HServ1.ctl")) return;
    const QByteArray data = Files().read(QString(path).replace(".ctl", ".nrt"));
    sent << fromWindows1252(data).remove('"').trimmed();
  });
  office.place.waits.inEachSleep([&](int) { office.takeCommand(1); });  // the station takes what it gets
  driveAll(office);
  office.place.files.before({});

  QStringList foreign, rows = sent;
  for (const QString& command : sent)
    if (const StationCommand* row = readCommand(command); !row || !command.startsWith(row->text().trimmed()))
      foreign << command;
  COMPARE_LINES(foreign, QStringList());
  // Rows of the same text want a sender each.
  QStringList unsent;
  for (const StationCommand& row : stationCommands()) {
    const auto begins = [&](const QString& command) { return command.startsWith(row.text()); };
    if (const auto found = std::find_if(rows.begin(), rows.end(), begins); found != rows.end())
      rows.erase(found);
    else
      unsent << row.text() + ": " + row.meaning;
  }
  COMPARE_LINES(unsent, QStringList());
}

QTEST_MAIN(TestCommandSenders)
#include "test_command_senders.moc"
