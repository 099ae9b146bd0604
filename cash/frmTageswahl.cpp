#include "cash/frmTageswahl.h"

#include <QLocale>

#include "platform/widgets/empty_text.h"
#include "ui_frmTageswahl.h"

namespace qk {

frmTageswahl::frmTageswahl(std::vector<QDate> tage, QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmTageswahl>()), tage_(std::move(tage)) {
  ui_->setupUi(this);
  resize(44 * fontMetrics().averageCharWidth(), 20 * fontMetrics().lineSpacing());
  const QLocale german(QLocale::German);
  for (const QDate& day : tage_) ui_->lstTage->addItem(german.toString(day, "dddd, dd.MM.yyyy"));
  setEmptyText(ui_->lstTage, "An der Kasse wurde noch nichts gebucht.");
  ui_->lstTage->setCurrentRow(0);
  ui_->lblLetzter->setText(tage_.empty() ? QString()
                                         : "Ohne Auswahl gilt der letzte Tag, " +
                                               tage_.front().toString("dd.MM.yyyy") + ".");
  ui_->lblLetzter->setVisible(!tage_.empty());
  connect(ui_->lstTage, &QListWidget::itemDoubleClicked, this, &QDialog::accept);
  connect(ui_->cmdOK, &QAbstractButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QAbstractButton::clicked, this, &QDialog::reject);
}

frmTageswahl::~frmTageswahl() = default;

void frmTageswahl::setBSingleSel(bool bSingleSel) {
  ui_->lstTage->setSelectionMode(bSingleSel ? QAbstractItemView::SingleSelection
                                            : QAbstractItemView::ExtendedSelection);
}

std::vector<QDate> frmTageswahl::GetTage() const {
  std::vector<QDate> chosen;
  if (result() != QDialog::Accepted) return chosen;
  for (int row = 0; row < ui_->lstTage->count(); ++row)
    if (ui_->lstTage->item(row)->isSelected()) chosen.push_back(tage_[static_cast<size_t>(row)]);
  return chosen;
}

std::optional<QDate> frmTageswahl::GetLetzenTag() const {
  return tage_.empty() ? std::nullopt : std::optional(tage_.front());
}

}  // namespace qk
