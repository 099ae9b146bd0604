// One firing line on the screen: its shooter, the disciplines of its station, the open shots and what they
// make. It owns its controls, its connection to the competition and its timer, and forwards: commands,
// station disciplines, shooter choice, exchange and result capture stand in files of their own.
//
//   buttons ─► LineCommands ─► LineExchange ─► station          station ─► LineExchange::tick
//   grids   ─► LineCapture ◄────────────────────────────────────────────── uebernehmeSchuss
//
// A line whose competition couldn't be opened says so, takes no shot and starts nothing; it tries again with
// the operator's next need, and unasked and without a box until it goes.
//
// Lifetime: routines wait and show boxes, and in there the main window may rebuild all lines. retire() takes
// the control down at once (timer, exchange, events) but destroys it only when none of its acts is on the
// stack any more: act() is the door that knows.
#pragma once

#include <QColor>
#include <QTimer>
#include <QWidget>
#include <functional>
#include <memory>
#include <optional>

#include "app/ground/global_variablen.h"
#include "app/ground/temp_module.h"
#include "capture/line_capture.h"
#include "link/exchange.h"
#include "link/linecontrol/line_commands.h"
#include "link/linecontrol/line_disciplines.h"
#include "link/linecontrol/line_readings.h"
#include "platform/dao/database.h"
#include "platform/workplace.h"

class QLineEdit;
class QMenu;
namespace Ui {
class UserControl1;
}

namespace qk {

class UserControl1 : public QWidget, private ShotReceiver, private LineSide {
  Q_OBJECT

 public:
  /// `index` is the control's place in cLine, passed with every event.
  UserControl1(const Workplace& workplace, GlobalVariablen& global, int index, QWidget* parent = nullptr);
  ~UserControl1() override;

  /// The only way to end a control that may be waiting. The pointer is not to be used afterwards.
  void retire();
  /// Reads nothing more; the line stays as it stands on the screen.
  void stopPolling();

  /// Shows the line. What is seen of it is made now, if nothing has needed it before.
  void setVisible(bool visible) override;

  void SetStandnummer(int nNummer);
  /// Restores the line's open shots, with the shooter of the first, after a restart.
  void Check_Old_Schuss(int nLinie);
  void SpeichernInDatenbank(bool bUndVerbuchen);
  void HaeringSchussAnAbwaehlen(bool bWahl);
  void HaeringSchussWettbewerbAnwaehlen();
  /// Empty without a shooter.
  QString schuetzenName() const override;
  QLineEdit* txtStartnummer() const;
  const QString& sStartnummer() const { return sStartnummer_; }
  void setStartnummer(const QString& sStartnummer);
  qint16 nLinie() const { return nLinie_; }
  void setLinie(qint16 nLinie);
  /// Commits on the line's own connection since Init.
  qint64 commitCount() const { return db_ ? db_->commitCount() : 0; }
  int nOffeneSchuss() const { return capture_.nOffeneSchuss(); }
  /// True while a command waits for its station to take the one before it.
  bool commandWaits() const { return commandWaits_; }
  /// True in price mode: the station's reports are read.
  bool isPolling() const { return Timer1_->isActive(); }
  /// Says on the line that its exchange folder is away, or takes that back.
  void showExchangeFolder(bool missing);
  const QString& sWettkampf() const { return sWettkampf_; }
  /// Opens the competition and reads exchange folder, station disciplines and check lists. As long as
  /// `shared` lives, the line reads with those that have the same.
  void Init(const QString& sWettkampf, const std::shared_ptr<LineReadings>& shared = {});
  void Fill_HaeringGruppen();
  /// Imports a recorded file of shot lines for the line's shooter.
  void Fill_Testdaten(const QString& sDatei);

  /// One of the line's commands: `line.command(&LineCommands::Set_Linie_ShutDown)`. Says on the line what it
  /// did, or that it couldn't be written; a failure that it passes on leaves from here. False when the line
  /// was taken down meanwhile.
  bool command(const std::function<QString(LineCommands&)>& routine);
  void HaeringSchussVerwerfenAlle();

  void Set_Font_HaeringDisziplin(const Schrift& schrift);
  void Set_Font_Flex(const Schrift& schrift);

  // What buttons and keys of the window press.
  void cmdWahlKeine_Click();
  void cmdLinieClear_Click();

