// What threatens the office, as the main window needs it: the line in the status bar, and the exchange folder
// that the lines listen to.
#include <QScopedValueRollback>
#include <algorithm>

#include "app/frmLindorm.h"
#include "backup/frmSicherung.h"
#include "ui_frmLindorm.h"

namespace qk {

void frmLindorm::connectWatch() {
  ui_->mnuBearbeiten->addAction(&watch_.showAction());
  connect(&watch_, &OfficeWatch::exchangeFolderChanged, this, &frmLindorm::showExchangeFolder);
  watch_.watchCopies(copies_);
  watch_.watchExchangeFolder(
      [this] { return std::any_of(lines_.begin(), lines_.end(), std::mem_fn(&UserControl1::isPolling)); });
}

void frmLindorm::showExchangeFolder() {
  for (UserControl1* line : lines_) line->showExchangeFolder(watch_.isExchangeFolderDeaf());
}

/// The copies' connection ends before the office's, so that that is the last one.
void frmLindorm::leaveCompetition() {
  const QScopedValueRollback leaving(leaving_, true);
  makeClosingCopy(copies_, this);
  copies_.close();
  watch_.watchCompetition({});
}

bool frmLindorm::setWettkampf(const QString& path) {
  leaveCompetition();
  const bool opened = opening_.setWettkampf(path);
  // After a failure what was open before stays open.
  if (global_.Datenbank) {
    copies_.open(sWettkampf());
    watch_.watchCompetition(sWettkampf());
  }
  return opened;
}

}  // namespace qk
