#include "tests/masterdata/making/move_store.h"

#include <QDateTime>
#include <QProcess>
#include <algorithm>

#include "platform/dao/engine/engine.h"
#include "platform/dao/recordset.h"
#include "platform/dao/row_pages.h"
#include "platform/runtime/money.h"

namespace qk::test {

using dao::Database;
using dao::FieldDef;
using dao::FieldType;
using dao::IndexDef;

namespace {

dao::TableDef everything() {
  FieldDef number{"ID", FieldType::Long};
  number.autoNumber = true;
  FieldDef name{"Schütze Name", FieldType::Text, 60};
  name.required = true;
  FieldDef remark{"Bemerkung", FieldType::Memo};
  remark.allowZeroLength = false;
  FieldDef amount{"Betrag", FieldType::Currency};
  amount.preset = QVariant::fromValue(Money::fromUnits(125000));
  FieldDef rings{"Ringe", FieldType::Integer};
  rings.preset = 10;
  return {"Alles",
          {number,
           name,
           remark,
           amount,
           rings,
           {"Gültig", FieldType::Boolean},
           {"Stufe", FieldType::Byte},
           {"Teiler", FieldType::Double},
           {"Faktor", FieldType::Single},
           {"Am", FieldType::Date},
           {"Bild", FieldType::LongBinary}},
          {{"PrimaryKey", {"ID"}, true, true, true},
           {"Nach Name", {"Schütze Name", "Am"}, false, false, false},
           {"Ringe", {"Ringe"}, false, false, true}}};
}

QVariant orNull(int row, int every, const QVariant& value) {
  return row % every == 0 ? QVariant() : value;
}

const QStringList kNames = {"Müller, Jürgen", "Groß-Weiß", "Ångström", "O'Neil \"Rob\"",    "ÄÖÜ äöü ß €",
                            "x\\y%_[a]*?",    " Blank ",   "1e3",      "Zeile 1\r\nZeile 2"};

void setRow(dao::Recordset& rows, int i) {
  rows.setValue("Schütze Name", kNames.at(i % kNames.size()) + " " + QString::number(i % 977));
  rows.setValue("Bemerkung", orNull(i, 3, "Müde 😀 " + QString(i % 300, QChar(u'ß')) + "."));
  rows.setValue("Betrag", orNull(i, 5, QVariant::fromValue(Money::fromUnits(i * 10007LL - 50000001LL))));
  rows.setValue("Ringe", orNull(i, 7, i % 32768 - 16384));
  rows.setValue("Gültig", i % 2 ? -1 : 0);
  rows.setValue("Stufe", i % 256);
  rows.setValue("Teiler", orNull(i, 4, i / 7.0 - 1e-9 * i));
  rows.setValue("Faktor", orNull(i, 6, 0.5 * i));
  const QDateTime zero(QDate(1899, 12, 30), QTime(0, 0));
  rows.setValue("Am", orNull(i, 11, i % 10 ? zero.addDays(i % 60000).addSecs(i) : zero));
  rows.setValue("Bild", orNull(i, 2, QByteArray::fromHex("00ff") + QByteArray::number(i)));
}

void addRows(Database& store, int count) {
  store.engine().transaction([&] {
    const auto rows = store.openRecordset("Alles");
    for (int i = 1; i <= count; ++i) {
      rows->addNew();
      setRow(*rows, i);
      rows->update();
    }
  });
}

void add(Database& store, const QString& table, const std::vector<QVariantList>& values) {
  const auto rows = store.openRecordset(table);
  for (const QVariantList& value : values) {
    rows->addNew();
    for (int i = 0; i < value.size(); ++i) rows->setValue(i, value[i]);
    rows->update();
  }
}

void addNumbered(Database& store, const QString& name, int rows, int left) {
  FieldDef number{"Nr", FieldType::Long};
  number.autoNumber = true;
  store.createTable({name, {number, {"Wert", FieldType::Long}}, {{"PrimaryKey", {"Nr"}, true, true, true}}});
  const auto adding = store.openRecordset(name);
  for (int i = 0; i < rows; ++i) {
    adding->addNew();
    adding->update();
  }
  store.execute(QString("DELETE * FROM [%1] WHERE Nr > %2").arg(name).arg(left));
}

QString text(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::UnknownType:
      return "Null";
    case QMetaType::QByteArray:
      return "x" + QString::fromLatin1(value.toByteArray().toHex());
    case QMetaType::QDateTime:
      return value.toDateTime().toString("yyyy-MM-dd hh:mm:ss");
    case QMetaType::Double:
      return QString::number(value.toDouble(), 'g', 17);
    case QMetaType::QString:
      return "\"" + value.toString() + "\"";
    default:
      break;
  }
  if (value.canConvert<Money>()) return value.value<Money>().toText();
  return value.toString();
}

QString definition(const FieldDef& field) {
  return QString("  %1 Typ %2 Länge %3%4%5%6 Vorgabe %7")
      .arg(field.name)
      .arg(static_cast<int>(field.type))
      .arg(field.size)
      .arg(field.autoNumber ? " Zähler" : "", field.required ? " Pflicht" : "",
           field.allowZeroLength ? "" : " nichtleer", text(field.preset));
}

QString definition(const IndexDef& index) {
  return QString("  Index %1%2%3%4 %5")
      .arg(index.name, index.primary ? " primär" : "", index.unique ? " eindeutig" : "",
           index.required ? " pflicht" : "", index.fields.join(", "));
}

}  // namespace

