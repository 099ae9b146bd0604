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

}  // namespace qk::test
