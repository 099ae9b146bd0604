#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "targetconfig/station_files.h"

using namespace qk;

namespace {

Definition sampleDefinition() {
  Definition d;
  d.bezeichnung = "LG Glück";
  d.kennNummer = "0";
  d.regelNummer = "1.10";
  d.wertungsRadius = "225";
  d.maximalDurchmesser = "450";
  d.minimalDurchmesser = "450";
  d.schusszahl = "40";
  d.probeSchuesse = "-1";
  d.schiessZeit = "999 min";
  d.probeZeit = "999 min";
  d.wertung = "11";
  d.schiessPosition = "stehend";
  d.serienLaenge = "10";
  d.dateiWaffe = "0_hwLG.def";
  d.dateiScheibe = "0_hsLG.def";
  d.zeitenAnzahl = "3";
  d.zeit = "60 min";
  d.schussAnzahl = "1";
  d.schussZahl = "10";
  d.positionsAnzahl = "keine";
  d.serienAnzahl = "2";
  d.serien = "10";
  d.dateiName = "0_hd_LG_Glück.def";
  return d;
}

}  // namespace

class TestStationFiles : public QObject {
  Q_OBJECT

  QTemporaryDir dir_;
  Files files_;
  QString folder() const { return dir_.path() + "/"; }

 private Q_SLOTS:
  void init() {
    for (const QString& name : files_.list(folder(), "*")) files_.remove(folder() + name);
  }

  void iniBytes() {
    const std::vector<StationDiscipline> disciplines = {{"LG Glück", "0_hd_LG_Glück.def"},
                                                        {"LP", "0_hd_LP.def"}};
    const QByteArray golden =
        "[Setting]\r\nPreselection = 1\r\nRemoteInput = 1\r\nPrePaid = 0\r\nNurMatch = 0\r\n"
        "[W1]\r\nBezeichnung = \"LG Gl\xFC"
        "ck\"\r\nDefinition = \"0_hd_LG_Gl\xFC"
        "ck.def\"\r\nCheck = 0\r\nRemoteNr = 1\r\n"
        "[W2]\r\nBezeichnung = \"LP\"\r\nDefinition = \"0_hd_LP.def\"\r\nCheck = 0\r\nRemoteNr = 1\r\n";
    QCOMPARE(stationDisciplinesToBytes(disciplines), golden);
    QCOMPARE(stationDisciplinesFromBytes(golden), disciplines);
  }

  void iniWithoutDisciplines() {
    const QByteArray golden =
        "[Setting]\r\nPreselection = 1\r\nRemoteInput = 1\r\nPrePaid = 0\r\nNurMatch = 0\r\n";
    QCOMPARE(stationDisciplinesToBytes({}), golden);
    QVERIFY(stationDisciplinesFromBytes(golden).empty());
  }

  void iniReadsUnixLinesAndDamage() {
    const QByteArray damaged =
        "Definition = \"early.def\"\n[W1]\nBezeichnung=\"A = B\"\n\x01\xFFgarbage\n[W2]\nBezeichnung = "
        "Luft\nDefinition = "
        "\"l.def\"";
    const std::vector<StationDiscipline> expected = {{"A = B", ""}, {"Luft", "l.def"}};
    QCOMPARE(stationDisciplinesFromBytes(damaged), expected);
  }

  void definitionBytes() {
    QByteArray golden;
    const auto pair = [&](const QByteArray& key, const QByteArray& value) {
      golden += "\"" + key + "\"\r\n\"" + value + "\"\r\n";
    };
    pair(">Bezeichnung",
         "LG Gl\xFC"
         "ck");
    pair(">KennNummer", "0");
    pair(">RegelNummer", "1.10");
    pair(">WertungsRadius", "225");
    pair(">MaximalDurchmesser", "450");
    pair(">MinimalDurchmesser", "450");
    pair(">Schusszahl", "40");
    pair(">ProbeSchuesse", "-1");
    pair(">SchiessZeit", "999 min");
    pair(">ProbeZeit", "999 min");
    pair(">Wertung", "11");
    pair(">SchiessPosition", "stehend");
    pair(">SerienLaenge", "10");
    pair(">DateiWaffe", "0_hwLG.def");
    pair(">DateiScheibe", "0_hsLG.def");
    pair(">ZeitenAnzahl", "3");
    pair(">Zeit1", "60 min");
    pair(">Zeit2", "60 min");
    pair(">Zeit3", "60 min");
    pair(">SchussAnzahl", "1");
    pair(">SchussZahl1", "10");
    pair(">PositionsAnzahl", "keine");
    pair(">SerienAnzahl", "2");
    pair(">Serien1", "10");
    pair(">Serien2", "10");
    pair(">DateiName",
         "0_hd_LG_Gl\xFC"
         "ck.def");
    QCOMPARE(definitionToBytes(sampleDefinition()), golden);
    QCOMPARE(definitionFromBytes(golden), sampleDefinition());
    QCOMPARE(definitionFromBytes(QByteArray(golden).replace("\r\n", "\n")), sampleDefinition());
  }

  void definitionCountBeyondRange() {
    Definition d = sampleDefinition();
    d.zeitenAnzahl = "40000";
    try {
      definitionToBytes(d);
      QFAIL("no error");
    } catch (const Error& error) {
      QCOMPARE(error.number(), 6);
    }
  }

