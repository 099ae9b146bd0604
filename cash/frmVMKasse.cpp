#include "cash/frmVMKasse.h"

#include <QKeyEvent>
#include <QScreen>
#include <QShortcut>
#include <QStatusTipEvent>

#include "app/ground/settings_keys.h"
#include "cash/attempt.h"
#include "cash/stake_list.h"
#include "platform/dialog/dialogs.h"
#include "platform/look/enlarged.h"
#include "platform/widgets/empty_text.h"
#include "platform/widgets/hourglass.h"
#include "ui_frmVMKasse.h"

namespace qk {

namespace {

constexpr int kHintMilliseconds = 6000;

}  // namespace

frmVMKasse::frmVMKasse(const Workplace& workplace, ReportDoor& reports, QWidget* parent)
    : QDialog(parent), workplace_(workplace), reports_(reports), ui_(std::make_unique<Ui::frmVMKasse>()) {
  ui_->setupUi(this);
  layOut();
}

frmVMKasse::~frmVMKasse() = default;

void frmVMKasse::setTitel(const QString& sBez1, const QString& sBez2, const QString& sOrt) {
  sBez1_ = sBez1;
  sBez2_ = sBez2;
  sOrt_ = sOrt;
}

void frmVMKasse::versuche(const std::function<void()>& routine) {
  qk::versuche(workplace_, routine);
}

void frmVMKasse::layOut() {
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  for (TextGrid* grid : {ui_->flex, ui_->flexAll}) grid->setStretchColumn(CashColumn::Bezeichnung);
  ui_->flex->setEmptyText("Noch keine Einlage gewählt: Einlage anwählen und Enter");
  ui_->flexAll->setEmptyText("Noch nichts bezahlt.");
  setEmptyText(ui_->lstAll, "Keine Einlagen für Vereine und Mannschaften.");
  ui_->panelBezahlen->setTabBetween(ui_->flex, ui_->cmdVerbuchen);
  followFont();
  resize(QSize(1340, 700).boundedTo(screen()->availableSize()));
}

void frmVMKasse::followFont() {
  look::enlarge(*ui_->lblName, font(), 1.6);
  look::enlarge(*ui_->lblSaldo, font(), 1.6);
  look::enlarge(*ui_->cmdVerbuchen, font(), 1.4);
  ui_->panelZahlung->setMinimumWidth(fontMetrics().averageCharWidth() * 40);
}

void frmVMKasse::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) followFont();
}

/// Hints of buttons stand in the status line.
bool frmVMKasse::event(QEvent* event) {
  if (event->type() != QEvent::StatusTip) return QDialog::event(event);
  ui_->statusBar->showMessage(static_cast<QStatusTipEvent*>(event)->tip());
  return true;
}

void frmVMKasse::zeige() {
  bool bereit = false;
  versuche([&, this] {
    cash_ = std::make_unique<ClubCash>(workplace_, payer_);
    cash_->sBez1 = sBez1_;
    cash_->sBez2 = sBez2_;
    cash_->sOrt = sOrt_;
    ui_->flex->setTable(&cash_->purchase().flex());
    ui_->flexAll->setTable(&cash_->payments().flexAll());
    connectControls();
    makeKeys();
    cash_->open(DataBaseName_);
    Form_Load();
    bereit = true;
  });
  if (bereit) exec();
}

void frmVMKasse::Form_Load() {
  const QString art = payer_.art() == Payer::Art::Verein ? "Verein" : "Mannschaft";
  setWindowTitle("Tarvex Kasse - " + art + ": " + cash_->name());
  ui_->lblArt->setText(art + ":");
  ui_->lblName->setText(cash_->name());
  ui_->lblHerkunft->setText(cash_->herkunft());
  for (const Stake& stake : cash_->einlagen()) {
    auto* entry = new QListWidgetItem(stake.Bezeichnung, ui_->lstAll);
    entry->setData(Qt::UserRole, stake.id);
  }
  const Settings& settings = workplace_.settings;
  ui_->panelBezahlen->Form_Load(liesFlag(settings, keys::OffenePostenVorbelegen));
  ui_->chkAutoDruck->setChecked(liesFlag(settings, keys::AutoDruckKasse));
  zeigeSummen();
  ui_->lstAll->setFocus();
}

