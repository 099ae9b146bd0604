// Errors, retry, the keyed collection, code page, waits, font texts.
#include <QTest>
#include <QTimer>

#include "platform/runtime/clock.h"
#include "platform/runtime/collection.h"
#include "platform/runtime/error.h"
#include "platform/runtime/fonttext.h"
#include "platform/runtime/retry.h"
#include "platform/runtime/textcodec.h"
#include "tests/support/error_of.h"

using namespace qk;
using namespace qk::test;

class TestRuntime : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void errorsHaveGermanDescriptions();
  void unknownErrorNamesItsNumber();
  void retryRepeatsIgnoreGoesOnAbortLeaves();
  void anErrorOutsideEveryStepRunsTheBodyAgain();
  void collection();
  void everyByteSurvives();
  void codePage();
  void lines();
  void waitingKeepsTheLoopRunning();
  void randomStaysInRange();
  void fonts();
};

void TestRuntime::errorsHaveGermanDescriptions() {
  for (const int number :
       {5,    6,    7,    9,    11,   13,   52,   53,   55,   57,   58,   61,   62,   68,   70,
        71,   75,   76,   91,   94,   424,  457,  3010, 3011, 3015, 3020, 3021, 3022, 3024, 3027,
        3043, 3044, 3049, 3051, 3058, 3061, 3075, 3077, 3078, 3079, 3112, 3126, 3146, 3159, 3163,
        3164, 3167, 3186, 3191, 3201, 3204, 3260, 3265, 3284, 3314, 3343, 3421})
    QVERIFY2(!errorDescription(number).contains(QString::number(number)),
             qPrintable(QString::number(number)));
  QCOMPARE(Error(13).description(), "Typen unverträglich");
  QCOMPARE(Error(3021).description(), "Kein aktueller Datensatz.");
  QCOMPARE(Error(76).number(), 76);
  QCOMPARE(QByteArray(Error(53).what()), QByteArray("53: Datei nicht gefunden"));
  QCOMPARE(Error(3078, "eigener Text").description(), "eigener Text");
}

void TestRuntime::unknownErrorNamesItsNumber() {
  QVERIFY(errorDescription(4711).contains("4711"));
}

void TestRuntime::retryRepeatsIgnoreGoesOnAbortLeaves() {
  QStringList done;
  int tries = 0;
  QList<ErrorAnswer> answers{ErrorAnswer::Retry, ErrorAnswer::Ignore, ErrorAnswer::Abort};
  QList<int> reports;
  const bool ok = reported(
      [&](const Error& error) {
        reports += error.number();
        return answers.takeFirst();
      },
      [&](Steps& step) {
        QVERIFY(step([&] {
          if (++tries == 1) throw Error(53);
        }));
        done += "retried";
        QVERIFY(!step([] { throw Error(70); }));
        done += "ignored";
        step([] { throw Error(76); });
        done += "never";
      });
  QVERIFY(!ok);
  QCOMPARE(tries, 2);
  QCOMPARE(done, QStringList({"retried", "ignored"}));
  QCOMPARE(reports, QList<int>({53, 70, 76}));
}

void TestRuntime::anErrorOutsideEveryStepRunsTheBodyAgain() {
  int runs = 0;
  QVERIFY(reported([](const Error&) { return ErrorAnswer::Retry; },
                   [&](Steps&) {
                     if (++runs < 3) throw Error(9);
                   }));
  QCOMPARE(runs, 3);
}

void TestRuntime::collection() {
  KeyedCollection<int> numbers;
  numbers.add(std::make_shared<int>(1), "a");
  numbers.add(std::make_shared<int>(2), "A");
  QCOMPARE(*numbers.get("A"), 2);
  QCOMPARE(numbers.keyAt(0), "a");
  QCOMPARE(errorOf([&] { numbers.add(std::make_shared<int>(3), "a"); }), 457);
  QCOMPARE(errorOf([&] { numbers.get("b"); }), 5);
  QCOMPARE(errorOf([&] { numbers.remove("b"); }), 5);
  QCOMPARE(errorOf([&] { numbers.at(2); }), 9);
  QCOMPARE(errorOf([&] { numbers.at(-1); }), 9);
  numbers.remove("a");
  QCOMPARE(numbers.count(), 1);
  QVERIFY(!numbers.contains("a"));
  QCOMPARE(*numbers.at(0), 2);
}

void TestRuntime::everyByteSurvives() {
  QByteArray all;
  for (int i = 0; i < 256; ++i) all += static_cast<char>(i);
  bool lossy = true;
  QCOMPARE(toWindows1252(fromWindows1252(all), &lossy), all);
  QVERIFY(!lossy);
}

void TestRuntime::codePage() {
  QCOMPARE(fromWindows1252("\x80 \xE4\xDF"), "€ äß");
  QCOMPARE(toWindows1252("Häring – „Ü“"), QByteArray("H\xE4ring \x96 \x84\xDC\x93"));
  bool lossy = false;
  QCOMPARE(toWindows1252("Łukasz ÷ 😀!", &lossy), QByteArray("?ukasz \xF7 ?!"));
  QVERIFY(lossy);
}

void TestRuntime::lines() {
  QCOMPARE(splitLines("a\r\nb\nc\rd"), QStringList({"a", "b", "c", "d"}));
  QCOMPARE(splitLines("a\r\n\r\n"), QStringList({"a", ""}));
  QCOMPARE(splitLines("\n"), QStringList(""));
  QCOMPARE(splitLines(""), QStringList());
  QCOMPARE(splitLines("a\n\rb"), QStringList({"a", "", "b"}));
}

void TestRuntime::waitingKeepsTheLoopRunning() {
  EventLoopWaits waits;
  bool ran = false;
  QTimer::singleShot(0, this, [&] { ran = true; });
  waits.sleep(1);
  QVERIFY(ran);
  ran = false;
  QTimer::singleShot(0, this, [&] { ran = true; });
  waits.runMessageLoop();
  QVERIFY(ran);
  const QDateTime now = SystemClock().now();
  QCOMPARE(now.timeSpec(), Qt::LocalTime);
  QVERIFY(qAbs(now.secsTo(QDateTime::currentDateTime())) < 60);
}

void TestRuntime::randomStaysInRange() {
  SystemRandom random;
  bool differs = false;
  const double first = random.next();
  for (int i = 0; i < 1000; ++i) {
    const double value = random.next();
    QVERIFY(value >= 0 && value < 1);
    differs = differs || value != first;
  }
  QVERIFY(differs);
}

void TestRuntime::fonts() {
  const FontSpec tahoma = parseFontText("Tahoma;10;0;0;0;0");
  QCOMPARE(tahoma, (FontSpec{"Tahoma", 10}));
  QCOMPARE(fontText(tahoma), "Tahoma;10;0;0;0;0");
  const FontSpec rich{"Arial", 8.25, true, false, true, false};
  QCOMPARE(fontText(rich), "Arial;8,25;-1;0;-1;0");
  QCOMPARE(parseFontText(fontText(rich)), rich);
  QCOMPARE(parseFontText("Arial;8.25;-1;0;1;0"), rich);
  QCOMPARE(parseFontText("", rich), rich);
  QCOMPARE(parseFontText("Courier", rich), (FontSpec{"Courier", 8.25, true, false, true, false}));
  QCOMPARE(parseFontText(";;0", rich), (FontSpec{"Arial", 8.25, false, false, true, false}));
  QCOMPARE(parseFontText("Arial;-3;-1;0;-1;0", rich), rich);
}

QTEST_GUILESS_MAIN(TestRuntime)
#include "test_runtime.moc"
