// The rows of a demo competition: what data/schema/Demo.txt fixes, and what a generator with a fixed seed
// adds (shooters, admitted classes, registrations, payments, issued targets). The same rows at every call.
#pragma once

#include <vector>

#include "platform/schema/schema_build.h"

namespace qk {

inline constexpr int DemoShooters = 60;

/// `tables` are the definitions that the rows belong to, `fixed` the rows of Demo.txt; sections of one table
/// come joined, in the order in which they can be inserted.
std::vector<TableData> demoRows(const Schema& tables, const Schema& fixed);

/// ID of the first class that takes an age and a sex ("M", "W" or ""), 0 for none; classes as in the table.
int classFor(const TableData& classes, int age, const QString& sex);

}  // namespace qk
