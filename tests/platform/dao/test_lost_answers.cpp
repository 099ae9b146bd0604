// Connections that break between a request and its answer: nothing is stored twice, nothing gets lost, and
// what is certain to have changed nothing is done again without a word.
#include <QtTest>
#include <utility>

#include "platform/dao/changes.h"
#include "platform/dao/postgres/postgres_engine.h"
#include "tests/platform/dao/store_factory.h"
#include "tests/support/cutting_proxy.h"
#include "tests/support/postgres_server.h"

using namespace qk;
using namespace qk::dao;
using qk::test::CuttingProxy;
using qk::test::PostgresServer;
using qk::test::ServerDatabase;
using Cut = qk::test::CuttingProxy::Cut;

class TestLostAnswers : public QObject {
  Q_OBJECT

  QTemporaryDir folder_;
  std::unique_ptr<ServerDatabase> server_;
  std::unique_ptr<CuttingProxy> proxy_;
  std::unique_ptr<Database> database_;

  void openThroughProxy(const QString& serverFolder) {
    proxy_ = std::make_unique<CuttingProxy>(serverFolder);
    ServerAddress address = server_->address();
    address.endpoints = {{proxy_->folder()}};
    const QString path = folder_.filePath(address.database + ".qkk");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(serverAddressText(address));
    file.close();
    database_ = Database::create(path);
    database_->createTable(articles());
  }
  std::unique_ptr<Recordset> articlesOf(const QString& condition = {}) const {
    return database_->openRecordset("Select * from Artikel" + condition);
  }
  QStringList stored() const {
    return server_->native("SELECT \"ID\", \"Name\" FROM dao.\"Artikel\" ORDER BY \"ID\"");
  }
  /// Begins a new row; its number.
  static int begin(Recordset& rows, const QString& name) {
    rows.addNew();
    rows.setValue("Name", name);
    rows.setValue("Preis", "1,2345");
    rows.setValue("Am", "20.11.2026 10:41:07");
    return rows.value("ID").toInt();
  }
  static QString row(int id, const QString& name) { return QString::number(id) + "|" + name; }
  /// Stores the row, which fails as its connection breaks.
  void loseUpdate(Recordset& rows, const QByteArray& words, Cut cut) {
    const int before = proxy_->cuts();
    proxy_->cutNext(words, cut);
    QCOMPARE(errorOf([&] { rows.update(); }), 3043);
    QCOMPARE(proxy_->cuts(), before + 1);
  }

 private Q_SLOTS:
  void init() {
    server_ = std::make_unique<ServerDatabase>();
    openThroughProxy(server_->folder());
  }
  void cleanup() {
    database_.reset();
    proxy_.reset();
    server_.reset();
  }

  void aRepeatedUpdateStoresTheRowOnce_data() {
    QTest::addColumn<Cut>("cut");
    QTest::addColumn<int>("storedBefore");
    QTest::newRow("request lost") << Cut::Request << 0;
    QTest::newRow("answer lost") << Cut::Answer << 1;
  }
  void aRepeatedUpdateStoresTheRowOnce() {
    QFETCH(Cut, cut);
    QFETCH(int, storedBefore);
    const auto rows = articlesOf();
    const int id = begin(*rows, "Schuß");
    loseUpdate(*rows, "INSERT INTO", cut);
    QCOMPARE(stored().size(), storedBefore);
    rows->update();
    QCOMPARE(stored(), QStringList{row(id, "Schuß")});
    const int next = begin(*rows, "Schuß");
    rows->update();
    QCOMPARE(stored(), QStringList({row(id, "Schuß"), row(next, "Schuß")}));
  }

  /// The first repetition finds the server away, too.
  void aRowThatComesThroughLateIsNotTakenForTheNextOneLikeIt() {
    const auto rows = articlesOf();
    const int id = begin(*rows, "Schuß");
    loseUpdate(*rows, "INSERT INTO", Cut::Answer);
    proxy_->cutNext("SELECT count(*)", Cut::Request);
    proxy_->cutThen("SELECT count(*)", Cut::Request);
    QCOMPARE(errorOf([&] { rows->update(); }), 3043);
    QCOMPARE(proxy_->cuts(), 3);
    rows->update();
    const int next = begin(*rows, "Schuß");
    rows->update();
    QCOMPARE(stored(), QStringList({row(id, "Schuß"), row(next, "Schuß")}));
  }

  /// Whether a definition has changed, and the row itself: what is asked more is felt far from the server.
  void aRowWaitsForTwoAnswers() {
    const auto addRows = [&] {
      for (int i = 0; i < 2 * Engine::kNumberBlock; ++i) {
        const auto rows = articlesOf();
        begin(*rows, "Schuß");
        rows->update();
      }
    };
    addRows();  // after which all that comes again is prepared
    const int before = proxy_->turns();
    addRows();
    QCOMPARE(proxy_->turns() - before, 2 * 2 * Engine::kNumberBlock);
  }

