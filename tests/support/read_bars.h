// Reads a printed page as a scanner would.
#pragma once

#include <ZXing/ReadBarcode.h>

#include <QImage>

namespace qk::test {

/// What the one bar code on the picture says; "nothing read" without one.
inline QString barsOn(const QImage& picture) {
  const QImage grey = picture.convertToFormat(QImage::Format_Grayscale8);
  const ZXing::ImageView view(grey.constBits(), grey.width(), grey.height(), ZXing::ImageFormat::Lum,
                              static_cast<int>(grey.bytesPerLine()));
  const auto result = ZXing::ReadBarcode(view);
  return result.isValid() ? QString::fromStdWString(result.text()) : "nothing read";
}

/// What is dark on a page, in dots.
inline QRect inkOn(const QImage& page) {
  QRect found;
  for (int y = 0; y < page.height(); ++y)
    for (int x = 0; x < page.width(); ++x)
      if (qGray(page.pixel(x, y)) < 128) found |= QRect(x, y, 1, 1);
  return found;
}

}  // namespace qk::test
