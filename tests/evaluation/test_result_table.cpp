// Readings, questions and statements of the results editor, and what the statements do to a competition.
#include <QRegularExpression>
#include <QTest>

#include "evaluation/result_table.h"
#include "evaluation/shooter_header.h"
#include "tests/capture/workbench.h"
#include "tests/evaluation/result_rows.h"

using namespace qk;
using namespace qk::test;

Q_DECLARE_METATYPE(DisciplineChange)

class TestResultTable : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    bench = std::make_unique<Workbench>();
    bench->fill(kResultRows);
  }
  void cleanup() { bench.reset(); }

  void readings();
  void everyColumnFiltersAndSorts();
  void datesSortByTheirDay();
  void aQuoteIsText();
  void counts();
  void questions();
  void statements_data();
  void statements();
  void aCopyKeepsAllColumns();
  void allMeansTheOldDisciplineOfOneShooter();
  void eachKindTouchesItsOwnTable();
  void manyRowsAtOnce();
  void aFailedStatementIsRepeated();
  void news();
  void theHeader();
  void theHeaderOfNobody();

 private:
  QString read(const QString& query, const QString& column = "SchussID") {
    return bench->read(query, {column}).join(" ");
  }
  QString results(const QString& table) {
    QStringList rows = bench->read("Select * from " + table + " order by ID", {"ID", "DisziID"});
    static const QRegularExpression assigned("^\\d{2,}");
    return rows.replaceInStrings(assigned, "new").join(" ");
  }
  int run(const DisciplineChange& change) {
    int rows = -1;
    reported([](const Error&) { return ErrorAnswer::Abort; },
             [&](Steps& step) { rows = changeDiscipline(bench->store(), step, change); });
    return rows;
  }

  std::unique_ptr<Workbench> bench;
};

void TestResultTable::readings() {
  QCOMPARE(resultQuery(ResultKind::Teiler, "107").text(),
           "SELECT Schuss.Ergebnis, Schuss.WTyp as Waffe, Disziplin.Name as Disziplin, Schuss.Datum, "
           "Disziplin.ID as DisziID, Schuss.ID as SchussID, Schuss.DisziID as SDID FROM Schuss INNER JOIN "
           "Disziplin ON Schuss.DisziId = Disziplin.ID WHERE (((Schuss.Startnummer)= '107')) order by "
           "Disziplin.Name, Schuss.Ergebnis");
  QCOMPARE(resultQuery(ResultKind::Serien, "107").text(),
           "SELECT SchussSerien.Ergebnis, SchussSerien.WTyp as Waffe, Disziplin.Name as Disziplin, "
           "SchussSerien.Datum, Disziplin.ID as DisziID, SchussSerien.ID as SchussID, SchussSerien.DisziID "
           "as SDID FROM SchussSerien INNER JOIN Disziplin ON SchussSerien.DisziID = Disziplin.ID WHERE "
           "(((SchussSerien.Startnummer)='107')) ORDER BY Disziplin.Name, SchussSerien.Ergebnis DESC");
  QCOMPARE(read(resultQuery(ResultKind::Teiler, "107").text()), "4 7 2 1 3");
  QCOMPARE(read(resultQuery(ResultKind::Serien, "107").text()), "2 1 3");
}

