#include "platform/dao/sql/sqlite_writer.h"

#include "platform/dao/sql/native_values.h"
#include "platform/dao/sql/sqlite_printer.h"

namespace qk::dao::sql {

std::unique_ptr<Printer> SqliteWriter::printer(QVariantList& values, Printer::Literals literals) const {
  return std::make_unique<SqlitePrinter>(values, literals);
}

QVariant SqliteWriter::toNative(const QVariant& value, FieldType type) const {
  return nativeFieldValue(value, type);
}

QVariant SqliteWriter::fromNative(const QVariant& native, FieldType type) const {
  return sql::fromNative(native, type);
}

}  // namespace qk::dao::sql
