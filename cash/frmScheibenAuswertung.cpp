#include "cash/frmScheibenAuswertung.h"

#include <QScreen>

#include "app/ground/temp_module.h"
#include "cash/attempt.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/error.h"
#include "platform/widgets/hourglass.h"
#include "ui_frmScheibenAuswertung.h"

namespace qk {

frmScheibenAuswertung::frmScheibenAuswertung(const Workplace& workplace, dao::Database& database,
                                             QString file, ReportDoor& reports, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      database_(database),
      file_(std::move(file)),
      reports_(reports),
      ui_(std::make_unique<Ui::frmScheibenAuswertung>()) {
  ui_->setupUi(this);
  ui_->cmbGruppe->addItems({"Stapel", "Disziplinen und Kombinationen", "Schützen", "Tage"});
  ui_->grdAuswertung->setStretchColumn(IssuedSumColumn::Bezeichnung);
  ui_->grdAuswertung->setEmptyText("Keine Scheiben ausgegeben.");
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  const auto press = [this](QAbstractButton* button, std::function<void()> routine) {
    connect(button, &QAbstractButton::clicked, this, [this, routine] { versuche(workplace_, routine); });
  };
  press(ui_->cmdAktualisieren, [this] { lade(); });
  press(ui_->cmdListe, [this] { druckeListe(); });
  connect(ui_->cmdClose, &QAbstractButton::clicked, this, &QDialog::reject);
  for (QComboBox* choice : {ui_->cmbGruppe, ui_->cmbTag})
    connect(choice, &QComboBox::activated, this, [this] { zeige(); });
}

frmScheibenAuswertung::~frmScheibenAuswertung() = default;

void frmScheibenAuswertung::setVisible(bool visible) {
  if (visible && !isVisible()) {
    resize(QSize(860, 520).boundedTo(screen()->availableSize() * 9 / 10));
    versuche(workplace_, [this] { lade(); });
    ui_->cmbGruppe->setFocus();
  }
  QDialog::setVisible(visible);
}

/// The day that was chosen stays, if there still is one.
void frmScheibenAuswertung::lade() {
  const Hourglass hourglass;
  all_ = ladeAusgaben(database_);
  const QVariant day = ui_->cmbTag->currentData();
  ui_->cmbTag->clear();
  ui_->cmbTag->addItem("alle Tage", QDate());
  for (const QDate& each : ausgabeTage(all_)) ui_->cmbTag->addItem(each.toString("dd.MM.yyyy"), each);
  ui_->cmbTag->setCurrentIndex(qMax(0, ui_->cmbTag->findData(day)));
  zeige();
}

void frmScheibenAuswertung::zeige() {
  const auto by = static_cast<Gruppierung>(ui_->cmbGruppe->currentIndex());
  const std::vector<IssuedSum> sums = gruppiere(all_, by, ui_->cmbTag->currentData().toDate());
  fuelle(*ui_->grdAuswertung->table(), by, sums);
  const IssuedSum total = summe(sums);
  ui_->lblSumme->setText(QString("Summe: %1 ausgegeben, %2 abgegeben, %3 noch draußen")
                             .arg(total.ausgegeben)
                             .arg(total.abgegeben)
                             .arg(total.draussen()));
}

void frmScheibenAuswertung::druckeListe() {
  reported(fehlerReport(workplace_.dialogs, "Fehler bei der Liste der Scheiben!"), [this](Steps&) {
    ReportOrder order;
    order.reportFile = Programmverzeichnis() + "scheiben.rpt";
    order.dataFile = file_;
    order.titel = "Ausgegebene Scheiben";
    order.ziel = AusgabeZiel_;
    reports_.run(order);
  });
}

}  // namespace qk
