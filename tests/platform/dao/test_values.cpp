// Values on their way into a field and back.
#include <QtTest>
#include <cmath>
#include <limits>

#include "platform/runtime/datetext.h"
#include "platform/runtime/money.h"
#include "tests/platform/dao/store_factory.h"

using namespace qk;
using namespace qk::dao;

namespace {

/// A time zone, in the form of POSIX, for as long as it lives.
class LocalZone {
 public:
  explicit LocalZone(const char* rule) : before_(qgetenv("TZ")), wasSet_(qEnvironmentVariableIsSet("TZ")) {
    qputenv("TZ", rule);
  }
  ~LocalZone() {
    if (wasSet_)
      qputenv("TZ", before_);
    else
      qunsetenv("TZ");
  }
  LocalZone(const LocalZone&) = delete;
  LocalZone& operator=(const LocalZone&) = delete;

 private:
  QByteArray before_;
  bool wasSet_;
};

}  // namespace

class TestValues : public QObject {
  Q_OBJECT

  std::unique_ptr<Store> store_;
  std::unique_ptr<Database> database_;
  std::unique_ptr<Recordset> rows_;

  /// Through the store and back.
  QVariant kept(const QString& field, const QVariant& value) {
    rows_->addNew();
    rows_->setValue(field, value);
    const QVariant buffered = rows_->value(field);
    rows_->update();
    rows_->moveLast();
    const QVariant stored = rows_->value(field);
    if (stored != buffered) qWarning() << field << "buffered" << buffered << "stored" << stored;
    return stored;
  }
  int refused(const QString& field, const QVariant& value) {
    rows_->addNew();
    const int error = errorOf([&] { rows_->setValue(field, value); });
    rows_->cancelUpdate();
    return error;
  }

 private Q_SLOTS:
  void init() {
    store_ = newStore();
    database_ = store_->connect();
    database_->createTable({"T",
                            {counter("ID"),
                             {"ja", FieldType::Boolean},
                             {"byte", FieldType::Byte},
                             {"kurz", FieldType::Integer},
                             {"lang", FieldType::Long},
                             {"geld", FieldType::Currency},
                             {"einfach", FieldType::Single},
                             {"doppelt", FieldType::Double},
                             {"tag", FieldType::Date},
                             text("text", 5),
                             {"memo", FieldType::Memo},
                             {"bild", FieldType::LongBinary}},
                            {{"PrimaryKey", {"ID"}, true, true, true}}});
    rows_ = database_->openRecordset("T");
  }
  void cleanup() {
    rows_.reset();
    database_.reset();
    store_.reset();
  }

  /// Nor did the classic engine's ever hold one.
  void aYesNoColumnHoldsNoNull() {
    const auto nulls = [&](const QString& table) {
      return database_->openRecordset("Select * from " + table + " where ja Is Null")->eof() ? 0 : 1;
    };
    QCOMPARE(kept("ja", {}), QVariant(0));
    rows_->edit();
    rows_->setValue("ja", QVariant());
    QCOMPARE(rows_->value("ja"), QVariant(0));
    rows_->update();
    QCOMPARE(rows_->value("ja"), QVariant(0));
    for (const char* text :
         {"INSERT INTO T (lang) VALUES (1)", "INSERT INTO T (lang, ja) VALUES (2, Null)",
          "INSERT INTO T (lang, ja) SELECT 3, Null FROM T WHERE lang = 1",
          "INSERT INTO T (lang, ja) SELECT 4, kurz > 1 FROM T WHERE lang = 1",
          "INSERT INTO T (lang, ja) SELECT 5, kurz FROM T WHERE lang = 1", "UPDATE T SET ja = Null",
          "UPDATE T SET ja = (kurz > 1)", "UPDATE T SET ja = kurz", "UPDATE T SET ja = (text = 'x')",
          "UPDATE T SET ja = True", "UPDATE T INNER JOIN T AS U ON T.ID = U.ID SET T.ja = U.kurz"}) {
      QVERIFY2(database_->execute(text) > 0, text);
      QVERIFY2(nulls("T") == 0, text);
    }
    QCOMPARE(walk(*database_->openRecordset("Select * from T where ja = False"), "ID").size(), 6);

    database_->createTable({"L", {number("Nr")}, {{"PrimaryKey", {"Nr"}, true, true, true}}});
    database_->execute("INSERT INTO L (Nr) VALUES (1)");
    database_->appendField("L", {"ja", FieldType::Boolean});
    QCOMPARE(nulls("L"), 0);
    database_->execute("SELECT L.Nr, T.ja INTO K FROM L LEFT JOIN T ON L.Nr = T.byte");
    QCOMPARE(nulls("K"), 0);
    QCOMPARE(walk(*database_->openRecordset("Select * from K"), "ja"), QStringList{"0"});
  }

