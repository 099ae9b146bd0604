#include "app/start.h"

#include "app/frmLindorm.h"
#include "app/password_question.h"
#include "app/qk_application.h"
#include "app/single_instance.h"
#include "app/waiting_window.h"
#include "platform/dialog/message_boxes.h"
#include "platform/look/look.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/files.h"
#include "platform/settings/settings.h"

namespace qk {

namespace {

void bringToFront(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  window.activateWindow();
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

  SingleInstance instance(settings.filePath());
  if (!instance.begin()) return 0;

  GlobalVariablen global;
  frmLindorm window({clock, random, waits, files, settings, dialogs}, global);
  const dao::WaitingSign waiting = showWaitingIn(window);
  application.onFatal = [&window] { window.stopPolling(); };
  QObject::connect(&instance, &SingleInstance::comeToFront, &window, [&window] { bringToFront(window); });
  // A path with blanks may come unquoted.
  if (!window.form_load(QCoreApplication::arguments().mid(1).join(' '))) return 0;
  window.showMaximized();
  return QApplication::exec();
}

}  // namespace

int start(int argc, char** argv) {
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
