#include "platform/widgets/panel_splitter.h"

#include <QMouseEvent>
#include <QResizeEvent>

namespace qk {

namespace {

class ReleasingHandle : public QSplitterHandle {
 public:
  using QSplitterHandle::QSplitterHandle;

 protected:
  void mouseReleaseEvent(QMouseEvent* event) override {
    QSplitterHandle::mouseReleaseEvent(event);
    if (event->button() == Qt::LeftButton) Q_EMIT static_cast<PanelSplitter*>(splitter())->released();
  }
};

}  // namespace

QSplitterHandle* PanelSplitter::createHandle() {
  return new ReleasingHandle(orientation(), this);
}

void PanelSplitter::setPanelSize(int panel, int pixels) {
  if (pixels < 1) return;
  wanted_.insert(panel, pixels);
  if (isVisible()) applyPanelSizes();
}

void PanelSplitter::resizeEvent(QResizeEvent* event) {
  QSplitter::resizeEvent(event);
  if (!wanted_.isEmpty()) applyPanelSizes();
}

// The widest of the panels without a wish takes what the others leave: sizes only count against the whole.
void PanelSplitter::applyPanelSizes() {
  const int whole = (orientation() == Qt::Horizontal ? width() : height()) - handleWidth() * (count() - 1);
  QList<int> sizes = this->sizes();
  int left = whole;
  int open = -1;
  for (int panel = 0; panel < sizes.size(); ++panel) {
    if (const auto wish = wanted_.constFind(panel); wish != wanted_.constEnd()) {
      sizes[panel] = *wish;
    } else if (open < 0 || sizes[panel] > sizes[open]) {
      open = panel;
    }
  }
  for (int panel = 0; panel < sizes.size(); ++panel)
    if (panel != open) left -= sizes[panel];
  if (open >= 0) sizes[open] = qMax(1, left);
  if (whole > 0) setSizes(sizes);
  if (isVisible()) wanted_.clear();
}

}  // namespace qk
