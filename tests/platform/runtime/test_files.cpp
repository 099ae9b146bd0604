// The door to files and folders, on the real file system.
#include <unistd.h>

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <atomic>
#include <chrono>
#include <filesystem>
#include <thread>
#include <vector>

#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/folder_writer.h"
#include "tests/support/error_of.h"
#include "tests/support/folder_readings.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Moves a folder's time stamp into the past, as if nothing had happened there for a while.
void settle(const QString& folder) {
  const auto old = std::filesystem::file_time_type::clock::now() - std::chrono::minutes(5);
  std::filesystem::last_write_time(folder.toStdU16String(), old);
}

}  // namespace

class TestFiles : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init();
  void cleanup();
  void writesAppendsReads();
  void missingFileAndFolder();
  void foreignPathIsNeverMade();
  void bothSeparators();
  void namesAreFoundWhateverTheirCase();
  void anOwnSpellingComesFirst();
  void aChangedFolderIsLookedAtAnew();
  void aYoungTimeStampIsNotTrusted();
  void aQuietFolderIsNotReadAgain();
  void aMissingNameIsSeenWhenItComes();
  void aBusyFolderIsNotReadAgain();
  void aFlagIsSeenWithoutADescriptor();
  void aNameInAnotherCaseComesAfterTheOneThatIsGone();
  void aFolderMadeAnewIsSeenAtOnce();
  void moreNewsThanTheKernelKeeps();
  void fullDisk();
  void lists();
  void copies();
  void renames();
  void replacesWholeOrNotAtAll();
  void replacingDestroysNothingBesides();
  void nobodyReadsHalfOfAReplacedFile();
  void aRunOverAFolderFindsEachSpelling();
  void folders();
  void readable();
  void trailingSeparator();

 private:
  /// It changes while it is looked into: from then on it is followed.
  void beginToFollow() {
    QVERIFY(!files_.exists(path("flag.ctl")));
    Files().write(path("anderes"), "");
    QVERIFY(!files_.exists(path("flag.ctl")));
  }
  QString path(const QString& name) const { return folder_->path() + "/" + name; }
  std::unique_ptr<QTemporaryDir> folder_;
  Files files_;
};

void TestFiles::init() {
  folder_ = std::make_unique<QTemporaryDir>();
  files_ = Files();
}
void TestFiles::cleanup() {
  folder_.reset();
}

void TestFiles::writesAppendsReads() {
  files_.write(path("a.txt"), "erste\r\n");
  files_.append(path("a.txt"), "zweite\r\n");
  QCOMPARE(files_.read(path("a.txt")), QByteArray("erste\r\nzweite\r\n"));
  files_.write(path("a.txt"), "neu");
  QCOMPARE(files_.read(path("a.txt")), QByteArray("neu"));
  files_.append(path("b.txt"), "angelegt");
  QCOMPARE(files_.read(path("b.txt")), QByteArray("angelegt"));
  files_.remove(path("a.txt"));
  QVERIFY(!files_.exists(path("a.txt")));
}

void TestFiles::missingFileAndFolder() {
  QCOMPARE(errorOf([&] { files_.read(path("fehlt")); }), 53);
  QCOMPARE(errorOf([&] { files_.remove(path("fehlt")); }), 53);
  QCOMPARE(errorOf([&] { files_.read(path("kein/fehlt")); }), 76);
  QCOMPARE(errorOf([&] { files_.write(path("kein/neu"), "x"); }), 76);
  QCOMPARE(errorOf([&] { files_.append(path("kein/neu"), "x"); }), 76);
  QCOMPARE(errorOf([&] { files_.write(folder_->path(), "x"); }), 75);
  QVERIFY(!files_.exists(path("kein/fehlt")));
  QVERIFY(!files_.exists(""));
  QCOMPARE(files_.list(path("kein"), "*"), QStringList());
}

