#include "tests/app/days_work.h"

#include <QTabWidget>
#include <QTest>

#include "platform/grid/text_grid.h"

namespace qk::test {
namespace {

void fireSeries(RangeOffice& office, int firstHit, int count) {
  for (int hit = firstHit; hit < firstHit + count; ++hit) office.fire(1, shotRecord(1, hit, "9,7", "72,4"));
}

/// A stake for the shooter of the line, the next shooter, his open items, the receipt of nothing.
void workAtTheDesk(RangeOffice& office) {
  office.boxes.expectWindow("frmFinanz", [&office](QWidget& desk) {
    type(desk, "txtArtikelnummer", "200");
    press(desk, "txtArtikelnummer", Qt::Key_Return);
    click(desk, "cmdVerbuchen");
    office.boxes.expectInput("Bitte neue Startnummer eingeben:", "107");
    click(desk, "cmdSchWechsel");
    the<QTabWidget>(desk, "SSTab1").setCurrentIndex(2);
    click(desk, "cmdOPVerbuchen");
    the<TextGrid>(desk, "flexAll").setCurrentRow(1);
    office.boxes.expect("Soll der aktuelle Eingang des Schützen unwiderruflich gelöscht werden?",
                        BoxAnswer::Yes);
    click(desk, "cmdDelete");
    click(desk, "cmdCancel");
  });
  trigger(office.window(), "mnuEditKasse");
}

}  // namespace

const QStringList& growingTables() {
  static const QStringList names{"Haering_Daten",  "Schuss",        "SchussSerien",
                                 "Grafik_Scheibe", "Grafik_Schuss", "Kasse_Eingang"};
  return names;
}

void workADay(RangeOffice& office) {
  QVERIFY(office.open());
  office.chooseShooter(1, "107");
  office.press(1, "cmdPreisModus");
  fireSeries(office, 1, 6);
  QAbstractItemModel& shots = *office.on<TextGrid>(1, "flex").model();
  QVERIFY(shots.setData(shots.index(0, 0), Qt::Checked, Qt::CheckStateRole));
  office.boxes.expect("Sollen die gewählten Intarso Schuss dieser Linie verworfen werden?", BoxAnswer::Yes);
  office.press(1, "m_cmdVerwerfenGewaehlte");

  office.drop();
  QVERIFY(office.open());
  QVERIFY(office.line(1).nOffeneSchuss() > 0);
  office.boxes.expect(
      "Bisheriger Schütze hat noch offene Schüsse!\r\nDiese werden dann dem neuen Schützen "
      "zuordnet!\r\nTrotzdem wechseln?",
      BoxAnswer::Yes);
  office.chooseShooter(1, "105");
  for (const char* discipline : {"LG Meister", "LG Teiler", "LG Ring-Teiler"})
    office.tickEntry(1, "m_lstDisziTarvex", discipline);
  office.place.random.give({0.1, 0.2, 0.3, 0.4});  // two keys of results a transfer
  office.press(1, "m_cmdAlleWaehlenHaering");
  office.press(1, "cmd_SaveOnlyTarvex");
  office.press(1, "m_cmdUebertragenTarvex");
  office.press(1, "m_cmdSaveTarvex");
  QCOMPARE(office.line(1).nOffeneSchuss(), 0);

  workAtTheDesk(office);

  office.press(1, "cmdPreisModus");
  fireSeries(office, 10, 3);
  office.boxes.expect("Solle alle von Intarso übertragenen Schuss dieser Linie verworfen werden?",
                      BoxAnswer::Yes);
  office.press(1, "m_cmdVerwerfen");
  QCOMPARE(office.line(1).nOffeneSchuss(), 0);
}

}  // namespace qk::test
