#include "app/start.h"

#include <QStatusBar>
#include <QTextStream>

#include "app/cash_workstation.h"
#include "app/frmLindorm.h"
#include "app/password_question.h"
#include "app/qk_application.h"
#include "app/single_instance.h"
#include "app/waiting_window.h"
#include "platform/dialog/message_boxes.h"
#include "platform/look/look.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/files.h"
#include "platform/runtime/program_call.h"
#include "platform/settings/settings.h"

namespace qk {

namespace {

void bringToFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
}

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

/// What the program was started for.
struct Call {
  bool kasse = false;
  QString path;  ///< of a competition; empty for the last one
};

Call callOf(QStringList arguments) {
  const bool kasse = arguments.removeAll("--kasse") > 0;
  // A path with blanks may come unquoted.
  return {kasse, arguments.join(' ')};
}

/// Whoever started from a console would wonder why nothing opens there.
void tellThatItRuns(const Call& call) {
  QTextStream console(stdout);
  console << (call.kasse ? "Die Kasse von QK-Intarso läuft schon; ihr Fenster kommt nach vorn."
                         : "QK-Intarso läuft schon; sein Fenster kommt nach vorn.")
          << Qt::endl;
  if (!call.path.isEmpty()) console << "Nicht geöffnet: " << call.path << Qt::endl;
}

int runOffice(QkApplication& application, const Workplace& workplace, SingleInstance& instance,
              const QString& path) {
  GlobalVariablen global;
  frmLindorm window(workplace, global);
  const dao::WaitingSign waiting = showWaitingIn(*window.statusBar());
  application.onFatal = [&window] { window.stopPolling(); };
  QObject::connect(&instance, &SingleInstance::comeToFront, &window, [&window] { bringToFront(window); });
  if (!window.form_load(path)) return 0;
  window.showMaximized();
  return QApplication::exec();
}

int runCashDesk(const Workplace& workplace, SingleInstance& instance, const QString& path) {
  GlobalVariablen global;
  CashWorkstation desk(workplace, global);
  frmFinanz& window = desk.window();
  const dao::WaitingSign waiting = showWaitingIn(*window.findChild<QStatusBar*>());
  QObject::connect(&instance, &SingleInstance::comeToFront, &window, [&window] { bringToFront(window); });
  if (desk.form_load(path)) window.exec();
  return 0;
}

int run(QkApplication& application) {
  SystemClock clock;
  SystemRandom random;
  EventLoopWaits waits;
  Files files;
  Settings settings(Settings::defaultFilePath());
  MessageBoxes dialogs(clock);

  const dao::SharedPasswords passwords(passwordQuestion(
      [&dialogs](const QString& prompt, const QString& title) { return dialogs.password(prompt, title); }));

  const Call call = callOf(QCoreApplication::arguments().mid(1));
  SingleInstance instance(settings.filePath(), call.kasse ? "kasse" : "instanz");
  if (!instance.begin()) {
    tellThatItRuns(call);
    return 0;
  }
  const Workplace workplace{clock, random, waits, files, settings, dialogs};
  return call.kasse ? runCashDesk(workplace, instance, call.path)
                    : runOffice(application, workplace, instance, call.path);
}

}  // namespace

int start(int argc, char** argv) {
  // Before the application object: who asks on a console may have no screen.
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  if (answeredCall(arguments, "qk-intarso", kHelp)) return 0;
  QkApplication application(argc, argv);
  QCoreApplication::setApplicationName("QK-Intarso");
  look::apply(application);
  try {
    return run(application);
  } catch (const Error& error) {
    application.onFatal = nullptr;  // the window is gone
    application.endWith(error);
    return 1;
  }
}

}  // namespace qk
