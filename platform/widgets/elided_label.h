// A label of one line that gives way: what doesn't fit ends in dots and stands in the tool tip. Its text is
// plain.
#pragma once

#include <QLabel>

namespace qk {

class ElidedLabel : public QLabel {
  Q_OBJECT

 public:
  using QLabel::QLabel;

  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;
  bool event(QEvent* event) override;
};

}  // namespace qk
