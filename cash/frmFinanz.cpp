// What the cash desk's window does: its life, what it shows, and its buttons.
#include "cash/frmFinanz.h"

#include <QKeyEvent>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "app/ground/temp_module_ui.h"
#include "cash/attempt.h"
#include "cash/frmArtikel.h"
#include "cash/frmKasseReports.h"
#include "cash/frmScheibenAuswertung.h"
#include "cash/frmScheibenStapel.h"
#include "cash/frmScheibenVerwaltung.h"
#include "cash/frmVMKasse.h"
#include "cash/start_card.h"
#include "platform/dialog/dialogs.h"
#include "platform/dialog/font_convert.h"
#include "platform/look/contrast.h"
#include "platform/runtime/fonttext.h"
#include "platform/runtime/numbers.h"
#include "platform/widgets/hourglass.h"
#include "shooters/frmSchuetzenListe.h"
#include "ui_frmFinanz.h"

namespace qk {

namespace {

constexpr int kTabZiele = 1;
constexpr int kTabAusgaben = 3;
constexpr int kHintMilliseconds = 6000;
constexpr int kStopped = 18;  // by the operator

}  // namespace

void frmFinanz::versuche(const std::function<void()>& routine) {
  qk::versuche(workplace_, routine);
}

void frmFinanz::melde(const QString& text) {
  ui_->statusBar->showMessage(text, kHintMilliseconds);
}

// --- the window's life

void frmFinanz::Form_Load() {
  const auto report =
      fehlerReport(workplace_.dialogs, "Fehler beim Laden der Kassen-, Scheibeneinstellungen!");
  reported(report, [&](Steps& step) {
    for (QLabel* label : {static_cast<QLabel*>(ui_->Label4), static_cast<QLabel*>(ui_->Label5),
                          static_cast<QLabel*>(ui_->Label9)})
      label->clear();
    const Settings& settings = workplace_.settings;
    step([&] { Set_EinlagenFont(); });
    step([&] {
      ui_->chkAutoDruck->setChecked(liesFlag(settings, keys::AutoDruckKasse));
      ui_->chkAutoScheibenDruck->setChecked(liesFlag(settings, keys::AutoScheibenDruckKasse));
      const bool offen = liesFlag(settings, keys::OffenePostenVorbelegen);
      ui_->mnuOptOffenePosten->setChecked(offen);
      ui_->panelBezahlen->Form_Load(offen);
    });
    step([&] { LoadDisziKombiBaum(); });
    if (bOhneScheibenNummern_) {
      ui_->mnuScheiben->menuAction()->setVisible(false);
      ui_->mnuOptScheiben->setVisible(false);
      ui_->mnuOptTemp2->setVisible(false);
      zeigeScheibenRegister(false);
    } else {
      step([&] { ui_->panelScheiben->LoadScheibenStapel(); });
    }
    step([&] {
      PanelGroesseMerken(workplace_, *ui_->PicDraw, 1, keys::WkKassePicDraw, PanelMass(*this, 52));
      ui_->panelScheiben->Form_Load();
    });
    step([&] { ui_->panelEtiketten->Form_Load(); });
  });
}

void frmFinanz::LoadDisziKombiBaum() {
  const std::vector<DisziKombi> entries = ladeDisziKombi(desk_.database());
  ui_->panelScheiben->LoadDisziKombiBaum(entries);
  ui_->panelEtiketten->LoadDisziKombiBaum(entries);
}

void frmFinanz::zeigeScheibenRegister(bool sichtbar) {
  ui_->SSTab1->setTabVisible(kTabZiele, sichtbar);
  ui_->SSTab1->setTabVisible(kTabAusgaben, sichtbar);
}

void frmFinanz::Form_Activate() {
  ui_->panelScheiben->Form_Activate();
  ui_->mnuDateiPrintStartKarte->setVisible(!bOhneStartkarte_);
  ui_->kladde->setVisible(!bOhneStartkarte_);
  if (ui_->SSTab1->isEnabled())
    ui_->txtArtikelnummer->setFocus();
  else
    ui_->cmdSchWechsel->setFocus();
}

void frmFinanz::Form_Unload() {
  ui_->panelScheiben->Form_Unload();
  ui_->panelAusgaben->Form_Unload();
  PositionSpeichern(workplace_, *this);
  desk_.store().close();
}

bool frmFinanz::darfSchliessen() {
  if (ui_->panelEtiketten->druckt()) return false;
  return desk_.purchase().isEmpty() ||
         workplace_.dialogs.confirm("Wollen Sie die aktuellen Beträge verwerfen?", BoxIcon::Question,
                                    BoxAnswer::No);
}

void frmFinanz::reject() {
  if (!darfSchliessen()) return;
  Form_Unload();
  QDialog::reject();
}

void frmFinanz::zeigeFenster(const std::function<void()>& exec) {
  exec();
  Form_Activate();
}

void frmFinanz::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  if (!std::exchange(positioned_, true)) PositionLaden(workplace_, *this);
  Form_Activate();
}