  void definitionReadsDamage() {
    const Definition d = definitionFromBytes(
        "\">Schusszahl\"\n\">Wertung\"\n\"10\"\nstray\n\">Unbekannt\"\n\"x\"\n\">DateiName\"");
    QCOMPARE(d.schusszahl, QString());
    QCOMPARE(d.wertung, "10");
    // A counted entry is known by its number.
    QCOMPARE(definitionFromBytes("\">Zeit\"\n\"9 min\"\n\">Zeit1\"\n\"60 min\"").zeit, "60 min");
    QCOMPARE(definitionFromBytes("\">Zeit\"\n\"9 min\"").zeit, QString());
    QCOMPARE(d.dateiName, QString());
  }

  void writtenFilesReadBack() {
    writeDefinition(files_, folder() + "0_hd_x.def", sampleDefinition());
    QCOMPARE(readDefinition(files_, folder() + "0_hd_x.def"), sampleDefinition());
    writeStationDisciplines(files_, folder(), {{"X", "0_hd_x.def"}});
    QCOMPARE(readStationDisciplines(files_, folder()), (std::vector<StationDiscipline>{{"X", "0_hd_x.def"}}));
  }

  void fileNames_data() {
    QTest::addColumn<QString>("title");
    QTest::addColumn<QString>("name");
    QTest::newRow("characters removed") << "Luftgewehr: Auflage 1+2"
                                        << "0_hd_LG_Luftgewehr_Auflage_12.def";
    QTest::newRow("all of them") << ":\"/\\<>*?|+"
                                 << "0_hd_LG_.def";
    QTest::newRow("four blanks") << "a    b"
                                 << "0_hd_LG_a__b.def";
    QTest::newRow("five blanks") << "a     b"
                                 << "0_hd_LG_a_b.def";
    QTest::newRow("six blanks") << "a      b"
                                << "0_hd_LG_a_b.def";
  }
  void fileNames() {
    QFETCH(QString, title);
    QTEST(definitionFileName("LG", title), "name");
  }

  void gridRows() {
    files_.write(folder() + "esa_preis.ini",
                 "[Setting]\r\n[W1]\r\nBezeichnung = \"LG Gl\xFC"
                 "ck\"\r\nDefinition = \"a.def\"\r\n"
                 "[W2]\r\nBezeichnung = \"ohne Datei\"\r\nDefinition = \"fehlt.def\"\r\n"
                 "[W3]\r\nbezeichnung = \"klein\"\r\nBezeichnung = \"A=B\"\r\nDefinition = \"b.def\"\r\n");
    files_.write(folder() + "a.def",
                 "\">SchussZahl1\"\r\n\"7\"\r\n\">Schusszahl\"\r\n\"40\"\r\n\">Schusszahl\"\r\n\"50\"\r\n");
    files_.write(folder() + "b.def", "\">Schusszahl\"\r\n");
    const DisciplineGrid grid = readDisciplineGrid(files_, folder());
    QVERIFY(!grid.iniMissing);
    QCOMPARE(grid.rows, (std::vector<GridDiscipline>{{"LG Glück", "40"}, {"ohne Datei", ""}, {"AB", ""}}));
  }

  void gridTakesLeadingDigits() {
    files_.write(folder() + "esa_preis.ini", "Bezeichnung=A\nDefinition=a.def\n");
    files_.write(folder() + "a.def", ">Schusszahl\n20 Schuss\n");
    QCOMPARE(readDisciplineGrid(files_, folder()).rows, (std::vector<GridDiscipline>{{"A", "20"}}));
    files_.write(folder() + "a.def", ">Schusszahl\nviele\n");
    QCOMPARE(readDisciplineGrid(files_, folder()).rows, (std::vector<GridDiscipline>{{"A", "0"}}));
  }

  void gridWithoutIni() {
    const DisciplineGrid grid = readDisciplineGrid(files_, folder());
    QVERIFY(grid.iniMissing);
    QCOMPARE(grid.iniPath, folder() + "esa_preis.ini");
    QVERIFY(grid.rows.empty());
  }

  void gridOfAnotherKindOfFile() {
    QByteArray bytes;
    for (int i = 0; i < 5000; ++i) bytes += char(i * 37 % 256);
    files_.write(folder() + "esa_preis.ini", bytes);
    QVERIFY(readDisciplineGrid(files_, folder()).rows.empty());
    files_.write(folder() + "esa_preis.ini", "Bezeichnung=A\nDefinition=a.def\n");
    files_.write(folder() + "a.def", bytes);
    QCOMPARE(readDisciplineGrid(files_, folder()).rows, (std::vector<GridDiscipline>{{"A", ""}}));
    files_.remove(folder() + "esa_preis.ini");
    files_.makeFolder(folder() + "esa_preis.ini");
    QVERIFY(readDisciplineGrid(files_, folder()).iniMissing);
    QVERIFY(QDir(folder()).rmdir("esa_preis.ini"));
  }

  void gridSurvivesDefinitionFirstAndFolderAsName() {
    files_.write(folder() + "esa_preis.ini",
                 "Definition = \"a.def\"\nBezeichnung = \"A\"\nDefinition = \"\"\n");
    files_.write(folder() + "a.def", ">Schusszahl\n20\n");
    QCOMPARE(readDisciplineGrid(files_, folder()).rows, (std::vector<GridDiscipline>{{"A", ""}}));
  }
};

QTEST_APPLESS_MAIN(TestStationFiles)
#include "test_station_files.moc"
