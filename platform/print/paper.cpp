#include "platform/print/paper.h"

#include <QApplication>
#include <QPainter>
#include <QPointer>
#include <QPrintDialog>
#include <QPrinter>
#include <memory>

#include "platform/runtime/error.h"

namespace qk {

namespace {

constexpr int kPrinterError = 482;
constexpr double kMarginMillimetres = 15;

bool printerChosen(QPrinter& printer) {
  QWidget* parent = QApplication::activeModalWidget();
  // The dialog may go with its parent while it is open.
  const QPointer<QPrintDialog> dialog =
      new QPrintDialog(&printer, parent ? parent : QApplication::activeWindow());
  const bool chosen = dialog->exec() == QDialog::Accepted && dialog;
  delete dialog.data();
  return chosen;
}

}  // namespace

bool PrinterPaper::print(Pages& pages) {
  const std::unique_ptr<QPrinter> device = current_.make();
  QPrinter& printer = *device;
  printer.setDocName(pages.name());
  printer.setPageMargins(
      QMarginsF(kMarginMillimetres, kMarginMillimetres, kMarginMillimetres, kMarginMillimetres),
      QPageLayout::Millimeter);
  if (!printerChosen(printer)) return false;
  const int count = pages.layOut(printer, printer.pageLayout().paintRectPixels(printer.resolution()).size());
  QPainter painter;
  if (!painter.begin(&printer)) throw Error(kPrinterError);
  for (int page = 0; page < count; ++page) {
    if (page > 0 && !printer.newPage()) throw Error(kPrinterError);
    pages.paint(painter, page);
  }
  if (!painter.end() || printer.printerState() == QPrinter::Error) throw Error(kPrinterError);
  return true;
}

}  // namespace qk
