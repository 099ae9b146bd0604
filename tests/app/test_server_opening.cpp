// A competition on a server, as a desk opens it: the rights that the script gives, the password asked once,
// and what is said when the server, the password or the database is missing.
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTest>
#include <functional>

#include "app/competition_opening.h"
#include "app/ground/unfinished_move.h"
#include "app/shell/kept_timelines.h"
#include "app/shell/password_question.h"
#include "masterdata/making/competition.h"
#include "masterdata/making/move.h"
#include "platform/dao/row_list.h"
#include "platform/schema/schema_build.h"
#include "tests/support/postgres_server.h"
#include "tests/support/test_workplace.h"
#include "tools/wettkampf/commands.h"

using namespace qk;
using namespace qk::test;
using dao::Database;

namespace {

const QStringList kOwnTables = {"Haering_Daten", "Haering_Gruppen", "Haering_Gruppen_Disziplinen"};

/// psql as a role; its error output, empty when all went well.
QString psql(const QString& host, const QString& role, const QString& database,
             const QStringList& arguments) {
  QProcess process;
  QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
  environment.insert("LC_ALL", "C.UTF-8");
  environment.insert("PGOPTIONS", "-c search_path=dao");
  process.setProcessEnvironment(environment);
  process.start(
      "psql",
      QStringList{"-X", "-q", "-h", host, "-U", role, "-d", database, "-v", "ON_ERROR_STOP=1"} + arguments);
  if (!process.waitForFinished(60000)) return "psql doesn't end";
  const QString errors = QString::fromUtf8(process.readAllStandardError());
  return process.exitCode() == 0 ? QString() : "failed: " + errors;
}

void writeAddress(const QString& path, const dao::ServerAddress& address) {
  QFile file(path);
  QVERIFY(file.open(QIODevice::WriteOnly));
  file.write(serverAddressText(address));
}

}  // namespace

class TestServerOpening : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    global_ = std::make_unique<GlobalVariablen>();
    global_->SystemVerzeichnis = place_->path("System") + "/";
    QDir(place_->path()).mkdir("System");
    createDatabase(place_->path("System/LeerSA.mdb"),
                   [](Database& db) { buildSchema(db, embeddedSchema("LeerSA.txt")); });
    opening_ = std::make_unique<CompetitionOpening>(place_->workplace(), *global_);
    path_ = place_->path("Abend.qkk");
  }
  void cleanup() {
    opening_.reset();
    global_.reset();
    place_.reset();
  }

  void aDeskWorksWithTheRightsOfTheScript();
  void afterARaiseTheOwnerOpensFirst();
  void aDeskOfBeforeGoesOnAfterARaise();
  void aDeskCanDoNoMore_data();
  void aDeskCanDoNoMore();
  void aMissingRightToWriteIsNoMissingRightToRead();
  void aDeskThatMayOnlyReadIsToldOnce();
  void thePasswordIsAskedOnce();
  void aWrongPasswordIsAskedAgain();
  void givingUpThePasswordIsToldOnce();
  void aServerThatIsAwayIsToldOnce();
  void aMissingDatabaseIsToldOnce();
  void whyTheServerRefusesIsToldInGerman_data();
  void whyTheServerRefusesIsToldInGerman();
  void aWrongServerFileIsToldOnce_data();
  void aWrongServerFileIsToldOnce();
  void aDatabaseWithoutACompetitionsTablesIsToldOnce();
  void anUnfinishedMoveIsToldAndLeftAlone();
  void aServerThatWasGivenUpIsKnownAfterTheNextStart();

 private:
  void expectRefusal(int number, const QString& text) {
    place_->dialogs
        .expect("Fehler: " + QString::number(number) + " - " + text + "\r\nBitte anderen Wettkampf wählen!!!")
        .titled("Fehler");
  }
  void setFunctionsVersion(const QString& version) {
    QCOMPARE(psql(server_->folder(), "postgres", "pokal2026",
                  {"-c", "UPDATE dao_version SET functions = " + version}),
             QString());
  }
  /// What opening the competition says.
  Error errorOfOpening() const {
    try {
      Database::open(path_);
    } catch (const Error& error) {
      return error;
    }
    return Error(0);
  }
  /// A database that the script has furnished, with a competition made by its owner.
  void furnish() {
    server_ = std::make_unique<PostgresServer>();
    for (int time = 0; time < 2; ++time)  // it may run again
      QCOMPARE(psql(server_->folder(), "postgres", "postgres",
                    {"-v", "datenbank=pokal2026", "-f", QK_SERVER_SCRIPT}),
               QString());
    writeAddress(place_->path("besitzer.qkk"), {{{server_->folder()}}, "pokal2026", "qk_besitzer"});
    makeDemoCompetition(place_->path("besitzer.qkk"));
    writeAddress(path_, {{{server_->folder()}}, "pokal2026", "qk_buero"});
  }

  std::unique_ptr<PostgresServer> server_;
  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<GlobalVariablen> global_;
  std::unique_ptr<CompetitionOpening> opening_;
  QString path_;
};