/// Enter presses the button that has the focus, and nothing else: no button is the window's own answer. Held,
/// it presses none: in the amount it leads to "Verbuchen", and the change is to be seen before the booking.
void frmFinanz::keyPressEvent(QKeyEvent* event) {
  if (event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter) return QDialog::keyPressEvent(event);
  if (event->isAutoRepeat()) return;
  if (auto* button = qobject_cast<QAbstractButton*>(focusWidget())) button->click();
}

// --- what is shown

void frmFinanz::UpdateStartNr(const QString& sStartNr, const QString& sVerein, const QString& sMann) {
  desk_.UpdateStartNr(sStartNr, sVerein, sMann);
}

bool frmFinanz::oeffneOhneSchuetzen() {
  setBereit(false);
  ui_->Label1->setText("Schützen wählen: F3 Startnummer, F5 Liste, oder ein Etikett scannen");
  versuche([this] { OpenDB(); });
  return istOffen();
}

void frmFinanz::zeigeSchuetze() {
  if (!ui_->SSTab1->isEnabled()) {
    setBereit(true);
    Form_Activate();
  }
  const ShownShooter& shooter = desk_.shooter();
  ui_->txtStartNr->setText(desk_.sStartNr());
  ui_->Label1->setText(shooter.Name);
  ui_->Label5->setText(shooter.GebDat);
  ui_->lblSPO->setText(shooter.SPO);
  ui_->lblKlasse->setText(shooter.Klasse);
  ui_->Label4->setText(shooter.Verein);
  ui_->Label9->setText(shooter.Mann);
}

void frmFinanz::zeigeVM() {
  QMenu* menu = ui_->mnuVMEinlagenMain;
  const QList<QAction*> before = menu->actions();
  for (QAction* entry : before)
    if (entry != ui_->mnuVM_0) delete entry;
  menu->menuAction()->setVisible(desk_.vm().visible);
  ui_->mnuVM_0->setVisible(false);
  int number = 0;
  for (const VmEntry& entry : desk_.vm().entries) {
    QAction* action = number == 0 ? ui_->mnuVM_0 : menu->addAction(QString());
    action->setObjectName("mnuVM_" + QString::number(number));
    action->setText(QString(entry.caption).replace('&', "&&"));
    action->setData(QString::number(entry.id));
    action->setVisible(entry.visible);
    action->setEnabled(entry.visible);
    ++number;
  }
}

void frmFinanz::zeigeEinlagen() {
  ui_->lstAll->clear();
  for (const Stake& stake : desk_.einlagen()) {
    auto* entry = new QListWidgetItem(stake.Bezeichnung, ui_->lstAll);
    entry->setData(Qt::UserRole, stake.id);
  }
}

void frmFinanz::UpdateSummenGesamt() {
  const CashSums sums = desk_.payments().summen();
  ui_->lblGesamt->setText(sums.Gesamt.toCurrencyText());
  const bool open = sums.Offen > Money();
  for (QLabel* label : {ui_->lblop, ui_->lblOffen, ui_->lblbez, ui_->lblBezahlt}) label->setVisible(open);
  ui_->lblOffen->setText(open ? sums.Offen.toCurrencyText() : QString());
  ui_->lblBezahlt->setText(open ? sums.Bezahlt.toCurrencyText() : QString());
  ui_->lblop->setText(open ? "Offen:" : "");
  ui_->lblbez->setText(open ? "Bezahlt:" : "");
}

