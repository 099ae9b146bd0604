#include "platform/print/picture_labels.h"

#include "platform/print/bar_reader.h"

namespace qk {

namespace {

constexpr int kDotsPerInch = 203;  // of a common label printer
constexpr double kMillimetresPerInch = 25.4;

double dots(double millimetres) {
  return millimetres * kDotsPerInch / kMillimetresPerInch;
}

}  // namespace

int PictureLabels::dotsPerInch() const {
  return kDotsPerInch;
}

QPainter& PictureLabels::begin() {
  if (painter_) return *painter_;
  const QMarginsF& upright = paper_.margins;
  // A label that lies across has its left edge where the upright one has its top.
  const QMarginsF margins =
      isLandscape() ? QMarginsF(upright.top(), upright.right(), upright.bottom(), upright.left()) : upright;
  const QSizeF size = isLandscape() ? paper_.size.transposed() : paper_.size;
  sheet_ = std::make_unique<QImage>(QSizeF(dots(size.width()), dots(size.height())).toSize(),
                                    QImage::Format_RGB32);
  sheet_->setDotsPerMeterX(qRound(dots(1000)));
  sheet_->setDotsPerMeterY(qRound(dots(1000)));
  sheet_->fill(Qt::white);
  printable_ = QRectF(0, 0, dots(size.width() - margins.left() - margins.right()),
                      dots(size.height() - margins.top() - margins.bottom()));
  painter_ = std::make_unique<QPainter>(sheet_.get());
  painter_->translate(qRound(dots(margins.left())), qRound(dots(margins.top())));
  return *painter_;
}

void PictureLabels::painted(const QRectF& place, const Bars* bars) {
  leavesPaper_ = leavesPaper_ || !printable_.adjusted(-1, -1, 1, 1).contains(place);
  if (!bars) return;
  const int quiet = kDotsPerInch / 10;
  toRead_.push_back({painter_->transform().mapRect(place).toRect().adjusted(-quiet, 0, quiet, 0), *bars});
}

void PictureLabels::end() {
  if (!painter_) return;
  painter_.reset();
  for (const Read& each : toRead_)
    unreadable_ = unreadable_ || !saysTheSame(readBars(sheet_->copy(each.place), each.bars.symbology),
                                              each.bars.content, each.bars.symbology);
  toRead_.clear();
  pictures_.push_back(*sheet_);
  sheet_.reset();
}

}  // namespace qk
