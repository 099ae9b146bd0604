// Meaning of the query language on SQLite: what comes out of real tables, and a few shapes of the printed
// text.
#include <QTest>

#include "platform/dao/sql/like_pattern.h"
#include "platform/dao/sql/parser.h"
#include "platform/runtime/error.h"
#include "tests/platform/dao/sql/statements.h"

using namespace qk::dao::sql;
using namespace qk::dao::sql::test;

class TestSqliteWriter : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    store_ = competitionStore();
    store_->native("INSERT INTO Verein VALUES (1, 'Äolus', 'Ä'), (2, 'Adler', NULL), (3, 'Zorn', '')");
    store_->native(
        "INSERT INTO \"Schützen\" (ID, Startnummer, Name, VereinsID, KlassenID, lMannID) VALUES "
        "(1, '107', 'Müller', 1, 5, 0), (2, '20', 'MÜLLER', 2, 6, 8), (3, '3', 'Öz', NULL, NULL, NULL), "
        "(4, '100', 'Adam', 9, 7, 9)");
    store_->native(
        "INSERT INTO Schuss (ID, Ergebnis, Startnummer, DisziID, WTyp, Datum, Betrag) VALUES "
        "(1, 9.7, '107', 4, 'LG', '2026-11-20 10:41:07', 12.5), "
        "(2, 10, '107', 4, 'lp', '2026-10-02 00:00:00', 0.1), "
        "(3, 8.25, '20', 5, NULL, '1899-12-30 00:00:00', 0.2), "
        "(4, NULL, '999', 4, '', NULL, NULL)");
    store_->native(
        "INSERT INTO Disziplin VALUES (4, 'Blattl', 2, 0, -1, 3), (5, 'Übung', 1, -1, 0, -1), (6, 'übrig', "
        "3, -1, 0, "
        "0)");
  }

  void selects_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QStringList>("rows");
    const auto row = [](const char* text, const QStringList& rows) { QTest::newRow(text) << text << rows; };
    row("select ID from Schützen order by Name, ID", {"4", "1", "2", "3"});
    row("select ID from Verein order by Name desc", {"3", "1", "2"});
    row("select ID from Schützen order by Startnummer", {"4", "1", "2", "3"});
    row("select ID from Schützen order by val(Startnummer)", {"3", "2", "4", "1"});
    row("select top 2 ID from Schützen order by val(Startnummer) desc", {"1", "4"});
    row("select ID from Schützen where Name = 'ADAM'", {"4"});
    row("select ID from Schützen where Name = 'müller' order by ID", {"1", "2"});
    row("select ID from Schützen where Name <> 'müller' order by ID", {"3", "4"});
    row("select ID from Schützen where Name in ('müller', 'x') order by ID", {"1", "2"});
    row("select ID from Schützen where Name > 'n' order by ID", {"3"});
    row("select ID from Schützen where Name between 'm' and 'p' order by ID", {"1", "2", "3"});
    row("select ID from Schützen where Name like '*Ü*' order by ID", {"1", "2"});
    row("select ID from Schützen where not Name like '*Ü*' order by ID", {"3", "4"});
    row("select ID from Disziplin where Teiler = True", {"4"});
    row("select ID from Disziplin where Ringe = True AND Teiler = False order by ID", {"5", "6"});
    row("select ID from Disziplin where Teiler = '-1'", {"4"});
    row("select ID from Disziplin where Teiler = 1", {});
    row("select ID from Disziplin where not Teiler order by ID", {"5", "6"});
    row("select ID from Disziplin where Ringe LIKE '-1' order by ID", {"5", "6"});
    row("select ID from Disziplin where ZusatzTeiler = 3", {"4"});
    row("select ID from Disziplin where (ID = 4) = Teiler and (ID > 4) = Ringe order by ID", {"4", "5", "6"});
    row("select ID = 4, Not Teiler, ID in (5), Name is null from Disziplin where ID < 6 order by ID",
        {"-1|0|0|0", "0|-1|-1|0"});
    row("select ID from Schuss where Ergebnis LIKE '9,*'", {"1"});
    row("select ID from Schuss where Ergebnis LIKE '10'", {"2"});
    row("select ID from Schuss where Datum LIKE '20.11.*'", {"1"});
    row("select ID from Schuss where Datum = 0", {"3"});
    row("select ID from Schuss where Datum = '02.10.2026'", {"2"});
    row("select ID from Schuss where Datum > #10/2/2026# order by ID", {"1"});
    row("select ID from Schuss where Datum between #10/1/2026# and #11/30/2026# order by ID", {"1", "2"});
    row("select ID from Schuss where Datum > DateValue(Datum)", {"1"});
    row("select ID from Schuss where DateValue([Datum]) = '20.11.2026'", {"1"});
    row("select ID from Schuss where Month([Datum]) = 10 and Year(Datum) = 2026 and Day(Datum) = 2", {"2"});
    row("select Datum + 1, Datum - #10/1/2026# from Schuss where ID = 2", {"2026-10-03 00:00:00|1.0"});
    row("select Max(DateValue([Datum])) AS LetzerSchießtag from Schuss where DisziId=4",
        {"2026-11-20 00:00:00"});
    row("select ID from Schuss where WTyp is null", {"3"});
    row("select ID from Schuss where WTyp = ''", {"4"});
    row("select ID from Schuss where WTyp <> 'LG' order by ID", {"2", "4"});
    row("select ID from Schuss where WTyp = 'LP'", {"2"});
    row("select ID from Schuss where WTyp & 'x' = 'X' order by ID", {"3", "4"});
    row("select WTyp & '-' & Ergebnis & '-' & Datum & Null from Schuss where ID < 4 order by ID",
        {"LG-9,7-20.11.2026 10:41:07", "lp-10-02.10.2026", "-8,25-00:00:00"});
    row("select WTyp + 'x' from Schuss order by ID", {"LGx", "lpx", "NULL", "x"});
    row("select ID / 4, 7 \\ 2, 7 mod 4, -ID, -(-ID), 2 - -ID, 1 - 2 - 3, 1 - (2 - 3) from Schuss where ID = "
        "2",
        {"0.5|3|3|-2|2|4|-4|2"});
    row("select Abs(9.5 -[Ergebnis]) AS Diff from Schuss where DisziID = 4 order by Abs(9.5 -[Ergebnis]), ID",
        {"NULL", "0.199999999999999", "0.5"});
    row("select count(*), sum(Betrag), max(Ergebnis), min(WTyp) from Schuss", {"4|12.8|10.0|"});
    row("select ID from Schuss where Betrag + 0.2 = 0.3", {"2"});
    row("select DisziID, count(*) as N from Schuss group by DisziID having count(*) > 1", {"4|3"});
    row("select count(*) from Schuss having count(*) > 9", {});
    row("select distinct DisziID from Schuss order by DisziID desc", {"5", "4"});
    row("select iif(Ergebnis > 9, 'gut', 'schlecht'), nz(WTyp, '-'), len(WTyp), ucase(WTyp), isnull(WTyp) "
        "from "
        "Schuss where ID in (2, 3) order by ID",
        {"gut|lp|2|LP|0", "schlecht|-|NULL|NULL|-1"});
    row("select Int(-2.5), Fix(-2.5), Val('12x'), True, Null", {"-3.0|-2.0|12.0|-1|NULL"});
    row("select Schuss.ID, Disziplin.Name from Schuss inner join Disziplin on Schuss.DisziID = Disziplin.ID "
        "order by "
        "Disziplin.Name, Schuss.Ergebnis desc",
        {"2|Blattl", "1|Blattl", "4|Blattl", "3|Übung"});
    row("select Schützen.ID, Verein.Name as VName from Verein right join Schützen on Verein.ID = "
        "Schützen.VereinsID "
        "order by Schützen.ID",
        {"1|Äolus", "2|Adler", "3|NULL", "4|NULL"});
    row("select * from (select ID as v from Verein) as a right join (select ID as s from Schützen) as b on "
        "a.v = b.s "
        "order by s desc",
        {"NULL|4", "3|3", "2|2", "1|1"});
    row("select d.ID from Disziplin d left join (Schuss s inner join Schützen t on s.Startnummer = "
        "t.Startnummer) on "
        "d.ID = s.DisziID where t.ID is null",
        {"6"});
    row("select t.ID, d.ID from (Schuss s inner join Schützen t on s.Startnummer = t.Startnummer) right join "
        "Disziplin d on d.ID = s.DisziID where d.ID > 4 order by d.ID",
        {"2|5", "NULL|6"});
    row("select Name from Disziplin union select Name from Verein order by Name",
        {"Adler", "Äolus", "Blattl", "übrig", "Übung", "Zorn"});
    row("select ID from Disziplin union all select top 1 ID from Verein order by 1", {"1", "4", "5", "6"});
    row("select x.Name, x.Art from (select Name, 0 as Art from Disziplin union select Kurzname as Name, 1 as "
        "Art from "
        "Verein) as x where x.Art = 1 and x.Name = 'ä'",
        {"Ä|1"});
    row("select ID from Verein where ID in (select VereinsID from Schützen where Name = 'müller') order by "
        "ID",
        {"1", "2"});
    row("select ID from Verein v where 1 in (select Schützen.ID from Schützen where VereinsID = v.ID)",
        {"1"});
    row("Select * from Schützenliste WHERE Schützen.Name like '*m*' order by val(Startnummer)",
        {"2|20|MÜLLER|Adler", "4|100|Adam|NULL", "1|107|Müller|Äolus"});
    row("select Startnummer as x from Schützen where Startnummer = 107", {"107"});
    row("select ID as Name, Name as ID from Verein order by Name", {"2|Adler", "1|Äolus", "3|Zorn"});
  }
  void selects() {
    QFETCH(QString, text);
    QFETCH(QStringList, rows);
    QCOMPARE(store_->run(text), rows);
  }

  void updates() {
    store_->run("UPDATE Schuss SET Datum = 0, WTyp = 5, Ergebnis = '9,5', Betrag = 2.5 WHERE ID = 4");
    QCOMPARE(store_->native("SELECT Datum, WTyp, Ergebnis, Betrag FROM Schuss WHERE ID = 4"),
             QStringList{"1899-12-30 00:00:00|5|9.5|2.5"});
    store_->run("UPDATE Disziplin SET Teiler = True, Ringe = (ID = 5)");
    QCOMPARE(store_->native("SELECT Teiler, Ringe FROM Disziplin ORDER BY ID"),
             QStringList({"-1|0", "-1|-1", "-1|0"}));
    store_->run("UPDATE Schuss SET WTyp = Ergebnis & Null, KlassenID = Null WHERE ID = 1");
    QCOMPARE(store_->native("SELECT WTyp, KlassenID FROM Schuss WHERE ID = 1"), QStringList{"9,7|NULL"});
    store_->run("UPDATE Schuss AS s SET s.WTyp = s.Ergebnis WHERE s.ID = 1");
    QCOMPARE(store_->native("SELECT WTyp FROM Schuss WHERE ID = 1"), QStringList{"9,7"});
  }

  void updatesOverJoins() {
    store_->run(
        "UPDATE Schuss INNER JOIN Schützen ON Schuss.Startnummer = Schützen.Startnummer SET Schuss.KlassenID "
        "= "
        "[Schützen].[KlassenID], Schuss.MannID = [Schützen].[VereinsID], Schuss.VorMannId = "
        "[Schützen].[lMannID]WHERE (([Schützen].[lMannID]>0))");
    QCOMPARE(store_->changes(), 1);
    QCOMPARE(store_->native("SELECT KlassenID, MannID, VorMannID FROM Schuss ORDER BY ID"),
             QStringList({"NULL|NULL|NULL", "NULL|NULL|NULL", "6|2|8", "NULL|NULL|NULL"}));
    store_->run(
        "UPDATE Schuss LEFT JOIN Schützen ON Schuss.Startnummer = Schützen.Startnummer SET Schuss.KlassenID "
        "= 1 WHERE "
        "Schützen.ID Is Null");
    QCOMPARE(store_->native("SELECT ID FROM Schuss WHERE KlassenID = 1"), QStringList{"4"});
    store_->run(
        "UPDATE Schuss RIGHT JOIN Schützen ON Schuss.Startnummer = Schützen.Startnummer SET Schützen.Ort = "
        "Schuss.WTyp & '!' WHERE Schuss.ID <> 2");
    QCOMPARE(store_->native("SELECT Ort FROM \"Schützen\" ORDER BY ID LIMIT 3"),
             QStringList({"LG!", "!", "NULL"}));
    QVERIFY_THROWS_EXCEPTION(
        qk::Error, store_->run("UPDATE Verein LEFT JOIN (Schuss INNER JOIN Disziplin ON Schuss.DisziID = "
                               "Disziplin.ID) ON Verein.ID = Schuss.ID SET Schuss.WTyp = 'x'"));
  }

  void deletes() {
    store_->run("Delete * from Schuss where ID = 4");
    QCOMPARE(store_->native("SELECT ID FROM Schuss ORDER BY ID"), QStringList({"1", "2", "3"}));
    store_->run(
        "Delete * from Disziplin inner join Schuss on Disziplin.ID = Schuss.DisziID where Disziplin.Teiler");
    QCOMPARE(store_->native("SELECT ID FROM Schuss"), QStringList{"3"});
    QCOMPARE(store_->native("SELECT count(*) FROM Disziplin"), QStringList{"3"});
    store_->run(
        "Delete Disziplin.* from Disziplin left join Schuss on Disziplin.ID = Schuss.DisziID where Schuss.ID "
        "Is "
        "Null");
    QCOMPARE(store_->native("SELECT ID FROM Disziplin"), QStringList{"5"});
    store_->run("Delete * from Schuss");
    QCOMPARE(store_->native("SELECT count(*) FROM Schuss"), QStringList{"0"});
  }

  void inserts() {
    store_->run(
        "INSERT INTO Schuss ( Ergebnis, Startnummer, Datum, Betrag, DisziID) SELECT Ergebnis, 5, 0, '1,5', 6 "
        "FROM Schuss WHERE DisziID = 5");
    QCOMPARE(
        store_->native("SELECT Ergebnis, Startnummer, Datum, Betrag, DisziID FROM Schuss WHERE DisziID = 6"),
        QStringList{"8.25|5|1899-12-30 00:00:00|1.5|6"});
    store_->run("INSERT INTO Disziplin VALUES (9, \"O'Neill\", 1, True, 0, True)");
    QCOMPARE(store_->native("SELECT * FROM Disziplin WHERE ID = 9"), QStringList{"9|O'Neill|1|-1|0|-1"});
  }

  void literalsAreParameters() {
    const NativeQuery a = store_->translate("select * from Schützen where ID = 5 and Name = 'x'");
    const NativeQuery b = store_->translate("select * from Schützen where ID = 77 and Name = 'O''Neill'");
    QCOMPARE(a.text, b.text);
    QCOMPARE(a.text, QString("SELECT * FROM \"Schützen\" WHERE \"ID\" = ? AND \"Name\" = ?"));
    QCOMPARE(b.values, QVariantList({qlonglong(77), QString("O'Neill")}));
  }

  void longListsAreWrittenOut() {
    QStringList ids;
    for (int i = 0; i < 50000; ++i) ids << QString::number(i);
    const QString text = "select ID from Schuss where ID in (" + ids.join(", ") + ") order by ID";
    QVERIFY(store_->translate(text).values.isEmpty());
    QCOMPARE(store_->run(text), QStringList({"1", "2", "3", "4"}));
  }

  void keysFindTheirRows() {
    const auto plan = [this](const char* text) {
      const NativeQuery query = store_->translate(text);
      return store_->native("EXPLAIN QUERY PLAN " + query.text, query.values).join(u' ');
    };
    QVERIFY(plan("select * from Haering_Daten where ID = 5").contains("SEARCH"));
    QVERIFY(
        !plan(
             "select * from Schuss inner join Disziplin on Schuss.DisziID = Disziplin.ID where Schuss.ID = 1")
             .contains("SCAN"));
    // Turned round, the join finds its partners by key.
    QVERIFY(plan("select Schützen.*, Verein.Name from Verein right join Schützen on Verein.ID = "
                 "Schützen.VereinsID")
                .contains("SEARCH Verein"));
    store_->native("CREATE INDEX s ON \"Schützen\" (Startnummer COLLATE NOCASE)");
    QVERIFY(plan("select * from Schützen where Startnummer = '107'").contains("SEARCH"));
  }

  void aBeginningIsFoundByAnIndex() {
    store_->native("CREATE INDEX n ON \"Schützen\" (Name)");
    const auto plan = [this](const QString& condition) {
      const NativeQuery query = store_->translate("select ID from Schützen where " + condition);
      return store_->native("EXPLAIN QUERY PLAN " + query.text, query.values).join(u' ');
    };
    QVERIFY(plan("Name like 'Mü*'").contains("SEARCH"));
    QVERIFY(plan("Name like 'A@' and ID > 0").contains("SEARCH"));
    QVERIFY(!plan("Name like '*m'").contains("SEARCH"));
    QVERIFY(!plan("Name like Startnummer").contains("SEARCH"));
    QVERIFY(!plan("not Name like 'M*'").contains("SEARCH"));
    QVERIFY(!plan("Name like 'M*' or Startnummer like 'M*'").contains("SEARCH"));
  }

  /// Whatever stands around it, the range takes and refuses nothing by itself.
  void aBeginningTakesWhatItsPatternTakes() {
    const QStringList texts = {"Sch", "SCHMIDT",   "schu",   "ſch", "Sci", "Scg~", "S",
                               "",    "sch\u00e4", "@",      "@a",  "A@",  "[x",   "zz",
                               "Z{",  "kz",        "\u212a", "~",   "~~"};
    store_->native("DELETE FROM \"Schützen\"");
    for (const QString& text : texts) store_->native("INSERT INTO \"Schützen\" (Name) VALUES (?)", {text});
    store_->native("INSERT INTO \"Schützen\" (Name) VALUES (NULL)");
    for (const char* pattern :
         {"sch*", "SCH", "S?h*", "s*", "@*", "@", "Z*", "z?", "k*", "K", "~*", "[[]x", "A@"}) {
      QStringList expected, refused;
      for (const QString& text : texts)
        (LikePattern(QString(pattern)).matches(text) ? expected : refused) << text;
      const auto names = [&](const QString& condition) {
        return store_->run("select Name from Schützen where " + condition.arg(pattern) + " order by ID");
      };
      QCOMPARE(names("Name like '%1'"), expected);
      QCOMPARE(names("not Name like '%1'"), refused);
      QCOMPARE(names("iif(Name like '%1', 1, 0) = 1"), expected);
      QCOMPARE(names("(Name like '%1') = True"), expected);
      QCOMPARE(
          store_->run(QString("select N from (select ID, Name & '' as N from Schützen where ID > 0) as made "
                              "where N like '%1' order by ID")
                          .arg(pattern)),
          expected);
      QCOMPARE(names("ID < 0 or Name like '%1' and ID > 0"), expected);
    }
  }

  /// A page of keys after the other: were the matching rows gathered for each, a long list would take ages.
  void rowsInKeyOrderKeepToTheirKeys() {
    Statement statement = parseStatement("select ID from Schützen where Name like 'M*'");
    resolve(statement, *store_);
    const Expression& condition = *std::get<Select>(statement).where;
    QCOMPARE(SqliteWriter().conditionInKeyOrder(condition).text,
             QString("qk_like(\"Schützen\".\"Name\", ?)"));
    QCOMPARE(SqliteWriter().conditionInKeyOrder(condition).values, QVariantList{"M*"});
    QCOMPARE(SqliteWriter().condition(condition).values, QVariantList({"m", "n", "M*"}));
  }

  void piecesPrintAlone() {
    Statement statement = parseStatement(
        "select * from Verein v right join Schützen on v.ID = Schützen.VereinsID and v.Name = 'x' where v.ID "
        "= 5 order "
        "by v.Name desc, v.ID + 1");
    resolve(statement, *store_);
    const Select& select = std::get<Select>(statement);
    const SqliteWriter writer;
    const QString from =
        " FROM \"Schützen\" LEFT JOIN \"Verein\" AS \"v\" ON \"v\".\"ID\" = \"Schützen\".\"VereinsID\" AND "
        "\"v\".\"Name\" = ?";
    const NativeQuery keys = writer.columnsOf({writer.column("v", "a\"b"), "1"}, select.from);
    QCOMPARE(keys.text, "SELECT \"v\".\"a\"\"b\", 1" + from);
    QCOMPARE(keys.values, QVariantList{"x"});
    QCOMPARE(writer.count(select.from).text, "SELECT COUNT(*)" + from);
    QCOMPARE(writer.condition(*select.where).text, QString("\"v\".\"ID\" = ?"));
    QCOMPARE(writer.orderTerm(select.orderBy[0]).text, QString("\"v\".\"Name\" COLLATE german DESC"));
    QCOMPARE(writer.orderTerm(select.orderBy[1]).values, QVariantList{qlonglong(1)});
  }

  void plainTextHoldsItsLiterals() {
    Statement statement = parseStatement(
        "select 'O''Neill' as a, 5 as b, 0.1 as c, Null as d, True as e, #11/20/2026# as f, 1 - -2 as g");
    resolve(statement, *store_);
    const QString text = SqliteWriter().plainText(std::get<Select>(statement));
    QVERIFY(!text.contains(u'?'));
    QCOMPARE(store_->native(text), QStringList{"O'Neill|5|0.1|NULL|-1|2026-11-20 00:00:00|3"});
  }

  void impossibleComparisonsAreTypeErrors() {
    for (const char* text :
         {"select * from Schuss where ID = 'abc'", "select * from Schuss where Datum = 'abc'",
          "select * from Disziplin where Ringe = 'vielleicht'"}) {
      try {
        store_->run(text);
        QFAIL(text);
      } catch (const qk::Error& error) {
        QCOMPARE(error.number(), 3464);
      }
    }
  }

 private:
  std::unique_ptr<SampleStore> store_;
};

QTEST_APPLESS_MAIN(TestSqliteWriter)
#include "test_sqlite_writer.moc"
