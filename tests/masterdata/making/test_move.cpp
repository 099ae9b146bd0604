// Moving a competition: there and back is the same, nothing that is there is overwritten, and a move that was
// interrupted at any moment leaves the source as it was and a target that says so.
#include <QCryptographicHash>
#include <QFile>
#include <QTemporaryDir>
#include <QtTest>

#include "app/ground/unfinished_move.h"
#include "masterdata/making/competition.h"
#include "masterdata/making/move.h"
#include "platform/dao/moving/store_copy.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/money.h"
#include "tests/masterdata/making/move_store.h"
#include "tests/support/error_of.h"
#include "tests/support/foreign/foreign_process.h"
#include "tests/tools/tool_answer.h"

using namespace qk;
using namespace qk::test;
using dao::Database;

namespace {

constexpr int kManyRows = 100000;

QByteArray bytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void quiet(const MoveStep&) {}

/// Folders in memory: hundreds of commits that wait for a disk say nothing more about a move.
QString folderTemplate() {
  return QDir(QDir("/dev/shm").exists() ? "/dev/shm" : QDir::tempPath()).filePath("qk-umzug-XXXXXX");
}

}  // namespace

class TestMove : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void init() { folder_ = std::make_unique<QTemporaryDir>(folderTemplate()); }

  void thereAndBackIsEqual();
  void showsProgressTableByTable();
  void numbersGoOnWhereTheyWere();
  void aDeletedStakeLeavesNobodyItsPayments();
  void keepsWhatIsAtTheTarget();
  void refusesAForeignTarget();
  void refusesAMissingSource();
  void refusesASourceThatIsOpenElsewhere();
  void aFailureLeavesAMarkedTarget();
  void beginsAnewOnlyWhenTold();
  void doesNotMoveAnUnfinishedMove();
  void noticesWorkInTheSource();
  void noticesANumberThatWouldComeAgain();
  void noticesEverySmallDifference_data();
  void noticesEverySmallDifference();
  void killedAtAnyMoment_data();
  void killedAtAnyMoment();
  void aDraftOfAKilledMoveIsNoObstacle();

 private:
  QString path(const QString& name) const { return folder_->filePath(name); }
  /// A small competition of its own for one test.
  QString competition(const QString& name) const {
    const QString made = path(name);
    QFile::copy(originals_.filePath("klein.qkk"), made);
    return made;
  }

  QTemporaryDir originals_{folderTemplate()};
  std::unique_ptr<QTemporaryDir> folder_;
};

void TestMove::initTestCase() {
  const QString small = originals_.filePath("klein.qkk");
  makeDemoCompetition(small);
  addHardTables(*Database::open(small), 2345);
  const QString large = originals_.filePath("gross.qkk");
  makeDemoCompetition(large);
  addHardTables(*Database::open(large), kManyRows);
}

void TestMove::thereAndBackIsEqual() {
  const QString from = originals_.filePath("gross.qkk");
  const QByteArray before = bytesOf(from);
  const MoveResult there = moveCompetition({from, path("hin.qkk")}, quiet);
  const MoveResult back = moveCompetition({path("hin.qkk"), path("zurueck.qkk")}, quiet);
  QVERIFY(there.rows > kManyRows);
  QCOMPARE(back.rows, there.rows);
  const QStringList original = contentsOf(from);
  QVERIFY(original.size() > kManyRows);
  QCOMPARE(firstDifference(contentsOf(path("hin.qkk")), original), QString());
  QCOMPARE(firstDifference(contentsOf(path("zurueck.qkk")), original), QString());
  QCOMPARE(bytesOf(from), before);
}

void TestMove::showsProgressTableByTable() {
  const qk::test::ToolAnswer answer =
      qk::test::callTool({"umziehen", originals_.filePath("gross.qkk"), path("a.qkk")});
  QCOMPARE(answer.errors, QString());
  QCOMPARE(answer.status, 0);
  const auto tables = Database::open(path("a.qkk"))->tableNames();
  for (const QString& table : tables)
    QVERIFY2(answer.out.contains("] " + table + ": "), qPrintable(answer.out));
  QVERIFY(answer.out.contains("] Alles: 50.000 Zeilen ...\n"));
  QVERIFY(answer.out.contains("] Alles: 100.000 Zeilen\n"));
  QVERIFY2(answer.out.contains(QString("Geprüft: %1 Tabellen mit ").arg(tables.size())),
           qPrintable(answer.out));
  QVERIFY(answer.out.endsWith(originals_.filePath("gross.qkk") + " ist unverändert.\n"));
}

