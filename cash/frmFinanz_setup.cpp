// How the cash desk's window is put together: layout, keys, what its controls are connected to.
#include <QScreen>
#include <QShortcut>
#include <QStatusTipEvent>

#include "app/ground/printing.h"
#include "app/ground/settings_keys.h"
#include "app/ground/temp_module_ui.h"
#include "cash/frmFinanz.h"
#include "cash/frmKasseSetup.h"
#include "cash/stake_list.h"
#include "data/icons/icons.h"
#include "platform/dialog/dialogs.h"
#include "platform/look/enlarged.h"
#include "platform/widgets/empty_text.h"
#include "ui_frmFinanz.h"

namespace qk {

namespace {

constexpr quint32 kYellow = 65535;

}  // namespace

frmFinanz::frmFinanz(const Workplace& workplace, GlobalVariablen& global, ReportDoor& reports,
                     QWidget* parent)
    : QDialog(parent),
      workplace_(workplace),
      reports_(reports),
      desk_(workplace, global),
      ui_(std::make_unique<Ui::frmFinanz>()),
      scans_(workplace, *this) {
  ui_->setupUi(this);
  ui_->panelScheiben->setDesk(desk_);
  ui_->panelAusgaben->setDesk(desk_);
  ui_->panelEtiketten->setDesk(desk_);
  layOut();
  connectDesk();
  connectPurchase();
  connectPayments();
  connectMenus();
  connectScans();
  makeKeys();
}

frmFinanz::~frmFinanz() = default;

void frmFinanz::layOut() {
  setWindowFlag(Qt::WindowMaximizeButtonHint);
  layout()->setMenuBar(ui_->menuBar);
  ui_->mnuOptTemp2->setSeparator(true);
  for (QAction* key :
       {ui_->wechseln, ui_->Drucken, ui_->vorschau, ui_->kladde, ui_->printbarcode, ui_->exit}) {
    key->setIcon(icon(key->objectName()));
    ui_->Toolbar1->addAction(key);
  }
  for (QPushButton* button : findChildren<QPushButton*>()) button->setAutoDefault(false);
  ui_->flex->setTable(&desk_.purchase().flex());
  ui_->flex->setStretchColumn(CashColumn::Bezeichnung);
  ui_->flex->setEmptyText(
      "Noch keine Einlage gewählt: Artikelnummer scannen, oder Einlage anwählen und Enter");
  ui_->flexAll->setTable(&desk_.payments().flexAll());
  ui_->flexAll->setStretchColumn(CashColumn::Bezeichnung);
  ui_->flexAll->setEmptyText("Der Schütze hat noch nichts bezahlt.");
  setEmptyText(ui_->lstAll, "Der Wettkampf hat keine Einlagen.");
  SpaltenbreitenMerken(workplace_, *ui_->flex, keys::KasseFlex.toString());
  SpaltenbreitenMerken(workplace_, *ui_->flexAll, keys::KasseFlexAll.toString());
  ui_->PicDraw->setStretchFactor(0, 1);
  raumFuerRegister();
  followFont();
  const QSize screenSize = screen()->availableGeometry().size();
  resize(QSize(1366, 730).boundedTo(screenSize));
  ui_->panelBezahlen->setTabBetween(ui_->flex, ui_->cmdVerbuchen);
}

/// Only the tab in sight asks for room: the widest one needn't make the window too large for a small screen.
void frmFinanz::raumFuerRegister() {
  for (int tab = 0; tab < ui_->SSTab1->count(); ++tab) {
    const bool shown = tab == ui_->SSTab1->currentIndex();
    const auto policy = shown ? QSizePolicy::Preferred : QSizePolicy::Ignored;
    ui_->SSTab1->widget(tab)->setSizePolicy(policy, policy);
  }
}

void frmFinanz::followFont() {
  look::enlarge(*ui_->txtStartNr, font(), 1.6);
  look::enlarge(*ui_->Label1, font(), 1.6);
  look::enlarge(*ui_->lblKlasse, font(), 1.3);
  look::enlarge(*ui_->cmdVerbuchen, font(), 1.4);
  for (QLabel* label : {ui_->lblGesamt, ui_->lblBezahlt, ui_->lblOffen}) look::enlarge(*label, font(), 1.4);
  ui_->txtStartNr->setMaximumWidth(ui_->txtStartNr->fontMetrics().horizontalAdvance(QString(9, '0')));
  ui_->panelZahlung->setMinimumWidth(PanelMass(*this, 36));
}

void frmFinanz::changeEvent(QEvent* event) {
  QDialog::changeEvent(event);
  if (event->type() == QEvent::FontChange) followFont();
}

/// Hints of menus and buttons stand in the status line.
bool frmFinanz::event(QEvent* event) {
  if (event->type() != QEvent::StatusTip) return QDialog::event(event);
  ui_->statusBar->showMessage(static_cast<QStatusTipEvent*>(event)->tip());
  return true;
}

void frmFinanz::connectDesk() {
  connect(&desk_, &CashDesk::opened, this, &frmFinanz::Form_Load);
  connect(&desk_, &CashDesk::einlagenGeladen, this, &frmFinanz::zeigeEinlagen);
  connect(&desk_, &CashDesk::shooterUnknown, this, [this] {
    ui_->Label1->setText("SCHÜTZE nicht gefunden!!!!");
    setBereit(false);  // nothing is sold to a number that nobody has
    ui_->cmdSchWechsel->setFocus();
  });
  connect(&desk_, &CashDesk::shooterShown, this, &frmFinanz::zeigeSchuetze);
  connect(&desk_, &CashDesk::vmShown, this, &frmFinanz::zeigeVM);
  connect(&desk_, &CashDesk::paymentsShown, ui_->panelAusgaben, &IssuedPanel::LoadScheibenGesamt);
  connect(ui_->panelScheiben, &TargetPanel::stapelGeladen, this, &frmFinanz::zeigeScheibenRegister);
  connect(ui_->panelScheiben, &TargetPanel::alleZurueck, this, [this] {
    versuche([this] {
      LoadDisziKombiBaum();
      ui_->panelScheiben->LoadScheibenStapel();
    });
  });
  connect(ui_->SSTab1, &QTabWidget::currentChanged, this, [this](int tab) {
    raumFuerRegister();
    if (ui_->SSTab1->widget(tab) == ui_->panelScheiben) ui_->panelScheiben->focusNumber();
  });
  zeigeVM();
}

void frmFinanz::connectPurchase() {
  const auto press = [this](QAbstractButton* button, std::function<void()> routine, const char* hint) {
    button->setStatusTip(hint);
    connect(button, &QAbstractButton::clicked, this, [this, routine] { versuche(routine); });
  };
  Purchase& purchase = desk_.purchase();
  ui_->panelBezahlen->setPurchase(workplace_, purchase, true);
  connect(&purchase, &Purchase::changed, this, [this] { ui_->panelEtiketten->UpdateBarcodeAnzeige(-1); });
  connect(ui_->flex, &TextGrid::afterEdit, this,
          [this](int row, int column) { versuche([&] { desk_.purchase().nachEingabe(row, column); }); });
  connectStakes(*ui_->lstAll, [this] { versuche([this] { cmdAdd(); }); });
  connect(ui_->txtArtikelnummer, &QLineEdit::returnPressed, this,
          [this] { versuche([this] { artikelEingegeben(); }); });
  // Later, or the button would take this very Enter for its own: the change is to be seen before the booking.
  connect(ui_->panelBezahlen, &PaymentPanel::bereit, ui_->cmdVerbuchen, qOverload<>(&QWidget::setFocus),
          Qt::QueuedConnection);
  press(
      ui_->cmdAdd, [this] { cmdAdd(); }, "Nimmt die angewählte Einlage in den Kauf (Enter).");
  press(
      ui_->cmdAddAnzahl, [this] { cmdAddAnzahl(); }, "Nimmt die angewählte Einlage mehrmals in den Kauf.");
  press(
      ui_->cmdRemove, [this] { desk_.purchase().entferne(ui_->flex->currentRow()); },
      "Nimmt die angewählte Zeile aus dem Kauf (Entf).");
  press(
      ui_->cmdRemoveAll, [this] { desk_.purchase().entferneAlle(); }, "Leert den Kauf.");
  press(
      ui_->cmdVerbuchen, [this] { cmdVerbuchen(); }, "Speichert den Kauf (F9).");
  press(
      ui_->cmdOK, [this] { cmdOK(); }, "Speichert den Kauf und schließt die Kasse.");
  press(
      ui_->cmdCancel, [this] { reject(); },
      "Schließt die Kasse; ein Kauf in der Hand wird nach Rückfrage verworfen.");
  press(
      ui_->cmdSchWechsel, [this] { wechsle(); }, "Zeigt einen anderen Schützen; der Kauf bleibt (F3).");
  press(
      ui_->cmdSchListe, [this] { waehleAusListe(); },
      "Sucht einen Schützen nach dem Namen; der Kauf bleibt (F5).");
  const auto keep = [this](QCheckBox* box, const SettingKey& key) {
    connect(box, &QCheckBox::clicked, this,
            [this, &key](bool on) { versuche([&] { schreibe(workplace_.settings, key, on); }); });
  };
  keep(ui_->chkAutoDruck, keys::AutoDruckKasse);
  keep(ui_->chkAutoScheibenDruck, keys::AutoScheibenDruckKasse);
  ui_->txtArtikelnummer->installEventFilter(this);
}

/// The field for article numbers shows by its colour that a scan is welcome.
bool frmFinanz::eventFilter(QObject* watched, QEvent* event) {
  if (watched == ui_->txtArtikelnummer &&
      (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)) {
    QPalette colours = palette();
    if (event->type() == QEvent::FocusIn) {
      colours.setColor(QPalette::Base, QColor(kYellow & 0xFF, kYellow >> 8 & 0xFF, kYellow >> 16 & 0xFF));
      colours.setColor(QPalette::Text, Qt::black);
      colours.setColor(QPalette::PlaceholderText, QColor(90, 90, 0));
    }
    ui_->txtArtikelnummer->setPalette(colours);
  }
  return QDialog::eventFilter(watched, event);
}

void frmFinanz::connectPayments() {
  connect(&desk_.payments(), &Payments::changed, this, &frmFinanz::UpdateSummenGesamt);
  connect(ui_->flexAll, &TextGrid::afterEdit, this,
          [this](int row, int column) { versuche([&] { flexAllEingabe(row, column); }); });
  const auto press = [this](QAbstractButton* button, std::function<void()> routine, const char* hint) {
    button->setStatusTip(hint);
    connect(button, &QAbstractButton::clicked, this, [this, routine] { versuche(routine); });
  };
  press(
      ui_->cmdOPVerbuchen,
      [this] {
        if (desk_.istNochDerselbe()) desk_.payments().cmdOPVerbuchen();
      },
      "Alle offenen Zeilen des Schützen gelten als heute bezahlt.");
  press(
      ui_->cmdDelete, [this] { desk_.payments().cmdDelete(ui_->flexAll->currentRow()); },
      "Löscht die angewählte Zeile nach Rückfrage.");
  press(
      ui_->cmdDeleteAll, [this] { desk_.payments().cmdDeleteAll(); },
      "Löscht alle Eingänge des Schützen nach Rückfrage.");
}

void frmFinanz::on(QAction* action, std::function<void()> routine) {
  connect(action, &QAction::triggered, this, [this, routine = std::move(routine)] { versuche(routine); });
}

void frmFinanz::connectMenus() {
  const auto as = [this](QAction* one, QAction* other) {
    connect(one, &QAction::triggered, other, &QAction::trigger);
  };
  const auto click = [this](QAction* entry, QAbstractButton* button) {
    connect(entry, &QAction::triggered, button, &QAbstractButton::click);
  };
  on(ui_->mnuDateiWechsel, [this] { wechsle(); });
  on(ui_->mnuDateiListe, [this] { waehleAusListe(); });
  on(ui_->mnuDateiAuswertung, [this] { mnuDateiAuswertung(); });
  on(ui_->mnuDateiPrintStartKarte, [this] { mnuDateiPrintStartKarte(); });
  on(ui_->mnuOptKasseSetup, [this] { zeigeFenster([this] { frmKasseSetup(workplace_, this).exec(); }); });
  on(ui_->mnuDateiDrucken, [this] { PrintKasseneingaenge(ReportOrder::Ziel::Drucker); });
  on(ui_->mnuDateiVorschau, [this] { PrintKasseneingaenge(ReportOrder::Ziel::Fenster); });
  on(ui_->mnuDateiPrinterSetup, [this] {
    reported(fehlerReport(workplace_.dialogs, "Fehler bei der Druckerauswahl!"), [this](Steps&) {
      CurrentPrinter printer = currentPrinter(workplace_);
      if (const auto chosen = workplace_.dialogs.printerSetup(printer.setup())) printer.keep(*chosen);
    });
  });
  on(ui_->mnuDateiPrintBarcode, [this] { ui_->panelEtiketten->cmdPrint(); });
  on(ui_->mnuOptScheiben, [this] { mnuOptScheiben(); });
  on(ui_->mnuScheibenAuswertung, [this] { mnuScheibenAuswertung(); });
  connect(ui_->panelScheiben, &TargetPanel::stapelBearbeiten, this,
          [this](qint32 lStapelID) { versuche([&] { bearbeiteStapel(lStapelID); }); });
  connect(ui_->mnuVMEinlagenMain, &QMenu::triggered, this,
          [this](QAction* entry) { versuche([&] { mnuVM(entry); }); });
  on(ui_->mnuScheibenLoeschen, [this] { ui_->panelAusgaben->loescheAlleAusgaben(); });
  on(ui_->mnuOptEinlagen, [this] { mnuOptEinlagen(); });
  on(ui_->mnuDateiSchliessen, [this] { reject(); });
  const auto zumKauf = [this](QWidget* widget) {
    ui_->SSTab1->setCurrentWidget(ui_->tabKauf);
    widget->setFocus();
  };
  on(ui_->mnuKaufEinlagen, [this, zumKauf] { zumKauf(ui_->lstAll); });
  on(ui_->mnuKaufEingaenge, [this, zumKauf] { zumKauf(ui_->flex); });
  click(ui_->mnuKaufAdd, ui_->cmdAdd);
  click(ui_->mnuKaufAddAnzahl, ui_->cmdAddAnzahl);
  click(ui_->mnuKaufRemove, ui_->cmdRemove);
  click(ui_->mnuKaufRemoveAll, ui_->cmdRemoveAll);
  on(ui_->mnuOptOffenePosten, [this] {
    schreibe(workplace_.settings, keys::OffenePostenVorbelegen, ui_->mnuOptOffenePosten->isChecked());
  });
  on(ui_->mnuOptSchriftEinlagen, [this] { mnuOptSchriftEinlagen(); });
  as(ui_->wechseln, ui_->mnuDateiWechsel);
  as(ui_->Drucken, ui_->mnuDateiDrucken);
  as(ui_->vorschau, ui_->mnuDateiVorschau);
  as(ui_->printbarcode, ui_->mnuDateiPrintBarcode);
  as(ui_->kladde, ui_->mnuDateiPrintStartKarte);
  as(ui_->exit, ui_->mnuDateiSchliessen);
}

void frmFinanz::connectScans() {
  const auto say = [this](const QString& text) {
    workplace_.dialogs.note(
        "Hier wird kein Strichcode gelesen.\r\nDer Scan »" + text + "« wurde nicht übernommen.",
        BoxIcon::Exclamation);
  };
  connect(&scans_, &ScanWatch::refused, this, say, Qt::QueuedConnection);
  connect(
      &scans_, &ScanWatch::homeless, this,
      [this, say](const QString& text) {
        if (!ui_->SSTab1->isEnabled())
          return versuche([&] { desk_.wechsleSchuetzen(StartnummerAusEtikett(text)); });
        if (ui_->SSTab1->currentWidget() != ui_->tabKauf) return say(text);
        ui_->txtArtikelnummer->setText(text);
        versuche([this] { artikelEingegeben(); });
      },
      Qt::QueuedConnection);
}

void frmFinanz::makeKeys() {
  const auto onKey = [this](const QKeySequence& key, std::function<void()> routine) {
    auto* shortcut = new QShortcut(key, this);
    shortcut->setAutoRepeat(false);  // a key that is held books, and prints, once
    connect(shortcut, &QShortcut::activated, this, [this, routine] { versuche(routine); });
  };
  const auto zumKauf = [this](QWidget* widget) {
    ui_->SSTab1->setCurrentWidget(ui_->tabKauf);
    widget->setFocus(Qt::ShortcutFocusReason);
  };
  onKey(Qt::Key_F2, [this, zumKauf] { zumKauf(ui_->txtArtikelnummer); });
  onKey(Qt::Key_F3, [this] { wechsle(); });
  onKey(Qt::Key_F4, [this, zumKauf] { zumKauf(ui_->lstAll); });
  onKey(Qt::Key_F5, [this] { waehleAusListe(); });
  onKey(Qt::Key_F6, [this, zumKauf] { zumKauf(ui_->flex); });
  onKey(Qt::Key_F7, [this] { ui_->panelBezahlen->focusErhalten(); });
  onKey(Qt::Key_F8, [this] { ui_->panelBezahlen->drueckeSpende(); });
  onKey(Qt::Key_F9, [this] { ui_->cmdVerbuchen->click(); });
  auto* remove = new QShortcut(QKeySequence(Qt::Key_Delete), ui_->flex);
  remove->setContext(Qt::WidgetShortcut);
  connect(remove, &QShortcut::activated, ui_->cmdRemove, &QAbstractButton::click);
  auto* keysLabel = new QLabel(
      "F2 Artikel    F3 Wechseln    F4 Einlagen    F5 Schützen    F6 Kauf    F7 Erhalten    F8 Spende    F9 "
      "Verbuchen");
  keysLabel->setObjectName("lblTasten");
  ui_->statusBar->addWidget(keysLabel, 1);
}

void frmFinanz::setBereit(bool bereit) {
  for (QWidget* part : {static_cast<QWidget*>(ui_->SSTab1), static_cast<QWidget*>(ui_->cmdVerbuchen),
                        static_cast<QWidget*>(ui_->cmdOK), static_cast<QWidget*>(ui_->panelBezahlen)})
    part->setEnabled(bereit);
  for (QAction* action :
       {ui_->mnuDateiDrucken, ui_->mnuDateiVorschau, ui_->Drucken, ui_->vorschau,
        ui_->mnuDateiPrintStartKarte, ui_->kladde, ui_->mnuDateiPrintBarcode, ui_->printbarcode}) {
    action->setEnabled(bereit);
    action->setStatusTip(bereit ? QString() : "Erst einen Schützen wählen (F3).");
  }
}

}  // namespace qk