void TestServerOpening::aDeskWorksWithTheRightsOfTheScript() {
  furnish();
  QVERIFY(opening_->setWettkampf(path_));
  for (const QString& table : kOwnTables) QVERIFY2(global_->Datenbank->hasTable(table), qPrintable(table));
  QVERIFY(place_->dialogs.asked().isEmpty());
  // Whether the standby follows.
  QCOMPARE(psql(server_->folder(), "qk_buero", "pokal2026",
                {"-c", "SELECT 1 / pg_has_role('pg_read_all_stats', 'USAGE')::int"}),
           QString());
  for (const char* table : {"Schuss", "Haering_Daten", "MeldeDisziplin"}) {
    const auto rows = global_->Datenbank->openRecordset(QString("Select * from ") + table);
    rows->addNew();
    const int id = rows->value("ID").toInt();
    rows->update();
    const QString row = QString(" where ID = %1").arg(id);
    QCOMPARE(global_->Datenbank->execute(QString("Update ") + table + " set ID = ID" + row), 1);
    QCOMPARE(global_->Datenbank->execute(QString("Delete * from ") + table + row), 1);
  }
  // The owner takes all of it home, the desk's own tables included.
  opening_->close();
  moveCompetition({place_->path("besitzer.qkk"), place_->path("daheim.qkk")}, [](const MoveStep&) {});
  QVERIFY(Database::open(place_->path("daheim.qkk"))->hasTable("Haering_Daten"));
}

/// The desks' role may not replace the functions of a newer program; the owner's command does it for all.
void TestServerOpening::afterARaiseTheOwnerOpensFirst() {
  furnish();
  setFunctionsVersion("1");
  const Error refused = errorOfOpening();
  QCOMPARE(refused.number(), 3112);
  QVERIFY2(refused.description().contains("Ihr Besitzer muss sie einmal mit diesem öffnen"),
           qPrintable(refused.description()));

  QString said;
  QTextStream out(&said), errors(&said);
  QCOMPARE(runCompetitionTool({"einrichten", path_}, out, errors), 1);
  QVERIFY2(said.contains("3112"), qPrintable(said));
  said.clear();
  QCOMPARE(runCompetitionTool({"einrichten", place_->path("besitzer.qkk")}, out, errors), 0);
  QCOMPARE(
      said,
      QString("Die Datenbank pokal2026 auf %1 ist auf dem Stand dieses Programms.\n").arg(server_->folder()));
  QCOMPARE(errorOfOpening().number(), 0);
}

void TestServerOpening::aDeskOfBeforeGoesOnAfterARaise() {
  furnish();
  setFunctionsVersion("99");
  QCOMPARE(errorOfOpening().number(), 0);
}

void TestServerOpening::aDeskCanDoNoMore_data() {
  QTest::addColumn<QString>("statement");
  for (const char* statement :
       {R"(DROP TABLE "Schuss")", R"(TRUNCATE "Schuss")", R"(ALTER TABLE "Schuss" ADD COLUMN neu int)",
        R"(ALTER TABLE "Schuss" RENAME TO weg)", R"(CREATE INDEX ON "Schuss" ("Startnummer"))",
        R"(CREATE TRIGGER t BEFORE INSERT ON "Schuss" EXECUTE FUNCTION suppress_redundant_updates_trigger())",
        "CREATE ROLE fremd", "ALTER ROLE qk_buero SUPERUSER", "CREATE DATABASE fremd",
        "DROP DATABASE pokal2026", "CREATE SCHEMA fremd", "CREATE TEMPORARY TABLE t(a int)",
        "CREATE EXTENSION dblink", "SELECT * FROM pg_authid", "COPY (SELECT 1) TO PROGRAM 'true'",
        "SET ROLE qk_besitzer"})
    QTest::newRow(statement) << QString(statement);
}

void TestServerOpening::aDeskCanDoNoMore() {
  QFETCH(QString, statement);
  if (!server_) furnish();
  const QString answer = psql(server_->folder(), "qk_buero", "pokal2026", {"-c", statement});
  QVERIFY2(answer.contains("permission denied") || answer.contains("must be"), qPrintable(answer));
}

