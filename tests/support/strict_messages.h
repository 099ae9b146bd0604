// While it lives, a qWarning or qCritical fails the test, except the known noise of a platform without a
// screen and what the test said it expects.
#pragma once

#include <QRegularExpression>
#include <vector>

#include "tests/support/expectations.h"

namespace qk::test {

class StrictMessages {
 public:
  explicit StrictMessages(Complain complain = failTest);
  ~StrictMessages();
  StrictMessages(const StrictMessages&) = delete;
  StrictMessages& operator=(const StrictMessages&) = delete;

  /// The next message that matches is expected; without one the test fails at the end.
  void expect(const QString& pattern);

 private:
  static void handle(QtMsgType type, const QMessageLogContext& context, const QString& message);
  bool isExpected(const QString& message);

  Complain complain_;
  std::vector<QRegularExpression> expected_;
  StrictMessages* outer_;
  QtMessageHandler previous_;
};

}  // namespace qk::test
