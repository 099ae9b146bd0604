// What threatens the office, found without a window: limits, medians, ages, what stands in the book.
#include <QTest>

#include "app/watch/copy_source.h"
#include "app/watch/disk_source.h"
#include "app/watch/exchange_source.h"
#include "app/watch/server_source.h"
#include "app/watch/threat_book.h"
#include "app/watch/watch_texts.h"
#include "platform/runtime/error.h"
#include "tests/app/watch/test_storage.h"

using namespace qk;
using namespace qk::test;

namespace {

constexpr qint64 kMegabyte = 1000 * 1000;
constexpr qint64 kGigabyte = 1000 * kMegabyte;

QDateTime at(const QString& time) {
  return QDateTime(QDate(2026, 11, 20), QTime::fromString(time, "HH:mm"));
}

Threat threat(const QString& key, ThreatLevel level, const QString& thing = {}) {
  Threat made{key, level, key + '!', "Was", "Folge", "Rat", "stoerungen.html", {}};
  if (!thing.isEmpty()) made.things << thing;
  return made;
}

QStringList keysOf(const std::vector<ThreatBook::Entry>& entries) {
  QStringList keys;
  for (const ThreatBook::Entry& entry : entries) keys << entry.threat.key;
  return keys;
}

}  // namespace

class TestWatchSources : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  // The book.
  void anEmptyBookSaysNothing();
  void theGravestComesFirst();
  void theOldestOfEqualOnesComesFirst();
  void whatEndsIsKeptWithItsTimes();
  void aThreatKeepsItsBeginningWhileItsFiguresChange();
  void findingsOfOneKeyBecomeOne();
  void whatWasCalmIsNotKept();
  void onlyTheLastOnesAreKept();
  void onlyAChangeIsAChange();

  // Disks.
  void aLargeDiskHasFixedLimits();
  void aSmallDiskHasATwentieth();
  void copiesWantRoomForThreeMore();
  void aThreatEndsAQuarterAboveItsLimit();
  void aDiskThatFillsIsFound();
  void aFolderThatIsNotThereHasNoDisk();
  void anotherDiskBeginsAnew();
  void anOriginalCountsForItsCopies();

  // The exchange folder.
  void aMissingFolderIsGrave();
  void aHiccupSaysNothing();
  void aSlowFolderIsFoundAndEnds();
  void anotherFolderForgetsTheTimes();
  void listingsAreRare();

  // Copies.
  void theLastProvenCopyIsNamed();
  void aCopyIsOldAfterThreeIntervals();
  void withoutAChangeACopyStaysFresh();
  void noCopyYet();
  void aFailureTellsItsReason();
  void switchedOffIsSaidQuietly();
  void anOpenedCopySaysSo();
  void aSourceKnowsNothingBeforeItWasTold();

  // The server.
  void aServerWithoutStandbyIsCalm();
  void aMissingStandbyIsFound();
  void aServerThatWaitsIsGrave();
  void aStandbyThatFallsBehindIsFoundAndCatchesUp();
  void theSecondMissingAnswerCounts();

  // Texts.
  void sizesAndTimes();
  void detailsTellAllAndEscape();
};

void TestWatchSources::anEmptyBookSaysNothing() {
  ThreatBook book;
  QVERIFY(!book.update({}, at("10:00")));
  QCOMPARE(book.line(), QString());
  QCOMPARE(book.level(), ThreatLevel::Calm);
  QCOMPARE(book.count(), 0);
}

void TestWatchSources::theGravestComesFirst() {
  ThreatBook book;
  QVERIFY(book.update({threat("ruhig", ThreatLevel::Calm), threat("a", ThreatLevel::Warning),
                       threat("b", ThreatLevel::Grave), threat("c", ThreatLevel::Warning)},
                      at("10:00")));
  QCOMPARE(book.line(), QString("b!  +2"));
  QCOMPARE(book.level(), ThreatLevel::Grave);
  QCOMPARE(book.count(), 3);
  QCOMPARE(keysOf(book.standing()), (QStringList{"b", "a", "c", "ruhig"}));
  book.update({threat("ruhig", ThreatLevel::Calm)}, at("10:01"));
  QCOMPARE(book.line(), QString("ruhig!"));
  QCOMPARE(book.count(), 0);
}

void TestWatchSources::theOldestOfEqualOnesComesFirst() {
  ThreatBook book;
  book.update({threat("spät", ThreatLevel::Warning)}, at("10:00"));
  book.update({threat("neu", ThreatLevel::Warning), threat("spät", ThreatLevel::Warning)}, at("10:01"));
  QCOMPARE(keysOf(book.standing()), (QStringList{"spät", "neu"}));
}

