// The window in which lists come in and go out: a file, what its columns are, what becomes of each row, and
// only then "Übernehmen".
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

#include "masterdata/importing/import_session.h"
#include "masterdata/importing/preview_rows.h"

namespace Ui {
class ImportWindow;
}

namespace qk {

class ImportWindow : public QDialog {
  Q_OBJECT

 public:
  /// The database outlives the window.
  ImportWindow(const Workplace& workplace, dao::Database& database, lists::ListKind kind,
               QWidget* parent = nullptr);
  ~ImportWindow() override;

  /// What the status line of the caller is to say: the last thing done; empty for nothing.
  const QString& done() const { return done_; }
  /// Stops what runs; else closes.
  void reject() override;

 private:
  class Run;

  void chooseFile();
  void judge();
  void showColumns();
  void showPreview();
  void showVerdicts();
  void showDetails();
  void showState();
  void say(const QString& line);
  bool goesOn(int done, int all);

  Workplace workplace_;
  std::unique_ptr<Ui::ImportWindow> ui_;
  ImportSession session_;
  PreviewRows preview_;
  QString done_;
  bool running_ = false, stop_ = false;
  QElapsedTimer shown_;  // since the progress was shown
};

}  // namespace qk
