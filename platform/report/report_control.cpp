#include "platform/report/report_control.h"

#include <QApplication>
#include <QPointer>
#include <QWidget>

#include "platform/report/document.h"
#include "platform/report/parser.h"
#include "platform/report/preview.h"
#include "platform/report/report_pages.h"
#include "platform/runtime/clock.h"
#include "platform/widgets/hourglass.h"

namespace qk {

bool ReportControl::run(const report::Order& order, QWidget* parent) {
  return run(report::readReport(workplace_.files, order.reportFile), order, parent);
}

bool ReportControl::run(report::Definition definition, const report::Order& order, QWidget* parent) {
  report::Input input;
  input.dataFile = order.dataFile;
  if (!order.subreport.isEmpty()) input.partFiles.insert(order.subreport, order.subreportFile);
  report::readParameter(order.parameter, input.parameters);
  input.table = order.rows;
  input.now = workplace_.clock.now();
  if (order.destination == report::Order::Destination::Printer)
    return print(std::move(definition), std::move(input), order);
  show(std::move(definition), std::move(input), order, parent);
  return true;
}

bool ReportControl::print(report::Definition definition, report::Input input, const report::Order& order) {
  const Hourglass hourglass;
  report::Document document(std::move(definition), std::move(input));
  report::ReportPages pages(document, order.windowTitle);
  return papers_.current.print(pages);
}

void ReportControl::show(report::Definition definition, report::Input input, const report::Order& order,
                         QWidget* parent) {
  std::unique_ptr<report::Document> document;
  {
    const Hourglass hourglass;
    document = std::make_unique<report::Document>(std::move(definition), std::move(input));
  }
  if (!parent) parent = QApplication::activeModalWidget();
  const QPointer<ReportPreview> window =
      new ReportPreview(workplace_, papers_.asking, *document, order.windowTitle, order.zoom,
                        parent ? parent : QApplication::activeWindow());
  if (order.place) order.place(*window);
  document->start();
  const PlainCursor cursor;
  window->exec();
  delete window.data();
}

}  // namespace qk
