#include "masterdata/main/start.h"

#include <QStatusBar>

#include "app/shell/program_start.h"
#include "app/shell/waiting_window.h"
#include "masterdata/windows/main_window.h"

namespace qk {

namespace {

const QString kHelp =
    "qk-stammdaten - die Stammdaten eines Schießwettkampfs\n"
    "\n"
    "Aufruf: qk-stammdaten [WETTKAMPF.qkk]\n"
    "        qk-stammdaten --hilfe | --version\n"
    "\n"
    "Schützen, Vereine, Mannschaften, Klassen, Waffen, Disziplinen, Kombinationen, Anmeldungen und\n"
    "Auswerteprofile; neue Wettkämpfe. Läuft neben qk-intarso auf demselben Wettkampf, einer Datei oder\n"
    "Serverdatei mit der Endung qkk. Ohne Angabe öffnet sich der zuletzt hier benutzte.\n"
    "\n"
    "Umgebung: QK_EINSTELLUNGEN (Datei der Einstellungen), QK_DOKUMENTE (gemeinsame Dokumente),\n"
    "QK_PROGRAMM (Ordner des Programms), temp.\n";

ProgramCall callOf(const QStringList& arguments) {
  // A path with blanks may come unquoted.
  return {"stammdaten", arguments.join(' '), "qk-stammdaten läuft schon; sein Fenster kommt nach vorn."};
}

int run(QkApplication&, const Workplace& workplace, SingleInstance& instance, const ProgramCall& call) {
  GlobalVariablen global;
  MasterDataWindow window(workplace, global);
  const dao::WaitingSign waiting = showWaitingIn(*window.statusBar());
  comeToFrontWith(instance, window);
  if (!window.load(call.path)) return 0;
  window.showMaximized();
  return QApplication::exec();
}

}  // namespace

int startMasterData(int argc, char** argv) {
  return startProgram(argc, argv, {"qk-stammdaten", "QK-Intarso Stammdaten", kHelp, callOf, run});
}

}  // namespace qk
