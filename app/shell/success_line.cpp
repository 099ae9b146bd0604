#include "app/shell/success_line.h"

#include <QMainWindow>
#include <QStatusBar>
#include <QStatusTipEvent>

namespace qk {

namespace {

constexpr int kMilliseconds = 10000;

}  // namespace

SuccessLine::SuccessLine(QMainWindow& window) : window_(window) {
  over_.setSingleShot(true);
  over_.setInterval(kMilliseconds);
  window.installEventFilter(this);
}

void SuccessLine::say(const QString& text) {
  text_ = text;
  over_.start();
  window_.statusBar()->showMessage(text_, kMilliseconds);
}

bool SuccessLine::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() != QEvent::StatusTip || watched != &window_ || !over_.isActive()) return false;
  if (!static_cast<QStatusTipEvent*>(event)->tip().isEmpty()) return false;
  window_.statusBar()->showMessage(text_, over_.remainingTime());
  return true;
}

}  // namespace qk
