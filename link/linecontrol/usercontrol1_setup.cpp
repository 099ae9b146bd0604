// How a line control is put together: its parts, what they are connected to, its popups and its look.
#include <QMenu>
#include <utility>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module_ui.h"
#include "link/linecontrol/usercontrol1.h"
#include "platform/dialog/dialogs.h"
#include "platform/dialog/font_convert.h"
#include "platform/look/alert.h"
#include "platform/look/contrast.h"
#include "platform/runtime/datetext.h"
#include "platform/widgets/empty_text.h"
#include "ui_usercontrol1.h"

namespace qk {

namespace {

constexpr quint32 kWhite = 16777215;
constexpr quint32 kBlack = 0;

/// A white ground is what nobody has chosen: there the house's own light or dark one stays, and black text
/// with it. Another text colour keeps its hue on either.
void applyLook(TextGrid* grid, const Schrift& schrift) {
  if (!schrift.font.name.isEmpty()) grid->setFont(toFont(schrift.font));
  QPalette colours = grid->parentWidget()->palette();
  const bool ownGround = schrift.backColor != kWhite;
  if (ownGround) {
    colours.setColor(QPalette::Base, toColour(schrift.backColor));
    colours.setColor(QPalette::AlternateBase, toColour(schrift.backColor));
  }
  const bool ownText = ownGround || schrift.foreColor != kBlack;
  const QColor text = ownText ? toColour(schrift.foreColor) : colours.color(QPalette::Text);
  colours.setColor(QPalette::Text, look::readable(text, colours.color(QPalette::Base)));
  grid->setPalette(colours);
}

/// Names that are read from across the room.
void makeProminent(QLabel* label, QFont font, double factor) {
  font.setPointSizeF(font.pointSizeF() * factor);
  font.setBold(true);
  label->setFont(font);
}

void fill(QListWidget* list, const QStringList& entries) {
  list->clear();
  list->addItems(entries);
}

}  // namespace

void UserControl1::followFont() {
  makeProminent(ui_->lblLinieTitel, font(), 2);
  makeProminent(ui_->lblLinie, font(), 2);
  makeProminent(ui_->m_lblSchuetzenName, font(), 1.3);
  ui_->m_txtStartNummer->setMaximumWidth(fontMetrics().horizontalAdvance(QString(14, '0')));
  // All three headings of the upper panels are as high as the one with a box in it.
  ui_->lblSchuesse->setMinimumHeight(ui_->cmbHaeringGruppen->sizeHint().height());
}

void UserControl1::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() == QEvent::FontChange && !retired_ && ui_.areMade()) followFont();
}

void UserControl1::layOut() {
  followFont();
  QSizePolicy keepsItsPlace = ui_->lblSenden->sizePolicy();
  keepsItsPlace.setRetainSizeWhenHidden(true);
  ui_->lblSenden->setSizePolicy(keepsItsPlace);
  ui_->panelSchussKnoepfe->setLeftGroup(3);  // what chooses shots; what discards them stands apart
  // Tab leads from list to list; Ctrl+Tab changes the page.
  for (QTabWidget* tabs : {ui_->SSTabDiszi, ui_->SSTabErg}) tabs->tabBar()->setFocusPolicy(Qt::ClickFocus);
  ui_->splitterOben->setStretchFactor(1, 1);
  ui_->splitterUnten->setStretchFactor(0, 1);
  ui_->splitterHoehe->setStretchFactor(0, 3);
  ui_->splitterHoehe->setStretchFactor(1, 2);
  PanelGroesseMerken(workplace_, *ui_->splitterOben, 2, keys::BreiteDisziKombi, PanelMass(*this, 31));
  PanelGroesseMerken(workplace_, *ui_->splitterUnten, 1, keys::BreiteDisziKombi2, PanelMass(*this, 52));
  PanelGroesseMerken(workplace_, *ui_->splitterOben, 0, keys::BreiteSchuetzen, PanelMass(*this, 44));
}

void UserControl1::UserControl_Initialize() {
  layOut();
  ui_->m_cmdUebertragenTarvex->setEnabled(false);
  connectGrids();
  connectControls();
  makePopups();
  if (shotFont_) applyLook(ui_->flex, *shotFont_);
  if (disciplineFont_) applyDisciplineFont();
  ui_->lblLinie->setText(QString::number(nStandnummer_));
  look::makeAlert(*ui_->lblAustausch);
  showExchangeFolder(exchangeFolderMissing_);
  showWhetherOpen();
  showGroups();
  showSendState(sendState_);
  Setze_Schuetzen_Controls();
  showBestResults();
  capture_.PruefeUebertragenSchaltflaecheEnabled();  // tells showTransferState
}