void TestServerOpening::aMissingRightToWriteIsNoMissingRightToRead() {
  furnish();
  QVERIFY(opening_->setWettkampf(path_));
  QCOMPARE(psql(server_->folder(), "qk_besitzer", "pokal2026",
                {"-c", R"(REVOKE INSERT, UPDATE, DELETE ON "Schuss" FROM qk_buero)"}),
           QString());
  const auto rows = global_->Datenbank->openRecordset("Select * from Schuss");
  const auto told = [](const std::function<void()>& change) {
    try {
      change();
    } catch (const Error& error) {
      return QString::number(error.number()) + " - " + error.description();
    }
    return QString("it went through");
  };
  const QString expected = "3027 - Schreiben nicht möglich; keine Schreibberechtigung. (permission denied";
  rows->addNew();
  for (const QString& said :
       {told([&] { rows->update(); }), told([&] { global_->Datenbank->execute("Delete * from Schuss"); }),
        told([&] { global_->Datenbank->execute("Update Schuss set Ring = 1"); })})
    QVERIFY2(said.startsWith(expected), qPrintable(said));
}

void TestServerOpening::aDeskThatMayOnlyReadIsToldOnce() {
  furnish();
  QCOMPARE(psql(server_->folder(), "qk_besitzer", "pokal2026",
                {"-c", "REVOKE INSERT, UPDATE, DELETE ON ALL TABLES IN SCHEMA dao FROM qk_buero"}),
           QString());
  expectRefusal(3027, "In den Wettkampf darf hier nicht geschrieben werden, nur gelesen: " + path_);
  QVERIFY(!opening_->setWettkampf(path_));
  QVERIFY(!Database::open(path_)->hasTable("Haering_Daten"));
}

void TestServerOpening::thePasswordIsAskedOnce() {
  const PostgresServer server;
  const ServerDatabase database(server.folder(), "qk_secret");
  database.writeAddress(path_);
  QStringList asked;
  const dao::SharedPasswords passwords(passwordQuestion([&](const QString& prompt, const QString&) {
    asked << prompt;
    return QString("geheim");
  }));
  makeDemoCompetition(path_);
  QVERIFY(opening_->setWettkampf(path_));
  for (int line = 0; line < 6; ++line) QVERIFY(Database::open(path_)->hasTable("Haering_Daten"));
  QCOMPARE(asked,
           QStringList{"Passwort von qk_secret für den Wettkampf " + placeOf(database.address()) + ":"});
  QVERIFY(place_->dialogs.asked().isEmpty());
}

void TestServerOpening::aWrongPasswordIsAskedAgain() {
  const PostgresServer server;
  const ServerDatabase database(server.folder(), "qk_secret");
  database.writeAddress(path_);
  QStringList asked;
  const dao::SharedPasswords passwords(passwordQuestion([&](const QString& prompt, const QString&) {
    asked << prompt;
    return QString(asked.size() < 3 ? "falsch" : "geheim");
  }));
  makeCompetition(path_, {});
  QCOMPARE(asked.size(), 3);
  QVERIFY(!asked[0].startsWith("Das Passwort war falsch."));
  QVERIFY(asked[1].startsWith("Das Passwort war falsch."));
  QVERIFY(asked[2].startsWith("Das Passwort war falsch."));
}

void TestServerOpening::givingUpThePasswordIsToldOnce() {
  const PostgresServer server;
  const ServerDatabase database(server.folder(), "qk_secret");
  database.writeAddress(path_);
  expectRefusal(3029, errorOfOpening().description());
  QVERIFY(!opening_->setWettkampf(path_));
}

void TestServerOpening::aServerThatIsAwayIsToldOnce() {
  const ServerDatabase database;
  dao::ServerAddress away = database.address();
  away.endpoints = {{place_->path("System")}};
  writeAddress(path_, away);
  expectRefusal(3043, errorOfOpening().description());
  QVERIFY(!opening_->setWettkampf(path_));
}

void TestServerOpening::aMissingDatabaseIsToldOnce() {
  const ServerDatabase database;
  dao::ServerAddress wrong = database.address();
  wrong.database = "gibtesnicht";
  writeAddress(path_, wrong);
  const Error error = errorOfOpening();
  QVERIFY2(error.description().contains("gibtesnicht"), qPrintable(error.description()));
  expectRefusal(error.number(), error.description());
  QVERIFY(!opening_->setWettkampf(path_));
}

void TestServerOpening::whyTheServerRefusesIsToldInGerman_data() {
  QTest::addColumn<QString>("host");
  QTest::addColumn<QString>("database");
  QTest::addColumn<QString>("user");
  QTest::addColumn<QString>("why");
  QTest::newRow("host") << "gibtesnicht.invalid"
                        << "postgres"
                        << "qk_test"
                        << "Ein Rechner 'gibtesnicht.invalid' ist im Netz nicht bekannt.";
  QTest::newRow("server")
      << "127.0.0.1"
      << "postgres"
      << "qk_test"
      << "Auf '127.0.0.1' läuft kein Datenbankserver, der am Port 1 Verbindungen annimmt.";
  QTest::newRow("database") << ""
                            << "gibtesnicht"
                            << "qk_test"
                            << "Eine Datenbank 'gibtesnicht' gibt es dort nicht.";
  QTest::newRow("user") << ""
                        << "postgres"
                        << "niemand"
                        << "Der Server lässt den Benutzer 'niemand' von diesem Rechner aus nicht zu.";
}

