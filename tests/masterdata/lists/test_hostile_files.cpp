// Two hundred lists that somebody might hand in: a verdict each, and nothing half done.
#include <QtTest>

#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "tests/masterdata/lists/hostile_files.h"
#include "tests/masterdata/lists/list_place.h"

using namespace qk::lists;
using qk::test::HostileFile;
using qk::test::ListPlace;
using Outcome = qk::test::HostileFile::Outcome;

namespace {

constexpr int Files = 200;

/// All tables that a list may touch, and its own.
bool isUntouched(ListPlace& place, const StoreState& before) {
  return sameRows(before, *readStoreState(place.store())) && !lastImport(place.store());
}

/// Every row has its verdict, with a reason where it is a bad one.
bool isWhole(const Judgement& judgement) {
  return std::all_of(judgement.rows.begin(), judgement.rows.end(), [](const JudgedRow& row) {
    if (row.line < 1 || (row.verdict == Verdict::Faulty) != !row.faults.empty()) return false;
    return std::all_of(row.faults.begin(), row.faults.end(),
                       [](const Fault& fault) { return !fault.why.isEmpty() && fault.why.size() < 500; });
  });
}

}  // namespace

class TestHostileFiles : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void aVerdictEach() {
    ListPlace place;
    const auto before = readStoreState(place.store());
    int refused = 0, faulty = 0, fine = 0;
    for (int i = 0; i < Files; ++i) {
      const HostileFile file = qk::test::hostileFile(i);
      const QByteArray name = file.name.toUtf8();
      CsvReading reading = readCsv(file.bytes);
      const Assignment assignment =
          reading.ok() ? recognised(ListKind::Shooters, reading.table.rows.front()) : Assignment();
      if (!reading.ok() || !missingColumns(ListKind::Shooters, assignment).isEmpty()) {
        QVERIFY2(file.outcome == Outcome::Refused || file.outcome == Outcome::Anything,
                 name + ": " + reading.refusal.toUtf8());
        ++refused;
        continue;
      }
      QVERIFY2(file.outcome != Outcome::Refused, name);
      const auto table = std::make_shared<CsvTable>(std::move(reading.table));
      const Judgement judgement = judge(ListKind::Shooters, table, assignment, before);
      QVERIFY2(isWhole(judgement), name);
      QVERIFY2(isUntouched(place, *before), name);
      const int bad = judgement.count(Verdict::Faulty);
      if (file.outcome == Outcome::Fine) QVERIFY2(bad == 0 && !judgement.rows.empty(), name);
      if (file.outcome == Outcome::Faulty) QVERIFY2(bad > 0, name);
      ++(bad > 0 ? faulty : fine);

      takeOverAndBack(place, judgement, *before, name);
    }
    qInfo("%d refused, %d with faults, %d without", refused, faulty, fine);
    QVERIFY(refused > 20 && faulty > 50 && fine > 20);
  }

 private:
  /// What is good of it can be written, is known then, and goes again without a trace.
  void takeOverAndBack(ListPlace& place, const Judgement& judgement, const StoreState& before,
                       const QByteArray& name) {
    const int good = judgement.count(Verdict::New) + judgement.count(Verdict::Changed);
    QVERIFY2(takeOver(place.store(), judgement, name, QDateTime::currentDateTime()).written, name);
    if (good == 0) return;
    const Judgement again =
        judge(ListKind::Shooters, judgement.table, judgement.assignment, readStoreState(place.store()));
    QVERIFY2(again.plan.empty(), name);
    QVERIFY2(again.count(Verdict::Known) >= good, name);
    const Undone undone = undoLastImport(place.store());
    QVERIFY2(undone.done, name + undone.refusals.join(' ').toUtf8());
    QVERIFY2(isUntouched(place, before), name);
  }
};

QTEST_GUILESS_MAIN(TestHostileFiles)
#include "test_hostile_files.moc"
