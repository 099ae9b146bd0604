// Moving a competition to a server and back: equal to the last row, and interrupted at any moment it leaves a
// target on the server that says so.
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QtTest>
#include <limits>

#include "app/ground/unfinished_move.h"
#include "masterdata/making/competition.h"
#include "masterdata/making/move.h"
#include "platform/dao/engine/engine.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/money.h"
#include "tests/masterdata/making/move_store.h"
#include "tests/support/error_of.h"
#include "tests/support/postgres_server.h"
#include "tests/tools/tool_answer.h"

using namespace qk;
using namespace qk::test;
using dao::Database;

namespace {

constexpr int kManyRows = 100000;

void quiet(const MoveStep&) {}

}  // namespace

class TestMoveServer : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase();
  void init();

  void thereAndBackIsEqual();
  void fromServerToServer();
  void numbersGoOnWhereTheyWere();
  void numbersOfAServerGoOnWhereTheyWere();
  void aNumberThatARowBroughtAlongCounts();
  void noticesANumberThatWouldComeAgain();
  void keepsWhatIsOnTheServer();
  void makesACompetitionOnAServer();
  void aValueThatTheTargetCannotHoldIsNamed();
  void refusesASourceThatIsOpenElsewhere();
  void refusesATargetThatLacksCharacters();
  void aServerThatIsAwayIsTold();
  void aMissingDatabaseIsTold();
  void killedAtAnyMoment_data();
  void killedAtAnyMoment();

 private:
  QString path(const QString& name) const { return folder_->filePath(name); }

  QTemporaryDir originals_;
  std::unique_ptr<QTemporaryDir> folder_;
  std::unique_ptr<ServerDatabase> database_;
  QString server_;  // the file that names the database
};

void TestMoveServer::initTestCase() {
  const QString small = originals_.filePath("klein.qkk");
  makeDemoCompetition(small);
  QFile::copy(small, originals_.filePath("gross.qkk"));
  addHardTables(*Database::open(small), 2345);
  addHardTables(*Database::open(originals_.filePath("gross.qkk"), {.durable = false}), kManyRows);
}

void TestMoveServer::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  database_ = std::make_unique<ServerDatabase>();
  server_ = path("server.qkk");
  database_->writeAddress(server_);
}

void TestMoveServer::thereAndBackIsEqual() {
  const QString from = originals_.filePath("gross.qkk");
  const MoveResult there = moveCompetition({from, server_}, quiet);
  QVERIFY(there.rows > kManyRows);
  QVERIFY(!isUnfinishedMove(*Database::open(server_)));
  const MoveResult back = moveCompetition({server_, path("zurueck.qkk")}, quiet);
  QCOMPARE(back.rows, there.rows);
  const QStringList original = contentsOf(from);
  QVERIFY(original.size() > kManyRows);
  QCOMPARE(firstDifference(contentsOf(server_), original), QString());
  QCOMPARE(firstDifference(contentsOf(path("zurueck.qkk")), original), QString());
}

void TestMoveServer::fromServerToServer() {
  const ServerDatabase second;
  second.writeAddress(path("zweiter.qkk"));
  moveCompetition({originals_.filePath("klein.qkk"), server_}, quiet);
  moveCompetition({server_, path("zweiter.qkk")}, quiet);
  QCOMPARE(firstDifference(contentsOf(path("zweiter.qkk")), contentsOf(originals_.filePath("klein.qkk"))),
           QString());
}

void TestMoveServer::numbersGoOnWhereTheyWere() {
  const QString from = path("a.qkk");
  QFile::copy(originals_.filePath("klein.qkk"), from);
  Database::open(from)->execute("DELETE * FROM Alles WHERE ID > 2000");
  const ServerDatabase second;
  second.writeAddress(path("zweiter.qkk"));
  moveCompetition({from, server_}, quiet);
  moveCompetition({server_, path("zweiter.qkk")}, quiet);
  moveCompetition({path("zweiter.qkk"), path("zurueck.qkk")}, quiet);
  const QStringList original = nextNumbersOf(from);
  for (const char* number : {"Alles: 2369", "Gekürzt: 33", "Geleert: 33", "Unberührt: 1"})
    QVERIFY2(original.contains(number), number);
  for (const char* moved : {"server.qkk", "zweiter.qkk", "zurueck.qkk"})
    QCOMPARE(firstDifference(nextNumbersOf(path(moved)), original), QString());
  const auto store = Database::open(server_);
  const auto rows = store->openRecordset("Alles");
  rows->addNew();
  rows->setValue("Schütze Name", "Neu");
  QCOMPARE(rows->value("Betrag").value<Money>().units(), 125000);
  rows->update();
}

