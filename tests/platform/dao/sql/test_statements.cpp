// Every query text of the program, read, bound and run on real tables.
#include <QTest>

#include "platform/dao/sql/parser.h"
#include "platform/runtime/error.h"
#include "tests/platform/dao/sql/source_text.h"
#include "tests/platform/dao/sql/statements.h"

using namespace qk::dao::sql;
using namespace qk::dao::sql::test;

class TestStatements : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() { store_ = competitionStore(); }

  void readingStatementsRun_data() { rows(readingStatements()); }
  void readingStatementsRun() {
    QFETCH(QString, text);
    check(text);
    QCOMPARE(store_->run(text).size(), text.contains("Max(") ? 1 : 0);

    Statement statement = parseStatement(text);
    resolve(statement, *store_);
    const Select& select = std::get<Select>(statement);
    const auto columns = resultColumns(select, *store_);
    QVERIFY(!columns.empty());
    // The result as SQLite brings it has as many columns, in the same order.
    const NativeQuery native = SqliteWriter().select(select);
    const auto counted = store_->native("SELECT count(*) FROM (" + native.text + ")", native.values);
    QCOMPARE(counted, QStringList{text.contains("Max(") ? "1" : "0"});
    for (const ResultColumn& column : columns) QVERIFY2(!column.name.isEmpty(), qPrintable(text));
  }

  void actionStatementsRun_data() { rows(actionStatements()); }
  void actionStatementsRun() {
    QFETCH(QString, text);
    check(text);
    QCOMPARE(store_->run(text), QStringList());
  }

  void criteriaRun_data() { rows(criteria()); }
  void criteriaRun() {
    QFETCH(QString, text);
    Statement statement = parseStatement("Select * from Haering_Daten");
    resolve(statement, *store_);
    const ExpressionPtr criterion = parseCriterion(text);
    resolveCriterion(*criterion, std::get<Select>(statement), *store_);
    const NativeQuery native = SqliteWriter().condition(*criterion);
    QCOMPARE(store_->native("SELECT * FROM \"Haering_Daten\" WHERE " + native.text, native.values),
             QStringList());
  }

 private:
  static void rows(const QStringList& texts) {
    QTest::addColumn<QString>("text");
    for (const QString& text : texts) QTest::newRow(qPrintable(text)) << text;
  }

  /// The tree's print reads as the same tree; a value with a quote breaks the text where it isn't doubled.
  void check(const QString& text) {
    const QString print = sourceText(parseStatement(text));
    QCOMPARE(sourceText(parseStatement(print)), print);
    if (!text.contains("'107'")) return;
    QVERIFY_THROWS_EXCEPTION(qk::Error, parseStatement(QString(text).replace("'107'", "'1'07'")));
    store_->run(QString(text).replace("'107'", "'1''07'"));
  }

  std::unique_ptr<SampleStore> store_;
};

QTEST_APPLESS_MAIN(TestStatements)
#include "test_statements.moc"
