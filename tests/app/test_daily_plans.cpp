// A day's work at a line may not grow slower with the competition: no query plan of it scans a table that
// grows. Every statement that reaches SQLite is caught, whoever prepared it, and explained afterwards.
#include <sqlite3.h>

#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include "tests/app/days_work.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Catches the texts of all statements that any connection of this process runs while it lives.
class CaughtStatements {
 public:
  CaughtStatements() {
    current = this;
    sqlite3_auto_extension(reinterpret_cast<void (*)()>(&onConnection));
  }
  ~CaughtStatements() {
    sqlite3_cancel_auto_extension(reinterpret_cast<void (*)()>(&onConnection));
    current = nullptr;
  }

  const QSet<QString>& texts() const { return texts_; }

  /// What SQLite plans for the texts, a line a step. `store` lends the functions and collations of the house.
  QStringList plans(const std::function<std::unique_ptr<dao::Database>()>& open) {
    const QSet<QString> caught = texts_;
    const auto store = open();
    QStringList steps;
    for (const QString& text : caught) steps += planOf(lastConnection_, text);
    return steps;
  }

 private:
  static int onConnection(sqlite3* connection, char**, const void*) {
    current->lastConnection_ = connection;
    return sqlite3_trace_v2(connection, SQLITE_TRACE_STMT, &onStatement, nullptr);
  }
  static int onStatement(unsigned, void*, void* statement, void*) {
    auto* ran = static_cast<sqlite3_stmt*>(statement);
    const auto file = QString::fromUtf8(sqlite3_db_filename(sqlite3_db_handle(ran), "main"));
    // A connection may outlive the listening; the template's tables don't grow.
    if (current && file.endsWith(".qkk")) current->texts_.insert(QString::fromUtf8(sqlite3_sql(ran)));
    return 0;
  }
  static QStringList planOf(sqlite3* connection, const QString& text) {
    sqlite3_stmt* statement = nullptr;
    const QByteArray explained = "EXPLAIN QUERY PLAN " + text.toUtf8();
    QStringList steps;
    if (sqlite3_prepare_v2(connection, explained.constData(), -1, &statement, nullptr) != SQLITE_OK)
      return {};
    while (sqlite3_step(statement) == SQLITE_ROW)
      steps << QString::fromUtf8(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3))) +
                   "   in: " + text;
    sqlite3_finalize(statement);
    return steps;
  }

  inline static CaughtStatements* current = nullptr;
  QSet<QString> texts_;
  sqlite3* lastConnection_ = nullptr;
};

/// Steps that read a growing table from end to end: by its rows, along an index, or as a range of its keys
/// (the upper key limit of a recordset makes a search of every scan).
QStringList scansOf(const QStringList& steps) {
  QStringList found;
  for (const QString& table : growingTables()) {
    const QRegularExpression scan("^(SCAN " + table + "\\b|SEARCH " + table +
                                  " USING INTEGER PRIMARY KEY \\(rowid[<>])");
    for (const QString& step : steps)
      if (scan.match(step).hasMatch()) found << step;
  }
  return found;
}

}  // namespace

class TestDailyPlans : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void aDaysWorkScansNoTableThatGrows() {
    RangeOffice office;
    CaughtStatements caught;
    workADay(office);
    for (const QString& table : growingTables()) {
      const bool written =
          std::any_of(caught.texts().begin(), caught.texts().end(), [&](const QString& text) {
            return text.startsWith("INSERT", Qt::CaseInsensitive) && text.contains('"' + table + '"');
          });
      QVERIFY2(written, qPrintable("nothing was written to " + table));
    }
    const QStringList steps = caught.plans([&] { return office.database(); });
    QVERIFY(!steps.isEmpty());
    const QStringList scans = scansOf(steps);
    QVERIFY2(scans.isEmpty(), qPrintable(scans.join('\n')));
  }

  /// The check sees what it is there for: without its index the look-up of open shots reads all shots.
  void aMissingIndexIsSeen() {
    RangeOffice office;
    workADay(office);  // an empty table isn't even looked into
    office.drop();
    dropIndex(office.competition);
    CaughtStatements caught;
    QVERIFY(office.open());
    QVERIFY(!scansOf(caught.plans([&] { return office.database(); })).isEmpty());
  }

 private:
  static void dropIndex(const QString& path) {
    sqlite3* store = nullptr;
    QCOMPARE(sqlite3_open(path.toUtf8().constData(), &store), SQLITE_OK);
    sqlite3_stmt* names = nullptr;
    QCOMPARE(sqlite3_prepare_v2(
                 store, "SELECT name FROM sqlite_master WHERE type = 'index' AND name LIKE '%OffeneSchuss%'",
                 -1, &names, nullptr),
             SQLITE_OK);
    QCOMPARE(sqlite3_step(names), SQLITE_ROW);
    const QByteArray name(reinterpret_cast<const char*>(sqlite3_column_text(names, 0)));
    sqlite3_finalize(names);
    QCOMPARE(sqlite3_exec(store, ("DROP INDEX \"" + name + '"').constData(), nullptr, nullptr, nullptr),
             SQLITE_OK);
    sqlite3_close(store);
  }
};

QTEST_MAIN(TestDailyPlans)
#include "test_daily_plans.moc"
