// The rows of a demo competition as pure data: complete, consistent, the same at every call.
#include <QtTest>
#include <set>

#include "masterdata/making/competition.h"
#include "masterdata/making/demo_rows.h"

namespace {

std::vector<qk::TableData> rows() {
  return qk::demoRows(qk::embeddedSchema("Wettkampf.txt"), qk::embeddedSchema("Demo.txt"));
}

/// All values of a column over all sections of its table; Null where a section lacks the column.
QVariantList column(const std::vector<qk::TableData>& all, const QString& table, const QString& name) {
  QVariantList values;
  for (const qk::TableData& data : all) {
    if (data.table != table) continue;
    const auto position = data.columns.indexOf(name);
    for (const QVariantList& row : data.rows) values << (position < 0 ? QVariant() : row.at(position));
  }
  return values;
}

std::set<int> numbers(const QVariantList& values) {
  std::set<int> result;
  for (const QVariant& value : values)
    if (value.isValid() && value.toInt() > 0) result.insert(value.toInt());
  return result;
}

}  // namespace

class TestDemoRows : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void areTheSameTwice();
  void haveSixtyShootersInSixClubs();
  void coverAllClasses();
  void followTheClassRules();
  void coverAllRingFlags();
  void coverAllRingTeilerFlags();
  void coverExtraShotsAndSeries();
  void referToRowsThatExist_data();
  void referToRowsThatExist();
  void agreeWithTheStacks();
  void admitClasses();
};

void TestDemoRows::areTheSameTwice() {
  const auto first = rows();
  const auto second = rows();
  QCOMPARE(first.size(), second.size());
  for (size_t i = 0; i < first.size(); ++i) {
    QCOMPARE(first.at(i).table, second.at(i).table);
    QCOMPARE(first.at(i).rows.size(), second.at(i).rows.size());
    for (size_t r = 0; r < first.at(i).rows.size(); ++r)
      QCOMPARE(first.at(i).rows.at(r), second.at(i).rows.at(r));
  }
}

void TestDemoRows::haveSixtyShootersInSixClubs() {
  const auto all = rows();
  const QVariantList startNumbers = column(all, "Schützen", "Startnummer");
  QCOMPARE(startNumbers.size(), qk::DemoShooters);
  std::set<QString> different;
  for (const QVariant& number : startNumbers) different.insert(number.toString());
  QCOMPARE(different.size(), size_t{60});
  QCOMPARE(numbers(column(all, "Schützen", "ID")).size(), size_t{60});
  QCOMPARE(numbers(column(all, "Schützen", "VereinsID")), (std::set<int>{1, 2, 3, 4, 5, 6}));
  QVERIFY(numbers(column(all, "Schützen", "lMannID")).size() >= 6);
  QVERIFY(column(all, "Schützen", "lMannID").contains(0));
  int umlauts = 0;
  for (const QVariant& name : column(all, "Schützen", "Name"))
    umlauts += name.toString().contains(QRegularExpression("[äöüßÄÖÜ]")) ? 1 : 0;
  QVERIFY(umlauts > 30);
}

void TestDemoRows::coverAllClasses() {
  const auto all = rows();
  const std::set<int> used = numbers(column(all, "Schützen", "KlassenID"));
  for (const QVariant& id : column(all, "Schützenklassen", "ID"))
    QVERIFY2(used.count(id.toInt()), qPrintable(id.toString()));
  QVERIFY(column(all, "Schützen", "KlassenID").contains(0));
}

void TestDemoRows::followTheClassRules() {
  const qk::TableData classes{"Schützenklassen",
                              {"ID", "Alter von", "Alter bis", "Geschlecht"},
                              {{1, 0, 14, 1}, {2, 0, 14, 2}, {3, 15, 40, 1}, {4, 30, 99, 0}}};
  QCOMPARE(qk::classFor(classes, 0, "M"), 1);
  QCOMPARE(qk::classFor(classes, 14, "w"), 2);
  QCOMPARE(qk::classFor(classes, 35, "m"), 3);
  QCOMPARE(qk::classFor(classes, 35, "W"), 4);
  QCOMPARE(qk::classFor(classes, 35, ""), 4);
  QCOMPARE(qk::classFor(classes, 20, "W"), 0);
  QCOMPARE(qk::classFor(classes, 100, "M"), 0);
}

void TestDemoRows::coverAllRingFlags() {
  const auto all = rows();
  const QVariantList rings = column(all, "Disziplin", "Ringe");
  const QVariantList teiler = column(all, "Disziplin", "Teiler");
  const QVariantList tenths = column(all, "Disziplin", "RingZentel");
  const QVariantList only = column(all, "Disziplin", "Ring0XZehntel");
  const QVariantList plus = column(all, "Disziplin", "RingXXZehntel");
  std::set<int> kinds;
  std::set<int> flags;
  for (qsizetype i = 0; i < rings.size(); ++i) {
    kinds.insert((rings.at(i).toInt() ? 2 : 0) + (teiler.at(i).toInt() ? 1 : 0));
    if (rings.at(i).toInt() && !teiler.at(i).toInt())
      flags.insert((tenths.at(i).toInt() ? 4 : 0) + (only.at(i).toInt() ? 2 : 0) +
                   (plus.at(i).toInt() ? 1 : 0));
  }
  QCOMPARE(kinds.size(), size_t{4});
  QCOMPARE(flags.size(), size_t{8});
}

