// Shows a picture as large as it fits, never larger than it is, or a text in its place.
#pragma once

#include <QImage>
#include <QWidget>

namespace qk {

class PictureView : public QWidget {
  Q_OBJECT

 public:
  using QWidget::QWidget;

  void setImage(const QImage& image);
  const QImage& image() const { return image_; }
  void setText(const QString& text);  ///< takes the image away
  const QString& text() const { return text_; }

  QSize sizeHint() const override;
  QSize minimumSizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QImage image_;
  QString text_;
};

}  // namespace qk
