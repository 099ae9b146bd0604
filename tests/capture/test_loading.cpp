// Disciplines, shooters and check lists out of a competition.

#include <QSignalSpy>
#include <QTest>

#include "capture/discipline_loader.h"
#include "tests/capture/workbench.h"

using namespace qk;
using namespace qk::test;

namespace {

const QString Competition = R"(
Zeilen Disziplin
  ID | Name            | CmdIndex | Ringe | Teiler | RingZentel | RingSerie | dblMaxSerieDSB | DSBTeilerGrenze | DSBTeilerGrenzWert | ZusatzTeiler | LMaxVerein | VortelAnzeige
  1  | 10m Luftgewehr  | 3        | ja    | nein   | nein       | 40        | 0              | nein            | 0                  | 0            | 0          | 0
  2  | Glücksscheibe   | 1        | nein  | ja     | nein       | 0         | 0              | nein            | 0                  | 0            | 0          | 0
  3  | Anton           | 2        | ja    | ja     | ja         | 10        | 109,5          | ja              | 50                 | 1            | 70000      | 7
Zeilen Schützenklassen
  ID | Klasse   | KZ
  30 | Damen I  | D1
  31 | Herren I | H1
Zeilen DisziplinKlasse
  ID | DisziID | KlasseID
  1  | 3       | 31
  2  | 3       | 30
  3  | 1       | 30
Zeilen DisziplinWaffen
  ID | DisziID | WaffenID | KZ
  1  | 3       | 7        | LG
Zeilen Kombination_Name
  ID | Kombinationsname | CmdIndex
  1  | Zum Pokal        | 1
  2  | Alles            | 2
Zeilen Kombination_Diszi
  ID | KombiID | disziID
  1  | 1       | 3
  2  | 2       | 1
  3  | 2       | 2
  4  | 2       | 99
Zeilen Verein
  ID | Name      | Kurzname
  12 | SV Grünau | Grünau
Zeilen Mannschaften
  ID | MannName
  5  | Grünau 1
Zeilen Schützen
  ID | Startnummer | Name         | VereinsID | KlassenID | lMannID
  7  | 107         | Müller, Änne | 12        | 30        | 5
  8  | O'8         | Ohne, Otto   |           | 99        | 0
)";

QStringList entries(const CheckList& list) {
  QStringList all;
  for (int i = 0; i < list.count(); ++i)
    all += QString::number(list.number(i)) + " " + list.text(i) + (list.isTicked(i) ? " x" : "");
  return all;
}

}  // namespace

class TestLoading : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void init() {
    bench = std::make_unique<Workbench>();
    bench->fill(Competition);
  }
  void cleanup() { bench.reset(); }

  void disciplineWithClassesAndWeapons();
  void everyFieldFromItsColumn();
  void unknownDiscipline();
  void shooterWithNames();
  void shooterWithoutClubTeamAndClass();
  void unknownShooter();
  void listsByPositionAndByName();
  void aListTakesTheEntriesOfAnother();
  void combinations();
  void aDisciplineComesBeforeACombinationOfItsName();
  void choosingADiscipline();
  void choosingACombination();
  void choosingNothing();

 private:
  std::unique_ptr<Workbench> bench;
};

void TestLoading::disciplineWithClassesAndWeapons() {
  const auto d = LadeDisziplin(bench->store(), 3);
  QVERIFY(d);
  QCOMPARE(d->Name, QString("Anton"));
  QCOMPARE(d->ID, 3);
  QCOMPARE(d->CmdIndex, 2);
  QVERIFY(kindOf(*d) == DisciplineKind::RingTeiler);
  QCOMPARE(d->RingZentel, std::int16_t(-1));
  QCOMPARE(d->RingSerie, std::int16_t(10));
  QCOMPARE(d->dblMaxSerieDSB, 109.5);
  QCOMPARE(d->DSBTeilerGrenze, std::int16_t(-1));
  QCOMPARE(d->DSBTeilerGrenzWert, std::int16_t(50));
  QCOMPARE(d->ZusatzTeiler, std::int16_t(1));
  QCOMPARE(d->LMaxVerein, 70000);
  QCOMPARE(d->VortelAnzeige, std::int16_t(7));
  QCOMPARE(d->Ring0XZehntel, std::int16_t(0));
  QCOMPARE(d->Klassen.count(), 2);
  QCOMPARE(d->Klassen.get("-30")->Name, QString("Damen I"));
  QCOMPARE(d->Klassen.get("-31")->ID, 31);
  QCOMPARE(d->Waffen.count(), 1);
  QCOMPARE(d->Waffen.get("-7")->Kurzbezeichnung, QString("LG"));
}