void TestResultTable::everyColumnFiltersAndSorts() {
  struct Case {
    ResultKind kind;
    int column;
    QString filter, found, ascending, descending;
  };
  const Case cases[] = {
      {ResultKind::Teiler, result::Ergebnis, "23,", "2", "7 2 4 1 3", "3 1 4 2 7"},
      {ResultKind::Teiler, result::Waffe, "lp", "7 3", "1 2 4 3 7", "3 7 1 2 4"},
      {ResultKind::Teiler, result::Disziplin, "LG T", "7 2 1", "4 1 2 7 3", "3 1 2 7 4"},
      {ResultKind::Teiler, result::Datum, "20.11", "2 1", "4 7 1 2 3", "3 2 1 7 4"},
      {ResultKind::Serien, result::Ergebnis, "39", "2", "3 1 2", "2 1 3"},
      {ResultKind::Serien, result::Waffe, "L", "2 1 3", "1 2 3", "1 2 3"},
      {ResultKind::Serien, result::Disziplin, "LG Z", "3", "1 2 3", "3 1 2"},
      {ResultKind::Serien, result::Datum, "21.", "2 3", "1 2 3", "3 2 1"},
  };
  for (const Case& each : cases) {
    FilteredQuery query = resultQuery(each.kind, "107");
    QStringList texts(resultColumns().size());
    texts[each.column] = each.filter;
    query.setFilter(texts);
    QCOMPARE(read(query.text()), each.found);
    query.clearFilter();
    query.clickTitle(each.column);
    QCOMPARE(query.orderColumn(), each.column);
    QCOMPARE(read(query.text()), each.ascending);
    query.clickTitle(each.column);
    QVERIFY(query.isDescending());
    QCOMPARE(read(query.text()), each.descending);
  }
}

void TestResultTable::datesSortByTheirDay() {
  bench->store().execute("UPDATE Schuss SET Datum = 'gestern' WHERE ID = 4");
  FilteredQuery query = resultQuery(ResultKind::Teiler, "107");
  query.clickTitle(result::Datum);
  query.clickTitle(result::Datum);
  // 2026 before 2025, though "03.12.2025" is the greater text; what is no date stands last.
  QCOMPARE(read(query.text()), "3 2 1 7 4");
}

void TestResultTable::aQuoteIsText() {
  bench->store().execute("UPDATE Schuss SET Startnummer = 'O''1', WTyp = '''' WHERE ID = 1");
  FilteredQuery query = resultQuery(ResultKind::Teiler, "O'1");
  query.setFilter({"", "'", "", ""});
  QCOMPARE(read(query.text()), "1");
  DisciplineChange change{.sStartnummer = "O'1", .from = 3, .to = 4, .bChangeAll = true};
  QCOMPARE(run(change), 1);
  change.from = 4;
  change.bCopy = true;
  QCOMPARE(run(change), 1);
}

void TestResultTable::counts() {
  QCOMPARE(resultCount(0), "");
  QCOMPARE(resultCount(1), "1 Serien");
  QCOMPARE(resultCount(10000), "10000 Serien");
}

void TestResultTable::questions() {
  using K = ResultKind;
  QCOMPARE(deleteQuestion(K::Teiler, 1, "123,4"), "Wollen Sie den Teiler: 123,4 wirklich löschen?");
  QCOMPARE(deleteQuestion(K::Serien, 1, "380"), "Wollen Sie die Serie: 380 wirklich löschen?");
  QCOMPARE(deleteQuestion(K::Teiler, 2, "123,4"), "Wollen Sie die 2 Teiler wirklich löschen?");
  QCOMPARE(deleteQuestion(K::Serien, 17, "380"), "Wollen Sie die 17 Serien wirklich löschen?");
  const auto asked = [](bool copy, bool all) { return changeQuestion({.bCopy = copy, .bChangeAll = all}); };
  QCOMPARE(asked(true, true), "Alle Ergebnisse des Schützen wirklich in die neue Disziplin kopieren?");
  QCOMPARE(asked(true, false), "Gewählte Ergebnisse wirklich in die neue Disziplin kopieren?");
  QCOMPARE(asked(false, true), "Alle Ergebnisse des Schützen wirklich der neuen Disziplin zuordnen?");
  QCOMPARE(asked(false, false), "Gewählte Ergebnisse wirklich der neuen Disziplin zuordnen?");
}