void TestMove::numbersGoOnWhereTheyWere() {
  const QString from = competition("a.qkk");
  Database::open(from)->execute("DELETE * FROM Alles WHERE ID > 2000");
  moveCompetition({from, path("b.qkk")}, quiet);
  moveCompetition({path("b.qkk"), path("c.qkk")}, quiet);
  const QStringList original = nextNumbersOf(from);
  for (const char* number : {"Alles: 2369", "Gekürzt: 33", "Geleert: 33", "Unberührt: 1"})
    QVERIFY2(original.contains(number), number);
  QCOMPARE(firstDifference(nextNumbersOf(path("b.qkk")), original), QString());
  QCOMPARE(firstDifference(nextNumbersOf(path("c.qkk")), original), QString());
  const auto store = Database::open(path("b.qkk"));
  const auto added = store->openRecordset("Alles");
  added->addNew();
  added->setValue("Schütze Name", "Neu");
  QCOMPARE(added->value("Betrag").value<Money>().units(), 125000);
  added->update();
}

/// What was paid stays behind when the stake goes.
void TestMove::aDeletedStakeLeavesNobodyItsPayments() {
  const QString from = competition("a.qkk");
  Database::open(from)->execute("DELETE * FROM Kasse_Verwaltung");
  moveCompetition({from, path("b.qkk")}, quiet);
  const auto store = Database::open(path("b.qkk"));
  const auto stakes = store->openRecordset("Kasse_Verwaltung");
  stakes->addNew();
  const int fresh = stakes->value("ID").toInt();
  const auto payments = store->openRecordset("Select * from Kasse_Eingang", dao::RecordsetType::Snapshot);
  QVERIFY(!payments->eof());
  for (; !payments->eof(); payments->moveNext()) QVERIFY(payments->value("KasseID").toInt() != fresh);
}

void TestMove::keepsWhatIsAtTheTarget() {
  const QString from = competition("a.qkk");
  const QString to = path("b.qkk");
  makeCompetition(to, {});
  const QStringList before = contentsOf(to);
  for (const QStringList& more : {QStringList{}, QStringList{"--von-vorn"}}) {
    const qk::test::ToolAnswer answer = qk::test::callTool(QStringList{"umziehen", from, to} + more);
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.errors, QString("Fehler: 3204 - Das Ziel ist nicht leer, es bleibt unverändert.\n"));
    QCOMPARE(contentsOf(to), before);
  }
  QCOMPARE(qk::test::callTool({"umziehen", from, from}).status, 1);
}

void TestMove::refusesAForeignTarget() {
  const QString to = path("brief.qkk");
  QFile letter(to);
  QVERIFY(letter.open(QIODevice::WriteOnly));
  letter.write("Sehr geehrte Damen und Herren, …");
  letter.close();
  const QByteArray before = bytesOf(to);
  QCOMPARE(qk::test::callTool({"umziehen", competition("a.qkk"), to}).status, 1);
  QCOMPARE(bytesOf(to), before);
}

void TestMove::refusesAMissingSource() {
  const qk::test::ToolAnswer answer = qk::test::callTool({"umziehen", path("fehlt.qkk"), path("b.qkk")});
  QCOMPARE(answer.status, 1);
  QVERIFY(answer.errors.startsWith("Fehler: 3024 - "));
  QVERIFY(!QFile::exists(path("b.qkk")));
}

void TestMove::refusesASourceThatIsOpenElsewhere() {
  const QString from = competition("a.qkk");
  const auto refused = [&] {
    const qk::test::ToolAnswer answer = qk::test::callTool({"umziehen", from, path("b.qkk")});
    return answer.status == 1 &&
           answer.errors.startsWith("Fehler: 3045 - Die Quelle ist noch an anderer Stelle geöffnet.") &&
           !QFile::exists(path("b.qkk"));
  };
  {
    const auto here = Database::open(from);
    QVERIFY(refused());
  }
  {
    const ForeignHolder there(from);
    QVERIFY(refused());
  }
  QCOMPARE(qk::test::callTool({"umziehen", from, path("b.qkk")}).status, 0);
}

