#include "app/start.h"

#include <QStatusBar>

#include "app/cash_workstation.h"
#include "app/frmLindorm.h"
#include "app/shell/program_start.h"
#include "app/shell/waiting_window.h"

namespace qk {

namespace {

const QString kHelp =
    "qk-intarso - das Büro eines Schießwettkampfs\n"
    "\n"
    "Aufruf: qk-intarso [WETTKAMPF.qkk]\n"
    "        qk-intarso --kasse [WETTKAMPF.qkk]\n"
    "        qk-intarso --hilfe | --version\n"
    "\n"
    "Ohne Angabe öffnet sich der zuletzt benutzte Wettkampf. Ein Wettkampf ist eine Datei oder eine "
    "Serverdatei\n"
    "mit der Endung qkk; qk-wettkampf legt welche an. Läuft das Programm schon, kommt sein Fenster nach "
    "vorn.\n"
    "\n"
    "--kasse öffnet nur die Kasse, ohne Linien und mit den Scheibenstapeln. Sie darf auf demselben Rechner "
    "neben\n"
    "dem Büro laufen, mit denselben Einstellungen.\n"
    "\n"
    "Umgebung: QK_EINSTELLUNGEN (Datei der Einstellungen), QK_DOKUMENTE (gemeinsame Dokumente),\n"
    "QK_PROGRAMM (Ordner des Programms), temp.\n";

const QString kCashDesk = "kasse";

ProgramCall callOf(QStringList arguments) {
  const bool kasse = arguments.removeAll("--kasse") > 0;
  // A path with blanks may come unquoted.
  const QString path = arguments.join(' ');
  if (kasse) return {kCashDesk, path, "Die Kasse von QK-Intarso läuft schon; ihr Fenster kommt nach vorn."};
  return {"instanz", path, "QK-Intarso läuft schon; sein Fenster kommt nach vorn."};
}

int runOffice(QkApplication& application, const Workplace& workplace, SingleInstance& instance,
              const QString& path) {
  GlobalVariablen global;
  frmLindorm window(workplace, global);
  const dao::WaitingSign waiting = showWaitingIn(*window.statusBar());
  application.onFatal = [&window] { window.stopPolling(); };
  comeToFrontWith(instance, window);
  if (!window.form_load(path)) return 0;
  window.showMaximized();
  return QApplication::exec();
}

int runCashDesk(const Workplace& workplace, SingleInstance& instance, const QString& path) {
  GlobalVariablen global;
  CashWorkstation desk(workplace, global);
  frmFinanz& window = desk.window();
  const dao::WaitingSign waiting = showWaitingIn(*window.findChild<QStatusBar*>());
  comeToFrontWith(instance, window);
  if (desk.form_load(path)) window.exec();
  return 0;
}

}  // namespace

int start(int argc, char** argv) {
  return startProgram(argc, argv,
                      {"qk-intarso", "QK-Intarso", kHelp, callOf,
                       [](QkApplication& application, const Workplace& workplace, SingleInstance& instance,
                          const ProgramCall& call) {
                         return call.kind == kCashDesk
                                    ? runCashDesk(workplace, instance, call.path)
                                    : runOffice(application, workplace, instance, call.path);
                       }});
}

}  // namespace qk
