// Text to tree. Throws Error 3075 (syntax, with the place in the text), never reads a catalogue.
#pragma once

#include <QString>

#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

Statement parseStatement(const QString& text);
/// A criterion of FindFirst: a lone expression such as "ID = 5".
ExpressionPtr parseCriterion(const QString& text);

}  // namespace qk::dao::sql