void TestMove::aFailureLeavesAMarkedTarget() {
  const QString from = competition("a.qkk");
  const auto stop = [](const MoveStep& step) {
    if (step.table == "Alles") throw Error(3026);
  };
  QCOMPARE(errorOf([&] { moveCompetition({from, path("b.qkk")}, stop); }), 3026);
  QVERIFY(isUnfinishedMove(*Database::open(path("b.qkk"))));
  try {
    refuseUnfinishedMove(*Database::open(path("b.qkk")));
    QFAIL("taken for a competition");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 3356);
    QVERIFY2(error.description().contains("(" + from + ")"), qPrintable(error.description()));
  }
}

void TestMove::beginsAnewOnlyWhenTold() {
  const QString from = competition("a.qkk");
  const auto stop = [](const MoveStep& step) {
    if (step.kind == MoveStep::Kind::Verifying) throw Error(3026);
  };
  QCOMPARE(errorOf([&] { moveCompetition({from, path("b.qkk")}, stop); }), 3026);
  const qk::test::ToolAnswer again = qk::test::callTool({"umziehen", from, path("b.qkk")});
  QCOMPARE(again.status, 1);
  QVERIFY2(again.errors.startsWith("Fehler: 3356 - Am Ziel liegt ein Umzug, der nicht fertig geworden ist"),
           qPrintable(again.errors));
  QVERIFY(isUnfinishedMove(*Database::open(path("b.qkk"))));
  const qk::test::ToolAnswer anew = qk::test::callTool({"umziehen", from, path("b.qkk"), "--von-vorn"});
  QCOMPARE(anew.errors, QString());
  QCOMPARE(firstDifference(contentsOf(path("b.qkk")), contentsOf(from)), QString());
}

void TestMove::doesNotMoveAnUnfinishedMove() {
  const auto stop = [](const MoveStep& step) {
    if (step.number == 3) throw Error(3026);
  };
  QCOMPARE(errorOf([&] { moveCompetition({competition("a.qkk"), path("b.qkk")}, stop); }), 3026);
  QCOMPARE(errorOf([&] { moveCompetition({path("b.qkk"), path("c.qkk")}, quiet); }), 3356);
  QVERIFY(!QFile::exists(path("c.qkk")));
}

void TestMove::noticesWorkInTheSource() {
  const QString from = competition("a.qkk");
  bool changed = false;
  const auto disturb = [&](const MoveStep& step) {
    if (step.kind != MoveStep::Kind::Copying || !step.done || step.table != "Alles" || changed) return;
    changed = true;
    Database::open(from)->execute("UPDATE Alles SET Betrag = 1 WHERE ID = 17");
  };
  try {
    moveCompetition({from, path("b.qkk")}, disturb);
    QFAIL("the change wasn't noticed");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 3197);
    QVERIFY2(error.description().contains("Tabelle »Alles«: Spalte »Betrag«"),
             qPrintable(error.description()));
  }
  QVERIFY(isUnfinishedMove(*Database::open(path("b.qkk"))));
}

/// Neither rows nor sums tell of a row that came and went.
void TestMove::noticesANumberThatWouldComeAgain() {
  const QString from = competition("a.qkk");
  const auto comeAndGo = [&](const MoveStep& step) {
    if (step.kind != MoveStep::Kind::Copying || !step.done || step.table != "Gekürzt") return;
    const auto store = Database::open(from);
    const auto rows = store->openRecordset("Gekürzt");
    rows->addNew();
    QCOMPARE(rows->value("Nr").toInt(), 33);
    rows->update();
    store->execute("DELETE * FROM Gekürzt WHERE Nr = 33");
  };
  try {
    moveCompetition({from, path("b.qkk")}, comeAndGo);
    QFAIL("the number wasn't noticed");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 3197);
    QVERIFY2(error.description().contains(
                 "Tabelle »Gekürzt«: die nächste Nummer wäre 33 statt 65. Wurde während des Umzugs"),
             qPrintable(error.description()));
  }
  QVERIFY(isUnfinishedMove(*Database::open(path("b.qkk"))));
}

