#include "cash/frmEtikettText.h"

#include "cash/label_text.h"
#include "ui_frmEtikettText.h"

namespace qk {

namespace {

struct Token {
  const char* token;
  const char* meaning;
};

constexpr Token kTokens[] = {
    {"startnr", "Startnummer"},
    {"name", "Name des Schützen"},
    {"verein", "Verein"},
    {"mann", "Mannschaft"},
    {"klasse", "Klasse"},
    {"ausweis", "Nummer des Ausweises"},
    {"spo", "Meldungen nach Sportordnung"},
    {"spokey", "Schlüssel der Sportordnung"},
    {"diszi", "Disziplin; vor einer Kombination steht »K-«"},
    {"disziohne", "Disziplin oder Kombination ohne »K-«"},
    {"einlage", "Einlage, die das Etikett bezahlt"},
    {"wk", "Titel des Wettkampfs"},
    {"lfdsch", "laufende Nummer der Scheibe im Satz"},
    {"anzsch", "laufende Nummer und Zahl im Satz: »1 von 2«"},
    {"datum", "heutiges Datum"},
    {"uhr", "Uhrzeit: 09:07"},
    {"uhrgenau", "Uhrzeit mit Sekunden und Satz: 09:07:05 (1)"},
    {"nl", "neue Zeile"},
};

LabelFields sample() {
  LabelFields fields;
  fields.startnr = "107";
  fields.verein = "SV Ährenfeld";
  fields.mann = "Ährenfeld I";
  fields.klasse = "Herren I";
  fields.ausweis = "4711";
  fields.spo = "Luftgewehr";
  fields.spokey = "1.10";
  fields.name = "Müller, Jörg";
  fields.disziplin = "LG Meister";
  fields.einlage = "Startgeld";
  fields.wettkampf = "Pokalschießen";
  fields.zeit = QDateTime(QDate(2026, 3, 5), QTime(9, 7, 5));
  return fields;
}

}  // namespace

frmEtikettText::frmEtikettText(QWidget* parent)
    : QDialog(parent), ui_(std::make_unique<Ui::frmEtikettText>()) {
  ui_->setupUi(this);
  TextTable& table = *ui_->grdWorte->table();
  table.setColumns(2);
  table.setText(0, 0, "Wort");
  table.setText(0, 1, "steht für");
  for (const Token& each : kTokens) table.addRow({each.token, each.meaning});
  ui_->grdWorte->setStretchColumn(1);
  ui_->grdWorte->setCurrentRow(1);
  connect(ui_->grdWorte, &TextGrid::doubleClickedAt, this, [this](int row, int) { insertToken(row); });
  connect(ui_->cmdEinfuegen, &QAbstractButton::clicked, this,
          [this] { insertToken(ui_->grdWorte->currentRow()); });
  connect(ui_->txtVorlage, &QLineEdit::textChanged, this, &frmEtikettText::showPreview);
  connect(ui_->cmdOK, &QAbstractButton::clicked, this, &QDialog::accept);
  connect(ui_->cmdCancel, &QAbstractButton::clicked, this, &QDialog::reject);
  showPreview();
}

frmEtikettText::~frmEtikettText() = default;

void frmEtikettText::setSText(const QString& sText) {
  ui_->txtVorlage->setText(sText);
}

QString frmEtikettText::sText() const {
  return ui_->txtVorlage->text();
}

void frmEtikettText::insertToken(int row) {
  if (row < 1) return;
  ui_->txtVorlage->insert(ui_->grdWorte->table()->text(row, 0) + u';');
  ui_->txtVorlage->setFocus();
}

/// The second of three labels in sets of three.
void frmEtikettText::showPreview() {
  const LabelFields fields = sample();
  LabelCopies copies(
      expandLabelTemplate(sText(), fields), 3, 3, [&] { return fields.zeit; }, [](int) {});
  copies.next();
  ui_->lblBeispiel->setText(copies.next().join(u'\n'));
}

}  // namespace qk
