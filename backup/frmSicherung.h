// The last copy of a competition that is being closed: how far it is, and a way to end without it.
#pragma once

#include <QDialog>
#include <QTimer>
#include <memory>

#include "backup/copy_keeper.h"

namespace Ui {
class frmSicherung;
}

namespace qk {

class frmSicherung : public QDialog {
  Q_OBJECT

 public:
  /// The keeper outlives it.
  explicit frmSicherung(CopyKeeper& keeper, QWidget* parent = nullptr);
  ~frmSicherung() override;

  /// Makes the copy, if anything has changed since the last one. Closed by its end, or by whoever goes on
  /// without it. A failure stays to be read, with a second attempt on offer.
  void run();

  void reject() override;

 private:
  void begin();
  void look();

  CopyKeeper& keeper_;
  std::unique_ptr<Ui::frmSicherung> ui_;
  QTimer progress_;
};

/// To be called when the competition is about to close, while it is still open. Shows nothing where the copy
/// is there in a moment or copies are switched off. Runs the event loop: whoever calls it stands on solid
/// ground.
void makeClosingCopy(CopyKeeper& keeper, QWidget* parent);

}  // namespace qk