  /// What isn't there is no stored value.
  void anOuterJoinStillGivesNull() {
    database_->createTable({"L", {number("Nr")}, {{"PrimaryKey", {"Nr"}, true, true, true}}});
    database_->execute("INSERT INTO L (Nr) VALUES (1)");
    database_->execute("INSERT INTO L (Nr) VALUES (2)");
    database_->execute("INSERT INTO T (lang) VALUES (2)");
    const auto rows =
        database_->openRecordset("Select L.Nr, T.ja from L left join T on L.Nr = T.lang order by L.Nr");
    QVERIFY(rows->value("ja").isNull());
    rows->moveNext();
    QCOMPARE(rows->value("ja"), QVariant(0));
    const QString missing = "Select L.Nr from L left join T on L.Nr = T.lang where T.ja Is Null";
    QCOMPARE(walk(*database_->openRecordset(missing), "Nr"), QStringList{"1"});
  }

  void yesNoIsMinusOneOrZero() {
    for (const QVariant& yes : {QVariant(true), QVariant(-1), QVariant(1), QVariant("-1"), QVariant("1"),
                                QVariant("True"), QVariant("Wahr")})
      QCOMPARE(kept("ja", yes), QVariant(-1));
    for (const QVariant& no :
         {QVariant(false), QVariant(0), QVariant("0"), QVariant("False"), QVariant("falsch")})
      QCOMPARE(kept("ja", no), QVariant(0));
    QCOMPARE(refused("ja", "vielleicht"), 3421);
    QCOMPARE(walk(*database_->openRecordset("Select * from T where ja = True"), "ID").size(), 7);
    QCOMPARE(walk(*database_->openRecordset("Select * from T where ja = 0"), "ID").size(), 5);
  }

  void numbersInTextsAreGerman() {
    QCOMPARE(kept("doppelt", "9,7"), QVariant(9.7));
    QCOMPARE(kept("doppelt", -3), QVariant(-3.0));
    QCOMPARE(refused("doppelt", "9.7"), 3421);
    QCOMPARE(refused("doppelt", "1e3"), 3421);
    QCOMPARE(refused("doppelt", ""), 3421);
    QCOMPARE(kept("lang", " 42 "), QVariant(42));
    QCOMPARE(kept("lang", 2.5), QVariant(2));
    QCOMPARE(kept("lang", true), QVariant(-1));
    QCOMPARE(kept("einfach", 1.5), QVariant(1.5));
  }

  void wholeNumbersKnowTheirRange() {
    QCOMPARE(kept("byte", 255), QVariant(255));
    QCOMPARE(refused("byte", 256), 3421);
    QCOMPARE(refused("byte", -1), 3421);
    QCOMPARE(kept("kurz", -32768), QVariant(-32768));
    QCOMPARE(refused("kurz", 32768), 3421);
    QCOMPARE(kept("lang", 2147483647), QVariant(2147483647));
    QCOMPARE(refused("lang", 2147483648.0), 3421);
    QCOMPARE(refused("lang", std::nan("")), 3421);
  }

  void moneyStaysExact() {
    QCOMPARE(kept("geld", QVariant::fromValue(Money::fromUnits(15734512))).value<Money>().units(), 15734512);
    QCOMPARE(kept("geld", "1573,45").value<Money>().units(), 15734500);
    QCOMPARE(kept("geld", 0.1).value<Money>().units(), 1000);
    QCOMPARE(kept("geld", -3).value<Money>().units(), -30000);
  }

