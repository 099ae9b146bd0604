#include "cash/payment_panel.h"

#include <QEvent>

#include "cash/amounts.h"
#include "cash/attempt.h"
#include "cash/scan_watch.h"
#include "platform/dialog/font_convert.h"
#include "platform/look/contrast.h"
#include "platform/look/enlarged.h"
#include "platform/runtime/error.h"
#include "ui_payment_panel.h"

namespace qk {

namespace {

constexpr quint32 kRed = 255;

/// "Startgeld, 2 × Nachkauf Serie", in the order of the first of each.
QString kaufInWorten(const TextTable& flex) {
  QStringList names;
  QHash<QString, int> counts;
  for (int row = 1; row < flex.rows(); ++row) {
    const QString name = flex.text(row, CashColumn::Bezeichnung);
    if (counts[name]++ == 0) names += name;
  }
  for (QString& name : names)
    if (counts[name] > 1) name = QString::number(counts[name]) + " × " + name;
  return names.join(", ");
}

}  // namespace

PaymentPanel::PaymentPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::PaymentPanel>()) {
  ui_->setupUi(this);
  ui_->cmbWechselGeld->setCompleter(nullptr);
  ScanWatch::markAmountField(*ui_->cmbWechselGeld);
  followFont();
}

PaymentPanel::~PaymentPanel() = default;

void PaymentPanel::setPurchase(const Workplace& workplace, Purchase& purchase, bool spende) {
  workplace_ = &workplace;
  purchase_ = &purchase;
  spende_ = spende;
  connect(purchase_, &Purchase::changed, this, &PaymentPanel::UpdateAktGesamt);
  connect(ui_->cmbWechselGeld, &QComboBox::editTextChanged, this, &PaymentPanel::UpdateZurueck);
  connect(ui_->cmbWechselGeld->lineEdit(), &QLineEdit::returnPressed, this, &PaymentPanel::bereit);
  for (int index : {0, 1})
    connect(index == 0 ? ui_->optBetrag_0 : ui_->optBetrag_1, &QAbstractButton::clicked, this,
            [this, index] { versuche(*workplace_, [&] { optBetrag(index); }); });
  ui_->cmdSpende->setStatusTip("Das Rückgeld bleibt als Spende in der Kasse (F8).");
  connect(ui_->cmdSpende, &QAbstractButton::clicked, this, [this] {
    versuche(*workplace_, [this] { purchase_->AddSpende(BetragAusText(ui_->txtZurueck->text())); });
  });
  UpdateAktGesamt();
}

void PaymentPanel::Form_Load(bool offenePosten) {
  ui_->cmbWechselGeld->clear();
  ui_->cmbWechselGeld->addItems({"", "5", "10", "15", "20"});
  ui_->cmbWechselGeld->setCurrentIndex(0);
  (offenePosten ? ui_->optBetrag_1 : ui_->optBetrag_0)->setChecked(true);
  optBetrag(offenePosten ? 1 : 0);
}

QString PaymentPanel::erhalten() const {
  return ui_->cmbWechselGeld->isVisibleTo(this) ? ui_->cmbWechselGeld->currentText() : QString();
}

void PaymentPanel::leereErhalten() {
  ui_->cmbWechselGeld->setCurrentIndex(0);
  ui_->cmbWechselGeld->setEditText(QString());
}

void PaymentPanel::focusErhalten() {
  ui_->cmbWechselGeld->setFocus(Qt::ShortcutFocusReason);
  ui_->cmbWechselGeld->lineEdit()->selectAll();
}

void PaymentPanel::drueckeSpende() {
  if (ui_->cmdSpende->isVisible()) ui_->cmdSpende->click();
}

void PaymentPanel::zeigeZuletzt(const QString& text) {
  ui_->lblZuletzt->setText(text);
}

void PaymentPanel::setTabBetween(QWidget* before, QWidget* after) {
  for (QWidget* next : std::initializer_list<QWidget*>{ui_->optBetrag_0, ui_->optBetrag_1,
                                                       ui_->cmbWechselGeld, ui_->cmdSpende, after}) {
    setTabOrder(before, next);
    before = next;
  }
}

void PaymentPanel::UpdateAktGesamt() {
  ui_->lblAktGesamt->setText(purchase_->zuBezahlen().toCurrencyText());
  ui_->lblKauf->setText(kaufInWorten(purchase_->flex()));
  if (!purchase_->isEmpty()) ui_->lblZuletzt->clear();
  UpdateZurueck();
}

void PaymentPanel::UpdateZurueck() {
  const QString erhalten = ui_->cmbWechselGeld->currentText();
  const bool shown = !erhalten.isEmpty() && purchase_->betragsart() == Betragsart::Betrag;
  ui_->txtZurueck->setVisible(shown);
  ui_->lblZurueckBez->setVisible(shown);
  ui_->cmdSpende->setVisible(shown && spende_);
  ui_->txtZurueck->clear();
  ui_->lblGelesen->clear();
  if (erhalten.isEmpty()) return;
  try {
    const Money zurueck = *rueckgeld(erhalten, purchase_->zuBezahlen());
    const Money gelesen = BetragAusText(erhalten);
    if (gelesen.toText() != erhalten) ui_->lblGelesen->setText("= " + gelesen.toCurrencyText());
    ui_->txtZurueck->setText(zurueck.toCurrencyText());
    QPalette colours = palette();
    const QColor ground = colours.color(QPalette::Base);
    const QColor text = zurueck < Money() ? toColour(kRed) : colours.color(QPalette::Text);
    colours.setColor(QPalette::Text, look::readable(text, ground));
    ui_->txtZurueck->setPalette(colours);
  } catch (const Error& error) {
    ui_->lblGelesen->setText(error.description());
  }
}

void PaymentPanel::optBetrag(int index) {
  const bool betrag = index == 0;
  purchase_->setBetragsart(betrag ? Betragsart::Betrag : Betragsart::OffenePosten);
  for (QWidget* control : std::initializer_list<QWidget*>{
           ui_->lblErhalten, ui_->cmbWechselGeld, ui_->lblGelesen, ui_->txtZurueck, ui_->lblZurueckBez})
    control->setVisible(betrag);
  ui_->cmdSpende->setVisible(betrag && spende_);
}

void PaymentPanel::followFont() {
  look::enlarge(*ui_->lblKauf, font(), 1.1, false);
  look::enlarge(*ui_->lblAktGesamt, font(), 2.6);
  look::enlarge(*ui_->cmbWechselGeld, font(), 1.6);
  look::enlarge(*ui_->txtZurueck, font(), 1.8);
  look::enlarge(*ui_->lblZuletzt, font(), 1.6);
}

void PaymentPanel::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange) followFont();
}

}  // namespace qk
