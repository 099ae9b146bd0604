// What threatens the office and what has passed, in a window beside the work that keeps up with the book.
#pragma once

#include <QDialog>
#include <memory>

#include "app/watch/threat_book.h"
#include "platform/runtime/clock.h"

namespace Ui {
class frmWarnungen;
}

namespace qk {

class frmWarnungen : public QDialog {
  Q_OBJECT

 public:
  /// Clock and book outlive it.
  frmWarnungen(const Clock& clock, const ThreatBook& book, QWidget* parent);
  ~frmWarnungen() override;

  /// Shows what the book says now; whoever reads stays where he is.
  void refresh();

 Q_SIGNALS:
  void handbookWanted(const QString& page);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  const Clock& clock_;
  const ThreatBook& book_;
  std::unique_ptr<Ui::frmWarnungen> ui_;
};

}  // namespace qk
