// Labels: texts and bar codes at chosen positions, each label a document of its own.
//
// Positions are whole twips (1/1440 inch) from the corner of the printable area. A line of text or a bar code
// begins at the current position and leaves it at the same place below. What is asked for stays until
// something else is asked for; the position returns to the corner with each document.
#pragma once

#include <QString>
#include <QStringList>

#include "platform/print/bars.h"
#include "platform/runtime/fonttext.h"

namespace qk {

class LabelOutput {
 public:
  virtual ~LabelOutput() = default;

  virtual QStringList printers() const = 0;
  virtual QString currentPrinter() const = 0;
  /// What follows comes out of that printer. Error 482, naming it, when there is none of that name.
  virtual void choosePrinter(const QString& name) = 0;

  virtual void setLandscape(bool landscape) = 0;
  virtual void moveTo(int x, int y) = 0;
  virtual void moveToColumn(int x) = 0;
  virtual void setFont(const FontSpec& font) = 0;
  virtual void printLine(const QString& text) = 0;
  /// Bars without a bar code font; nothing for a content that the symbology can't hold.
  virtual void printBars(Symbology symbology, const QString& content) = 0;
  /// Nothing comes out when nothing was printed. Error 482 when the printer refuses.
  virtual void endDocument() = 0;
};

}  // namespace qk
