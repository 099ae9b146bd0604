// The rules of the house that a machine can check: who may include whom, what platform/ may not know,
// how long a file may grow, which words don't belong into a source.
#include <QDirIterator>
#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

#include "tests/support/compare_lines.h"

namespace {

constexpr int kLongestFile = 600;

// From the ground up. A file may include its own room and those before it.
const QStringList kRooms = {
    "platform/runtime",
    "platform/dao/values/",
    "platform/dao/recordset.h",  // the part of the store's face that its rooms carry out
    "platform/dao/sql/",
    "platform/dao/signs/",
    "platform/dao/server/",
    "platform/dao/engine/",
    "platform/dao/sqlite/",
    "platform/dao/postgres/",
    "platform/dao/rows/",
    "platform/dao/",
    "platform/dao/moving/",
    "platform/",
    "data/icons/",
    "app/ground/",
    "targetconfig/",
    "link/",
    "capture/",
    "shooters/",
    "link/linecontrol/",
    "cash/",
    "evaluation/",
    "backup/",
    "app/shell/",
    "app/watch/",
    "masterdata/",
    "app/",
    "tools/",
    "tests/"};
// An engine of the store knows nothing of another.
const QStringList kEngines = {"platform/dao/sqlite/", "platform/dao/postgres/"};
// What is behind the store's face: for its own rooms, for their tests, and for benchmarks.
const QStringList kBehindTheStore = {"platform/dao/engine/", "platform/dao/rows/", "platform/dao/opening.h"};
// Rooms above app/ that only end in programs.
const QStringList kRoofs = {"data/", "benchmarks/"};

int rankOf(const QString& file) {
  int best = -1, length = -1;
  for (int i = 0; i < kRooms.size(); ++i)
    if (file.startsWith(kRooms[i]) && kRooms[i].size() > length)
      best = i, length = static_cast<int>(kRooms[i].size());
  for (const QString& roof : kRoofs)
    if (best < 0 && file.startsWith(roof)) best = static_cast<int>(kRooms.size()) - 1;
  return best;
}

int placeIn(const QStringList& rooms, const QString& file) {
  const auto found =
      std::find_if(rooms.begin(), rooms.end(), [&](const QString& room) { return file.startsWith(room); });
  return found == rooms.end() ? -1 : static_cast<int>(found - rooms.begin());
}

bool mayInclude(const QString& from, const QString& to) {
  const int engine = placeIn(kEngines, from), other = placeIn(kEngines, to);
  if (engine >= 0 && other >= 0 && engine != other) return false;
  return rankOf(to) <= rankOf(from);
}

struct SourceFile {
  QString text;
  QStringList includes;  // of our own files, from the root
};

const QMap<QString, SourceFile>& sources() {
  static const QMap<QString, SourceFile> all = [] {
    QMap<QString, SourceFile> found;
    const QDir root(QK_SOURCE_DIR);
    static const QRegularExpression include("^\\s*#include \"([^\"]+)\"",
                                            QRegularExpression::MultilineOption);
    QDirIterator walk(root.path(), {"*.cpp", "*.h"}, QDir::Files, QDirIterator::Subdirectories);
    while (walk.hasNext()) {
      const QString path = root.relativeFilePath(walk.next());
      if (path.startsWith("build/") || path.startsWith(".")) continue;
      QFile file(root.filePath(path));
      if (!file.open(QIODevice::ReadOnly)) continue;
      SourceFile source{QString::fromUtf8(file.readAll()), {}};
      for (auto match = include.globalMatch(source.text); match.hasNext();) {
        const QString name = match.next().captured(1);
        if (QFile::exists(root.filePath(name))) source.includes << name;
      }
      found.insert(path, source);
    }
    return found;
  }();
  return all;
}

QStringList matches(const QString& text, const QRegularExpression& words) {
  QStringList found;
  for (auto match = words.globalMatch(text); match.hasNext();) found << match.next().captured();
  return found;
}

}  // namespace

