// Rows as a text for a spreadsheet, by German conventions.
#pragma once

#include <QVariantList>
#include <functional>

#include "platform/dao/values/types.h"
#include "platform/report/definition.h"

class QIODevice;

namespace qk::report {

class RowBuffer;

/// The columns of the part's table, or all of the query's where there is none. UTF-8 with a mark in front of
/// the first part, CR LF, ";". False when `goesOn` stopped it; 75 when the device takes no more.
bool writeCsvPart(QIODevice& device, const Part& part, const std::vector<dao::FieldDef>& fields,
                  const RowBuffer& rows, const QVariantList& fixed, bool first,
                  const std::function<bool(int done, int all)>& goesOn);

}  // namespace qk::report
