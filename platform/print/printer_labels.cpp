#include "platform/print/printer_labels.h"

#include <QFontMetricsF>
#include <QPrinter>

#include "platform/runtime/error.h"

namespace qk {
namespace {

constexpr int kPrinterError = 482;
constexpr double kTwipsPerInch = 1440;
constexpr double kMillimetresPerInch = 25.4;
// Two dots of a common label printer (203 dpi), the least that hand scanners read well.
constexpr double kModuleMillimetres = 0.25;
constexpr double kBarHeightMillimetres = 10, kBelowBarsMillimetres = 1;

QFont qtFont(const FontSpec& spec) {
  QFont font(spec.name);
  if (spec.size > 0) font.setPointSizeF(spec.size);
  font.setBold(spec.bold);
  font.setItalic(spec.italic);
  font.setUnderline(spec.underline);
  font.setStrikeOut(spec.strikethrough);
  return font;
}

double inTwips(double millimetres) {
  return millimetres / kMillimetresPerInch * kTwipsPerInch;
}

}  // namespace

PrinterLabels::PrinterLabels(const CurrentPrinter& current) : current_(current) {}

PrinterLabels::~PrinterLabels() = default;

std::unique_ptr<QPrinter> PrinterLabels::device() const {
  return current_.make();
}

QStringList PrinterLabels::printers() const {
  QStringList names;
  for (const InstalledPrinter& printer : installedPrinters()) names << printer.name;
  return names;
}

void PrinterLabels::choosePrinter(const QString& name) {
  const PrinterSetup former = current_.setup();
  if (former.name == name) return;
  if (!name.isEmpty() && !printers().contains(name))
    throw Error(kPrinterError, errorDescription(kPrinterError) + ": " + name);
  setups_.insert(former.name, former);
  current_.keep(setups_.value(name, PrinterSetup{name, {}, false}));
}

void PrinterLabels::begin() {
  if (painter_) return;
  std::unique_ptr<QPrinter> printer = device();
  printer->setDocName("Etikett");
  QPageLayout layout = printer->pageLayout();
  layout.setOrientation(landscape_ ? QPageLayout::Landscape : QPageLayout::Portrait);
  layout.setMargins(layout.minimumMargins());
  printer->setPageLayout(layout);
  auto painter = std::make_unique<QPainter>();
  if (!painter->begin(printer.get())) throw Error(kPrinterError);
  printer_ = std::move(printer);
  painter_ = std::move(painter);
}

double PrinterLabels::pixels(double twips) const {
  return twips * printer_->resolution() / kTwipsPerInch;
}

double PrinterLabels::twips(double pixels) const {
  return pixels * kTwipsPerInch / printer_->resolution();
}

QPoint PrinterLabels::corner() const {
  return QPointF(pixels(x_), pixels(y_)).toPoint();
}

void PrinterLabels::printLine(const QString& text) {
  begin();
  painter_->setFont(qtFont(font_));
  const QFontMetricsF metrics = painter_->fontMetrics();
  painter_->drawText(QPointF(corner()) + QPointF(0, metrics.ascent()), text);
  y_ += twips(metrics.lineSpacing());
}

void PrinterLabels::printBars(Symbology symbology, const QString& content) {
  const std::vector<bool> modules = barModules(symbology, content);
  if (modules.empty()) return;
  begin();
  const int module = qMax(1, qRound(pixels(inTwips(kModuleMillimetres))));
  paintBars(*painter_, corner(), modules, module, qRound(pixels(inTwips(kBarHeightMillimetres))));
  y_ += inTwips(kBarHeightMillimetres + kBelowBarsMillimetres);
}

void PrinterLabels::endDocument() {
  x_ = y_ = 0;
  if (!painter_) return;
  const bool ended = painter_->end() && printer_->printerState() != QPrinter::Error;
  painter_.reset();
  printer_.reset();
  if (!ended) throw Error(kPrinterError);
}

}  // namespace qk
