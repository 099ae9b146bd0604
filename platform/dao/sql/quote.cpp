#include "platform/dao/sql/quote.h"

namespace qk::dao::sql {

QString quoted(const QString& value) {
  QString result;
  result.reserve(value.size() + 2);
  result += u'\'';
  for (const QChar c : value) {
    if (c == u'\'') result += c;
    result += c;
  }
  return result += u'\'';
}

}  // namespace qk::dao::sql
