#include "cash/label_panel.h"

#include <QPainter>
#include <QProgressDialog>

#include "app/ground/printing.h"
#include "app/ground/temp_module.h"
#include "cash/attempt.h"
#include "cash/frmEtikettText.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/suggestions.h"
#include "platform/print/picture_labels.h"
#include "platform/print/printer_labels.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"
#include "platform/widgets/hourglass.h"
#include "ui_label_panel.h"

namespace qk {

namespace {

constexpr int kPrinterError = 482;
const char* const kCounts = "|1;1|2;2|3;3|4;4|5;5|6;6|7;7|8;8|9;9|10;10";

QString fontName(const FontSpec& font) {
  return font.name + ", " + numberText(font.size);
}

int wholeNumber(const QString& text) {
  return toInt32(ZahlAusText(text));
}

/// While it lives the window takes no input.
class Busy {
 public:
  Busy(QWidget& window, bool& flag) : window_(&window), flag_(flag) {
    flag_ = true;
    window_->setEnabled(false);
  }
  ~Busy() {
    window_->setEnabled(true);
    flag_ = false;
  }
  Busy(const Busy&) = delete;
  Busy& operator=(const Busy&) = delete;

 private:
  QWidget* window_;
  bool& flag_;
  const Hourglass hourglass_;
};

/// The documents of a label side by side, each with its edge.
QImage nebeneinander(const QList<QImage>& sheets) {
  constexpr int kGap = 20;
  QSize size(-kGap, 0);
  for (const QImage& sheet : sheets)
    size = {size.width() + kGap + sheet.width(), qMax(size.height(), sheet.height())};
  QImage all(size, QImage::Format_ARGB32_Premultiplied);
  all.fill(Qt::transparent);
  QPainter painter(&all);
  int x = 0;
  for (const QImage& sheet : sheets) {
    painter.drawImage(x, 0, sheet);
    painter.setPen(QPen(Qt::gray, 2));
    painter.drawRect(x + 1, 1, sheet.width() - 2, sheet.height() - 2);
    x += sheet.width() + kGap;
  }
  return all;
}

}  // namespace

LabelPanel::LabelPanel(QWidget* parent) : QWidget(parent), ui_(std::make_unique<Ui::LabelPanel>()) {
  ui_->setupUi(this);
  ui_->flexBarcode->setStretchColumn(LabelColumn::Name);
  ui_->flexBarcode->setEmptyText("Der Wettkampf hat keine Disziplinen.");
  ui_->cmbPrinter->setPlaceholderText("(der aktuelle Drucker)");
  // Once for all that changes together.
  pictureTimer_.setSingleShot(true);
  connect(&pictureTimer_, &QTimer::timeout, this, &LabelPanel::showPicture);
}

LabelPanel::~LabelPanel() = default;

void LabelPanel::setDesk(CashDesk& desk) {
  desk_ = &desk;
  selection_ = std::make_unique<LabelSelection>(desk);
  output_ = std::make_unique<PrinterLabels>(currentPrinter(desk.workplace()));
  ui_->flexBarcode->setTable(&selection_->flexBarcode());
  connect(&selection_->flexBarcode(), &QAbstractItemModel::dataChanged, this, &LabelPanel::schedulePicture);
  connect(desk_, &CashDesk::shooterShown, this, &LabelPanel::schedulePicture);
  connectControls();
}

void LabelPanel::setOutput(std::unique_ptr<LabelOutput> output) {
  output_ = std::move(output);
}

/// Every change of a control ends here.
void LabelPanel::versuche(const std::function<void()>& routine) {
  qk::versuche(desk_->workplace(), routine);
  schedulePicture();
}

QString LabelPanel::storedPrinter() const {
  return liesText(settings(), keys::BarcodePrinter);
}

void LabelPanel::keepFlag(QAbstractButton* box, const SettingKey& key) {
  connect(box, &QAbstractButton::clicked, this,
          [this, &key](bool on) { versuche([&] { schreibe(settings(), key, on); }); });
}

/// A text that is no number gives way to what is stored.
void LabelPanel::keepPosition(QLineEdit* field, const SettingKey& key) {
  connect(field, &QLineEdit::editingFinished, this, [this, field, &key] {
    versuche([&] {
      if (!isNumeric(field->text())) return field->setText(liesText(settings(), key));
      schreibe(settings(), key, field->text());
    });
  });
}

void LabelPanel::connectControls() {
  connect(ui_->chkPrintManuellTabelle, &QCheckBox::toggled, this, [this](bool on) {
    selection_->setManuell(on);
    ui_->flexBarcode->setSuggestions(LabelColumn::Anz, on ? parseSuggestions(kCounts) : Suggestions());
    UpdateBarcodeAnzeige(-1);
  });
  connect(ui_->cmdPrint, &QAbstractButton::clicked, this, [this] { versuche([this] { cmdPrint(); }); });
  ui_->cmdOhneBarcodeFont->setStatusTip(
      "Die Balken zeichnet das Programm selbst; eine Barcode-Schrift ist nicht nötig.");
  ui_->cmdPrint->setStatusTip("Druckt die Etiketten des Kaufs, oder die von Hand gewählten.");
  connect(ui_->cmbPrinter, &QComboBox::textActivated, this, [this](const QString& name) {
    versuche([&] { schreibe(settings(), keys::BarcodePrinter, name); });
    showPrinter();
  });
  const QList<QAbstractButton*> kinds = {ui_->optBarcodeAuswahl_0, ui_->optBarcodeAuswahl_1,
                                         ui_->optBarcodeAuswahl_2};
  for (int kind = 0; kind < kinds.size(); ++kind)
    connect(kinds[kind], &QAbstractButton::clicked, this,
            [this, kind] { versuche([&] { schreibe(settings(), keys::BarcodeAuswahl, kind); }); });
  const auto keepOrientation = [this](QAbstractButton* upright, QAbstractButton* across,
                                      const SettingKey& key) {
    connect(upright, &QAbstractButton::clicked, this,
            [this, &key] { versuche([&] { schreibe(settings(), key, 0); }); });
    connect(across, &QAbstractButton::clicked, this,
            [this, &key] { versuche([&] { schreibe(settings(), key, 1); }); });
  };
  keepOrientation(ui_->optFormatAusrichtung_0, ui_->optFormatAusrichtung_1, keys::BarcodeFormatAusrichtung);
  keepOrientation(ui_->optFormatAusrichtung2_0, ui_->optFormatAusrichtung2_1,
                  keys::Etikett2FormatAusrichtung2);
  keepPosition(ui_->txtBarcodeX, keys::BarcodeX);
  keepPosition(ui_->txtBarcodeY, keys::BarcodeY);
  keepPosition(ui_->txtBarcodeX2, keys::BarcodeX2);
  keepPosition(ui_->txtBarcodeY2, keys::BarcodeY2);
  keepFlag(ui_->chkBarcodeDruck, keys::BarcodeDruck);
  keepFlag(ui_->chkTextDruck, keys::PrintTextDruck);
  keepFlag(ui_->chkEtikett2, keys::Etikett2);
  connect(ui_->chkEtikett2, &QCheckBox::toggled, this, &LabelPanel::enableSecond);
  for (QLineEdit* field : {ui_->txtBarcodeX, ui_->txtBarcodeY, ui_->txtBarcodeX2, ui_->txtBarcodeY2})
    connect(field, &QLineEdit::textEdited, this, &LabelPanel::schedulePicture);
  connect(ui_->txtScheibenText, &QLineEdit::textEdited, this, [this](const QString& text) {
    versuche([&] { schreibe(settings(), keys::DruckTextScheibe, text); });
  });
  connect(ui_->cmdScheibenTextHilfe, &QAbstractButton::clicked, this, [this] {
    frmEtikettText help(this);
    help.setSText(ui_->txtScheibenText->text());
    if (help.exec() != QDialog::Accepted) return;
    ui_->txtScheibenText->setText(help.sText());
    versuche([&] { schreibe(settings(), keys::DruckTextScheibe, help.sText()); });
  });
  connect(ui_->cmdBarcodeFont, &QAbstractButton::clicked, this,
          [this] { chooseFont(keys::BarcodeFont, [this] { Set_BarcodeFont(); }); });
  connect(ui_->cmdPrintFont, &QAbstractButton::clicked, this,
          [this] { chooseFont(keys::PrintScheibeFont, [this] { Set_PrintScheibenFont(); }); });
  connect(ui_->cmdOhneBarcodeFont, &QAbstractButton::clicked, this, [this] {
    versuche([this] { schreibe(settings(), keys::BarcodeFont, keys::BarcodeFont.preset.toString()); });
    Set_BarcodeFont();
  });
}

/// Cancel leaves the font alone, and so does a dialog that fails.
void LabelPanel::chooseFont(const SettingKey& key, const std::function<void()>& apply) {
  try {
    const auto choice = desk_->workplace().dialogs.chooseFont({liesText(settings(), key), 0});
    if (!choice) return;
    schreibe(settings(), key, choice->font);
    apply();
    schedulePicture();
  } catch (const Error&) {
    return;
  }
}

void LabelPanel::enableSecond() {
  ui_->panelEtikett2->setEnabled(ui_->chkEtikett2->isChecked());
}

void LabelPanel::showPrinter() {
  const QString name = output_->currentPrinter();
  const QString chosen = ui_->cmbPrinter->currentText();
  QString text = "Aktueller Drucker: " + (name.isEmpty() ? QString("Standarddrucker") : name);
  if (chosen.isEmpty() && !storedPrinter().isEmpty())
    text += "\nDer Etikettendrucker »" + storedPrinter() + "« ist nicht mehr da.";
  else if (output_->isPaused(chosen))
    text += "\nDer Etikettendrucker ist angehalten: Etiketten warten, bis er weiterläuft.";
  ui_->lblDrucker->setText(text);
  paper_ = output_->paper(chosen);
  schedulePicture();
}

bool LabelPanel::druckerBereit() {
  const QString chosen = ui_->cmbPrinter->currentText();
  showPrinter();
  if (chosen.isEmpty() && !storedPrinter().isEmpty())
    throw Error(kPrinterError, "Der Etikettendrucker »" + storedPrinter() +
                                   "« ist nicht mehr da. Register Scheibendruck: einen anderen wählen.");
  return !output_->isPaused(chosen) ||
         desk_->workplace().dialogs.confirm(
             "Der Drucker »" + (chosen.isEmpty() ? output_->currentPrinter() : chosen) +
                 "« ist angehalten. Die Etiketten warten dort, bis er weiterläuft.\r\nTrotzdem drucken?",
             BoxIcon::Exclamation, BoxAnswer::No);
}

void LabelPanel::Form_Load() {
  ui_->cmbPrinter->clear();
  ui_->cmbPrinter->addItems(output_->printers());
  const QString printer = storedPrinter();
  ui_->cmbPrinter->setCurrentIndex(printer.isEmpty() ? -1 : ui_->cmbPrinter->findText(printer));
  Set_BarcodeFont();
  Set_PrintScheibenFont();
  const int kind = liesZahl(settings(), keys::BarcodeAuswahl);
  (kind == 1   ? ui_->optBarcodeAuswahl_1
   : kind == 2 ? ui_->optBarcodeAuswahl_2
               : ui_->optBarcodeAuswahl_0)
      ->setChecked(true);
  const auto orientation = [this](const SettingKey& key, QRadioButton* upright, QRadioButton* across) {
    (liesFlag(settings(), key) ? across : upright)->setChecked(true);
  };
  orientation(keys::BarcodeFormatAusrichtung, ui_->optFormatAusrichtung_0, ui_->optFormatAusrichtung_1);
  orientation(keys::Etikett2FormatAusrichtung2, ui_->optFormatAusrichtung2_0, ui_->optFormatAusrichtung2_1);
  ui_->txtBarcodeX->setText(liesText(settings(), keys::BarcodeX));
  ui_->txtBarcodeY->setText(liesText(settings(), keys::BarcodeY));
  ui_->txtBarcodeX2->setText(liesText(settings(), keys::BarcodeX2));
  ui_->txtBarcodeY2->setText(liesText(settings(), keys::BarcodeY2));
  ui_->chkTextDruck->setChecked(liesFlag(settings(), keys::PrintTextDruck));
  ui_->chkBarcodeDruck->setChecked(liesFlag(settings(), keys::BarcodeDruck));
  ui_->txtScheibenText->setText(liesText(settings(), keys::DruckTextScheibe));
  ui_->chkEtikett2->setChecked(liesFlag(settings(), keys::Etikett2));
  enableSecond();
  showPrinter();
}

void LabelPanel::Set_PrintScheibenFont() {
  textFont_ = parseFontText(liesText(settings(), keys::PrintScheibeFont));
  ui_->lblPrintFontName->setText(fontName(textFont_));
}

void LabelPanel::Set_BarcodeFont() {
  barcodeFont_ = parseFontText(liesText(settings(), keys::BarcodeFont));
  ui_->lblBarcodeFontName->setText(fontName(barcodeFont_));
}

void LabelPanel::LoadDisziKombiBaum(const std::vector<DisziKombi>& entries) {
  selection_->LoadDisziKombiBaum(entries);
}

void LabelPanel::UpdateBarcodeAnzeige(int nRow) {
  if (desk_->isOpen()) selection_->UpdateBarcodeAnzeige(nRow);
}

int LabelPanel::anzahlEtiketten() const {
  int count = 0;
  for (const LabelRow& row : selection_->gewaehlt()) count += row.anzahl;
  return count;
}

bool LabelPanel::cmdPrint() {
  if (druckt_ || !druckerBereit()) return false;
  const Busy busy(*window(), druckt_);
  // It comes up when the run takes its time, above all in the pauses between sets.
  QProgressDialog progress("Etiketten werden gedruckt...", "&Anhalten", 0, 0, window());
  progress.setObjectName("dlgEtiketten");
  progress.setWindowTitle("Etiketten");
  progress.setWindowModality(Qt::WindowModal);
  // It ends with the run: a reset between would forget that somebody stopped it.
  progress.setAutoReset(false);
  progress.setAutoClose(false);
  if (!selection_->manuell())
    UpdateBarcodeAnzeige(-1);  // all of the purchase: a run leaves its last stake there
  progress.setMaximum(anzahlEtiketten());
  int printed = 0;
  const auto weiter = [&] {
    progress.setValue(printed);
    return !progress.wasCanceled();
  };
  const auto counted = [&] { return weiter() && (++printed, true); };
  try {
    if (selection_->manuell()) {
      PrintScheibenEtiketten(-1, counted);
    } else {
      for (int row = 1; row < desk_->purchase().flex().rows() && weiter(); ++row) {
        UpdateBarcodeAnzeige(row);
        PrintScheibenEtiketten(row, counted);
      }
    }
  } catch (const Error&) {
    showPrinter();  // the label printer stays current
    throw;
  }
  showPrinter();
  return !progress.wasCanceled();
}

LabelLayout LabelPanel::layoutOfLabels() const {
  LabelLayout layout;
  layout.printer = ui_->cmbPrinter->currentText();
  layout.kind = ui_->optBarcodeAuswahl_1->isChecked()   ? BarcodeKind::Code39
                : ui_->optBarcodeAuswahl_2->isChecked() ? BarcodeKind::Ean13
                                                        : BarcodeKind::Code128;
  layout.first = {wholeNumber(ui_->txtBarcodeX->text()), wholeNumber(ui_->txtBarcodeY->text()),
                  ui_->optFormatAusrichtung_1->isChecked()};
  layout.second = {wholeNumber(ui_->txtBarcodeX2->text()), wholeNumber(ui_->txtBarcodeY2->text()),
                   ui_->optFormatAusrichtung2_1->isChecked()};
  layout.barcode = ui_->chkBarcodeDruck->isChecked();
  layout.text = ui_->chkTextDruck->isChecked();
  layout.zweitesEtikett = ui_->chkEtikett2->isChecked();
  layout.vorlage = ui_->txtScheibenText->text();
  layout.textFont = textFont_;
  layout.barcodeFont = barcodeFont_;
  return layout;
}

LabelShooter LabelPanel::shooterOfLabels(int nRow) const {
  const ShownShooter& shown = desk_->shooter();
  LabelShooter shooter{desk_->sStartNr(), shown.ID, {}};
  LabelFields& fields = shooter.felder;
  fields.startnr = FeldWert(desk_->store().schuetzen(), "Startnummer").toString();
  fields.verein = shown.Verein;
  fields.mann = shown.Mann;
  fields.klasse = shown.Klasse;
  fields.ausweis = shown.AusweisNr;
  fields.spo = shown.SPO;
  fields.spokey = shown.SPOKEY;
  fields.name = shown.Name;
  if (nRow >= 0) fields.einlage = desk_->purchase().flex().text(nRow, CashColumn::Bezeichnung);
  fields.wettkampf = desk_->sBez1;
  fields.zeit = desk_->workplace().clock.now();
  return shooter;
}

int LabelPanel::PrintScheibenEtiketten(int nRow, const std::function<bool()>& weiter) {
  const Workplace& workplace = desk_->workplace();
  return qk::PrintScheibenEtiketten(
      *output_, desk_->database(), selection_->gewaehlt(), layoutOfLabels(), shooterOfLabels(nRow),
      {[&workplace] { return workplace.clock.now(); },
       [&workplace](int milliseconds) { workplace.waits.sleep(milliseconds); }, weiter});
}

void LabelPanel::schedulePicture() {
  pictureTimer_.start(0);
}

/// Nobody asked for it: what keeps it from being shown stands in its place.
void LabelPanel::showPicture() {
  if (!desk_ || !desk_->isOpen() || druckt_ || paper_.size.isEmpty()) return;
  ui_->lblBildHinweis->hide();
  try {
    PictureLabels picture(paper_);
    drawSample(picture);
    showHints(picture);
    if (picture.pictures().isEmpty())
      ui_->picEtikett->setText("Es ist nichts zu drucken: »Drucken« bei Barcode oder Text ankreuzen.");
    else
      ui_->picEtikett->setImage(nebeneinander(picture.pictures()));
  } catch (const Error& error) {
    ui_->picEtikett->setText(error.description());
  }
}

/// The first label that would be printed, or one of the first discipline: a sample is better than nothing.
void LabelPanel::drawSample(LabelOutput& output) const {
  const std::vector<LabelRow> chosen = selection_->gewaehlt();
  const LabelRow row = chosen.empty() ? selection_->muster() : chosen.front();
  const LabelLayout layout = layoutOfLabels();
  const LabelShooter shooter = shooterOfLabels(desk_->purchase().isEmpty() ? -1 : 1);
  const int count = qMax(1, row.anzahl);
  LabelCopies copies(
      textOf(row, layout, shooter), count, count, [this] { return desk_->workplace().clock.now(); },
      [](int) {});
  druckeEtikett(output, layout, barcodeOf(row, layout, shooter), copies);
}

void LabelPanel::showHints(const PictureLabels& picture) {
  QStringList hints;
  if (picture.leavesPaper())
    hints += QString("Passt nicht auf das Papier (%1 × %2 mm): X, Y oder die Schrift verkleinern.")
                 .arg(qRound(paper_.size.width()))
                 .arg(qRound(paper_.size.height()));
  for (const QString& content : picture.impossible())
    hints += "Aus »" + content + "« wird kein Strichcode dieser Art: es fehlt auf dem Etikett.";
  if (picture.unreadable())
    hints += "Der Strichcode ist so nicht zu lesen: die Balken sind zu schmal, abgeschnitten oder verdeckt.";
  ui_->lblBildHinweis->setText(hints.join(u'\n'));
  ui_->lblBildHinweis->setVisible(!hints.isEmpty());
}

}  // namespace qk
