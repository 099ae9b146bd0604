// The same statements on the same rows, on each engine: equal rows come out.
#include <QtTest>

#include "platform/runtime/money.h"
#include "tests/platform/dao/sql/statements.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/postgres_server.h"

using namespace qk;
using namespace qk::dao;

class TestEnginesAgree : public QObject {
  Q_OBJECT

  QTemporaryDir folder_;
  std::unique_ptr<qk::test::ServerDatabase> server_;
  std::unique_ptr<Database> file_, onServer_;

  static void fill(Database& database) {
    for (TableDef table : sql::test::competitionStore()->tables()) {
      if (table.primary() && table.primary()->fields == QStringList{"ID"})
        table.fields.front().autoNumber = true;
      database.createTable(table);
    }
    database.createQuery("Schützenliste",
                         "SELECT Schützen.ID, Startnummer, Schützen.Name AS [Schützen.Name], Verein.Name AS "
                         "[Verein.Name] FROM Schützen LEFT JOIN Verein ON Schützen.VereinsID = Verein.ID");
    for (const char* text :
         {"INSERT INTO Verein VALUES (1, 'Äolus', 'Ä')", "INSERT INTO Verein VALUES (2, 'Adler', Null)",
          "INSERT INTO Verein VALUES (3, 'Zorn', '')", "INSERT INTO Verein VALUES (4, 'adler', 'x')",
          "INSERT INTO Schützen (ID, Startnummer, Name, VereinsID, KlassenID, lMannID) VALUES (1, '107', "
          "'Müller', "
          "1, 5, 0)",
          "INSERT INTO Schützen (ID, Startnummer, Name, VereinsID, KlassenID, lMannID) VALUES (2, '20', "
          "'MÜLLER', "
          "2, 6, 8)",
          "INSERT INTO Schützen (ID, Startnummer, Name) VALUES (3, '3', 'Öz')",
          "INSERT INTO Schützen (ID, Startnummer, Name, VereinsID, KlassenID) VALUES (4, '100', 'Adam', 9, "
          "7)",
          "INSERT INTO Schuss (ID, Ergebnis, Startnummer, DisziID, WTyp, Datum, Betrag) VALUES (1, 9.7, "
          "'107', 4, "
          "'LG', #11/20/2026 10:41:07#, 12.5)",
          "INSERT INTO Schuss (ID, Ergebnis, Startnummer, DisziID, WTyp, Datum, Betrag) VALUES (2, 10, "
          "'107', 4, "
          "'lp', #10/2/2026#, 0.1)",
          "INSERT INTO Schuss (ID, Ergebnis, Startnummer, DisziID, Datum, Betrag) VALUES (3, 8.25, '20', 5, "
          "0, 0.2)",
          "INSERT INTO Schuss (ID, Startnummer, DisziID, WTyp) VALUES (4, '999', 4, '')",
          "INSERT INTO Disziplin VALUES (4, 'Blattl', 2, 0, -1, 3)",
          "INSERT INTO Disziplin VALUES (5, 'Übung', 1, -1, 0, -1)",
          "INSERT INTO Disziplin VALUES (6, 'übrig', 3, -1, 0, 0)"})
      database.execute(text);
  }

  static QString cell(const QVariant& value) {
    if (!value.isValid()) return "NULL";
    if (value.userType() == qMetaTypeId<Money>()) return value.value<Money>().toText();
    return value.typeId() == QMetaType::Double ? QString::number(value.toDouble(), 'g', 12)
                                               : value.toString();
  }

  /// Rows as texts, or the number of the error.
  static QStringList rowsOf(Database& database, const QString& text) {
    QStringList all;
    const int error = errorOf([&] {
      const auto rows = database.openRecordset(text);
      for (; !rows->eof(); rows->moveNext()) {
        QStringList cells;
        for (int i = 0; i < rows->fieldCount(); ++i) cells << cell(rows->value(i));
        all << cells.join(u'|');
      }
    });
    return error ? QStringList{QString("Fehler %1").arg(error)} : all;
  }
  static void texts(const QStringList& all) {
    QTest::addColumn<QString>("text");
    for (const QString& text : all) QTest::newRow(qPrintable(text)) << text;
  }

 private Q_SLOTS:
  void initTestCase() {
    server_ = std::make_unique<qk::test::ServerDatabase>();
    server_->writeAddress(folder_.filePath("server.qkk"));
    file_ = Database::create(folder_.filePath("datei.qkk"), {.durable = false});
    onServer_ = Database::create(folder_.filePath("server.qkk"), {.durable = false});
    fill(*file_);
    fill(*onServer_);
  }

  void readingStatements_data() { texts(sql::test::readingStatements()); }
  void readingStatements() {
    QFETCH(QString, text);
    QCOMPARE(rowsOf(*onServer_, text), rowsOf(*file_, text));
  }

  void meaning_data() {
    texts(
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
  void meaning() {
    QFETCH(QString, text);
    QCOMPARE(rowsOf(*onServer_, text), rowsOf(*file_, text));
  }

  void actionStatements_data() { texts(sql::test::actionStatements()); }
  void actionStatements() {
    QFETCH(QString, text);
    int here = -1, there = -1;
    const int error = errorOf([&] { here = file_->execute(text); });
    QCOMPARE(errorOf([&] { there = onServer_->execute(text); }), error);
    QCOMPARE(there, here);
    for (const char* table : {"Schuss", "Schützen", "Disziplin", "Verein", "Haering_Daten", "Kasse_Eingang"})
      QCOMPARE(rowsOf(*onServer_, table), rowsOf(*file_, table));
  }
};

QTEST_GUILESS_MAIN(TestEnginesAgree)
#include "test_engines_agree.moc"
