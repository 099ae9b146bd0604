#include "link/linecontrol/usercontrol1.h"

#include <QScopeGuard>

#include "capture/frmHaeringEinzelschuss.h"
#include "link/linecontrol/shooter_choice.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/files.h"
#include "platform/runtime/textcodec.h"
#include "platform/widgets/empty_text.h"
#include "shooters/frmSchuetzenListe.h"
#include "ui_usercontrol1.h"

namespace qk {

namespace {

constexpr int kPollMilliseconds = 1000;

const char* const kNoShooter =
    "Kein Schütze auf der Linie: Startnummer eingeben (F2) oder Liste öffnen (F3).";

}  // namespace

bool UserControl1::act(const std::function<void()>& routine) {
  ++acts_;
  const auto leave = qScopeGuard([this] {
    if (--acts_ == 0 && retired_) deleteLater();
  });
  routine();
  return !retired_;
}

UserControl1::Views::Views(UserControl1& control) : control_(control) {}

UserControl1::Views::~Views() = default;

Ui::UserControl1& UserControl1::Views::made() const {
  if (!ui_) {
    ui_ = std::make_unique<Ui::UserControl1>();
    ui_->setupUi(&control_);
    reported(control_.report("Fehler bei UserControl_Initialize_err!"),
             [&](Steps&) { control_.UserControl_Initialize(); });
  }
  return *ui_;
}

UserControl1::UserControl1(const Workplace& workplace, GlobalVariablen& global, int index, QWidget* parent)
    : QWidget(parent),
      workplace_(workplace),
      global_(global),
      index_(index),
      ui_(*this),
      capture_(workplace),
      disciplines_(workplace),
      commands_(workplace, *this, disciplines_),
      exchange_(new LineExchange(workplace, *this)),
      Timer1_(new QTimer(this)),
      timerWettkampf_(new QTimer(this)) {
  setObjectName("cLine_" + QString::number(index));
  Timer1_->setObjectName("Timer1");
  Timer1_->setInterval(kPollMilliseconds);
  timerWettkampf_->setObjectName("timerWettkampf");
  timerWettkampf_->setInterval(kPollMilliseconds);
  connectParts();
}

UserControl1::~UserControl1() {
  // The views go before the tables they show.
  qDeleteAll(findChildren<QWidget*>(Qt::FindDirectChildrenOnly));
}

void UserControl1::retire() {
  if (retired_) return;
  retired_ = true;
  stopPolling();
  exchange_.reset();
  disconnect();
  hide();
  setObjectName({});
  if (acts_ == 0) deleteLater();
}

ErrorReport UserControl1::report(const QString& sText) const {
  return fehlerReport(workplace_.dialogs, sText);
}

void UserControl1::setVisible(bool visible) {
  if (visible) ui_.made();
  QWidget::setVisible(visible);
}

void UserControl1::SetStandnummer(int nNummer) {
  nStandnummer_ = nNummer;
  if (ui_.areMade()) ui_->lblLinie->setText(QString::number(nNummer));
}

void UserControl1::setLinie(qint16 nLinie) {
  nLinie_ = nLinie;
  if (exchange_) exchange_->setLinie(nLinie);
  SetStandnummer(nLinie);
}

QLineEdit* UserControl1::txtStartnummer() const {
  return ui_->m_txtStartNummer;
}
QString UserControl1::schuetzenName() const {
  return capture_.shooter() ? capture_.shooter()->Name : QString();
}

void UserControl1::stopPolling() {
  Timer1_->stop();
  timerWettkampf_->stop();
}

void UserControl1::Fill_HaeringGruppen() {
  act([this] {
    reported(report("Fehler beim Ermitteln der Intarso-Gruppen in Linie!"), [&](Steps&) {
      groups_.clear();
      if (db_) groups_ = readings()->groups(*db_);
    });
    if (ui_.areMade()) showGroups();
  });
}

void UserControl1::showGroups() {
  const QVariant chosen = ui_->cmbHaeringGruppen->currentData();
  ui_->cmbHaeringGruppen->clear();
  ui_->cmbHaeringGruppen->addItem(QString(), 0);
  for (const auto& [name, id] : groups_) ui_->cmbHaeringGruppen->addItem(name, id);
  // A group that was chosen stays chosen.
  ui_->cmbHaeringGruppen->setCurrentIndex(std::max(0, ui_->cmbHaeringGruppen->findData(chosen)));
}

void UserControl1::cmbHaeringGruppen_Click(int position) {
  if (position < 0) return;
  reported(report("Fehler bei cmbHaeringGruppen_Click_err!"), [&](Steps&) {
    if (isOpenFor(Asked::ByOperator))
      disciplines_.selectGroup(*db_, ui_->cmbHaeringGruppen->itemData(position).toInt());
  });
}

// ---- the shooter ----

bool UserControl1::SucheUndLadeSchuetzen(const QString& sNummer) {
  bool chosen = false;
  reported(report("Fehler bei SucheUndLadeSchuetzen_err!"), [&](Steps&) {
    if (!isOpenFor(Asked::ByOperator)) return;
    const ShooterChoice choice = chooseShooter(workplace_, *db_, capture_, sNummer);
    if (choice.outcome == ShooterChoice::Outcome::Unknown) Setze_Schuetzen_Controls();
    if (choice.outcome != ShooterChoice::Outcome::Chosen || retired_) return;
    sStartnummer_ = sNummer;
    capture_.setShooter(choice.shooter);
    showShooter();
    Setze_Schuetzen_Controls();
    disciplines_.clearShots();
    reserveShotNumbers();
    chosen = true;
  });
  return chosen;
}

void UserControl1::showShooter() {
  const Schuetze* shooter = capture_.shooter();
  ui_->m_txtStartNummer->setText(sStartnummer_);
  ui_->m_lblStartnummer->setText(sStartnummer_);
  ui_->m_lblSchuetzenName->setText(shooter->Name);
  ui_->m_lblVereinsName->setText(shooter->VereinsName);
  ui_->m_lblMannName->setText(shooter->Mannschaftsname);
  ui_->m_lblKlasse->setText(shooter->KlassenName);
}

void UserControl1::clearShooterInput() {
  if (ui_.areMade()) ui_->m_txtStartNummer->clear();
}

void UserControl1::clearShooterLabels() {
  if (!ui_.areMade()) return;
  for (QLabel* label :
       std::initializer_list<QLabel*>{ui_->m_lblSchuetzenName, ui_->m_lblKlasse, ui_->m_lblMannName,
                                      ui_->m_lblStartnummer, ui_->m_lblVereinsName})
    label->clear();
}

// The buttons stay as they are: after signing off a command that got lost can be sent again.
void UserControl1::setStartnummer(const QString& sStartnummer) {
  sStartnummer_ = sStartnummer;
  std::shared_ptr<Schuetze> shooter;
  if (db_ && !sStartnummer.isEmpty()) shooter = LadeSchuetze(*db_, sStartnummer);
  if (!sStartnummer.isEmpty() || ui_.areMade()) ui_->m_lblStartnummer->setText(sStartnummer);
  capture_.setShooter(shooter);
}

void UserControl1::Setze_Schuetzen_Controls() {
  if (!ui_.areMade()) return;
  const bool has = capture_.shooter() != nullptr;
  QPalette look = ui_->flexHaeringDiszi->palette();
  const QColor text = has ? disziplinText_ : palette().color(QPalette::Disabled, QPalette::Text);
  look.setColor(QPalette::Active, QPalette::Text, text);
  look.setColor(QPalette::Inactive, QPalette::Text, text);
  ui_->flexHaeringDiszi->setPalette(look);
  for (QPushButton* button : {ui_->cmdAbmeldenSchuetze, ui_->cmdNachkauf, ui_->cmdSendenSchuetzenDisziplinen,
                              ui_->cmdClearHaeringSchuss, ui_->cmdWahlAlle, ui_->cmdWahlKeine}) {
    button->setEnabled(has);
    button->setStatusTip(has ? button->property("hinweis").toString() : QString(kNoShooter));
  }
}

void UserControl1::cmdSucheStartnummer_Click() {
  const QString number = ui_->m_txtStartNummer->text();
  if (SucheUndLadeSchuetzen(number)) {
    Q_EMIT cmdXSucheStartnummerClick(index_);
  } else if (!retired_) {
    ui_->m_txtStartNummer->selectAll();
  }
}

void UserControl1::cmdSchuetzenListe_Click() {
  frmSchuetzenListe dialog(workplace_, window());
  dialog.setWettkampf(sWettkampf_);
  dialog.exec();
  if (retired_ || dialog.sStartnummer().isEmpty()) return;
  if (SucheUndLadeSchuetzen(dialog.sStartnummer())) Q_EMIT cmdXSchutzenlisteClick(index_);
}

void UserControl1::cmdLinieClear_Click() {
  reported(report("Fehler bei cmdLinieClear_Click_err!"), [&](Steps&) {
    if (capture_.nOffeneSchuss() > 0)
      return workplace_.dialogs.note(
          "Diese Linie enthält noch nicht verbuchte Schuss!\r\nBitte Verwerfen oder Speichern Sie diese.",
          BoxIcon::Exclamation);
    sStartnummer_.clear();
    capture_.setShooter(nullptr);
    clearShooterLabels();
    Setze_Schuetzen_Controls();
    Q_EMIT XFreiClick(index_);
  });
}

// ---- restart and test data ----

void UserControl1::Check_Old_Schuss(int nLinie) {
  act([this, line = static_cast<std::int16_t>(nLinie)] {
    reported(fehlerReport(workplace_.dialogs, "Fehler bei Check_Old_Schuss_err!", {}, false), [&](Steps&) {
      const auto shared = shared_.lock();
      if (!db_ || (shared && !shared->mayHaveOpenShots(*db_, line))) return;
      if (capture_.AnzahlOffeneSchuesse(line) <= 0) return;
      SucheUndLadeSchuetzen(capture_.StartnummerOffeneSchuesse(line));
      if (!retired_) capture_.LadeOffeneSchuesse(line);
    });
  });
}

void UserControl1::Fill_Testdaten(const QString& sDatei) {
  if (!workplace_.files.readable(sDatei)) return;
  if (!capture_.shooter()) return workplace_.dialogs.note("Kein Schütze gewählt!");
  for (const QString& line : splitLines(fromWindows1252(workplace_.files.read(sDatei))))
    if (!act([&] { importTestLine(line); })) return;
}

void UserControl1::importTestLine(const QString& line) {
  const auto schuss = std::make_shared<HaeringSchuss>();
  const QString received = QString(line).remove('"');
  QString record = line;
  if (schuss->Haering_Import_Zeile(record, db_.get(), importReport(workplace_.dialogs, nLinie_, received))) {
    uebernehmeSchuss(schuss);
  } else if (const QString text = SummenZeileHaering(received); !text.isEmpty()) {
    summenZeile(text);
  }
}

// ---- what the station reports ----

bool UserControl1::istNeu(const QString& sKey) {
  return qk::WennHaeringKeyNichtVorhanden(capture_.m_colHaeringSchuss(), sKey);
}

bool UserControl1::uebernehmeSchuss(const std::shared_ptr<HaeringSchuss>& schuss) {
  capture_.TransferInGrid(schuss);
  if (!retired_) capture_.SpeichereHaeringSchuss(*schuss);
  return true;  // stored, or the operator was asked and gave it up
}

void UserControl1::summenZeile(const QString& text) {
  Q_EMIT SummenZeile(index_, text);
}

void UserControl1::mnuPopHaeringManuellNeu_Click() {
  reported(report("Fehler bei mnuPopHaeringManuellNeu_Click_err!"), [&](Steps&) {
    const Schuetze* shooter = capture_.shooter();
    if (!shooter) return workplace_.dialogs.note("Bitte wählen Sie einen Schützen!");
    const ShotCollection& open = capture_.m_colHaeringSchuss();
    const auto last = open.isEmpty() ? nullptr : open.at(open.count() - 1);
    const auto schuss = std::make_shared<HaeringSchuss>(manualShot(
        last.get(), {nLinie_, sStartnummer_, shooter->Name, shooter->KlassenName}, workplace_.clock.now()));
    frmHaeringEinzelschuss dialog(workplace_, *schuss, wettbewerbeText(disciplines_.table()), window());
    dialog.exec();
    if (retired_ || !dialog.bOK()) return;
    if (capture_.uebernehmeManuellenSchuss(schuss)) workplace_.dialogs.note("Schuss hinzugefügt");
  });
}

// ---- commands ----

void UserControl1::Output_2_ESA(const QString& sCommand, bool bWarten, const std::function<bool()>& wanted) {
  if (!exchange_) return;
  try {
    exchange_->Output_2_ESA(sCommand, bWarten, wanted);
  } catch (const Error&) {
    ++notSent_;
    throw;
  }
}

bool UserControl1::command(const std::function<QString(LineCommands&)>& routine) {
  return act([&] {
    const int sent = sent_, notSent = notSent_;
    const QString done = routine(commands_);
    if (!retired_) sayWhatWasSent(done, sent, notSent);
  });
}

void UserControl1::sayWhatWasSent(const QString& done, int sentBefore, int notSentBefore) {
  if (notSent_ > notSentBefore)
    Q_EMIT successSaid(index_, "Nicht gesendet: Der Austauschordner nimmt keine Befehle an.");
  else if (sent_ > sentBefore && !done.isEmpty())
    Q_EMIT successSaid(index_, done);
}

void UserControl1::setTimerEnabled(bool enabled) {
  if (enabled && !retired_) {
    Timer1_->start();
  } else {
    Timer1_->stop();
  }
}

void UserControl1::raise(LineEvent event) {
  switch (event) {
    case LineEvent::PreisModusGestartet:
      Q_EMIT cmdXPreisModusGestartet(index_);
      break;
    case LineEvent::PreisModusBeendet:
      Q_EMIT XPreisModusBeendetClick(index_);
      break;
    case LineEvent::WettkampfBeendet:
      Q_EMIT cmdXWettkampfBeendet(index_);
      break;
    case LineEvent::SchuetzeGesendet:
      Q_EMIT cmdXSchuetzeGesendet(index_);
      break;
  }
}

// ---- result capture ----

void UserControl1::SpeichernInDatenbank(bool bUndVerbuchen) {
  act([&] { capture_.SpeichernInDatenbank(bUndVerbuchen); });
}
void UserControl1::HaeringSchussAnAbwaehlen(bool bWahl) {
  // Ticked shots go into the disciplines at once: without one, a box only says that there is no room.
  const bool tooEarly = bWahl && capture_.nOffeneSchuss() > 0 && capture_.lstDisziTarvex().tickedCount() == 0;
  const auto hint = [&] {
    if (tooEarly)
      Q_EMIT successSaid(index_, "Zuerst rechts eine Disziplin ankreuzen (F11), dann die Schüsse wählen.");
  };
  hint();
  if (act([&] { capture_.HaeringSchussAnAbwaehlen(bWahl); }))
    hint();  // the box may have stood longer than the words
}
void UserControl1::HaeringSchussVerwerfenAlle() {
  discard(&LineCapture::HaeringSchussVerwerfenAlle);
}
void UserControl1::discard(void (LineCapture::*routine)()) {
  const int before = capture_.nOffeneSchuss();
  if (!act([&] { (capture_.*routine)(); })) return;
  if (const int gone = before - capture_.nOffeneSchuss(); gone > 0)
    Q_EMIT successSaid(index_, gone == 1 ? "1 Schuss verworfen" : QString("%1 Schüsse verworfen").arg(gone));
}
void UserControl1::HaeringSchussWettbewerbAnwaehlen() {
  act([this] {
    capture_.HaeringSchussWettbewerbAnwaehlen(ui_->flex->currentRow(), [this](int row) {
      ui_->flex->setCurrentRow(row);
      ui_->flex->showRow(row);
    });
  });
}

// ---- station disciplines ----

void UserControl1::flexHaeringDiszi_AfterEdit(int row, int column) {
  reported(report("Fehler bei flexHaeringDiszi_AfterEdit_err!"),
           [&](Steps&) { disciplines_.afterEdit(row, column); });
}
void UserControl1::cmdClearHaeringSchuss_Click() {
  disciplines_.clearShots();
}
void UserControl1::cmdWahlAlle_Click() {
  disciplines_.selectAll(true);
}
void UserControl1::cmdWahlKeine_Click() {
  cmdClearHaeringSchuss_Click();
  disciplines_.selectAll(false);
}

void UserControl1::cmdCreateCTL_Click() {
  const bool polling = Timer1_->isActive();
  const bool done = reported(report("Fehler bei cmdCreateCTL_Click_err!"), [&](Steps& step) {
    Timer1_->stop();
    step([&] { exchange_->schreibeEmpfangsFlagge(); });
    workplace_.dialogs.note("Timer wird wieder gestartet", BoxIcon::Information);
    setTimerEnabled(true);
  });
  // A line in price mode goes on reading, whatever became of the rescue.
  if (!done && polling) setTimerEnabled(true);
}

}  // namespace qk
