// Paper for tests: pages become images, so that a test can look at what would be printed.
#pragma once

#include <QImage>
#include <QList>
#include <QPainter>

#include "platform/print/paper.h"
#include "platform/runtime/error.h"

namespace qk::test {

class ImagePaper : public Paper {
 public:
  static constexpr int kDotsPerInch = 120;

  /// A4 without its margins by default, in millimetres.
  explicit ImagePaper(const QSizeF& millimetres = {180, 267}) : size_(millimetres) {}

  bool print(Pages& pages) override {
    names << pages.name();
    if (error != 0) throw Error(error);
    if (cancelled) return false;
    QImage sheet((size_ * kDotsPerInch / 25.4).toSize(), QImage::Format_RGB32);
    sheet.setDotsPerMeterX(qRound(kDotsPerInch / 0.0254));
    sheet.setDotsPerMeterY(qRound(kDotsPerInch / 0.0254));
    const int count = pages.layOut(sheet, sheet.size());
    for (int page = 0; page < count; ++page) {
      sheet.fill(Qt::white);
      QPainter painter(&sheet);
      pages.paint(painter, page);
      painter.end();
      sheets << sheet;
    }
    return true;
  }

  QList<QImage> sheets;
  QStringList names;
  bool cancelled = false;
  int error = 0;  ///< what printing fails with

 private:
  QSizeF size_;
};

}  // namespace qk::test