/// What works without being seen.
void UserControl1::connectParts() {
  exchange_->onSendState = [this](SendState state) { showSendState(state); };
  exchange_->onTick = [this](const QDateTime& now) {
    if (ui_.areMade()) ui_->lblTime->setText(dateText(now));
  };
  capture_.setPictureCaption([this] {
    const Schuetze* shooter = capture_.shooter();
    return PictureCaption{sStartnummer_, schuetzenName(), shooter ? shooter->VereinsName : QString()};
  });
  connect(Timer1_, &QTimer::timeout, this, acting([this] {
            if (!db_) tryUnasked();
            if (!exchange_ || !db_) return;  // a shot that can't be stored stays with its station
            const bool isBeingCleared = global_.bLeertAustauschordner && exchange_->hatFlaggeOhneDaten();
            if (!isBeingCleared) exchange_->tick();
          }));
  connect(timerWettkampf_, &QTimer::timeout, this, acting([this] { tryUnasked(); }));
  connect(&capture_, &LineCapture::transferStateChanged, this, &UserControl1::showTransferState);
  connect(&capture_, &LineCapture::bestResultsChanged, this, &UserControl1::showBestResults);
  connect(&capture_, &LineCapture::stored, this,
          [this](const QString& what) { Q_EMIT successSaid(index_, what); });
  disziplinText_ = palette().color(QPalette::Text);
}

void UserControl1::connectGrids() {
  ui_->flexHaeringDiszi->setTable(&disciplines_.table());
  ui_->flexHaeringDiszi->setStretchColumn(LineDisciplines::Name);
  ui_->flex->setTable(&capture_.flex());
  ui_->ffErg->setTable(&capture_.ffErg());
  ui_->ffErg->setAlternatingRowColors(false);   // its rows have colours of their own
  ui_->ffErg->setTextElideMode(Qt::ElideNone);  // the labels fill their column to the last pixel
  ui_->ffErg->setEmptyText("Schüsse und Disziplinen ankreuzen, dann übertragen");
  ui_->m_lstDisziTarvex->setModel(&capture_.lstDisziTarvex());
  ui_->m_lstKombiTarvex->setModel(&capture_.lstKombiTarvex());
  for (QListWidget* list : {ui_->lstBesteErg, ui_->LstBesteErgSerien, ui_->LstBesteErgTeiler})
    setEmptyText(list, "Noch nichts übertragen");

  connect(ui_->flexHaeringDiszi, &TextGrid::afterEdit, this,
          acting<int, int>([this](int row, int column) { flexHaeringDiszi_AfterEdit(row, column); }));
  connect(ui_->flexHaeringDiszi, &TextGrid::contextMenuAt, this,
          [this](const QPoint& at) { mnuPopSchuss_->popup(at); });
  const auto tickShot = acting<int, int>([this](int row, int column) { capture_.flex_click(row, column); });
  connect(ui_->flex, &TextGrid::afterEdit, this, tickShot);
  connect(ui_->flex, &TextGrid::clickedAt, this, tickShot);
  connect(ui_->flex, &TextGrid::doubleClickedAt, this, [this] { HaeringSchussWettbewerbAnwaehlen(); });
  connect(ui_->flex, &TextGrid::contextMenuAt, this,
          [this](const QPoint& at) { mnuPopManuellerSchuss_->popup(at); });
  connect(&capture_.lstDisziTarvex(), &CheckList::ticked, this,
          acting([this] { capture_.m_lstDisziTarvex_Click(); }));
  connect(&capture_.lstKombiTarvex(), &CheckList::ticked, this,
          acting([this] { capture_.m_lstKombiTarvex_Click(); }));
  connect(&capture_.lstDisziTarvex(), &CheckList::currentChanged, this, [this](int position) {
    ui_->m_lstDisziTarvex->setCurrentIndex(capture_.lstDisziTarvex().index(position));
  });
}

