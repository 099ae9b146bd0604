#include "platform/dao/types.h"

namespace qk::dao {

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
