#include "platform/dao/values/types.h"

#include <algorithm>

namespace qk::dao {

bool sameName(const QString& a, const QString& b) {
  return QString::compare(a, b, Qt::CaseInsensitive) == 0;
}

/// Letter by letter, as sameName() compares: QString::toCaseFolded() would make "ss" of "ß".
QString foldedName(const QString& name) {
  QString folded = name;
  std::transform(name.begin(), name.end(), folded.begin(), [](QChar c) { return c.toCaseFolded(); });
  return folded;
}

const FieldDef* TableDef::field(const QString& fieldName) const {
  for (const FieldDef& candidate : fields)
    if (sameName(candidate.name, fieldName)) return &candidate;
  return nullptr;
}

const IndexDef* TableDef::primary() const {
  for (const IndexDef& index : indexes)
    if (index.primary) return &index;
  return nullptr;
}

}  // namespace qk::dao
