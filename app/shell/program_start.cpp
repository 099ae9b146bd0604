#include "app/shell/program_start.h"

#include <QTextStream>
#include <QWidget>

#include "app/shell/kept_timelines.h"
#include "app/shell/password_question.h"
#include "platform/dialog/message_boxes.h"
#include "platform/look/look.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/files.h"
#include "platform/runtime/program_call.h"
#include "platform/settings/settings.h"

namespace qk {

namespace {

/// Whoever started from a console would wonder why nothing opens there.
void tellThatItRuns(const ProgramCall& call) {
  QTextStream console(stdout);
  console << call.alreadyRuns << Qt::endl;
  if (!call.path.isEmpty()) console << "Nicht geöffnet: " << call.path << Qt::endl;
}

int run(QkApplication& application, const Program& program) {
  SystemClock clock;
  SystemRandom random;
  EventLoopWaits waits;
  Files files;
  Settings settings(Settings::defaultFilePath());
  MessageBoxes dialogs(clock);

  const dao::SharedPasswords passwords(passwordQuestion(
      [&dialogs](const QString& prompt, const QString& title) { return dialogs.password(prompt, title); }));

  const dao::KeptTimelines timelines(timelinesIn(settings.filePath()));

  const ProgramCall call = program.call(QCoreApplication::arguments().mid(1));
  SingleInstance instance(settings.filePath(), call.kind);
  if (!instance.begin()) {
    tellThatItRuns(call);
    return 0;
  }
  return program.run(application, {clock, random, waits, files, settings, dialogs}, instance, call);
}

}  // namespace

int startProgram(int argc, char** argv, const Program& program) {
  // Before the application object: who asks on a console may have no screen.
  QStringList arguments;
  for (int i = 1; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  if (answeredCall(arguments, program.name, program.help)) return 0;
  QkApplication application(argc, argv);
  QCoreApplication::setApplicationName(program.title);
  look::apply(application);
  try {
    return run(application, program);
  } catch (const Error& error) {
    application.onFatal = nullptr;  // the window is gone
    application.endWith(error);
    return 1;
  }
}

void comeToFrontWith(SingleInstance& instance, QWidget& window) {
  QObject::connect(&instance, &SingleInstance::comeToFront, &window, [&window] {
    window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
    window.show();
    window.raise();
    window.activateWindow();
  });
}

}  // namespace qk
