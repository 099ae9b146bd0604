// A page as its description says: the rows in a grid with filter row and titles on the left, the form of the
// current row on the right, its lists of members behind it in tabs.
//
// What is edited stays until it is stored or dropped: leaving the row asks. Stored are only the columns that
// differ; when somebody else has changed the row meanwhile, the operator is told what and decides.
#pragma once

#include <memory>
#include <optional>
#include <vector>

#include "masterdata/pages/row_edit.h"
#include "masterdata/windows/page_widget.h"
#include "platform/grid/bound_grid.h"
#include "platform/grid/bound_rows.h"
#include "platform/grid/grid_browser.h"
#include "platform/runtime/retry.h"
#include "platform/workplace.h"

namespace Ui {
class PageView;
}

namespace qk {

class LinkedListView;
class PageForm;
class ReferenceGone;

class PageView : public PageWidget {
  Q_OBJECT

 public:
  /// The page outlives it.
  PageView(const Workplace& workplace, const Page& page, QWidget* parent = nullptr);
  ~PageView() override;

  void open(dao::Database& database) override;
  void refresh() override;
  bool leave() override;
  void begin() override;
  void addRow() override;
  void storeRow() override;
  void removeRow() override;
  void dropEdit() override;

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  enum class Stored { Done, Stays, TryAgain };

  void nameControls();
  void makeGrid();
  void makeLists();
  ErrorReport report(const QString& text) const;
  ErrorReport readReport() const;
  void showQuery();
  void standWhenListed();
  void showCount();
  /// The row of the grid is the current one: its form is shown, unless what is edited stays.
  void rowChosen();
  /// The row with that key becomes current in the grid and in the form.
  void stand(qint64 key);
  void readRow(qint64 key);
  void showRow();
  void showState();
  void showEffect(const QString& text);
  QString nameOfRow() const;
  bool store();
  Stored tryToStore();
  Stored changedMeanwhile(const dao::RowChanged& changed);
  void referenceGone(const ReferenceGone& gone);
  Stored goneMeanwhile();
  bool refuse();
  void remove(qint64 key);
  void showSingle();

  Workplace workplace_;
  const Page& page_;
  std::unique_ptr<Ui::PageView> ui_;
  PageForm* form_;
  std::vector<LinkedListView*> lists_;
  dao::Database* database_ = nullptr;
  std::unique_ptr<RowEdit> row_;
  std::unique_ptr<BoundRows> rows_;
  std::unique_ptr<GridBrowser> browser_;
  std::optional<qint64> wanted_;  // the row to stand on as soon as the list has rows
  bool choosing_ = false;         // the current row is being set by this window
};

}  // namespace qk