class TestHouse : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void sourcesAreFound() {
    QVERIFY(sources().size() > 20);
    QVERIFY(sources().contains("platform/runtime/error.h"));
  }

  void theRuleKnowsUpFromDown() {
    QVERIFY(mayInclude("app/x.cpp", "link/a.h"));
    QVERIFY(!mayInclude("platform/dao/a.cpp", "app/ground/b.h"));
    QVERIFY(!mayInclude("link/a.cpp", "link/linecontrol/b.h"));
    QVERIFY(!mayInclude("platform/runtime/a.h", "platform/dao/b.h"));
    QVERIFY(!mayInclude("platform/dao/sql/a.cpp", "platform/dao/engine/b.h"));
    QVERIFY(!mayInclude("platform/dao/engine/a.cpp", "platform/dao/sqlite/b.h"));
    QVERIFY(!mayInclude("platform/dao/sqlite/a.cpp", "platform/dao/postgres/b.h"));
    QVERIFY(!mayInclude("platform/dao/postgres/a.cpp", "platform/dao/sqlite/b.h"));
    QVERIFY(!mayInclude("platform/dao/rows/a.cpp", "platform/dao/database.h"));
    QVERIFY(mayInclude("platform/dao/rows/a.h", "platform/dao/recordset.h"));
    QVERIFY(!mayInclude("platform/dao/database.cpp", "platform/dao/moving/a.h"));
    QVERIFY(mayInclude("platform/schema/a.cpp", "platform/dao/moving/b.h"));
    QVERIFY(!mayInclude("capture/a.h", "tests/support/b.h"));
    QVERIFY(!mayInclude("app/ground/a.h", "app/b.h"));
    QVERIFY(mayInclude("app/a.cpp", "cash/b.h"));
    QVERIFY(!mayInclude("shooters/a.cpp", "cash/b.h"));
    QVERIFY(!mayInclude("cash/a.cpp", "app/b.h"));
    QVERIFY(mayInclude("app/a.cpp", "evaluation/b.h"));
    QVERIFY(!mayInclude("cash/a.cpp", "evaluation/b.h"));
    QVERIFY(mayInclude("app/a.cpp", "masterdata/b.h"));
    QVERIFY(!mayInclude("evaluation/a.cpp", "masterdata/b.h"));
    QVERIFY(mayInclude("app/a.cpp", "backup/b.h"));
    QVERIFY(!mayInclude("backup/a.cpp", "masterdata/b.h"));
    QVERIFY(!mayInclude("capture/a.cpp", "backup/b.h"));
    QVERIFY(mayInclude("masterdata/a.cpp", "app/shell/b.h"));
    QVERIFY(mayInclude("app/a.cpp", "app/shell/b.h"));
    QVERIFY(!mayInclude("masterdata/a.cpp", "app/b.h"));
    QVERIFY(!mayInclude("app/shell/a.cpp", "masterdata/b.h"));
    QVERIFY(mayInclude("masterdata/a.cpp", "app/watch/b.h"));
    QVERIFY(!mayInclude("app/shell/a.cpp", "app/watch/b.h"));
  }

  void noIncludePointsUp() {
    QStringList wrong;
    for (auto it = sources().begin(); it != sources().end(); ++it)
      for (const QString& target : it->includes)
        if (!mayInclude(it.key(), target)) wrong << it.key() + " -> " + target;
    COMPARE_LINES(wrong, QStringList());
  }

  void theStoreIsReachedByItsFace() {
    QStringList wrong;
    for (auto it = sources().begin(); it != sources().end(); ++it) {
      if (it.key().startsWith("platform/dao/") || it.key().startsWith("tests/") ||
          it.key().startsWith("benchmarks/"))
        continue;
      for (const QString& target : it->includes)
        if (placeIn(kBehindTheStore, target) >= 0 || placeIn(kEngines, target) >= 0)
          wrong << it.key() + " -> " + target;
    }
    COMPARE_LINES(wrong, QStringList());
  }

  void everyFileStandsInARoom() {
    QStringList homeless;
    for (auto it = sources().begin(); it != sources().end(); ++it)
      if (rankOf(it.key()) < 0 && !it.key().startsWith("cmake/")) homeless << it.key();
    COMPARE_LINES(homeless, QStringList());
  }

  void noIncludeCycle() {
    QMap<QString, int> state;  // 1 on the way, 2 done
    QStringList cycle;
    const std::function<void(const QString&, QStringList)> visit = [&](const QString& file, QStringList way) {
      if (state.value(file) == 2 || !cycle.isEmpty()) return;
      way << file;
      if (state.value(file) == 1) {
        cycle = way;
        return;
      }
      state[file] = 1;
      for (const QString& target : sources().value(file).includes) visit(target, way);
      state[file] = 2;
    };
    for (const QString& file : sources().keys()) visit(file, {});
    QCOMPARE(cycle.join(" -> "), QString());
  }

  void thePlatformKnowsNothingOfTheDomain() {
    static const QRegularExpression domain(
        "sch(ü|ue)tze|schuss|sch(ü|ue)sse|wettkampf|linie|disziplin|teiler|scheibe|h(ae|ä)ring|intarso|"
        "tarvex|"
        "kasse|einlage|verein|shooter|competition|discipline",
        QRegularExpression::CaseInsensitiveOption);
    QStringList wrong;
    for (auto it = sources().begin(); it != sources().end(); ++it)
      if (it.key().startsWith("platform/"))
        for (const QString& word : matches(it->text, domain)) wrong << it.key() + ": " + word;
    COMPARE_LINES(wrong, QStringList());
  }

  /// A test that makes a store makes it where the engine of its run has it.
  void testsMakeStoresOnEitherEngine() {
    static const QRegularExpression making(
        "\\b(Database::create|makeCompetition|makeDemoCompetition|createDatabase)\\b[({]");
    // What each of them is about: the engines themselves, the way from one to the other, and a server's
    // rights and passwords.
    const QStringList aboutEngines = {"tests/platform/dao/", "tests/masterdata/making/test_move",
                                      "tests/app/test_server_opening.cpp"};
    QStringList wrong, makers;
    for (auto it = sources().begin(); it != sources().end(); ++it) {
      const auto isAbout = [&](const QString& start) { return it.key().startsWith(start); };
      if (!it.key().startsWith("tests/") || matches(it->text, making).isEmpty()) continue;
      if (std::any_of(aboutEngines.begin(), aboutEngines.end(), isAbout)) continue;
      makers << it.key();
      if (!it->includes.contains("tests/support/test_store.h")) wrong << it.key();
    }
    QVERIFY(makers.size() > 5);
    COMPARE_LINES(wrong, QStringList());
  }

  /// Closing a file drops the locks that the process has on it, and an open database lives by them. So files
  /// are opened at few doors, and those know the held ones (platform/runtime/held_files.h).
  void filesAreOpenedAtTheirDoors() {
    static const QRegularExpression opening(
        "\\b(QFile|QSaveFile|QTemporaryFile)\\b( \\w+)?[({;]|\\b[io]?fstream\\b|\\bfopen\\b");
    const QStringList doors = {"platform/runtime/files.cpp", "platform/runtime/settled_files.cpp",
                               "platform/settings/settings.cpp", "platform/dao/server/server_address.cpp",
                               "platform/dao/sqlite/"};
    const QStringList elsewhere = {"tests/", "tools/", "benchmarks/", "data/"};
    QStringList wrong, found;
    for (auto it = sources().begin(); it != sources().end(); ++it) {
      const auto isAt = [&](const QString& start) { return it.key().startsWith(start); };
      if (std::any_of(elsewhere.begin(), elsewhere.end(), isAt)) continue;
      if (matches(it->text, opening).isEmpty()) continue;
      found << it.key();
      if (!std::any_of(doors.begin(), doors.end(), isAt)) wrong << it.key();
    }
    QVERIFY(found.size() > 3);
    COMPARE_LINES(wrong, QStringList());
  }

  /// What an engine is told is written where an engine can write it otherwise.
  void theStoreSpeaksSqlBelowItsSeamOnly() {
    static const QRegularExpression comment("//[^\n]*");
    static const QRegularExpression literal("'(?:[^'\\\\\n]|\\\\.)'|\"(?:[^\"\\\\\n]|\\\\.)*\"");
    static const QStringList words = {"SELECT", "FROM",   "WHERE", "ORDER BY", "GROUP BY", "LIMIT",
                                      "INSERT", "VALUES", "SET",   "UPDATE",   "DELETE",   "JOIN",
                                      "UNION",  "AND",    "OR",    "NULL",     "DESC"};
    static const QRegularExpression sql("\\b(" + words.join('|') + ")\\b|\\b(?i:min|max|count)\\(|= \\?");
    const QStringList below = {"platform/dao/sql/", "platform/dao/sqlite/", "platform/dao/postgres/"};
    QStringList wrong, found;
    for (auto it = sources().begin(); it != sources().end(); ++it) {
      if (!it.key().startsWith("platform/dao/")) continue;
      const QStringList spoken = matches(QString(it->text).remove(comment), literal).filter(sql);
      for (const QString& text : spoken)
        (placeIn(below, it.key()) >= 0 ? found : wrong) << it.key() + ": " + text;
    }
    QVERIFY(found.size() > 50);
    COMPARE_LINES(wrong, QStringList());
  }

  void noFileOutgrowsAReader() {
    QStringList wrong;
    for (auto it = sources().begin(); it != sources().end(); ++it)
      if (it->text.count('\n') > kLongestFile) wrong << it.key() + QString(": %1").arg(it->text.count('\n'));
    COMPARE_LINES(wrong, QStringList());
  }

  void nothingIsLeftHalfDone() {
    // In pieces, so that this file doesn't find itself.
    static const QRegularExpression words(
        "\\b(TO"
        "DO|FIX"
        "ME|XX"
        "X|Q"
        "SKIP|nicht imple"
        "mentiert|not imple"
        "mented)\\b");
    QStringList wrong;
    for (auto it = sources().begin(); it != sources().end(); ++it)
      for (const QString& word : matches(it->text, words)) wrong << it.key() + ": " + word;
    COMPARE_LINES(wrong, QStringList());
  }
};

QTEST_APPLESS_MAIN(TestHouse)
#include "test_house.moc"
