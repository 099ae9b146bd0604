// Tree to the engine's text. Literals travel as parameters, so that statements of one shape share one
// prepared statement; the values stand in the order of the "?".
#pragma once

#include "platform/dao/sql/resolver.h"

namespace qk::dao::sql {

struct NativeQuery {
  QString text;
  QVariantList values = {};  ///< as the engine stores them
};

/// Which rows, and in what order; all of it written by one writer.
struct Choice {
  std::vector<NativeQuery> conditions;  ///< all of them hold; an empty one says nothing
  std::vector<NativeQuery> order = {};  ///< terms, the first one counts most
  /// A value like others: texts that differ in nothing else share their statement.
  std::optional<int> most = {};
};

enum class End { Least, Greatest };

/// One per engine. Trees handed in are resolved.
class Writer {
 public:
  virtual ~Writer() = default;
  virtual NativeQuery statement(const Statement& statement) const = 0;
  /// The keys of the rows that an UPDATE over a join would change. `key`: the one column of its table's key.
  virtual NativeQuery keysToChange(const Update& update, const QString& key) const = 0;
  virtual NativeQuery select(const Select& select) const = 0;
  virtual NativeQuery condition(const Expression& expression) const = 0;
  /// The same for rows that are read in the order of their keys, a page after the other: nothing that would
  /// let the engine gather and sort all matching rows for each page.
  virtual NativeQuery conditionInKeyOrder(const Expression& expression) const = 0;
  virtual NativeQuery orderTerm(const OrderItem& item) const = 0;
  /// A value in the form the engine stores it for a column of this type (date 0, -1/0, Money …), and back.
  virtual QVariant toNative(const QVariant& value, FieldType type) const = 0;
  virtual QVariant fromNative(const QVariant& native, FieldType type) const = 0;

  // --- Selects in parts. The first three are without a condition: a choice or a key says of which rows.

  /// The select's items and sources alone.
  virtual NativeQuery bare(const Select& select) const = 0;
  /// Columns, as column() writes them, of the sources.
  virtual NativeQuery columnsOf(const QStringList& columns, const std::vector<SourcePtr>& sources) const = 0;
  /// How many rows the sources have.
  virtual NativeQuery count(const std::vector<SourcePtr>& sources) const = 0;
  virtual NativeQuery chosen(const NativeQuery& rows, const Choice& choice) const = 0;
  /// The one row with these values in these columns; an invalid value is Null.
  virtual NativeQuery atKey(const NativeQuery& rows, const QStringList& columns, const Key& key) const = 0;
  /// The first rows of a complete query. Their number stands in the text, so that the engine plans for it.
  virtual NativeQuery first(const NativeQuery& query, int most) const = 0;
  /// The column of a source, by the name under which the source stands in its select.
  virtual QString column(const QString& source, const QString& name) const = 0;
  /// The condition `above` < column <= `upTo`; without `above` there is no lower end.
  virtual NativeQuery within(const QString& column, std::optional<qint64> above, qint64 upTo) const = 0;
  /// A key column, as terms of the order in which rows stand that nobody has sorted: Nulls, where an outer
  /// join may bring them, come first.
  virtual std::vector<NativeQuery> keyOrder(const QString& column, FieldType type, bool outer) const = 0;
  /// An ascending term the other way round.
  virtual NativeQuery descending(const NativeQuery& term) const = 0;

  // --- Rows of one table. Names are the stored ones; the values come in the order of the columns, those of
  // the key last.

  /// A row; without columns, one of presets.
  virtual QString insertRow(const TableInfo& table, const QStringList& columns) const = 0;
  /// So many whole rows.
  virtual QString insertRows(const TableDef& table, int rows) const = 0;
  virtual QString updateRow(const TableInfo& table, const QStringList& columns) const = 0;
  virtual QString deleteRow(const TableInfo& table) const = 0;
  virtual QString readRow(const TableInfo& table, const QStringList& columns) const = 0;
  /// The same within a transaction: nobody else changes the row until its end.
  virtual QString holdRow(const TableInfo& table, const QStringList& columns) const = 0;
  /// The whole rows that come next behind that key, in the order of the key, each behind its key; the first
  /// ones, where `behind` is empty.
  virtual NativeQuery page(const TableInfo& table, const Key& behind, int most) const = 0;
  /// The first or last key, of one column; Null where there are no rows.
  virtual QString endOfKeys(const TableInfo& table, End end) const = 0;
};

}  // namespace qk::dao::sql