void TestWatchSources::whatEndsIsKeptWithItsTimes() {
  ThreatBook book;
  book.update({threat("a", ThreatLevel::Warning)}, at("15:02"));
  book.update({threat("a", ThreatLevel::Warning), threat("b", ThreatLevel::Grave)}, at("15:05"));
  QVERIFY(book.update({threat("b", ThreatLevel::Grave)}, at("15:09")));
  QCOMPARE(book.past().size(), size_t(1));
  QCOMPARE(book.past().front().threat.key, QString("a"));
  QCOMPARE(book.past().front().since, at("15:02"));
  QCOMPARE(book.past().front().until, at("15:09"));
  book.update({}, at("15:10"));
  QCOMPARE(book.past().front().threat.key, QString("b"));
  QVERIFY(!book.has("a") && !book.has("b"));
}

void TestWatchSources::aThreatKeepsItsBeginningWhileItsFiguresChange() {
  ThreatBook book;
  book.update({threat("a", ThreatLevel::Warning)}, at("10:00"));
  Threat worse = threat("a", ThreatLevel::Grave);
  worse.line = "noch weniger";
  QVERIFY(book.update({worse}, at("10:05")));
  QCOMPARE(book.standing().front().since, at("10:00"));
  QCOMPARE(book.line(), QString("noch weniger"));
  QVERIFY(book.past().empty());
}

void TestWatchSources::findingsOfOneKeyBecomeOne() {
  ThreatBook book;
  book.update({threat("platz", ThreatLevel::Warning, "der Wettkampf"),
               threat("platz", ThreatLevel::Grave, "die Sicherungen"),
               threat("platz", ThreatLevel::Warning, "der Wettkampf")},
              at("10:00"));
  QCOMPARE(book.count(), 1);
  QCOMPARE(book.level(), ThreatLevel::Grave);
  Threat other = threat("platz", ThreatLevel::Warning);
  other.consequence = "Noch eine.";
  book.update({threat("platz", ThreatLevel::Warning, "der Wettkampf"), other,
               threat("platz", ThreatLevel::Grave, "die Sicherungen")},
              at("10:01"));
  QCOMPARE(book.standing().front().threat.consequence, QString("Folge Noch eine."));
  QCOMPARE(book.standing().front().threat.things, (QStringList{"der Wettkampf", "die Sicherungen"}));
}

void TestWatchSources::whatWasCalmIsNotKept() {
  ThreatBook book;
  book.update({threat("a", ThreatLevel::Calm)}, at("10:00"));
  QVERIFY(book.update({threat("a", ThreatLevel::Warning)}, at("10:05")));
  QVERIFY(book.past().empty());
  QCOMPARE(book.standing().front().since, at("10:05"));
  QVERIFY(book.update({threat("a", ThreatLevel::Calm)}, at("10:09")));
  QCOMPARE(book.past().size(), size_t(1));
  QCOMPARE(book.past().front().since, at("10:05"));
  book.update({}, at("10:10"));
  QCOMPARE(book.past().size(), size_t(1));
}

void TestWatchSources::onlyTheLastOnesAreKept() {
  ThreatBook book;
  for (int i = 0; i < 2 * int(ThreatBook::kMostPast); ++i) {
    book.update({threat(QString::number(i), ThreatLevel::Warning)}, at("10:00"));
    book.update({}, at("10:01"));
  }
  QCOMPARE(book.past().size(), ThreatBook::kMostPast);
  QCOMPARE(book.past().front().threat.key, QString::number(2 * ThreatBook::kMostPast - 1));
}

void TestWatchSources::onlyAChangeIsAChange() {
  ThreatBook book;
  QVERIFY(book.update({threat("a", ThreatLevel::Warning)}, at("10:00")));
  QVERIFY(!book.update({threat("a", ThreatLevel::Warning)}, at("10:01")));
  QVERIFY(book.update({}, at("10:02")));
  QVERIFY(!book.update({}, at("10:03")));
}

void TestWatchSources::aLargeDiskHasFixedLimits() {
  const RoomLimits limits = limitsOfADay(2000 * kGigabyte);
  QCOMPARE(limits.warning, 500 * kMegabyte);
  QCOMPARE(limits.grave, 100 * kMegabyte);
}

