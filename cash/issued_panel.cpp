#include "cash/issued_panel.h"

#include "ui_issued_panel.h"

namespace qk {

IssuedPanel::IssuedPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::IssuedPanel>()) {
  ui_->setupUi(this);
}

IssuedPanel::~IssuedPanel() = default;

void IssuedPanel::LoadScheibenGesamt() {}

void IssuedPanel::Form_Unload() {}

std::vector<ReceiptTarget> IssuedPanel::belegScheiben() const {
  return {};
}

}  // namespace qk