void TestDemoRows::coverAllRingTeilerFlags() {
  const auto all = rows();
  const QVariantList rings = column(all, "Disziplin", "Ringe");
  const QVariantList teiler = column(all, "Disziplin", "Teiler");
  const QVariantList tenths = column(all, "Disziplin", "RingZentel");
  const QVariantList limit = column(all, "Disziplin", "DSBTeilerGrenze");
  std::set<int> flags;
  for (qsizetype i = 0; i < rings.size(); ++i)
    if (rings.at(i).toInt() && teiler.at(i).toInt())
      flags.insert((tenths.at(i).toInt() ? 2 : 0) + (limit.at(i).toInt() ? 1 : 0));
  QCOMPARE(flags.size(), size_t{4});
}

void TestDemoRows::coverExtraShotsAndSeries() {
  const auto all = rows();
  const QVariantList extra = column(all, "Disziplin", "ZusatzTeiler");
  QVERIFY(extra.contains(1) && extra.contains(-1) && extra.contains(0));
  const QVariantList series = column(all, "Disziplin", "RingSerie");
  for (int shots : {0, 10, 20, 40}) QVERIFY2(series.contains(shots), qPrintable(QString::number(shots)));
  QVERIFY(column(all, "Disziplin", "Ring05Zehntel").contains(-1));
}

void TestDemoRows::referToRowsThatExist_data() {
  QTest::addColumn<QString>("table");
  QTest::addColumn<QString>("column");
  QTest::addColumn<QString>("target");
  QTest::addColumn<QString>("key");
  const auto row = [](const char* table, const char* name, const char* target, const char* key = "ID") {
    QTest::addRow("%s.%s", table, name) << table << name << target << key;
  };
  row("Schützen", "VereinsID", "Verein");
  row("Schützen", "lMannID", "Mannschaften");
  row("Schützen", "KlassenID", "Schützenklassen");
  row("Mannschaften", "VereinID", "Verein");
  row("Mannschaften", "GruppenID", "MannschaftsGruppen", "MannGrpID");
  row("SchuetzenGruppenZuordnung", "GruppenID", "SchuetzenGruppen", "SchGrpID");
  row("SchuetzenGruppenZuordnung", "SchuetzeID", "Schützen");
  row("DisziplinKlasse", "DisziID", "Disziplin");
  row("DisziplinKlasse", "KlasseID", "Schützenklassen");
  row("DisziplinWaffen", "DisziID", "Disziplin");
  row("Kombination_Diszi", "KombiID", "Kombination_Name");
  row("Kombination_Diszi", "disziID", "Disziplin");
  row("Schuetzen_SPO_Anmeldungen", "SchuetzeID", "Schützen");
  row("Schuetzen_SPO_Anmeldungen", "MannID", "Mannschaften");
  row("Kasse_Eingang", "Startnummer", "Schützen", "Startnummer");
  row("Kasse_Eingang", "MannID", "Mannschaften");
  row("Kasse_DisziKombi", "EinlageID", "Kasse_Verwaltung");
  row("Kasse_Schuetzenklassen", "SchuetzenklasseID", "Schützenklassen");
  row("Schuetzen_ScheibenNummern", "Startnummer", "Schützen", "Startnummer");
  row("Schuetzen_ScheibenNummern", "StapelID", "ScheibenNummern");
  row("AwProfilDiszi", "AwProfilID", "AuswertProfil");
  row("AwProfilDiszi", "DisziID", "Disziplin");
  row("Auswert_Klassen", "KlassenID", "Schützenklassen");
}

void TestDemoRows::referToRowsThatExist() {
  QFETCH(QString, table);
  QFETCH(QString, column);
  QFETCH(QString, target);
  QFETCH(QString, key);
  const auto all = rows();
  const QVariantList there = ::column(all, target, key);
  const QVariantList values = ::column(all, table, column);
  QVERIFY(!values.isEmpty());
  for (const QVariant& value : values)
    if (value.isValid() && value.toString() != "0")
      QVERIFY2(there.contains(value), qPrintable(value.toString()));
}

void TestDemoRows::agreeWithTheStacks() {
  const auto all = rows();
  const QVariantList stacks = column(all, "ScheibenNummern", "ID");
  const QVariantList next = column(all, "ScheibenNummern", "AktuelleNummer");
  const QVariantList issuedFrom = column(all, "Schuetzen_ScheibenNummern", "StapelID");
  const QVariantList issued = column(all, "Schuetzen_ScheibenNummern", "Scheibennummer");
  QVERIFY(issuedFrom.contains(QVariant()));
  for (qsizetype i = 0; i < issued.size(); ++i)
    if (issuedFrom.at(i).isValid())
      QVERIFY(issued.at(i).toInt() < next.at(stacks.indexOf(issuedFrom.at(i))).toInt());
}

void TestDemoRows::admitClasses() {
  const auto all = rows();
  const QVariantList disciplines = column(all, "DisziplinKlasse", "DisziID");
  const QVariantList classes = column(all, "DisziplinKlasse", "KlasseID");
  const auto admitted = [&](const QString& name) {
    const int id = column(all, "Disziplin", "ID").at(column(all, "Disziplin", "Name").indexOf(name)).toInt();
    std::set<int> result;
    for (qsizetype i = 0; i < disciplines.size(); ++i)
      if (disciplines.at(i).toInt() == id) result.insert(classes.at(i).toInt());
    return result;
  };
  QCOMPARE(admitted("LG Meister").size(), size_t{14});
  QCOMPARE(admitted("LG Auflage"), (std::set<int>{13, 14}));
  QVERIFY(!admitted("KK liegend").count(1) && admitted("KK liegend").count(3));
  QVERIFY(admitted("Kranzl").empty());
}

QTEST_GUILESS_MAIN(TestDemoRows)
#include "test_demo_rows.moc"