void TestWatchSources::aSmallDiskHasATwentieth() {
  const RoomLimits limits = limitsOfADay(2 * kGigabyte);
  QCOMPARE(limits.warning, 100 * kMegabyte);
  QCOMPARE(limits.grave, 20 * kMegabyte);
}

void TestWatchSources::copiesWantRoomForThreeMore() {
  QCOMPARE(limitsOfCopies(2000 * kGigabyte, kGigabyte).warning, 3 * kGigabyte);
  QCOMPARE(limitsOfCopies(2000 * kGigabyte, kGigabyte).grave, kGigabyte);
  QCOMPARE(limitsOfCopies(2000 * kGigabyte, kMegabyte).warning, 500 * kMegabyte);
  QCOMPARE(limitsOfCopies(2000 * kGigabyte, kMegabyte).grave, 100 * kMegabyte);
}

void TestWatchSources::aThreatEndsAQuarterAboveItsLimit() {
  const RoomLimits limits{400, 100};
  QCOMPARE(roomLevel(400, limits, ThreatLevel::Calm), ThreatLevel::Calm);
  QCOMPARE(roomLevel(399, limits, ThreatLevel::Calm), ThreatLevel::Warning);
  QCOMPARE(roomLevel(499, limits, ThreatLevel::Warning), ThreatLevel::Warning);
  QCOMPARE(roomLevel(500, limits, ThreatLevel::Warning), ThreatLevel::Calm);
  QCOMPARE(roomLevel(100, limits, ThreatLevel::Warning), ThreatLevel::Warning);
  QCOMPARE(roomLevel(99, limits, ThreatLevel::Warning), ThreatLevel::Grave);
  QCOMPARE(roomLevel(124, limits, ThreatLevel::Grave), ThreatLevel::Grave);
  QCOMPARE(roomLevel(125, limits, ThreatLevel::Grave), ThreatLevel::Warning);
  QCOMPARE(roomLevel(500, limits, ThreatLevel::Grave), ThreatLevel::Calm);
}

void TestWatchSources::aDiskThatFillsIsFound() {
  const auto storage = std::make_shared<TestStorage>();
  DiskSource source(storage, {"der Wettkampf", "Folge", [] { return QString("/wk"); }});
  storage->setRoom({"/", 20 * kGigabyte, 100 * kGigabyte});
  QVERIFY(source.look(at("10:00")).empty());
  storage->setRoom({"/", 312 * kMegabyte, 100 * kGigabyte});
  std::vector<Threat> found = source.look(at("10:01"));
  QCOMPARE(found.size(), size_t(1));
  QCOMPARE(found[0].level, ThreatLevel::Warning);
  QCOMPARE(found[0].line, QString("Wenig Platz: 312 MB"));
  QCOMPARE(found[0].what, QString("Auf »/« sind nur noch 312 MB von 100,0 GB frei."));
  QCOMPARE(found[0].things, QStringList{"der Wettkampf"});
  storage->setRoom({"/", 600 * kMegabyte, 100 * kGigabyte});
  QCOMPARE(source.look(at("10:02")).size(), size_t(1));
  storage->setRoom({"/", 99 * kMegabyte, 100 * kGigabyte});
  found = source.look(at("10:03"));
  QCOMPARE(found[0].level, ThreatLevel::Grave);
  QCOMPARE(found[0].line, QString("Kaum noch Platz: 99 MB"));
  storage->setRoom({"/", 625 * kMegabyte, 100 * kGigabyte});
  QVERIFY(source.look(at("10:04")).empty());
}

void TestWatchSources::aFolderThatIsNotThereHasNoDisk() {
  const auto storage = std::make_shared<TestStorage>();
  DiskSource source(storage, {"der Wettkampf", "Folge", [] { return QString("/wk"); }});
  QVERIFY(source.look(at("10:00")).empty());
}

void TestWatchSources::anotherDiskBeginsAnew() {
  const auto storage = std::make_shared<TestStorage>();
  DiskSource source(storage, {"der Wettkampf", "Folge", [] { return QString("/wk"); }});
  storage->setRoom({"/eins", 400 * kMegabyte, 100 * kGigabyte});
  QCOMPARE(source.look(at("10:00")).size(), size_t(1));
  storage->setRoom({"/zwei", 600 * kMegabyte, 100 * kGigabyte});
  QVERIFY(source.look(at("10:01")).empty());
}

