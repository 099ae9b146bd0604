// Labels on the workstation's printers.
#pragma once

#include <QHash>
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
  /// The program's printer from now on: all else prints there too until another one is chosen. A printer
  /// chosen before gets the paper back that it was set up with.
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
  QHash<QString, PrinterSetup> setups_;  // by name, of the printers left behind
  // The document that is open; the painter ends before its device.
  std::unique_ptr<QPrinter> printer_;
  std::unique_ptr<QPainter> painter_;
};

}  // namespace qk
