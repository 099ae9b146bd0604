// A store of 400 rows that reports are made of, in four places of a hundred.
#pragma once

#include <QDateTime>
#include <QTemporaryDir>
#include <memory>

#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/report/document.h"
#include "platform/report/parser.h"
#include "platform/runtime/money.h"
#include "tests/support/test_store.h"

namespace qk::test {

inline constexpr int kRows = 400;
inline const QString kHead =
    "Seitenkopf\n  Text 0 0 * 6 \"Kopf\"\nSeitenfuß\n  Text 0 0 * 5 \"Seite {Seite} von {Seiten}\" rechts\n";
inline const QString kTable = "Abfrage\n  SELECT ID, Ort, Name, Betrag, Tag FROM Posten ORDER BY ID\n";

inline Money amountOf(int id) {
  return Money::fromUnits(id * 10'100 + 33);  // halves and thirds of a cent
}

inline void makeStore(const QString& path) {
  const auto database = dao::Database::create(path);
  dao::TableDef table;
  table.name = "Posten";
  const auto field = [&](const char* name, dao::FieldType type, int size = 0) {
    dao::FieldDef def;
    def.name = name;
    def.type = type;
    def.size = size;
    table.fields.push_back(def);
  };
  field("ID", dao::FieldType::Long);
  field("Ort", dao::FieldType::Text, 50);
  field("Name", dao::FieldType::Memo);
  field("Betrag", dao::FieldType::Currency);
  field("Tag", dao::FieldType::Date);
  table.indexes.push_back({"PrimaryKey", {"ID"}, true, true});
  database->createTable(table);
  const auto rows = database->openRecordset("Posten");
  for (int id = 1; id <= kRows; ++id) {
    rows->addNew();
    rows->setValue("ID", id);
    rows->setValue("Ort", QString("Ort %1").arg((id - 1) / 100));
    rows->setValue("Name", id % 50 == 0 ? QString("lang ").repeated(60) : QString("Name %1").arg(id));
    rows->setValue("Betrag", QVariant::fromValue(amountOf(id)));
    rows->setValue("Tag", QDateTime(QDate(2026, 11, 1 + id % 3), QTime(0, 0)));
    rows->update();
  }
}

class Store {
 public:
  Store() {
    static const StoreOriginal original(makeStore);
    original.copyTo(path());
  }
  QString path() const { return folder_.filePath("daten.qkk"); }
  QString file(const QString& name) const { return folder_.filePath(name); }

 private:
  QTemporaryDir folder_;
};

inline report::Input inputFor(const QString& path) {
  report::Input input;
  input.dataFile = path;
  input.now = QDateTime(QDate(2026, 11, 22), QTime(10, 0));
  return input;
}

inline std::unique_ptr<report::Document> made(const Store& store, const QString& text) {
  return std::make_unique<report::Document>(report::parseReport(text, "x.rpt"), inputFor(store.path()));
}

}  // namespace qk::test