  void numbersKeepTheirLastDigit() {
    for (const double value :
         {0.1, 1.0 / 3.0, 12345678.0, -1.5e-30, double(std::numeric_limits<float>::max()),
          double(std::numeric_limits<float>::min()), 16777217.0}) {
      const double single = static_cast<double>(static_cast<float>(value));
      QCOMPARE(kept("einfach", value).toDouble(), single);
      QVERIFY(std::signbit(rows_->value("einfach").toDouble()) == std::signbit(single));
    }
    for (const double value : {0.1, 0.1 + 0.2, 1.0 / 3.0, 12345678.123456789, 9007199254740993.0,
                               std::numeric_limits<double>::max(), std::numeric_limits<double>::min(),
                               -std::numeric_limits<double>::denorm_min()}) {
      const QVariant stored = kept("doppelt", value);
      QVERIFY2(stored.typeId() == QMetaType::Double && stored.toDouble() == value,
               qPrintable(QString::number(value, 'g', 17)));
    }
    QCOMPARE(walk(*database_->openRecordset("Select * from T where einfach = 0.5"), "ID").size(), 0);
    kept("einfach", 0.5);
    QCOMPARE(walk(*database_->openRecordset("Select * from T where einfach = 0.5"), "ID").size(), 1);
  }

  /// No column holds them on the old engine either.
  void whatIsNoNumberIsRefused() {
    const double infinite = std::numeric_limits<double>::infinity(), none = std::nan("");
    for (const char* field : {"byte", "kurz", "lang"})
      for (const QVariant& value : {QVariant(infinite), QVariant(none), QVariant(qint64(1) << 40),
                                    QVariant("99999999999999999999"), QVariant("-99999999999999999999")})
        QCOMPARE(refused(field, value), 3421);
    for (const char* field : {"einfach", "doppelt"})
      for (const double value : {infinite, -infinite, none}) QCOMPARE(refused(field, value), 6);
    QCOMPARE(refused("einfach", 1e39), 6);
    QCOMPARE(refused("geld", none), 6);
  }

