// What threatens the office, as the main window needs it: the line in the status bar, and the exchange folder
// that the lines listen to.
#include <algorithm>

#include "app/frmLindorm.h"
#include "ui_frmLindorm.h"

namespace qk {

void frmLindorm::connectWatch() {
  ui_->mnuBearbeiten->addAction(&watch_.showAction());
  connect(&watch_, &OfficeWatch::exchangeFolderChanged, this, &frmLindorm::showExchangeFolder);
  watch_.watchExchangeFolder(
      [this] { return std::any_of(lines_.begin(), lines_.end(), std::mem_fn(&UserControl1::isPolling)); });
}

void frmLindorm::showExchangeFolder() {
  for (UserControl1* line : lines_) line->showExchangeFolder(watch_.isExchangeFolderDeaf());
}

bool frmLindorm::setWettkampf(const QString& path) {
  if (!opening_.setWettkampf(path)) return false;
  watch_.watchCompetition(sWettkampf());
  return true;
}

}  // namespace qk
