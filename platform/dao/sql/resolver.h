// Binds the names of a tree to tables and columns and works out what kind of value each expression is.
// Names fold as Unicode. Errors: 3078 unknown table or query, 3061 unknown column, 3079 ambiguous column or
// source, 3085 unknown function, 3096 aggregate where none can stand, 3127 and 3346 columns of an INSERT,
// 3307 columns of a union, 3073 an UPDATE that would change several tables.
#pragma once

#include "platform/dao/sql/tree.h"
#include "platform/dao/values/catalogue.h"

namespace qk::dao::sql {

void resolve(Statement& statement, const Catalogue& catalogue);
void resolve(Select& select, const Catalogue& catalogue);
/// A criterion, against the result columns of a resolved select first and then its sources. Above a union a
/// column stays unbound (source -1) under its result name.
void resolveCriterion(Expression& criterion, const Select& select, const Catalogue& catalogue);

/// One column of a resolved select's result, with stars expanded.
struct ResultColumn {
  QString name;       ///< alias, or column name; "table.column" where two sources bring the same name
  FieldDef type;      ///< the base column's definition, or one guessed from the expression's kind
  int source = -1;    ///< position of the base table's source; -1 for a computed column
  QString baseTable;  ///< stored spelling; empty for a computed column
  QString baseColumn;
};
std::vector<ResultColumn> resultColumns(const Select& select, const Catalogue& catalogue);

/// The table sources of a resolved select, depth first, the position being Column::source. A subselect has an
/// empty table name.
struct BoundSource {
  QString table, alias;
  bool outer = false;  ///< may be missing from a row (the optional side of an outer join)
};
std::vector<BoundSource> boundSources(const Select& select);

/// The source of a resolved select's join whose rows stand on the many side: the first one that isn't joined
/// by the whole of its own primary key. A deletion over the join removes rows of this one only.
int manySide(const Select& select, const Catalogue& catalogue);

/// What a value of a column of this type is compared and printed as.
Kind kindOf(FieldType type);
/// The same, and the kind of whole number that the column takes.
Kind storedKindOf(FieldType type);

}  // namespace qk::dao::sql
