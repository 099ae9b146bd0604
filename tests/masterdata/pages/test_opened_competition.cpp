// Which competitions the program for master data opens.
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include "app/ground/unfinished_move.h"
#include "masterdata/making/competition.h"
#include "masterdata/pages/opened_competition.h"
#include "platform/dao/changes.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/error.h"
#include "tests/support/error_of.h"
#include "tests/support/test_store.h"

using namespace qk;
using namespace qk::test;

class TestOpenedCompetition : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    folder_ = std::make_unique<QTemporaryDir>();
    path_ = folder_->filePath("Pokal.qkk");
    static const StoreOriginal original(makeDemoCompetition);
    original.copyTo(path_);
  }

  void opensAndNamesIt() {
    const auto database = openForMasterData(path_);
    QCOMPARE(titleOf(*database, path_), "Jubiläumsschießen Grünau – Stammdaten (" + path_ + ")");
    database->execute("DELETE FROM Wettkampf");
    QCOMPARE(titleOf(*database, path_), "Stammdaten (" + path_ + ")");
  }

  void weaponsGetNames() {
    const auto database = openForMasterData(path_);
    const auto rows = database->openRecordset("SELECT ID, KZ FROM Waffen ORDER BY ID");
    QStringList weapons;
    for (; !rows->eof(); rows->moveNext())
      weapons << rows->value("ID").toString() + rows->value("KZ").toString();
    QVERIFY(weapons.contains("1LG") && weapons.contains("2LP"));
    // New ones get numbers of their own.
    dao::Changes changes(*database);
    QVERIFY(changes.insert("Waffen", {{"KZ", "KK"}, {"Bezeichnung", "Kleinkaliber"}}) > weapons.size());
    changes.write();
  }

  void whatIsNotThereIsNotMade() {
    const QString gone = folder_->filePath("fort.qkk");
    QCOMPARE(errorOf([&] { openForMasterData(gone); }), 53);
    QVERIFY(!QFile::exists(gone));
  }

  void anotherStoreIsNoCompetition() {
    dao::Database::open(path_)->dropTable("Disziplin");
    QCOMPARE(errorOf([&] { openForMasterData(path_); }), 3078);
  }

  void anUnfinishedMoveIsRefused() {
    {
      const auto database = dao::Database::open(path_);
      database->createTable({kUnfinishedMove, {{"Quelle"}}, {}});
    }
    QCOMPARE(errorOf([&] { openForMasterData(path_); }), kUnfinishedMoveError);
  }

  void whatCannotBeWrittenIsRefused() {
    forbidWriting(path_);
    QCOMPARE(errorOf([&] { openForMasterData(path_); }), 3027);
  }

 private:
  std::unique_ptr<QTemporaryDir> folder_;
  QString path_;
};

QTEST_GUILESS_MAIN(TestOpenedCompetition)
#include "test_opened_competition.moc"
