// The window of the master data: the pages on the left, the chosen one on the right, menus above.
#pragma once

#include <QMainWindow>
#include <memory>

#include "app/ground/control_door.h"
#include "app/ground/global_variablen.h"
#include "app/ground/printing.h"
#include "app/shell/success_line.h"
#include "masterdata/windows/page_widget.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace Ui {
class frmStammdaten;
}

namespace qk {

class MasterDataWindow : public QMainWindow {
  Q_OBJECT

 public:
  MasterDataWindow(const Workplace& workplace, GlobalVariablen& global, QWidget* parent = nullptr);
  ~MasterDataWindow() override;

  /// Opens the competition, or the last one for an empty path; where there is none, it is asked for. False
  /// when there is nothing to show: the program is to end then.
  bool load(const QString& path);
  const QString& path() const { return global_.sWettkampf; }

  /// The page with that key becomes the current one, unless what is edited on another keeps it.
  bool showPage(const QString& key);
  /// The one that is shown.
  PageWidget* page() const;

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  /// Shows another competition; a failure is told, and what was open stays open.
  bool openCompetition(const QString& path);
  void chooseCompetition();
  void makeMenus();
  void makeToolbar();
  /// Those of main_window_acts.cpp.
  void makeOwnMenus();
  /// Asks for a new competition and makes it; its path, empty for none.
  QString makeNew();
  void showLists();
  void listPages();
  /// The page of a row of the list, made when it is wanted first.
  PageWidget& pageAt(int row);
  void pageChosen(int row);
  void showCounts();
  void showTitle();
  void refresh();
  QString lastCompetition() const;
  ErrorReport report(const QString& what) const;

  Workplace workplace_;
  GlobalVariablen& global_;
  std::unique_ptr<Ui::frmStammdaten> ui_;
  SuccessLine success_{*this};
  ProgramPapers papers_{workplace_};
  ControlDoor reports_{workplace_, {papers_.current, papers_.asking}, "Stammdaten"};  // place of its windows
  QList<PageWidget*> pages_;  ///< by the list; null for one that nobody wanted yet
  int shown_ = -1;
};

}  // namespace qk
