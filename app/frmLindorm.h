// The main window: tree of firing lines with the station messages below it on the left, the line controls on
// the right, menus and toolbar above. One line control is visible at a time; it is the current line.
//
// It routes: opening stands in competition_opening, the marks in line_marks, what a line does in its
// UserControl1.
#pragma once

#include <QMainWindow>
#include <functional>
#include <memory>
#include <vector>

#include "app/competition_opening.h"
#include "app/ground/control_door.h"
#include "app/ground/global_variablen.h"
#include "app/ground/printing.h"
#include "app/ground/settings_keys.h"
#include "app/line_marks.h"
#include "app/line_tree.h"
#include "app/shell/success_line.h"
#include "app/watch/office_watch.h"
#include "backup/copy_keeper.h"
#include "platform/dialog/dialogs.h"
#include "platform/workplace.h"

class QLabel;
namespace Ui {
class frmLindorm;
}

namespace qk {

class frmLindorm : public QMainWindow {
  Q_OBJECT

 public:
  /// `storage` is what the watch looks at.
  frmLindorm(const Workplace& workplace, GlobalVariablen& global, QWidget* parent = nullptr,
             std::shared_ptr<Storage> storage = std::make_shared<Storage>());
  ~frmLindorm() override;

  /// Everything between construction and the ready window. False when no competition could be opened: the
  /// program is to end then. A path on the command line takes away the choice of another competition.
  bool form_load(const QString& sCommandLine);

  /// Builds tree and line controls from the settings and the open competition.
  void Load_Settings();
  /// Shows the line and hides every other; numbers from 1. Error 9 for a line that doesn't exist.
  void ShowControl(qint16 nLinie);
  /// Tree position (from 1) of a line control's line, or -1.
  int GetTreeIndex(int nIndex) const;
  /// Writes the name of the line's shooter to the selected node.
  void Zeige_Schuetzen(int nIndex);
  QString Get_AktStartnummer() const;
  /// Index in cLine of the first visible line control; their number when none is visible.
  qint16 Get_AktLinienNummer() const;

  bool setWettkampf(const QString& path);
  const QString& sWettkampf() const { return opening_.sWettkampf(); }

  UserControl1& cLine(int nIndex) const;  ///< Error 9 outside
  int lineCount() const { return static_cast<int>(lines_.size()); }

  OfficeWatch& watch() { return watch_; }

  /// Stops the poll of every line: the program is about to end with a fatal error.
  void stopPolling();

 Q_SIGNALS:
  void unloaded();

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  static constexpr int kStatusMilliseconds = 8000;
  using Routine = std::function<void()>;
  using SteppedRoutine = std::function<void(Steps&)>;
  using Command = QString (LineCommands::*)();

  // How the window is put together.
  void makeToolbar();
  void makeKeys();
  void loadSplitters();
  void connectMenus();
  void connectFileMenus();
  void connectOptions();
  void connectAllLines();
  void connectCurrentLine();
  void connectToolbar();
  void connectInfoList();
  /// Runs `routine` on the action; failures are reported under the action's name.
  void on(QAction* action, Routine routine);
  void onInSteps(QAction* action, SteppedRoutine routine);
  void onCurrent(QAction* action, Command command);
  void onKey(int key, const QString& control);
  /// The key that leads to a control of the current line: the first of those in sight.
  void onFocusKey(int key, const QStringList& controls);
  void explain(QAction* action, bool enabled, const QString& why);
  void showLineActions();
  ErrorReport clickReport(const QString& routine) const;
  void connectWatch();
  void showExchangeFolder();
  /// Makes the last copy of the competition that is open, while events run, and ends what stands on it; its
  /// database is still open.
  void leaveCompetition();

  // Lines.
  void showLoading(int position, qsizetype all);
  void clearLines();
  UserControl1* addLine(int nIndex);
  /// Marks the node at this position of the tree, and shows its line.
  void showNode(int position);
  struct LineFonts {
    Schrift shots, disciplines;
  };
  void loadLine(int position, bool active, const LineFonts& fonts,
                const std::shared_ptr<LineReadings>& readings);
  UserControl1& currentLine() const { return cLine(Get_AktLinienNummer()); }
  enum class AfterEach { Nothing, MessageLoop };
  /// Calls `call` for every line, inactive ones too; ends early when the lines are rebuilt or the window
  /// goes. A line that failed can be repeated; with any other answer the lines behind it get nothing.
  void forAllLines(Steps& step, const std::function<void(UserControl1&)>& call,
                   AfterEach after = AfterEach::Nothing);
  /// `preset` is what Enter answers; Yes without one.
  bool asked(const QString& question, std::optional<BoxAnswer> preset = {}) const;

  // Menu routines of more than a line.
  void mnuDateiWettkampfOpen_Click(Steps& step);
  /// At the start, where there is nothing to open: says so and offers what there is.
  void offerCompetition(Steps& step);
  void openChosen(Steps& step, const QString& path);
  void mnuEditSchussbilder_Click();
  void mnuEditErgebnisse_Click();
  void mnuEditKasse_Click();
  /// The sheet of the current line's shooter. `nZiel`: 0 screen, 1 printer.
  void Kurzauswertung(qint16 nZiel);
  /// Whether a sheet is being made; says so then, and that what is `refused` comes later.
  bool isEvaluating(const QString& refused);
  void mnuOptEinstellungen_Click();
  void mnuOptHaeringNetzPfad_Click();
  void mnuStandeinstellungen_Click();
  void showDisziplinenSchluessel(const QString& sDataBase);
  void mnuOptLoadTestDaten_Click();
  void mnuHaerinAlleWerbeEIN_Click(Steps& step);
  void mnuHaeringAktLinieWerbeEIN_Click(Steps& step);
  void mnuHaeringTransferClear_Click();
  void mnuHaeringEsaPreisIni_Click();
  void mnuHaeringGruppenDisziplinen_Click(Steps& step);
  void chooseFont(const QString& setting, void (UserControl1::*apply)(const Schrift&));

  bool Form_QueryUnload();
  void Form_Unload();

  Workplace workplace_;
  GlobalVariablen& global_;
  ProgramPapers papers_{workplace_};
  ControlDoor reports_{workplace_, {papers_.current, papers_.asking}, keys::BerichtsfensterKasse.toString()};
  ControlDoor auswertungen_{
      workplace_, {papers_.current, papers_.asking}, keys::BerichtsfensterKurzauswertung.toString()};
  std::unique_ptr<Ui::frmLindorm> ui_;
  CompetitionOpening opening_;
  LineTree tree_;
  LineMarks marks_;
  SuccessLine success_{*this};
  CopyKeeper copies_{workplace_, this};
  OfficeWatch watch_;
  std::vector<UserControl1*> lines_;
  int generation_ = 0;  // counts the rebuildings of lines_
  QLabel* noLine_ = nullptr;
  bool starting_ = false;
  bool leaving_ = false;     // events run meanwhile
  bool evaluating_ = false;  // events run meanwhile
};

}  // namespace qk
