#include "platform/dao/postgres/postgres_writer.h"

#include "platform/dao/postgres/postgres_printer.h"
#include "platform/dao/sql/native_values.h"
#include "platform/runtime/money.h"

namespace qk::dao::sql {
namespace {

/// All four decimals, which a double may not hold.
QString decimalText(Money amount) {
  constexpr qint64 kUnit = 10000;
  const qint64 units = amount.units();
  const quint64 size = units < 0 ? quint64(0) - quint64(units) : quint64(units);
  return (units < 0 ? "-" : "") + QString::number(size / kUnit) + u'.' +
         QString::number(size % kUnit).rightJustified(4, u'0');
}

}  // namespace

QString foldedText(const QString& text) {
  return "lower(" + text + " COLLATE \"C\")";
}

std::unique_ptr<Printer> PostgresWriter::printer(QVariantList& values, Printer::Literals literals) const {
  return std::make_unique<PostgresPrinter>(values, literals, tables_);
}

QVariant PostgresWriter::toNative(const QVariant& value, FieldType type) const {
  if (value.userType() == qMetaTypeId<Money>()) return decimalText(value.value<Money>());
  return nativeFieldValue(value, type);
}

QVariant PostgresWriter::fromNative(const QVariant& native, FieldType type) const {
  return sql::fromNative(native, type);
}

std::vector<NativeQuery> PostgresWriter::keyOrder(const QString& column, FieldType type, bool outer) const {
  const NativeQuery term{kindOf(type) == Kind::Text ? foldedText(column) : column};
  if (outer) return {{'(' + column + " IS NOT NULL)"}, term};
  return {term};
}

}  // namespace qk::dao::sql
