// Every query text of the program on the same rows in a file and on a server: the same names, types, rows and
// counts.
#include <QRegularExpression>
#include <QTest>

#include "platform/dao/recordset.h"
#include "tests/platform/dao/sql/statements.h"
#include "tests/platform/dao/twin_rows.h"

using namespace qk::dao;
using namespace qk::dao::test;
using namespace qk::dao::sql::test;

class TestSameStatements : public QObject {
  Q_OBJECT

  std::unique_ptr<TwinStores> twins_;

  static void rows(const QStringList& texts) {
    QTest::addColumn<QString>("text");
    for (const QString& text : texts) QTest::newRow(qPrintable(text)) << text;
  }
  /// A join that isn't sorted by all its keys leaves ties open; a table's own rows come by its key then.
  static Order orderOf(const QString& text) {
    return text.contains(" JOIN ", Qt::CaseInsensitive) ? Order::Open : Order::Defined;
  }

 private Q_SLOTS:
  void initTestCase() {
    twins_ = std::make_unique<TwinStores>();
    for (const TableDef& table : competitionTables()) {
      twins_->createTable(table);
      fill(*twins_, table, 24, 1);
    }
    // Nobody shares a number: which of several partners an UPDATE over a join takes its values from is open.
    QCOMPARE(twins_->compareAction("UPDATE Schützen SET Startnummer = '10' & ID"), QString());
    twins_->createQuery(shooterList().name, shooterList().text);
  }
  void cleanupTestCase() { twins_.reset(); }

  void definitionsAreTheSame() {
    for (const TableDef& made : competitionTables()) {
      const TableDef one = twins_->file().tableDef(made.name), other = twins_->server().tableDef(made.name);
      QCOMPARE(one.fields.size(), made.fields.size());
      QCOMPARE(other.fields.size(), made.fields.size());
      for (std::size_t i = 0; i < made.fields.size(); ++i) {
        QCOMPARE(other.fields[i].name, one.fields[i].name);
        QCOMPARE(int(other.fields[i].type), int(one.fields[i].type));
        QCOMPARE(other.fields[i].size, one.fields[i].size);
        QCOMPARE(other.fields[i].autoNumber, one.fields[i].autoNumber);
      }
    }
  }

  void readingsBringTheSame_data() {
    QStringList texts;
    for (const QString& text : readingStatements())
      if (!text.contains(" INTO ")) texts << text;
    rows(texts);
  }
  void readingsBringTheSame() {
    QFETCH(QString, text);
    const QString difference = twins_->compareRows(text, orderOf(text));
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(!twins_->lastFailed());
  }

  /// What the language means, beyond what the program asks for.
  void meaningIsTheSame_data() {
    rows(
        {"select ID from Schützen order by Name, ID",
         "select * from Schützen where Name = 'müller'",
         "select ucase(Name) as Name from Verein union select ucase(Name) from Schützen order by Name",
         "select distinct Name from Verein order by Name desc",
         "select distinct VereinsID from Schützen order by VereinsID",
         "select Startnummer, Sum(Betrag) as s, Max(Datum) as d, Count(*) as n from Schuss group by "
         "Startnummer",
         "select Sum(Ergebnis), Avg(Ergebnis), Min(WTyp), Max(WTyp) from Schuss",
         "select ID from Schuss where Ergebnis LIKE '9,*' or Datum LIKE '20.11.*' or WTyp like '[a-l]p'",
         "select WTyp & '-' & Ergebnis & '-' & Datum & Null from Schuss order by ID",
         "select ID / 4, 7 \\ 2, 7 mod 4, -ID, 2 - -ID, ID / 0 from Schuss order by ID",
         "select val(Startnummer), Month(Datum), DateValue(Datum), Datum + 1, Len(WTyp) from Schuss order by "
         "ID",
         "select ID = 4, Not Teiler, ID in (5), Name is null, Teiler + 1 from Disziplin order by ID",
         "select ID from Disziplin where Teiler",
         "select ID from Disziplin where Ringe = True",
         "select top 2 ID from Schützen order by val(Startnummer) desc",
         "select top 1 * from Schuss",
         "select Schützen.ID, Verein.Name from Verein right join Schützen on Verein.ID = Schützen.VereinsID",
         "select * from Verein right join Schützen on Verein.ID = Schützen.VereinsID order by Schützen.ID",
         "select Startnummer from Schuss where Startnummer = 107",
         "select iif(ID > 2, 'a', WTyp) from Schuss",
         "select ID from Verein where Name between 'a' and 'b' order by ID",
         "select ID from Verein where Name > 'adler' order by ID",
         "select ID from Verein where Name in ('ADLER')",
         "select ID from Verein where ID in (select VereinsID from Schützen where Name = 'müller') order by "
         "ID",
         "select nz(WTyp, 'leer'), ucase(WTyp), Abs(9.5 - Ergebnis) from Schuss order by ID",
         "select ID from Schuss where Datum = 0",
         "select ID from Schuss where Betrag = 0.1",
         "select a.ID, b.Name from Schuss as a left join (select ID, Name, 0 as Art from Verein union select "
         "ID, "
         "Name, 1 from Schützen) as b on a.ID = b.ID order by a.ID, b.Name",
         "select * from Schützenliste order by Schützen.Name",
         "select ID from Schuss where ID = 'abc'",
         "select Fehlt from Schuss where x = 1"});
  }
  void meaningIsTheSame() {
    QFETCH(QString, text);
    const QString difference = twins_->compareRows(text, Order::Open);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
  }