void addHardTables(Database& store, int rows) {
  store.createTable(everything());
  addRows(store, rows);
  store.createTable({"OhneSchlüssel", {{"Art", FieldType::Text, 10}, {"Wert", FieldType::Double}}, {}});
  add(store, "OhneSchlüssel", {{"b", 2.5}, {"a", 0.1}, {"b", 2.5}, {QVariant(), QVariant()}, {"", -0.0}});
  store.createTable({"Textschlüssel",
                     {{"Kürzel", FieldType::Text, 5}, {"Preis", FieldType::Currency}},
                     {{"Hauptschlüssel", {"Kürzel"}, true, true, true}}});
  add(store, "Textschlüssel",
      {{"Z", QVariant::fromValue(Money::fromUnits(1))},
       {"ä", QVariant::fromValue(Money::fromUnits(-1))},
       {"B", QVariant::fromValue(Money::fromUnits(999'999'999'999'999))}});
  store.createTable(
      {"Paare",
       {{"Links", FieldType::Long}, {"Rechts", FieldType::Text, 20}, {"Zahl", FieldType::Long}},
       {{"PrimaryKey", {"Links", "Rechts"}, true, true, true}, {"Zahl", {"Zahl"}, false, true, false}}});
  std::vector<QVariantList> pairs;
  for (int i = 0; i < 2500; ++i) pairs.push_back({i / 3, QString(QChar('a' + i % 3)), 5000 - i});
  add(store, "Paare", pairs);
  addNumbered(store, "Gekürzt", 7, 4);
  addNumbered(store, "Geleert", 5, 0);
  addNumbered(store, "Unberührt", 0, 0);
  store.createQuery("Namen", "SELECT ID, [Schütze Name], Am FROM Alles WHERE Gültig = True");
  store.createQuery("Auf Namen", "SELECT [Schütze Name] FROM Namen WHERE ID > 5");
}

QStringList contentsOf(const QString& path) {
  const auto store = Database::open(path);
  QStringList lines;
  QStringList tables = store->tableNames();
  tables.sort();
  for (const QString& table : tables) {
    lines << "Tabelle " + table;
    dao::RowPages pages(store->engine(), table);
    for (const FieldDef& field : pages.def().fields) lines << definition(field);
    for (const IndexDef& index : pages.def().indexes) lines << definition(index);
    std::vector<QVariantList> page;
    QStringList rows;
    while (pages.next(page))
      for (const QVariantList& row : page) {
        QStringList cells;
        for (const QVariant& value : row) cells << text(value);
        rows << cells.join(" | ");
      }
    rows.sort();  // engines differ in the order of text keys
    lines += rows;
  }
  QStringList queries = store->queryNames();
  queries.sort();
  for (const QString& query : queries)
    lines << "Abfrage " + query + ": " + store->engine().catalogue()->info(query)->text;
  return lines;
}

QStringList nextNumbersOf(const QString& path) {
  const auto store = Database::open(path);
  QStringList numbers;
  for (const QString& table : store->tableNames())
    for (const FieldDef& field : store->tableDef(table).fields) {
      if (!field.autoNumber) continue;
      const auto rows = store->openRecordset(table);
      rows->addNew();
      numbers << table + ": " + rows->value(field.name).toString();
    }
  numbers.sort();
  return numbers;
}

QString firstDifference(const QStringList& a, const QStringList& b) {
  for (qsizetype i = 0; i < std::max(a.size(), b.size()); ++i)
    if (a.value(i) != b.value(i)) return QString("%1: %2 <> %3").arg(i).arg(a.value(i), b.value(i));
  return {};
}

bool killMoveAt(const QString& from, const QString& to, const QString& line) {
  QProcess move;
  move.start(QK_WETTKAMPF, {"umziehen", from, to});
  QString said;
  while (!said.contains(line) && move.waitForReadyRead(60000))
    said += QString::fromUtf8(move.readAllStandardOutput());
  if (!said.contains(line)) return false;
  move.kill();
  return move.waitForFinished() && move.exitStatus() == QProcess::CrashExit;
}

}  // namespace qk::test