void TestResultTable::statements_data() {
  QTest::addColumn<DisciplineChange>("change");
  QTest::addColumn<QString>("statement");
  const auto row = [](const char* name, ResultKind kind, bool copy, bool all, const QString& statement) {
    QTest::newRow(name) << DisciplineChange{kind, "107", 3, 4, copy, all, {1, 2}} << statement;
  };
  row("move teilers", ResultKind::Teiler, false, false, "UPDATE Schuss SET DisziId = 4 WHERE ID in (1, 2)");
  row("move all teilers", ResultKind::Teiler, false, true,
      "UPDATE Schuss SET DisziId = 4 WHERE DisziId =3 AND Startnummer ='107'");
  row("move series", ResultKind::Serien, false, false,
      "UPDATE SchussSerien SET DisziId = 4 WHERE ID in (1, 2)");
  row("move all series", ResultKind::Serien, false, true,
      "UPDATE SchussSerien SET DisziId = 4 WHERE DisziId =3 AND Startnummer ='107'");
  row("copy teilers", ResultKind::Teiler, true, false,
      "INSERT INTO Schuss ( A, B, DisziID) SELECT A, B, 4 FROM Schuss WHERE ID IN (1, 2)");
  row("copy all teilers", ResultKind::Teiler, true, true,
      "INSERT INTO Schuss ( A, B, DisziID) SELECT A, B, 4 FROM Schuss WHERE DisziID = 3 AND STARTNUMMER = "
      "'107'");
  row("copy series", ResultKind::Serien, true, false,
      "INSERT INTO SchussSerien ( A, B, DisziID) SELECT A, B, 4 FROM SchussSerien WHERE ID IN (1, 2)");
  row("copy all series", ResultKind::Serien, true, true,
      "INSERT INTO SchussSerien ( A, B, DisziID) SELECT A, B, 4 FROM SchussSerien WHERE DisziID = 3 AND "
      "STARTNUMMER = '107'");
}

void TestResultTable::statements() {
  QFETCH(DisciplineChange, change);
  QFETCH(QString, statement);
  QCOMPARE(changeStatement(change, {"A", "B"}), statement);
}

void TestResultTable::aCopyKeepsAllColumns() {
  for (const auto& [kind, table] : {std::pair{ResultKind::Teiler, QString("Schuss")},
                                    std::pair{ResultKind::Serien, QString("SchussSerien")}}) {
    const QStringList kept = keptColumns(bench->store(), kind);
    QVERIFY(kept.contains("Datum") && kept.contains("WTyp") && kept.contains("KlassenID"));
    QCOMPARE(kept.size(), qsizetype(bench->store().tableDef(table).fields.size()) - 2);
    QCOMPARE(run({kind, "107", 3, 4, true, false, {1, 2}}), 2);
    const QString of = "Select * from " + table + " where ID ";
    const QString copies = table == "Schuss" ? "> 7" : "> 4";
    QCOMPARE(bench->read(of + copies + " order by ID", kept), bench->read(of + "< 3 order by ID", kept));
    QCOMPARE(bench->read(of + copies, {"DisziID"}), (QStringList{"4", "4"}));
  }
}

void TestResultTable::allMeansTheOldDisciplineOfOneShooter() {
  QCOMPARE(run({ResultKind::Teiler, "107", 3, 4, false, true, {}}), 3);
  QCOMPARE(results("Schuss"), "1|4 2|4 3|4 4|5 5|3 6|777 7|4");
  QCOMPARE(run({ResultKind::Teiler, "107", 4, 3, true, true, {}}), 4);
  QCOMPARE(results("Schuss"), "1|4 2|4 3|4 4|5 5|3 6|777 7|4 new|3 new|3 new|3 new|3");
}

void TestResultTable::eachKindTouchesItsOwnTable() {
  bench->store().execute("UPDATE SchussSerien SET DisziID = 3 WHERE ID = 1");
  QCOMPARE(run({ResultKind::Serien, "107", 3, 2, false, true, {}}), 1);
  QCOMPARE(results("SchussSerien"), "1|2 2|1 3|2 4|1");
  QCOMPARE(results("Schuss"), "1|3 2|3 3|4 4|5 5|3 6|777 7|3");
}

