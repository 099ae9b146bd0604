// The bound grid: rows of a query in a view, up to a million of them, and edited in place.
//
//   BoundGrid ──────────────────► BoundRows ─────────────────► dao::RowList
//   filter row, titles, marks,    what stands in a cell,       keys, read in a thread;
//   the editor                    the edit buffer              rows, read when shown
//
// - Opening reads nothing but the first page; the rest of the list comes from the event loop, the view grows
//   with it. Only rows that are shown are read.
// - An edited row is kept in a buffer and stored when it is left: submitRow(), called by the grid when the
//   current row changes or the focus leaves, and by the owner before it closes. Before that the owner's
//   beforeUpdate may look at the row, complete it, or refuse it. What can't be stored goes to the report:
//   retry stores again, ignore gives the edit up, abort keeps it, so that it can be corrected or, by Esc,
//   dropped.
// - One row is told from all others by its bookmark, which outlives sorting, filtering and refreshing.
//
// - A row that couldn't be read says so in its cells. It is read again when another one could be, and now and
//   then until one can.
//
// Failures reach the owner through its report only; but for open(), which throws what is wrong with the text.
#pragma once

#include <QAbstractTableModel>
#include <QCache>
#include <QHash>
#include <QList>
#include <QSet>
#include <QTimer>
#include <functional>
#include <optional>
#include <vector>

#include "platform/dao/row_list.h"
#include "platform/runtime/retry.h"

namespace qk {

struct BoundColumn {
  QString field;          ///< a missing one stays empty
  QString title = {};     ///< the field's name when empty
  int characters = 0;     ///< width in the grid; 0 lets the type decide
  bool locked = false;    ///< stays locked when the grid is unlocked
  bool checkBox = false;  ///< a yes/no field as a box to be ticked instead of -1 and 0
  std::function<QString(const QVariant&)> text = {};  ///< instead of the plain German text form
};

class BoundRows : public QAbstractTableModel {
  Q_OBJECT

 public:
  explicit BoundRows(ErrorReport report, QObject* parent = nullptr);
  ~BoundRows() override;

  /// Without columns, all fields of the query are shown. Set them before open().
  void setColumns(std::vector<BoundColumn> columns);
  const std::vector<BoundColumn>& columns() const { return columns_; }
  /// Known with the query, before there is a row.
  bool holdsNumbers(int column) const;
  /// Titles by position for a query whose fields are all shown, instead of their names. Set them before
  /// open().
  void setTitles(const QHash<int, QString>& titles) { titles_ = titles; }
  /// Shows another query. The store stays open while the rows are shown. Rows that are being edited are given
  /// up: submit them before.
  void open(dao::Database& database, const QString& query);
  void refresh() { list_.refresh(); }
  void clear() { list_.clear(); }

  /// Where a list breaks off, this one reports instead: whoever reads and whoever edits may be told apart.
  void setFetchReport(ErrorReport report) { fetchReport_ = std::move(report); }

  bool isOpen() const { return list_.isOpen(); }
  /// Stored rows listed so far; all of them when isComplete().
  int count() const { return list_.count(); }
  bool isComplete() const { return list_.isComplete(); }
  /// All there will be, sorting, broken off: as in RowList.
  int expected() const { return list_.expected(); }
  bool isSorting() const { return list_.isSorting(); }
  bool isBroken() const { return list_.isBroken(); }
  bool waitForAll(int milliseconds = -1) { return list_.waitForAll(milliseconds); }
  void waitForFirst(int milliseconds = -1) { list_.waitForFirst(milliseconds); }

  /// The field's value in that row, with what was edited and isn't stored yet. Null for a row that is gone.
  QVariant value(int row, const QString& field) const;
  /// Reads the row anew, as others may have changed it meanwhile; false for one that isn't in the query any
  /// more. Errors pass.
  bool reread(int row);
  QByteArray bookmark(int row) const { return list_.bookmark(row); }
  int rowOf(const QByteArray& bookmark) const { return list_.rowOf(bookmark); }
  int findFirst(const QString& criterion) const { return list_.findFirst(criterion); }

  // Editing
  void setUnlocked(bool unlocked);
  bool isUnlocked() const { return unlocked_; }
  /// An empty row behind the last one, to add rows by typing.
  void setAppending(bool appending);
  bool isNewRow(int row) const { return row == list_.count(); }
  /// A cell that was left empty holds Null (the rule), also where an empty text was stored; or else the empty
  /// text.
  void setEmptyIsNull(bool null) { emptyIsNull_ = null; }
  /// Runs before an edited row is stored; false gives the edit up. It may call value() and setValue().
  void setBeforeUpdate(std::function<bool(int row)> beforeUpdate) { beforeUpdate_ = std::move(beforeUpdate); }
  /// Runs before a value that was typed goes into the edit buffer, in the form in which the field holds it;
  /// false refuses it: it stands in its editor again.
  using Check = std::function<bool(int row, const QString& field, const QVariant& value)>;
  void setCheck(Check check) { check_ = std::move(check); }
  /// Into the edit buffer of that row; a row edited before is stored first. False when one of the two failed
  /// and the operator gave up; a value that the field can't hold and that he ignores changes nothing.
  bool setValue(int row, const QString& field, const QVariant& value);
  bool isEdited() const { return edited_.has_value(); }
  int editedRow() const { return edited_ ? edited_->row : -1; }
  /// False when the row wasn't stored: isEdited() tells whether the edit is kept or was refused by the owner.
  bool submitRow();
  void cancelRow();

  /// Deletes these rows one by one; one that isn't in the query any more only leaves the list. False when the
  /// operator gave up; the rows before are gone then. `removed` counts the deleted ones.
  bool removeBookmarked(const QList<QByteArray>& bookmarks, int* removed = nullptr);
  /// Deletes rows from the first on, for that long at most (one at least). The list must be complete. Returns
  /// false when the operator gave up.
  bool removeFirst(int milliseconds);

  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& parent = {}) const override;
  QVariant data(const QModelIndex& index, int role) const override;
  bool setData(const QModelIndex& index, const QVariant& value, int role) override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;
  QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

 Q_SIGNALS:
  /// count(), isComplete() or expected() has changed.
  void counted();

 private:
  struct Cells {
    QVariantList values;  // by field
    QStringList texts;    // by column
  };
  struct Edited {
    int row;
    dao::RowList::Values values;
  };

  void bindColumns();
  const Cells& cellsOf(int row) const;
  void forgetCells();
  void readFailedAgain();
  QVariant fieldValue(int row, int field) const;
  QString textOf(int column, const QVariant& value) const;
  const dao::FieldDef* fieldOf(int column) const;
  QVariant converted(const QVariant& value) const;
  QVariant storable(int field, const QVariant& value) const;
  void rowChanged(int row);
  bool hold(int row, int position, const QVariant& value, bool typed);
  bool wantsBlankRow() const;

  ErrorReport report_, fetchReport_;
  dao::RowList list_;
  std::vector<BoundColumn> columns_;
  bool allFields_ = true;  // the columns are the query's, not the owner's
  QHash<int, QString> titles_;
  std::vector<int> fields_;  // by column; -1 for a field that the query lacks
  bool unlocked_ = false;
  bool appending_ = false;
  bool blank_ = false;  // the empty row stands behind a complete list
  bool emptyIsNull_ = true;
  std::function<bool(int)> beforeUpdate_;
  Check check_;
  std::optional<Edited> edited_;
  mutable QCache<int, Cells> read_;
  mutable QSet<int> unreadable_;  // among read_
  mutable QTimer readAgain_;
};

}  // namespace qk
