#include "platform/dao/sqlite/sqlite_writer.h"

#include "platform/dao/sql/native_values.h"
#include "platform/dao/sqlite/sqlite_printer.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"

namespace qk::dao::sql {

std::unique_ptr<Printer> SqliteWriter::printer(QVariantList& values, Printer::Literals literals) const {
  return std::make_unique<SqlitePrinter>(values, literals);
}

/// Money is a double there, which doesn't hold every digit beyond the fifteenth.
QVariant SqliteWriter::toNative(const QVariant& value, FieldType type) const {
  const QVariant native = nativeFieldValue(value, type);
  if (value.userType() == qMetaTypeId<Money>() &&
      Money::fromDouble(native.toDouble()) != value.value<Money>())
    throw Error(errors::kOverflow);
  return native;
}

QVariant SqliteWriter::fromNative(const QVariant& native, FieldType type) const {
  return sql::fromNative(native, type);
}

}  // namespace qk::dao::sql