  /// Where an engine can't hold an amount to the last digit, it says so.
  void moneyAtItsEnds() {
    const auto money = [](qint64 units) { return QVariant::fromValue(Money::fromUnits(units)); };
    for (const qint64 units :
         {qint64(1), qint64(-1), qint64(999'999'999'999'999), qint64(-999'999'999'999'999)})
      QCOMPARE(kept("geld", money(units)).value<Money>().units(), units);
    constexpr qint64 most = std::numeric_limits<qint64>::max(), least = std::numeric_limits<qint64>::min();
    for (const qint64 units : {most, most - 1, least, least + 1, qint64(9'007'199'254'740'993)}) {
      rows_->addNew();
      rows_->setValue("geld", money(units));
      if (const int error = errorOf([&] { rows_->update(); }); error != 0) {
        QCOMPARE(error, 6);
        rows_->cancelUpdate();
        continue;
      }
      rows_->moveLast();
      QCOMPARE(rows_->value("geld").value<Money>().units(), units);
    }
    QCOMPARE(refused("geld", 922337203685478.0), 6);
    QCOMPARE(refused("geld", -922337203685478.0), 6);
  }

  void datesAtTheirEnds() {
    for (const QDate day : {QDate(100, 1, 1), QDate(1582, 10, 15), QDate(1899, 12, 29), QDate(1899, 12, 30),
                            QDate(2000, 2, 29), QDate(9999, 12, 31)})
      for (const QTime time : {QTime(0, 0), QTime(23, 59, 59)})
        QCOMPARE(kept("tag", QDateTime(day, time)).toDateTime(), QDateTime(day, time));
    for (const QDate day : {QDate(99, 12, 31), QDate(10000, 1, 1), QDate(-5, 1, 1)})
      QCOMPARE(refused("tag", QDateTime(day, QTime(0, 0))), 3421);
    QCOMPARE(refused("tag", 2958466), 3421);
    QCOMPARE(refused("tag", -657435), 3421);
    QCOMPARE(kept("tag", 2958465).toDateTime(), QDateTime(QDate(9999, 12, 31), QTime(0, 0)));
    QCOMPARE(kept("tag", -657434).toDateTime(), QDateTime(QDate(100, 1, 1), QTime(0, 0)));
  }

  void aNumberIsTheSameTimeOnTheDaysOfAClockChange() {
    const LocalZone germany("CET-1CEST,M3.5.0,M10.5.0/3");
    for (const int day : {46110, 46320, 46204})  // 29.03., 25.10. and 01.07.2026
      for (const double clock : {0.0, 0.5, 23.5 / 24})
        QCOMPARE(kept("tag", day + clock).toDateTime(),
                 QDateTime(dateZero().date().addDays(day), QTime(0, 0).addMSecs(qRound(clock * 86400000))));
    // This hour isn't there.
    QCOMPARE(kept("tag", 46110 + 2.5 / 24).toDateTime(), QDateTime(QDate(2026, 3, 29), QTime(3, 30)));
    QCOMPARE(kept("tag", "29.03.2026 02:30").toDateTime(), QDateTime(QDate(2026, 3, 29), QTime(3, 30)));
    QCOMPARE(kept("tag", 46109.9999999999).toDateTime(), QDateTime(QDate(2026, 3, 29), QTime(0, 0)));
  }

  void aNulIsLeftOutOfATextAsOnlyOneEngineHoldsIt() {
    const QString whole = QString("a") + QChar(u'\0') + "b";
    QCOMPARE(kept("text", whole), QVariant("ab"));
    QCOMPARE(kept("memo", whole), QVariant("ab"));
    QCOMPARE(kept("memo", QString::fromUtf8("😀\t\x7f")), QVariant(QString::fromUtf8("😀\t\x7f")));
  }

  void datesAndTheirZero() {
    const QDateTime moment(QDate(2026, 11, 20), QTime(10, 41, 7));
    QCOMPARE(kept("tag", moment), QVariant(moment));
    QCOMPARE(kept("tag", "20.11.2026").toDateTime(), QDateTime(QDate(2026, 11, 20), QTime(0, 0)));
    QCOMPARE(kept("tag", QDate(2026, 11, 20)).toDateTime(), QDateTime(QDate(2026, 11, 20), QTime(0, 0)));
    QCOMPARE(kept("tag", false).toDateTime(), dateZero());
    QCOMPARE(kept("tag", 0).toDateTime(), dateZero());
    QCOMPARE(kept("tag", 1.5).toDateTime(), QDateTime(QDate(1899, 12, 31), QTime(12, 0)));
    QCOMPARE(refused("tag", "morgen"), 3421);
  }

  void textsAreKeptAsTheyAre() {
    QCOMPARE(kept("text", "007"), QVariant("007"));
    QCOMPARE(kept("memo", "007"), QVariant("007"));
    QCOMPARE(kept("text", ""), QVariant(""));
    QCOMPARE(kept("text", QString()), QVariant(""));
    QCOMPARE(kept("text", 9.7), QVariant("9,7"));
    QCOMPARE(kept("text", true), QVariant("-1"));
    QCOMPARE(kept("memo", QDateTime(QDate(2026, 11, 20), QTime(0, 0))), QVariant("20.11.2026"));
    QCOMPARE(kept("memo", "a'b\"c?d\nÄ€"), QVariant("a'b\"c?d\nÄ€"));
    QCOMPARE(kept("memo", QString(100000, 'x')), QVariant(QString(100000, 'x')));
    QCOMPARE(kept("text", "ÄÖÜßé"), QVariant("ÄÖÜßé"));
    QCOMPARE(refused("text", "123456"), 3163);
  }

  void bytesStayBytes() {
    const QByteArray bytes("\0\1\xff'", 4);
    QCOMPARE(kept("bild", bytes), QVariant(bytes));
    QCOMPARE(refused("bild", "Text"), 3421);
  }

  void nullGoesEverywhere() {
    for (const char* field : {"byte", "lang", "geld", "doppelt", "tag", "text", "memo", "bild"})
      QVERIFY(!kept(field, {}).isValid());
  }

  void aTextComparesWithoutRegardToCase() {
    kept("text", "Übel");
    rows_->findFirst("text = 'ÜBEL'");
    QVERIFY(!rows_->noMatch());
    QCOMPARE(rows_->value("text").toString(), "Übel");
  }
};

QTEST_GUILESS_MAIN(TestValues)
#include "test_values.moc"
