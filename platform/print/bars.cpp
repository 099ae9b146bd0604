#include "platform/print/bars.h"

#include <zint.h>

#include <QPainter>
#include <memory>

namespace qk {
namespace {

constexpr int kQuietModules = 10;  // the widest that one of the three standards asks for

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

}  // namespace

std::vector<bool> barModules(Symbology symbology, const QString& content) {
  if (symbology == Symbology::Ean13 && content.size() != 12) return {};  // zint would pad it
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

QRect paintBars(QPainter& painter, const QPoint& corner, const std::vector<bool>& modules, int module,
                int height) {
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing, false);
  int x = corner.x() + kQuietModules * module;
  for (size_t i = 0; i < modules.size();) {
    size_t end = i;
    while (end < modules.size() && modules[end] == modules[i]) ++end;
    const int width = static_cast<int>(end - i) * module;
    if (modules[i]) painter.fillRect(QRect(x, corner.y(), width, height), Qt::black);
    x += width;
    i = end;
  }
  painter.restore();
  return {corner, QSize(x + kQuietModules * module - corner.x(), height)};
}

}  // namespace qk
