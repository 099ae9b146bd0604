// Chooses the printer, its paper and its orientation. Prints nothing.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/print/printer_setup.h"

namespace Ui {
class PrinterSetupDialog;
}

namespace qk {

class PrinterSetupDialog : public QDialog {
  Q_OBJECT

 public:
  /// `current` is shown first, also when it isn't among the printers any more.
  PrinterSetupDialog(std::vector<InstalledPrinter> printers, const PrinterSetup& current,
                     QWidget* parent = nullptr);
  ~PrinterSetupDialog() override;

  PrinterSetup setup() const;
  /// Shows another choice.
  void setSetup(const PrinterSetup& setup);

 private:
  void showPapers();
  const InstalledPrinter* chosen() const;

  std::unique_ptr<Ui::PrinterSetupDialog> ui_;
  std::vector<InstalledPrinter> printers_;
};

}  // namespace qk
