// What SQLite lacks for the query language, through the raw handle, and the pattern matcher by itself.
#include <QDateTime>
#include <QRandomGenerator>
#include <QTest>

#include "platform/dao/sql/like_pattern.h"
#include "platform/dao/sql/native_values.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "tests/platform/dao/sql/sample_store.h"

using namespace qk::dao;
using namespace qk::dao::sql;
using qk::dao::sql::test::SampleStore;

class TestSqliteFunctions : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void timesAreWrittenAsTheToolkitWritesThem() {
    const QTime early(1, 2, 3, 456), late(23, 59, 59);
    for (const int year : {1, 99, 100, 1899, 2026, 9999, 10000, -44})
      for (const QTime time : {QTime(0, 0), early, late})
        for (const QDate day : {QDate(year, 1, 9), QDate(year, 12, 31)}) {
          const QDateTime moment(day, time);
          QCOMPARE(isoText(moment), moment.toString("yyyy-MM-dd HH:mm:ss"));
        }
    QCOMPARE(isoText({}), QString());
  }

  void matchesPatterns_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("matches");
    const auto row = [](const char* text, const char* pattern, bool matches) {
      QTest::addRow("%s like %s", text, pattern) << QString(text) << QString(pattern) << matches;
    };
    row("", "", true);
    row("", "*", true);
    row("", "?", false);
    row("abc", "", false);
    row("abc", "ABC", true);
    row("Übung", "üBUNG", true);
    row("Uebung", "Übung", false);
    row("Müller", "*ü*", true);
    row("MÜLLER", "mü*", true);
    row("Müller", "*l?r", true);
    row("Müller", "m*l*r*", true);
    row("aab", "*ab", true);
    row("aaab", "a*ab", true);
    row("abcabd", "*abd", true);
    row("abc", "a?c", true);
    row("abbc", "a?c", false);
    row("A7", "a#", true);
    row("Ax", "a#", false);
    row("#", "[#]", true);
    row("*", "[*]", true);
    row("a", "[*]", false);
    row("m", "[a-z]", true);
    row("M", "[a-z]", true);
    row("ä", "[a-z]", true);
    row("5", "[a-z]", false);
    row("5", "[!a-z]", true);
    row("m", "[!a-z]", false);
    row("b", "[abc]", true);
    row("d", "[abc]", false);
    row("-", "[a-]", true);
    row("!", "[!]", true);
    row("B7", "[a-cx-z][0-9]", true);
    row("W7", "[a-cx-z][0-9]", false);
    row("[x", "[x", true);
    row("x", "[x", false);
    row("x]", "x]", true);
    row("ab", "a[]b", true);
    row("10.10.2026", "10.*", true);
    row("100%", "100%", true);
    row("a_c", "abc", false);
    row("ſo", "so", false);
    row("ſo", "ſO", true);
    row("\u212a", "k", false);
    row("ẞ", "ß", true);
  }
  void matchesPatterns() {
    QFETCH(QString, text);
    QFETCH(QString, pattern);
    QFETCH(bool, matches);
    QCOMPARE(LikePattern(pattern).matches(text), matches);
    QCOMPARE(LikePattern(pattern).matches(QByteArrayView(text.toUtf8())), matches);
    const QStringList expected = {matches ? "1" : "0"};
    QCOMPARE(store_.native("SELECT qk_like(?, ?)", {text, pattern}), expected);
  }

  void bytesMatchAsCharactersDo_data() {
    QTest::addColumn<QString>("some");
    QTest::addColumn<int>("longestPattern");
    QTest::addColumn<int>("longestText");
    // Of one to four bytes; "ẞ" folds to a letter of another length.
    QTest::newRow("all kinds") << "aAzZ059 *?#[]!-äÄßẞÉſK€Ωω\ufeff😀" << 6 << 7;
    QTest::newRow("words that nearly fit") << "aAbÄ*" << 8 << 24;
  }
  void bytesMatchAsCharactersDo() {
    QFETCH(QString, some);
    QFETCH(int, longestPattern);
    QFETCH(int, longestText);
    QRandomGenerator random(1);
    const auto text = [&](int longest) {
      QString made;
      for (int length = random.bounded(longest); length > 0; --length)
        made += some[random.bounded(some.size())];  // now and then half a pair
      return made;
    };
    int matched = 0;
    for (int i = 0; i < 100'000; ++i) {
      const QString pattern = text(longestPattern);
      const QByteArray bytes = text(longestText).toUtf8();
      const QString value = QString::fromUtf8(bytes);
      const bool expected = LikePattern(pattern).matches(value);
      matched += expected;
      if (LikePattern(pattern).matches(QByteArrayView(bytes)) != expected)
        QFAIL(qPrintable(value + " like " + pattern));
    }
    QVERIFY(matched > 1000);
  }

  /// A range of an index that begins with ASCII holds whatever a pattern with that beginning takes.
  void onlyAsciiMatchesAscii() {
    for (int unit = 0x80; unit < 0x10000; ++unit)
      if (LikePattern::folded(QChar(unit)) < 0x80) QFAIL(qPrintable(QString::number(unit, 16)));
  }

  void beginsPlainly_data() {
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<QByteArray>("beginning");
    const auto row = [](const char* pattern, const char* beginning) {
      QTest::newRow(pattern) << QString(pattern) << QByteArray(beginning);
    };
    row("Schmidt*", "schmidt");
    row("A@[b]", "a@");
    row("10?", "10");
    row("Mül*", "m");
    row("Name 9", "name 9");
    row("a\x1f"
        "b",
        "a");
    row("*a", "");
    row("ä", "");
    row("#1", "");
    row("", "");
  }
  void beginsPlainly() {
    QFETCH(QString, pattern);
    QTEST(LikePattern(pattern).plainBeginning(), "beginning");
  }

  void malformedBytesMatchTheirReplacement_data() {
    QTest::addColumn<QByteArray>("bytes");
    for (const char* bytes : {"\x80", "\xc0\x80", "\xc3", "\xe0\x80\x80", "\xe2\x82", "\xed\xa0\x80", "\xff"})
      QTest::addRow("%s", QByteArray(bytes).toHex().constData()) << QByteArray("a") + bytes + "z";
  }
  void malformedBytesMatchTheirReplacement() {
    QFETCH(QByteArray, bytes);
    const QString text = QString::fromUtf8(bytes);
    QVERIFY(text.contains(QChar::ReplacementCharacter));
    for (const QString& pattern : {text, QString("a*z"), QString("a?z"), QString("a*")})
      QCOMPARE(LikePattern(pattern).matches(QByteArrayView(bytes)), LikePattern(pattern).matches(text));
  }

  void wordsOfAnyLengthAreFound() {
    for (const int length : {1, 2, 254, 255, 256, 257, 600}) {
      const QString word = QString("ab").repeated(300).left(length);
      const LikePattern pattern("*" + word + "*");
      QVERIFY(pattern.matches(QByteArrayView(("ä" + word.toUpper() + "c").toUtf8())));
      QVERIFY(!pattern.matches(QByteArrayView((word.chopped(1) + "c" + word.chopped(1)).toUtf8())));
    }
  }

  void manyStarsStayQuick() {
    const QString text = QString("a").repeated(5000);
    QVERIFY(!LikePattern(u"*a*a*a*a*a*a*a*a*a*a*b").matches(text));
    QVERIFY(!LikePattern(u"*a*a*a*a*a*a*a*a*a*a*b").matches(QByteArrayView(text.toUtf8())));
  }

  void matchesNumbersAndDatesByTheirText() {
    const auto one = [this](const char* text) { return store_.native(QString("SELECT ") + text).first(); };
    QCOMPARE(one("qk_like(9.7, '9,7')"), QString("1"));
    QCOMPARE(one("qk_like(9.7, '9.7')"), QString("0"));
    QCOMPARE(one("qk_like(0.1 + 0.2, '0,3')"), QString("1"));
    QCOMPARE(one("qk_like(12.0, '12')"), QString("1"));
    QCOMPARE(one("qk_like(-1, '-1')"), QString("1"));
    QCOMPARE(one("qk_like(0, '0')"), QString("1"));
    QCOMPARE(one("qk_like(107, '10*')"), QString("1"));
    QCOMPARE(one("qk_like(NULL, '*')"), QString("NULL"));
    QCOMPARE(one("qk_like('x', NULL)"), QString("NULL"));
    QCOMPARE(one("qk_like_date('2026-11-20 00:00:00', '20.11.2026')"), QString("1"));
    QCOMPARE(one("qk_like_date('2026-11-20 10:41:07', '20.11.*')"), QString("1"));
    QCOMPARE(one("qk_like_date('2026-11-20 10:41:07', '*10:41:07')"), QString("1"));
    QCOMPARE(one("qk_like_date('2026-11-20 00:00:00', '2026*')"), QString("0"));
    QCOMPARE(one("qk_like_date(NULL, '*')"), QString("NULL"));
  }

  void patternsMayDifferByRow() {
    store_.native("CREATE TEMP TABLE p(v TEXT, m TEXT)");
    store_.native("INSERT INTO p VALUES ('abc', 'a*'), ('abc', 'b*'), ('bcd', 'b*')");
    QCOMPARE(store_.native("SELECT qk_like(v, m) FROM p"), QStringList({"1", "0", "1"}));
    QCOMPARE(store_.native("SELECT qk_like(v, 'a*') FROM p"), QStringList({"1", "1", "0"}));
  }

  void computes_data() {
    QTest::addColumn<QString>("expression");
    QTest::addColumn<QString>("result");
    const auto row = [](const char* expression, const char* result) {
      QTest::newRow(expression) << QString(expression) << QString(result);
    };
    row("qk_val('107')", "107.0");
    row("qk_val(' 12,5')", "12.0");
    row("qk_val('007')", "7.0");
    row("qk_val('-7')", "-7.0");
    row("qk_val('7a')", "7.0");
    row("qk_val('٣')", "0.0");
    row("qk_val('999999999999999')", "999999999999999.0");
    row("qk_val('12345678901234567890') = 12345678901234567890.0", "1");
    row("qk_val(107)", "107.0");
    row("qk_val('12.5x')", "12.5");
    row("qk_val('')", "0.0");
    row("qk_val(9.5)", "9.0");
    row("qk_val(NULL)", "NULL");
    row("qk_text(9.75)", "9,75");
    row("qk_text(NULL)", "NULL");
    row("qk_number(' 1e3x')", "1000.0");
    row("qk_number('x')", "0.0");
    row("qk_whole(2.5, 0, 255)", "2");
    row("qk_whole(NULL, 0, 255)", "NULL");
    row("qk_money(3.08625)", "3.0862");
    row("qk_money(1e18)", "1.0e+18");
    row("qk_stored_money(NULL)", "NULL");
    row("qk_text_date('2026-11-20 00:00:00')", "20.11.2026");
    row("qk_text_date('unbekannt')", "unbekannt");
    row("qk_datevalue('20.11.2026 10:41:07')", "2026-11-20 00:00:00");
    row("qk_datevalue('2026-11-20 10:41:07')", "2026-11-20 00:00:00");
    row("qk_datevalue(2)", "1900-01-01 00:00:00");
    row("qk_datevalue('kein Datum')", "NULL");
    row("qk_datevalue(NULL)", "NULL");
    row("qk_datevalue(1e300)", "NULL");
    row("qk_datepart('2026-11-20 10:41:07', 0)", "2026");
    row("qk_datepart('2026-11-20 10:41:07', 1)", "11");
    row("qk_datepart('20.11.2026', 2)", "20");
    row("qk_datepart('', 1)", "NULL");
    row("qk_serial('1899-12-30 00:00:00')", "0.0");
    row("qk_serial('1900-01-01 12:00:00')", "2.5");
    row("qk_date(2.5)", "1900-01-01 12:00:00");
    row("qk_date(-1)", "1899-12-29 00:00:00");
    row("qk_round(-2.5, 0)", "-3.0");
    row("qk_round(-2.5, 1)", "-2.0");
    row("qk_idiv(7, 2)", "3");
    row("qk_idiv(-7, 2)", "-3");
    row("qk_idiv(2.5, 1)", "2");
    row("qk_mod(7, 4)", "3");
    row("qk_mod(7, 0)", "NULL");
    row("qk_mod(0, 1e18)", "0");
    row("qk_ucase('äß')", "ÄSS");
    row("qk_lcase('ÄB')", "äb");
  }
  void computes() {
    QFETCH(QString, expression);
    QFETCH(QString, result);
    QCOMPARE(store_.native("SELECT " + expression), QStringList{result});
  }

  void aNumberBeyondAllMeasureIsAnOverflow() {
    const QString text = QString("9").repeated(400);
    try {
      store_.native("SELECT qk_val(?)", {text});
      QFAIL("went through");
    } catch (const qk::Error& error) {
      QVERIFY2(error.description().contains("overflow"), qPrintable(error.description()));
    }
  }

  void sortsAsGermanDoes() {
    store_.native("CREATE TEMP TABLE s(v TEXT)");
    store_.native(
        "INSERT INTO s VALUES ('Zander'), ('Öl'), ('ofen'), ('Ähre'), ('Adler'), ('äffchen'), ('Uhr'), "
        "('über'), "
        "(''), ('Straße'), ('Strasse'), ('Strauß'), ('1'), ('10'), ('2'), (NULL)");
    QCOMPARE(store_.native("SELECT v FROM s ORDER BY v COLLATE german, v DESC"),
             QStringList({"NULL", "", "1", "10", "2", "Adler", "äffchen", "Ähre", "ofen", "Öl", "Strasse",
                          "Straße", "Strauß", "über", "Uhr", "Zander"}));
    QCOMPARE(store_.native("SELECT 'MÜLLER' = 'müller' COLLATE german, 'Müller' = 'Muller' COLLATE german"),
             QStringList{"1|0"});
  }

  void unknownQuotedNamesAreNoStrings() {
    QVERIFY_THROWS_EXCEPTION(qk::Error, store_.native("SELECT \"nicht da\""));
  }

  void valuesGoBothWays_data() {
    QTest::addColumn<int>("type");
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QVariant>("native");
    const auto row = [](const char* name, FieldType type, const QVariant& value, const QVariant& native) {
      QTest::newRow(name) << int(type) << value << native;
    };
    const QDateTime moment(QDate(2026, 11, 20), QTime(10, 41, 7));
    row("yes", FieldType::Boolean, -1, -1);
    row("no", FieldType::Boolean, 0, 0);
    row("long", FieldType::Long, 4711, 4711);
    row("double", FieldType::Double, 9.7, 9.7);
    row("text", FieldType::Text, "O'Neill ", "O'Neill ");
    row("empty", FieldType::Text, "", "");
    row("date", FieldType::Date, moment, "2026-11-20 10:41:07");
    row("date zero", FieldType::Date, qk::dateZero(), "1899-12-30 00:00:00");
    row("money", FieldType::Currency, QVariant::fromValue(qk::Money::fromUnits(125001)), 12.5001);
    row("bytes", FieldType::LongBinary, QByteArray("\0\1", 2), QByteArray("\0\1", 2));
    row("null", FieldType::Long, QVariant(), QVariant());
  }
  void valuesGoBothWays() {
    QFETCH(int, type);
    QFETCH(QVariant, value);
    QFETCH(QVariant, native);
    const SqliteWriter writer;
    QCOMPARE(writer.toNative(value, FieldType(type)), native);
    const QVariant back = writer.fromNative(native, FieldType(type));
    if (type == int(FieldType::Currency)) {
      QCOMPARE(back.value<qk::Money>().units(), value.value<qk::Money>().units());
    } else {
      QCOMPARE(back, value);
    }
  }

  void otherFormsBecomeTheStoredOne() {
    const SqliteWriter writer;
    QCOMPARE(writer.toNative(true, FieldType::Boolean), QVariant(-1));
    QCOMPARE(writer.toNative(7, FieldType::Boolean), QVariant(-1));
    QCOMPARE(writer.toNative("Wahr", FieldType::Boolean), QVariant(-1));
    QCOMPARE(writer.toNative("False", FieldType::Boolean), QVariant(0));
    QCOMPARE(writer.toNative("9,7", FieldType::Double), QVariant(9.7));
    QCOMPARE(writer.toNative(0, FieldType::Date), QVariant("1899-12-30 00:00:00"));
    QCOMPARE(writer.toNative(1.75, FieldType::Date), QVariant("1899-12-31 18:00:00"));
    QCOMPARE(writer.toNative(false, FieldType::Date), QVariant("1899-12-30 00:00:00"));
    QCOMPARE(writer.toNative("20.11.2026", FieldType::Date), QVariant("2026-11-20 00:00:00"));
    QCOMPARE(writer.toNative(9.7, FieldType::Text), QVariant("9,7"));
    QCOMPARE(writer.fromNative(0, FieldType::Date), QVariant(qk::dateZero()));
    QCOMPARE(writer.fromNative("2026-11-20", FieldType::Date),
             QVariant(QDateTime(QDate(2026, 11, 20), QTime(0, 0))));
    QCOMPARE(writer.fromNative(1, FieldType::Boolean), QVariant(-1));
    for (const FieldType type : {FieldType::Double, FieldType::Date, FieldType::Boolean}) {
      try {
        writer.toNative("kein Wert", type);
        QFAIL("went through");
      } catch (const qk::Error& error) {
        QCOMPARE(error.number(), 3464);
      }
    }
  }

 private:
  SampleStore store_;
};

QTEST_APPLESS_MAIN(TestSqliteFunctions)
#include "test_sqlite_functions.moc"
