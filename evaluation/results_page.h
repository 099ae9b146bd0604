// One tab of the results editor: a shooter's teilers, or his series, in a grid that filters, sorts, marks
// and, unlocked, edits in place.
#pragma once

#include <QLabel>
#include <QObject>
#include <memory>

#include "evaluation/result_table.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/grid_browser.h"
#include "platform/workplace.h"

namespace qk {

class ResultsPage : public QObject {
  Q_OBJECT

 public:
  /// Grid and count belong to the window and outlive the page. `nameEnd` ends the names of its filter cells.
  ResultsPage(const Workplace& workplace, ResultKind kind, BoundGrid& grid, QLabel& count,
              const QString& nameEnd);
  ~ResultsPage() override;

  ResultKind kind() const { return kind_; }
  BoundGrid& grid() { return grid_; }
  BoundRows& rows() { return *rows_; }

  /// Reads the shooter's results anew, unfiltered. The database stays open while they are shown.
  bool load(dao::Database& database, const QString& sStartnummer);
  void clearFilter() { browser_->clearFilter(); }
  /// "Waffe LG, Datum 20.11."; empty without a filter.
  QString filterText() const;

  /// Stores the row that is edited; false when it can't be. Doesn't try again where the act that asks for it
  /// has just failed at it, by taking the keyboard away.
  bool submit();
  void setUnlocked(bool unlocked) { grid_.setUnlocked(unlocked); }
  /// Reads all rows anew and stands on the row of that number, or on the last one. Failures are reported with
  /// `failure`.
  void refresh(const QString& failure, int row);
  /// Waits for the rows that are still being read; a list that broke off is read anew. False when the
  /// operator gave up at a failure, reported with `failure`: there may be more rows.
  bool complete(const QString& failure);

  int currentResult() const;  ///< ID of the current row's result; 0 for none
  int currentDiscipline() const;
  /// The IDs of those that are still there.
  QList<qint32> resultsOf(const QList<QByteArray>& bookmarks);
  /// Stands on the result with that ID if the list has it.
  void goTo(qint32 result);
  /// Deletes these and adds to the count of deleted rows. False when the operator gave up.
  bool remove(const QList<QByteArray>& bookmarks, int& removed);

 Q_SIGNALS:
  /// Rows, filter or marks have changed.
  void changed();
  /// The discipline of the current row is to be changed.
  void disciplineWanted();

 private:
  ErrorReport report(const QString& text) const;
  void show();
  void standSomewhere();
  bool mayHold(int row, const QString& field, const QVariant& value);
  int currentNumber(const QString& field) const;

  Workplace workplace_;
  ResultKind kind_;
  BoundGrid& grid_;
  QLabel& count_;
  dao::Database* database_ = nullptr;
  QString failure_, fetchFailure_;  // what their reports say now
  bool justFailed_ = false;         // until the next turn of the event loop
  bool gaveUp_ = false;             // where the list broke off
  std::unique_ptr<BoundRows> rows_;
  std::unique_ptr<GridBrowser> browser_;
};

}  // namespace qk
