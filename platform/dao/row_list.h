// The rows of a query by number, for a view of up to a million of them.
//
// A Recordset has one place, and a list that is filled as it is walked, by whoever walks. A view has neither:
// it wants any row, at once, and the count when it is known. So the keys are listed in a thread of its own
// (RowFeed), the rows that a view shows are read one by one by their key, and changes go straight to the row.
// Queries whose rows have no key (unions, groups, stored queries) are read whole in that thread and can't be
// changed.
//
//   open ► [grown]… ► completed            by itself, from the event loop; the first rows, where they come
//                                          within a blink, are there when open() returns
//
// After the first rows the rest is left alone for a moment, so that they are painted first. The rest of a
// sorted list comes only when the store has sorted all of it: its rows are counted before [counted].
//
// Rows that others add later stay out until refresh(). A row that somebody deleted can't be read any more but
// keeps its number.
#pragma once

#include <QDeadlineTimer>
#include <QHash>
#include <QObject>
#include <QTimer>
#include <memory>

#include "platform/dao/rows/key_list.h"
#include "platform/dao/values/types.h"
#include "platform/runtime/error.h"

namespace qk::dao {

class Database;
class Engine;
class RowFeed;
class RowSource;
class RowWriter;
struct SelectPlan;

class RowList : public QObject {
  Q_OBJECT

 public:
  /// Values to be stored, by column.
  using Values = QHash<int, QVariant>;

  explicit RowList(QObject* parent = nullptr);
  ~RowList() override;

  /// Lists the rows of a query text, or of a table or stored query by its name. What is wrong with the text
  /// is thrown, and the former rows stay. The store stays open while this list is used, the database object
  /// need not.
  void open(Database& database, const QString& query);
  /// Lists the same query anew.
  void refresh();
  /// Shows no rows, until open() or refresh().
  void clear();
  bool isOpen() const { return plan_ != nullptr; }

  int fieldCount() const;
  const FieldDef& fieldDef(int column) const;
  int fieldPosition(const QString& name) const;  ///< 3265 when missing
  int findField(const QString& name) const;      ///< -1 when missing
  /// The value in the form in which the column holds it: 3421, 3163, 3164.
  QVariant convertedTo(int column, const QVariant& value) const;

  /// Rows listed so far.
  int count() const { return static_cast<int>(keys_.size() - first_); }
  /// Nothing more comes: count() is the number of rows.
  bool isComplete() const { return state_.complete; }
  /// It ended there by a failure: there may be more rows.
  bool isBroken() const { return state_.broken; }
  /// The store sorts all rows before it hands over those behind the first page: that takes a while.
  bool isSorting() const { return state_.sorting; }
  /// Rows that there will be, where they were counted before they are all listed; -1 where they weren't.
  int expected() const { return state_.expected; }
  /// Waits until it is, without running the event loop; -1 waits as long as it takes.
  bool waitForAll(int milliseconds = -1);
  /// Waits likewise until there is a row, or none will come.
  void waitForFirst(int milliseconds = -1);

  /// The row's values; false for one that is gone.
  bool read(int row, QVariantList& values) const;
  QByteArray bookmark(int row) const;
  /// Number of a bookmark's row, -1 when it isn't listed.
  int rowOf(const QByteArray& bookmark) const;
  /// First row that meets a criterion such as "ID = 5"; -1 for none among those listed.
  int findFirst(const QString& criterion) const;

  bool isUpdatable() const;
  /// Stores the given columns of the row, all or none. Each of these throws as a Recordset does: 3027 where
  /// nothing can be changed, 3167 when the row is gone, 3421, 3022 …
  void update(int row, const Values& values);
  /// Stores a new row; it is the last of the list from now on.
  void insert(const Values& values);
  /// Deletes the stored row. Its number stays until drop(). One that is gone already is no error.
  void remove(int row);
  /// Takes rows out of the list.
  void drop(int first, int count);

 Q_SIGNALS:
  void aboutToGrow(int first, int last);
  void grown();
  /// The rows listed so far are void.
  void aboutToRestart();
  void restarted();
  void completed();
  /// expected() is known.
  void counted();
  /// The list ends here, incomplete for good.
  void failed(const qk::Error& error);

 private:
  struct State {
    bool complete = true;
    bool broken = false;
    bool sorting = false;
    int expected = -1;
  };

  void start(std::shared_ptr<const SelectPlan> plan);
  void collect();
  /// Collects what the feed delivers within the time that is left.
  void collectNext(const QDeadlineTimer& patience);
  Key keyAt(int row) const { return keys_.at(first_ + row); }

  std::shared_ptr<Engine> engine_;
  std::shared_ptr<const SelectPlan> plan_;
  std::unique_ptr<RowSource> source_;
  std::unique_ptr<RowWriter> writer_;
  std::unique_ptr<RowFeed> feed_;
  QTimer rest_;  // calls for the rest of the list
  KeyList keys_;
  qsizetype first_ = 0;  // keys before it were dropped: taking rows from the front costs nothing
  State state_;
};

}  // namespace qk::dao
