// Reading a column so that Null never reaches the logic.
#pragma once

#include <QString>
#include <QVariant>

#include "platform/dao/recordset.h"

namespace qk {

/// Null or no value at all gives 0 for a column of a numeric type (below 9, dates among them) and the empty
/// text otherwise; a text of nothing but NUL characters gives the empty text.
QVariant FeldWert(const dao::Recordset& recordset, int position);
QVariant FeldWert(const dao::Recordset& recordset, const QString& column);

}  // namespace qk