void TestServerOpening::whyTheServerRefusesIsToldInGerman() {
  QFETCH(QString, host);
  QFETCH(QString, database);
  QFETCH(QString, user);
  QFETCH(QString, why);
  const ServerDatabase server;
  const bool elsewhere = !host.isEmpty();
  const dao::ServerEndpoint endpoint =
      elsewhere ? dao::ServerEndpoint{host, 1} : dao::ServerEndpoint{server.folder()};
  const dao::ServerAddress address{{endpoint}, database, user};
  writeAddress(path_, address);
  expectRefusal(3043, "Die Datenbank " + placeOf(address) + " ist nicht erreichbar: " + why);
  QVERIFY(!opening_->setWettkampf(path_));
}

void TestServerOpening::aWrongServerFileIsToldOnce_data() {
  QTest::addColumn<QByteArray>("text");
  QTest::addColumn<QString>("why");
  QTest::newRow("word") << QByteArray("host=stand\nport=5432\ndatenbak=pokal\nbenutzer=buero\n")
                        << "Zeile 3: 'datenbak' ist unbekannt.";
  QTest::newRow("missing") << QByteArray("host=stand\nbenutzer=buero\n") << "'datenbank' fehlt.";
  QTest::newRow("port") << QByteArray("port=viele\n") << "Zeile 1: 'viele' ist keine Portnummer.";
  QTest::newRow("password") << QByteArray("host=stand\npasswort=geheim\n")
                            << "Zeile 2: Ein Passwort darf nicht in der Datei stehen.";
}

void TestServerOpening::aWrongServerFileIsToldOnce() {
  QFETCH(QByteArray, text);
  QFETCH(QString, why);
  place_->files.write(path_, text);
  expectRefusal(3343, "Die Datei nennt keinen brauchbaren Datenbankserver: " + why);
  QVERIFY(!opening_->setWettkampf(path_));
}

void TestServerOpening::aDatabaseWithoutACompetitionsTablesIsToldOnce() {
  const ServerDatabase database;
  database.writeAddress(path_);
  expectRefusal(3343, "Die Datenbank " + placeOf(database.address()) + " ist noch nicht eingerichtet.");
  QVERIFY(!opening_->setWettkampf(path_));
  QCOMPARE(database.native("SELECT to_regnamespace('dao') IS NULL"), QStringList{"t"});
}

void TestServerOpening::anUnfinishedMoveIsToldAndLeftAlone() {
  const ServerDatabase database;
  database.writeAddress(path_);
  const QString from = place_->path("quelle.qkk");
  makeCompetition(from, {});
  try {
    moveCompetition({from, path_}, [](const MoveStep& step) {
      if (step.number == 5) throw Error(3026);
    });
    QFAIL("the move wasn't interrupted");
  } catch (const Error&) {
  }
  Error told(0);
  try {
    refuseUnfinishedMove(*Database::open(path_));
  } catch (const Error& error) {
    told = error;
  }
  QVERIFY2(told.description().contains(from), qPrintable(told.description()));
  expectRefusal(kUnfinishedMoveError, told.description());
  QVERIFY(!opening_->setWettkampf(path_));
  QVERIFY(!Database::open(path_)->hasTable("Haering_Daten"));
}

void TestServerOpening::aServerThatWasGivenUpIsKnownAfterTheNextStart() {
  const PostgresServer own;  // this program takes it for lost from now on
  const ServerDatabase database(own.folder());
  database.writeAddress(path_);
  makeCompetition(path_, {});
  const QString system = database.native("SELECT system_identifier FROM pg_control_system()").first();
  const QString settings = place_->settings.filePath();
  {
    const dao::KeptTimelines timelines(timelinesIn(settings));
    QVERIFY(Database::open(path_)->hasTable("Schuss"));
  }
  QCOMPARE(Settings(settings).value("Tarvex", "Server", "Zeitlinie_" + system), QString("1"));
  place_->settings.setValue("Tarvex", "Server", "Zeitlinie_" + system, "2");
  QCOMPARE(errorOfOpening().number(), 0);
  const dao::KeptTimelines timelines(timelinesIn(settings));
  const Error error = errorOfOpening();
  QCOMPARE(error.number(), 3043);
  QVERIFY2(error.description().contains("war früher der Hauptserver"), qPrintable(error.description()));
}

QTEST_GUILESS_MAIN(TestServerOpening)
#include "test_server_opening.moc"
