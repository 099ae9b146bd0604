#include "platform/report/report_pages.h"

#include <QPageSize>

namespace qk::report {

ReportPages::ReportPages(Document& document, QString name, GoesOn goesOn)
    : document_(document), name_(std::move(name)), goesOn_(std::move(goesOn)) {}

QPageLayout ReportPages::sheet() const {
  const QSizeF size = document_.millimetres();
  const bool wide = size.width() > size.height();
  return QPageLayout(QPageSize(wide ? size.transposed() : size, QPageSize::Millimeter),
                     wide ? QPageLayout::Landscape : QPageLayout::Portrait, {});
}

int ReportPages::layOut(QPaintDevice&, const QSizeF&) {
  document_.finish();
  return document_.pageCount();
}

void ReportPages::paint(QPainter& painter, int page) const {
  document_.paint(painter, page);
}

bool ReportPages::goesOn(int page) {
  return !goesOn_ || goesOn_(page + 1, document_.pageCount());
}

}  // namespace qk::report
