#include "tests/support/strict_messages.h"

#include <QCoreApplication>
#include <QThread>
#include <algorithm>

namespace qk::test {

namespace {

StrictMessages* innermost =
    nullptr;  // the message handler is a plain function and has no other way to its object

bool isPlatformNoise(const QString& message) {
  static const QRegularExpression noise(
      "^(This plugin does not support |QStandardPaths: |Could not find the Qt platform |"
      "QFontDatabase: Cannot find font directory|Populating font family aliases|"
      "qt\\.qpa\\.|qt\\.svg|QPrintDialog: Cannot be used on non-native printers)");
  return noise.match(message).hasMatch();
}

}  // namespace

StrictMessages::StrictMessages(Complain complain) : complain_(std::move(complain)), outer_(innermost) {
  innermost = this;
  previous_ = qInstallMessageHandler(&StrictMessages::handle);
}

StrictMessages::~StrictMessages() {
  qInstallMessageHandler(previous_);
  innermost = outer_;
  for (const QRegularExpression& left : expected_) complain_("never said: " + left.pattern());
}

void StrictMessages::expect(const QString& pattern) {
  expected_.emplace_back(pattern);
}

bool StrictMessages::isExpected(const QString& message) {
  const auto found = std::find_if(expected_.begin(), expected_.end(), [&](const QRegularExpression& pattern) {
    return pattern.match(message).hasMatch();
  });
  if (found == expected_.end()) return false;
  expected_.erase(found);
  return true;
}

void StrictMessages::handle(QtMsgType type, const QMessageLogContext& context, const QString& message) {
  StrictMessages* self = innermost;
  if (!self) return;
  const bool grave = type == QtWarningMsg || type == QtCriticalMsg;
  if (grave && !isPlatformNoise(message) && !self->isExpected(message)) {
    self->complain_("unexpected warning: " + message);
    return;
  }
  if (self->previous_ && !grave) self->previous_(type, context, message);
}

}  // namespace qk::test
