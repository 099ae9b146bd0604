// The PostgreSQL dialect: trees to PostgreSQL's text, parameters as "?". Needs the functions and collations
// of postgres_functions.h in the search path.
//
// Text is compared as the SQLite dialect does it: equality folds the letters of ASCII (lower() under the
// collation "C"), order and literals with other letters go by the collation "german".
#pragma once

#include <functional>

#include "platform/dao/sql/printing_writer.h"

namespace qk::dao::sql {

/// What the printer must know of a table beyond its definition.
struct StoredTable {
  QStringList columns;  ///< those of the definition: a "*" doesn't show a key of the engine's own
  std::vector<Kind> kinds;
  QStringList key;  ///< none of a stored query
};
using TableLookup = std::function<StoredTable(const QString& storedName)>;

/// A text so that those that differ only in the case of ASCII letters are equal.
QString foldedText(const QString& text);

class PostgresWriter final : public PrintingWriter {
 public:
  explicit PostgresWriter(TableLookup tables) : tables_(std::move(tables)) {}

  QVariant toNative(const QVariant& value, FieldType type) const override;
  QVariant fromNative(const QVariant& native, FieldType type) const override;
  std::vector<NativeQuery> keyOrder(const QString& column, FieldType type, bool outer) const override;

 private:
  QString holdingRows() const override { return " FOR UPDATE"; }
  std::unique_ptr<Printer> printer(QVariantList& values, Printer::Literals literals) const override;

  TableLookup tables_;
};

}  // namespace qk::dao::sql
