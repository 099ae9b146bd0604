// Labels written down operation by operation, on two printers that aren't there.
#pragma once

#include "platform/print/label_output.h"
#include "platform/runtime/error.h"

namespace qk::test {

class RecordedLabels : public LabelOutput {
 public:
  QStringList printers() const override { return installed; }
  QString currentPrinter() const override { return current; }
  void choosePrinter(const QString& name) override {
    if (!printers().contains(name)) throw Error(482);
    current = name;
    lines << "printer " + name;
  }
  void setLandscape(bool landscape) override { lines << (landscape ? "landscape" : "portrait"); }
  void moveTo(int x, int y) override { lines << QString("at %1 %2").arg(x).arg(y); }
  void moveToColumn(int x) override { lines << QString("column %1").arg(x); }
  void setFont(const FontSpec& font) override { lines << "font " + font.name; }
  void printLine(const QString& text) override { lines << "line " + text; }
  bool isPaused(const QString& name) const override { return paused.contains(name); }
  LabelPaper paper(const QString&) const override { return {{62, 40}, {2, 2, 2, 2}}; }
  void printBarcode(Symbology symbology, const QString& content, const QString& encoded) override {
    lines << QString("bars %1 %2 %3").arg(static_cast<int>(symbology)).arg(content, encoded);
  }
  void endDocument() override { lines << "end"; }

  QString current = "Laser";
  QStringList installed = {"Laser", "Etikett"};
  QStringList paused;
  QStringList lines;
};

}  // namespace qk::test
