// Prints trees in the source language, for tests that read the print again.
#pragma once

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql::test {

QString sourceText(const Statement& statement);
QString sourceText(const Expression& expression);

}  // namespace qk::dao::sql::test
