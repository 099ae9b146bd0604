// Patterns of LIKE as regular expressions of PostgreSQL that take the same texts, whatever the server's
// collations: a letter becomes the set of all that fold to it.
#pragma once

#include <QString>

namespace qk::dao::sql {

QString regularExpression(QStringView pattern);

}  // namespace qk::dao::sql
