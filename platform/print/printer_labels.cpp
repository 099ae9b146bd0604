#include "platform/print/printer_labels.h"

#include <QPrinter>

#include "platform/runtime/error.h"

namespace qk {
namespace {

constexpr int kPrinterError = 482;

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
  if (current_.setup().name == name) return;
  if (current_.kept().name == name) return current_.takeKept();
  if (!name.isEmpty() && !printers().contains(name))
    throw Error(kPrinterError, errorDescription(kPrinterError) + ": " + name);
  current_.takeForNow({name, {}, false});
}

LabelPaper PrinterLabels::paper(const QString& name) const {
  PrinterSetup setup = name.isEmpty() ? current_.setup() : PrinterSetup{name, {}, false};
  if (!printers().contains(setup.name)) setup = {};
  QPageLayout layout = makePrinter(setup)->pageLayout();
  layout.setUnits(QPageLayout::Millimeter);
  layout.setOrientation(QPageLayout::Portrait);
  return {layout.fullRect().size(), layout.minimumMargins()};
}

QPainter& PrinterLabels::begin() {
  if (painter_) return *painter_;
  std::unique_ptr<QPrinter> printer = device();
  printer->setDocName("Etikett");
  QPageLayout layout = printer->pageLayout();
  layout.setOrientation(isLandscape() ? QPageLayout::Landscape : QPageLayout::Portrait);
  layout.setMargins(layout.minimumMargins());
  printer->setPageLayout(layout);
  auto painter = std::make_unique<QPainter>();
  if (!painter->begin(printer.get())) throw Error(kPrinterError);
  printer_ = std::move(printer);
  painter_ = std::move(painter);
  return *painter_;
}

int PrinterLabels::dotsPerInch() const {
  return printer_->resolution();
}

void PrinterLabels::end() {
  if (!painter_) return;
  const bool ended = painter_->end() && printer_->printerState() != QPrinter::Error;
  painter_.reset();
  printer_.reset();
  if (!ended) throw Error(kPrinterError);
}

}  // namespace qk
