// What the names of a FROM clause stand for. Used by resolver.cpp and result_columns.cpp.
#pragma once

#include "platform/dao/sql/resolver.h"

namespace qk::dao::sql {

struct Binding {
  QString name;                       ///< alias, or table name in its stored spelling
  const TableDef* table = nullptr;    ///< of a table or stored query
  std::vector<ResultColumn> columns;  ///< of a subselect
  bool outer = false;

  int size() const { return int(table ? table->fields.size() : columns.size()); }
  const FieldDef& field(int position) const;  ///< a subselect's carries the result name
  int find(const QString& column) const;      ///< -1 when missing
};
using Bindings = std::vector<Binding>;

/// Of a FROM clause whose tables carry their stored spelling and whose subselects are resolved.
Bindings bindSources(const std::vector<SourcePtr>& from, const Catalogue& catalogue);
void bindSources(const Source& source, const Catalogue& catalogue, bool outer, Bindings& bindings);

/// Error 3078 that tells the name.
[[noreturn]] void throwUnknownSource(const QString& name);

/// Position of a source by name or alias; -1 when missing.
int findBinding(const Bindings& bindings, const QString& name);

/// A column of a result: a bound one, or an expression.
struct ExpandedColumn {
  QString name;
  int source = -1, field = -1;
  const Expression* expression = nullptr;  ///< null where it comes from a star
};
/// The result columns of one select, stars expanded, names as the result shows them.
std::vector<ExpandedColumn> expand(const Select& select, const Bindings& bindings);

std::vector<ResultColumn> resultColumns(const Select& select, const Bindings& bindings);
int manySide(const std::vector<const Source*>& from, const Expression* where, const Bindings& bindings);

}  // namespace qk::dao::sql
