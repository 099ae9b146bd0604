// A report as pages for a printer.
#pragma once

#include "platform/print/paper.h"
#include "platform/report/document.h"

namespace qk::report {

class ReportPages : public Pages {
 public:
  ReportPages(Document& document, QString name, GoesOn goesOn = {});

  QString name() const override { return name_; }
  QPageLayout sheet() const override;
  int layOut(QPaintDevice& device, const QSizeF& page) override;
  void paint(QPainter& painter, int page) const override;
  bool goesOn(int page) override;

 private:
  Document& document_;
  QString name_;
  GoesOn goesOn_;
};

}  // namespace qk::report
