#include "platform/dao/engine/stored_query.h"

#include "platform/dao/sql/parser.h"
#include "platform/dao/sql/resolver.h"
#include "platform/runtime/error.h"

namespace qk::dao {

bool describeStoredQuery(const QString& text, const Catalogue& catalogue, TableDef& query) {
  if (text.isEmpty()) return false;
  try {
    sql::Statement statement = sql::parseStatement(text);
    auto& select = std::get<sql::Select>(statement);
    sql::resolve(select, catalogue);
    for (const sql::ResultColumn& column : sql::resultColumns(select, catalogue)) {
      FieldDef field = column.type;
      field.name = column.name;
      field.autoNumber = false;
      query.fields.push_back(field);
    }
    return true;
  } catch (const Error&) {
    return false;
  }
}

}  // namespace qk::dao
