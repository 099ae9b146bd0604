// The one door to printed pages. A test stands in this door and looks at the pages as images.
#pragma once

#include <QPageLayout>
#include <QSizeF>
#include <QString>
#include <functional>

#include "platform/print/current_printer.h"

class QPaintDevice;
class QPainter;

namespace qk {

/// Something that is printed page by page.
class Pages {
 public:
  virtual ~Pages() = default;

  /// What the print job is called.
  virtual QString name() const = 0;
  /// The sheet that the pages are made for; its margins are theirs. Not valid: whatever paper there is, with
  /// margins of 15 mm.
  virtual QPageLayout sheet() const { return {}; }
  /// Divides itself into pages of that size (in the device's pixels, without its margins); how many there
  /// are, at least one.
  virtual int layOut(QPaintDevice& device, const QSizeF& page) = 0;
  /// Paints a page, counted from 0; the origin is the corner of the printable area, of the sheet where the
  /// pages have their own.
  virtual void paint(QPainter& painter, int page) const = 0;
  /// Asked after each page; false gives the job up.
  virtual bool goesOn(int /*page*/) { return true; }
};

class Paper {
 public:
  virtual ~Paper() = default;

  /// False when the operator cancelled. Error 482 when the printer refuses.
  virtual bool print(Pages& pages) = 0;
};

/// Asked before anything goes to a printer that stands still; the empty name is the system's own. False:
/// nothing is printed. An empty one isn't asked.
using AskAboutPaused = std::function<bool(const QString& printer)>;

/// Prints on the current printer; the only question is whether to wait for one that stands still.
class CurrentPaper : public Paper {
 public:
  explicit CurrentPaper(const CurrentPrinter& current, AskAboutPaused ask = {})
      : current_(current), ask_(std::move(ask)) {}

  bool print(Pages& pages) override;

 private:
  CurrentPrinter current_;
  AskAboutPaused ask_;
};

/// Asks on which printer, beginning with the current one, and prints.
class PrinterPaper : public Paper {
 public:
  explicit PrinterPaper(const CurrentPrinter& current, AskAboutPaused ask = {})
      : current_(current), ask_(std::move(ask)) {}

  bool print(Pages& pages) override;

 private:
  CurrentPrinter current_;
  AskAboutPaused ask_;
};

}  // namespace qk