void TestWatchSources::anOriginalCountsForItsCopies() {
  const auto storage = std::make_shared<TestStorage>();
  DiskSource source(storage, {"die Sicherungen", "Folge", [] { return QString("/kopien"); },
                              [] { return QString("/wk/Pokal.qkk"); }});
  storage->setRoom({"/", 2 * kGigabyte, 100 * kGigabyte});
  storage->setSize(100 * kMegabyte);
  QVERIFY(source.look(at("10:00")).empty());
  storage->setSize(kGigabyte);
  QCOMPARE(source.look(at("10:01")).front().level, ThreatLevel::Warning);
  storage->setSize(3 * kGigabyte);
  QCOMPARE(source.look(at("10:02")).front().level, ThreatLevel::Grave);
}

void TestWatchSources::aMissingFolderIsGrave() {
  const auto storage = std::make_shared<TestStorage>();
  ExchangeSource source(storage, [] { return QString("/esa/"); });
  QVERIFY(source.look(at("10:00")).empty());
  storage->setTime({});
  const std::vector<Threat> found = source.look(at("10:01"));
  QCOMPARE(found.size(), size_t(1));
  QCOMPARE(found[0].key, ExchangeSource::Key);
  QCOMPARE(found[0].level, ThreatLevel::Grave);
  QCOMPARE(found[0].line, QString("Austauschordner fehlt"));
  QCOMPARE(found[0].what, QString("Der Austauschordner »/esa/« ist nicht da."));
  storage->setTime(0);
  QVERIFY(source.look(at("10:02")).empty());
}

namespace {

/// So many listings of that time; what the last look found.
std::vector<Threat> listings(ExchangeSource& source, TestStorage& storage, int milliseconds, int count) {
  storage.setTime(milliseconds);
  std::vector<Threat> found;
  for (int i = 0; i < count * ExchangeSource::kLooksAListing; ++i) found = source.look(at("10:00"));
  return found;
}

}  // namespace

void TestWatchSources::aHiccupSaysNothing() {
  const auto storage = std::make_shared<TestStorage>();
  ExchangeSource source(storage, [] { return QString("/esa/"); });
  QVERIFY(listings(source, *storage, 5000, 2).empty());
  QVERIFY(listings(source, *storage, 3, 3).empty());
  QVERIFY(listings(source, *storage, 5000, 2).empty());
}

void TestWatchSources::aSlowFolderIsFoundAndEnds() {
  const auto storage = std::make_shared<TestStorage>();
  ExchangeSource source(storage, [] { return QString("/esa/"); });
  QVERIFY(listings(source, *storage, 3, 5).empty());
  QVERIFY(listings(source, *storage, 1400, 2).empty());
  std::vector<Threat> found = listings(source, *storage, 1400, 1);
  QCOMPARE(found.size(), size_t(1));
  QCOMPARE(found[0].key, ExchangeSource::Key);
  QCOMPARE(found[0].level, ThreatLevel::Warning);
  QCOMPARE(found[0].line, QString("Austauschordner langsam"));
  // Between the two limits it stays slow, and below the lower one it has ended.
  QCOMPARE(listings(source, *storage, 700, 5).size(), size_t(1));
  QVERIFY(listings(source, *storage, 400, 5).empty());
  QVERIFY(listings(source, *storage, 700, 5).empty());
}

void TestWatchSources::anotherFolderForgetsTheTimes() {
  const auto storage = std::make_shared<TestStorage>();
  QString folder = "/esa/";
  ExchangeSource source(storage, [&folder] { return folder; });
  QCOMPARE(listings(source, *storage, 1400, 5).size(), size_t(1));
  folder = "/esa2/";
  QVERIFY(source.look(at("10:01")).empty());
}

void TestWatchSources::listingsAreRare() {
  class Counting : public TestStorage {
   public:
    std::optional<std::chrono::milliseconds> timeOfListing(const QString& folder) override {
      ++listings;
      return TestStorage::timeOfListing(folder);
    }
    int listings = 0;
  };
  const auto storage = std::make_shared<Counting>();
  ExchangeSource source(storage, [] { return QString("/esa/"); });
  for (int i = 0; i < 60; ++i) source.look(at("10:00"));
  QCOMPARE(storage->listings, 12);
}

namespace {

CopyState provenAt(const QString& time) {
  CopyState state;
  state.enabled = true;
  state.folder = "/kopien";
  state.lastProven = state.upToDate = at(time);
  state.file = "/kopien/Pokal.qkk";
  return state;
}

Threat copyFinding(const CopyState& state, const QString& opened, const QString& now) {
  return copyFindings(state, at(opened), at(now)).back();
}

}  // namespace

