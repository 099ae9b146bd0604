// A label that shortens its text in the middle when the room is too small, and tells the whole as its
// tooltip. text() stays whole.
#pragma once

#include <QLabel>

namespace qk {

class PathLabel : public QLabel {
  Q_OBJECT

 public:
  explicit PathLabel(QWidget* parent = nullptr);

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  bool event(QEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

}  // namespace qk