void UserControl1::connectControls() {
  const auto press = [this](QAbstractButton* button, auto routine, const char* hint) {
    button->setProperty("hinweis", hint);
    button->setStatusTip(hint);
    connect(button, &QAbstractButton::clicked, this, acting(routine));
  };
  press(
      ui_->cmdSucheStartnummer, [this] { cmdSucheStartnummer_Click(); },
      "Lädt den Schützen mit der eingegebenen Startnummer (Eingabetaste).");
  press(
      ui_->cmdSchuetzenListe, [this] { cmdSchuetzenListe_Click(); }, "Schützen aus der Liste wählen (F3).");
  press(
      ui_->cmdLinieClear, [this] { cmdLinieClear_Click(); },
      "Nimmt den Schützen von der Linie; an die Station wird nichts gesendet.");
  press(
      ui_->cmdPreisModus, [this] { command(&LineCommands::Set_Linie_PreisModus_ON); },
      "Station in den Preismodus, Schüsse werden empfangen (F5).");
  press(
      ui_->Command2,
      [this] {
        if (command(&LineCommands::Set_Abmelden_Schuetze)) command(&LineCommands::Set_Linie_PreisModus_OFF);
      },
      "Meldet den Schützen ab und beendet den Preismodus.");
  press(
      ui_->cmdSendenSchuetzenDisziplinen,
      [this] { command([](LineCommands& line) { return line.Set_Anmelden_SchuetzeDisziplinen(true); }); },
      "Meldet Schütze und angekreuzte Disziplinen an der Station an (F6).");
  press(
      ui_->cmdNachkauf, [this] { command([](LineCommands& line) { return line.Nachkauf_Senden(true); }); },
      "Sendet die eingegebenen zusätzlichen Schüsse (F7).");
  press(
      ui_->cmdAbmeldenSchuetze, [this] { command(&LineCommands::Set_Abmelden_Schuetze); },
      "Meldet den Schützen an der Station ab (F12).");
  press(
      ui_->cmdCreateCTL, [this] { cmdCreateCTL_Click(); },
      "Liest Schussdaten ein, deren Bereitmeldung (CTL-Datei) ausgeblieben ist.");
  press(
      ui_->cmdClearHaeringSchuss, [this] { cmdClearHaeringSchuss_Click(); },
      "Nimmt eingetragene Nachkäufe zurück; gesendet wird nichts.");
  press(
      ui_->cmdWahlAlle, [this] { cmdWahlAlle_Click(); }, "Kreuzt alle Disziplinen der Station an.");
  press(
      ui_->cmdWahlKeine, [this] { cmdWahlKeine_Click(); }, "Nimmt alle Kreuze und Nachkäufe zurück.");
  press(
      ui_->m_cmdAlleWaehlenHaering, [this] { HaeringSchussAnAbwaehlen(true); },
      "Kreuzt alle offenen Schüsse an.");
  press(
      ui_->m_cmdAlleAbwaehlenHaering, [this] { HaeringSchussAnAbwaehlen(false); },
      "Nimmt alle Kreuze zurück.");
  press(
      ui_->m_cmdSerieWaehlenHaering, [this] { HaeringSchussWettbewerbAnwaehlen(); },
      "Kreuzt die Serie um den markierten Schuss an (Doppelklick auf den Schuss).");
  press(
      ui_->m_cmdVerwerfen, [this] { HaeringSchussVerwerfenAlle(); },
      "Verwirft nach Rückfrage alle offenen Schüsse dieser Linie.");
  press(
      ui_->m_cmdVerwerfenGewaehlte, [this] { discard(&LineCapture::HaeringSchussVerwerfenGewaehlte); },
      "Verwirft nach Rückfrage die angekreuzten Schüsse.");
  press(
      ui_->m_cmdUebertragenTarvex, [this] { capture_.m_cmdUebertragenTarvex_Click(); },
      "Rechnet die angekreuzten Schüsse für die angekreuzten Disziplinen aus (F8).");
  press(
      ui_->m_cmdSaveTarvex, [this] { capture_.m_cmdSaveTarvex_Click(); },
      "Speichert die übertragenen Ergebnisse und verbucht die Schüsse (F9).");
  press(
      ui_->cmd_SaveOnlyTarvex, [this] { capture_.cmd_SaveOnlyTarvex_Click(); },
      "Speichert die übertragenen Ergebnisse; die Schüsse bleiben offen.");
  connect(ui_->m_txtStartNummer, &QLineEdit::returnPressed, ui_->cmdSucheStartnummer,
          &QAbstractButton::click);
  connect(ui_->cmbHaeringGruppen, &QComboBox::activated, this,
          acting<int>([this](int position) { cmbHaeringGruppen_Click(position); }));
}

