#include "cash/target_panel.h"

#include "ui_target_panel.h"

namespace qk {

TargetPanel::TargetPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::TargetPanel>()) {
  ui_->setupUi(this);
}

TargetPanel::~TargetPanel() = default;

void TargetPanel::Form_Load() {}

void TargetPanel::Form_Activate() {}

void TargetPanel::Form_Unload() {}

void TargetPanel::LoadDisziKombiBaum(const std::vector<DisziKombi>&) {}

void TargetPanel::LoadScheibenStapel() {
  Q_EMIT stapelGeladen(false);
}

void TargetPanel::speichereScheiben(const QString&, const QString&) {}

void TargetPanel::speichereAktuelleNummern() {}

std::vector<ReceiptTarget> TargetPanel::belegScheiben() const {
  return {};
}

}  // namespace qk
