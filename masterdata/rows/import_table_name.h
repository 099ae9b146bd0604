// The table in which the last import of a list lies ready to be taken back (masterdata/lists/import_table.h).
#pragma once

#include <QString>

namespace qk {

inline QString importTableName() {
  return QStringLiteral("Stammdaten_Import");
}

}  // namespace qk