void UserControl1::makePopups() {
  mnuPopSchuss_ = new QMenu("Schuss", this);
  mnuPopSchuss_->setObjectName("mnuPopSchuss");
  const auto entry = [this](QMenu* menu, const QString& name, const QString& text, auto routine) {
    QAction* action = menu->addAction(text);
    action->setObjectName(name);
    connect(action, &QAction::triggered, this, acting(routine));
  };
  const auto enter = [this](int count) {
    if (const int row = ui_->flexHaeringDiszi->currentRow(); row > 0) disciplines_.enterExtra(row, count);
  };
  entry(mnuPopSchuss_, "mnuSchussLeeren", "Alle Leeren", [this] { cmdClearHaeringSchuss_Click(); });
  entry(mnuPopSchuss_, "mnuSchussClearAkt", "Akt. Leeren", [enter] { enter(0); });
  mnuPopSchuss_->addSeparator();
  entry(mnuPopSchuss_, "mnuSchuss0", "0 (Freischalten)", [enter] { enter(0); });
  for (int count : {1, 2, 3, 4, 5, 9, 10, 20, 30, 40})
    entry(mnuPopSchuss_, "mnuSchuss" + QString::number(count), QString::number(count),
          [enter, count] { enter(count); });

  mnuPopManuellerSchuss_ = new QMenu(this);
  mnuPopManuellerSchuss_->setObjectName("mnuPopManuellerSchuss");
  entry(mnuPopManuellerSchuss_, "mnuPopHaeringManuellNeu", "Schuss manuell hinzufügen...",
        [this] { mnuPopHaeringManuellNeu_Click(); });
  entry(mnuPopManuellerSchuss_, "mnuPopHaeringManSchussSerie", "Serie wählen (DEF)",
        [this] { capture_.HaeringSchussSerieAnwaehlen(disciplines_.table()); });
}

void UserControl1::showTransferState(bool enabled, const QString& lblSchusszahl) {
  if (!ui_.areMade()) return Q_EMIT workChanged(index_);
  ui_->m_cmdUebertragenTarvex->setEnabled(enabled);
  if (!lblSchusszahl.isEmpty()) ui_->lblSchusszahl->setText(lblSchusszahl);
  QString hint = ui_->m_cmdUebertragenTarvex->property("hinweis").toString();
  if (!enabled) {
    QStringList missing;
    if (!capture_.shooter()) missing << "ein Schütze auf der Linie";
    if (capture_.lstDisziTarvex().tickedCount() == 0) missing << "eine angekreuzte Disziplin";
    bool anyShot = false;
    for (const auto& shot : capture_.m_colHaeringSchuss().objects()) anyShot = anyShot || shot->bAngewaehlt;
    if (!anyShot) missing << "ein angekreuzter Schuss";
    hint = "Zum Übertragen fehlt: " + missing.join(", ") + ".";
  }
  ui_->m_cmdUebertragenTarvex->setStatusTip(hint);
  Q_EMIT workChanged(index_);
}

void UserControl1::showBestResults() {
  if (!ui_.areMade()) return;
  const BestResults& best = capture_.bestResults();
  fill(ui_->lstBesteErg, best.beste);
  fill(ui_->LstBesteErgSerien, best.serien);
  fill(ui_->LstBesteErgTeiler, best.teiler);
}

// Red and green are the ground behind black letters: as letters they couldn't be read.
void UserControl1::showSendState(SendState state) {
  if (state == SendState::Sent) ++sent_;
  sendState_ = state;
  if (ui_.areMade()) {
    QPalette look = ui_->lblSenden->palette();
    look.setColor(QPalette::Window, state == SendState::Waiting ? QColor(255, 0, 0) : QColor(0, 255, 0));
    look.setColor(QPalette::WindowText, Qt::black);
    ui_->lblSenden->setPalette(look);
    ui_->lblSenden->setVisible(state != SendState::Hidden);
  }
  const bool waits = state == SendState::Waiting;
  if (std::exchange(commandWaits_, waits) != waits) Q_EMIT workChanged(index_);
}

void UserControl1::showExchangeFolder(bool missing) {
  exchangeFolderMissing_ = missing;
  if (ui_.areMade()) ui_->lblAustausch->setVisible(missing);
}

void UserControl1::Set_Font_HaeringDisziplin(const Schrift& schrift) {
  disciplineFont_ = schrift;
  if (ui_.areMade()) applyDisciplineFont();
}

void UserControl1::applyDisciplineFont() {
  applyLook(ui_->flexHaeringDiszi, *disciplineFont_);
  disziplinText_ = ui_->flexHaeringDiszi->palette().color(QPalette::Text);
  Setze_Schuetzen_Controls();
}

void UserControl1::Set_Font_Flex(const Schrift& schrift) {
  shotFont_ = schrift;
  if (ui_.areMade()) applyLook(ui_->flex, schrift);
}

}  // namespace qk
