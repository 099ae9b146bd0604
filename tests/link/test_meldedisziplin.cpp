// The look-ups of a discipline key in the competition, and the import with a competition behind it.
#include <QTest>

#include "link/haeringschuss.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "tests/link/records.h"
#include "tests/support/test_store.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestMeldeDisziplin : public QObject {
  Q_OBJECT

  std::unique_ptr<TestWorkplace> place_;
  std::unique_ptr<dao::Database> db_;

  void addKey(const QString& key, const QVariant& weapon, const QVariant& factor) {
    const auto rows = db_->openRecordset("Select * from MeldeDisziplin");
    rows->addNew();
    rows->setValue("MeldeKZ", key);
    rows->setValue("ScheibenKZ", weapon);
    rows->setValue("TeilerfaktorESA", factor);
    rows->update();
  }

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    prepareStore(place_->path("wettkampf.qkk"));
    db_ = dao::Database::create(place_->path("wettkampf.qkk"));
    db_->createTable({"MeldeDisziplin",
                      {{"ID", dao::FieldType::Long, 0, true},
                       {"MeldeKZ", dao::FieldType::Text, 50},
                       {"ScheibenKZ", dao::FieldType::Text, 50},
                       {"TeilerfaktorESA", dao::FieldType::Double}},
                      {{"PrimaryKey", {"ID"}, true, true}}});
    addKey("1.10", "LG", 1);
    addKey("2.10", "LP", 2.5);
    addKey("1.80", QVariant(), QVariant());
    addKey("DSB 1.30", "ZS", 4);
    addKey("1.40", "KK", 0);
    addKey("O'Neill", "XX", 3);
    addKey("abc", "YY", 5);
    addKey("DSB 1.10", QVariant(), 1);
  }
  void cleanup() {
    db_.reset();
    place_.reset();
  }

  void weapons_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("weapon");
    QTest::newRow("as it is") << "2.10"
                              << "LP";
    QTest::newRow("reduced to digits and dots") << "DSB 2.10 a"
                                                << "LP";
    QTest::newRow("prefix stands in the row") << "DSB 1.30"
                                              << "ZS";
    QTest::newRow("prefix only in the row") << "1.30"
                                            << "";
    QTest::newRow("whatever the case") << "ABC"
                                       << "YY";
    QTest::newRow("row without a weapon") << "1.80"
                                          << "";
    QTest::newRow("row without a weapon isn't looked up again") << "DSB 1.10"
                                                                << "";
    QTest::newRow("unknown is empty, not LG") << "9.99"
                                              << "";
    QTest::newRow("quote") << "O'Neill"
                           << "XX";
    QTest::newRow("only quotes") << "''"
                                 << "";
    QTest::newRow("empty") << ""
                           << "";
  }
  void weapons() {
    QFETCH(QString, key);
    QTEST(ErmittleWaffe(db_.get(), key), "weapon");
  }

  void factors_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<double>("factor");
    QTest::newRow("as it is") << "2.10" << 2.5;
    QTest::newRow("prefix removed") << "DSB 2.10" << 2.5;
    QTest::newRow("every prefix removed") << "DSBDSB2.10DSB" << 2.5;
    QTest::newRow("one pass only") << "DDSBSB2.10" << 1.0;
    QTest::newRow("as spelled") << "dsb 2.10" << 1.0;
    QTest::newRow("not reduced") << "2.10 a" << 1.0;
    QTest::newRow("whatever the case") << "ABC" << 5.0;
    QTest::newRow("stored 0") << "1.40" << 1.0;
    QTest::newRow("stored nothing") << "1.80" << 1.0;
    QTest::newRow("unknown") << "9.99" << 1.0;
    QTest::newRow("quote") << "O'Neill" << 3.0;
  }
  void factors() {
    QFETCH(QString, key);
    QTEST(ErmittleTeilerFaktor(db_.get(), key), "factor");
  }

  void importDividesByTheFactor_data() {
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("radius");
    QTest::addColumn<QString>("weapon");
    QTest::addColumn<double>("teiler");
    QTest::newRow("factor 1") << "1.10"
                              << "123,47"
                              << "LG" << 123.4;
    QTest::newRow("factor 2.5, cut") << "2.10"
                                     << "123,47"
                                     << "LP" << 49.3;
    QTest::newRow("prefix") << "DSB 2.10"
                            << "100"
                            << "LP" << 40.0;
    QTest::newRow("radius 0") << "2.10"
                              << "0"
                              << "LP" << 0.0;
    QTest::newRow("unknown key") << "9.99"
                                 << "77,77"
                                 << "" << 77.7;
  }
  void importDividesByTheFactor() {
    QFETCH(QString, key);
    QFETCH(QString, radius);
    QStringList fields = shotFields();
    fields[18] = key;
    fields[13] = radius;
    QString line = shotRecord(fields);
    HaeringSchuss shot;
    QVERIFY(shot.Haering_Import_Zeile(line, db_.get(), [](const Error&) { return ErrorAnswer::Abort; }));
    QTEST(shot.sWaffe, "weapon");
    QTEST(shot.dblTeiler, "teiler");
  }

  void failedLookUpIsReported_data() {
    QTest::addColumn<QString>("radius");
    QTest::addColumn<QList<int>>("numbers");
    QTest::newRow("nothing to divide by") << "123,47" << QList<int>{3078, 3078, 11};
    QTest::newRow("nothing to divide") << "0" << QList<int>{3078, 3078};
  }
  void failedLookUpIsReported() {
    QFETCH(QString, radius);
    QFETCH(QList<int>, numbers);
    db_->dropTable("MeldeDisziplin");
    QList<int> reportedNumbers;
    HaeringSchuss shot;
    QString line = shotRecordWith(13, radius);
    QVERIFY(shot.Haering_Import_Zeile(line, db_.get(), [&](const Error& error) {
      reportedNumbers << error.number();
      return ErrorAnswer::Ignore;
    }));
    QCOMPARE(reportedNumbers, numbers);
    QCOMPARE(shot.sWaffe, QString());
    QCOMPARE(shot.dblTeiler, 0.0);
  }
};

QTEST_GUILESS_MAIN(TestMeldeDisziplin)
#include "test_meldedisziplin.moc"
