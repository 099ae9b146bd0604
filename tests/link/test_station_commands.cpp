// What goes out to the stations, byte for byte, and that a code means one thing.
#include <QTest>

#include "link/station_commands.h"
#include "tests/support/compare_lines.h"

using namespace qk;

class TestStationCommands : public QObject {
  Q_OBJECT

 private Q_SLOTS:
  void texts();
  void everyReasonFindsItsRow();
  void noCodeBeginsAnother();
  void aCodeMeansOneThing();
  void aStationReadsTheCodeAlone();
};

void TestStationCommands::texts() {
  QStringList table;
  for (const StationCommand& row : stationCommands())
    table << row.text() + (row.argument.isEmpty() ? "|" : "…|") + (row.wait ? "wartet" : "");
  COMPARE_LINES(table,
                (QStringList{"H014|", "76 'Umschalten auf Preismodus|", "77 'UmschaltenAuf Fernbedienung|",
                             "75…|", "80…|wartet", "52|", "66|", "53|", "12|wartet", "13|wartet", "52|wartet",
                             "67|wartet", "45 …|", "46 'Werbefenster ausblenden|", "50 'Zurück zu Windows|",
                             "99 'Rechner herunterfahren|"}));
}

void TestStationCommands::everyReasonFindsItsRow() {
  for (const StationCommand& row : stationCommands()) QCOMPARE(&stationCommand(row.befehl), &row);
}

/// Else a station would take the one for the other.
void TestStationCommands::noCodeBeginsAnother() {
  QStringList wrong;
  for (const StationCommand& row : stationCommands())
    for (const StationCommand& other : stationCommands())
      if (row.code != other.code && other.code.startsWith(row.code)) wrong << row.code + " - " + other.code;
  COMPARE_LINES(wrong, QStringList());
}

void TestStationCommands::aCodeMeansOneThing() {
  QStringList wrong;
  for (const StationCommand& row : stationCommands())
    for (const StationCommand& other : stationCommands())
      if (row.code == other.code && row.act != other.act)
        wrong << row.code + ": " + row.meaning + " - " + other.meaning;
  COMPARE_LINES(wrong, QStringList());
}

void TestStationCommands::aStationReadsTheCodeAlone() {
  const auto meaning = [](const QString& command) {
    const StationCommand* row = readCommand(command);
    return row ? row->meaning : QString();
  };
  QCOMPARE(meaning("76"), QString("Preismodus ein"));
  QCOMPARE(meaning("76 'etwas anderes"), QString("Preismodus ein"));
  QCOMPARE(meaning("801;5"), QString("zusätzliche Schüsse einer Disziplin"));
  QCOMPARE(meaning("H014"), QString("geht dem Preismodus voraus"));
  for (const char* unknown : {"", "7", "H01", "44", "'76"}) QCOMPARE(meaning(unknown), QString());
}

QTEST_APPLESS_MAIN(TestStationCommands)
#include "test_station_commands.moc"
