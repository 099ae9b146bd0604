// Finds out what the names in a report mean: a column of the part's rows, a value that is known everywhere, a
// page number. A name that nobody knows is an error that names the line.
#pragma once

#include "platform/dao/values/types.h"
#include "platform/report/definition.h"

namespace qk::report {

/// What a part's rows are called and which of their columns are summed, once it is bound.
struct BoundPart {
  std::vector<int> sums;  ///< columns of the row
  bool namesPageCount = false;
};

void bindPage(Definition& report, const QStringList& fixedNames);
BoundPart bindPart(Definition& report, size_t part, const std::vector<dao::FieldDef>& fields,
                   const QStringList& fixedNames);

}  // namespace qk::report