 Q_SIGNALS:
  // Events, each with the control's index in cLine. Nothing raises cmdXStopClick, XGruenClick and
  // txtXStartNummerValidate here: the main window serves them for a line control that has such buttons.
  void cmdXStopClick(int nIndex);
  void XGruenClick(int nIndex);
  void XFreiClick(int nIndex);
  void txtXStartNummerValidate(int nIndex);
  void cmdXSucheStartnummerClick(int nIndex);
  void cmdXSchutzenlisteClick(int nIndex);
  void cmdXPreisModusGestartet(int nIndex);
  void XPreisModusBeendetClick(int nIndex);
  void cmdXWettkampfBeendet(int nIndex);
  void cmdXSchuetzeGesendet(int nIndex);
  void SummenZeile(int nIndex, const QString& text);
  /// A quiet line that needs no answer: what was done, or what is to be done first.
  void successSaid(int nIndex, const QString& text);
  /// The number of open shots may be another, or a command waits or doesn't any more.
  void workChanged(int nIndex);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  /// The one door to everything that may wait or show a box, be it called by a control, a timer or the main
  /// window: in there the main window may take the line down, which stays in memory until its last act is
  /// through. False when that happened: nothing of the line is to be touched then.
  bool act(const std::function<void()>& routine);
  /// Makes an act of what a signal with these arguments calls.
  template <class... Args, class Routine>
  auto acting(Routine routine) {
    return [this, routine](Args... args) { act([&] { routine(args...); }); };
  }

  /// What is seen of the line, made when it is first needed: a range has more lines than are looked at, and
  /// making their views is most of what a line costs.
  class Views {
   public:
    explicit Views(UserControl1& control);
    ~Views();
    Ui::UserControl1* operator->() const { return &made(); }
    bool areMade() const { return ui_ != nullptr; }
    Ui::UserControl1& made() const;

   private:
    UserControl1& control_;
    mutable std::unique_ptr<Ui::UserControl1> ui_;
  };

  // ShotReceiver
  dao::Database* wettkampf() override { return db_.get(); }
  bool istNeu(const QString& sKey) override;
  bool uebernehmeSchuss(const std::shared_ptr<HaeringSchuss>& schuss) override;
  void summenZeile(const QString& text) override;

  // LineSide
  void Output_2_ESA(const QString& sCommand, bool bWarten, const std::function<bool()>& wanted) override;
  bool opens() override { return isOpenFor(Asked::ByOperator); }
  bool lives() const override { return !retired_; }
  QString startnummer() const override { return sStartnummer_; }
  void setTimerEnabled(bool enabled) override;
  void clearShooterInput() override;
  void clearShooterLabels() override;
  void raise(LineEvent event) override;

  // The competition.
  enum class Asked { ByOperator, ByNobody };
  bool isComplete() const { return db_ && listsFilled_; }
  bool isOpenFor(Asked asked);
  void complete(const ErrorReport& report, Asked asked);
  void openDatabase(Asked asked);
  void reserveShotNumbers();
  void readStation();
  std::shared_ptr<LineReadings> readings() const;
  void restoreLine();
  void tryUnasked();
  void showWhetherOpen();

  void UserControl_Initialize();
  void connectParts();
  void showGroups();
  void applyDisciplineFont();
  void layOut();
  void followFont();
  void connectControls();
  void connectGrids();
  void makePopups();
  bool SucheUndLadeSchuetzen(const QString& sNummer);
  void showShooter();
  void Setze_Schuetzen_Controls();
  void cmdSucheStartnummer_Click();
  void cmdSchuetzenListe_Click();
  void cmdClearHaeringSchuss_Click();
  void cmdWahlAlle_Click();
  void cmdCreateCTL_Click();
  void mnuPopHaeringManuellNeu_Click();
  void cmbHaeringGruppen_Click(int position);
  void flexHaeringDiszi_AfterEdit(int row, int column);
  void importTestLine(const QString& line);
  void showTransferState(bool enabled, const QString& lblSchusszahl);
  void showBestResults();
  void showSendState(SendState state);
  void sayWhatWasSent(const QString& done, int sentBefore, int notSentBefore);
  void discard(void (LineCapture::*routine)());
  ErrorReport report(const QString& sText) const;

  Workplace workplace_;
  GlobalVariablen& global_;
  const int index_;
  Views ui_;
  QString sWettkampf_;
  std::unique_ptr<dao::Database> db_;
  std::weak_ptr<LineReadings> shared_;
  LineCapture capture_;
  LineDisciplines disciplines_;
  LineCommands commands_;
  std::unique_ptr<LineExchange> exchange_;
  QTimer* Timer1_;
  QTimer* timerWettkampf_;  // ticks while the competition isn't open
  QMenu* mnuPopSchuss_ = nullptr;
  QMenu* mnuPopManuellerSchuss_ = nullptr;
  QColor disziplinText_;  // of the discipline grid while there is a shooter
  // What the views show once they are made.
  LineGroups groups_;
  std::optional<Schrift> shotFont_, disciplineFont_;
  SendState sendState_ = SendState::Hidden;
  int nStandnummer_ = 0;
  QString sStartnummer_;
  qint16 nLinie_ = 0;
  bool stationRead_ = false;
  bool listsFilled_ = false;
  bool completing_ = false;
  bool passwordRefused_ = false;
  bool commandWaits_ = false;
  bool exchangeFolderMissing_ = false;
  int sent_ = 0, notSent_ = 0;  // commands so far
  bool retired_ = false;
  int acts_ = 0;  // on the stack
};

}  // namespace qk
