#include "tests/evaluation/evaluation_bench.h"

#include <QTest>

namespace qk::test {

void EvaluationBench::begin() {
  day = std::make_unique<ShootingDay>();
  reports = std::make_unique<NotedReports>();
  day->place.random.give({0.1, 0.2, 0.3, 0.4, 0.5, 0.6, 0.7});
  reports->meanwhile = [this](const ReportOrder& order) {
    const auto druck = dao::Database::open(order.dataFile, true);
    QVERIFY(!druck->isOpenElsewhere());  // what was written is in the file
    rows = read(*druck, "Select * from Ergebnisse order by ID",
                {"Wettkampf", "Gruppe", "Disziplin", "WTyp", "DisziErgebnis", "E1", "E2", "E3"});
    shooter = read(*druck, "Schütze", {"Startnummer", "Name", "Verein", "Klasse", "Mannschaft"});
    single = read(*druck, "Select * from EinzelErgebnisse order by WkID, Ergebnis",
                  {"WkID", "Tabelle", "ErgID", "Art", "Ergebnis"});
    names = read(*druck, "Select * from Ergebnisse order by ID", {"Startnummer", "Name"});
  };
  rows = shooter = single = names = {};
}

void EvaluationBench::end() {
  const QStringList left = files();
  day.reset();
  reports.reset();
  QCOMPARE(left, QStringList());
}

}  // namespace qk::test
