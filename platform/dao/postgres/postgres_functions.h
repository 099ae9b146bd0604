// What PostgreSQL lacks for the query language, as functions and a collation of the store's own schema. They
// say the same as the functions of sqlite_functions.cpp.
#pragma once

#include <QStringList>

namespace qk::dao::sql {

/// Raised with every change below: an older store is furnished anew when its owner opens it. Desks of before
/// go on with the newer functions; so a function keeps its name, its parameters and, for what it knew, its
/// answers.
inline constexpr int kPostgresFunctionsVersion = 3;

/// Statements that make them, or make them anew, in the first schema of the search path.
QStringList postgresFunctions();

}  // namespace qk::dao::sql
