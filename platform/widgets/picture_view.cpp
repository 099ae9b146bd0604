#include "platform/widgets/picture_view.h"

#include <QPainter>
#include <QStyle>

namespace qk {

namespace {

constexpr int kUsualCharacters = 48, kUsualLines = 16;
constexpr int kLeastCharacters = 20, kLeastLines = 6;

}  // namespace

void PictureView::setImage(const QImage& image) {
  image_ = image;
  text_.clear();
  update();
}

void PictureView::setText(const QString& text) {
  image_ = {};
  text_ = text;
  update();
}

QSize PictureView::sizeHint() const {
  return {kUsualCharacters * fontMetrics().averageCharWidth(), kUsualLines * fontMetrics().height()};
}

QSize PictureView::minimumSizeHint() const {
  return {kLeastCharacters * fontMetrics().averageCharWidth(), kLeastLines * fontMetrics().height()};
}

void PictureView::paintEvent(QPaintEvent*) {
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRect(rect().adjusted(0, 0, -1, -1));
  if (image_.isNull()) {
    painter.setPen(palette().color(QPalette::PlaceholderText));
    const int margin = fontMetrics().averageCharWidth();
    painter.drawText(rect().adjusted(margin, margin, -margin, -margin), Qt::AlignCenter | Qt::TextWordWrap,
                     text_);
    return;
  }
  const QSizeF room = QSizeF(size() - QSize(2, 2)) * devicePixelRatioF();
  QSizeF shown = image_.size();
  if (shown.width() > room.width() || shown.height() > room.height()) shown.scale(room, Qt::KeepAspectRatio);
  shown /= devicePixelRatioF();
  QRectF place(QPointF(), shown);
  place.moveCenter(QRectF(rect()).center());
  painter.setRenderHint(QPainter::SmoothPixmapTransform);
  painter.drawImage(place, image_);
}

}  // namespace qk
