#include "app/ground/feld_wert.h"

#include <algorithm>

namespace qk {

namespace {

constexpr int kFirstTypeWithoutNumber = 9;

}  // namespace

QVariant FeldWert(const dao::Recordset& recordset, int position) {
  QVariant value = recordset.value(position);
  if (value.isNull()) {
    const bool numeric = static_cast<int>(recordset.fieldDef(position).type) < kFirstTypeWithoutNumber;
    return numeric ? QVariant(0) : QVariant(QString(""));
  }
  if (value.typeId() == QMetaType::QString) {
    const QString text = value.toString();
    if (std::all_of(text.begin(), text.end(), [](QChar c) { return c.isNull(); })) return QString("");
  }
  return value;
}

QVariant FeldWert(const dao::Recordset& recordset, const QString& column) {
  return FeldWert(recordset, recordset.fieldPosition(column));
}

}  // namespace qk
