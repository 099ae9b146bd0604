// Labels on the workstation's printers.
#pragma once

#include <memory>

#include "platform/print/current_printer.h"
#include "platform/print/positioned_labels.h"

class QPrinter;

namespace qk {

class PrinterLabels : public PositionedLabels {
 public:
  explicit PrinterLabels(const CurrentPrinter& current);
  ~PrinterLabels() override;

  QStringList printers() const override;
  QString currentPrinter() const override { return current_.setup().name; }
  /// The program's printer from now on: all else that it prints comes out there too until another one is
  /// chosen. Other programs don't follow. The one that is set up gets its paper back with that.
  void choosePrinter(const QString& name) override;
  bool isPaused(const QString& name) const override { return qk::isPaused(name); }
  LabelPaper paper(const QString& name) const override;

 protected:
  virtual std::unique_ptr<QPrinter> device() const;

  QPainter& begin() override;
  int dotsPerInch() const override;
  void end() override;

 private:
  CurrentPrinter current_;
  // The document that is open; the painter ends before its device.
  std::unique_ptr<QPrinter> printer_;
  std::unique_ptr<QPainter> painter_;
};

}  // namespace qk
