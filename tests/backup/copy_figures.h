// What tests of copies compare, and how they break them.
#pragma once

#include <QString>
#include <vector>

#include "backup/evidence.h"
#include "platform/dao/database.h"

namespace qk::test {

/// Every table's name, rows and digest, by name.
std::vector<TableEvidence> figuresOfAll(dao::Database& store);

/// One bit of the byte at the place.
void flip(const QString& path, qint64 at);

}  // namespace qk::test