  /// With statements that are prepared meanwhile, and beyond the first block of numbers.
  void everyRowOfManyIsStoredOnce() {
    const auto rows = articlesOf();
    QStringList expected;
    for (int i = 0; i < 80; ++i) {
      const int id = begin(*rows, "Nr. " + QString::number(i));
      const QByteArray name = rows->value("Name").toString().toUtf8();
      if (i % 4 == 3) loseUpdate(*rows, name, i % 8 == 3 ? Cut::Answer : Cut::Request);
      rows->update();
      expected.append(row(id, name));
    }
    QCOMPARE(stored(), expected);
  }

  /// A station keeps its shot until it is stored: an aborted one comes again as a new row.
  void aRowThatWasGivenUpIsTakenUpByTheSameRow() {
    int id = 0;
    for (const Cut cut : {Cut::Answer, Cut::Request}) {
      const auto given = articlesOf();
      begin(*given, "Schuß");
      loseUpdate(*given, "INSERT INTO", cut);
      given->cancelUpdate();
      const auto again = articlesOf();
      id = begin(*again, "Schuß");
      again->update();
      QCOMPARE(stored(), QStringList{row(id, "Schuß")});
      database_->execute("Delete * from Artikel");
    }
  }

  void aRowThatWasGivenUpStandsInNobodysWay() {
    const auto rows = articlesOf();
    const int lost = begin(*rows, "aufgegeben");
    loseUpdate(*rows, "INSERT INTO", Cut::Answer);
    rows->cancelUpdate();
    const int other = begin(*rows, "andere");
    rows->update();
    QCOMPARE(stored(), QStringList({row(lost, "aufgegeben"), row(other, "andere")}));
  }

  void twoLostRowsAreBothKept() {
    const auto one = articlesOf(), two = articlesOf();
    const int first = begin(*one, "a"), second = begin(*two, "b");
    loseUpdate(*one, "INSERT INTO", Cut::Answer);
    loseUpdate(*two, "INSERT INTO", Cut::Answer);
    one->update();
    two->update();
    QCOMPARE(stored(), QStringList({row(first, "a"), row(second, "b")}));
  }

  void aLostReservationCostsOnlyNumbers_data() { aRepeatedUpdateStoresTheRowOnce_data(); }
  void aLostReservationCostsOnlyNumbers() {
    QFETCH(Cut, cut);
    const auto rows = articlesOf();
    proxy_->cutNext("qk_reserve", cut);
    const int id = begin(*rows, "a");
    QCOMPARE(proxy_->cuts(), 1);
    rows->update();
    QCOMPARE(stored(), QStringList{row(id, "a")});
  }

  void aChangeCanBeRepeated() {
    const auto rows = articlesOf();
    const int id = begin(*rows, "alt");
    rows->update();
    for (const Cut cut : {Cut::Answer, Cut::Request}) {
      const auto changed = articlesOf();
      changed->edit();
      changed->setValue("Name", "neu");
      loseUpdate(*changed, "UPDATE", cut);
      changed->update();
      QCOMPARE(stored(), QStringList{row(id, "neu")});
      QCOMPARE(changed->value("Name").toString(), QString("neu"));
      database_->execute("Update Artikel set Name = 'alt'");
    }
  }

  void aDeletionCanBeRepeated() {
    const auto rows = articlesOf();
    addArticle(*rows, "a");
    addArticle(*rows, "b");
    for (const Cut cut : {Cut::Answer, Cut::Request}) {
      rows->moveFirst();
      proxy_->cutNext("DELETE", cut);
      QCOMPARE(errorOf([&] { rows->remove(); }), 3043);
      rows->remove();
      QCOMPARE(errorOf([&] { rows->remove(); }), cut == Cut::Answer ? 3167 : 3021);
    }
    QVERIFY(stored().isEmpty());
  }

  void aTransactionKnowsItsFate_data() { aRepeatedUpdateStoresTheRowOnce_data(); }
  void aTransactionKnowsItsFate() {
    QFETCH(Cut, cut);
    Engine& engine = database_->engine();
    const qint64 commits = engine.commitCount();
    proxy_->cutNext("COMMIT", cut);
    const int error = errorOf([&] {
      engine.transaction([&] {
        database_->execute("INSERT INTO Artikel (ID, Name) VALUES (1, 'a')");
        database_->execute("INSERT INTO Artikel (ID, Name) VALUES (2, 'b')");
      });
    });
    QCOMPARE(proxy_->cuts(), 1);
    const bool committed = cut == Cut::Answer;
    QCOMPARE(error, committed ? 0 : 3043);
    QCOMPARE(stored().size(), committed ? 2 : 0);
    QCOMPARE(engine.commitCount(), commits + (committed ? 1 : 0));
    database_->execute("INSERT INTO Artikel (ID, Name) VALUES (3, 'c')");
    QCOMPARE(stored().last(), row(3, "c"));
  }

