// Random statements of the query language on the same rows in a file and on a server: equal rows, or the same
// error. QK_SAME_ANSWERS=FIRST,COUNT runs other seeds than the usual ones.
#include <QHash>
#include <QTest>

#include "platform/dao/sql/functions.h"
#include "tests/platform/dao/random_query.h"
#include "tests/platform/dao/twin_rows.h"
#include "tests/support/error_of.h"

using namespace qk::dao;
using namespace qk::dao::test;

class TestSameAnswers : public QObject {
  Q_OBJECT

  std::unique_ptr<TwinStores> twins_;
  quint32 first_ = 1, count_ = 1500;
  int run_ = 0, failed_ = 0;
  int different_ = 0;

  void heed(quint32 seed, const QString& difference) {
    ++run_;
    if (difference.isEmpty()) {
      failed_ += twins_->lastFailed();
      return;
    }
    ++different_;
    qWarning("seed %u: %s", seed, qPrintable(difference));
  }
  void refill() {
    for (const TableDef& table : randomQueryTables()) {
      if (twins_->file().hasTable(table.name))
        for (Database* database : {&twins_->file(), &twins_->server()}) database->dropTable(table.name);
      twins_->createTable(table);
      fill(*twins_, table, 16, 5);
    }
  }

 private Q_SLOTS:
  void initTestCase() {
    const QStringList wanted = qEnvironmentVariable("QK_SAME_ANSWERS").split(',');
    if (wanted.size() == 2) {
      first_ = wanted[0].toUInt();
      count_ = wanted[1].toUInt();
    }
    twins_ = std::make_unique<TwinStores>();
    refill();
  }
  void cleanupTestCase() { twins_.reset(); }

  void init() { run_ = failed_ = different_ = 0; }
  void cleanup() {
    if (run_ > 0) qInfo("%d statements, %d the same error, %d different", run_, failed_, different_);
    QCOMPARE(different_, 0);
  }

