#include <QTest>

#include "link/haeringschuss.h"
#include "tests/link/import_fuzz.h"
#include "tests/link/records.h"

using namespace qk;
using namespace qk::test;

namespace {

/// Answers failures in turn and remembers their numbers; more failures than answers abort.
class Answers {
 public:
  explicit Answers(QList<ErrorAnswer> answers = {}) : answers_(std::move(answers)) {}
  ErrorReport report() {
    return [this](const Error& error) {
      numbers << error.number();
      return answers_.isEmpty() ? ErrorAnswer::Abort : answers_.takeFirst();
    };
  }
  QList<int> numbers;

 private:
  QList<ErrorAnswer> answers_;
};

bool import(HaeringSchuss& shot, QString line) {
  return shot.Haering_Import_Zeile(line, nullptr, [](const Error& error) {
    QTest::qFail(qPrintable("unexpected error: " + error.description()), __FILE__, __LINE__);
    return ErrorAnswer::Abort;
  });
}

void compareRecords(const HaeringSchuss& a, const HaeringSchuss& b) {
  QCOMPARE(a.Key, b.Key);
  QCOMPARE(a.ZeilenCode, b.ZeilenCode);
  QCOMPARE(a.SchuetzenName, b.SchuetzenName);
  QCOMPARE(a.RingMitZehntel, b.RingMitZehntel);
  QCOMPARE(a.Radius, b.Radius);
  QCOMPARE(a.RegelNummerKlasse, b.RegelNummerKlasse);
  QCOMPARE(a.SchuetzeStartnummer, b.SchuetzeStartnummer);
  QCOMPARE(a.dblTeiler, b.dblTeiler);
}

}  // namespace