void TestResultTable::manyRowsAtOnce() {
  constexpr int kDoublings = 12;
  for (int i = 0; i < kDoublings; ++i)
    bench->store().execute(
        "INSERT INTO Schuss (Ergebnis, Startnummer, DisziID) SELECT Ergebnis, Startnummer, DisziID FROM "
        "Schuss WHERE DisziID = 3 AND Startnummer = '107'");
  DisciplineChange change{.sStartnummer = "107", .from = 3, .to = 4};
  const auto rows = bench->store().openRecordset("Select * from Schuss where DisziID = 3");
  for (; !rows->eof(); rows->moveNext())
    if (rows->value("Startnummer").toString() == "107") change.results << rows->value("ID").toInt();
  QCOMPARE(change.results.size(), 3 << kDoublings);
  QCOMPARE(run(change), 3 << kDoublings);
}

void TestResultTable::aFailedStatementIsRepeated() {
  refuse(bench->path("Pokal.qkk"), StoreAct::Update, "Schuss", "ID", 2);
  int failures = 0;
  const bool goOn =
      reported([&](const Error&) { return ++failures < 3 ? ErrorAnswer::Retry : ErrorAnswer::Abort; },
               [&](Steps& step) {
                 changeDiscipline(bench->store(), step, {ResultKind::Teiler, "107", 3, 4, false, true, {}});
               });
  QVERIFY(!goOn);
  QCOMPARE(failures, 3);
  // One statement: all of it or nothing.
  QCOMPARE(results("Schuss"), "1|3 2|3 3|4 4|5 5|3 6|777 7|3");
}

void TestResultTable::news() {
  QCOMPARE(deleteNews(ResultKind::Teiler, 1, 1), "1 Teiler gelöscht.");
  QCOMPARE(deleteNews(ResultKind::Serien, 1, 1), "1 Serie gelöscht.");
  QCOMPARE(deleteNews(ResultKind::Serien, 3, 3), "3 Serien gelöscht.");
  QCOMPARE(deleteNews(ResultKind::Serien, 3, 1),
           "1 von 3 Serien gelöscht; die Liste zeigt, was noch da ist.");
  QCOMPARE(changeNews({.kind = ResultKind::Serien}, 1, "LG Meister"), "1 Serie verschoben nach LG Meister.");
  QCOMPARE(changeNews({.bCopy = true}, 2, "LG Teiler"), "2 Teiler kopiert nach LG Teiler.");
}

void TestResultTable::theHeader() {
  bench->fill(
      "Zeilen MeldeDisziplin\n  ID | MeldeDisziplin | MeldeKZ\n  901 | Luftgewehr | 1.10\n  902 | Auflage | "
      "1.11\n"
      "Zeilen Schuetzen_SPO_Anmeldungen\n  SchuetzeID | SPOID | MannID\n  71 | 901 | 5\n  71 | 902 | 0\n");
  const ShooterHeader header = shooterHeader(bench->store(), bench->dialogs, "107");
  QCOMPARE(header.Name, "Müller Jörg");
  QCOMPARE(header.VName, "Schützenlust Äußere Au");
  QCOMPARE(header.Gebdat, "14.05.1998");
  QCOMPARE(header.MannName, "Äußere Au I");
  QCOMPARE(header.Klasse, "Herren I");
  QCOMPARE(header.SPO, "Luftgewehr - Äußere Au I - Auflage - ");
  QCOMPARE(headline(header, "107"), "Müller Jörg, Startnummer 107, Schützenlust Äußere Au");
  const ShooterHeader alone = shooterHeader(bench->store(), bench->dialogs, "108");
  QCOMPARE(alone.Name + alone.VName + alone.MannName + alone.Klasse + alone.SPO, "Süß Benno");
  QCOMPARE(headline(alone, "108"), "Süß Benno, Startnummer 108");
}

void TestResultTable::theHeaderOfNobody() {
  for (const char* number : {"", "999", "1'0"}) {
    const ShooterHeader nobody = shooterHeader(bench->store(), bench->dialogs, number);
    QCOMPARE(nobody.Name + nobody.VName + nobody.Gebdat + nobody.MannName + nobody.Klasse + nobody.SPO, "");
  }
  QCOMPARE(headline({}, "999"), "Startnummer 999");
}

QTEST_GUILESS_MAIN(TestResultTable)
#include "test_result_table.moc"
