// The three ways to read a line of esa_preis.ini, side by side.
#include <QTest>

#include "targetconfig/station_files.h"
#include "targetconfig/station_lines.h"

using namespace qk;

class TestStationLines : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void titles_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("ofLine");
    QTest::addColumn<QString>("ofCheck");
    QTest::addColumn<QString>("ofGroups");
    QTest::newRow("usual") << "Bezeichnung = \"LG Glück\""
                           << "LG Glück"
                           << "\"LG Glück\""
                           << "LG Glück";
    QTest::newRow("equals sign inside") << "Bezeichnung = \"A=B\""
                                        << "AB"
                                        << "\"AB\""
                                        << "AB";
    QTest::newRow("blanks in the quotes") << "Bezeichnung = \" LG \""
                                          << "LG"
                                          << "\" LG \""
                                          << "LG";
    QTest::newRow("the word in the middle") << "  alt: Bezeichnung = x Bezeichnung "
                                            << "alt:   x"
                                            << "alt:   x"
                                            << "alt:   x";
    QTest::newRow("tabs belong to the text") << "\tBezeichnung = \t\"LG\" \t "
                                             << "\t  \tLG \t"
                                             << "\t  \t\"LG\" \t"
                                             << "\t  \tLG \t";
    QTest::newRow("nothing beside") << "Bezeichnung"
                                    << ""
                                    << ""
                                    << "";
  }
  void titles() {
    QFETCH(QString, line);
    QVERIFY(holdsTitle(line));
    QTEST(titleForLine(line), "ofLine");
    QTEST(titleForCheck(line), "ofCheck");
    QTEST(titleForGroups(line), "ofGroups");
  }

  void definitions_data() {
    QTest::addColumn<QString>("line");
    QTest::addColumn<QString>("ofLine");
    QTest::addColumn<QString>("ofCheck");
    QTest::newRow("usual") << "Definition = \"0_hd_LG.def\""
                           << "0_hd_LG.def"
                           << "0_hd_LG.def";
    QTest::newRow("blanks in the quotes") << "Definition=\" a.def \""
                                          << "a.def"
                                          << " a.def ";
    QTest::newRow("a tab is no blank") << "Definition = \ta.def\t "
                                       << "\ta.def\t"
                                       << "\ta.def\t";
    QTest::newRow("without quotes") << "Definition = a.def "
                                    << "a.def"
                                    << "a.def";
    QTest::newRow("empty") << "Definition = \"\""
                           << ""
                           << "";
  }
  void definitions() {
    QFETCH(QString, line);
    QVERIFY(holdsDefinition(line));
    QTEST(definitionForLine(line), "ofLine");
    QTEST(definitionForCheck(line), "ofCheck");
  }

  void caseMatters() {
    for (const char* line : {"bezeichnung = x", "BEZEICHNUNG = x", "definition = x"}) {
      QVERIFY(!holdsTitle(line));
      QVERIFY(!holdsDefinition(line));
    }
  }

  void linesOfEitherEnd() {
    QCOMPARE(stationLines("a\r\nGl\xFC"
                          "ck\nb"),
             (QStringList{"a", "Glück", "b"}));
    QCOMPARE(stationLines("").size(), 0);
  }
};

QTEST_APPLESS_MAIN(TestStationLines)
#include "test_station_lines.moc"
