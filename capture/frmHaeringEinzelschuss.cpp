#include "capture/frmHaeringEinzelschuss.h"

#include <QPushButton>

#include "platform/dialog/dialogs.h"
#include "ui_frmHaeringEinzelschuss.h"

namespace qk {

frmHaeringEinzelschuss::frmHaeringEinzelschuss(const Workplace& workplace, HaeringSchuss& SchussHaering,
                                               const QString& sWettbewerbe, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      SchussHaering_(SchussHaering),
      ui_(std::make_unique<Ui::frmHaeringEinzelschuss>()) {
  ui_->setupUi(this);
  for (const Wertungsart& art : kWertungen) ui_->Combo1->addItem(art.name);
  ui_->Combo1->setCurrentIndex(-1);
  ui_->cmbWettbewerbe->addItems(wettbewerbeListe(sWettbewerbe));
  ui_->cmbWettbewerbe->setCurrentIndex(-1);
  ui_->cmbWettbewerbe->setCompleter(nullptr);  // what is typed is stored, not what it resembles
  SchussInFormular();
  connect(ui_->txtRadius, &QLineEdit::textChanged, this, &frmHaeringEinzelschuss::txtRadius_Change);
  connect(ui_->txtTeilerFaktor, &QLineEdit::textChanged, this,
          &frmHaeringEinzelschuss::txtTeilerFaktor_Change);
  connect(ui_->cmdSave, &QPushButton::clicked, this, &frmHaeringEinzelschuss::cmdSave_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  resize(sizeHint().expandedTo(QSize(110 * fontMetrics().averageCharWidth(), 0)));
  ui_->txtRingWertMit->setFocus();
}

frmHaeringEinzelschuss::~frmHaeringEinzelschuss() = default;

std::vector<frmHaeringEinzelschuss::TextField> frmHaeringEinzelschuss::textFields() const {
  using F = SchussFormular;
  return {{ui_->txtStandort, &F::standort},
          {ui_->txtLinie, &F::linie},
          {ui_->txtschuetze, &F::schuetze},
          {ui_->txtStartnummer, &F::startnummer},
          {ui_->txtKlassebezeichnung, &F::klassebezeichnung},
          {ui_->txtDatum, &F::datum},
          {ui_->txtZeit, &F::zeit},
          {ui_->txtWettbewerb, &F::wettbewerb},
          {ui_->txtKlasse, &F::klasse},
          {ui_->txtWaffe, &F::waffe},
          {ui_->txtTrefferNummer, &F::trefferNummer},
          {ui_->txtRingWertMit, &F::ringwert},
          {ui_->txtRadius, &F::radius},
          {ui_->txtTeilerFaktor, &F::teilerfaktor},
          {ui_->txtTeiler, &F::teiler}};
}

SchussFormular frmHaeringEinzelschuss::form() const {
  SchussFormular form;
  for (const TextField& field : textFields()) form.*field.text = field.edit->text();
  form.wettbewerbbezeichnung = ui_->cmbWettbewerbe->currentText();
  form.wertung = ui_->Combo1->currentIndex();
  return form;
}

void frmHaeringEinzelschuss::SchussInFormular() {
  const SchussFormular form = formOf(SchussHaering_);
  for (const TextField& field : textFields()) field.edit->setText(form.*field.text);
  if (!form.wettbewerbbezeichnung.isEmpty()) ui_->cmbWettbewerbe->setCurrentText(form.wettbewerbbezeichnung);
  if (form.wertung >= 0) ui_->Combo1->setCurrentIndex(form.wertung);
}

bool frmHaeringEinzelschuss::FormularInSchuss() {
  return reported(fehlerReport(workplace_.dialogs, "Fehler bei FormularInSchuss_err!"),
                  [&](Steps& step) { fillShot(SchussHaering_, form(), step); });
}

void frmHaeringEinzelschuss::EingabePruefen(bool& bFehler) {
  const QString faults = formFaults(form());
  bFehler = !faults.isEmpty();
  if (bFehler) workplace_.dialogs.note(faults, BoxIcon::Critical, "Fehler");
}

void frmHaeringEinzelschuss::cmdSave_Click() {
  bool bFehler = false;
  EingabePruefen(bFehler);
  if (bFehler || !FormularInSchuss()) return;
  bOK_ = true;
  accept();
}

/// A factor that comes after the radius still makes the missing teiler, and follows it while it is typed. A
/// teiler of any other origin is kept.
void frmHaeringEinzelschuss::txtTeilerFaktor_Change() {
  const QString shown = ui_->txtTeiler->text();
  if (ui_->txtRadius->text().isEmpty() || (!shown.isEmpty() && shown != lateTeiler_)) return;
  const auto teiler = teilerText(ui_->txtRadius->text(), ui_->txtTeilerFaktor->text());
  if (!teiler) return;
  lateTeiler_ = *teiler;
  ui_->txtTeiler->setText(lateTeiler_);
}

void frmHaeringEinzelschuss::txtRadius_Change() {
  lateTeiler_.clear();
  if (const auto teiler = teilerText(ui_->txtRadius->text(), ui_->txtTeilerFaktor->text()))
    ui_->txtTeiler->setText(*teiler);
}

}  // namespace qk
