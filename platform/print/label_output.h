// Labels: texts and bar codes at chosen positions, each label a document of its own.
//
// Positions are whole twips (1/1440 inch) from the corner of the printable area. A line of text or a bar code
// begins at the current position and leaves it at the same place below. What is asked for stays until
// something else is asked for; the position returns to the corner with each document.
#pragma once

#include <QMarginsF>
#include <QSizeF>
#include <QString>
#include <QStringList>

#include "platform/print/bars.h"
#include "platform/runtime/fonttext.h"

namespace qk {

/// An upright label, in millimetres.
struct LabelPaper {
  QSizeF size;
  QMarginsF margins;  ///< where the printer can't print
};

class LabelOutput {
 public:
  virtual ~LabelOutput() = default;

  virtual QStringList printers() const = 0;
  virtual QString currentPrinter() const = 0;
  /// What follows comes out of that printer. Error 482, naming it, when there is none of that name.
  virtual void choosePrinter(const QString& name) = 0;
  /// The queue of that printer stands still: what is printed waits there.
  virtual bool isPaused(const QString& name) const = 0;
  /// What that printer prints labels on; the empty name is the current one.
  virtual LabelPaper paper(const QString& name) const = 0;

  virtual void setLandscape(bool landscape) = 0;
  virtual void moveTo(int x, int y) = 0;
  virtual void moveToColumn(int x) = 0;
  virtual void setFont(const FontSpec& font) = 0;
  virtual void printLine(const QString& text) = 0;
  /// `encoded` is the content as a bar code font wants it, and is printed in the current font; where that
  /// font draws no bars that read as the content, bars are drawn in its place. Nothing for an empty text.
  virtual void printBarcode(Symbology symbology, const QString& content, const QString& encoded) = 0;
  /// Nothing comes out when nothing was printed. Error 482 when the printer refuses.
  virtual void endDocument() = 0;
};

}  // namespace qk
