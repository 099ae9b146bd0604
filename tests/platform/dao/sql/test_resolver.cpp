#include <QTest>

#include "platform/dao/sql/parser.h"
#include "platform/runtime/error.h"
#include "tests/platform/dao/sql/source_text.h"
#include "tests/platform/dao/sql/statements.h"

using namespace qk::dao;
using namespace qk::dao::sql;
using namespace qk::dao::sql::test;

class TestResolver : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() {
    store_ = competitionStore();
    store_->query("Namen", "SELECT ID, Name AS [Orte.Name], Name AS [Verein.Name] FROM Verein");
  }

  void bindsNames_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("tree");
    const auto row = [](const char* text, const char* tree) { QTest::newRow(text) << text << tree; };
    row("select STARTNUMMER, [schützen].NAME from SCHÜTZEN",
        "SELECT [Schützen].[Startnummer], [Schützen].[Name] FROM [Schützen]");
    row("select s.name from schützen as S where VereinsID = 3",
        "SELECT [S].[Name] FROM [Schützen] AS [S] WHERE ([S].[VereinsID] = 3)");
    row("select Orte.Name from Namen where orte.name = 'x'",
        "SELECT [Namen].[Orte.Name] FROM [Namen] WHERE ([Namen].[Orte.Name] = 'x')");
    // Both a source with this column and a column of this literal name: the source goes first.
    row("select Verein.Name, [Verein.Name] from Verein, Namen",
        "SELECT [Verein].[Name], [Namen].[Verein.Name] FROM [Verein], [Namen]");
    row("select Name from Verein where ID in (select VereinsID from Schützen where Startnummer = Kurzname)",
        "SELECT [Verein].[Name] FROM [Verein] WHERE ([Verein].[ID] IN (SELECT [Schützen].[VereinsID] FROM "
        "[Schützen] WHERE ([Schützen].[Startnummer] = [Verein].[Kurzname])))");
    row("select Abs(ID) as Diff from Verein order by diff, 1 desc",
        "SELECT abs([Verein].[ID]) AS [Diff] FROM [Verein] ORDER BY abs([Verein].[ID]), abs([Verein].[ID]) "
        "DESC");
    row("select ID as Name from Verein order by Name, 1",
        "SELECT [Verein].[ID] AS [Name] FROM [Verein] ORDER BY [Verein].[Name], [Verein].[ID]");
    row("select * from Verein order by 2", "SELECT * FROM [Verein] ORDER BY [Verein].[Name]");
    row("select Name as X from Verein union select Kombinationsname from Kombination_Name order by x, 1",
        "SELECT [Verein].[Name] AS [X] FROM [Verein] UNION SELECT [Kombination_Name].[Kombinationsname] FROM "
        "[Kombination_Name] ORDER BY [X], [X]");
    row("delete * from Schuss inner join Disziplin on Schuss.DisziID = Disziplin.ID",
        "DELETE [Schuss].* FROM ([Schuss] INNER JOIN [Disziplin] ON ([Schuss].[DisziID] = "
        "[Disziplin].[ID]))");
    row("delete * from Disziplin inner join Schuss on Schuss.DisziID = Disziplin.ID",
        "DELETE [Schuss].* FROM ([Disziplin] INNER JOIN [Schuss] ON ([Schuss].[DisziID] = "
        "[Disziplin].[ID]))");
    row("delete disziplin.* from Disziplin inner join Schuss on Schuss.DisziID = Disziplin.ID",
        "DELETE [Disziplin].* FROM ([Disziplin] INNER JOIN [Schuss] ON ([Schuss].[DisziID] = "
        "[Disziplin].[ID]))");
    row("insert into verein values (1, 'x', Null)",
        "INSERT INTO [Verein] ([ID], [Name], [Kurzname]) VALUES (1, 'x', NULL)");
    row("update SCHUSS set disziid = ID where id = 5",
        "UPDATE [Schuss] SET [Schuss].[DisziID] = [Schuss].[ID] WHERE ([Schuss].[ID] = 5)");
    row("select * from (select * from Schuss, Disziplin) as x",
        "");  // its names are checked below; here it only has to bind
  }
  void bindsNames() {
    QFETCH(QString, text);
    QFETCH(QString, tree);
    Statement statement = parseStatement(text);
    resolve(statement, *store_);
    if (!tree.isEmpty()) QCOMPARE(sourceText(statement), tree);
    const QString once = sourceText(statement);
    resolve(statement, *store_);
    QCOMPARE(sourceText(statement), once);
  }

  void refusesUnknownAndAmbiguousNames_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    const auto row = [](const char* text, int number) { QTest::newRow(text) << text << number; };
    row("select * from NichtDa", 3078);
    row("select Verein.* from Schützen", 3078);
    row("select *", 3078);
    row("select * from Verein in 'anderswo.mdb'", 3078);
    row("delete * from NichtDa", 3078);
    row("delete Schuss.* from Verein", 3078);
    row("insert into NichtDa (a) values (1)", 3078);
    row("select NichtDa from Verein", 3061);
    row("select * from Verein where Schützen.ID = 1", 3061);
    row("select * from Verein where Schützen.Name like '*x*'", 3061);
    row("select * from Verein where ID = abc", 3061);
    row("select * from Verein order by NichtDa", 3061);
    row("select * from Verein order by 4", 3061);
    row("select Name from Verein union select Name from Disziplin order by NichtDa", 3061);
    row("update Verein set NichtDa = 1", 3061);
    row("select ID from Verein, Disziplin", 3079);
    row("select Name from Schuss, Disziplin, Verein", 3079);
    row("select * from Verein, Verein", 3079);
    row("select Nichts(1) from Verein", 3085);
    row("select Abs() from Verein", 3075);
    row("select Val(*) from Verein", 3075);
    row("select Nz(1) from Verein", 3075);
    row("select * from Verein where Max(ID) = 1", 3096);
    row("select Max(Min(ID)) from Verein", 3096);
    row("select ID from Verein order by Count(*)", 3096);
    row("insert into Verein (ID, NichtDa) values (1, 2)", 3127);
    row("insert into Verein (ID) values (1, 2)", 3346);
    row("insert into Verein (ID, Name) select ID from Disziplin", 3346);
    row("select ID from Verein union select ID, Name from Disziplin", 3307);
    row("update Verein, Disziplin set a = 1", 3075);
    row("update Schuss inner join Disziplin on Schuss.DisziID = Disziplin.ID set Ergebnis = 1, Ringe = 0",
        3073);
    row("delete x.* from (select * from Verein) as x", 3086);
  }
  void refusesUnknownAndAmbiguousNames() {
    QFETCH(QString, text);
    QFETCH(int, number);
    try {
      store_->translate(text);
      QFAIL("went through");
    } catch (const qk::Error& error) {
      QCOMPARE(error.number(), number);
    }
  }

  void namesResultColumns_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("names");
    const auto row = [](const char* text, const QStringList& names) { QTest::newRow(text) << text << names; };
    row("select * from Verein", {"ID", "Name", "Kurzname"});
    row("select Schützen.Startnummer, Verein.* from Schützen, Verein",
        {"Startnummer", "ID", "Name", "Kurzname"});
    row("select Schützen.Name, Verein.Name, Schützen.ID from Schützen, Verein",
        {"Schützen.Name", "Verein.Name", "ID"});
    row("select a.Name, b.Name as N from Verein a, Verein b", {"Name", "N"});
    row("select a.ID, b.ID, b.Name as ID from Verein a, Verein b", {"a.ID", "b.ID", "ID"});
    row("select ID, ID + 1, Max(5) as m, Abs(ID) from Verein", {"ID", "Expr1001", "m", "Expr1003"});
    row("select * from (select a.*, b.ID from Verein a, Disziplin b) as x",
        {"a.ID", "Name", "Kurzname", "b.ID"});
    row("select Name as a from Verein union select Klasse from Schützenklassen", {"a"});
    row("select * from Schützenliste", {"ID", "Startnummer", "Schützen.Name", "Verein.Name"});
  }
  void namesResultColumns() {
    QFETCH(QString, text);
    QFETCH(QStringList, names);
    QStringList found;
    for (const ResultColumn& column : columnsOf(text)) {
      found << column.name;
      QCOMPARE(column.type.name, column.name);
    }
    QCOMPARE(found, names);
  }

  void knowsTypesAndOrigins() {
    const auto columns = columnsOf(
        "select v.Name as N, s.Datum, Max(s.Datum) as M, Count(*) as C, 5 as F, s.Betrag * 2 as B, "
        "s.Ergebnis / 2 as "
        "D, s.ID > 3 as Y, s.WTyp & 'x' as T, DateValue(s.Datum) as V from Schuss s left join Verein v on "
        "s.MannID = "
        "v.ID group by v.Name");
    const QList<FieldType> types = {
        FieldType::Text,     FieldType::Date,   FieldType::Date,    FieldType::Long, FieldType::Long,
        FieldType::Currency, FieldType::Double, FieldType::Boolean, FieldType::Text, FieldType::Date};
    QCOMPARE(int(columns.size()), types.size());
    for (int i = 0; i < types.size(); ++i) QCOMPARE(int(columns[std::size_t(i)].type.type), int(types[i]));
    QCOMPARE(columns[0].source, 1);
    QCOMPARE(columns[0].baseTable, QString("Verein"));
    QCOMPARE(columns[0].baseColumn, QString("Name"));
    QCOMPARE(columns[1].source, 0);
    QCOMPARE(columns[2].source, -1);
    QVERIFY(columns[2].baseTable.isEmpty());
  }

  void listsSources() {
    Statement statement = parseStatement(
        "select * from (verein right join Schützen s on Verein.ID = s.VereinsID) left join (select 1 as a) x "
        "on x.a "
        "= s.ID");
    resolve(statement, *store_);
    const Select& select = std::get<Select>(statement);
    const auto sources = boundSources(select);
    QCOMPARE(int(sources.size()), 3);
    QCOMPARE(sources[0].table, QString("Verein"));
    QVERIFY(sources[0].outer);
    QCOMPARE(sources[1].table, QString("Schützen"));
    QCOMPARE(sources[1].alias, QString("s"));
    QVERIFY(!sources[1].outer);
    QVERIFY(sources[2].table.isEmpty());
    QVERIFY(sources[2].outer);
    QCOMPARE(manySide(select, *store_), 1);
  }

  void bindsCriteria_data() {
    QTest::addColumn<QString>("select");
    QTest::addColumn<QString>("criterion");
    QTest::addColumn<QString>("bound");
    const auto row = [](const char* select, const char* criterion, const char* bound) {
      QTest::newRow(criterion) << select << criterion << bound;
    };
    row("select * from Verein", "name = 'x'", "([Verein].[Name] = 'x')");
    // The result's own names go before those of the sources.
    row("select Disziplin.ID as DisziID, Schuss.ID as SchussID, Schuss.DisziID as SDID from Schuss inner "
        "join "
        "Disziplin on Schuss.DisziID = Disziplin.ID",
        "DisziID = 1 and SchussID = 5 and Schuss.Startnummer = 'y'",
        "((([Disziplin].[ID] = 1) AND ([Schuss].[ID] = 5)) AND ([Schuss].[Startnummer] = 'y'))");
    row("select Schützen.*, Verein.Name from Schützen, Verein", "Verein.Name = 'x' and Startnummer = '1'",
        "(([Verein].[Name] = 'x') AND ([Schützen].[Startnummer] = '1'))");
    row("select Abs(ID) as Diff from Verein", "Diff = 1", "(abs([Verein].[ID]) = 1)");
    row("select ID as A from Verein union select ID from Disziplin", "a = 1", "([A] = 1)");
  }
  void bindsCriteria() {
    QFETCH(QString, select);
    QFETCH(QString, criterion);
    QFETCH(QString, bound);
    Statement statement = parseStatement(select);
    resolve(statement, *store_);
    const ExpressionPtr expression = parseCriterion(criterion);
    resolveCriterion(*expression, std::get<Select>(statement), *store_);
    QCOMPARE(sourceText(*expression), bound);
    const ExpressionPtr unknown = parseCriterion("NichtDa = 1");
    QVERIFY_THROWS_EXCEPTION(qk::Error, resolveCriterion(*unknown, std::get<Select>(statement), *store_));
  }

 private:
  std::vector<ResultColumn> columnsOf(const QString& text) const {
    Statement statement = parseStatement(text);
    resolve(statement, *store_);
    return resultColumns(std::get<Select>(statement), *store_);
  }

  std::unique_ptr<SampleStore> store_;
};

QTEST_APPLESS_MAIN(TestResolver)
#include "test_resolver.moc"
