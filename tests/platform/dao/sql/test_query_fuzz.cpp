// Random texts: none may crash, hang or fail with anything but the errors of the query language.
#include <QSet>
#include <QTest>

#include "platform/dao/sql/parser.h"
#include "platform/runtime/error.h"
#include "tests/platform/dao/sql/random_text.h"
#include "tests/platform/dao/sql/source_text.h"
#include "tests/platform/dao/sql/statements.h"

using namespace qk::dao::sql;
using namespace qk::dao::sql::test;

class TestQueryFuzz : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void initTestCase() { store_ = competitionStore(); }

  void printedTreesReadAsTheSameTree() {
    for (quint32 seed = 1; seed <= 3000; ++seed) {
      const QString text = sourceText(RandomText(seed).statement());
      const QString again = sourceText(parseStatement(text));
      QVERIFY2(again == text, qPrintable(QString("seed %1\n%2\n%3").arg(seed).arg(text, again)));
    }
  }

  void randomTreesTranslateOrAreRefused() {
    int translated = 0;
    for (quint32 seed = 1; seed <= 3000; ++seed) {
      Statement statement = RandomText(seed).statement();
      const QString text = sourceText(statement);
      translated += attempt(text);
    }
    QVERIFY2(translated > 100, qPrintable(QString("only %1 went through").arg(translated)));
  }

  void garbageIsRefused() {
    for (quint32 seed = 1; seed <= 20000; ++seed) attempt(RandomText(seed).garbage());
  }

  void damagedStatementsAreRefusedOrRead() {
    const QStringList texts = readingStatements() + actionStatements();
    for (quint32 seed = 1; seed <= 20000; ++seed) {
      RandomText random(seed);
      attempt(random.damaged(texts[random.below(int(texts.size()))]));
    }
  }

 private:
  /// Whether SQLite takes the translation; anything but an error of the language fails the test.
  bool attempt(const QString& text) {
    static const QSet<int> kExpected = {3061, 3073, 3075, 3078, 3079, 3085, 3086,
                                        3096, 3127, 3307, 3346, 3360, 3464};
    try {
      const NativeQuery query = store_->translate(text);
      store_->native("EXPLAIN " + query.text, query.values);
      return true;
    } catch (const qk::Error& error) {
      if (kExpected.contains(error.number())) return false;
      qCritical("%d %s: %s", error.number(), qPrintable(error.description()), qPrintable(text));
      ++unexpected_;
    }
    return false;
  }

 private Q_SLOTS:
  void cleanup() { QCOMPARE(unexpected_, 0); }

 private:
  std::unique_ptr<SampleStore> store_;
  int unexpected_ = 0;
};

QTEST_APPLESS_MAIN(TestQueryFuzz)
#include "test_query_fuzz.moc"
