// The one quoting routine for values that come from outside and stand inside a query text.
#pragma once

#include <QString>

namespace qk::dao::sql {

/// 'text' with its single quotes doubled, the outer quotes included.
QString quoted(const QString& value);

}  // namespace qk::dao::sql