  void wholeTablesAreTheSame() {
    for (const QString& table : twins_->file().tableNames() + twins_->file().queryNames()) {
      const QString difference = twins_->compareRows(table, Order::Defined);
      QVERIFY2(difference.isEmpty(), qPrintable(difference));
    }
  }

  void criteriaFindTheSame_data() { rows(criteria()); }
  void criteriaFindTheSame() {
    QFETCH(QString, text);
    const QString difference = twins_->compareFound("Select * from Haering_Daten", text);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
  }

  /// From either kind of store into either kind.
  void selectsIntoOtherStoresBringTheSame_data() {
    QStringList texts;
    for (const QString& text : readingStatements())
      if (text.contains(" INTO ")) texts << text;
    for (const TableDef& table : competitionTables())
      texts << QString("SELECT [%1].* INTO [%1] IN '/tmp/ziel.qkk' FROM [%1]").arg(table.name);
    rows(texts);
  }
  void selectsIntoOtherStoresBringTheSame() {
    QFETCH(QString, text);
    static const QRegularExpression target(" INTO \\[?([^\\] ]+)\\]? IN '([^']*)'");
    const QRegularExpressionMatch match = target.match(text);
    QVERIFY(match.hasMatch());
    static const TwinStores::Pair fromFile = twins_->emptyPair(), fromServer = twins_->emptyPair();
    QStringList brought;
    for (const auto& [source, paths] :
         {std::pair(&twins_->file(), fromFile), {&twins_->server(), fromServer}})
      for (const QString& path : {paths.file, paths.server}) {
        const auto other = Database::open(path);
        if (other->hasTable(match.captured(1))) other->dropTable(match.captured(1));
        const int affected = source->execute(QString(text).replace(match.captured(2), path));
        Outcome outcome = read(*other, "Select * from [" + match.captured(1) + "]");
        if (match.captured(1) == "Profile") outcome.rows.sort();  // over a join
        outcome.affected = affected;
        brought << outcome.text();
        for (const FieldDef& field : other->tableDef(match.captured(1)).fields)
          brought.last() += QString("\n%1 %2 %3 %4")
                                .arg(field.name)
                                .arg(int(field.type))
                                .arg(field.size)
                                .arg(int(field.autoNumber));
      }
    QCOMPARE(brought.size(), 4);
    for (int i = 1; i < 4; ++i) QCOMPARE(brought[i], brought[0]);
  }

  // Last: they change the rows.
  void zActionsLeaveTheSame_data() { rows(actionStatements()); }
  void zActionsLeaveTheSame() {
    QFETCH(QString, text);
    const QString difference = twins_->compareAction(text);
    QVERIFY2(difference.isEmpty(), qPrintable(difference));
    QVERIFY(!twins_->lastFailed());
    wholeTablesAreTheSame();
  }
};

QTEST_GUILESS_MAIN(TestSameStatements)
#include "test_same_statements.moc"