  /// The server dies before it hears of the commit, and gives the transaction's number, which it has never
  /// written down, to another desk, whose transaction is stored.
  void aTransactionDoesntTakeAnothersFateForItsOwn() {
    PostgresServer own;
    cleanup();
    server_ = std::make_unique<ServerDatabase>(own.folder());
    openThroughProxy(own.folder());
    server_->native("ALTER SYSTEM SET wal_writer_delay = '10s'");
    own.kill();
    own.again();
    qlonglong lost = 0, given = 0;
    const auto next = [&] { return server_->native("SELECT pg_current_xact_id()").first().toLongLong(); };
    proxy_->cutNext("COMMIT", Cut::Request, [&] {
      lost =
          server_->native("SELECT max(backend_xid::text::bigint) FROM pg_stat_activity").first().toLongLong();
      own.kill();
      own.again();
      while (given < lost) given = next();
    });
    const auto add = [&] {
      database_->engine().transaction(
          [&] { database_->execute("INSERT INTO Artikel (ID, Name) VALUES (1, 'a')"); });
    };
    QCOMPARE(errorOf(add), 3043);
    QVERIFY(lost > 0);
    QCOMPARE(given, lost);
    QVERIFY(stored().isEmpty());
    add();
    QCOMPARE(stored(), QStringList{row(1, "a")});
    cleanup();
  }

  void changesAreStoredOnce_data() { whatCountsOnIsDoneOnce_data(); }
  void changesAreStoredOnce() {
    QFETCH(Cut, cut);
    QFETCH(bool, away);
    database_->execute("INSERT INTO Artikel (ID, Name, Preis) VALUES (1, 'a', 1)");
    Changes changes(*database_);
    changes.expect("Artikel", 1, {{"Preis", 1}});
    changes.update("Artikel", 1, {{"Name", "b"}});
    changes.execute("Update Artikel set Preis = Preis + 1");
    proxy_->cutNext("COMMIT", cut, [&] { proxy_->refuse(away); });
    const bool known = cut == Cut::Answer && !away;
    QCOMPARE(errorOf([&] { changes.write(); }), known ? 0 : 3043);
    if (away) QCOMPARE(errorOf([&] { changes.write(); }), 3043);
    proxy_->refuse(false);
    changes.write();
    QCOMPARE(server_->native("SELECT \"Name\", \"Preis\" FROM dao.\"Artikel\""), QStringList{"b|2.0000"});
  }

  void whatCountsOnIsDoneOnce_data() {
    QTest::addColumn<Cut>("cut");
    QTest::addColumn<bool>("away");
    for (const Cut cut : {Cut::Request, Cut::Answer})
      for (const bool away : {false, true})
        QTest::addRow("%s, %s", cut == Cut::Request ? "request lost" : "answer lost",
                      away ? "server away" : "server there")
            << cut << away;
  }
  void whatCountsOnIsDoneOnce() {
    QFETCH(Cut, cut);
    QFETCH(bool, away);
    database_->execute("INSERT INTO Artikel (ID, Name, Preis) VALUES (1, 'a', 1)");
    for (const QString statement :
         {"Update Artikel set Preis = Preis + 1", "INSERT INTO Artikel (Name) VALUES ('b')"}) {
      const int before = proxy_->cuts();
      proxy_->cutNext("COMMIT", cut, [&] { proxy_->refuse(away); });
      const bool known = cut == Cut::Answer && !away;
      int affected = 0;
      QCOMPARE(errorOf([&] { affected = database_->execute(statement); }), known ? 0 : 3043);
      QCOMPARE(proxy_->cuts(), before + 1);
      if (away) QCOMPARE(errorOf([&] { database_->execute(statement); }), 3043);
      proxy_->refuse(false);
      if (!known) affected = database_->execute(statement);
      QCOMPARE(affected, 1);
    }
    QCOMPARE(server_->native("SELECT \"Name\", \"Preis\" FROM dao.\"Artikel\" ORDER BY \"ID\""),
             QStringList({"a|2.0000", "b|NULL"}));
    // The same once more is another change.
    QCOMPARE(database_->execute("Update Artikel set Preis = Preis + 1 where Name = 'a'"), 1);
    QCOMPARE(database_->execute("Update Artikel set Preis = Preis + 1 where Name = 'a'"), 1);
    QCOMPARE(server_->native("SELECT \"Preis\" FROM dao.\"Artikel\" WHERE \"Name\" = 'a'"),
             QStringList{"4.0000"});
  }

