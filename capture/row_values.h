// Reading the columns of a row by the type of the field they go to. A number that doesn't fit is Error 6.
#pragma once

#include <QString>
#include <cstdint>

#include "app/ground/feld_wert.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {

inline QString textIn(const dao::Recordset& rs, const QString& column) {
  return FeldWert(rs, column).toString();
}
inline double doubleIn(const dao::Recordset& rs, const QString& column) {
  return FeldWert(rs, column).toDouble();
}
inline std::int32_t longIn(const dao::Recordset& rs, const QString& column) {
  return toInt32(doubleIn(rs, column));
}
inline std::int16_t integerIn(const dao::Recordset& rs, const QString& column) {
  return toInt16(doubleIn(rs, column));
}

/// What a pointer points at; one that an ignored failure left empty is Error 91.
template <class Pointer>
auto& required(const Pointer& pointer) {
  if (!pointer) throw Error(errors::kObjectNotSet);
  return *pointer;
}

}  // namespace qk
