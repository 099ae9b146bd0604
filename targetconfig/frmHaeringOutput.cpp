#include "targetconfig/frmHaeringOutput.h"

#include <QHeaderView>
#include <QLineEdit>

#include "app/ground/global_variablen.h"
#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "platform/dialog/dialogs.h"
#include "platform/look/plain_tip.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/textcodec.h"
#include "platform/widgets/empty_text.h"
#include "targetconfig/line_choice.h"
#include "targetconfig/line_list.h"
#include "ui_frmHaeringOutput.h"

namespace qk {

namespace {

constexpr int kLookMilliseconds = 1000;
enum Column { Line, Command, Time, State };

QString stateText(OutputState state) {
  switch (state) {
    case OutputState::Nothing:
      return "–";
    case OutputState::Waiting:
      return "noch nicht übernommen";
    case OutputState::Taken:
      return "übernommen";
    case OutputState::NotSent:
      return "nicht gesendet";
    case OutputState::Unreachable:
      return "Ordner nicht erreichbar";
  }
  return {};
}

}  // namespace

frmHaeringOutput::frmHaeringOutput(const Workplace& workplace, const GlobalVariablen& global, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      global_(global),
      ui_(std::make_unique<Ui::frmHaeringOutput>()),
      look_(this) {
  ui_->setupUi(this);
  look_.setObjectName("tmrStand");
  ui_->cmbOutput->setCompleter(nullptr);  // what is typed is sent, not what it resembles
  ui_->tblStand->horizontalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  ui_->tblStand->horizontalHeader()->setSectionResizeMode(Command, QHeaderView::Stretch);
  ui_->tblStand->horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
  ui_->tblStand->verticalHeader()->setSectionResizeMode(QHeaderView::ResizeToContents);
  connectLineList(*ui_->List1, *ui_->cmdAlleWaehlen, *ui_->cmdKeineWaehlen, *ui_->lblAnzahl);
  setEmptyText(ui_->List1, "Keine Linien");
  setEmptyText(ui_->tblStand, "Keine Linien");
  connect(ui_->cmdSenden, &QPushButton::clicked, this, &frmHaeringOutput::cmdSenden_Click);
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(&look_, &QTimer::timeout, this, [this] {
    for (LineOutput& output : outputs_) output.look();
    showOutputs();
  });
}

frmHaeringOutput::~frmHaeringOutput() = default;

ErrorReport frmHaeringOutput::report(const QString& routine) const {
  return fehlerReport(workplace_.dialogs, "Fehler bei " + routine + "_err!");
}

/// What opening has to say is said before the window is there.
void frmHaeringOutput::setVisible(bool visible) {
  if (visible && !isVisible()) {
    Form_Load();
    look_.start(kLookMilliseconds);
  }
  QDialog::setVisible(visible);
}

void frmHaeringOutput::Form_Load() {
  FillCmbOutput();
  fillLines();
  showOutputs();
  ui_->cmbOutput->setFocus();
}

void frmHaeringOutput::FillCmbOutput() {
  const QString file = global_.SystemVerzeichnisUser + "Intarso-Befehle.txt";
  ui_->cmbOutput->clear();
  if (!DateiVorhanden(workplace_.files, file)) {
    workplace_.dialogs.note("Intarso-Steuerdatei nicht vorhanden:\r\n" + file, BoxIcon::Exclamation,
                            "Fehler");
    return;
  }
  reported(report("FillCmbOutput"), [&](Steps&) {
    ui_->cmbOutput->addItems(splitLines(fromWindows1252(workplace_.files.read(file))));
    // Nothing is sent that nobody has chosen.
    ui_->cmbOutput->setCurrentIndex(-1);
  });
}

void frmHaeringOutput::fillLines() {
  const QString folder = withTrailingSeparator(liesText(workplace_.settings, keys::Netzverzeichnis));
  ui_->lblOrdner->setText(folder);
  ui_->List1->clear();
  outputs_.clear();
  for (const int line : aktiveLinien(liesText(workplace_.settings, keys::LinienAktiv))) {
    addLine(*ui_->List1, line, line, line == nLinie_);
    outputs_.emplace_back(workplace_.files, workplace_.clock, folder, line);
  }
}

void frmHaeringOutput::cmdSenden_Click() {
  const QString command = ui_->cmbOutput->currentText();
  reported(report("cmdSenden_Click"), [&](Steps& step) {
    for (int row = 0; row < ui_->List1->count(); ++row) {
      // The two files are one statement: a flag without its command would be worse than none.
      if (ui_->List1->item(row)->isSelected())
        step([&] { outputs_[static_cast<size_t>(row)].send(command); });
    }
  });
  showOutputs();
}

void frmHaeringOutput::showOutputs() {
  QTableWidget& table = *ui_->tblStand;
  table.setRowCount(static_cast<int>(outputs_.size()));
  const auto show = [&table](int row, int column, const QString& text) {
    QTableWidgetItem* cell = table.item(row, column);
    if (!cell) table.setItem(row, column, cell = new QTableWidgetItem);
    cell->setText(text);
    cell->setToolTip(column == Command ? plainTip(text) : QString());
  };
  for (int row = 0; row < table.rowCount(); ++row) {
    const LineOutput& output = outputs_[static_cast<size_t>(row)];
    show(row, Line, QString::number(output.nLinie()));
    show(row, Command, output.command());
    show(row, Time, output.sent().toString("HH:mm:ss"));
    show(row, State, stateText(output.state()));
    table.item(row, Line)->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
  }
}

}  // namespace qk
