// The quiet line in the status bar that says what went well. It outlives the hint of the button that was
// pressed: pointing elsewhere takes a hint away, not this.
#pragma once

#include <QObject>
#include <QTimer>

class QMainWindow;

namespace qk {

class SuccessLine : public QObject {
  Q_OBJECT

 public:
  explicit SuccessLine(QMainWindow& window);

  /// Stands for a few seconds, or until the next one.
  void say(const QString& text);

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  QMainWindow& window_;
  QString text_;
  QTimer over_;
};

}  // namespace qk
