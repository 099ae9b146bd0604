// How the names of a folder are kept current, on a folder that the test plays; the disk's own is in
// test_files.
#include <QTest>
#include <utility>
#include <vector>

#include "platform/runtime/folder_names.h"

using namespace qk;

namespace {

constexpr qint64 kMillisecond = 1000000;
constexpr qint64 kSecond = 1000 * kMillisecond;

struct Played {
  QStringList names{"HSlav1.nrt", "BRIEF.TXT"};
  PathLook look{PathKind::Folder, 1000 * kSecond, {1, 1}};
  qint64 now = 2000 * kSecond;
  qint64 readingTakes = 0;
  bool ignoresCase = false;
  bool reports = true;  ///< what changes in it
  bool loses = false;   ///< some of its reports
  bool readable = true;
  int readings = 0;
  int followed = 0;   ///< how often it was begun
  int following = 0;  ///< how many do
  std::vector<std::pair<QString, bool>> news;

  void come(const QString& name) {
    names << name;
    change(name, true);
  }
  void go(const QString& name) {
    names.removeAll(name);
    change(name, false);
  }

 private:
  void change(const QString& name, bool came) {
    look.stamp = now;
    if (followed > 0) news.emplace_back(name, came);
  }
};

class PlayedNews : public FolderNews {
 public:
  explicit PlayedNews(Played& folder) : folder_(folder) {
    folder.news.clear();
    ++folder.following;
  }
  ~PlayedNews() override { --folder_.following; }
  bool hear(const std::function<void(const QString&, bool)>& use) override {
    for (const auto& [name, came] : std::exchange(folder_.news, {})) use(name, came);
    return !std::exchange(folder_.loses, false);
  }

 private:
  Played& folder_;
};

class PlayedSight : public FolderSight {
 public:
  explicit PlayedSight(Played& folder) : folder_(folder) {}
  PathLook look() override { return folder_.look; }
  std::optional<QStringList> names() override {
    ++folder_.readings;
    folder_.now += folder_.readingTakes;
    if (!folder_.readable) return {};
    return folder_.names;
  }
  bool leadToOneFile(const QString& name, const QString& other) override {
    return folder_.ignoresCase && name.compare(other, Qt::CaseInsensitive) == 0;
  }
  std::unique_ptr<FolderNews> follow() override {
    if (!folder_.reports) return {};
    ++folder_.followed;
    return std::make_unique<PlayedNews>(folder_);
  }
  qint64 now() override { return folder_.now; }

 private:
  Played& folder_;
};

}  // namespace

class TestFolderNames : public QObject {
  Q_OBJECT

  Played folder_;
  std::unique_ptr<FolderNames> names_;

  QString spelling(const QString& name) { return names_->spelling(name); }
  /// Until it is followed, or read at its pace.
  void beginToChange() {
    spelling("x");
    folder_.come("neu");
    spelling("x");
    folder_.readings = 0;
  }

 private Q_SLOTS:
  void init() {
    names_.reset();
    folder_ = Played();
    names_ = std::make_unique<FolderNames>(std::make_unique<PlayedSight>(folder_));
  }

  void findsANameWhateverItsCase() {
    folder_.names << "ÜBERSICHT.mdb";
    QCOMPARE(spelling("hslav1.nrt"), QString("HSlav1.nrt"));
    QCOMPARE(spelling("brief.txt"), QString("BRIEF.TXT"));
    QCOMPARE(spelling("übersicht.mdb"), QString("ÜBERSICHT.mdb"));
    QCOMPARE(spelling("hslav2.nrt"), QString());
  }

  void aQuietFolderIsReadOnce() {
    for (int hour = 0; hour < 10; ++hour, folder_.now += 3600 * kSecond) spelling("brief.txt");
    QCOMPARE(folder_.readings, 1);
    QCOMPARE(folder_.followed, 0);
  }

  void aYoungStampIsNotTrusted() {
    folder_.look.stamp = folder_.now - kSecond;
    spelling("brief.txt");
    spelling("brief.txt");
    QCOMPARE(folder_.readings, 2);
  }

  void aFollowedFolderIsNotReadAgain() {
    beginToChange();
    for (int number = 0; number < 1000; ++number, folder_.now += kSecond / 10) {
      const QString flag = QString("HSLAV%1.CTL").arg(number);
      folder_.come(flag);
      QCOMPARE(spelling(flag.toCaseFolded()), flag);
      folder_.go(flag);
      QCOMPARE(spelling(flag.toCaseFolded()), QString());
    }
    QCOMPARE(spelling("brief.txt"), QString("BRIEF.TXT"));
    QCOMPARE(folder_.readings, 0);
  }

  void severalSpellingsOfOneName() {
    beginToChange();
    folder_.come("Brief.txt");
    folder_.come("Brief.txt");
    QCOMPARE(spelling("brief.txt"), QString("Brief.txt"));
    folder_.go("Brief.txt");
    QCOMPARE(spelling("brief.txt"), QString("BRIEF.TXT"));
    folder_.go("BRIEF.TXT");
    QCOMPARE(spelling("brief.txt"), QString());
  }

  void lostReportsAreMadeUpByReading() {
    beginToChange();
    folder_.come("A");
    folder_.news.clear();
    folder_.loses = true;
    QCOMPARE(spelling("a"), QString("A"));
    QCOMPARE(folder_.readings, 1);
    folder_.come("B");
    QCOMPARE(spelling("b"), QString("B"));
    QCOMPARE(folder_.readings, 1);
  }

  void anotherFolderUnderItsPathIsSeenAfterASecond() {
    beginToChange();
    folder_.names = QStringList{"ANDERS"};
    folder_.look.identity = {2, 7};
    folder_.now += kSecond - 1;
    QCOMPARE(spelling("anders"), QString());
    folder_.now += 1;
    QCOMPARE(spelling("anders"), QString("ANDERS"));
    QCOMPARE(spelling("brief.txt"), QString());
  }

