// What the conformance suite of the recordset layer asks of an engine: an empty store of its own, and further
// connections to it. Each engine brings one source file that implements newStore().
#pragma once

#include <QStringList>
#include <functional>
#include <memory>

#include "platform/dao/database.h"
#include "platform/dao/engine/engine.h"
#include "platform/dao/recordset.h"
#include "tests/support/error_of.h"

namespace qk::dao {

class Store {
 public:
  virtual ~Store() = default;
  virtual QString path() const = 0;
  /// Another connection to the same store.
  virtual std::unique_ptr<Database> connect() = 0;
  /// Path of a second, not yet existing store beside it.
  virtual QString otherPath(const QString& name) const = 0;
  /// Hears of every statement that the connection runs from now on; an empty listener ends it.
  virtual void listen(Database& database, std::function<void(const QString& nativeText)> listener) = 0;
  /// Steps of the engine's plan that read a whole table.
  virtual QStringList scans(Database& database, const QString& nativeText) = 0;
};

std::unique_ptr<Store> newStore();

using qk::test::errorOf;

inline FieldDef number(const QString& name) {
  return {name, FieldType::Long};
}
inline FieldDef text(const QString& name, int size = 50) {
  return {name, FieldType::Text, size};
}
inline FieldDef counter(const QString& name) {
  FieldDef field{name, FieldType::Long};
  field.autoNumber = true;
  return field;
}

/// Artikel(ID auto, Name, Menge, Fertig yes/no, Preis, Am date), with its primary key.
inline TableDef articles() {
  return {"Artikel",
          {counter("ID"),
           text("Name"),
           number("Menge"),
           {"Fertig", FieldType::Boolean},
           {"Preis", FieldType::Currency},
           {"Am", FieldType::Date}},
          {{"PrimaryKey", {"ID"}, true, true, true}}};
}

/// Adds an article and gives its number.
inline int addArticle(Recordset& rows, const QString& name, int amount = 0) {
  rows.addNew();
  rows.setValue("Name", name);
  rows.setValue("Menge", amount);
  const int id = rows.value("ID").toInt();
  rows.update();
  return id;
}

/// The column's values from the first row to the last.
inline QStringList walk(Recordset& rows, const QString& column) {
  QStringList values;
  if (!(rows.bof() && rows.eof())) rows.moveFirst();
  for (; !rows.eof(); rows.moveNext()) values.append(rows.value(column).toString());
  return values;
}

/// The first value that the engine itself answers.
inline QString single(Database& database, const QString& nativeText) {
  QString value;
  database.engine().read(nativeText, {}, [&](const NativeRow& row) {
    value = row.first().toString();
    return false;
  });
  return value;
}

}  // namespace qk::dao
