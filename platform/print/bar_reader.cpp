#include "platform/print/bar_reader.h"

#include <ZXing/ReadBarcode.h>

#include <QFont>
#include <QFontMetrics>
#include <QPainter>

namespace qk {

namespace {

constexpr int kSamplePixels = 96;  // a font's height: large enough for whole pixels of its narrowest bar
constexpr int kQuiet = 60;

ZXing::BarcodeFormat formatOf(Symbology symbology) {
  switch (symbology) {
    case Symbology::Code128:
      return ZXing::BarcodeFormat::Code128;
    case Symbology::Code39:
      return ZXing::BarcodeFormat::Code39;
    case Symbology::Ean13:
      return ZXing::BarcodeFormat::EAN13;
  }
  return ZXing::BarcodeFormat::None;
}

}  // namespace

QFont qtFontOf(const FontSpec& spec) {
  QFont font(spec.name);
  if (spec.size > 0) font.setPointSizeF(spec.size);
  font.setBold(spec.bold);
  font.setItalic(spec.italic);
  font.setUnderline(spec.underline);
  font.setStrikeOut(spec.strikethrough);
  return font;
}

QString readBars(const QImage& image, Symbology symbology) {
  if (image.isNull()) return {};
  const QImage gray = image.convertToFormat(QImage::Format_Grayscale8);
  const ZXing::ImageView view(gray.constBits(), gray.width(), gray.height(), ZXing::ImageFormat::Lum,
                              static_cast<int>(gray.bytesPerLine()));
  const auto result =
      ZXing::ReadBarcode(view, ZXing::DecodeHints().setFormats(formatOf(symbology)).setTryRotate(false));
  return result.isValid() ? QString::fromStdWString(result.text()) : QString();
}

bool saysTheSame(const QString& read, const QString& content, Symbology symbology) {
  if (read.isEmpty()) return false;
  // A leading zero may be left out: it is then a code of twelve digits.
  return symbology == Symbology::Ean13 ? read.rightJustified(13, u'0').left(12) == content.left(12)
                                       : read == content;
}

bool drawsBars(const FontSpec& spec, Symbology symbology, const QString& content, const QString& encoded) {
  if (encoded.isEmpty()) return false;
  QFont font = qtFontOf(spec);
  font.setPixelSize(kSamplePixels);
  const QFontMetrics metrics(font);
  QImage sample(metrics.horizontalAdvance(encoded) + 2 * kQuiet, metrics.height(), QImage::Format_Grayscale8);
  sample.fill(Qt::white);
  QPainter painter(&sample);
  painter.setFont(font);
  painter.drawText(kQuiet, metrics.ascent(), encoded);
  painter.end();
  return saysTheSame(readBars(sample, symbology), content, symbology);
}

}  // namespace qk
