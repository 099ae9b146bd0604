// Random statements of the query language on the same rows in a file and on a server: equal rows, or the same
// error. QK_SAME_ANSWERS=FIRST,COUNT runs other seeds than the usual ones.
#include <QTest>

#include "tests/platform/dao/random_query.h"
#include "tests/platform/dao/twin_rows.h"

using namespace qk::dao;
using namespace qk::dao::test;

class TestSameAnswers : public QObject {
  Q_OBJECT

  std::unique_ptr<TwinStores> twins_;
  quint32 first_ = 1, count_ = 1500;
  int run_ = 0, failed_ = 0;
  int different_ = 0;

  void heed(quint32 seed, const QString& difference) {
    ++run_;
    if (difference.isEmpty()) {
      failed_ += twins_->lastFailed();
      return;
    }
    ++different_;
    qWarning("seed %u: %s", seed, qPrintable(difference));
  }
  void refill() {
    for (const TableDef& table : randomQueryTables()) {
      if (twins_->file().hasTable(table.name))
        for (Database* database : {&twins_->file(), &twins_->server()}) database->dropTable(table.name);
      twins_->createTable(table);
      fill(*twins_, table, 16, 5);
    }
  }

 private Q_SLOTS:
  void initTestCase() {
    const QStringList wanted = qEnvironmentVariable("QK_SAME_ANSWERS").split(',');
    if (wanted.size() == 2) {
      first_ = wanted[0].toUInt();
      count_ = wanted[1].toUInt();
    }
    twins_ = std::make_unique<TwinStores>();
    refill();
  }
  void cleanupTestCase() { twins_.reset(); }

  void init() { run_ = failed_ = different_ = 0; }
  void cleanup() {
    qInfo("%d statements, %d the same error, %d different", run_, failed_, different_);
    QCOMPARE(different_, 0);
  }

  void readings() {
    for (quint32 seed = first_; seed < first_ + count_; ++seed) {
      const RandomQuery::Reading reading = RandomQuery(seed).reading();
      heed(seed, twins_->compareRows(reading.text, reading.ordered ? Order::Defined : Order::Open));
    }
    QVERIFY2(failed_ * 4 < run_, "most statements must mean something");
  }

  void criteria() {
    for (quint32 seed = first_; seed < first_ + count_ / 4; ++seed)
      heed(seed, twins_->compareFound("Select * from Werte", RandomQuery(seed).criterion()));
  }

  void actions() {
    constexpr quint32 kBetweenRefills = 40;
    for (quint32 seed = first_; seed < first_ + count_ / 4; ++seed) {
      QString difference = twins_->compareAction(RandomQuery(seed).action());
      const bool failed = twins_->lastFailed();
      for (const QString& table : {"Werte", "Orte", "Lose"})
        if (const QString rows = twins_->compareRows(table, Order::Defined); difference.isEmpty() && !rows.isEmpty())
          difference = RandomQuery(seed).action() + "\n  leaves " + rows;
      heed(seed, difference);
      failed_ += failed;
      if (!difference.isEmpty() || (seed - first_) % kBetweenRefills == 0) refill();
    }
  }
};

QTEST_GUILESS_MAIN(TestSameAnswers)
#include "test_same_answers.moc"