class TestHaeringSchuss : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void everyField() {
    HaeringSchuss shot;
    QVERIFY(import(shot, shotRecord()));
    QCOMPARE(shot.ZeilenCode, "21");
    QCOMPARE(shot.WettbewerbBezeichnung, "LG Meister");
    QCOMPARE(shot.KlasseBezeichnung, "offene Klasse");
    QCOMPARE(shot.OrtStandnummer, qint16(1));
    QCOMPARE(shot.LinienNummer, qint16(3));
    QCOMPARE(shot.SchuetzenName, "Müller, Änne");
    QCOMPARE(shot.ProbeMatch, "M");
    QCOMPARE(shot.Wertung, qint16(11));
    QCOMPARE(shot.TrefferNummer, qint16(17));
    QCOMPARE(shot.RingMitZehntel, 9.7);
    QCOMPARE(shot.RingOhneZehntel, qint16(9));
    QCOMPARE(shot.Ring0XZehntel, 7.0);
    QCOMPARE(shot.RingXXZehntel, 16.0);
    QCOMPARE(shot.LagePfeilzeichen, "9");
    QCOMPARE(shot.X, 12.3);
    QCOMPARE(shot.Y, -45.6);
    QCOMPARE(shot.Radius, 123.47);
    QCOMPARE(shot.PHiPosition, 285.1);
    QCOMPARE(shot.AbsoluteZeit, "10:41:07");
    QCOMPARE(shot.RelativeZeit, "03:15");
    QCOMPARE(shot.Datum, "20.11.2026");
    QCOMPARE(shot.RegelNummerWettbewerb, "1.10");
    QCOMPARE(shot.RegelNummerKlasse, "frei");
    QCOMPARE(shot.SchuetzeStartnummer, "107");
    QCOMPARE(shot.Key, "0030017-20.11.2026-10:41:07");
    QCOMPARE(shot.sWaffe, "LG");
    QCOMPARE(shot.dblTeilerFaktor, 1.0);
    QCOMPARE(shot.dblTeiler, 123.4);
    QVERIFY(!shot.Verbucht && !shot.bAngewaehlt);
    QCOMPARE(shot.ID, 0);
    QCOMPARE(shot.VerbuchtDatum, QString());
  }

  void lineIsNormalisedInPlace() {
    const ErrorReport report = Answers().report();
    HaeringSchuss shot;
    QString line = "\"" + shotRecord() + "\"";
    QVERIFY(shot.Haering_Import_Zeile(line, nullptr, report));
    QCOMPARE(line, shotRecord() + " ; ");
    QString nothing = "\"x\"";
    QVERIFY(!shot.Haering_Import_Zeile(nothing, nullptr, report));
    QCOMPARE(nothing, "x ; ");
  }

  void sameWithAndWithoutTerminator() {
    HaeringSchuss with, without, quoted;
    QVERIFY(import(with, shotRecord() + " ; "));
    QVERIFY(import(without, shotRecord()));
    QVERIFY(import(quoted, "\"" + shotRecord() + " ; \""));
    compareRecords(with, without);
    compareRecords(with, quoted);
    QCOMPARE(with.SchuetzeStartnummer, "107");
  }

  void aTerminatorMayLoseItsLastBlank_data() {
    QTest::addColumn<QString>("end");
    QTest::newRow("at the end") << " ;";
    QTest::newRow("before a closing quote") << " ;\"";
    QTest::newRow("behind a whole one") << " ; ;";
    QTest::newRow("before a whole one") << " ; ; ";
  }
  void aTerminatorMayLoseItsLastBlank() {
    QFETCH(QString, end);
    HaeringSchuss plain, cut, twenty;
    QVERIFY(import(plain, shotRecord()));
    QVERIFY(import(cut, (end.endsWith('"') ? "\"" : "") + shotRecord() + end));
    compareRecords(plain, cut);
    QCOMPARE(cut.SchuetzeStartnummer, "107");
    // What is left of the terminator is no field.
    QVERIFY(!import(twenty, shotRecord(shotFields().mid(0, 20)) + (end.startsWith(" ; ") ? " ;" : end)));
  }

  void quotesAreNoiseAnywhere() {
    HaeringSchuss plain, quoted;
    QVERIFY(import(plain, shotRecord()));
    QVERIFY(import(quoted, "\"" + shotRecord().replace(" ; ", "\" ; \"") + "\""));
    compareRecords(plain, quoted);
  }

  void furtherFieldsAreIgnored() {
    HaeringSchuss plain, longer;
    QVERIFY(import(plain, shotRecord()));
    QVERIFY(import(longer, shotRecord() + QString(" ; x").repeated(9)));
    compareRecords(plain, longer);
  }

  void twentyFieldsAreNoShot_data() {
    QTest::addColumn<QString>("line");
    const QString twenty = shotRecord(shotFields().mid(0, 20));
    QTest::newRow("plain") << twenty;
    QTest::newRow("terminated") << twenty + " ; ";
    QTest::newRow("quoted") << "\"" + twenty + "\"";
    QTest::newRow("quoted with terminator") << "\"" + twenty + " ; \"";
    QTest::newRow("empty") << "";
    QTest::newRow("terminator only") << " ; ";
    QTest::newRow("bare semicolons") << shotRecord().replace(" ; ", ";");
  }
  void twentyFieldsAreNoShot() {
    QFETCH(QString, line);
    HaeringSchuss shot;
    shot.ZeilenCode = "before";
    shot.Key = "key";
    QVERIFY(!import(shot, line));
    QCOMPARE(shot.ZeilenCode, "before");
    QCOMPARE(shot.Key, "key");
  }

  void emptyLastFieldCounts() {
    HaeringSchuss shot;
    QVERIFY(import(shot, shotRecordWith(20, "") + " ; "));
    QCOMPARE(shot.SchuetzeStartnummer, QString());
  }

  void bareSemicolonStaysInAField() {
    HaeringSchuss shot;
    QVERIFY(import(shot, shotRecordWith(5, "Müller;Änne")));
    QCOMPARE(shot.SchuetzenName, "Müller;Änne");
  }

  void ringParts_data() {
    QTest::addColumn<QString>("ring");
    QTest::addColumn<int>("whole");
    QTest::addColumn<double>("tenth");
    QTest::addColumn<double>("mixed");
    QTest::newRow("10,9") << "10,9" << 10 << 9.0 << 19.0;
    QTest::newRow("9,7") << "9,7" << 9 << 7.0 << 16.0;
    QTest::newRow("0") << "0" << 0 << 0.0 << 0.0;
    QTest::newRow("0,0") << "0,0" << 0 << 0.0 << 0.0;
    QTest::newRow("8") << "8" << 8 << 0.0 << 8.0;
  }
  void ringParts() {
    QFETCH(QString, ring);
    QFETCH(int, whole);
    QFETCH(double, tenth);
    QFETCH(double, mixed);
    HaeringSchuss imported, derived;
    QVERIFY(import(imported, shotRecordWith(9, ring)));
    leiteRingeAb(derived, ring);
    for (const HaeringSchuss* shot : {&imported, &derived}) {
      QCOMPARE(int(shot->RingOhneZehntel), whole);
      QVERIFY(std::abs(shot->Ring0XZehntel - tenth) < 1e-9);
      QVERIFY(std::abs(shot->RingXXZehntel - mixed) < 1e-9);
    }
  }

  void teilerIsCut_data() {
    QTest::addColumn<QString>("radius");
    QTest::addColumn<double>("teiler");
    QTest::newRow("cut, not rounded") << "123,47" << 123.4;
    QTest::newRow("zero") << "0" << 0.0;
    QTest::newRow("below zero goes down") << "-0,01" << -0.1;
    QTest::newRow("whole") << "50" << 50.0;
  }
  void teilerIsCut() {
    QFETCH(QString, radius);
    HaeringSchuss shot;
    QVERIFY(import(shot, shotRecordWith(13, radius)));
    QTEST(shot.dblTeiler, "teiler");
  }

  void keyHasThreeDigits() {
    QCOMPARE(schussKey(3, 17, "20.11.2026", "10:41:07"), "0030017-20.11.2026-10:41:07");
    QCOMPARE(schussKey(3, 1017, "d", "t"), schussKey(3, 17, "d", "t"));
    QCOMPARE(schussKey(1003, 17, "d", "t"), schussKey(3, 17, "d", "t"));
    QVERIFY(schussKey(4, 17, "d", "t") != schussKey(3, 17, "d", "t"));
  }

  void wholeNumbersRoundStrictly() {
    HaeringSchuss shot;
    QVERIFY(import(shot, shotRecordWith(8, " 2,5 ")));
    QCOMPARE(shot.TrefferNummer, qint16(2));
  }

  void failures_data() {
    QTest::addColumn<int>("field");
    QTest::addColumn<QString>("value");
    QTest::addColumn<QList<int>>("numbers");
    QTest::newRow("no number") << 3 << "eins" << QList<int>{13};
    QTest::newRow("too large") << 4 << "40000" << QList<int>{6};
    QTest::newRow("empty number") << 7 << "" << QList<int>{13};
    QTest::newRow("decimal point") << 11 << "12.3" << QList<int>{13};
    QTest::newRow("exponent") << 13 << "1e3" << QList<int>{13};
    QTest::newRow("ring beyond 16 bits") << 9 << "40000,1" << QList<int>{6};
  }
  void failures() {
    QFETCH(int, field);
    QFETCH(QString, value);
    QFETCH(QList<int>, numbers);
    Answers answers;
    HaeringSchuss shot;
    QString line = shotRecordWith(field, value);
    QVERIFY(!shot.Haering_Import_Zeile(line, nullptr, answers.report()));
    QCOMPARE(answers.numbers, numbers);
  }

  void aFailureNamesItsField() {
    QString said;
    HaeringSchuss shot;
    QString line = shotRecordWith(9, "9.7");
    shot.Haering_Import_Zeile(line, nullptr, [&](const Error& error) {
      said = error.description();
      return ErrorAnswer::Abort;
    });
    QCOMPARE(said, errorDescription(13) + ": Ringwert „9.7“");
    line = shotRecordWith(4, "40000");
    shot.Haering_Import_Zeile(line, nullptr, [&](const Error& error) {
      said = error.description();
      return ErrorAnswer::Abort;
    });
    QCOMPARE(said, errorDescription(6) + ": Liniennummer „40000“");
  }

  void ignoringKeepsTheFormerValue() {
    Answers answers({ErrorAnswer::Ignore, ErrorAnswer::Ignore});
    HaeringSchuss shot;
    shot.LinienNummer = 5;
    shot.X = 1.5;
    QStringList fields = shotFields();
    fields[4] = "drei";
    fields[11] = "links";
    QString line = shotRecord(fields);
    QVERIFY(shot.Haering_Import_Zeile(line, nullptr, answers.report()));
    QCOMPARE(answers.numbers, (QList<int>{13, 13}));
    QCOMPARE(shot.LinienNummer, qint16(5));
    QCOMPARE(shot.X, 1.5);
    QCOMPARE(shot.Y, -45.6);
    QCOMPARE(shot.Key, "0050017-20.11.2026-10:41:07");
  }

  void retryRepeatsTheStatement() {
    Answers answers({ErrorAnswer::Retry, ErrorAnswer::Retry, ErrorAnswer::Ignore});
    HaeringSchuss shot;
    QString line = shotRecordWith(4, "drei");
    QVERIFY(shot.Haering_Import_Zeile(line, nullptr, answers.report()));
    QCOMPARE(answers.numbers, (QList<int>{13, 13, 13}));
  }

  void abortLeavesTheRest() {
    Answers answers({ErrorAnswer::Abort});
    HaeringSchuss shot;
    shot.SchuetzenName = "vorher";
    QString line = shotRecordWith(4, "drei");
    QVERIFY(!shot.Haering_Import_Zeile(line, nullptr, answers.report()));
    QCOMPARE(shot.OrtStandnummer, qint16(1));
    QCOMPARE(shot.SchuetzenName, "vorher");
  }

  void withoutADatabase() {
    QCOMPARE(ErmittleWaffe(nullptr, "9.99"), "LG");
    QCOMPARE(ErmittleTeilerFaktor(nullptr, "9.99"), 1.0);
  }

  void fuzzedLines() {
    const FuzzResult result = fuzzImport(42, 200000);
    QCOMPARE(result.complaint, QString());
    QVERIFY(result.taken > 20000 && result.taken < 180000);
  }
};

QTEST_APPLESS_MAIN(TestHaeringSchuss)
#include "test_haeringschuss.moc"
