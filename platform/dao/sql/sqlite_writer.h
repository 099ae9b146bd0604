// The SQLite dialect: trees to SQLite's text. Needs registerSqliteFunctions() on the connection that runs it.
//
// SELECT … INTO is the engine's affair: the select is printed without it, resultColumns() tells what to
// create.
#pragma once

#include "platform/dao/sql/writer.h"

namespace qk::dao::sql {

class SqliteWriter : public Writer {
 public:
  NativeQuery statement(const Statement& statement) const override;
  NativeQuery select(const Select& select) const override;
  /// Columns stand with their source's name.
  NativeQuery condition(const Expression& expression) const override;
  NativeQuery orderTerm(const OrderItem& item) const override;
  QString source(const Source& source, QVariantList& values) const override;
  QString identifier(const QString& name) const override;
  QVariant toNative(const QVariant& value, FieldType type) const override;
  QVariant fromNative(const QVariant& native, FieldType type) const override;

  /// The select with its literals written out instead of "?", for what SQLite keeps as text (views).
  QString plainText(const Select& select) const;
};

}  // namespace qk::dao::sql