/// One column after the other holds a value of its own: exactly the field of its name follows.
void TestLoading::everyFieldFromItsColumn() {
  using D = Disziplin;
  const QList<std::pair<QString, double (*)(const D&)>> fields{
#define FIELD(name)                                  \
  {                                                  \
#name, [](const D& d) { return double(d.name); } \
  }
      FIELD(Ringe),
      FIELD(Teiler),
      FIELD(Einzel),
      FIELD(bVerein),
      FIELD(bMaxVerein),
      FIELD(bGewVerein),
      FIELD(LMaxVerein),
      FIELD(LGewVerein),
      FIELD(RingZentel),
      FIELD(RingSerie),
      FIELD(bLGewTeiler),
      FIELD(LGewTeiler),
      FIELD(CmdIndex),
      FIELD(bVMannschaft),
      FIELD(bEMannschaft),
      FIELD(nEMannschaft),
      FIELD(bOhneKlassen),
      FIELD(bMaxWert),
      FIELD(dblMaxWert),
      FIELD(bVollMannschaft),
      FIELD(bGewErg),
      FIELD(nGewErg),
      FIELD(dblMaxSerieDSB),
      FIELD(Ring05Zehntel),
      FIELD(bGewVorBel),
      FIELD(nGewVorBel),
      FIELD(DisziSPO_ID),
      FIELD(Ring0XZehntel),
      FIELD(RingXXZehntel),
      FIELD(DSBTeilerGrenze),
      FIELD(DSBTeilerGrenzWert),
      FIELD(AwSetupID),
      FIELD(bAktiveSchuetzen),
      FIELD(nAktiveSchuetzenAnzahl),
      FIELD(ZusatzTeiler),
      FIELD(bSPOMannschaft),
      FIELD(VortelAnzeige)
#undef FIELD
  };
  QString clear;
  for (const auto& field : fields) clear += (clear.isEmpty() ? "" : ", ") + field.first + " = 0";
  for (const auto& own : fields) {
    bench->store().execute("UPDATE Disziplin SET " + clear + " WHERE ID = 1");
    bench->store().execute("UPDATE Disziplin SET " + own.first + " = -1 WHERE ID = 1");
    const auto d = LadeDisziplin(bench->store(), 1);
    for (const auto& field : fields)
      QVERIFY2(field.second(*d) == (field.first == own.first ? -1 : 0),
               qPrintable(own.first + " in " + field.first));
  }
}

void TestLoading::unknownDiscipline() {
  QVERIFY(!LadeDisziplin(bench->store(), 99));
}

void TestLoading::shooterWithNames() {
  const auto s = LadeSchuetze(bench->store(), "107");
  QVERIFY(s);
  QCOMPARE(s->Startnummer, QString("107"));
  QCOMPARE(s->ID, 7);
  QCOMPARE(s->Name, QString("Müller, Änne"));
  QCOMPARE(s->VereinsID, 12);
  QCOMPARE(s->KlassenID, 30);
  QCOMPARE(s->lMannID, 5);
  QCOMPARE(s->VereinsName, QString("SV Grünau"));
  QCOMPARE(s->Mannschaftsname, QString("Grünau 1"));
  QCOMPARE(s->KlassenName, QString("Damen I"));
  QCOMPARE(LadeSchuetze(bench->store(), "107", KlassenNameForm::Kurzform)->KlassenName, QString("D1"));
}

void TestLoading::shooterWithoutClubTeamAndClass() {
  const auto s = LadeSchuetze(bench->store(), "O'8");
  QVERIFY(s);
  QCOMPARE(s->VereinsID, 0);
  QVERIFY(s->VereinsName.isEmpty() && s->Mannschaftsname.isEmpty() && s->KlassenName.isEmpty());
}

void TestLoading::unknownShooter() {
  QVERIFY(!LadeSchuetze(bench->store(), "108"));
}

void TestLoading::listsByPositionAndByName() {
  CheckList list;
  list.add("alt", 99);
  FuelleDisziplinListe(bench->store(), list);
  QCOMPARE(entries(list), (QStringList{"2 Glücksscheibe", "3 Anton", "1 10m Luftgewehr"}));
  FuelleDisziplinListe(bench->store(), list, ListOrder::Name);
  QCOMPARE(entries(list), (QStringList{"1 10m Luftgewehr", "3 Anton", "2 Glücksscheibe"}));
  FuelleKombinationsListe(bench->store(), list);
  QCOMPARE(entries(list), (QStringList{"1 Zum Pokal", "2 Alles"}));
  FuelleKombinationsListe(bench->store(), list, ListOrder::Name);
  QCOMPARE(entries(list), (QStringList{"2 Alles", "1 Zum Pokal"}));
}

