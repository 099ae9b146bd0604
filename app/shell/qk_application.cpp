#include "app/shell/qk_application.h"

#include <QMessageBox>
#include <cstdlib>

#include "platform/dialog/message_boxes.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/unasked.h"

namespace qk {

QkApplication::QkApplication(int& argc, char** argv)
    : QApplication(argc, argv),
      // No destructor may write on the way out: what is in the folder and in the store stays as it is.
      endProgram([](int status) { std::_Exit(status); }) {}

bool QkApplication::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (const Error& error) {
    endWith(error);
    return false;
  }
}

void QkApplication::endWith(const Error& error) {
  if (ending_) return;
  ending_ = true;
  if (onFatal) onFatal();
  QString text = "Laufzeitfehler " + QString::number(error.number()) + ": " + error.description();
  if (!error.place().isEmpty()) text += "\n\n" + error.place();
  const SystemClock clock;
  const Unasked unasked({});  // out of a tick as a rule: somebody may be typing
  MessageBoxes(clock).note(text, BoxIcon::Critical, "QK-Intarso");
  endProgram(1);
}

}  // namespace qk
