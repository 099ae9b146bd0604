#include "cash/label_panel.h"

#include "ui_label_panel.h"

namespace qk {

LabelPanel::LabelPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::LabelPanel>()) {
  ui_->setupUi(this);
}

LabelPanel::~LabelPanel() = default;

void LabelPanel::Form_Load() {}

void LabelPanel::Set_PrintScheibenFont() {}

void LabelPanel::Set_BarcodeFont() {}

void LabelPanel::LoadDisziKombiBaum(const std::vector<DisziKombi>&) {}

void LabelPanel::UpdateBarcodeAnzeige(int) {}

void LabelPanel::cmdPrint() {}

}  // namespace qk
