#include <QTest>

#include "tools/station/options.h"

using namespace qk;

class TestStationOptions : public QObject {
  Q_OBJECT

  static QString faultOf(const QStringList& arguments) {
    QString fault;
    parseStationOptions(arguments, &fault);
    return fault;
  }

 private Q_SLOTS:
  void defaults() {
    QString fault;
    const StationOptions options = parseStationOptions({"--ordner", "/tmp/x"}, &fault);
    QCOMPARE(fault, QString());
    QCOMPARE(options.folder, "/tmp/x/");
    QCOMPARE(options.lines, std::vector<int>{1});
    QCOMPARE(options.paceMs, 1000);
    QVERIFY(options.faults.isEmpty());
    QVERIFY(!options.endWhenDone);
  }

  void everything() {
    QString fault;
    const StationOptions options =
        parseStationOptions({"--ordner", "/tmp/x/", "--linien", "2,5-7", "--tempo", "0", "--zufall", "42",
                             "--protokoll", "a.log", "--wiederholen", "b.log", "--fehler", "langsam,muell",
                             "--fehlerquote", "50", "--schuss", "10", "--beenden"},
                            &fault);
    QCOMPARE(fault, QString());
    QCOMPARE(options.folder, "/tmp/x/");
    QCOMPARE(options.lines, (std::vector<int>{2, 5, 6, 7}));
    QCOMPARE(options.paceMs, 0);
    QCOMPARE(options.seed, quint64(42));
    QCOMPARE(options.logFile, "a.log");
    QCOMPARE(options.replayFile, "b.log");
    QCOMPARE(options.faults, (QSet<Fault>{Fault::Slow, Fault::Garbage}));
    QCOMPARE(options.faultPercent, 50);
    QCOMPARE(options.shotLimit, 10);
    QVERIFY(options.endWhenDone);
  }

  void plainNumberOfLines() {
    QString fault;
    QCOMPARE(parseStationOptions({"--ordner", "x", "--linien", "3"}, &fault).lines,
             (std::vector<int>{1, 2, 3}));
  }

  void allFaultsSpareTheOffice() {
    QString fault;
    const auto faults = parseStationOptions({"--ordner", "x", "--fehler", "alle"}, &fault).faults;
    QCOMPARE(faults.size(), 5);
    QVERIFY(!faults.contains(Fault::FlagWithoutData));
    QVERIFY(parseStationOptions({"--ordner", "x", "--fehler", "flagge-ohne-daten"}, &fault)
                .faults.contains(Fault::FlagWithoutData));
  }

  void mistakes() {
    QCOMPARE(faultOf({}), "Der Austauschordner fehlt (--ordner).");
    QCOMPARE(faultOf({"--ordner", "x", "--bunt"}), "Unbekannte Option: bunt");
    QCOMPARE(faultOf({"--ordner", "x", "--tempo"}), "Einer Option fehlt ihr Wert.");
    QCOMPARE(faultOf({"--ordner", "x", "y"}), "Unerwartete Angabe: y");
    QCOMPARE(faultOf({"--ordner", "x", "--linien", "7-2"}), "--linien: \"7-2\" nennt keine Linien.");
    QCOMPARE(faultOf({"--ordner", "x", "--tempo", "-1"}),
             "--tempo: \"-1\" ist keine Zahl von 0 bis 3600000.");
    QCOMPARE(faultOf({"--ordner", "x", "--fehler", "laut"}), "--fehler: \"laut\" ist kein bekannter Fehler.");
  }

  void help() {
    for (const QString option : {"ordner", "linien", "tempo", "zufall", "protokoll", "wiederholen", "fehler",
                                 "fehlerquote", "schuss", "beenden", "hilfe", "version"})
      QVERIFY2(stationHelp().contains("--" + option), qPrintable(option));
  }
};

QTEST_APPLESS_MAIN(TestStationOptions)
#include "test_station_options.moc"