void TestFiles::foreignPathIsNeverMade() {
  const QString old = QDir::currentPath();
  QVERIFY(QDir::setCurrent(folder_->path()));
  for (const QString& foreign : {QString("C:\\Programme\\Ordner\\Datei1.nrt"),
                                 QString("\\\\server\\frei\\x.txt"), QString("c:/x"), QString("D:")}) {
    QVERIFY(isForeignPath(foreign));
    QCOMPARE(errorOf([&] { files_.write(foreign, "x"); }), 76);
    QCOMPARE(errorOf([&] { files_.append(foreign, "x"); }), 76);
    QCOMPARE(errorOf([&] { files_.makeFolder(foreign); }), 76);
    QCOMPARE(errorOf([&] { files_.read(foreign); }), 76);
    QCOMPARE(errorOf([&] { files_.remove(foreign); }), 76);
    QVERIFY(!files_.exists(foreign));
    QVERIFY(!files_.folderExists(foreign));
    QVERIFY(!files_.readable(foreign));
    QCOMPARE(files_.list(foreign, "*"), QStringList());
  }
  QCOMPARE(QDir(folder_->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot), QStringList());
  QDir::setCurrent(old);
  QVERIFY(!isForeignPath("/tmp/x"));
  QVERIFY(!isForeignPath("daten\\x"));
  QVERIFY(!isForeignPath("4:x"));
  QVERIFY(!isForeignPath(""));
}

void TestFiles::bothSeparators() {
  files_.makeFolder(path("unter"));
  files_.write(path("unter\\a.txt"), "x");
  QVERIFY(files_.exists(path("unter/a.txt")));
  QCOMPARE(files_.list(path("unter\\"), "*"), QStringList("a.txt"));
}

void TestFiles::namesAreFoundWhateverTheirCase() {
  files_.write(path("BRIEF1.CTL"), "x");
  files_.write(path("ÜbersÍcht.mdb"), "y");
  QVERIFY(files_.exists(path("Brief1.ctl")));
  QVERIFY(files_.readable(path("ÜBERSíCHT.mdb")));
  QCOMPARE(files_.resolve(path("brief1.ctl")), path("BRIEF1.CTL"));
  files_.write(path("brief1.ctl"), "neu");
  QCOMPARE(files_.list(folder_->path(), "brief*.CTL"), QStringList("BRIEF1.CTL"));
  QCOMPARE(files_.read(path("BRIEF1.CTL")), QByteArray("neu"));
  files_.remove(path("brief1.ctl"));
  QVERIFY(!files_.exists(path("BRIEF1.CTL")));
}

void TestFiles::anOwnSpellingComesFirst() {
  files_.write(path("a"), "klein");
  QFile large(path("A"));
  QVERIFY(large.open(QIODevice::WriteOnly));
  large.close();
  QCOMPARE(files_.read(path("a")), QByteArray("klein"));
  QCOMPARE(files_.read(path("A")), QByteArray(""));
}

void TestFiles::aChangedFolderIsLookedAtAnew() {
  settle(folder_->path());
  QVERIFY(!files_.exists(path("flag.ctl")));
  QFile flag(path("FLAG.CTL"));
  QVERIFY(flag.open(QIODevice::WriteOnly));
  flag.close();
  QVERIFY(files_.exists(path("flag.ctl")));
}

void TestFiles::aYoungTimeStampIsNotTrusted() {
  // Two changes within one tick share a time stamp. The machine may stall: only a quick round says something.
  for (bool quick = false; !quick;) {
    QElapsedTimer timer;
    timer.start();
    files_ = Files();
    const auto young = std::filesystem::file_time_type::clock::now() - std::chrono::milliseconds(100);
    std::filesystem::last_write_time(folder_->path().toStdU16String(), young);
    QVERIFY(!files_.exists(path("flag.ctl")));
    QFile flag(path("FLAG.CTL"));
    QVERIFY(flag.open(QIODevice::WriteOnly));
    flag.close();
    std::filesystem::last_write_time(folder_->path().toStdU16String(), young);
    const bool found = files_.exists(path("flag.ctl"));
    quick = timer.elapsed() < 500;
    QVERIFY(found || !quick);
    QVERIFY(flag.remove());
  }
}