void TestWatchSources::theLastProvenCopyIsNamed() {
  const Threat found = copyFinding(provenAt("15:10"), "09:00", "15:40");
  QCOMPARE(found.level, ThreatLevel::Calm);
  QCOMPARE(found.line, QString("Sicherung 15:10"));
  QVERIFY2(found.what.contains("Pokal.qkk"), qPrintable(found.what));
}

void TestWatchSources::aCopyIsOldAfterThreeIntervals() {
  const Threat found = copyFinding(provenAt("15:10"), "09:00", "15:41");
  QCOMPARE(found.level, ThreatLevel::Warning);
  QCOMPARE(found.line, QString("Sicherung alt: 15:10"));
  QVERIFY2(found.what.startsWith("Seit mehr als 30 Minuten"), qPrintable(found.what));
  CopyState rare = provenAt("15:10");
  rare.interval = std::chrono::minutes(60);
  QCOMPARE(copyFinding(rare, "09:00", "18:10").level, ThreatLevel::Calm);
  QCOMPARE(copyFinding(rare, "09:00", "18:11").level, ThreatLevel::Warning);
}

void TestWatchSources::withoutAChangeACopyStaysFresh() {
  CopyState state = provenAt("12:00");
  state.upToDate = at("15:30");
  const Threat found = copyFinding(state, "09:00", "15:41");
  QCOMPARE(found.level, ThreatLevel::Calm);
  QCOMPARE(found.line, QString("Sicherung 12:00"));
  QVERIFY2(found.what.endsWith("Bis 15:30 hat sich nichts geändert."), qPrintable(found.what));
}

void TestWatchSources::noCopyYet() {
  CopyState state = provenAt("12:00");
  state.lastProven = state.upToDate = {};
  QCOMPARE(copyFinding(state, "09:00", "09:30").line, QString("Noch keine Sicherung"));
  QCOMPARE(copyFinding(state, "09:00", "09:30").level, ThreatLevel::Calm);
  QCOMPARE(copyFinding(state, "09:00", "09:31").line, QString("Keine Sicherung"));
  QCOMPARE(copyFinding(state, "09:00", "09:31").level, ThreatLevel::Warning);
}

void TestWatchSources::aFailureTellsItsReason() {
  CopyState state = provenAt("15:10");
  state.trouble = "Der Ordner fehlt.";
  const Threat found = copyFinding(state, "09:00", "15:20");
  QCOMPARE(found.level, ThreatLevel::Warning);
  QCOMPARE(found.line, QString("Sicherung misslungen"));
  QVERIFY(found.what.startsWith("Der Ordner fehlt. Die letzte geprüfte Sicherung ist von 15:10"));
}

void TestWatchSources::switchedOffIsSaidQuietly() {
  CopyState state = provenAt("09:10");
  state.enabled = false;
  QCOMPARE(copyFinding(state, "09:00", "15:20").level, ThreatLevel::Calm);
  QCOMPARE(copyFinding(state, "09:00", "15:20").line, QString("Sicherung aus"));
}

void TestWatchSources::anOpenedCopySaysSo() {
  CopyState state = provenAt("15:10");
  state.openedCopy = "Geöffnet ist eine Sicherung.";
  ThreatBook book;
  book.update(copyFindings(state, at("09:00"), at("15:20")), at("15:20"));
  QCOMPARE(book.line(), QString("Sicherung geöffnet"));
  QCOMPARE(book.level(), ThreatLevel::Calm);
  QCOMPARE(book.standing().size(), size_t(2));
}

void TestWatchSources::aSourceKnowsNothingBeforeItWasTold() {
  CopySource source(at("09:00"));
  QVERIFY(source.look(at("15:00")).empty());
  QCOMPARE(source.folder(), QString());
  source.tell(provenAt("15:10"));
  QCOMPARE(source.look(at("15:20")).front().line, QString("Sicherung 15:10"));
  QCOMPARE(source.folder(), QString("/kopien"));
}

namespace {

using State = std::optional<dao::StandbyState>;

State caughtUp() {
  dao::StandbyState state;
  state.connected = true;
  state.synchronous = true;
  state.bytesBehind = 0;
  state.behind = std::chrono::seconds(0);
  return state;
}

QString lineOf(ServerSource& source) {
  const std::vector<Threat> found = source.look(at("10:00"));
  return found.empty() ? QString() : found.front().line;
}

}  // namespace

void TestWatchSources::aServerWithoutStandbyIsCalm() {
  ServerSource source([] { return State(); });
  QCOMPARE(lineOf(source), QString());
}

