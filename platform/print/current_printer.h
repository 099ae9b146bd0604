// The printer that everything is printed on until the operator sets up another: chosen once, kept in the
// settings, asked for by whatever prints. A run that prints elsewhere takes another one for itself: other
// programs on these settings don't follow it.
//
//   const std::unique_ptr<QPrinter> printer = current.make();
#pragma once

#include <QString>
#include <memory>
#include <vector>

#include "platform/print/printer_setup.h"

class QPrinter;

namespace qk {

class Settings;

class CurrentPrinter {
 public:
  /// Where in the settings it is kept; `settings` outlives this.
  CurrentPrinter(Settings& settings, QString application, QString section);

  PrinterSetup setup() const;
  /// This one, as long as the program runs or until takeKept() or keep(); nothing is stored.
  void takeForNow(const PrinterSetup& setup);
  /// What is stored holds again.
  void takeKept();
  /// What is stored, whatever holds for now.
  PrinterSetup kept() const;
  /// Error 75 when it can't be stored; the former one then holds.
  void keep(const PrinterSetup& setup);
  /// A device of that printer, its paper and its orientation. Error 482, naming the printer, when it isn't
  /// installed any more: nothing comes out of another one by itself.
  std::unique_ptr<QPrinter> make() const;

 private:
  QString key() const;

  Settings& settings_;
  QString application_, section_;
};

/// A device of that printer, its paper and its orientation. Error 482, naming it, when it isn't installed.
std::unique_ptr<QPrinter> makePrinter(const PrinterSetup& setup);

/// The queue of an installed printer stands still: its jobs wait.
bool isPaused(const QString& name);

/// The printers of the workstation.
std::vector<InstalledPrinter> installedPrinters();

}  // namespace qk