void TestFiles::aQuietFolderIsNotReadAgain() {
  settle(folder_->path());
  const auto stamp = std::filesystem::last_write_time(folder_->path().toStdU16String());
  QVERIFY(!files_.exists(path("flag.ctl")));
  QFile flag(path("FLAG.CTL"));
  QVERIFY(flag.open(QIODevice::WriteOnly));
  flag.close();
  std::filesystem::last_write_time(folder_->path().toStdU16String(), stamp);
  QVERIFY2(!files_.exists(path("flag.ctl")), "an unchanged time stamp answers from memory");
  QVERIFY(files_.exists(path("FLAG.CTL")));
}

void TestFiles::aMissingNameIsSeenWhenItComes() {
  settle(folder_->path());
  for (int i = 0; i < 3; ++i) QVERIFY(!files_.exists(path("flag.ctl")));
  files_.write(path("flag.ctl"), "");
  QVERIFY(files_.exists(path("flag.ctl")));
  files_.remove(path("flag.ctl"));
  settle(folder_->path());
  for (int i = 0; i < 3; ++i) QVERIFY(!files_.exists(path("flag.ctl")));
  Files().write(path("FLAG.CTL"), "");
  QVERIFY(files_.exists(path("flag.ctl")));
  Files().remove(path("FLAG.CTL"));
  settle(folder_->path());
  for (int i = 0; i < 3; ++i) QVERIFY(!files_.exists(path("flag.ctl")));
  folder_->remove();
  QVERIFY(!files_.exists(path("flag.ctl")));
  QVERIFY(QDir().mkpath(folder_->path()));
  Files().write(path("flag.ctl"), "");
  QVERIFY(files_.exists(path("flag.ctl")));
}

void TestFiles::aBusyFolderIsNotReadAgain() {
  beginToFollow();
  FolderReadings readings(folder_->path());
  for (int number = 0; number < 100; ++number) {
    Files().replace(path(QString("Brief %1.txt").arg(number)), "");
    QVERIFY(!files_.exists(path("flag.ctl")));
    Files().replace(path("FLAG.CTL"), "");
    QVERIFY(files_.exists(path("flag.ctl")));
    QCOMPARE(files_.resolve(path("brief 0.TXT")), path("Brief 0.txt"));
    QVERIFY(QFile::rename(path("FLAG.CTL"), path("fort")));
    QVERIFY(QFile::remove(path("fort")));
  }
  QCOMPARE(readings.count(), 0);
}

/// The list of names takes a descriptor; a plain look takes none.
void TestFiles::aFlagIsSeenWithoutADescriptor() {
  for (const size_t room : {0, 1, 2}) {  // for the folder's reports, and its reading
    files_ = Files();
    QVERIFY(!files_.exists(path("flag.ctl")));
    Files().replace(path("flag.ctl"), "");
    std::vector<int> taken;
    for (int descriptor; (descriptor = ::dup(STDIN_FILENO)) >= 0;) taken.push_back(descriptor);
    for (size_t left = 0; left < room; ++left, taken.pop_back()) ::close(taken.back());
    const bool found = files_.exists(path("flag.ctl"));
    for (const int descriptor : taken) ::close(descriptor);
    QVERIFY(found);
    QVERIFY(files_.exists(path("flag.ctl")));
    QVERIFY(QFile::remove(path("flag.ctl")));
    QVERIFY(!files_.exists(path("flag.ctl")));
  }
}

void TestFiles::aNameInAnotherCaseComesAfterTheOneThatIsGone() {
  beginToFollow();
  const std::function<void()> ends[] = {[&] { QVERIFY(QFile::rename(path("Flag.ctl"), path("fort"))); },
                                        [&] { QVERIFY(QFile::remove(path("Flag.ctl"))); }};
  for (const auto& end : ends) {
    Files().replace(path("Flag.ctl"), "");
    QVERIFY(files_.exists(path("flag.ctl")));
    end();
    Files().replace(path("FLAG.CTL"), "");
    QVERIFY(files_.exists(path("flag.ctl")));
    QVERIFY(QFile::remove(path("FLAG.CTL")));
  }
}

