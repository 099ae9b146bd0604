// Every window opens inside the screen, with the frame of the window manager around it.
//
// A window is sized and placed before anybody knows its frame. So each one is fitted twice: as it is shown,
// by the frame that the last window got, and when it becomes active for the first time, by its own. Later it
// stays where its user puts it.
#pragma once

#include <QMargins>
#include <QObject>

class QWidget;

namespace qk::look {

class InsideScreen : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  /// Installed on the application.
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  /// `own` is the frame of the window, null while nobody knows it.
  void fit(QWidget& window, const QMargins& own);
  QMargins lastFrame_{1, 28, 1, 1};  // of a common window manager, until a window has one
};

}  // namespace qk::look
