// How the rows of a query text are listed, read and written back; worked out once for a text and shared by
// every recordset that opens it again.
#pragma once

#include <QHash>
#include <QString>
#include <memory>
#include <optional>
#include <vector>

#include "platform/dao/engine/engine.h"
#include "platform/dao/sql/writer.h"
#include "platform/dao/values/catalogue.h"

namespace qk::dao {

/// A base table of a keyed select.
struct PlanSource {
  const TableInfo* table = nullptr;
  QString qualifier;       ///< alias or name, as it stands in the text
  bool outer = false;      ///< may be missing from a row: its key is Null then
  qsizetype keyFirst = 0;  ///< position of its first key column in the row's key
};

struct PlanColumn {
  FieldDef def;
  int source = -1;     ///< position in sources; -1: can't be written
  int baseField = -1;  ///< position in the source table's definition
};

/// The fields of a row while it is added or edited.
struct EditBuffer {
  std::vector<QVariant> values;
  std::vector<bool> changed;  ///< by column of the plan
};

/// What writes some columns of one source: rows that are written alike share it.
struct RowChange {
  std::vector<bool> changed;      ///< of the buffer that it was made for
  std::vector<int> columns = {};  ///< of the plan: those that changed, and are the source's
  QStringList names = {};         ///< as the table calls them
  /// By column of the source's key: the place among `columns`; -1 where it isn't among them.
  std::vector<int> keyPlaces = {};
  QString text = {};
};

/// Keyed: a row is found again by the keys of its base tables, so that it can be read when stood on, and
/// changed. Otherwise (unions, groups, distinct rows, stored queries, subselects) the rows are read whole,
/// once.
struct SelectPlan {
  std::shared_ptr<const Catalogue> catalogue;  ///< what the plan was made of; another one makes it stale
  QString text;
  sql::SelectPtr select;  ///< resolved
  std::vector<PlanColumn> columns;
  QHash<QString, int> positions;  ///< by name as spelled in the result, and by folded name
  bool ambiguous = false;         ///< two columns have the same name
  sql::NativeQuery whole;         ///< the select as it is, where the rows aren't keyed
  sql::SelectPtr unresolved;      ///< likewise: to be the source of a larger select

  bool keyed = false;
  std::vector<PlanSource> sources;
  int manySide = 0;  ///< the source whose rows addNew() makes and remove() deletes
  int keyWidth = 0;
  bool integerKey = false;  ///< one source with a whole-number key
  bool paged = false;       ///< the order is that of the key, so the list can be read page by page
  QStringList keyColumns;   ///< as they stand in a text, in the order of the row's key
  sql::NativeQuery keys;    ///< those columns alone, and the whole row; both without a condition
  sql::NativeQuery row;
  sql::NativeQuery where;                  ///< condition, may be empty
  std::vector<sql::NativeQuery> order;     ///< the text's own terms and then those of the keys
  std::vector<sql::NativeQuery> keyOrder;  ///< these alone

  // What was worked out last, for the rows to come.
  mutable std::optional<EditBuffer> newRow = {};  ///< with its presets
  mutable std::shared_ptr<const RowChange> insertion = {};
  mutable std::vector<std::shared_ptr<const RowChange>> updates = {};  ///< by source

  static std::shared_ptr<const SelectPlan> make(Engine& engine, const QString& source);

  /// All rows in the text's own order: their keys alone, where the rows are keyed, or whole.
  sql::NativeQuery keyListing(const sql::Writer& writer) const;
  sql::NativeQuery rowListing(const sql::Writer& writer) const;
  /// How many rows that lists, where they are keyed.
  sql::NativeQuery counting(const sql::Writer& writer) const;

  const PlanSource& target() const { return sources[static_cast<size_t>(manySide)]; }
  int position(const QString& name) const;  ///< -1 when missing
  /// The same. A row is mostly written and read in the order of its columns, and looking whether the likely
  /// one is called so costs less than looking for the name.
  int position(const QString& name, int likely) const;
  /// The value of a column in the row with that key. Null in a yes/no column, as files of others may hold it,
  /// is False; where a join found no row it stays Null.
  QVariant value(const sql::Writer& writer, int column, const QVariant& native, const Key& key) const;

 private:
  sql::NativeQuery listed(const sql::Writer& writer, const sql::NativeQuery& rows) const;
};

/// Plans by text, for one database.
class PlanCache {
 public:
  std::shared_ptr<const SelectPlan> get(Engine& engine, const QString& source);

 private:
  QHash<QString, std::shared_ptr<const SelectPlan>> plans_;
};

}  // namespace qk::dao
