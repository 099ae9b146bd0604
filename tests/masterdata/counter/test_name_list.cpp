// Clubs and teams by what people call them.
#include <QTest>

#include "masterdata/counter/name_list.h"

using namespace qk;

class TestNameList : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    names = {};
    names.add(1, "Schützengilde Grünau", "SG Grünau");
    names.add(2, "Edelweiß", "");
    names.add(3, "Edelweiß ", "Höfen");
    names.add(4, "Edelweiß", "");
  }

  void eachIsShownAsItsOwn() {
    QCOMPARE(names.allShown(), (QStringList{"Schützengilde Grünau (SG Grünau)", "Edelweiß",
                                            "Edelweiß (Höfen)", "Edelweiß [4]"}));
    QCOMPARE(names.shown(3), "Edelweiß (Höfen)");
    QCOMPARE(names.shown(9), "");
    for (const QString& shown : names.allShown()) QCOMPARE(names.shown(*names.idOf(shown)), shown);
  }

  void foundByEitherName() {
    QCOMPARE(names.idOf("sg grünau"), 1);
    QCOMPARE(names.idOf(" SCHÜTZENGILDE  grünau "), 1);
    QCOMPARE(names.idOf("höfen"), 3);
    QCOMPARE(names.idOf(""), 0);
    QCOMPARE(names.idOf("  "), 0);
    QVERIFY(!names.idOf("Grünau"));  // a part of a name is none
    QVERIFY(!names.isAmbiguous("Grünau"));
  }

  /// As lists of other systems write it.
  void foundWithAnUmlautOfTwoCharacters() {
    QCOMPARE(names.idOf(QString("SG Grünau").normalized(QString::NormalizationForm_D)), 1);
  }

  void oneThatSeveralHave() {
    NameList teams;
    teams.add(1, "Mannschaft 1", "Grünau");
    teams.add(2, "Mannschaft 1", "Öd");
    QVERIFY(!teams.idOf("Mannschaft 1"));
    QVERIFY(teams.isAmbiguous("mannschaft 1"));
    QCOMPARE(teams.idOf("Mannschaft 1 (Öd)"), 2);
    QVERIFY(!teams.isAmbiguous("Mannschaft 1 (Öd)"));
    QVERIFY(!teams.isAmbiguous(""));
  }

 private:
  NameList names;
};

QTEST_APPLESS_MAIN(TestNameList)
#include "test_name_list.moc"
