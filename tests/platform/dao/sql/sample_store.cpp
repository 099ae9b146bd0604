#include "tests/platform/dao/sql/sample_store.h"

#include <sqlite3.h>

#include "platform/dao/sql/parser.h"
#include "platform/dao/sql/printer.h"
#include "platform/dao/sqlite/sqlite_functions.h"
#include "platform/runtime/error.h"

namespace qk::dao::sql::test {
namespace {

FieldType typeOfLetter(QChar letter) {
  switch (letter.unicode()) {
    case u'y':
      return FieldType::Boolean;
    case u'i':
      return FieldType::Integer;
    case u'l':
      return FieldType::Long;
    case u'm':
      return FieldType::Currency;
    case u'd':
      return FieldType::Double;
    case u'c':
      return FieldType::Date;
    case u'b':
      return FieldType::LongBinary;
    default:
      return FieldType::Text;
  }
}

const char* nativeType(FieldType type) {
  switch (type) {
    case FieldType::Boolean:
    case FieldType::Integer:
    case FieldType::Long:
      return "INTEGER";
    case FieldType::Currency:
      return "NUMERIC";
    case FieldType::Double:
      return "REAL";
    case FieldType::LongBinary:
      return "BLOB";
    default:
      return "TEXT COLLATE NOCASE";
  }
}

void bindValue(sqlite3_stmt* statement, int position, const QVariant& value) {
  switch (value.userType()) {
    case QMetaType::UnknownType:
      sqlite3_bind_null(statement, position);
      break;
    case QMetaType::Int:
    case QMetaType::LongLong:
      sqlite3_bind_int64(statement, position, value.toLongLong());
      break;
    case QMetaType::Double:
      sqlite3_bind_double(statement, position, value.toDouble());
      break;
    default: {
      const QByteArray text = value.toString().toUtf8();
      sqlite3_bind_text(statement, position, text.constData(), int(text.size()), SQLITE_TRANSIENT);
    }
  }
}

}  // namespace

TableDef sampleTable(const QString& name, const QString& columns) {
  TableDef table{name, {}, {}};
  IndexDef key{"PrimaryKey", {}, true, true, true};
  for (const QString& column : columns.split(", ")) {
    const qsizetype blank = column.lastIndexOf(u' ');
    QString field = column.left(blank);
    const FieldType type = typeOfLetter(column[blank + 1]);
    if (field.endsWith(u'*')) {
      field.chop(1);
      key.fields << field;
    }
    table.fields.push_back({field, type});
  }
  if (key.fields.isEmpty()) return table;
  for (FieldDef& field : table.fields)
    field.autoNumber = key.fields == QStringList{field.name} && field.type == FieldType::Long;
  table.indexes.push_back(key);
  return table;
}

SampleStore::SampleStore() {
  sqlite3_open(":memory:", &database_);
  registerSqliteFunctions(database_);
}

SampleStore::~SampleStore() {
  sqlite3_close(database_);
}

const TableInfo* SampleStore::info(const QString& name) const {
  const auto found = tables_.find(name.toCaseFolded());
  return found == tables_.end() ? nullptr : found->second.get();
}

QStringList SampleStore::names(bool queries) const {
  QStringList found;
  for (const auto& [name, table] : tables_)
    if (table->query == queries) found << table->def.name;
  return found;
}

void SampleStore::table(const TableDef& table) {
  QStringList native;
  for (const FieldDef& field : table.fields) native << "\"" + field.name + "\" " + nativeType(field.type);
  for (const IndexDef& key : table.indexes)
    if (key.primary) native << "PRIMARY KEY (\"" + key.fields.join("\", \"") + "\")";
  this->native("CREATE TABLE \"" + table.name + "\" (" + native.join(", ") + ")");
  tables_[table.name.toCaseFolded()] = std::make_unique<TableInfo>(TableInfo{.def = table});
}

void SampleStore::query(const QString& name, const QString& text) {
  Statement statement = parseStatement(text);
  resolve(statement, *this);
  const Select& select = std::get<Select>(statement);
  auto definition = std::make_unique<TableInfo>(TableInfo{.def = {.name = name}, .query = true});
  QStringList names;
  for (const ResultColumn& column : resultColumns(select, *this)) {
    definition->def.fields.push_back(column.type);
    names.emplace_back();
    appendIdentifier(names.back(), column.name);
  }
  native("CREATE VIEW \"" + name + "\" (" + names.join(", ") + ") AS " + SqliteWriter().plainText(select));
  tables_[name.toCaseFolded()] = std::move(definition);
}

QStringList SampleStore::native(const QString& text, const QVariantList& values) const {
  sqlite3_stmt* statement = nullptr;
  const QByteArray utf8 = text.toUtf8();
  const auto fail = [&] {
    const QString message = QString::fromUtf8(sqlite3_errmsg(database_)) + ": " + text;
    sqlite3_finalize(statement);
    throw Error(3000, message);
  };
  if (sqlite3_prepare_v2(database_, utf8.constData(), int(utf8.size()), &statement, nullptr) != SQLITE_OK)
    fail();
  if (sqlite3_bind_parameter_count(statement) != values.size()) fail();
  for (int i = 0; i < values.size(); ++i) bindValue(statement, i + 1, values[i]);
  QStringList rows;
  int code = 0;
  while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
    QStringList cells;
    for (int i = 0; i < sqlite3_column_count(statement); ++i) {
      const auto* cell = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
      cells << (cell ? QString::fromUtf8(cell) : QString("NULL"));
    }
    rows << cells.join(u'|');
  }
  if (code != SQLITE_DONE) fail();
  sqlite3_finalize(statement);
  return rows;
}

NativeQuery SampleStore::translate(const QString& text) const {
  Statement statement = parseStatement(text);
  resolve(statement, *this);
  return SqliteWriter().statement(statement);
}

QStringList SampleStore::run(const QString& text) const {
  const NativeQuery query = translate(text);
  return native(query.text, query.values);
}

int SampleStore::changes() const {
  return sqlite3_changes(database_);
}

}  // namespace qk::dao::sql::test
