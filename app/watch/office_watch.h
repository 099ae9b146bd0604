// The watch of one window: what is looked at, the line in its status bar, the window with the details.
//
//   OfficeWatch watch(workplace, storage, {window, *window.statusBar()});
//   watch.watchCompetition(path);
#pragma once

#include <QAction>
#include <QStatusBar>
#include <memory>

#include "app/watch/watch_keeper.h"
#include "app/watch/watch_line.h"
#include "platform/runtime/storage.h"
#include "platform/workplace.h"

namespace qk {

class CopyKeeper;
class CopySource;
class frmWarnungen;

class OfficeWatch : public QObject {
  Q_OBJECT

 public:
  struct Place {
    QWidget& window;  ///< parent of the windows that come up
    QStatusBar& bar;  ///< of that window
  };

  /// Looks at the disks of settings and temporary files. Workplace and place outlive it.
  OfficeWatch(const Workplace& workplace, std::shared_ptr<Storage> storage, const Place& place);
  ~OfficeWatch() override;

  /// The competition that is open from now on, a file or a server file; empty for none.
  void watchCompetition(const QString& path);
  /// The copies of whatever competition is open. They outlive it.
  void watchCopies(const CopyKeeper& copies);

  /// The exchange folder of the settings, as long as it is `needed`, asked in the window's thread.
  void watchExchangeFolder(WatchKeeper::Wanted needed);
  /// Somebody is about to use the folder, or another one was chosen.
  void lookAtExchangeFolder();
  /// That it isn't there, or doesn't answer.
  bool isExchangeFolderDeaf() const { return deaf_; }

  /// "Warnungen anzeigen...", with its key; belongs to the window, which may put it into a menu.
  QAction& showAction() { return *show_; }
  /// The details, beside the work.
  void showDetails();

  WatchKeeper& keeper() { return keeper_; }

 Q_SIGNALS:
  void exchangeFolderChanged();  ///< it has gone, or is back

 private:
  using Source = std::shared_ptr<WatchSource>;
  void bookChanged();
  void watchStore();
  void watchCopiesOf();
  Source add(Source source, WatchKeeper::Wanted wanted = {});
  Source diskOf(const QString& thing, const QString& consequence, std::function<QString()> folder) const;

  Workplace workplace_;
  std::shared_ptr<Storage> storage_;
  QWidget& window_;
  WatchKeeper keeper_;
  WatchLine* line_;
  QAction* show_;
  frmWarnungen* details_ = nullptr;
  QString competition_;
  std::vector<Source> ofCompetition_;
  Source exchange_;
  const CopyKeeper* copies_ = nullptr;
  std::shared_ptr<CopySource> copySource_;
  bool deaf_ = false;
};

}  // namespace qk