/// Those that it gave out itself.
void TestMoveServer::numbersOfAServerGoOnWhereTheyWere() {
  {
    const auto store = Database::create(server_);
    addHardTables(*store, 70);
    store->execute("DELETE * FROM Alles WHERE ID > 5");
  }
  const ServerDatabase second;
  second.writeAddress(path("zweiter.qkk"));
  moveCompetition({server_, path("zweiter.qkk")}, quiet);
  moveCompetition({server_, path("datei.qkk")}, quiet);
  const QStringList original = {"Alles: 97", "Gekürzt: 33", "Geleert: 33", "Unberührt: 1"};
  for (const char* store : {"server.qkk", "zweiter.qkk", "datei.qkk"})
    QCOMPARE(nextNumbersOf(path(store)), original);
}

/// A server's count hasn't seen it. Once it has moved it isn't given out again, even when its row is gone.
void TestMoveServer::aNumberThatARowBroughtAlongCounts() {
  makeCompetition(server_, {});
  Database::open(server_)->engine().write(R"(INSERT INTO "Verein" ("ID", "Name") VALUES (500, 'Mit'))", {});
  const ServerDatabase second;
  second.writeAddress(path("zweiter.qkk"));
  for (const char* to : {"zweiter.qkk", "datei.qkk"}) {
    moveCompetition({server_, path(to)}, quiet);
    Database::open(path(to))->execute("DELETE * FROM Verein");
    const QStringList numbers = nextNumbersOf(path(to));
    QVERIFY2(numbers.contains("Verein: 501"), qPrintable(numbers.join(", ")));
  }
}

void TestMoveServer::noticesANumberThatWouldComeAgain() {
  moveCompetition({originals_.filePath("klein.qkk"), server_}, quiet);
  const auto takeOne = [&](const MoveStep& step) {
    if (step.kind == MoveStep::Kind::Copying && step.done && step.table == "Unberührt")
      database_->native("SET search_path = dao; SELECT qk_next('\"Unberührt\"', 'Nr')");
  };
  try {
    moveCompetition({server_, path("datei.qkk")}, takeOne);
    QFAIL("the number wasn't noticed");
  } catch (const Error& error) {
    QCOMPARE(error.number(), 3197);
    QVERIFY2(error.description().contains("Tabelle »Unberührt«: die nächste Nummer wäre 1 statt 2."),
             qPrintable(error.description()));
  }
}

void TestMoveServer::keepsWhatIsOnTheServer() {
  makeCompetition(server_, {});
  const QStringList before = contentsOf(server_);
  for (const QStringList& more : {QStringList{}, QStringList{"--von-vorn"}}) {
    const qk::test::ToolAnswer answer =
        qk::test::callTool(QStringList{"umziehen", originals_.filePath("klein.qkk"), server_} + more);
    QCOMPARE(answer.status, 1);
    QCOMPARE(answer.errors, QString("Fehler: 3204 - Das Ziel ist nicht leer, es bleibt unverändert.\n"));
    QCOMPARE(firstDifference(contentsOf(server_), before), QString());
  }
}

void TestMoveServer::makesACompetitionOnAServer() {
  for (const char* command : {"demo", "neu"}) {
    const ServerDatabase database;
    const QString to = path(QString(command) + ".qkk");
    database.writeAddress(to);
    const qk::test::ToolAnswer made = qk::test::callTool({command, to});
    QCOMPARE(made.errors, QString());
    QCOMPARE(made.status, 0);
    QVERIFY(Database::open(to)->hasTable("Wettkampf"));
    QVERIFY(!isUnfinishedMove(*Database::open(to)));
    const qk::test::ToolAnswer again = qk::test::callTool({command, to});
    QCOMPARE(again.status, 1);
    QCOMPARE(again.errors, QString("Den Wettkampf gibt es schon, er bleibt unverändert: %1\n").arg(to));
  }
}

void TestMoveServer::aValueThatTheTargetCannotHoldIsNamed() {
  const QString from = path("quelle.qkk");
  makeCompetition(from, {});
  const QString nul = QString("a") + QChar(u'\0') + "b";
  Database::open(from)->engine().write(R"(INSERT INTO "Verein" ("ID", "Name") VALUES (1, ?))", {nul});
  qk::test::ToolAnswer answer = qk::test::callTool({"umziehen", from, server_});
  QVERIFY(answer.status != 0);
  QVERIFY2(answer.errors.contains("Tabelle »Verein«: Ein Text enthält das Zeichen NUL"),
           qPrintable(answer.errors));
  QVERIFY(isUnfinishedMove(*Database::open(server_)));

  const ServerDatabase second;
  second.writeAddress(path("zweiter.qkk"));
  {
    const auto store = Database::create(path("zweiter.qkk"));
    store->createTable({"Kasse", {{"Betrag", dao::FieldType::Currency}}, {}});
    const auto rows = store->openRecordset("Kasse");
    rows->addNew();
    rows->setValue("Betrag", QVariant::fromValue(Money::fromUnits(std::numeric_limits<qint64>::max())));
    rows->update();
  }
  answer = qk::test::callTool({"umziehen", path("zweiter.qkk"), path("datei.qkk")});
  QVERIFY(answer.status != 0);
  QVERIFY2(answer.errors.contains("Tabelle »Kasse«: Überlauf"), qPrintable(answer.errors));
}

