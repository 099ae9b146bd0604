#include "targetconfig/frmLinienSetup.h"

#include <QEvent>
#include <QPushButton>
#include <algorithm>

#include "app/ground/settings_keys.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/retry.h"
#include "ui_frmLinienSetup.h"

namespace qk {

frmLinienSetup::frmLinienSetup(const Workplace& workplace, QWidget* parent)
    : QDialog(parent), workplace_(workplace), ui_(std::make_unique<Ui::frmLinienSetup>()) {
  ui_->setupUi(this);
  connect(ui_->cmdUebertrag, &QPushButton::clicked, this, &frmLinienSetup::cmdUebertrag_Click);
  connect(ui_->cmdAlleWaehlen, &QPushButton::clicked, ui_->List1, &QListWidget::selectAll);
  connect(ui_->cmdKeineWaehlen, &QPushButton::clicked, ui_->List1, &QListWidget::clearSelection);
  connect(ui_->cmdOK, &QPushButton::clicked, this, &frmLinienSetup::cmdOK_Click);
  connect(ui_->cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->List1, &QListWidget::itemSelectionChanged, this, &frmLinienSetup::showCount);
  ui_->txtLinieMax->installEventFilter(this);

  settingsLinie_ = liesText(workplace_.settings, keys::LinienAktiv);
  const int count = int(settingsLinie_.size());
  ui_->txtLinieMax->setText(QString::number(count));
  fillList(count);
  for (int i = 0; i < count; ++i) ui_->List1->item(i)->setSelected(settingsLinie_.at(i) == QChar('1'));
  showCount();
  if (count > 0)
    ui_->List1->setFocus();
  else
    ui_->txtLinieMax->setFocus();
}

frmLinienSetup::~frmLinienSetup() = default;

bool frmLinienSetup::eventFilter(QObject* watched, QEvent* event) {
  // While a number is typed, Enter takes it over; otherwise it would store the list as it was before.
  if (watched == ui_->txtLinieMax && event->type() == QEvent::FocusIn) ui_->cmdUebertrag->setDefault(true);
  if (watched == ui_->txtLinieMax && event->type() == QEvent::FocusOut) ui_->cmdOK->setDefault(true);
  return QDialog::eventFilter(watched, event);
}

void frmLinienSetup::cmdUebertrag_Click() {
  fillList(int(std::max(0.0, parsePrefix(ui_->txtLinieMax->text()))));
}

void frmLinienSetup::cmdOK_Click() {
  QString lines;
  for (int i = 0; i < ui_->List1->count(); ++i)
    lines.append(QChar(ui_->List1->item(i)->isSelected() ? '1' : '0'));
  const bool stored = reported(fehlerReport(workplace_.dialogs, "Fehler bei cmdOK_Click_err!"),
                               [&](Steps&) { schreibe(workplace_.settings, keys::LinienAktiv, lines); });
  if (!stored) return;
  settingsLinie_ = lines;
  bOK_ = true;
  accept();
}

void frmLinienSetup::fillList(int count) {
  QStringList names;
  names.reserve(count);
  for (int line = 1; line <= count; ++line) names.append("Linie " + QString::number(line));
  ui_->List1->clear();
  ui_->List1->addItems(names);
  showCount();
}

void frmLinienSetup::showCount() {
  const int chosen = int(ui_->List1->selectionModel()->selectedRows().size());
  ui_->lblAnzahl->setText(QString("%1 von %2 gewählt").arg(chosen).arg(ui_->List1->count()));
}

}  // namespace qk