void TestMove::noticesEverySmallDifference_data() {
  QTest::addColumn<QString>("change");
  QTest::addColumn<QString>("difference");
  const auto column = [](const QString& name) {
    return QString("Spalte »%1«: die Prüfsumme ist anders").arg(name);
  };
  QTest::newRow("money") << "UPDATE Alles SET Betrag = Betrag + 0.0001 WHERE ID = 1" << column("Betrag");
  QTest::newRow("number") << "UPDATE Alles SET Ringe = 5 WHERE ID = 1" << column("Ringe");
  QTest::newRow("double") << "UPDATE Alles SET Teiler = Teiler + 0.00000001 WHERE ID = 1" << column("Teiler");
  QTest::newRow("case") << "UPDATE Alles SET [Schütze Name] = 'groß-weiß 1' WHERE ID = 1"
                        << column("Schütze Name");
  QTest::newRow("date") << "UPDATE Alles SET Am = #01/02/1900# WHERE ID = 1" << column("Am");
  QTest::newRow("yes/no") << "UPDATE Alles SET Gültig = False WHERE ID = 1" << column("Gültig");
  QTest::newRow("empty for Null") << "UPDATE Alles SET Bemerkung = '' WHERE ID = 3"
                                  << "Spalte »Bemerkung«: 1565 Werte statt 1564";
  QTest::newRow("missing") << "DELETE * FROM Alles WHERE ID = 9"
                           << "2344 Zeilen statt 2345";
  QTest::newRow("swapped") << "UPDATE Alles SET Stufe = 3 - Stufe WHERE ID < 3"
                           << "die Prüfsumme der Zeilen ist anders";
}

void TestMove::noticesEverySmallDifference() {
  QFETCH(QString, change);
  QFETCH(QString, difference);
  const auto original = Database::open(competition("a.qkk"));
  const auto changed = Database::open(competition("b.qkk"));
  const dao::TableDef def = original->tableDef("Alles");
  const dao::TableFigures expected = figuresOf(*original, "Alles");
  QCOMPARE(differenceOf(def, expected, figuresOf(*changed, "Alles")), QString());
  changed->execute(change);
  QCOMPARE(differenceOf(def, expected, figuresOf(*changed, "Alles")), difference);
}

void TestMove::killedAtAnyMoment_data() {
  QTest::addColumn<QString>("line");
  QTest::newRow("at once") << QString("Umzug von ");
  QTest::newRow("first table") << QString("[1/");
  QTest::newRow("within a table") << QString("Alles: 30.000 Zeilen ...");
  QTest::newRow("late in a table") << QString("Alles: 90.000 Zeilen ...");
  QTest::newRow("between tables") << QString("[7/");
  QTest::newRow("while comparing") << QString("Prüfe [");
}

void TestMove::killedAtAnyMoment() {
  QFETCH(QString, line);
  const QString from = originals_.filePath("gross.qkk");
  const QString to = path("ziel.qkk");
  const QByteArray before = QCryptographicHash::hash(bytesOf(from), QCryptographicHash::Sha1);

  QVERIFY(killMoveAt(from, to, line));

  QCOMPARE(QCryptographicHash::hash(bytesOf(from), QCryptographicHash::Sha1), before);
  if (QFile::exists(to)) {
    QCOMPARE(errorOf([&] { refuseUnfinishedMove(*Database::open(to)); }), 3356);
    QCOMPARE(errorOf([&] { moveCompetition({from, to}, quiet); }), 3356);
  }
  moveCompetition({originals_.filePath("klein.qkk"), to, true}, quiet);
  QVERIFY(!isUnfinishedMove(*Database::open(to)));
}

void TestMove::aDraftOfAKilledMoveIsNoObstacle() {
  for (const char* name : {"b.qkk.umzug", "b.qkk.umzug-wal"}) {
    QFile rest(path(name));
    QVERIFY(rest.open(QIODevice::WriteOnly));
    rest.write("SQLite format 3");
  }
  moveCompetition({competition("a.qkk"), path("b.qkk")}, quiet);
  QVERIFY(!QFile::exists(path("b.qkk.umzug")));
  QVERIFY(!QFile::exists(path("b.qkk.umzug-wal")));
}

QTEST_GUILESS_MAIN(TestMove)
#include "test_move.moc"