  /// The commit never reaches the server, and the answer to the question after it gets lost, too: the mark
  /// that stands there then is the question's own.
  void aQuestionDoesntTakeItsOwnMarkForTheTransactions() {
    database_->execute("INSERT INTO Artikel (ID, Name, Preis) VALUES (1, 'a', 1)");
    const QString statement = "Update Artikel set Preis = Preis + 1";
    proxy_->cutNext("COMMIT", Cut::Request);
    proxy_->cutThen("INSERT INTO dao_marks VALUES ($1", Cut::Answer);
    QCOMPARE(errorOf([&] { database_->execute(statement); }), 3043);
    QCOMPARE(proxy_->cuts(), 2);
    QCOMPARE(server_->native("SELECT \"Preis\" FROM dao.\"Artikel\""), QStringList{"1.0000"});
    QCOMPARE(database_->execute(statement), 1);
    QCOMPARE(server_->native("SELECT \"Preis\" FROM dao.\"Artikel\""), QStringList{"2.0000"});
  }

  void aLostBeginningStoresNothing() {
    for (const Cut cut : {Cut::Answer, Cut::Request}) {
      proxy_->cutNext("BEGIN", cut);
      const auto add = [&] {
        database_->engine().transaction([&] { database_->execute("INSERT INTO Artikel (ID) VALUES (1)"); });
      };
      QCOMPARE(errorOf(add), 3043);
      QVERIFY(stored().isEmpty());
      QCOMPARE(errorOf(add), 0);
      database_->execute("Delete * from Artikel");
    }
    QCOMPARE(proxy_->cuts(), 2);
  }

  /// Whoever says "Wiederholen" gets the rows, each once.
  void aListThatCouldntBeReadIsReadWhole_data() {
    QTest::addColumn<QString>("query");
    QTest::addColumn<Cut>("cut");
    const QString byName = "Select * from Artikel order by Name";
    const QString grouped = "Select Name, Count(*) as Zahl from Artikel group by Name order by Name";
    QTest::newRow("in pages") << "Select * from Artikel" << Cut::Request;
    QTest::newRow("in an order") << byName << Cut::Request;
    QTest::newRow("grouped") << grouped << Cut::Request;
    QTest::newRow("in an order, begun") << byName << Cut::InAnswer;
    QTest::newRow("grouped, begun") << grouped << Cut::InAnswer;
  }
  void aListThatCouldntBeReadIsReadWhole() {
    QFETCH(QString, query);
    QFETCH(Cut, cut);
    constexpr int kRows = 20000;
    server_->native(QString("INSERT INTO dao.\"Artikel\" (\"ID\", \"Name\") SELECT i, lpad(i::text, 5, '0') "
                            "FROM generate_series(1, %1) i")
                        .arg(kRows));
    const auto rows = database_->openRecordset(query);
    proxy_->cutNext("Artikel", cut, [this] { proxy_->refuse(true); });
    QCOMPARE(errorOf([&] { rows->eof(); }), 3043);
    QCOMPARE(proxy_->cuts(), 1);
    proxy_->refuse(false);
    QVERIFY(!rows->eof());
    QCOMPARE(rows->value("Name").toString(), QString("00001"));
    rows->moveLast();
    QCOMPARE(rows->recordCount(), kRows);
    QCOMPARE(rows->value("Name").toString(), QString::number(kRows));
  }

  void aReadIsRepeatedUntilItHasBroughtARow() {
    addArticle(*articlesOf(), "a");
    Engine& engine = database_->engine();
    const QString many = "SELECT 'Zeile' || i FROM generate_series(1, 20000) i";
    int count = 0;
    const auto take = [&](const NativeRow&) {
      ++count;
      return true;
    };
    for (const Cut cut : {Cut::Request, Cut::Answer}) {
      proxy_->cutNext("generate_series", cut);
      engine.read(many, {}, take);
      QCOMPARE(std::exchange(count, 0), 20000);
      proxy_->cutNext("Artikel", cut);
      QCOMPARE(walk(*articlesOf(), "Name"), QStringList{"a"});
    }
    QCOMPARE(proxy_->cuts(), 4);
    proxy_->cutNext("generate_series", Cut::InAnswer);
    QCOMPARE(errorOf([&] { engine.read(many + " WHERE true", {}, take); }), 3043);
    QVERIFY(count > 0 && count < 20000);
    count = 0;
    engine.read(many, {}, take);
    QCOMPARE(count, 20000);
  }
};

QTEST_GUILESS_MAIN(TestLostAnswers)
#include "test_lost_answers.moc"