void TestLoading::aListTakesTheEntriesOfAnother() {
  const auto lists = LadeListen(bench->store(), {ListOrder::Name, ListOrder::Position});
  QCOMPARE(entries(lists->disciplines), (QStringList{"1 10m Luftgewehr", "3 Anton", "2 Glücksscheibe"}));
  QCOMPARE(entries(lists->combinations), (QStringList{"1 Zum Pokal", "2 Alles"}));
  CheckList chosen, list;
  chosen.add("alt", 99);
  chosen.setTicked(0, true);
  list.add("neu", 98);
  list.add("noch neuer", 97);
  list.setCurrent(1);
  const QSignalSpy reset(&list, &CheckList::modelReset);
  list.takeEntriesOf(chosen);
  QCOMPARE(entries(list), QStringList{"99 alt"});
  QCOMPARE(list.current(), -1);
  QCOMPARE(reset.size(), 1);
}

void TestLoading::combinations() {
  CheckList disciplineList, combinationList;
  FuelleDisziplinListe(bench->store(), disciplineList);
  FuelleKombinationsListe(bench->store(), combinationList);
  disciplineList.setTicked(1, true);
  combinationList.setTicked(1, true);
  WendeKombinationenAn(bench->store(), combinationList, disciplineList);
  QCOMPARE(entries(disciplineList), (QStringList{"2 Glücksscheibe x", "3 Anton", "1 10m Luftgewehr x"}));
  combinationList.setTicked(0, true);
  WendeKombinationenAn(bench->store(), combinationList, disciplineList);
  QCOMPARE(disciplineList.tickedCount(), 3);
  combinationList.untickAll();
  WendeKombinationenAn(bench->store(), combinationList, disciplineList);
  QCOMPARE(disciplineList.tickedCount(), 0);
}

void TestLoading::aDisciplineComesBeforeACombinationOfItsName() {
  CheckList disciplineList, combinationList;
  disciplineList.add("Pokal", 1);
  disciplineList.add("Anton", 3);
  combinationList.add("Zum Pokal", 1);
  WaehleWettbewerb(bench->store(), "Pokal", disciplineList, combinationList);
  QCOMPARE(entries(disciplineList), (QStringList{"1 Pokal x", "3 Anton"}));
  QCOMPARE(combinationList.tickedCount(), 0);
}

void TestLoading::choosingADiscipline() {
  CheckList disciplineList, combinationList;
  FuelleDisziplinListe(bench->store(), disciplineList);
  FuelleKombinationsListe(bench->store(), combinationList);
  disciplineList.setTicked(0, true);
  combinationList.setTicked(0, true);
  WaehleWettbewerb(bench->store(), "20 luftgewehr", disciplineList, combinationList);
  QCOMPARE(entries(disciplineList), (QStringList{"2 Glücksscheibe", "3 Anton", "1 10m Luftgewehr x"}));
  QCOMPARE(disciplineList.current(), 2);
  QCOMPARE(combinationList.tickedCount(), 0);
  // A view may stand on another entry by now.
  QSignalSpy current(&disciplineList, &CheckList::currentChanged);
  WaehleWettbewerb(bench->store(), "20 luftgewehr", disciplineList, combinationList);
  QCOMPARE(current.count(), 1);
  QCOMPARE(current.at(0).at(0).toInt(), 2);
}

void TestLoading::choosingACombination() {
  CheckList disciplineList, combinationList;
  FuelleDisziplinListe(bench->store(), disciplineList);
  FuelleKombinationsListe(bench->store(), combinationList);
  WaehleWettbewerb(bench->store(), "pokal", disciplineList, combinationList);
  QCOMPARE(entries(combinationList), (QStringList{"1 Zum Pokal x", "2 Alles"}));
  QCOMPARE(entries(disciplineList), (QStringList{"2 Glücksscheibe", "3 Anton x", "1 10m Luftgewehr"}));
}

void TestLoading::choosingNothing() {
  CheckList disciplineList, combinationList;
  FuelleDisziplinListe(bench->store(), disciplineList);
  disciplineList.setTicked(0, true);
  WaehleWettbewerb(bench->store(), "Armbrust", disciplineList, combinationList);
  QCOMPARE(disciplineList.tickedCount(), 0);
}

QTEST_MAIN(TestLoading)
#include "test_loading.moc"
