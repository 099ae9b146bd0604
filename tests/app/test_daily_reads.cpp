// A day's work at a line may not grow slower with the competition on a server either: with many rows in every
// table that grows, the server counts few rows that it had to read.
#include <QTest>

#include "tests/app/days_work.h"
#include "tests/support/postgres_server.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

class TestDailyReads : public QObject {
  Q_OBJECT

 public:
  static void initMain() { qputenv("QK_TEST_ENGINE", "postgres"); }

 private Q_SLOTS:
  void aDaysWorkReadsFewRows() {
    RangeOffice office;
    furnish(office);
    workADay(office);
    office.drop();
    const ServerDatabase& store = serverDatabase(office.competition);
    for (const QString& table : growingTables()) {
      QVERIFY2(number(store, "n_tup_ins", table) > 0, qPrintable("nothing was written to " + table));
      const int read = rowsRead(store, table);
      QVERIFY2(read < kFew, qPrintable(QString("%1 rows of %2 were read").arg(read).arg(table)));
    }
  }

  /// The check sees what it is there for: without its index the look-up of open shots reads all shots.
  void aMissingIndexIsSeen() {
    RangeOffice office;
    furnish(office);
    const ServerDatabase& store = serverDatabase(office.competition);
    store.native("DROP INDEX dao.\"Haering_Daten.OffeneSchuss\"");
    QVERIFY(office.open());
    office.drop();
    QVERIFY(rowsRead(store, "Haering_Daten") >= kMany);
  }

 private:
  static constexpr int kMany = 20000;
  static constexpr int kFew = kMany / 10;

  /// Rows of earlier days, with keys below those that come; none of them is open.
  static void furnish(RangeOffice& office) {
    QVERIFY(office.open());
    office.drop();
    const ServerDatabase& store = serverDatabase(office.competition);
    const QHash<QString, QString> columns{
        {"Haering_Daten", "\"Liniennummer\", \"Verbucht\") SELECT -n, n % 24 + 1, -1"},
        {"Schuss", "\"Startnummer\", \"DisziID\") SELECT -n, (n % 500 + 100)::text, n % 40"},
        {"SchussSerien", "\"Startnummer\", \"DisziID\") SELECT -n, (n % 500 + 100)::text, n % 40"},
        {"Grafik_Scheibe", "\"StartNr\") SELECT -n, (n % 500 + 100)::text"},
        {"Grafik_Schuss", "\"ScheibenID\") SELECT -n, -n"},
        {"Kasse_Eingang",
         "\"Startnummer\", \"KasseID\", \"VereinID\", \"MannID\") SELECT -n, (n % 500 + 100)::text, 2, n "
         "% 300 + 900, n % 700 + 900"}};
    for (const QString& table : growingTables()) {
      store.native(QString("INSERT INTO dao.\"%1\" (\"ID\", %2 FROM generate_series(1, %3) AS n")
                       .arg(table, columns[table])
                       .arg(kMany));
      store.native("ANALYZE dao.\"" + table + '"');
    }
    waitForOthers(store);
    store.native("SELECT pg_stat_reset()");
  }

  /// A connection tells what it has read when it has ended.
  static void waitForOthers(const ServerDatabase& store) {
    for (int look = 0; look < 500 && others(store) > 0; ++look) QTest::qWait(10);
  }
  static int others(const ServerDatabase& store) {
    return store
        .native(
            "SELECT count(*) FROM pg_stat_activity WHERE datname = current_database() AND pid <> "
            "pg_backend_pid() AND backend_type = 'client backend'")
        .first()
        .toInt();
  }
  static int number(const ServerDatabase& store, const QString& column, const QString& table) {
    return store.native("SELECT " + column + " FROM pg_stat_user_tables WHERE relname = '" + table + "'")
        .first()
        .toInt();
  }
  static int rowsRead(const ServerDatabase& store, const QString& table) {
    waitForOthers(store);
    const QString byIndex =
        "(SELECT coalesce(sum(idx_tup_read), 0) FROM pg_stat_user_indexes i WHERE i.relid = "
        "pg_stat_user_tables.relid)";
    return number(store, "seq_tup_read + " + byIndex, table);
  }
};

QTEST_MAIN(TestDailyReads)
#include "test_daily_reads.moc"