void frmVMKasse::zeigeSummen() {
  const CashSums sums = cash_->payments().summen();
  ui_->lblSummen->setText("Gesamt " + sums.Gesamt.toCurrencyText() + "    Bezahlt " +
                          sums.Bezahlt.toCurrencyText() + "    Offen " + sums.Offen.toCurrencyText());
  if (cash_->isOpen()) ui_->lblSaldo->setText(cash_->saldo().toCurrencyText());
}

void frmVMKasse::connectControls() {
  const auto press = [this](QAbstractButton* button, std::function<void()> routine, const char* hint) {
    button->setStatusTip(hint);
    connect(button, &QAbstractButton::clicked, this, [this, routine] { versuche(routine); });
  };
  ui_->panelBezahlen->setPurchase(workplace_, cash_->purchase(), false);
  connect(ui_->panelBezahlen, &PaymentPanel::bereit, ui_->cmdVerbuchen, qOverload<>(&QWidget::setFocus),
          Qt::QueuedConnection);
  connect(&cash_->payments(), &Payments::changed, this, [this] { versuche([this] { zeigeSummen(); }); });
  connect(ui_->flex, &TextGrid::afterEdit, this,
          [this](int row, int column) { versuche([&] { cash_->purchase().nachEingabe(row, column); }); });
  connect(ui_->flexAll, &TextGrid::afterEdit, this,
          [this](int row, int column) { versuche([&] { flexAllEingabe(row, column); }); });
  connectStakes(*ui_->lstAll, [this] { versuche([this] { cmdAdd(); }); });
  press(
      ui_->cmdAdd, [this] { cmdAdd(); }, "Nimmt die angewählte Einlage in den Kauf (Enter).");
  press(
      ui_->cmdAddAnzahl, [this] { cmdAddAnzahl(); }, "Nimmt die angewählte Einlage mehrmals in den Kauf.");
  press(
      ui_->cmdRemove, [this] { cash_->purchase().entferne(ui_->flex->currentRow()); },
      "Nimmt die angewählte Zeile aus dem Kauf (Entf).");
  press(
      ui_->cmdVerbuchen, [this] { cmdVerbuchen(); }, "Speichert den Kauf (F9).");
  press(
      ui_->cmdOPVerbuchen, [this] { cash_->payments().cmdOPVerbuchen(); },
      "Alle offenen Zeilen gelten als heute bezahlt.");
  press(
      ui_->cmdDelete, [this] { cash_->payments().cmdDelete(ui_->flexAll->currentRow()); },
      "Löscht die angewählte Zeile nach Rückfrage.");
  press(
      ui_->cmdDrucken, [this] { druckeBeleg(ReportOrder::Ziel::Drucker, !cash_->purchase().isEmpty()); },
      "Druckt den Kauf; ohne Kauf alles, was gespeichert ist.");
  press(
      ui_->cmdVorschau, [this] { druckeBeleg(ReportOrder::Ziel::Fenster, !cash_->purchase().isEmpty()); },
      "Zeigt den Kauf als Beleg; ohne Kauf alles, was gespeichert ist.");
  press(
      ui_->cmdClose, [this] { reject(); }, "Schließt; ein Kauf in der Hand wird nach Rückfrage verworfen.");
  connect(ui_->chkAutoDruck, &QCheckBox::clicked, this,
          [this](bool on) { versuche([&] { schreibe(workplace_.settings, keys::AutoDruckKasse, on); }); });
}

