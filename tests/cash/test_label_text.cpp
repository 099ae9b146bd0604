#include <QTest>

#include "cash/label_text.h"

using namespace qk;

namespace {

LabelFields someone() {
  LabelFields f;
  f.startnr = "107";
  f.verein = "SV Ährenfeld";
  f.mann = "Ährenfeld I";
  f.klasse = "Herren I";
  f.ausweis = "4711";
  f.spo = "LG - LP";
  f.spokey = "1.10";
  f.name = "Müller, Jörg";
  f.disziplin = "LG Meister";
  f.wettkampf = "Pokal";
  f.zeit = QDateTime(QDate(2026, 3, 5), QTime(9, 7, 5));
  return f;
}

/// A clock that moves a second at each pause.
struct Time {
  QDateTime now = someone().zeit;
  QList<int> pauses;
};

QList<QStringList> copiesOf(const QString& text, int copies, int perSet, Time& time) {
  LabelCopies run(
      text, copies, perSet, [&] { return time.now; },
      [&](int milliseconds) {
        time.pauses.append(milliseconds);
        time.now = time.now.addMSecs(milliseconds);
      });
  QList<QStringList> all;
  for (int i = 0; i < copies; ++i) all.append(run.next());
  return all;
}

}  // namespace

class TestLabelText : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void tokens_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("expanded");
    QTest::newRow("empty") << ""
                           << "";
    QTest::newRow("one") << "startnr"
                         << "107";
    QTest::newRow("separator at the end") << "startnr;"
                                          << "107";
    QTest::newRow("case and blanks") << "NL; Verein "
                                     << "\nSV Ährenfeld";
    QTest::newRow("unknown as typed") << " Nr. ;startnr"
                                      << " Nr. 107";
    QTest::newRow("all of the shooter") << "mann; ;klasse; ;ausweis; ;spo; ;spokey; ;name"
                                        << "Ährenfeld I Herren I 4711 LG - LP 1.10 Müller, Jörg";
    QTest::newRow("discipline") << "diszi;/;disziohne"
                                << "LG Meister/LG Meister";
    QTest::newRow("competition and time") << "wk; ;datum; ;uhr"
                                          << "Pokal 05.03.2026 09:07";
    QTest::newRow("counters") << "lfdsch;anzsch;uhrgenau"
                              << "#LFDNRDRUCK##ANZSCHDRUCK##UHRGENAU#";
    QTest::newRow("no stake") << "einlage;x"
                              << "x";
    QTest::newRow("empty tokens") << ";;startnr;;"
                                  << "107";
  }
  void tokens() {
    QFETCH(QString, text);
    QFETCH(QString, expanded);
    QCOMPARE(expandLabelTemplate(text, someone()), expanded);
  }

  void combinationAndStake() {
    LabelFields f = someone();
    f.kombination = true;
    f.einlage = "Startgeld";
    QCOMPARE(expandLabelTemplate("einlage;diszi;/;disziohne", f), "Startgeld K-LG Meister/LG Meister");
  }

  void emptyTextHasNoLine() {
    Time time;
    QCOMPARE(copiesOf("", 2, 1, time), (QList<QStringList>{{}, {}}));
  }

  void linesOfACopy() {
    Time time;
    QCOMPARE(copiesOf("a\nb\n", 1, 1, time), (QList<QStringList>{{"a", "b", ""}}));
  }

  void totalWithoutSets() {
    for (int perSet : {0, 1}) {
      Time time;
      QCOMPARE(copiesOf("#ANZSCHDRUCK#", 3, perSet, time),
               (QList<QStringList>{{"1 von 3"}, {"2 von 3"}, {"3 von 3"}}));
      QVERIFY(time.pauses.isEmpty());
    }
  }

  void setsPause() {
    Time time;
    QCOMPARE(
        copiesOf("#ANZSCHDRUCK# #UHRGENAU#", 3, 2, time),
        (QList<QStringList>{{"1 von 2 09:07:05 (1)"}, {"2 von 2 09:07:05 (1)"}, {"1 von 2 09:07:06 (2)"}}));
    QCOMPARE(time.pauses, QList<int>{1000});
  }

  void bothCounters() {
    Time time;
    QCOMPARE(copiesOf("#LFDNRDRUCK#: #ANZSCHDRUCK# #LFDNRDRUCK#", 2, 5, time),
             (QList<QStringList>{{"1: 1 von 5 1"}, {"2: 2 von 5 2"}}));
  }

  void positionStartsAnewInASet() {
    Time time;
    QCOMPARE(copiesOf("#LFDNRDRUCK#", 5, 2, time), (QList<QStringList>{{"1"}, {"2"}, {"1"}, {"2"}, {"1"}}));
    QCOMPARE(time.pauses.size(), 2);
  }

  void aStampAloneStays() {
    Time time;
    QCOMPARE(copiesOf("#UHRGENAU#", 3, 2, time),
             (QList<QStringList>{{"09:07:05 (1)"}, {"09:07:05 (1)"}, {"09:07:05 (1)"}}));
  }
};

QTEST_GUILESS_MAIN(TestLabelText)
#include "test_label_text.moc"
