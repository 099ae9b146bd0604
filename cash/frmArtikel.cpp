#include "cash/frmArtikel.h"

#include <QPushButton>
#include <QScreen>

#include "app/ground/feld_wert.h"
#include "app/ground/global_variablen.h"
#include "cash/article_codes.h"
#include "cash/attempt.h"
#include "cash/cash_store.h"
#include "platform/dao/recordset.h"
#include "platform/dialog/dialogs.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/suggestions.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/widgets/empty_text.h"
#include "ui_frmArtikel.h"

namespace qk {

namespace {

const QString kSchuetzen =
    "Select * from Kasse_Verwaltung where (Verein <> -1) OR (Kasse_Verwaltung.Verein Is Null) order by Platz";
const QString kVereine = "Select * from Kasse_Verwaltung where Verein = -1 order by Platz";
const char* const kCounts = "|1;1|2;2|3;3|4;4|5;5|6;6|7;7|8;8|9;9|10;10|15;15|20;20";

QString waehrung(const QVariant& value) {
  return value.isNull() ? QString() : value.value<Money>().toCurrencyText();
}

QString artikelNummer(const QVariant& value) {
  const QString number = value.toString();
  return kommtZurueck(number) ? number : number + "  (vom EAN-Code kommt sie nicht zurück)";
}

std::vector<BoundColumn> spaltenSchuetzen() {
  return {{.field = "Platz", .characters = 6},
          {.field = "Bezeichnung", .characters = 34},
          {.field = "ArtikelNr", .characters = 16, .text = artikelNummer},
          {.field = "Betrag", .characters = 12, .text = waehrung},
          {.field = "Nachkauf", .title = "Kauf-Anzahl", .characters = 10},
          {.field = "VorgabeOffen", .title = "Offen", .characters = 6, .checkBox = true}};
}

std::vector<BoundColumn> spaltenVereine() {
  return {{.field = "Platz", .characters = 6},
          {.field = "Bezeichnung", .characters = 34},
          {.field = "Betrag", .characters = 12, .text = waehrung},
          {.field = "Nachkauf", .characters = 10},
          {.field = "Verein", .characters = 6, .locked = true}};
}

}  // namespace

frmArtikel::frmArtikel(const Workplace& workplace, const GlobalVariablen& global, QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      global_(global),
      ui_(std::make_unique<Ui::frmArtikel>()),
      data1_(std::make_unique<BoundRows>(report("Fehler beim Bearbeiten der Einlagen!"))),
      data2_(std::make_unique<BoundRows>(report("Fehler beim Bearbeiten der Einlagen!"))) {
  ui_->setupUi(this);
  data1_->setColumns(spaltenSchuetzen());
  data2_->setColumns(spaltenVereine());
  data1_->setBeforeUpdate([this](int row) { return vorSpeichern(row); });
  data2_->setBeforeUpdate([this](int row) { return data2_->setValue(row, "Verein", -1); });
  for (BoundRows* rows : {data1_.get(), data2_.get()}) {
    rows->setUnlocked(true);
    rows->setAppending(true);
  }
  ui_->TDBGrid1->setRows(data1_.get());
  ui_->TDBGrid2->setRows(data2_.get());
  for (BoundGrid* grid : {ui_->TDBGrid1, ui_->TDBGrid2}) grid->setUnlocked(true);
  ui_->flexBarcode->setTable(&targets_.flexBarcode());
  ui_->flexBarcode->setStretchColumn(StakeTargetColumn::Name);
  ui_->flexBarcode->setSuggestions(StakeTargetColumn::Anz, parseSuggestions(kCounts));
  ui_->flexBarcode->setEmptyText("Der Wettkampf hat keine Disziplinen.");
  setEmptyText(ui_->lstEinlagen, "Keine Einlagen");
  setEmptyText(ui_->lstEinlagenKlasse, "Keine Einlagen");
  setEmptyText(ui_->lstSchuetzenKlassen, "Der Wettkampf hat keine Klassen.");
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  connectControls();
}

frmArtikel::~frmArtikel() = default;

ErrorReport frmArtikel::report(const QString& text) const {
  return fehlerReport(workplace_.dialogs, text);
}

void frmArtikel::versuche(const std::function<void()>& routine) {
  qk::versuche(workplace_, routine);
}

void frmArtikel::connectControls() {
  const auto press = [this](QPushButton* button, std::function<void()> routine) {
    connect(button, &QPushButton::clicked, this, [this, routine] { versuche(routine); });
  };
  press(ui_->cmdDelete, [this] { cmdDelete(*ui_->TDBGrid1, true); });
  press(ui_->cmdDeleteMV, [this] { cmdDelete(*ui_->TDBGrid2, false); });
  press(ui_->cmdDelEinlage, [this] { cmdDelEinlage(*ui_->TDBGrid1); });
  press(ui_->cmdDelEinlageMV, [this] { cmdDelEinlage(*ui_->TDBGrid2); });
  press(ui_->cmdDelAll, [this] { cmdDelAll(); });
  press(ui_->cmdRefresh, [this] { cmdRefresh(); });
  press(ui_->cmdRefreshMV, [this] {
    if (ui_->TDBGrid2->submitRow()) data2_->refresh();
  });
  press(ui_->cmdSaveDisziKombi, [this] { cmdSaveDisziKombi(); });
  press(ui_->cmdSaveEinlagenKlassen, [this] { cmdSaveEinlagenKlassen(); });
  press(ui_->cmdKlassenSetzen, [this] { cmdKlassenSetzen(); });
  connect(ui_->cmdClose, &QPushButton::clicked, this, &QDialog::reject);
  connect(ui_->lstEinlagen, &QListWidget::currentRowChanged, this, [this] { zeigeDisziplinen(); });
  connect(ui_->lstEinlagenKlasse, &QListWidget::currentRowChanged, this, [this] { zeigeKlassen(); });
  connect(&targets_.flexBarcode(), &TextTable::edited, this, [this](int row, int column) {
    disziGeaendert_ = disziEinlage_ != 0;
    if (column == StakeTargetColumn::Anz)  // who gives a number means the discipline
      targets_.flexBarcode().setText(row, StakeTargetColumn::Gewaehlt, "1");
  });
  connect(ui_->lstSchuetzenKlassen, &QListWidget::itemSelectionChanged, this,
          [this] { klassenGeaendert_ = klassenEinlage_ != 0; });
}

void frmArtikel::setVisible(bool visible) {
  if (visible && !isVisible()) {
    Form_Load();
    resize(QSize(1280, 660).boundedTo(screen()->availableSize() * 95 / 100));
    ui_->TDBGrid1->setFocus();
  }
  QDialog::setVisible(visible);
}

void frmArtikel::Form_Load() {
  reported(report("Fehler beim Laden der Einlagen!"), [this](Steps&) {
    database_ = dao::Database::open(global_.sWettkampf);
    data1_->open(*database_, kSchuetzen);
    data1_->waitForAll();
    data2_->open(*database_, kVereine);
    data2_->waitForAll();
    targets_.LoadDisziKombi(ladeDisziKombi(*database_));
    for (const ShooterClass& each : ladeKlassen(*database_)) {
      auto* entry = new QListWidgetItem(each.Klasse, ui_->lstSchuetzenKlassen);
      entry->setData(Qt::UserRole, each.id);
    }
    fuelleEinlagen();
  });
  ui_->SSTab1->setEnabled(database_ != nullptr);  // without a competition there is nothing to work on
}

// --- the two grids

QString frmArtikel::gespeicherteBezeichnung(int row) const {
  const auto stored = database_->openRecordset("Select * from Kasse_Verwaltung where ID = " +
                                               QString::number(data1_->value(row, "ID").toInt()));
  return stored->eof() ? QString() : FeldWert(*stored, "Bezeichnung").toString();
}

/// Runs before an edited stake of shooters is stored; false gives the edit up.
bool frmArtikel::vorSpeichern(int row) {
  if (!data1_->isNewRow(row) && gespeicherteBezeichnung(row) == kSpende) {
    workplace_.dialogs.note("Die Einlage >>Spende<< kann nicht geändert werden!");
    return false;
  }
  bool ok = data1_->setValue(row, "Verein", 0);
  for (const QString& field : QStringList{"Nachkauf", "Betrag"})
    if (data1_->value(row, field).isNull()) ok = data1_->setValue(row, field, "0") && ok;
  const ArticleCodes codes = artikelCodes(data1_->value(row, "ArtikelNr").toString());
  if (codes.gekuerzt) {
    workplace_.dialogs.note("Hinweis: Bei EAN13 sind nur die ersten 12 Zahlen relevant!");
    ok = data1_->setValue(row, "ArtikelNr", codes.ArtikelNr) && ok;
  }
  return data1_->setValue(row, "ArtikelEAN13", codes.EAN13) &&
         data1_->setValue(row, "ArtikelCODE128", codes.CODE128) &&
         data1_->setValue(row, "ArtikelCODE39", codes.CODE39) && ok;
}

void frmArtikel::cmdDelete(BoundGrid& grid, bool schuetzt) {
  BoundRows& rows = *grid.rows();
  const int row = grid.currentRow();
  if (row < 0 || rows.isNewRow(row)) return;
  const QString name = rows.value(row, "Bezeichnung").toString();
  if (schuetzt && name == kSpende)
    return workplace_.dialogs.note("Die Einlagenart >>Spende<< kann nicht gelöscht werden.");
  if (!workplace_.dialogs.confirm("Soll die Einlage: " + name + " wirklich gelöscht werden?",
                                  BoxIcon::Question, BoxAnswer::No))
    return;
  rows.cancelRow();
  if (rows.removeBookmarked({rows.bookmark(row)})) grid.setCurrentRow(qMax(0, row - 1));
}

void frmArtikel::cmdDelEinlage(BoundGrid& grid) {
  const BoundRows& rows = *grid.rows();
  const int row = grid.currentRow();
  if (row < 0 || rows.isNewRow(row)) return;
  const QString name = rows.value(row, "Bezeichnung").toString();
  if (!workplace_.dialogs.confirm(
          "Sollen alle Kasseneingänge der Einlage: " + name + " unwiderruflich gelöscht werden?",
          BoxIcon::Question, BoxAnswer::No))
    return;
  database_->execute("Delete * from Kasse_Eingang where KasseID = " +
                     QString::number(rows.value(row, "ID").toInt()));
  workplace_.dialogs.note("Alle Eingänge von der Einlage: " + name + " wurden gelöscht!");
}

void frmArtikel::cmdDelAll() {
  if (!workplace_.dialogs.confirm("Sollen alle Kasseneingänge unwiderruflich gelöscht werden?",
                                  BoxIcon::Question, BoxAnswer::No))
    return;
  database_->execute("Delete * from Kasse_Eingang");
  workplace_.dialogs.note("Alle Eingänge wurden gelöscht!");
}

void frmArtikel::cmdRefresh() {
  if (!ui_->TDBGrid1->submitRow() || !verlassen()) return;
  data1_->refresh();
  data1_->waitForAll();
  fuelleEinlagen();
}

/// Both lists of stakes, from the first grid's rows.
void frmArtikel::fuelleEinlagen() {
  disziGeaendert_ = klassenGeaendert_ = false;
  for (QListWidget* list : {ui_->lstEinlagen, ui_->lstEinlagenKlasse}) {
    list->clear();
    for (int row = 0; row < data1_->count(); ++row) {
      auto* entry = new QListWidgetItem(data1_->value(row, "Bezeichnung").toString(), list);
      entry->setData(Qt::UserRole, data1_->value(row, "ID").toInt());
    }
  }
}

// --- what a stake pays for, and for whom

bool frmArtikel::verlassen() {
  const auto ask = [this](const QString& what) {
    return workplace_.dialogs.confirm("Die Zuordnung der " + what +
                                      " ist geändert und nicht gespeichert.\r\nJetzt speichern?");
  };
  if (disziGeaendert_) {
    if (ask("Disziplinen"))
      cmdSaveDisziKombi();
    else
      disziGeaendert_ = false;
  }
  if (klassenGeaendert_) {
    if (ask("Klassen"))
      cmdSaveEinlagenKlassen();
    else
      klassenGeaendert_ = false;
  }
  return !disziGeaendert_ && !klassenGeaendert_;
}

/// Later: a click that is under way would choose its own entry behind this.
void frmArtikel::bleibe(QListWidget& list, qint32 einlage) {
  const auto back = [&list, einlage] {
    const QSignalBlocker quiet(list);
    for (int row = 0; row < list.count(); ++row)
      if (list.item(row)->data(Qt::UserRole).toInt() == einlage) list.setCurrentRow(row);
  };
  QMetaObject::invokeMethod(&list, back, Qt::QueuedConnection);
}

void frmArtikel::zeigeDisziplinen() {
  if (!verlassen()) return bleibe(*ui_->lstEinlagen, disziEinlage_);
  const QListWidgetItem* entry = ui_->lstEinlagen->currentItem();
  disziEinlage_ = entry ? entry->data(Qt::UserRole).toInt() : 0;
  reported(report("Fehler Ermitteln der Disziplin-Kombination!"),
           [this](Steps&) { targets_.zeige(*database_, disziEinlage_); });
  disziGeaendert_ = false;
}

void frmArtikel::zeigeKlassen() {
  if (!verlassen()) return bleibe(*ui_->lstEinlagenKlasse, klassenEinlage_);
  const QListWidgetItem* entry = ui_->lstEinlagenKlasse->currentItem();
  klassenEinlage_ = entry ? entry->data(Qt::UserRole).toInt() : 0;
  reported(report("Fehler Ermitteln der Einlage zu Schützenklassen!"),
           [this](Steps&) { waehleKlassen(klassenDerEinlage(*database_, klassenEinlage_)); });
  klassenGeaendert_ = false;
}

void frmArtikel::waehleKlassen(const QSet<qint32>& klassen) {
  for (int i = 0; i < ui_->lstSchuetzenKlassen->count(); ++i) {
    QListWidgetItem* entry = ui_->lstSchuetzenKlassen->item(i);
    entry->setSelected(klassen.contains(entry->data(Qt::UserRole).toInt()));
  }
}

std::vector<qint32> frmArtikel::gewaehlteKlassen() const {
  std::vector<qint32> chosen;
  for (int i = 0; i < ui_->lstSchuetzenKlassen->count(); ++i)
    if (const QListWidgetItem* entry = ui_->lstSchuetzenKlassen->item(i); entry->isSelected())
      chosen.push_back(entry->data(Qt::UserRole).toInt());
  return chosen;
}

void frmArtikel::cmdSaveDisziKombi() {
  if (disziEinlage_ == 0) return;
  if (reported(report("Fehler beim Speichern der Disziplinen-Kombinationen!"),
               [this](Steps&) { targets_.speichere(*database_, disziEinlage_); }))
    disziGeaendert_ = false;
}

void frmArtikel::cmdSaveEinlagenKlassen() {
  if (klassenEinlage_ == 0) return;
  if (reported(report("Fehler beim Speichern der Einlagen zu Schützenklassen!"),
               [this](Steps&) { speichereKlassen(*database_, klassenEinlage_, gewaehlteKlassen()); }))
    klassenGeaendert_ = false;
}

void frmArtikel::cmdKlassenSetzen() {
  const ClassFilter filter{ui_->chkFreihand->isChecked(), ui_->chkAuflage->isChecked(),
                           ui_->chkDamen->isChecked(),    ui_->chkHerren->isChecked(),
                           ui_->chkBis18->isChecked(),    ui_->chkueber18->isChecked()};
  reported(report("Fehler beim Setzen der Schützenklassen-Auswahl!"),
           [&](Steps&) { waehleKlassen(klassenNachMerkmal(*database_, filter)); });
}

/// Rows are stored as they are left: leaving the window leaves the row.
void frmArtikel::reject() {
  if (ui_->TDBGrid1->submitRow() && ui_->TDBGrid2->submitRow() && verlassen()) QDialog::reject();
}

}  // namespace qk
