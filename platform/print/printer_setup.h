// Which printer, with which paper. Plain values: no window and no device.
#pragma once

#include <QString>
#include <vector>

namespace qk {

struct PrinterSetup {
  QString name;   ///< device name; empty is the system's default printer
  QString paper;  ///< key of a paper size, "A4"; empty is the printer's own
  bool landscape = false;

  bool operator==(const PrinterSetup&) const = default;
};

struct InstalledPrinter {
  struct PaperSize {
    QString key, name;
  };
  QString name;
  bool isDefault = false;
  std::vector<PaperSize> papers;
};

}  // namespace qk
