#include "platform/print/bar_code.h"

#include <zint.h>

#include <QPainter>
#include <cmath>
#include <memory>

namespace qk {

namespace {

constexpr qsizetype kLongest = 80;

int symbologyOf(BarCode kind) {
  switch (kind) {
    case BarCode::Code128:
      return BARCODE_CODE128;
    case BarCode::Code39:
      return BARCODE_CODE39;
    case BarCode::Ean13:
      return BARCODE_EANX;
  }
  return BARCODE_CODE128;
}

QString nameOf(BarCode kind) {
  return kind == BarCode::Code128 ? "Code 128" : kind == BarCode::Code39 ? "Code 39" : "EAN 13";
}

bool isEan13(const QString& text) {
  if (text.size() != 12 && text.size() != 13) return false;
  for (const QChar c : text)
    if (c < u'0' || c > u'9') return false;
  return true;
}

}  // namespace

Bars barsOf(BarCode kind, const QString& text) {
  Bars bars;
  const QString problem =
      QString("\"%1\" lässt sich nicht als %2 drucken").arg(text.left(kLongest), nameOf(kind));
  // The library makes shorter codes of fewer digits; what is wanted here has all of them.
  if (text.isEmpty() || text.size() > kLongest || (kind == BarCode::Ean13 && !isEan13(text))) {
    bars.problem = problem;
    return bars;
  }
  const std::unique_ptr<zint_symbol, decltype(&ZBarcode_Delete)> symbol(ZBarcode_Create(), ZBarcode_Delete);
  symbol->symbology = symbologyOf(kind);
  symbol->input_mode = UNICODE_MODE;
  const QByteArray utf8 = text.toUtf8();
  const int result = ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(utf8.constData()),
                                     static_cast<int>(utf8.size()));
  if (result >= ZINT_ERROR) {
    bars.problem = problem;
    return bars;
  }
  for (int i = 0; i < symbol->width; ++i)
    bars.modules.push_back(((symbol->encoded_data[0][i >> 3] >> (i & 7)) & 1) != 0);
  return bars;
}

void paintBars(QPainter& painter, const QRectF& box, const Bars& bars) {
  if (bars.modules.empty()) return;
  const double scale = painter.transform().m11();
  const double count = static_cast<double>(bars.modules.size()) + 2 * kQuietModules;
  double module = box.width() / count;
  if (module * scale >= 1) module = std::floor(module * scale) / scale;
  double left = box.left() + (box.width() - module * count) / 2 + kQuietModules * module;
  if (scale > 0) left = std::round(left * scale) / scale;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (size_t i = 0; i < bars.modules.size();) {
    size_t end = i;
    while (end < bars.modules.size() && bars.modules[end] == bars.modules[i]) ++end;
    if (bars.modules[i])
      painter.fillRect(QRectF(left + static_cast<double>(i) * module, box.top(),
                              static_cast<double>(end - i) * module, box.height()),
                       Qt::black);
    i = end;
  }
  painter.restore();
}

}  // namespace qk
