// What grows with a table and what must not, counted.
#include <QtTest>

#include "platform/dao/engine/engine.h"
#include "tests/platform/dao/store_factory.h"

using namespace qk::dao;

namespace {

constexpr int kRows = 5000;

}  // namespace

class TestGrowth : public QObject {
  Q_OBJECT

  std::unique_ptr<Store> store_;
  std::unique_ptr<Database> database_;

  /// Scans among the plans of everything that the work hands to the engine.
  template <class Work>
  QStringList scansOf(Work&& work) {
    QStringList texts;
    store_->listen(*database_, [&](const QString& text) { texts.append(text); });
    work();
    store_->listen(*database_, {});
    QStringList found;
    for (const QString& text : std::as_const(texts)) found += store_->scans(*database_, text);
    if (texts.isEmpty()) found.append("nothing was run");
    return found;
  }

 private Q_SLOTS:
  void initTestCase() {
    store_ = newStore();
    database_ = store_->connect();
    database_->createTable(articles());
    database_->appendIndex("Artikel", {"Offen", {"Fertig", "Menge"}, false, false, false});
    database_->execute("INSERT INTO Artikel (Name, Menge) VALUES ('n', 1)");
    while (database_->execute("INSERT INTO Artikel (Name, Menge) SELECT Name, ID MOD 100 FROM Artikel") <
           kRows / 2) {
    }
  }

  void addingScansNothing() {
    const QStringList scans =
        scansOf([&] { addArticle(*database_->openRecordset("Select * from Artikel"), "neu"); });
    QCOMPARE(scans, QStringList());
  }

  void findingAKeyScansNothing() {
    const QStringList scans = scansOf([&] {
      const auto rows = database_->openRecordset("Select * from Artikel");
      rows->findFirst("ID = 4000");
      rows->edit();
      rows->setValue("Fertig", true);
      rows->update();
    });
    QCOMPARE(scans, QStringList());
  }

  void anIndexedConditionScansNothing() {
    const QStringList scans = scansOf([&] {
      const auto rows =
          database_->openRecordset("Select * from Artikel where fertig = 0 and Menge = 3 order by Name, Am");
      rows->moveLast();
      database_->execute("Update Artikel Set Name = '7' WHERE ID = 17");
    });
    QCOMPARE(scans, QStringList());
  }

  void anOrderedRecordsetThatNobodyWalksReadsNothing() {
    int run = 0;
    store_->listen(*database_, [&](const QString& text) { run += text.contains("Artikel"); });
    const auto rows = database_->openRecordset("Select * from Artikel order by Name, Am");
    store_->listen(*database_, {});
    QCOMPARE(run, 0);
  }

  void walkingReadsAPageOfKeysAtATime() {
    const auto rows = database_->openRecordset("Select * from Artikel");
    int read = 0;
    store_->listen(*database_, [&](const QString&) { ++read; });
    for (int i = 0; i < 40; ++i) rows->moveNext();
    store_->listen(*database_, {});
    QVERIFY2(read <= 3, qPrintable(QString::number(read)));
  }

  void anAdditionCostsTheSameOnAFullTable() {
    database_->createTable({"Leer", articles().fields, {}});
    const auto statements = [&](const QString& table) {
      int count = 0;
      database_->reserveNumbers(table);
      store_->listen(*database_, [&](const QString&) { ++count; });
      addArticle(*database_->openRecordset("Select * from " + table), "neu");
      store_->listen(*database_, {});
      return count;
    };
    statements("Leer");
    statements("Artikel");
    QCOMPARE(statements("Artikel"), statements("Leer"));
  }
};

QTEST_GUILESS_MAIN(TestGrowth)
#include "test_growth.moc"
