#include "platform/dialog/printer_setup_dialog.h"

#include <algorithm>

#include "ui_printer_setup_dialog.h"

namespace qk {

PrinterSetupDialog::PrinterSetupDialog(std::vector<InstalledPrinter> printers, const PrinterSetup& current,
                                       QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::PrinterSetupDialog>()), printers_(std::move(printers)) {
  ui_->setupUi(this);
  const auto standard = std::find_if(printers_.begin(), printers_.end(),
                                     [](const InstalledPrinter& printer) { return printer.isDefault; });
  ui_->cmbDrucker->addItem(standard == printers_.end()
                               ? QString("Standarddrucker des Systems")
                               : "Standarddrucker des Systems (" + standard->name + ")",
                           QString());
  for (const InstalledPrinter& printer : printers_) ui_->cmbDrucker->addItem(printer.name, printer.name);
  ui_->lblKeinDrucker->setVisible(printers_.empty());
  connect(ui_->cmbDrucker, &QComboBox::currentIndexChanged, this, &PrinterSetupDialog::showPapers);
  setSetup(current);
}

PrinterSetupDialog::~PrinterSetupDialog() = default;

void PrinterSetupDialog::setSetup(const PrinterSetup& setup) {
  if (ui_->cmbDrucker->findData(setup.name) < 0)
    ui_->cmbDrucker->addItem(setup.name + " (zurzeit nicht vorhanden)", setup.name);
  ui_->cmbDrucker->setCurrentIndex(ui_->cmbDrucker->findData(setup.name));
  showPapers();
  if (ui_->cmbPapier->findData(setup.paper) < 0) ui_->cmbPapier->addItem(setup.paper, setup.paper);
  ui_->cmbPapier->setCurrentIndex(ui_->cmbPapier->findData(setup.paper));
  (setup.landscape ? ui_->optQuerformat : ui_->optHochformat)->setChecked(true);
}

PrinterSetup PrinterSetupDialog::setup() const {
  return {ui_->cmbDrucker->currentData().toString(), ui_->cmbPapier->currentData().toString(),
          ui_->optQuerformat->isChecked()};
}

const InstalledPrinter* PrinterSetupDialog::chosen() const {
  const QString name = ui_->cmbDrucker->currentData().toString();
  const auto found =
      std::find_if(printers_.begin(), printers_.end(), [&name](const InstalledPrinter& printer) {
        return name.isEmpty() ? printer.isDefault : printer.name == name;
      });
  return found == printers_.end() ? nullptr : &*found;
}

/// The papers of the chosen printer; one that was chosen stays where this printer has it too.
void PrinterSetupDialog::showPapers() {
  const QString before = ui_->cmbPapier->currentData().toString();
  ui_->cmbPapier->clear();
  ui_->cmbPapier->addItem("Wie am Drucker eingestellt", QString());
  if (const InstalledPrinter* printer = chosen())
    for (const InstalledPrinter::PaperSize& paper : printer->papers)
      ui_->cmbPapier->addItem(paper.name, paper.key);
  ui_->cmbPapier->setCurrentIndex(std::max(0, ui_->cmbPapier->findData(before)));
}

}  // namespace qk
