// The application object: the one place where an error that nothing below could handle ends the program.
#pragma once

#include <QApplication>
#include <functional>

#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"

namespace qk {

class QkApplication : public QApplication {
  Q_OBJECT

 public:
  QkApplication(int& argc, char** argv);

  /// What is stopped before the box of a fatal error comes up: nothing may read or write any more.
  std::function<void()> onFatal;
  /// Ends the process at once; a test puts its own here.
  std::function<void(int status)> endProgram;

  /// Shows the error and ends the program; only the first one counts.
  void endWith(const Error& error);

  bool notify(QObject* receiver, QEvent* event) override;

 private:
  bool ending_ = false;
};

}  // namespace qk
