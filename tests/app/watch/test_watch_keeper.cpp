// The keeper has sources looked at in threads of their own: at their time, while they are wanted, and one
// that never answers keeps nobody waiting.
#include <QSignalSpy>
#include <QTest>
#include <QTimerEvent>
#include <atomic>

#include "app/watch/watch_keeper.h"
#include "tests/app/watch/test_storage.h"
#include "tests/support/test_time.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Finds what the test wants, in a folder that may hang.
class ScriptedSource : public WatchSource {
 public:
  explicit ScriptedSource(std::shared_ptr<TestStorage> storage) : storage_(std::move(storage)) {}

  std::vector<Threat> look(const QDateTime&) override {
    storage_->isThere("/hier");
    ++looks;
    if (!threatens) return {};
    return {Threat{"a", ThreatLevel::Warning, "Zeile", "", "", "", "", {}}};
  }
  std::chrono::seconds interval() const override { return std::chrono::seconds(30); }
  std::chrono::seconds patience() const override { return std::chrono::seconds(10); }
  Threat silence(const QDateTime& since) const override {
    return {"still", ThreatLevel::Grave, "still seit " + since.toString("HH:mm:ss"), "", "", "", "", {}};
  }

  std::atomic<bool> threatens = false;
  std::atomic<int> looks = 0;

 private:
  std::shared_ptr<TestStorage> storage_;
};

}  // namespace

class TestWatchKeeper : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void looksAtItsTime();
  void theWindowsThreadIsNeverAsked();
  void aFindingIsTold();
  void whatNobodyWantsIsNotLookedAt();
  void whatWasFoundIsFollowedToItsEnd();
  void aHangingLookIsAFinding();
  void aHangingLookKeepsNobodyWaiting();
  void aKeeperMayGoBeforeItsLook();
  void lookingNowFollowsALookUnderWay();
  void aClockThatWasSetBackMakesAllDue();
  void whatIsRemovedHasEnded();

 private:
  struct Watch {
    std::shared_ptr<TestStorage> storage = std::make_shared<TestStorage>();
    std::shared_ptr<ScriptedSource> source = std::make_shared<ScriptedSource>(storage);
    TestClock clock;
    WatchKeeper keeper{clock};

    /// The keeper's timer strikes, so many seconds later.
    void later(int seconds) {
      clock.advance(1000 * seconds);
      auto* timer = keeper.findChild<QTimer*>();
      QTimerEvent event(timer->timerId());
      QCoreApplication::sendEvent(timer, &event);
    }
    /// So many looks have been taken over, and no other one is under way.
    bool wait(int looks) {
      return QTest::qWaitFor([&] { return source->looks == looks && !keeper.isLooking(); });
    }
  };
};

void TestWatchKeeper::looksAtItsTime() {
  Watch watch;
  watch.keeper.add(watch.source);
  QVERIFY(watch.wait(1));
  watch.later(29);
  QVERIFY(!watch.keeper.isLooking());
  watch.later(1);
  QVERIFY(watch.keeper.isLooking());
  QVERIFY(watch.wait(2));
}

void TestWatchKeeper::theWindowsThreadIsNeverAsked() {
  Watch watch;
  watch.keeper.add(watch.source);
  for (int look = 1; look < 5; ++look) {
    QVERIFY(watch.wait(look));
    watch.later(30);
  }
  QVERIFY(watch.wait(5));
  QVERIFY(!watch.storage->wasAskedIn(std::this_thread::get_id()));
}

void TestWatchKeeper::aFindingIsTold() {
  Watch watch;
  QSignalSpy changed(&watch.keeper, &WatchKeeper::changed);
  watch.source->threatens = true;
  watch.keeper.add(watch.source);
  QTRY_COMPARE(watch.keeper.book().line(), QString("Zeile"));
  QCOMPARE(changed.count(), 1);
  watch.source->threatens = false;
  watch.later(30);
  QTRY_COMPARE(watch.keeper.book().line(), QString());
  QCOMPARE(changed.count(), 2);
  QCOMPARE(watch.keeper.book().past().size(), size_t(1));
}