void frmFinanz::Set_EinlagenFont() {
  const FontSpec spec = parseFontText(liesText(workplace_.settings, keys::ListDisziKasseFont));
  ui_->lstAll->setFont(toFont(spec));
  QPalette colours = palette();
  const int chosen = liesZahl(workplace_.settings, keys::ListDisziKasseForeColor);
  if (!liesText(workplace_.settings, keys::ListDisziKasseForeColor).isEmpty())
    colours.setColor(QPalette::Text,
                     look::readable(toColour(static_cast<quint32>(chosen)), colours.color(QPalette::Base)));
  ui_->lstAll->setPalette(colours);
}

void frmFinanz::Set_PrintScheibenFont() {
  ui_->panelEtiketten->Set_PrintScheibenFont();
}

void frmFinanz::Set_BarcodeFont() {
  ui_->panelEtiketten->Set_BarcodeFont();
}

// --- buttons and menus

void frmFinanz::wechsle() {
  QString answer;
  {
    const ScanWatch::Allowed scan(scans_);
    answer = workplace_.dialogs.input("Bitte neue Startnummer eingeben:", "Schütze wechseln");
  }
  if (!answer.isEmpty()) desk_.wechsleSchuetzen(StartnummerAusEtikett(answer));
}

void frmFinanz::waehleAusListe() {
  frmSchuetzenListe list(workplace_, this);
  list.setWettkampf(desk_.global().sWettkampf);
  zeigeFenster([&] { list.exec(); });
  if (!list.sStartnummer().isEmpty()) desk_.wechsleSchuetzen(list.sStartnummer());
}

qint32 frmFinanz::gewaehlteEinlage() const {
  const QListWidgetItem* entry = ui_->lstAll->currentItem();
  return entry && entry->isSelected() ? entry->data(Qt::UserRole).toInt() : 0;
}

void frmFinanz::cmdAdd() {
  if (const qint32 id = gewaehlteEinlage()) desk_.purchase().AddKauf(id);
}

void frmFinanz::cmdAddAnzahl() {
  if (const qint32 id = gewaehlteEinlage()) desk_.purchase().AddAnzahlFragen(id);
}

void frmFinanz::artikelEingegeben() {
  desk_.purchase().AddArtikel(ui_->txtArtikelnummer->text());
  ui_->txtArtikelnummer->clear();
  ui_->txtArtikelnummer->setFocus();
}

bool frmFinanz::cmdVerbuchen() {
  const Money due = desk_.purchase().zuBezahlen();
  const QString received = ui_->panelBezahlen->erhalten();
  const int rows = desk_.purchase().flex().rows() - 1;
  BookingSides sides;
  sides.darf = [this] { return desk_.istNochDerselbe(); };
  if (ui_->chkAutoDruck->isChecked())
    sides.druckeBeleg = [this] { PrintKasseneingaenge(ReportOrder::Ziel::Drucker); };
  if (ui_->chkAutoScheibenDruck->isChecked())
    sides.druckeEtiketten = [this] {
      if (!ui_->panelEtiketten->cmdPrint())
        throw Error(kStopped, "Die Etiketten wurden nicht alle gedruckt.");
    };
  sides.speichereScheiben = [this](const QString& datum, int& gespeichert) {
    ui_->panelScheiben->speichereScheiben(desk_.sStartNr(), datum, gespeichert);
  };
  sides.speichereStapel = [this] { ui_->panelScheiben->speichereAktuelleNummern(); };
  sides.ladeNeu = [this] {
    LoadDisziKombiBaum();
    ui_->panelScheiben->LoadScheibenStapel();
  };
  const BookingOutcome outcome =
      verbuche(workplace_, desk_.store(), desk_.purchase(), desk_.sStartNr(), sides);
  if (outcome.fehler) {
    workplace_.dialogs.note(buchungsFehlerText(outcome, rows), BoxIcon::Exclamation, "Fehler");
    return false;
  }
  if (outcome.verweigert) return false;
  if (!outcome.begonnen) return desk_.purchase().isEmpty();
  desk_.purchase().entferneAlle();
  ui_->panelBezahlen->leereErhalten();
  if (rows > 0) ui_->panelBezahlen->zeigeZuletzt(verbuchtText(due, received, rows));
  desk_.ladeSchuetzenNeu();
  melde(rows == 1 ? QString("1 Einlage verbucht.") : QString("%1 Einlagen verbucht.").arg(rows));
  if (ui_->txtArtikelnummer->isEnabled()) ui_->txtArtikelnummer->setFocus();
  return true;
}