/// Its watch ends with the old one; a look for another folder comes once a second only.
void TestFiles::aFolderMadeAnewIsSeenAtOnce() {
  const QString folder = folder_->path();
  const std::function<void()> ends[] = {[&] { QVERIFY(QDir(folder).removeRecursively()); },
                                        [&] { QVERIFY(QDir().rename(folder, folder + "-fort")); }};
  for (const auto& end : ends) {
    files_ = Files();
    beginToFollow();
    end();
    QVERIFY(QDir().mkpath(folder));
    Files().replace(path("FLAG.CTL"), "");
    QVERIFY(files_.exists(path("flag.ctl")));
    QVERIFY(QFile::remove(path("FLAG.CTL")));
  }
  QVERIFY(QDir(folder + "-fort").removeRecursively());
}

void TestFiles::moreNewsThanTheKernelKeeps() {
  QFile limit("/proc/sys/fs/inotify/max_queued_events");
  QVERIFY(limit.open(QIODevice::ReadOnly));
  const int most = limit.readAll().trimmed().toInt();
  beginToFollow();
  // The kernel takes two equal reports in a row for one.
  for (int change = 0; change <= most / 2; ++change) {
    Files().replace(path("a"), "");
    QVERIFY(QFile::remove(path("a")));
  }
  Files().replace(path("FLAG.CTL"), "");
  QVERIFY(files_.exists(path("flag.ctl")));
}

void TestFiles::fullDisk() {
  if (!QFile::exists("/dev/full")) return;  // only there can a full disk be had for nothing
  QCOMPARE(errorOf([&] { files_.write("/dev/full", "x"); }), 61);
  // The device has no end to go to, and the toolkit says so.
  QTest::ignoreMessage(QtWarningMsg, QRegularExpression("^QIODevice::seek .*sequential device"));
  QCOMPARE(errorOf([&] { files_.append("/dev/full", "x"); }), 61);
}

void TestFiles::lists() {
  for (const char* name : {"Datei2.nrt", "Datei1.NRT", "Datei10.nrt", "Datei.ctl", "ohnepunkt", "a[1].txt"})
    files_.write(path(name), "");
  files_.makeFolder(path("Datei9.nrt"));
  QCOMPARE(files_.list(folder_->path(), "datei*.nrt"),
           QStringList({"Datei1.NRT", "Datei10.nrt", "Datei2.nrt"}));
  QCOMPARE(files_.list(folder_->path(), "Datei?.nrt"), QStringList({"Datei1.NRT", "Datei2.nrt"}));
  QCOMPARE(files_.list(folder_->path(), "*.*").size(), 6);
  QCOMPARE(files_.list(folder_->path(), "a[1].txt"), QStringList("a[1].txt"));
  QCOMPARE(files_.list(folder_->path(), "x"), QStringList());
  QCOMPARE(files_.list("", "*"), QStringList());
}

void TestFiles::copies() {
  files_.write(path("a"), "inhalt");
  files_.write(path("b"), "alt und länger");
  files_.copy(path("a"), path("b"));
  QCOMPARE(files_.read(path("b")), QByteArray("inhalt"));
  QCOMPARE(errorOf([&] { files_.copy(path("fehlt"), path("c")); }), 53);
  QCOMPARE(errorOf([&] { files_.copy(path("a"), path("kein/c")); }), 76);
  QCOMPARE(files_.list(folder_->path(), "*"), QStringList({"a", "b"}));
}

void TestFiles::renames() {
  files_.write(path("a"), "neu");
  files_.write(path("b"), "alt");
  files_.rename(path("a"), path("b"));
  QCOMPARE(files_.list(folder_->path(), "*"), QStringList("b"));
  QCOMPARE(files_.read(path("b")), QByteArray("neu"));
  files_.rename(path("b"), path("B"));
  QCOMPARE(files_.list(folder_->path(), "*"), QStringList("B"));
  QCOMPARE(errorOf([&] { files_.rename(path("fehlt"), path("c")); }), 53);
}