  /// What the engines once did differently, or both wrongly: "text" on a table of one row brings "expected".
  void meetings_data() {
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* expression, const char* expected) {
      QTest::newRow(expression) << QString(expression) << QString(expected);
    };
    row("Len(#11/20/2026#)", "10");
    row("UCase(#11/20/2026#)", "20.11.2026");
    row("Val(#11/20/2026#)", "20,11");
    row("LCase(9.5)", "9,5");
    row("UCase(IIf(False, 1, Null))", "NULL");
    row("#11/20/2026# > 9.5", "-1");
    row("9.5 IN (1, '9,5')", "-1");
    row("#11/20/2026# IN (Null, 46346)", "-1");
    row("IIf(False, 1, #11/20/2026#)", "46346");
    row("IIf(False, Null, 'a')", "a");
    row("Nz(Null, #11/20/2026#)", "2026-11-20T00:00:00.000");
    row("2 / #11/20/2026#", "4,31536702196522E-05");
    row("1 / 0", "NULL");
    row("5 MOD 0", "NULL");
    row("'9.5' * 2", "19");
    row("'x' + 1", "1");
    row("1 + Null", "NULL");
    row("(1 + Null) & 'a'", "a");
    row("(1 + Null) = (Name & '')", "NULL");
    row("#11/20/2026# - #11/18/2026#", "2");
    row("'b' BETWEEN 'A' AND 'C'", "-1");
    row("3 BETWEEN '1' AND 10", "-1");
  }
  void meetings() {
    QFETCH(QString, expression);
    QFETCH(QString, expected);
    const QString text = "SELECT TOP 1 " + expression + " AS A FROM Orte ORDER BY ID";
    QCOMPARE(read(twins_->file(), text).rows, QStringList{expected});
    QCOMPARE(read(twins_->server(), text).rows, QStringList{expected});
  }

  void wholeNumbersHaveAnEnd_data() {
    QTest::addColumn<QString>("expression");
    for (const char* expression : {"1E300 \\ 1", "1 \\ 1E300", "-1E300 MOD 7", "1E19 \\ 2"})
      QTest::newRow(expression) << QString(expression);
  }
  void wholeNumbersHaveAnEnd() {
    QFETCH(QString, expression);
    const QString text = "SELECT TOP 1 ID + " + expression + " AS A FROM Orte ORDER BY ID";
    QCOMPARE(read(twins_->file(), text).error, 6);
    QCOMPARE(read(twins_->server(), text).error, 6);
  }

  /// A function that one of the engines doesn't know, or that is printed as another, shows here.
  void everyFunctionIsAnswered() {
    const QHash<QString, std::pair<QString, QString>> samples{
        {"abs", {"Abs(-9.5)", "9,5"}},
        {"avg", {"Avg(9.5)", "9,5"}},
        {"count", {"Count('x') > 0", "-1"}},
        {"datevalue", {"DateValue('20.11.2026 10:41:07') & ''", "20.11.2026"}},
        {"day", {"Day(#11/20/2026#)", "20"}},
        {"fix", {"Fix(-9.5)", "-9"}},
        {"iif", {"IIf(1 > 2, 'a', 'b')", "b"}},
        {"int", {"Int(-9.5)", "-10"}},
        {"isnull", {"IsNull(Null)", "-1"}},
        {"lcase", {"LCase('ÄB')", "äb"}},
        {"len", {"Len('Äb')", "2"}},
        {"max", {"Max('b')", "b"}},
        {"min", {"Min('b')", "b"}},
        {"month", {"Month(#11/20/2026#)", "11"}},
        {"nz", {"Nz(Null, 'a')", "a"}},
        {"sum", {"Sum(0)", "0"}},
        {"ucase", {"UCase('äb')", "ÄB"}},
        {"val", {"Val('12.5x')", "12,5"}},
        {"year", {"Year(#11/20/2026#)", "2026"}},
    };
    for (const sql::Function& function : sql::allFunctions()) {
      const QString name = QString::fromUtf16(function.name.data(), qsizetype(function.name.size()));
      const auto sample = samples.constFind(name);
      QVERIFY2(sample != samples.constEnd(), qPrintable(name + " has no sample"));
      const QString text = QString("SELECT %1%2 AS A FROM Orte%3")
                               .arg(function.aggregate ? "" : "TOP 1 ", sample->first,
                                    function.aggregate ? "" : " ORDER BY ID");
      for (Database* store : {&twins_->file(), &twins_->server()})
        QCOMPARE(name + ": " + read(*store, text).rows.join(", "), name + ": " + sample->second);
    }
  }

  /// Texts that differ in case alone are one, be they stored or made.
  void madeTextsFoldAsStoredOnesDo_data() {
    QTest::addColumn<QString>("select");
    QTest::addColumn<int>("rows");
    const QString spelled = "IIf(ID MOD 2 = 0, 'abc', 'ABC')";
    const auto row = [](const char* name, const QString& select, int rows) {
      QTest::newRow(name) << select << rows;
    };
    row("distinct", "SELECT DISTINCT " + spelled + " AS A FROM Werte", 1);
    row("joined texts", "SELECT DISTINCT " + spelled + " & 'x' AS A FROM Werte", 1);
    row("union", "SELECT " + spelled + " AS A FROM Werte UNION SELECT 'aBc' FROM Werte", 1);
    row("union of a constant", "SELECT 'x' AS A FROM Werte UNION SELECT 'X' FROM Werte", 1);
    row("group", "SELECT " + spelled + " AS A, Count(*) AS B FROM Werte GROUP BY " + spelled, 1);
    row("subselect", "SELECT DISTINCT A FROM (SELECT " + spelled + " AS A FROM Werte) AS Innen", 1);
    row("equality outside of it",
        "SELECT A FROM (SELECT TOP 1 " + spelled + " AS A FROM Werte ORDER BY ID) AS Innen WHERE A = 'aBc'",
        1);
    row("numbers stay apart", "SELECT DISTINCT ID MOD 2 AS A FROM Werte", 2);
  }
  void madeTextsFoldAsStoredOnesDo() {
    QFETCH(QString, select);
    for (Database* store : {&twins_->file(), &twins_->server()})
      QTEST(int(read(*store, select).rows.size()), "rows");
  }

  void truthsAreTakenOfDays() {
    // The plain 0 date is no.
    const QString text = "SELECT Count(*) FROM Werte WHERE Am AND Am = #12/30/1899#";
    QCOMPARE(read(twins_->file(), text).rows, QStringList{"0"});
    QCOMPARE(read(twins_->server(), text).rows, QStringList{"0"});
  }

  void storedValuesAreRounded_data() {
    QTest::addColumn<QString>("assignment");
    QTest::addColumn<QString>("expected");
    const auto row = [](const char* assignment, const char* expected) {
      QTest::newRow(assignment) << QString(assignment) << QString(expected);
    };
    row("Zahl = 2.5", "2");
    row("Zahl = ID + 2.5", "4");
    row("Kurz = -0.5", "0");
    row("Betrag = ID * 1.00005", "1");
    row("Betrag = ID / 3", "0,3333");
    row("Ja = ID + 4", "-1");
    row("Ja = 2", "-1");
    row("Zahl = #11/20/2026#", "46346");
    row("Wert = Am - Am", "0");
    row("Zahl = '7'", "7");
    row("Kurz = ID + 100000", "error 6");
    row("Kurz = 100000", "error 6");
    row("Betrag = ID * 1e15", "error 6");
  }
  void storedValuesAreRounded() {
    QFETCH(QString, assignment);
    QFETCH(QString, expected);
    const QString column = assignment.section(' ', 0, 0);
    for (Database* database : {&twins_->file(), &twins_->server()}) {
      database->execute("UPDATE Werte SET Am = #11/20/2026# WHERE ID = 1");
      const int error =
          qk::test::errorOf([&] { database->execute("UPDATE Werte SET " + assignment + " WHERE ID = 1"); });
      const QStringList rows = read(*database, "SELECT " + column + " FROM Werte WHERE ID = 1").rows;
      QCOMPARE(error ? QString("error %1").arg(error) : rows.value(0), expected);
    }
  }

  void aTableWithoutAKeyStandsBehindARightJoin() {
    const QString text =
        "SELECT Lose.*, Name FROM (Lose INNER JOIN Orte ON Lose.OrteID = Orte.ID) RIGHT JOIN Werte ON "
        "Orte.WerteID = Werte.ID";
    QCOMPARE(twins_->compareRows(text, Order::Open), QString());
    QVERIFY(!twins_->lastFailed());
  }

  void aMeanOfMoneyIsRoundedAsMoneyIs() {
    for (Database* database : {&twins_->file(), &twins_->server()}) {
      database->execute("UPDATE Orte SET Preis = 1.0001");
      database->execute("UPDATE Orte SET Preis = 1 WHERE ID MOD 2 = 0");
      QCOMPARE(read(*database, "SELECT Avg(Preis) AS A FROM Orte WHERE ID < 3").rows, QStringList{"1"});
      const QString mixed =
          "SELECT Len(Name) AS A FROM Orte WHERE ID = 0 UNION SELECT -2.5 * Preis FROM Orte";
      QCOMPARE(read(*database, mixed + " WHERE ID = 2").rows, QStringList{"-2"});
    }
  }

  void sortingAndGroupingByNothing() {
    for (const char* text : {"SELECT * FROM Werte ORDER BY Null, ID DESC",
                             "SELECT Null AS G, Count(*) AS A FROM Werte GROUP BY Null"}) {
      QCOMPARE(twins_->compareRows(text, Order::Open), QString());
      QVERIFY(!twins_->lastFailed());
    }
  }

  void readings() {
    refill();  // the rows above were changed
    for (quint32 seed = first_; seed < first_ + count_; ++seed) {
      const RandomQuery::Reading reading = RandomQuery(seed).reading();
      heed(seed, twins_->compareRows(reading.text, reading.ordered ? Order::Defined : Order::Open));
    }
    QVERIFY2(failed_ * 4 < run_, "most statements must mean something");
  }

  void criteria() {
    for (quint32 seed = first_; seed < first_ + count_ / 4; ++seed)
      heed(seed, twins_->compareFound("Select * from Werte", RandomQuery(seed).criterion()));
  }

  void actions() {
    constexpr quint32 kBetweenRefills = 40;
    for (quint32 seed = first_; seed < first_ + count_ / 4; ++seed) {
      QString difference = twins_->compareAction(RandomQuery(seed).action());
      const bool failed = twins_->lastFailed();
      for (const char* table : {"Werte", "Orte", "Lose"})
        if (const QString rows = twins_->compareRows(table, Order::Defined);
            difference.isEmpty() && !rows.isEmpty())
          difference = RandomQuery(seed).action() + "\n  leaves " + rows;
      heed(seed, difference);
      failed_ += failed;
      if (!difference.isEmpty() || (seed - first_) % kBetweenRefills == 0) refill();
    }
  }
};

QTEST_GUILESS_MAIN(TestSameAnswers)
#include "test_same_answers.moc"
