// The one line in the status bar that says what threatens the office: the gravest thing, and how many more
// there are. A click shows the details. It takes no focus: whoever types goes on typing.
#pragma once

#include <QToolButton>

#include "app/watch/threat_book.h"

namespace qk {

class WatchLine : public QToolButton {
  Q_OBJECT

 public:
  explicit WatchLine(QWidget* parent = nullptr);

  /// Hides where there is nothing to say. What begins to threaten is told to a screen reader once.
  void show(const ThreatBook& book);

  /// As wide as what it says: what has to give way is the list of the keys beside it.
  QSize sizeHint() const override;
  QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  ThreatLevel level_ = ThreatLevel::Calm;
  int count_ = 0;
};

}  // namespace qk