void TestWatchKeeper::whatNobodyWantsIsNotLookedAt() {
  Watch watch;
  bool wanted = false;
  watch.keeper.add(watch.source, [&wanted] { return wanted; });
  watch.later(60);
  QVERIFY(!watch.keeper.isLooking());
  wanted = true;
  watch.later(1);
  QVERIFY(watch.wait(1));
}

void TestWatchKeeper::whatWasFoundIsFollowedToItsEnd() {
  Watch watch;
  bool wanted = true;
  watch.source->threatens = true;
  watch.keeper.add(watch.source, [&wanted] { return wanted; });
  QTRY_COMPARE(watch.keeper.book().line(), QString("Zeile"));
  wanted = false;
  watch.source->threatens = false;
  watch.later(30);
  QTRY_COMPARE(watch.keeper.book().line(), QString());
  watch.later(30);
  QVERIFY(!watch.keeper.isLooking());
}

void TestWatchKeeper::aHangingLookIsAFinding() {
  Watch watch;
  watch.storage->hang("/hier");
  watch.keeper.add(watch.source);
  QTRY_COMPARE(watch.storage->asked(), 1);
  watch.later(9);
  QCOMPARE(watch.keeper.book().line(), QString());
  watch.later(1);
  QCOMPARE(watch.keeper.book().line(), QString("still seit 10:00:00"));
  watch.later(60);
  QCOMPARE(watch.storage->asked(), 1);  // one look at a time, however long it takes
  watch.storage->letGo();
  QTRY_COMPARE(watch.keeper.book().line(), QString());
  QCOMPARE(watch.keeper.book().past().front().threat.key, QString("still"));
}

void TestWatchKeeper::aHangingLookKeepsNobodyWaiting() {
  Watch watch;
  watch.storage->hang("/hier");
  watch.keeper.add(watch.source);
  const auto other = std::make_shared<ScriptedSource>(std::make_shared<TestStorage>());
  other->threatens = true;
  watch.keeper.add(other);
  QTRY_COMPARE(watch.keeper.book().line(), QString("Zeile"));
  QCOMPARE(watch.source->looks.load(), 0);
}

void TestWatchKeeper::aKeeperMayGoBeforeItsLook() {
  const auto storage = std::make_shared<TestStorage>();
  storage->hang("/hier");
  const auto source = std::make_shared<ScriptedSource>(storage);
  const TestClock clock;
  {
    WatchKeeper keeper(clock);
    keeper.add(source);
    QTRY_COMPARE(storage->asked(), 1);
  }
  QCOMPARE(source->looks.load(), 0);
  storage->letGo();
  QTRY_COMPARE(source->looks.load(), 1);
}

void TestWatchKeeper::lookingNowFollowsALookUnderWay() {
  Watch watch;
  watch.storage->hang("/hier");
  watch.keeper.add(watch.source);
  QTRY_COMPARE(watch.storage->asked(), 1);
  for (int wish = 0; wish < 10; ++wish) watch.keeper.lookNow(watch.source.get());
  QCOMPARE(watch.storage->asked(), 1);
  watch.storage->letGo();
  QTRY_VERIFY(!watch.keeper.isLooking());
  QCOMPARE(watch.source->looks.load(), 2);  // one for all that was wished meanwhile
}

void TestWatchKeeper::aClockThatWasSetBackMakesAllDue() {
  Watch watch;
  watch.keeper.add(watch.source);
  QVERIFY(watch.wait(1));
  watch.later(-3600);
  QVERIFY(watch.wait(2));
}

void TestWatchKeeper::whatIsRemovedHasEnded() {
  Watch watch;
  watch.source->threatens = true;
  watch.keeper.add(watch.source);
  QTRY_COMPARE(watch.keeper.book().line(), QString("Zeile"));
  watch.keeper.remove(watch.source.get());
  QCOMPARE(watch.keeper.book().line(), QString());
  watch.later(60);
  QVERIFY(!watch.keeper.isLooking());
}

QTEST_GUILESS_MAIN(TestWatchKeeper)
#include "test_watch_keeper.moc"
