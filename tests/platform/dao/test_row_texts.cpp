// What both engines are told about the rows of one table, and how a select in parts becomes a whole one.
#include <QTest>

#include "platform/dao/postgres/postgres_writer.h"
#include "platform/dao/sqlite/sqlite_writer.h"

using namespace qk::dao;
using namespace qk::dao::sql;

namespace {

TableInfo tableOf(const QStringList& key) {
  TableInfo table;
  table.def = {
      "Ort \"a\"", {{"ID", FieldType::Long}, {"Teil", FieldType::Text}, {"Name", FieldType::Text}}, {}};
  table.key.names = key;
  return table;
}

const TableInfo& table() {
  static const TableInfo one = tableOf({"ID"});
  return one;
}
const TableInfo& pair() {
  static const TableInfo two = tableOf({"ID", "Teil"});
  return two;
}

const NativeQuery kRows{"SELECT x FROM t JOIN u ON a = ?", {1}};

}  // namespace

class TestRowTexts : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void rowsAreAdded() {
    QCOMPARE(sqlite_.insertRow(table(), {"Name", "ID"}),
             R"(INSERT INTO "Ort ""a""" ("Name", "ID") VALUES (?, ?))");
    QCOMPARE(sqlite_.insertRow(table(), {}), R"(INSERT INTO "Ort ""a""" DEFAULT VALUES)");
    QCOMPARE(sqlite_.insertRows(table().def, 2),
             R"(INSERT INTO "Ort ""a""" ("ID", "Teil", "Name") VALUES (?, ?, ?), (?, ?, ?))");
  }

  void rowsAreChangedByTheirKey() {
    QCOMPARE(sqlite_.updateRow(table(), {"Name", "ID"}),
             R"(UPDATE "Ort ""a""" SET "Name" = ?, "ID" = ? WHERE "ID" = ?)");
    QCOMPARE(sqlite_.updateRow(pair(), {"Name"}),
             R"(UPDATE "Ort ""a""" SET "Name" = ? WHERE "ID" = ? AND "Teil" = ?)");
    QCOMPARE(sqlite_.deleteRow(pair()), R"(DELETE FROM "Ort ""a""" WHERE "ID" = ? AND "Teil" = ?)");
  }

  void rowsAreReadByTheirKey() {
    const QString read = R"(SELECT "Name", "Teil" FROM "Ort ""a""" WHERE "ID" = ?)";
    QCOMPARE(sqlite_.readRow(table(), {"Name", "Teil"}), read);
    QCOMPARE(postgres_.readRow(table(), {"Name", "Teil"}), read);
  }

  /// On a file whoever writes is alone.
  void rowsAreHeld() {
    QCOMPARE(sqlite_.holdRow(table(), {"Name"}), sqlite_.readRow(table(), {"Name"}));
    QCOMPARE(postgres_.holdRow(table(), {"Name"}), postgres_.readRow(table(), {"Name"}) + " FOR UPDATE");
  }

  void pagesFollowTheirKey() {
    const NativeQuery first = sqlite_.page(table(), {}, 10);
    QCOMPARE(first.text, R"(SELECT "ID", "ID", "Teil", "Name" FROM "Ort ""a""" ORDER BY "ID" LIMIT ?)");
    QCOMPARE(first.values, QVariantList{10});
    const NativeQuery next = sqlite_.page(pair(), {7, "x"}, 10);
    QCOMPARE(next.text,
             R"(SELECT "ID", "Teil", "ID", "Teil", "Name" FROM "Ort ""a""" WHERE ("ID", "Teil") > (?, ?) )"
             R"(ORDER BY "ID", "Teil" LIMIT ?)");
    QCOMPARE(next.values, QVariantList({7, "x", 10}));
  }

  void keysHaveEnds() {
    QCOMPARE(sqlite_.endOfKeys(table(), End::Least), R"(SELECT min("ID") FROM "Ort ""a""")");
    QCOMPARE(sqlite_.endOfKeys(table(), End::Greatest), R"(SELECT max("ID") FROM "Ort ""a""")");
  }

  void choicesFollowInTheirOrder() {
    const NativeQuery all = sqlite_.chosen(kRows, {});
    QCOMPARE(all.text, kRows.text);
    QCOMPARE(all.values, kRows.values);
    const NativeQuery some =
        sqlite_.chosen(kRows, {{{"a = ? OR b", {2}}, {}, {"c < ?", {3}}}, {{"d + ?", {4}}, {"e"}}, 5});
    QCOMPARE(some.text, kRows.text + " WHERE (a = ? OR b) AND (c < ?) ORDER BY d + ?, e LIMIT ?");
    QCOMPARE(some.values, QVariantList({1, 2, 3, 4, 5}));
  }

  void aKeyWithoutAValueIsNull() {
    const NativeQuery row = sqlite_.atKey(kRows, {"a", "b", "c"}, {7, QVariant(), "x"});
    QCOMPARE(row.text, kRows.text + " WHERE a = ? AND b IS NULL AND c = ?");
    QCOMPARE(row.values, QVariantList({1, 7, "x"}));
  }

  void keysLieBetween() {
    const NativeQuery first = sqlite_.within("k", {}, 9);
    QCOMPARE(first.text, "k <= ?");
    QCOMPARE(first.values, QVariantList{qlonglong(9)});
    const NativeQuery next = sqlite_.within("k", 4, 9);
    QCOMPARE(next.text, "k > ? AND k <= ?");
    QCOMPARE(next.values, QVariantList({qlonglong(4), qlonglong(9)}));
  }

  /// An engine plans a sorted list another way when it knows that nobody wants more than its beginning.
  void theFirstRowsAreCountedInTheText() {
    const NativeQuery first = sqlite_.first({"SELECT 1 ORDER BY ?", {2}}, 50);
    QCOMPARE(first.text, "SELECT 1 ORDER BY ? LIMIT 50");
    QCOMPARE(first.values, QVariantList{2});
  }

  void keysHaveAnOrder() {
    const auto order = [](const Writer& writer, FieldType type, bool outer) {
      QStringList terms;
      for (const NativeQuery& term : writer.keyOrder("k", type, outer))
        terms << term.text << writer.descending(term).text;
      return terms;
    };
    QCOMPARE(order(sqlite_, FieldType::Text, true), QStringList({"k", "k DESC"}));
    QCOMPARE(order(postgres_, FieldType::Long, false), QStringList({"k", "k DESC"}));
    QCOMPARE(
        order(postgres_, FieldType::Text, true),
        QStringList({"(k IS NOT NULL)", "(k IS NOT NULL) DESC", foldedText("k"), foldedText("k") + " DESC"}));
  }

 private:
  const SqliteWriter sqlite_;
  const PostgresWriter postgres_{[](const QString&) { return StoredTable(); }};
};

QTEST_APPLESS_MAIN(TestRowTexts)
#include "test_row_texts.moc"