void TestFiles::replacesWholeOrNotAtAll() {
  files_.replace(path("a"), "eins");
  QCOMPARE(files_.read(path("a")), QByteArray("eins"));
  files_.replace(path("a"), "zwei");
  QCOMPARE(files_.read(path("a")), QByteArray("zwei"));
  files_.makeFolder(path("ordner"));
  QVERIFY(errorOf([&] { files_.replace(path("ordner"), "drei"); }) != 0);
  QCOMPARE(files_.list(folder_->path(), "*"), QStringList{"a"});
  QCOMPARE(errorOf([&] { files_.replace(path("fehlt/a"), "drei"); }), 76);
  QCOMPARE(errorOf([&] { files_.replace(QDir::separator() == '/' ? "C:\\a" : "/a", "drei"); }), 76);
}

/// Files of others lie in the same folder, whatever they are called.
void TestFiles::replacingDestroysNothingBesides() {
  for (const QString& name : {QString("a.def.neu"), QString("esa_preis.ini.neu"), QString("~a.tmp")})
    files_.write(path(name), "fremd");
  files_.replace(path("a.def"), "eins");
  files_.replace(path("esa_preis.ini"), "eins");
  FolderWriter writer(files_, folder_->path() + "/");
  writer.write("a.def", "zwei");
  writer.write("a.def.neu", "drei");
  writer.write("a.def", "vier");
  QCOMPARE(files_.list(folder_->path(), "*"),
           QStringList({"a.def", "a.def.neu", "esa_preis.ini", "esa_preis.ini.neu", "~a.tmp"}));
  QCOMPARE(files_.read(path("a.def")), QByteArray("vier"));
  QCOMPARE(files_.read(path("a.def.neu")), QByteArray("drei"));
  QCOMPARE(files_.read(path("esa_preis.ini.neu")), QByteArray("fremd"));
}

void TestFiles::nobodyReadsHalfOfAReplacedFile() {
  const QByteArray one(200'000, '1'), two(300'000, '2');
  files_.replace(path("a"), one);
  std::atomic<bool> done = false;
  std::thread writer([&] {
    Files own;
    for (int i = 0; i < 200; ++i) own.replace(path("a"), i % 2 ? one : two);
    done = true;
  });
  bool whole = true;
  while (!done) {
    const QByteArray seen = files_.read(path("a"));
    whole = whole && (seen == one || seen == two);
  }
  writer.join();
  QVERIFY(whole);
}

void TestFiles::aRunOverAFolderFindsEachSpelling() {
  files_.write(path("Alt.DEF"), "alt");
  FolderWriter writer(files_, folder_->path() + "/");
  writer.write("alt.def", "neu");
  writer.write("Neu.def", "eins");
  writer.write("neu.DEF", "zwei");
  QCOMPARE(files_.list(folder_->path(), "*"), (QStringList{"Alt.DEF", "Neu.def"}));
  QCOMPARE(files_.read(path("Alt.DEF")), QByteArray("neu"));
  QCOMPARE(files_.read(path("Neu.def")), QByteArray("zwei"));
}

void TestFiles::folders() {
  files_.makeFolder(path("Daten"));
  files_.makeFolder(path("Daten/"));
  files_.makeFolder(path("daten"));
  QVERIFY(files_.folderExists(path("DATEN\\")));
  QVERIFY(!files_.exists(path("Daten")));
  QCOMPARE(errorOf([&] { files_.makeFolder(path("kein/unter")); }), 76);
  files_.write(path("datei"), "");
  QCOMPARE(errorOf([&] { files_.makeFolder(path("datei")); }), 75);
  QVERIFY(!files_.folderExists(path("datei")));
  QVERIFY(!files_.folderExists(""));
  QCOMPARE(errorOf([&] { files_.remove(path("Daten")); }), 75);
}

void TestFiles::readable() {
  files_.write(path("a"), "");
  QVERIFY(files_.readable(path("a")));
  QVERIFY(!files_.readable(path("b")));
  QVERIFY(!files_.readable("  "));
  QVERIFY(!files_.readable(folder_->path()));
}

void TestFiles::trailingSeparator() {
  QCOMPARE(withTrailingSeparator("/a/b"), QString("/a/b") + QDir::separator());
  QCOMPARE(withTrailingSeparator("/a/b/"), "/a/b/");
  QCOMPARE(withTrailingSeparator("C:\\x\\"), "C:\\x\\");
}

QTEST_GUILESS_MAIN(TestFiles)
#include "test_files.moc"
