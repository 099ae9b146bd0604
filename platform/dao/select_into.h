// SELECT … INTO: a new table with the rows of a select, in the same store or, through this program, in
// another one.
#pragma once

#include "platform/dao/sql/tree.h"

namespace qk::dao {

class Engine;

/// The new table takes fields, auto number and primary key from the table the rows come from; other indexes
/// stay behind. Rows and table come to be in one commit. 3010 when the table exists. The
/// count of rows.
int selectInto(Engine& engine, sql::Select select);

}  // namespace qk::dao
