#include "app/shell/waiting_window.h"

#include <QApplication>
#include <QStatusBar>
#include <algorithm>

namespace qk {

namespace {

/// A wait may begin in the midst of painting: a view reads the rows that it is about to show.
bool isPainting(const QWidget& window) {
  const QList<QWidget*> parts = window.findChildren<QWidget*>();
  return window.testAttribute(Qt::WA_WState_InPaintEvent) ||
         std::any_of(parts.begin(), parts.end(),
                     [](const QWidget* part) { return part->testAttribute(Qt::WA_WState_InPaintEvent); });
}

void paintWindows() {
  for (QWidget* window : QApplication::topLevelWidgets())
    if (window->isVisible() && !isPainting(*window)) window->repaint();
}

}  // namespace

dao::WaitingSign showWaitingIn(QStatusBar& bar) {
  return dao::WaitingSign(
      [&bar] {
        bar.showMessage("Der Datenbankserver antwortet nicht ...");
        paintWindows();
      },
      [&bar] { bar.clearMessage(); });
}

dao::WorkSign showWorkIn(QStatusBar& bar, const QString& what) {
  return dao::WorkSign(
      [&bar, what](double done) {
        bar.showMessage(QString("%1: %2 %").arg(what).arg(static_cast<int>(100 * done)));
        paintWindows();
      },
      [&bar] { bar.clearMessage(); });
}

}  // namespace qk