void frmFinanz::cmdOK() {
  if (cmdVerbuchen()) reject();
}

void frmFinanz::flexAllEingabe(int row, int column) {
  const Payments::Eingabe input = desk_.payments().nachEingabe(row, column);
  if (input.unlesbar) ui_->flexAll->editAgain(row, column, input.text);
}

void frmFinanz::mnuDateiAuswertung() {
  frmKasseReports lists(workplace_, desk_.global(), reports_, this);
  lists.setBEinlagen(false);
  lists.setVortel(false);
  zeigeFenster([&] { lists.exec(); });
}

void frmFinanz::mnuDateiPrintStartKarte() {
  const Hourglass hourglass;
  melde(Kladde_Print(desk_, reports_));
}

/// A window of ours may have stood open for long.
void frmFinanz::ladeSchuetzenNeu() {
  if (desk_.istNochDerselbe()) desk_.ladeSchuetzenNeu();
}

void frmFinanz::mnuOptEinlagen() {
  zeigeFenster([this] { frmArtikel(workplace_, desk_.global(), this).exec(); });
  desk_.ladeEinlagen();
  ladeSchuetzenNeu();
}

void frmFinanz::mnuOptScheiben() {
  zeigeFenster([this] { frmScheibenVerwaltung(workplace_, desk_.database(), this).exec(); });
  ui_->panelScheiben->LoadScheibenStapel();
}

void frmFinanz::bearbeiteStapel(qint32 lStapelID) {
  frmScheibenStapel editor(workplace_, desk_.database(), this);
  editor.setLStapelID(lStapelID);
  bool gespeichert = false;
  zeigeFenster([&] { gespeichert = editor.bearbeite(); });
  if (gespeichert) ui_->panelScheiben->LoadScheibenStapel();
}

void frmFinanz::mnuScheibenAuswertung() {
  frmScheibenAuswertung window(workplace_, desk_.database(), desk_.global().sWettkampf, reports_, this);
  window.setAusgabeZiel(ReportOrder::Ziel::Fenster);
  zeigeFenster([&] { window.exec(); });
}

void frmFinanz::mnuVM(const QAction* entry) {
  frmVMKasse window(workplace_, reports_, this);
  window.setDataBaseName(desk_.global().sWettkampf);
  window.setTitel(desk_.sBez1, desk_.sBez2, desk_.sOrt);
  const auto id = toInt32(ZahlAusText(entry->data().toString()));
  if (entry == ui_->mnuVM_0)
    window.setID(id);
  else
    window.setLMannID(id);
  zeigeFenster([&] { window.zeige(); });
  ladeSchuetzenNeu();
}

void frmFinanz::mnuOptSchriftEinlagen() {
  Settings& settings = workplace_.settings;
  const auto choice =
      workplace_.dialogs.chooseFont({liesText(settings, keys::ListDisziKasseFont),
                                     fromColour(ui_->lstAll->palette().color(QPalette::Text))});
  if (!choice) return;
  schreibe(settings, keys::ListDisziKasseFont, choice->font);
  schreibe(settings, keys::ListDisziKasseForeColor, QString::number(choice->colour));
  Set_EinlagenFont();
}

void frmFinanz::PrintKasseneingaenge(ReportOrder::Ziel nZiel) {
  const bool aktuellerKauf = ui_->SSTab1->currentIndex() <= kTabZiele;
  const auto beleg = [&] {
    const Hourglass hourglass;
    return belegFuer(
        desk_, aktuellerKauf,
        aktuellerKauf ? ui_->panelScheiben->belegScheiben() : ui_->panelAusgaben->belegScheiben());
  };
  const auto drucke = [&] { druckeBeleg(workplace_, reports_, beleg, nZiel); };
  nZiel == ReportOrder::Ziel::Fenster ? zeigeFenster(drucke) : drucke();
}

}  // namespace qk
