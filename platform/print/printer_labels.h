// Labels on the workstation's printers.
#pragma once

#include <QHash>
#include <QPainter>
#include <memory>

#include "platform/print/current_printer.h"
#include "platform/print/label_output.h"

class QPrinter;

namespace qk {

class PrinterLabels : public LabelOutput {
 public:
  explicit PrinterLabels(const CurrentPrinter& current);
  ~PrinterLabels() override;

  QStringList printers() const override;
  QString currentPrinter() const override { return current_.setup().name; }
  /// The program's printer from now on: all else prints there too until another one is chosen. A printer
  /// chosen before gets the paper back that it was set up with.
  void choosePrinter(const QString& name) override;

  void setLandscape(bool landscape) override { landscape_ = landscape; }
  void moveTo(int x, int y) override { x_ = x, y_ = y; }
  void moveToColumn(int x) override { x_ = x; }
  void setFont(const FontSpec& font) override { font_ = font; }
  void printLine(const QString& text) override;
  void printBars(Symbology symbology, const QString& content) override;
  void endDocument() override;

 protected:
  virtual std::unique_ptr<QPrinter> device() const;

 private:
  void begin();
  double pixels(double twips) const;
  double twips(double pixels) const;
  QPoint corner() const;

  CurrentPrinter current_;
  QHash<QString, PrinterSetup> setups_;  // by name, of the printers left behind
  bool landscape_ = false;
  double x_ = 0, y_ = 0;  // twips
  FontSpec font_;
  // The document that is open; the painter ends before its device.
  std::unique_ptr<QPrinter> printer_;
  std::unique_ptr<QPainter> painter_;
};

}  // namespace qk
