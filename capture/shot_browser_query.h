// The query of the browser of all shots, whatever their state.
#pragma once

#include <QStringList>

#include "platform/grid/filtered_query.h"

namespace qk {

/// The columns of the browser, in its order.
const QStringList& shotBrowserColumns();
/// Filters and sorts by each of them.
FilteredQuery shotBrowserQuery();

}  // namespace qk
