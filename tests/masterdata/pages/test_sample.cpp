// What a discipline makes of ten shots, as the page shows it.
#include <QTest>

#include "masterdata/pages/sample.h"

using namespace qk;

class TestSample : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void resultsOfAKind_data() {
    QTest::addColumn<QVariantMap>("row");
    QTest::addColumn<QStringList>("lines");
    const QString whole = "9 10 8 10 9 10 7 10 9 10", tenths = "9,7 10,4 8,9 10,9 9,2 10,1 7,6 10,6 9,9 10";
    const auto row = [](QVariantMap values) { return values; };
    QTest::newRow("rings") << row({{"Ringe", -1}, {"RingSerie", 10}})
                           << QStringList{"Serie 10er aus 10 Schüssen: 92 Ringe (" + whole + ")"};
    QTest::newRow("tenths") << row({{"Ringe", -1}, {"RingSerie", 10}, {"RingZentel", -1}})
                            << QStringList{"Serie 10er aus 10 Schüssen: 97,3 Ringe (" + tenths + ")"};
    QTest::newRow("only the tenth")
        << row({{"Ringe", -1}, {"RingSerie", 10}, {"Ring0XZehntel", -1}, {"RingZentel", -1}})
        << QStringList{"Serie 10er aus 10 Schüssen: 53 Ringe (" + tenths + ")"};
    QTest::newRow("ring plus tenth") << row({{"Ringe", -1}, {"RingSerie", 10}, {"RingXXZehntel", -1}})
                                     << QStringList{"Serie 10er aus 10 Schüssen: 145 Ringe (" + tenths + ")"};
    QTest::newRow("incomplete") << row({{"Ringe", -1}, {"RingSerie", 40}})
                                << QStringList{"Serie 40er aus 10 Schüssen: 92 Ringe (" + whole + ")"};
    QTest::newRow("extra shot") << row({{"Ringe", -1}, {"RingSerie", 9}, {"ZusatzTeiler", 1}})
                                << QStringList{"Serie 9er aus 9 Schüssen: 73 Ringe (9 10 8 10 9 10 7 10 0)"};
    QTest::newRow("extra shot alone counts")
        << row({{"Ringe", -1}, {"RingSerie", 9}, {"ZusatzTeiler", -1}})
        << QStringList{"Serie 9er aus 9 Schüssen: 73 Ringe (9 10 8 10 9 10 7 10 0)",
                       "Serie 9er aus 1 Schuss: 10 Ringe (10)"};
    QTest::newRow("teiler") << row({{"Teiler", -1}})
                            << QStringList{
                                   "Jeder Schuss ein Ergebnis: 123,4  51,2  210,7  8,3  178,5  88,9  331,8  "
                                   "31,6  104,2  96,5. Der beste: 8,3"};
    QTest::newRow("ring-teiler")
        << row({{"Ringe", -1}, {"Teiler", -1}, {"RingSerie", 10}, {"dblMaxSerieDSB", 100.0}})
        << QStringList{"Ring-Teiler: 100 − 92 Ringe + Teiler 8,3 = 16,3"};
    QTest::newRow("ring-teiler with a limit, two batches")
        << row({{"Ringe", -1},
                {"Teiler", -1},
                {"RingSerie", 5},
                {"dblMaxSerieDSB", 50.0},
                {"DSBTeilerGrenze", -1},
                {"DSBTeilerGrenzWert", 20}})
        << QStringList{"Ring-Teiler: 50 − 46 Ringe + Teiler 8,3 = 12,3",
                       "Ring-Teiler: 50 − 46 Ringe + Teiler 20 = 24"};
    QTest::newRow("nothing") << row({})
                             << QStringList{"Daraus wird nichts: Weder »Ringe« noch »Teiler« ist gewählt."};
    QTest::newRow("no series") << row({{"Ringe", -1}})
                               << QStringList{
                                      "Daraus wird kein Ergebnis: »Schuss je Serie« muss größer als 0 sein."};
  }
  void resultsOfAKind() {
    QFETCH(QVariantMap, row);
    QFETCH(QStringList, lines);
    dao::RowValues values;
    for (auto it = row.begin(); it != row.end(); ++it) values.insert(it.key(), it.value());
    const QStringList shown = sampleText(values).split('\n');
    QVERIFY(shown.first().contains("9,7 (123,4)  10,4 (51,2)"));
    QCOMPARE(shown.mid(1), lines);
  }
};

QTEST_APPLESS_MAIN(TestSample)
#include "test_sample.moc"