void TestMoveServer::refusesASourceThatIsOpenElsewhere() {
  makeCompetition(server_, {});
  {
    const auto desk = Database::open(server_);
    QCOMPARE(errorOf([&] { moveCompetition({server_, path("b.qkk")}, quiet); }), 3045);
    QVERIFY(!QFile::exists(path("b.qkk")));
  }
  moveCompetition({server_, path("b.qkk")}, quiet);
}

/// Before it copies: the first name with such a character would be the last row otherwise.
void TestMoveServer::refusesATargetThatLacksCharacters() {
  dao::ServerAddress poor = database_->address();
  poor.database += "_latin1";
  database_->native("CREATE DATABASE \"" + poor.database +
                    "\" OWNER qk_test ENCODING 'LATIN1' LOCALE 'C' LOCALE_PROVIDER libc TEMPLATE template0");
  QFile file(path("arm.qkk"));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(serverAddressText(poor));
  file.close();
  const qk::test::ToolAnswer answer =
      qk::test::callTool({"umziehen", originals_.filePath("klein.qkk"), path("arm.qkk")});
  database_->native("DROP DATABASE \"" + poor.database + "\" WITH (FORCE)");
  QCOMPARE(answer.status, 1);
  QVERIFY2(answer.errors.startsWith("Fehler: 3251 - Das Ziel speichert Zeichen als LATIN1"),
           qPrintable(answer.errors));
  QVERIFY2(!answer.out.contains("Zeilen"), qPrintable(answer.out));
}

void TestMoveServer::aServerThatIsAwayIsTold() {
  dao::ServerAddress nobody = database_->address();
  nobody.endpoints = {{path("")}};
  QFile file(path("weg.qkk"));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(serverAddressText(nobody));
  file.close();
  const qk::test::ToolAnswer answer =
      qk::test::callTool({"umziehen", originals_.filePath("klein.qkk"), path("weg.qkk")});
  QCOMPARE(answer.status, 1);
  QVERIFY2(answer.errors.startsWith("Fehler: 3043 - "), qPrintable(answer.errors));
}

void TestMoveServer::aMissingDatabaseIsTold() {
  dao::ServerAddress wrong = database_->address();
  wrong.database = "gibtesnicht";
  QFile file(path("ohne.qkk"));
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(serverAddressText(wrong));
  file.close();
  const qk::test::ToolAnswer answer =
      qk::test::callTool({"umziehen", originals_.filePath("klein.qkk"), path("ohne.qkk")});
  QCOMPARE(answer.status, 1);
  QVERIFY2(answer.errors.contains("gibtesnicht"), qPrintable(answer.errors));
}

void TestMoveServer::killedAtAnyMoment_data() {
  QTest::addColumn<QString>("line");
  QTest::newRow("at once") << QString("Umzug von ");
  QTest::newRow("first table") << QString("[1/");
  QTest::newRow("within a table") << QString("Alles: 30.000 Zeilen ...");
  QTest::newRow("between tables") << QString("[7/");
  QTest::newRow("while comparing") << QString("Prüfe [");
}

void TestMoveServer::killedAtAnyMoment() {
  QFETCH(QString, line);
  QVERIFY(killMoveAt(originals_.filePath("gross.qkk"), server_, line));
  const bool begun =
      !database_->native("SELECT 1 FROM pg_class WHERE relname = '" + kUnfinishedMove + "'").isEmpty();
  if (begun) {
    QCOMPARE(errorOf([&] { refuseUnfinishedMove(*Database::open(server_)); }), kUnfinishedMoveError);
    QCOMPARE(errorOf([&] {
               moveCompetition({originals_.filePath("klein.qkk"), server_}, quiet);
             }),
             kUnfinishedMoveError);
  }
  moveCompetition({originals_.filePath("klein.qkk"), server_, true}, quiet);
  QCOMPARE(firstDifference(contentsOf(server_), contentsOf(originals_.filePath("klein.qkk"))), QString());
}

QTEST_GUILESS_MAIN(TestMoveServer)
#include "test_move_server.moc"
