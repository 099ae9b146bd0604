// Article numbers and their bar codes, what a stake pays for, and whom it is released for.
#include <QTest>
#include <memory>

#include "cash/article_codes.h"
#include "cash/article_number.h"
#include "cash/barcode_text.h"
#include "cash/stake_links.h"
#include "tests/cash/till.h"

using namespace qk;
using namespace qk::test;

namespace {

// Beside the classes 1 (boys, to 14) and 7 (men, 21 to 60) of the till.
const char* const kMore = R"(
Zeilen Schützenklassen
  ID | Klasse        | KZ  | Alter von | Alter bis | Geschlecht | Auflage
  20 | Damen         | D1  | 21        | 60        | 2          | nein
  21 | Senioren      | S1  | 61        | 99        | 0          | ja
  22 | Jugend        | J1  | 15        | 18        | 0          | nein

Zeilen Kasse_DisziKombi
  ID | EinlageID | DisziKZ | DisziKombiID | Anzahl
  1  | 1         | 1       | 1            | 2
  2  | 1         | 2       | 1            | 20
  3  | 3         | 1       | 2            | 3
  4  | 1         | 1       | 99           | 3
)";

}  // namespace

class TestStakeLinks : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void codes_data() {
    QTest::addColumn<QString>("number");
    QTest::addColumn<QString>("stored");
    QTest::addColumn<QString>("ean");  // the digits that are encoded
    QTest::addColumn<bool>("back");
    QTest::newRow("none") << ""
                          << ""
                          << "" << true;
    QTest::newRow("short") << "123"
                           << "123"
                           << "400000000123" << true;
    QTest::newRow("eight digits") << "12345678"
                                  << "12345678"
                                  << "400012345678" << true;
    QTest::newRow("nine digits") << "123456789"
                                 << "123456789"
                                 << "400123456789" << false;
    QTest::newRow("eleven digits") << "12345678901"
                                   << "12345678901"
                                   << "412345678901" << false;
    QTest::newRow("twelve digits") << "123456789012"
                                   << "123456789012"
                                   << "123456789012" << true;
    QTest::newRow("thirteen digits") << "1234567890123"
                                     << "123456789012"
                                     << "123456789012" << true;
    QTest::newRow("leading zero") << "012"
                                  << "012"
                                  << "400000000012" << false;
    QTest::newRow("letters") << "LG-1"
                             << "LG-1"
                             << "" << true;
  }
  void codes() {
    QFETCH(QString, number);
    QFETCH(QString, stored);
    QFETCH(QString, ean);
    QFETCH(bool, back);
    const ArticleCodes codes = artikelCodes(number);
    QCOMPARE(codes.ArtikelNr, stored);
    QCOMPARE(codes.gekuerzt, number.size() > 12);
    QCOMPARE(codes.EAN13, EAN13Text(ean));
    QCOMPARE(codes.EAN13.isEmpty(), ean.isEmpty());
    QCOMPARE(codes.CODE128, Code128Text(stored));
    QCOMPARE(codes.CODE39, Code39Text(stored));
    QCOMPARE(kommtZurueck(number), back);
  }

  void filters_data() {
    QTest::addColumn<QString>("boxes");  // f(reihand) a(uflage) d(amen) h(erren) b(is 18) u(eber 18)
    QTest::addColumn<QList<int>>("classes");
    QTest::newRow("none") << "" << QList<int>{1, 7, 20, 21, 22};
    QTest::newRow("free") << "f" << QList<int>{1, 7, 20, 22};
    QTest::newRow("rest") << "a" << QList<int>{21};
    QTest::newRow("both ways") << "fa" << QList<int>{1, 7, 20, 21, 22};
    QTest::newRow("women") << "d" << QList<int>{20, 21, 22};
    QTest::newRow("men") << "h" << QList<int>{1, 7, 21, 22};
    QTest::newRow("up to 18") << "b" << QList<int>{1, 22};
    QTest::newRow("above 18") << "u" << QList<int>{7, 20, 21};
    QTest::newRow("grown women, free") << "fdu" << QList<int>{20};
  }
  void filters() {
    QFETCH(QString, boxes);
    QFETCH(QList<int>, classes);
    const auto on = [&](char box) { return boxes.contains(QLatin1Char(box)); };
    Till till;
    till.fillDisciplines();
    till.fill(kMore);
    const auto found =
        klassenNachMerkmal(*till.store(), {on('f'), on('a'), on('d'), on('h'), on('b'), on('u')});
    QList<int> sorted(found.begin(), found.end());
    std::sort(sorted.begin(), sorted.end());
    QCOMPARE(sorted, classes);
  }

  void agesAtTheLimit() {
    ClassTraits eighteen;
    eighteen.AlterVon = eighteen.AlterBis = 18;
    ClassFilter young, old;
    young.bis18 = true;
    old.ueber18 = true;
    QVERIFY(passt(young, eighteen));
    QVERIFY(!passt(old, eighteen));
    eighteen.AlterVon = eighteen.AlterBis = 19;
    QVERIFY(!passt(young, eighteen));
    QVERIFY(passt(old, eighteen));
  }

  void aClassWithoutAnUpperAgeIsNotForTheYoung() {
    Till till;
    till.fill("Zeilen Schützenklassen\n  ID | Klasse | Alter von | Geschlecht\n  31 | Offen | 0 | 0\n");
    till.execute("UPDATE Schützenklassen SET [Alter bis] = Null, [Alter von] = Null WHERE ID = 31");
    ClassFilter young, old;
    young.bis18 = true;
    old.ueber18 = true;
    QVERIFY(!klassenNachMerkmal(*till.store(), young).contains(31));
    QVERIFY(!klassenNachMerkmal(*till.store(), old).contains(31));
    QVERIFY(klassenNachMerkmal(*till.store(), young).contains(1));
  }

  void classesInTheirOrder() {
    Till till;
    till.fillDisciplines();
    till.fill(kMore);
    QStringList names;
    for (const ShooterClass& each : ladeKlassen(*till.store())) names += each.Klasse;
    QCOMPARE(names.first(), "Schüler");
    QCOMPARE(names.last(), "Senioren");
  }

  void releasingAStake() {
    Till till;
    const auto database = till.store();
    QCOMPARE(klassenDerEinlage(*database, 4), (QSet<qint32>{1, 2}));
    speichereKlassen(*database, 4, {7});
    QCOMPARE(klassenDerEinlage(*database, 4), QSet<qint32>{7});
    QVERIFY(klassenDerEinlage(*database, 1).isEmpty());
    speichereKlassen(*database, 4, {});  // for everyone again
    QVERIFY(till.read("Select * from Kasse_Schuetzenklassen", {"KasseEinlageID"}).isEmpty());
  }

  void whatAStakePaysFor() {
    Till till;
    till.fillDisciplines();
    till.fill(kMore);
    const auto database = till.store();
    StakeTargets targets;
    targets.LoadDisziKombi(ladeDisziKombi(*database));
    QCOMPARE(rows(targets), (QStringList{" D LG Glück 1", " D LG Meister 1", " K Pokal 1"}));
    targets.zeige(*database, 1);
    QCOMPARE(rows(targets), (QStringList{" D LG Glück 1", "1 D LG Meister 2", "1 K Pokal 20"}));
    targets.zeige(*database, 3);  // nothing of the stake before stays
    QCOMPARE(rows(targets), (QStringList{"1 D LG Glück 3", " D LG Meister 1", " K Pokal 1"}));
  }

  void savingReplacesAll() {
    Till till;
    till.fillDisciplines();
    till.fill(kMore);
    const auto database = till.store();
    StakeTargets targets;
    targets.LoadDisziKombi(ladeDisziKombi(*database));
    targets.zeige(*database, 1);
    targets.flexBarcode().setText(2, StakeTargetColumn::Gewaehlt, "0");
    targets.flexBarcode().setText(1, StakeTargetColumn::Gewaehlt, "1");
    targets.flexBarcode().setText(1, StakeTargetColumn::Anz, "15");
    targets.speichere(*database, 1);
    QCOMPARE(stored(till), (QStringList{"3|1|2|3", "1|1|2|15", "1|2|1|20"}));
    for (int row = 1; row < targets.flexBarcode().rows(); ++row)
      targets.flexBarcode().setText(row, StakeTargetColumn::Gewaehlt, "");
    targets.speichere(*database, 1);  // the desk prints no labels for it then
    QCOMPARE(stored(till), QStringList{"3|1|2|3"});
  }

 private:
  static QStringList rows(StakeTargets& targets) {
    QStringList lines;
    const TextTable& table = targets.flexBarcode();
    for (int row = 1; row < table.rows(); ++row) {
      QStringList cells;
      for (int column = StakeTargetColumn::Gewaehlt; column < table.columns(); ++column)
        cells += table.text(row, column);
      lines += cells.join(' ');
    }
    return lines;
  }
  static QStringList stored(const Till& till) {
    return till.read("Select * from Kasse_DisziKombi order by ID",
                     {"EinlageID", "DisziKZ", "DisziKombiID", "Anzahl"});
  }
};

QTEST_GUILESS_MAIN(TestStakeLinks)
#include "test_stake_links.moc"