  void aFolderThatIsGoneHasNoNames() {
    beginToChange();
    const PathLook before = std::exchange(folder_.look, PathLook{});
    folder_.now += kSecond;
    QCOMPARE(spelling("brief.txt"), QString());
    QCOMPARE(folder_.readings, 0);
    QCOMPARE(folder_.following, 0);
    folder_.look = before;
    QCOMPARE(spelling("brief.txt"), QString("BRIEF.TXT"));
  }

  void whereCaseIsIgnoredNothingIsReadAgain() {
    folder_.ignoresCase = true;
    QCOMPARE(spelling("hslav1.nrt"), QString());
    for (int number = 0; number < 100; ++number, folder_.now += kSecond) {
      folder_.come(QString::number(number));
      QCOMPARE(spelling("hslav1.nrt"), QString());
    }
    QCOMPARE(folder_.readings, 1);
    folder_.ignoresCase = false;
    folder_.look.identity = {2, 7};
    folder_.now += kSecond;
    QCOMPARE(spelling("hslav1.nrt"), QString("HSlav1.nrt"));
  }

  void aNameInCapitalsTellsOfCase() {
    folder_.ignoresCase = true;
    folder_.names = QStringList{"ABC"};
    QCOMPARE(spelling("abc"), QString());
    folder_.look.identity = {2, 7};
    folder_.ignoresCase = false;
    folder_.now += kSecond;
    QCOMPARE(spelling("abc"), QString("ABC"));
  }

  /// Only a name that has two cases tells, and only one that has them in every language.
  void namesThatSayNothingOfCase() {
    folder_.ignoresCase = true;
    folder_.names = QStringList{"123", "straße", "abc", "ABC"};
    QCOMPARE(spelling("123"), QString("123"));
    QCOMPARE(spelling("abc"), QString("abc"));
    folder_.come("leer.txt");
    QCOMPARE(spelling("123"), QString());
  }

  void anUnreportedFolderIsReadForAFiftiethOfTheTime() {
    folder_.reports = false;
    folder_.readingTakes = 20 * kMillisecond;
    beginToChange();  // reads last just now
    const qint64 end = folder_.now + 100 * kSecond;
    for (; folder_.now < end; folder_.now += 10 * kMillisecond) {
      folder_.come("A");
      spelling("x");
      folder_.go("A");
    }
    QVERIFY2(folder_.readings >= 95 && folder_.readings <= 100,
             qPrintable(QString::number(folder_.readings)));
  }

  void anUnreportedNameIsFoundWhenThereIsTime() {
    folder_.reports = false;
    folder_.readingTakes = 20 * kMillisecond;
    beginToChange();
    folder_.come("A");
    folder_.now += 900 * kMillisecond;
    QCOMPARE(spelling("a"), QString());
    folder_.now += 100 * kMillisecond;
    QCOMPARE(spelling("a"), QString("A"));
  }

  void anUnreportedQuietFolderIsNotRead() {
    folder_.reports = false;
    beginToChange();
    folder_.now += 5 * kSecond;
    spelling("x");  // the stamp was young
    folder_.readings = 0;
    folder_.now += 3600 * kSecond;
    spelling("x");
    QCOMPARE(folder_.readings, 0);
  }

  void aReadingThatHungPutsTheNextOneOffForAMinute() {
    folder_.reports = false;
    spelling("x");
    folder_.come("A");
    folder_.readingTakes = 600 * kSecond;
    spelling("x");
    folder_.readingTakes = 0;
    folder_.come("B");
    folder_.now += 60 * kSecond - 1;
    QCOMPARE(spelling("b"), QString());
    folder_.now += 1;
    QCOMPARE(spelling("b"), QString("B"));
  }

  void aClockThatIsSetBackStopsNothing() {
    folder_.reports = false;
    folder_.readingTakes = 20 * kMillisecond;
    beginToChange();
    folder_.now -= 3600 * kSecond;
    folder_.come("A");
    QCOMPARE(spelling("a"), QString("A"));
  }

  /// For want of a descriptor, say: what isn't known to be missing is looked for.
  void whatCouldntBeReadIsReadAgain() {
    spelling("x");
    folder_.readable = false;
    folder_.come("Flagge");
    QCOMPARE(spelling("flagge"), QString());
    QVERIFY(!names_->hearsAll());
    QCOMPARE(folder_.following, 0);
    folder_.readable = true;
    QCOMPARE(spelling("flagge"), QString("Flagge"));
  }

  /// Elsewhere a name may have come that nobody told of: whoever finds no spelling takes a look.
  void allIsHeardOnlyWhereTheSystemReports_data() {
    QTest::addColumn<bool>("reports");
    QTest::addColumn<bool>("ignoresCase");
    QTest::addColumn<bool>("all");
    QTest::newRow("a disk of this machine") << true << false << true;
    QTest::newRow("a place that ignores case") << true << true << false;
    QTest::newRow("any other share") << false << false << false;
  }
  void allIsHeardOnlyWhereTheSystemReports() {
    QFETCH(bool, reports);
    QFETCH(bool, ignoresCase);
    QFETCH(bool, all);
    folder_.reports = reports;
    folder_.ignoresCase = ignoresCase;
    spelling("x");
    QVERIFY(!names_->hearsAll());  // it isn't followed yet
    beginToChange();
    QCOMPARE(names_->hearsAll(), all);
    folder_.loses = true;
    spelling("x");
    QCOMPARE(names_->hearsAll(), all);  // followed anew
  }
};

QTEST_APPLESS_MAIN(TestFolderNames)
#include "test_folder_names.moc"
