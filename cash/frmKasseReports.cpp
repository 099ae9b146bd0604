#include "cash/frmKasseReports.h"

#include "app/ground/global_variablen.h"
#include "cash/frmTageswahl.h"
#include "platform/dialog/dialogs.h"
#include "platform/widgets/empty_text.h"
#include "platform/widgets/hourglass.h"
#include "ui_frmKasseReports.h"

namespace qk {

frmKasseReports::frmKasseReports(const Workplace& workplace, const GlobalVariablen& global,
                                 ReportDoor& reports, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      ui_(std::make_unique<Ui::frmKasseReports>()),
      lists_(workplace, reports, global.sWettkampf) {
  ui_->setupUi(this);
  setEmptyText(ui_->lstAuswahl, "Hierzu gibt es keine Listen.");
  resize(56 * fontMetrics().averageCharWidth(), 24 * fontMetrics().lineSpacing());
  // The keyboard that comes to a list makes its first entry the current one: the first arrow key would skip
  // it.
  connect(qApp, &QApplication::focusChanged, this, [this](QWidget*, const QWidget* now) {
    if (now == ui_->lstAuswahl && ui_->lstAuswahl->selectedItems().isEmpty())
      ui_->lstAuswahl->setCurrentRow(-1);
  });
  lists_.waehleTag = [this](const std::vector<QDate>& tage) { return waehleTag(tage); };
  connect(ui_->lstAuswahl, &QListWidget::itemDoubleClicked, this, &frmKasseReports::cmdOK);
  connect(ui_->cmdOK, &QAbstractButton::clicked, this, &frmKasseReports::cmdOK);
  connect(ui_->cmdCancel, &QAbstractButton::clicked, this, &QDialog::reject);
}

frmKasseReports::~frmKasseReports() = default;

void frmKasseReports::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!std::exchange(loaded_, true))
    QMetaObject::invokeMethod(this, &frmKasseReports::Form_Load, Qt::QueuedConnection);
}

void frmKasseReports::Form_Load() {
  try {
    const Hourglass hourglass;
    lists_.load();
  } catch (const Error& error) {
    workplace_.dialogs.note("Fehler: " + QString::number(error.number()) + " - " + error.description(),
                            BoxIcon::Exclamation, "Fehler");
  }
  for (const KassenListe& list : lists_.listen()) ui_->lstAuswahl->addItem(list.Beschreibung);
}

void frmKasseReports::cmdOK() {
  const QListWidgetItem* entry = ui_->lstAuswahl->currentItem();
  if (!entry || !entry->isSelected()) return lists_.werteAus({});
  lists_.werteAus(lists_.listen()[static_cast<size_t>(ui_->lstAuswahl->row(entry))]);
}

std::optional<QDate> frmKasseReports::waehleTag(const std::vector<QDate>& tage) {
  frmTageswahl days(tage, this);
  days.setBSingleSel(true);
  days.exec();
  const std::vector<QDate> chosen = days.GetTage();
  return chosen.empty() ? days.GetLetzenTag() : std::optional(chosen.front());
}

}  // namespace qk
