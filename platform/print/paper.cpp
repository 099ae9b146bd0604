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

/// A file stands never still.
bool mayWait(const QPrinter& printer, const AskAboutPaused& ask) {
  return !ask || !printer.outputFileName().isEmpty() || !isPaused(printer.printerName()) ||
         ask(printer.printerName());
}

void prepare(QPrinter& printer, const Pages& pages) {
  printer.setDocName(pages.name());
  if (const QPageLayout sheet = pages.sheet(); sheet.isValid()) {
    printer.setPageSize(sheet.pageSize());
    printer.setPageOrientation(sheet.orientation());
    printer.setFullPage(true);
    return;
  }
  printer.setPageMargins(
      QMarginsF(kMarginMillimetres, kMarginMillimetres, kMarginMillimetres, kMarginMillimetres),
      QPageLayout::Millimeter);
}

bool printOn(QPrinter& printer, Pages& pages) {
  const int count = pages.layOut(printer, printer.pageLayout().paintRectPixels(printer.resolution()).size());
  QPainter painter;
  if (!painter.begin(&printer)) throw Error(kPrinterError);
  for (int page = 0; page < count; ++page) {
    if (page > 0 && !printer.newPage()) throw Error(kPrinterError);
    pages.paint(painter, page);
    if (pages.goesOn(page)) continue;
    printer.abort();
    return false;
  }
  if (!painter.end() || printer.printerState() == QPrinter::Error) throw Error(kPrinterError);
  return true;
}

}  // namespace

bool CurrentPaper::print(Pages& pages) {
  const std::unique_ptr<QPrinter> printer = current_.make();
  prepare(*printer, pages);
  return mayWait(*printer, ask_) && printOn(*printer, pages);
}

bool PrinterPaper::print(Pages& pages) {
  const std::unique_ptr<QPrinter> printer = current_.make();
  prepare(*printer, pages);
  return printerChosen(*printer) && mayWait(*printer, ask_) && printOn(*printer, pages);
}

}  // namespace qk
