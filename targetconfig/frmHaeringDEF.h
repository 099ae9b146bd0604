// Writes esa_preis.ini and the def files of the stations: a grid of what will be written, to be edited and
// ticked, beside it the file of the current row as it will stand in the folder.
//
// What the rows are stands in definition_rows, what is checked and written in definition_files.
#pragma once

#include <QDialog>
#include <QElapsedTimer>
#include <memory>

#include "platform/runtime/retry.h"
#include "platform/workplace.h"
#include "targetconfig/definition_rows.h"

namespace Ui {
class frmHaeringDEF;
}

namespace qk {

class frmHaeringDEF : public QDialog {
  Q_OBJECT
  Q_PROPERTY(QString DataBaseName READ DataBaseName WRITE setDataBaseName)

 public:
  /// `database` is the open competition; it outlives the window.
  frmHaeringDEF(const Workplace& workplace, dao::Database& database, QWidget* parent = nullptr);
  ~frmHaeringDEF() override;

  /// Path of the competition file.
  const QString& DataBaseName() const { return dataBaseName_; }
  void setDataBaseName(const QString& path) { dataBaseName_ = path; }

  void reject() override;

 protected:
  void showEvent(QShowEvent* event) override;
  void changeEvent(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  bool event(QEvent* event) override;

 private:
  void connectButtons();
  void connectGrid();
  void build(const QString& routine);
  void setFolder(const QString& folder);
  void applyFilter();
  void applyOutput();
  void cmdAuswahlDirecotry_Click();
  void cmdErstellen_Click();
  void afterEdit(int row, int column);
  void askFillDown();
  bool goOnWriting(int written, int all);
  void setWriting(bool writing);
  void showCell(int row, int column);
  void widen(int column);
  void showCount();
  void scheduleView();
  void showPreview();
  QString preview(int row) const;
  void showKeyColour();
  void showKeys();
  bool inGrid() const;
  Output output() const;

  Workplace workplace_;
  dao::Database& database_;
  std::unique_ptr<Ui::frmHaeringDEF> ui_;
  DefinitionRows rows_;
  QString dataBaseName_;
  std::optional<std::pair<int, int>> editedCell_;  // whose question hasn't been asked yet
  QElapsedTimer sinceTurn_;                        // since the window had its last turn
  bool opened_ = false;
  bool edited_ = false;  // and not written since
  bool writing_ = false;
  bool stop_ = false;
  bool viewScheduled_ = false;
};

}  // namespace qk
