// Tree to the engine's text. Literals travel as parameters, so that statements of one shape share one
// prepared statement; the values stand in the order of the "?".
#pragma once

#include "platform/dao/sql/resolver.h"

namespace qk::dao::sql {

struct NativeQuery {
  QString text;
  QVariantList values;  ///< as the engine stores them
};

/// One per engine. Trees handed in are resolved.
class Writer {
 public:
  virtual ~Writer() = default;
  virtual NativeQuery statement(const Statement& statement) const = 0;
  /// The keys of the rows that an UPDATE over a join would change. `key`: the one column of its table's key.
  virtual NativeQuery keysToChange(const Update& update, const QString& key) const = 0;
  virtual NativeQuery select(const Select& select) const = 0;
  /// The select's items and sources alone, so that a condition of the caller's can follow.
  virtual NativeQuery bare(const Select& select) const = 0;
  virtual NativeQuery condition(const Expression& expression) const = 0;
  /// The same for rows that are read in the order of their keys, a page after the other: nothing that would
  /// let the engine gather and sort all matching rows for each page.
  virtual NativeQuery conditionInKeyOrder(const Expression& expression) const = 0;
  virtual NativeQuery orderTerm(const OrderItem& item) const = 0;
  virtual QString source(const Source& source, QVariantList& values) const = 0;
  virtual QString identifier(const QString& name) const = 0;
  /// Behind a select from one table, within a transaction: nobody else changes the rows until its end.
  virtual QString holdingRows() const = 0;
  /// A key column, as terms of the order in which rows stand that nobody has sorted: Nulls, where an outer
  /// join may bring them, come first.
  virtual QStringList keyOrder(const QString& column, FieldType type, bool outer) const = 0;
  /// A value in the form the engine stores it for a column of this type (date 0, -1/0, Money …), and back.
  virtual QVariant toNative(const QVariant& value, FieldType type) const = 0;
  virtual QVariant fromNative(const QVariant& native, FieldType type) const = 0;
};

}  // namespace qk::dao::sql
