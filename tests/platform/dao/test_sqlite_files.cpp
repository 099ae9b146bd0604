// SQLite files: what can't be opened and why, files of other tools, what stands on the disk.
#include <sqlite3.h>

#include <QtTest>

#include "tests/platform/dao/store_factory.h"

using namespace qk::dao;

class TestSqliteFiles : public QObject {
  Q_OBJECT

  QTemporaryDir folder_;

  QString path(const QString& name) const { return folder_.filePath(name); }
  void put(const QString& name, const QByteArray& content) {
    QFile file(path(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
  }
  /// Statements run by a plain tool.
  void plainly(const QString& name, const char* statements) {
    sqlite3* plain = nullptr;
    QCOMPARE(sqlite3_open(path(name).toUtf8().constData(), &plain), SQLITE_OK);
    char* message = nullptr;
    sqlite3_exec(plain, statements, nullptr, nullptr, &message);
    if (message) qWarning() << message;
    sqlite3_close(plain);
  }

 private Q_SLOTS:
  void saysWhyAFileCantBeOpened() {
    QCOMPARE(errorOf([&] { Database::open(path("fehlt.qkk")); }), 3024);
    QVERIFY(!QFile::exists(path("fehlt.qkk")));
    QCOMPARE(errorOf([&] { Database::open(path("kein/ordner.qkk")); }), 3044);
    QCOMPARE(errorOf([&] { Database::open("C:\\Daten\\x.qkk"); }), 3044);
    QCOMPARE(errorOf([&] { Database::open(folder_.path()); }), 3051);
    put("leer.qkk", "");
    QCOMPARE(errorOf([&] { Database::open(path("leer.qkk")); }), 3343);
    put("text.qkk", QByteArray(5000, 'x'));
    QCOMPARE(errorOf([&] { Database::open(path("text.qkk")); }), 3343);
    put("kopf.qkk", QByteArray("SQLite format 3", 16) + QByteArray(5000, '\xff'));
    QVERIFY(QList<int>({3343, 3049}).contains(errorOf([&] { Database::open(path("kopf.qkk")); })));
    QCOMPARE(errorOf([&] { Database::create(path("text.qkk")); }), 3204);
    QCOMPARE(errorOf([&] { Database::create(path("kein/ordner.qkk")); }), 3044);
    QFile text(path("text.qkk"));
    QVERIFY(text.open(QIODevice::ReadOnly));
    QCOMPARE(text.readAll(), QByteArray(5000, 'x'));
  }

  void aTornFileIsDamaged() {
    {
      const auto database = Database::create(path("riss.qkk"), {.durable = false});
      database->createTable(articles());
      const auto rows = database->openRecordset("Artikel");
      for (int i = 0; i < 500; ++i) addArticle(*rows, QString(40, 'x'));
    }
    QFile file(path("riss.qkk"));
    QVERIFY(file.resize(file.size() / 2));
    QCOMPARE(errorOf([&] { Database::open(path("riss.qkk")); }), 3049);  // at once, not with the first row
  }

  void findsTheFileWhateverItsCase() {
    Database::create(path("LeerSA.mdb"));
    QCOMPARE(errorOf([&] { Database::open(path("LeerSa.mdb")); }), 0);
  }

  void readsFilesOfOtherTools() {
    plainly("fremd.db",
            "CREATE TABLE Orte (id INTEGER PRIMARY KEY, name VARCHAR(30) NOT NULL, flag BOOLEAN, price "
            "DECIMAL(10,2), "
            "day DATE, note, CONSTRAINT u UNIQUE (name));"
            "INSERT INTO Orte VALUES (1, 'Ulm', 1, 2.5, '2026-11-20', 'x'), (2, 'Köln', NULL, 3, NULL, NULL);"
            "CREATE VIEW Kurz AS SELECT id, name FROM Orte;"
            "CREATE INDEX tag ON Orte (day); CREATE INDEX klein ON Orte (lower(name));");
    const auto database = Database::open(path("fremd.db"));
    const TableDef def = database->tableDef("orte");
    QCOMPARE(def.field("name")->type, FieldType::Text);
    QCOMPARE(def.field("name")->size, 30);
    QCOMPARE(def.field("price")->type, FieldType::Currency);
    QCOMPARE(def.field("note")->type, FieldType::Memo);
    QVERIFY(!def.field("id")->autoNumber);
    QCOMPARE(def.primary()->fields, QStringList({"id"}));
    QCOMPARE(def.indexes.size(), size_t(3));
    const auto towns = database->openRecordset("Select * from Orte order by id");
    QCOMPARE(walk(*towns, "flag"), QStringList({"-1", "0"}));  // Null of others is False
    const auto rows = database->openRecordset("Select * from Orte where name <> ''");
    QCOMPARE(rows->value("flag").toInt(), -1);
    QCOMPARE(rows->value("day").toDateTime().date(), QDate(2026, 11, 20));
    rows->addNew();
    rows->setValue("name", "Bonn");
    rows->update();
    QCOMPARE(walk(*rows, "id"), QStringList({"1", "2", "3"}));
    rows->moveLast();
    QCOMPARE(rows->value("name").toString(), "Bonn");
    QCOMPARE(walk(*database->openRecordset("Kurz"), "name").size(), 3);
    rows->addNew();
    rows->setValue("name", "Ulm");
    QCOMPARE(errorOf([&] { rows->update(); }), 3022);
  }

  void otherToolsReadOurFiles() {
    {
      const auto database = Database::create(path("unser.qkk"));
      database->createTable(articles());
      database->appendIndex("Artikel", {"Name", {"Name"}, false, false, false});
      addArticle(*database->openRecordset("Artikel"), "a");
      database->createQuery("Nur", "Select ID, Name from Artikel where Fertig = False and Menge >= 0");
    }
    plainly(
        "unser.qkk",
        "INSERT INTO Artikel (Name, Menge) VALUES ('b', 1); UPDATE Artikel SET Name = 'B' WHERE Name = 'B';"
        "CREATE TABLE probe AS SELECT count(*) AS n FROM Nur;");
    const auto database = Database::open(path("unser.qkk"));
    QCOMPARE(single(*database, "SELECT n FROM probe"), "2");
    QCOMPARE(walk(*database->openRecordset("Artikel"), "Name"), QStringList({"a", "B"}));
    QCOMPARE(single(*database, "PRAGMA integrity_check"), "ok");
  }

  void commitsAreDurableUnlessAskedOtherwise() {
    const auto durable = Database::create(path("fest.qkk"));
    QCOMPARE(single(*durable, "PRAGMA synchronous"), "2");
    QCOMPARE(single(*durable, "PRAGMA journal_mode"), "wal");
    const auto loose = Database::open(path("fest.qkk"), OpenOptions{.durable = false});
    QCOMPARE(single(*loose, "PRAGMA synchronous"), "0");
  }

  void readOnlyStaysReadOnly() {
    {
      const auto database = Database::create(path("vorlage.mdb"));
      database->createTable(articles());
      addArticle(*database->openRecordset("Artikel"), "a");
    }
    const auto database = Database::open(path("vorlage.mdb"), true);
    const auto rows = database->openRecordset("Artikel");
    QCOMPARE(rows->value("Name").toString(), "a");
    QCOMPARE(errorOf([&] { rows->edit(); }), 3027);
    QCOMPARE(errorOf([&] { database->execute("Delete * from Artikel"); }), 3027);
    QCOMPARE(errorOf([&] { database->createTable({"T", {text("a")}, {}}); }), 3027);
  }

  void aHeldWriteLockOfAnotherIsReported() {
    const auto database = Database::create(path("sperre.qkk"));
    database->createTable(articles());
    const auto rows = database->openRecordset("Artikel");
    rows->addNew();
    rows->setValue("Name", "a");
    sqlite3* other = nullptr;
    QCOMPARE(sqlite3_open(path("sperre.qkk").toUtf8().constData(), &other), SQLITE_OK);
    QCOMPARE(sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr), SQLITE_OK);
    database->engine().read("PRAGMA busy_timeout = 1", {}, [](const NativeRow&) { return false; });
    QCOMPARE(errorOf([&] { rows->update(); }), 3260);
    QCOMPARE(sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(other);
    rows->update();
    QCOMPARE(walk(*rows, "Name"), QStringList({"a"}));
  }

  /// So that a store whose numbers end there can go on after it.
  void theLastNumberIsOneThatAColumnCanHold() {
    const auto database = Database::create(path("ende.qkk"), {.durable = false});
    database->createTable(articles());
    database->execute("INSERT INTO Artikel (ID, Name) VALUES (2147483640, 'a')");
    addArticle(*database->openRecordset("Artikel"), "b");
    const auto catalogue = database->engine().catalogue();
    QCOMPARE(database->engine().lastNumber(*catalogue->info("Artikel")), 2147483647);
  }

  /// A lock that comes only with the first write could find that somebody else has written since the first
  /// read.
  void aTransactionTakesTheWriteLockAtOnce() {
    const auto database = Database::create(path("zuerst.qkk"), {.durable = false});
    database->createTable(articles());
    const auto other = Database::open(path("zuerst.qkk"), OpenOptions{.durable = false});
    other->engine().read("PRAGMA busy_timeout = 1", {}, [](const NativeRow&) { return false; });
    database->engine().transaction(
        [&] { QCOMPARE(errorOf([&] { other->execute("INSERT INTO Artikel (Name) VALUES ('x')"); }), 3260); });
    QCOMPARE(errorOf([&] { other->execute("INSERT INTO Artikel (Name) VALUES ('x')"); }), 0);
  }

  void aFullDiskIsReportedAndTheRowCanBeStoredLater() {
    const auto database = Database::create(path("voll.qkk"), {.durable = false});
    database->createTable(articles());
    const auto rows = database->openRecordset("Artikel");
    const QString pages = single(*database, "PRAGMA page_count");
    database->engine().read("PRAGMA max_page_count = " + pages, {}, [](const NativeRow&) { return false; });
    int error = 0;
    int stored = 0;
    while (error == 0 && stored < 10000) {
      rows->addNew();
      rows->setValue("Name", QString(50, 'x'));
      error = errorOf([&] { rows->update(); });
      stored += error == 0;
    }
    QCOMPARE(error, 3026);
    database->engine().read("PRAGMA max_page_count = 100000", {}, [](const NativeRow&) { return false; });
    rows->update();
    const auto all = database->openRecordset("Artikel");
    all->moveLast();
    QCOMPARE(all->recordCount(), stored + 1);
  }
};

QTEST_GUILESS_MAIN(TestSqliteFiles)
#include "test_sqlite_files.moc"
