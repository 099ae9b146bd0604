#include "platform/print/bars.h"

#include <zint.h>

#include <QPainter>
#include <cmath>
#include <memory>

namespace qk {
namespace {

constexpr int kQuietModules = 10;  // the widest that one of the three standards asks for
// What is painted this fine is rendered again for the printer's coarser dots, and page languages fill every
// dot that a bar touches: bars would grow by half a dot at each edge, and the narrow spaces close.
constexpr double kFineModule = 6;   // device pixels
constexpr double kNarrower = 0.19;  // of a module, at each edge

int zintSymbology(Symbology symbology) {
  switch (symbology) {
    case Symbology::Code128:
      return BARCODE_CODE128;
    case Symbology::Code39:
      return BARCODE_CODE39;
    case Symbology::Ean13:
      return BARCODE_EANX;
  }
  return 0;
}

struct Delete {
  void operator()(zint_symbol* symbol) const { ZBarcode_Delete(symbol); }
};

std::vector<QRectF> ink(const QPointF& corner, const std::vector<bool>& modules, double module, double height,
                        double scale) {
  const double inset = module * scale >= kFineModule ? kNarrower * module : 0;
  std::vector<QRectF> bars;
  for (size_t i = 0; i < modules.size();) {
    size_t end = i;
    while (end < modules.size() && modules[end] == modules[i]) ++end;
    if (modules[i])
      bars.emplace_back(corner.x() + static_cast<double>(i) * module + inset, corner.y(),
                        static_cast<double>(end - i) * module - 2 * inset, height);
    i = end;
  }
  return bars;
}

void paintInk(QPainter& painter, const std::vector<QRectF>& bars) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  for (const QRectF& bar : bars) painter.fillRect(bar, Qt::black);
  painter.restore();
}

}  // namespace

QString nameOf(Symbology symbology) {
  switch (symbology) {
    case Symbology::Code128:
      return "Code 128";
    case Symbology::Code39:
      return "Code 39";
    case Symbology::Ean13:
      return "EAN 13";
  }
  return {};
}

std::vector<bool> barModules(Symbology symbology, const QString& content) {
  if (symbology == Symbology::Ean13 && content.size() != 12 && content.size() != 13)
    return {};  // zint would pad it
  const std::unique_ptr<zint_symbol, Delete> symbol(ZBarcode_Create());
  symbol->symbology = zintSymbology(symbology);
  const QByteArray bytes = content.toLatin1();
  if (QString::fromLatin1(bytes) != content || bytes.isEmpty()) return {};
  const int result = ZBarcode_Encode(symbol.get(), reinterpret_cast<const unsigned char*>(bytes.constData()),
                                     static_cast<int>(bytes.size()));
  if (result >= ZINT_ERROR) return {};
  std::vector<bool> modules;
  const unsigned char* row = symbol->encoded_data[symbol->rows - 1];
  for (int x = 0; x < symbol->width; ++x) modules.push_back((row[x / 8] >> (x % 8)) & 1);
  return modules;
}

std::vector<QRectF> barsIn(const QRectF& box, const std::vector<bool>& modules, double scale) {
  const double count = static_cast<double>(modules.size()) + 2 * kQuietModules;
  double module = box.width() / count;
  if (module * scale >= 1) module = std::floor(module * scale) / scale;
  double left = box.left() + (box.width() - module * count) / 2 + kQuietModules * module;
  if (scale > 0) left = std::round(left * scale) / scale;
  return ink(QPointF(left, box.top()), modules, module, box.height(), scale);
}

QRect paintBars(QPainter& painter, const QPoint& corner, const std::vector<bool>& modules, int module,
                int height) {
  paintInk(painter, ink(QPointF(corner.x() + kQuietModules * module, corner.y()), modules, module, height,
                        painter.transform().m11()));
  return {corner, QSize((static_cast<int>(modules.size()) + 2 * kQuietModules) * module, height)};
}

void paintBars(QPainter& painter, const QRectF& box, const std::vector<bool>& modules) {
  paintInk(painter, barsIn(box, modules, painter.transform().m11()));
}

}  // namespace qk
