// A recordset as the data of a view: counted and read only as far as it is shown.
#include <QAbstractItemModelTester>
#include <QTest>
#include <set>

#include "platform/dao/recordset.h"
#include "platform/grid/recordset_table.h"
#include "platform/runtime/error.h"

using namespace qk;

namespace {

// Rows (number, double, date, Null) that know which of them were read and how far somebody walked.
class Rows : public dao::Recordset {
 public:
  struct Log {
    std::set<int> read;
    int steps = 0;
    std::set<int> deleted;
    bool broken = false;
  };
  Rows(int count, Log& log) : count_(count), log_(log) {}

  bool bof() const override { return place_ < 0; }
  bool eof() const override { return place_ >= count_; }
  void moveFirst() override { place_ = 0; }
  void moveLast() override {
    if (log_.broken) throw Error(3112);
    place_ = count_ - 1;
  }
  void moveNext() override { ++place_, ++log_.steps; }
  void movePrevious() override { --place_, ++log_.steps; }
  int fieldCount() const override { return int(fields_.size()); }
  const dao::FieldDef& fieldDef(int position) const override { return fields_[size_t(position)]; }
  QVariant value(int position) const override {
    if (log_.deleted.contains(place_)) throw Error(3167);
    log_.read.insert(place_);
    switch (position) {
      case 0:
        return place_;
      case 1:
        return place_ + 0.5;
      case 2:
        return QDateTime(QDate(2026, 11, 20), QTime());
      default:
        return {};
    }
  }
  int recordCount() const override { return count_; }

  int fieldPosition(const QString&) const override { throw Error(3265); }
  void setValue(int, const QVariant&) override { throw Error(3020); }
  void addNew() override { throw Error(3027); }
  void edit() override { throw Error(3027); }
  void update() override { throw Error(3020); }
  void cancelUpdate() override {}
  void remove() override { throw Error(3027); }
  void findFirst(const QString&) override {}
  bool noMatch() const override { return true; }
  void setIndex(const QString&) override { throw Error(3015); }
  void seek(const QString&, const QVariantList&) override { throw Error(3015); }
  QByteArray bookmark() const override { return {}; }
  void setBookmark(const QByteArray&) override { throw Error(3159); }
  void requery() override {}

 private:
  const std::vector<dao::FieldDef> fields_{{.name = "ID", .type = dao::FieldType::Long},
                                           {.name = "Wert", .type = dao::FieldType::Double},
                                           {.name = "Datum", .type = dao::FieldType::Date},
                                           {.name = "Text", .type = dao::FieldType::Text}};
  int count_;
  int place_ = 0;
  Log& log_;
};

}  // namespace

class TestRecordsetTable : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { log = {}; }
  void cellsAreGermanText();
  void onlyWhatIsAskedForIsRead();
  void theEndIsNear();
  void aRowIsReadOnce();
  void aDeletedRowSaysSo();
  void aFailureLeavesTheFormerRows();
  void emptyAndUnset();
  void titlesStandAboveTheFields();
  void theModelKeepsItsPromises();

 private:
  QString cell(const RecordsetTable& table, int row, int column) {
    return table.index(row, column).data().toString();
  }
  Rows::Log log;
};

void TestRecordsetTable::cellsAreGermanText() {
  RecordsetTable table;
  table.setRecordset(std::make_unique<Rows>(3, log));
  QCOMPARE(table.rowCount(), 3);
  QCOMPARE(table.columnCount(), 4);
  QCOMPARE(cell(table, 1, 0), "1");
  QCOMPARE(cell(table, 1, 1), "1,5");
  QCOMPARE(cell(table, 1, 2), "20.11.2026");
  QCOMPARE(cell(table, 1, 3), "");
  QVERIFY(table.index(0, 1).data(Qt::TextAlignmentRole).toInt() & Qt::AlignRight);
  QVERIFY(table.index(0, 3).data(Qt::TextAlignmentRole).toInt() & Qt::AlignLeft);
}

void TestRecordsetTable::onlyWhatIsAskedForIsRead() {
  RecordsetTable table;
  table.setRecordset(std::make_unique<Rows>(20000, log));
  QVERIFY(log.read.empty());
  QCOMPARE(cell(table, 5, 0), "5");
  QCOMPARE(cell(table, 6, 0), "6");
  QCOMPARE(cell(table, 19990, 0), "19990");
  QCOMPARE(log.read, (std::set<int>{5, 6, 19990}));
}

void TestRecordsetTable::theEndIsNear() {
  RecordsetTable table;
  table.setRecordset(std::make_unique<Rows>(20000, log));
  cell(table, 0, 0);
  cell(table, 19999, 0);
  cell(table, 3, 0);
  QVERIFY(log.steps <= 3);
}

void TestRecordsetTable::aRowIsReadOnce() {
  RecordsetTable table;
  table.setRecordset(std::make_unique<Rows>(10, log));
  QCOMPARE(cell(table, 4, 0), "4");
  log.read.clear();
  QCOMPARE(cell(table, 4, 1), "4,5");
  QVERIFY(log.read.empty());
}

void TestRecordsetTable::aDeletedRowSaysSo() {
  RecordsetTable table;
  log.deleted = {2};
  table.setRecordset(std::make_unique<Rows>(4, log));
  QCOMPARE(cell(table, 2, 0), "#Gelöscht");
  QCOMPARE(cell(table, 3, 0), "3");
}

void TestRecordsetTable::aFailureLeavesTheFormerRows() {
  RecordsetTable table;
  table.setRecordset(std::make_unique<Rows>(4, log));
  Rows::Log broken;
  broken.broken = true;
  QVERIFY_THROWS_EXCEPTION(Error, table.setRecordset(std::make_unique<Rows>(9, broken)));
  QCOMPARE(table.rowCount(), 4);
  QCOMPARE(cell(table, 3, 0), "3");
}

void TestRecordsetTable::emptyAndUnset() {
  RecordsetTable table;
  QVERIFY(!table.hasRecordset());
  QCOMPARE(table.rowCount(), 0);
  QCOMPARE(table.columnCount(), 0);
  table.setRecordset(std::make_unique<Rows>(0, log));
  QVERIFY(table.hasRecordset());
  QCOMPARE(table.rowCount(), 0);
  QCOMPARE(table.columnCount(), 4);
}

void TestRecordsetTable::titlesStandAboveTheFields() {
  RecordsetTable table;
  table.setTitles({{1, "Ergebnis"}});
  table.setRecordset(std::make_unique<Rows>(1, log));
  QCOMPARE(table.headerData(0, Qt::Horizontal, Qt::DisplayRole).toString(), "ID");
  QCOMPARE(table.headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "Ergebnis");
}

void TestRecordsetTable::theModelKeepsItsPromises() {
  RecordsetTable table;
  QAbstractItemModelTester tester(&table, QAbstractItemModelTester::FailureReportingMode::QtTest);
  table.setRecordset(std::make_unique<Rows>(3, log));
  table.setRecordset(std::make_unique<Rows>(0, log));
  QCOMPARE(table.rowCount(), 0);
}

QTEST_MAIN(TestRecordsetTable)
#include "test_recordset_table.moc"