void TestWatchSources::aMissingStandbyIsFound() {
  State state = caughtUp();
  ServerSource source([&state] { return state; });
  QCOMPARE(lineOf(source), QString());
  state = dao::StandbyState();
  const std::vector<Threat> found = source.look(at("10:00"));
  QCOMPARE(found[0].line, QString("Ersatzserver fehlt"));
  QCOMPARE(found[0].level, ThreatLevel::Warning);
  state = caughtUp();
  QCOMPARE(lineOf(source), QString());
}

void TestWatchSources::aServerThatWaitsIsGrave() {
  State state = dao::StandbyState();
  state->synchronous = state->commitsWait = true;
  ServerSource source([&state] { return state; });
  QCOMPARE(lineOf(source), QString("Server wartet auf Ersatz"));
  QCOMPARE(source.look(at("10:00"))[0].level, ThreatLevel::Grave);
}

void TestWatchSources::aStandbyThatFallsBehindIsFoundAndCatchesUp() {
  State state = caughtUp();
  ServerSource source([&state] { return state; });
  state->behind = std::chrono::seconds(60);
  QCOMPARE(lineOf(source), QString());
  state->behind = std::chrono::seconds(61);
  QCOMPARE(lineOf(source), QString("Ersatzserver im Rückstand"));
  QCOMPARE(source.look(at("10:00"))[0].what,
           QString("Der Ersatzserver ist im Rückstand: 61 Sekunden, 0 Bytes."));
  state->behind = std::chrono::seconds(31);
  QCOMPARE(lineOf(source), QString("Ersatzserver im Rückstand"));
  state->behind = std::chrono::seconds(30);
  QCOMPARE(lineOf(source), QString());
  state->bytesBehind = 65 * kMegabyte;
  QCOMPARE(lineOf(source), QString("Ersatzserver im Rückstand"));
  // Who may not know, is told nothing.
  state->bytesBehind = {};
  state->behind = {};
  QCOMPARE(lineOf(source), QString());
}

void TestWatchSources::theSecondMissingAnswerCounts() {
  bool answers = false;
  ServerSource source([&answers]() -> State {
    if (!answers) throw Error(3043, "Der Server ist weg.");
    return {};
  });
  QCOMPARE(lineOf(source), QString());
  const std::vector<Threat> found = source.look(at("10:00"));
  QCOMPARE(found[0].line, QString("Server antwortet nicht"));
  QCOMPARE(found[0].level, ThreatLevel::Grave);
  QCOMPARE(found[0].what, QString("Der Server ist weg."));
  answers = true;
  QCOMPARE(lineOf(source), QString());
  answers = false;
  QCOMPARE(lineOf(source), QString());
}

void TestWatchSources::sizesAndTimes() {
  QCOMPARE(sizeText(312 * kMegabyte), QString("312 MB"));
  QCOMPARE(sizeText(1400 * kMegabyte), QString("1,4 GB"));
  QCOMPARE(secondsText(std::chrono::milliseconds(1449)), QString("1,4 s"));
  QCOMPARE(timeText(at("15:02")), QString("15:02"));
  QCOMPARE(timeText(at("15:02"), QDate(2026, 11, 20)), QString("15:02"));
  QCOMPARE(timeText(at("15:02"), QDate(2026, 11, 21)), QString("20.11. 15:02"));
}

void TestWatchSources::detailsTellAllAndEscape() {
  ThreatBook book;
  const auto html = [&] { return detailsHtml(book, QDate(2026, 11, 20), Qt::white, Qt::blue); };
  QVERIFY(html().contains("Zur Zeit ist nichts zu melden."));
  Threat hostile = threat("a", ThreatLevel::Grave, "<b>Ding</b>");
  hostile.what = "Der Ordner »<img src=x>« fehlt.";
  book.update({hostile}, at("15:02"));
  QVERIFY(!html().contains("nichts zu melden"));
  for (const char* part : {"Dringend, seit 15:02", "&lt;img src=x&gt;", "&lt;b&gt;Ding&lt;/b&gt;", "Folge",
                           "Rat", "href=\"stoerungen.html\""})
    QVERIFY2(html().contains(part), part);
  QVERIFY(!html().contains("<img"));
  book.update({}, at("15:09"));
  QVERIFY(html().contains("15:02 bis 15:09"));
}

QTEST_APPLESS_MAIN(TestWatchSources)
#include "test_watch_sources.moc"
