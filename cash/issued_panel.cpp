#include "cash/issued_panel.h"

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module_ui.h"
#include "cash/attempt.h"
#include "ui_issued_panel.h"

namespace qk {

IssuedPanel::IssuedPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::IssuedPanel>()) {
  ui_->setupUi(this);
  ui_->grdScheibenAlle->setStretchColumn(IssuedColumn::Zuordnung);
  ui_->grdScheibenAlle->setEmptyText("Der Schütze hält keine Scheiben.");
}

IssuedPanel::~IssuedPanel() = default;

void IssuedPanel::setDesk(CashDesk& desk) {
  desk_ = &desk;
  issued_ = std::make_unique<IssuedTargets>(desk);
  ui_->grdScheibenAlle->setTable(&issued_->grdScheibenAlle());
  SpaltenbreitenMerken(desk.workplace(), *ui_->grdScheibenAlle, keys::KasseScheibenGridAlle.toString());
  const auto press = [this](QAbstractButton* button, std::function<void()> routine, const char* hint) {
    button->setStatusTip(hint);
    connect(button, &QAbstractButton::clicked, this, [this, routine] { versuche(routine); });
  };
  press(
      ui_->cmdScheibenGesamtDelete,
      [this] { issued_->cmdScheibenGesamtDelete(ui_->grdScheibenAlle->currentRow()); },
      "Löscht die gewählte Scheibe nach Rückfrage; die Nummer geht nicht an den Stapel zurück.");
  press(
      ui_->cmdScheibenGesamtDeleteAll, [this] { issued_->cmdScheibenGesamtDeleteAll(); },
      "Löscht nach Rückfrage alle Scheiben des Schützen, der oben in der Kasse steht.");
}

void IssuedPanel::versuche(const std::function<void()>& routine) {
  qk::versuche(desk_->workplace(), routine);
}

void IssuedPanel::LoadScheibenGesamt() {
  issued_->LoadScheibenGesamt();
  // The list stays with the first shooter, while the desk goes on to others: it must say whose it is.
  ui_->lblScheibenVon->setText("Scheiben von Startnummer " + issued_->sStartNr());
}

void IssuedPanel::loescheAlleAusgaben() {
  issued_->loescheAlleAusgaben();
}

void IssuedPanel::Form_Unload() {
  issued_->close();
}

std::vector<ReceiptTarget> IssuedPanel::belegScheiben() const {
  return issued_->belegScheiben();
}

}  // namespace qk
