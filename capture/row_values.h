// Reading the columns of a row: Null never reaches the logic. Numbers of a row that don't fit are Error 6.
#pragma once

#include <QString>
#include <cstdint>

#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {

/// Null and a text of nothing but NUL characters read as the empty text.
inline QString textIn(const dao::Recordset& rs, const QString& column) {
  const QString text = rs.value(column).toString();
  return text.count(QChar(u'\0')) == text.size() ? QString() : text;
}
/// Null reads as 0.
inline double doubleIn(const dao::Recordset& rs, const QString& column) {
  return rs.value(column).toDouble();
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
  if (!pointer) throw Error(91);
  return *pointer;
}

}  // namespace qk
