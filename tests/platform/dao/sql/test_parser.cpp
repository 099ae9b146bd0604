#include <QDateTime>
#include <QTest>

#include "platform/dao/sql/parser.h"
#include "platform/dao/sql/quote.h"
#include "platform/runtime/error.h"
#include "tests/platform/dao/sql/source_text.h"

using namespace qk::dao::sql;
using qk::dao::sql::test::sourceText;

class TestParser : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void readsStatements_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tree");
    const auto row = [](const char* text, const char* tree) { QTest::newRow(text) << text << tree; };
    row("Select * from Disziplin  order by CmdIndex", "SELECT * FROM [Disziplin] ORDER BY [CmdIndex]");
    row("select * from t where a = 1 and b = 2 or not c = 3",
        "SELECT * FROM [t] WHERE ((([a] = 1) AND ([b] = 2)) OR (NOT (([c] = 3))))");
    row("SELECT a FROM t WHERE x+1*2-3 & 'y' = 'z'",
        "SELECT [a] FROM [t] WHERE (((([x] + (1 * 2)) - 3) & 'y') = 'z')");
    row("SELECT 7 \\ 2 mod 3 / 4 FROM t", "SELECT ((7 \\ 2) MOD (3 / 4)) FROM [t]");
    row("SELECT 10 - 2 - 3", "SELECT ((10 - 2) - 3)");
    row("Select top 1 * from Schuss", "SELECT TOP 1 * FROM [Schuss]");
    row("Select distinct Top from Schuss", "SELECT DISTINCT [Top] FROM [Schuss]");
    row("Select distinct, top from Schuss", "SELECT [distinct], [top] FROM [Schuss]");
    row("Select t.*, b AS c from t", "SELECT [t].*, [b] AS [c] FROM [t]");
    row("SELECT t.* INTO t IN 'x.qkk' FROM t", "SELECT [t].* INTO [t] IN 'x.qkk' FROM [t]");
    row("Delete * from a where b = -1;", "DELETE * FROM [a] WHERE ([b] = -1)");
    row("Delete a.* from a INNER JOIN b ON a.x = b.x",
        "DELETE [a].* FROM ([a] INNER JOIN [b] ON ([a].[x] = [b].[x]))");
    row("Delete from a", "DELETE * FROM [a]");
    row("UPDATE a SET b = [C].[lMannID]WHERE (([C].[d]>0))",
        "UPDATE [a] SET [b] = [C].[lMannID] WHERE ([C].[d] > 0)");
    row("UPDATE a INNER JOIN c ON a.i = c.i SET a.b = c.d, a.e = Null",
        "UPDATE ([a] INNER JOIN [c] ON ([a].[i] = [c].[i])) SET [a].[b] = [c].[d], [a].[e] = NULL");
    row("INSERT INTO t ( a, b, c) SELECT a, b, 5 FROM t",
        "INSERT INTO [t] ([a], [b], [c]) SELECT [a], [b], 5 FROM [t]");
    row("insert into t values (1, \"say \"\"x\"\" it's\")", "INSERT INTO [t] VALUES (1, 'say \"x\" it''s')");
    row("select * from (a inner join b on a.i=b.i) left outer join c on b.j=c.j",
        "SELECT * FROM (([a] INNER JOIN [b] ON ([a].[i] = [b].[i])) LEFT JOIN [c] ON ([b].[j] = [c].[j]))");
    row("select * from a inner join b on a.i=b.i right join c on b.j=c.j",
        "SELECT * FROM (([a] INNER JOIN [b] ON ([a].[i] = [b].[i])) RIGHT JOIN [c] ON ([b].[j] = [c].[j]))");
    row("select * from a x, b as y", "SELECT * FROM [a] AS [x], [b] AS [y]");
    row("select * from a in 'f.mdb' as y", "SELECT * FROM [a] IN 'f.mdb' AS [y]");
    row("select 1 as a union all select 2 union select 3 order by a desc, b asc",
        "SELECT 1 AS [a] UNION ALL SELECT 2 UNION SELECT 3 ORDER BY [a] DESC, [b]");
    row("select count(*), Max(DateValue([Datum])) AS LetzerSchießtag from t group by a, b having count(*) > "
        "1",
        "SELECT count(*), max(datevalue([Datum])) AS [LetzerSchießtag] FROM [t] GROUP BY [a], [b] HAVING "
        "(count(*) > 1)");
    row("select * from t where a not in (1, 2) and b in (select c from d)",
        "SELECT * FROM [t] WHERE (([a] NOT IN (1, 2)) AND ([b] IN (SELECT [c] FROM [d])))");
    row("select * from t where a not like 'x*' and b between 1 and 2 and c is not null",
        "SELECT * FROM [t] WHERE (((NOT (([a] LIKE 'x*'))) AND ([b] BETWEEN 1 AND 2)) AND ([c] IS NOT "
        "NULL))");
    row("select Abs(9.5 -[Ergebnis]), -x, - -3, .5, 1e3, +4",
        "SELECT abs((9.50000000000000000e+00 - [Ergebnis])), (-([x])), (-(-3)), 5.00000000000000000e-01, "
        "1.00000000000000000e+03, 4");
    row("select a!b, [Alter von], t.order from t where d = #11/20/2026# or d = #2026-11-20 10:41#",
        "SELECT [a].[b], [Alter von], [t].[order] FROM [t] WHERE (([d] = #11/20/2026 00:00:00#) OR ([d] = "
        "#11/20/2026 10:41:00#))");
    row("select True, FALSE, null, 99999999999999999999",
        "SELECT TRUE, FALSE, NULL, 1.00000000000000000e+20");
  }
  void readsStatements() {
    QFETCH(QString, text);
    QFETCH(QString, tree);
    QCOMPARE(sourceText(parseStatement(text)), tree);
  }

  void refusesWhatIsNoStatement_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("position");
    const auto row = [](const char* text, int position) { QTest::newRow(text) << text << position; };
    row("", 1);
    row("   ", 4);
    row("Schützenliste", 1);
    row("Select * from", 14);
    row("Select from t", 8);
    row("Select * from t where", 22);
    row("Select * from t where GruppenID = ", 35);
    row("Select * from t where a = 'O'Neill'", 35);
    row("Select * from t where a = 'x", 27);
    row("'", 1);
    row("Select * from t where a = '5''", 27);
    row("Select * from t where a LIKE ''*'", 33);
    row("Select * from [t where a = 1", 15);
    row("Select * from [] where a = 1", 15);
    row("Select * from t; Select * from t", 18);
    row("Select * from t where a = 9,7", 28);
    row("Select * from t where a = #13/45/2026#", 27);
    row("Select * from t where a = #11/20/2026", 27);
    row("Select * from t where a in ()", 29);
    row("Select * from t where a is 5", 28);
    row("Select * from t where a ~ 5", 25);
    row("Select * from a join b on a.x = b.x", 17);
    row("Update t set where a = 1", 14);
    row("Delete t from t", 8);
    row("Insert t values (1)", 8);
    row("Select top x * from t", 12);
  }
  void refusesWhatIsNoStatement() {
    QFETCH(QString, text);
    QFETCH(int, position);
    try {
      parseStatement(text);
      QFAIL("went through");
    } catch (const qk::Error& error) {
      QCOMPARE(error.number(), 3075);
      QVERIFY2(error.description().contains(QString("an Stelle %1,").arg(position)),
               qPrintable(error.description()));
    }
  }

  void nestingHasALimit() {
    const auto number = [](const QString& text) {
      try {
        parseStatement(text);
      } catch (const qk::Error& error) {
        return error.number();
      }
      return 0;
    };
    const auto nested = [](int depth) {
      return "SELECT " + QString("(").repeated(depth) + "1" + QString(")").repeated(depth);
    };
    QCOMPARE(number(nested(50)), 0);
    QCOMPARE(number(nested(100000)), 3360);
    QCOMPARE(number("SELECT " + QString("-").repeated(100000) + "x"), 3360);
    QCOMPARE(number("SELECT 1" + QString("+1").repeated(300)), 0);
    QCOMPARE(number("SELECT 1" + QString("+1").repeated(100000)), 3360);
    QCOMPARE(number("SELECT 1" + QString(" UNION SELECT 1").repeated(100000)), 3360);
    QCOMPARE(number("SELECT * FROM " + QString("(").repeated(100000)), 3360);
    QCOMPARE(number("SELECT 1 WHERE " + QString("NOT ").repeated(100000) + "x"), 3360);
    QCOMPARE(number("SELECT 1 WHERE x IN (1" + QString(", 1").repeated(100000) + ")"), 0);
  }

  void readsCriteria() {
    QCOMPARE(sourceText(*parseCriterion("ID = 5")), QString("([ID] = 5)"));
    QCOMPARE(sourceText(*parseCriterion(" Schützen.Name like 'a*'; ")),
             QString("([Schützen].[Name] LIKE 'a*')"));
    QVERIFY_THROWS_EXCEPTION(qk::Error, parseCriterion("ID = "));
    QVERIFY_THROWS_EXCEPTION(qk::Error, parseCriterion("ID = 5 order by x"));
  }

  void clonesAreEqualAndIndependent() {
    const QString text =
        "SELECT DISTINCT TOP 3 a AS b, t.*, iif(a IS NULL, -1, count(*)) FROM (SELECT 1 AS x UNION SELECT 2) "
        "AS t, "
        "(a INNER JOIN b ON a.i = b.i) WHERE a BETWEEN 1 AND 2 OR b IN (1, 2) AND c IN (SELECT d FROM e) "
        "GROUP BY a "
        "HAVING NOT a LIKE 'x' ORDER BY a DESC";
    Statement original = parseStatement(text);
    SelectPtr copy = clone(std::get<Select>(original));
    const QString print = sourceText(original);
    original = parseStatement("SELECT 1");
    QCOMPARE(sourceText(Statement(std::move(*copy))), print);
  }

  void quotesOutsideValues() {
    QCOMPARE(quoted("O'Neill"), QString("'O''Neill'"));
    QCOMPARE(quoted(""), QString("''"));
    QCOMPARE(sourceText(*parseCriterion("a = " + quoted("''x'"))), QString("([a] = '''''x''')"));
  }
};

QTEST_APPLESS_MAIN(TestParser)
#include "test_parser.moc"
