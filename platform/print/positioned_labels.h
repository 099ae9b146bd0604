// What all outputs of labels have in common: where the next line or bar code stands, and how it is painted.
#pragma once

#include <QPainter>

#include "platform/print/label_output.h"

namespace qk {

class PositionedLabels : public LabelOutput {
 public:
  void setLandscape(bool landscape) override { landscape_ = landscape; }
  void moveTo(int x, int y) override { x_ = x, y_ = y; }
  void moveToColumn(int x) override { x_ = x; }
  void setFont(const FontSpec& font) override { font_ = font; }
  void printLine(const QString& text) override;
  void printBarcode(Symbology symbology, const QString& content, const QString& encoded) override;
  void endDocument() override;

 protected:
  /// The open document, begun where there is none; its origin is the corner of the printable area.
  virtual QPainter& begin() = 0;
  virtual int dotsPerInch() const = 0;
  /// Ends the open document, if there is one.
  virtual void end() = 0;
  /// What was painted, in the device's pixels; of bars also what they are.
  struct Bars {
    Symbology symbology;
    QString content;
  };
  virtual void painted(const QRectF& /*place*/, const Bars* /*bars*/) {}
  /// The content has no bars of that kind: nothing was painted.
  virtual void impossible(const Bars& /*bars*/) {}

  bool isLandscape() const { return landscape_; }

 private:
  double pixels(double twips) const;
  double twips(double pixels) const;
  QPoint corner() const;
  void paintText(const QString& text, const Bars* bars);

  bool landscape_ = false;
  double x_ = 0, y_ = 0;  // twips
  FontSpec font_;
};

}  // namespace qk
