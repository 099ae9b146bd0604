// A splitter that tells when a handle was let go, so that a panel's size can be kept.
#pragma once

#include <QSplitter>

namespace qk {

class PanelSplitter : public QSplitter {
  Q_OBJECT

 public:
  using QSplitter::QSplitter;

  /// Gives one panel a size in device-independent pixels; the others share the rest by their stretch. Sizes
  /// below 1 leave the layout as it is. May be called before the splitter is shown.
  void setPanelSize(int panel, int pixels);
  int panelSize(int panel) const { return sizes().value(panel); }

 Q_SIGNALS:
  void released();

 protected:
  QSplitterHandle* createHandle() override;
  void resizeEvent(QResizeEvent* event) override;

 private:
  void applyPanelSizes();
  QHash<int, int> wanted_;  // by panel, until the splitter has its own size
};

}  // namespace qk