void frmVMKasse::makeKeys() {
  const auto onKey = [this](const QKeySequence& key, std::function<void()> routine) {
    auto* shortcut = new QShortcut(key, this);
    shortcut->setAutoRepeat(false);  // a key that is held books, and prints, once
    connect(shortcut, &QShortcut::activated, this, [this, routine] { versuche(routine); });
  };
  onKey(Qt::Key_F4, [this] { ui_->lstAll->setFocus(Qt::ShortcutFocusReason); });
  onKey(Qt::Key_F6, [this] { ui_->flex->setFocus(Qt::ShortcutFocusReason); });
  onKey(Qt::Key_F7, [this] { ui_->panelBezahlen->focusErhalten(); });
  onKey(Qt::Key_F9, [this] { cmdVerbuchen(); });
  auto* remove = new QShortcut(QKeySequence(Qt::Key_Delete), ui_->flex);
  remove->setContext(Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, ui_->cmdRemove, &QAbstractButton::click);
  auto* keysLabel = new QLabel("F4 Einlagen    F6 Kauf    F7 Erhalten    F9 Verbuchen");
  keysLabel->setObjectName("lblTasten");
  ui_->statusBar->addWidget(keysLabel, 1);
}

/// Enter presses the button that has the focus, and nothing else: no button is the window's own answer. Held,
/// it presses none: in the amount it leads to "Verbuchen", and the change is to be seen before the booking.
void frmVMKasse::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QDialog::keyPressEvent(event);
  if (event->isAutoRepeat()) return;
  if (auto* button = qobject_cast<QAbstractButton*>(focusWidget())) button->click();
}

void frmVMKasse::cmdAdd() {
  if (const QListWidgetItem* entry = ui_->lstAll->currentItem(); entry && entry->isSelected())
    cash_->purchase().AddKauf(entry->data(Qt::UserRole).toInt());
}

void frmVMKasse::cmdAddAnzahl() {
  if (const QListWidgetItem* entry = ui_->lstAll->currentItem(); entry && entry->isSelected())
    cash_->purchase().AddAnzahlFragen(entry->data(Qt::UserRole).toInt());
}

void frmVMKasse::cmdVerbuchen() {
  Purchase& purchase = cash_->purchase();
  if (purchase.isEmpty()) return;
  const Money due = purchase.zuBezahlen();
  const QString received = ui_->panelBezahlen->erhalten();
  const int rows = purchase.flex().rows() - 1;
  std::function<void()> receipt;
  if (ui_->chkAutoDruck->isChecked()) receipt = [this] { druckeBeleg(ReportOrder::Ziel::Drucker, true); };
  const BookingOutcome outcome = cash_->verbuche(receipt);
  if (outcome.fehler)
    return workplace_.dialogs.note(buchungsFehlerText(outcome, rows), BoxIcon::Exclamation, "Fehler");
  purchase.entferneAlle();
  ui_->panelBezahlen->leereErhalten();
  ui_->panelBezahlen->zeigeZuletzt(verbuchtText(due, received, rows));
  cash_->lade();
  ui_->statusBar->showMessage(
      rows == 1 ? QString("1 Einlage verbucht.") : QString("%1 Einlagen verbucht.").arg(rows),
      kHintMilliseconds);
  ui_->lstAll->setFocus();
}

void frmVMKasse::flexAllEingabe(int row, int column) {
  const Payments::Eingabe input = cash_->payments().nachEingabe(row, column);
  if (input.unlesbar) ui_->flexAll->editAgain(row, column, input.text);
}

void frmVMKasse::druckeBeleg(ReportOrder::Ziel ziel, bool aktuellerKauf) {
  const Hourglass hourglass;
  qk::druckeBeleg(
      workplace_, reports_, [&] { return cash_->beleg(aktuellerKauf); }, ziel);
}

void frmVMKasse::reject() {
  if (!cash_->purchase().isEmpty() &&
      !workplace_.dialogs.confirm("Wollen Sie die aktuellen Beträge verwerfen?", BoxIcon::Question,
                                  BoxAnswer::No))
    return;
  cash_->store().close();
  QDialog::reject();
}

}  // namespace qk
