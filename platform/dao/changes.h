// Changes of rows that belong together, written by one call: all or none.
//
//   Changes changes(database);
//   const qint64 team = changes.insert("Mannschaften", {{"MannName", "Grünau I"}});
//   changes.expect("Personen", 7, {{"TeamID", 3}});
//   changes.update("Personen", 7, {{"TeamID", team}});
//   changes.write();
//
// Nothing is written before write(), and only the columns that are named; a new row gets its presets. Values
// are converted as a Recordset converts them, when they are handed in.
#pragma once

#include <QHash>
#include <functional>
#include <memory>

#include "platform/dao/database.h"
#include "platform/runtime/error.h"

namespace qk::dao {

/// Values by column, whatever the case of its name.
using RowValues = QHash<QString, QVariant>;

/// Somebody else has changed a row meanwhile (Error 3197).
class RowChanged : public Error {
 public:
  RowChanged(QString table, qint64 key, RowValues found);

  const QString& table() const { return table_; }
  qint64 key() const { return key_; }
  /// The columns that hold something else than was expected, with what they hold.
  const RowValues& found() const { return found_; }

 private:
  QString table_;
  qint64 key_;
  RowValues found_;
};

class Changes {
 public:
  /// The database is used until write() has been called for the last time.
  explicit Changes(Database& database);
  /// What wasn't written is dropped, and its numbers go back.
  ~Changes();
  Changes(const Changes&) = delete;
  Changes& operator=(const Changes&) = delete;

  // Tables have one whole number as their key. Errors: 3078 no such table, 3251 another kind of key, 3265 no
  // such column, 3421, 3163 a value that doesn't fit, 3164 a number that is never changed.

  /// A new row. Its key, to which later changes may refer: the one among the values, else a number that is
  /// taken at once, and 0 where the table gives none.
  qint64 insert(const QString& table, const RowValues& values);
  void update(const QString& table, qint64 key, const RowValues& values);
  /// A row that is gone already is no error.
  void remove(const QString& table, qint64 key);
  /// An action query (UPDATE, DELETE, INSERT), run in its place among the changes; 3065 for another one, 3075
  /// …
  void execute(const QString& action);
  /// The row is held while all is written, and nothing is written unless these columns hold these values
  /// then. Null and the empty text are one.
  void expect(const QString& table, qint64 key, const RowValues& values);
  /// Asked before anything is written, with all that is held: it throws where nothing may be written. It only
  /// reads, and opens no box.
  void require(std::function<void()> condition);
  /// Nobody else changes rows of the table from before the first condition until all is written. Others wait
  /// for it: for what must not come in between, not for long work.
  void hold(const QString& table);

  bool isEmpty() const;

  /// Writes in the given order, after all that is expected and required; then nothing is left to be written.
  /// RowChanged and 3167 (a row to be changed or expected is gone) before anything is written; the store's
  /// errors, and then nothing is written either. After a failure it may be called again: what a lost
  /// connection has stored without saying so isn't stored twice. The exception are action queries without a
  /// new row beside them, on a file whose log was taken away while it was written.
  void write();

 private:
  struct Table;
  struct Change;
  struct Work;
  std::unique_ptr<Work> work_;
};

}  // namespace qk::dao
