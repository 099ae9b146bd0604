// The program qk-station as a separate process, and the office's exchange on the other side of the folder.
#include <QProcess>
#include <QTest>

#include "link/commands.h"
#include "link/station_commands.h"
#include "platform/runtime/textcodec.h"
#include "targetconfig/station_files.h"
#include "tests/link/plain_line.h"
#include "tests/support/test_workplace.h"

using namespace qk;
using namespace qk::test;

class TestStationProgram : public QObject {
  Q_OBJECT

  std::unique_ptr<TestWorkplace> place_;
  QProcess station_;

  void start(const QStringList& arguments) {
    station_.start(QK_STATION, arguments);
    QVERIFY(station_.waitForStarted());
  }
  int status() {
    if (station_.state() != QProcess::NotRunning && !station_.waitForFinished()) return -1;
    return station_.exitStatus() == QProcess::NormalExit ? station_.exitCode() : -1;
  }
  QString folder() const { return place_->path("austausch/"); }

 private Q_SLOTS:
  void init() {
    place_ = std::make_unique<TestWorkplace>();
    place_->files.makeFolder(folder());
    Definition definition;
    definition.schusszahl = "6";
    definition.serienLaenge = "3";
    definition.wertung = "11";
    definition.regelNummer = "1.10";
    writeDefinition(place_->files, folder() + "0_hd_LG_x.def", definition);
    writeStationDisciplines(place_->files, folder(), {{"LG Glück", "0_hd_LG_x.def"}});
  }
  void cleanup() {
    station_.kill();
    station_.waitForFinished();
    place_.reset();
  }

  void helpIsGerman() {
    start({"--help"});
    QCOMPARE(status(), 0);
    QVERIFY(QString::fromUtf8(station_.readAllStandardOutput()).startsWith("qk-station - spielt die Stände"));
  }

  void mistakesAreNamed() {
    start({"--ordner", place_->path("fehlt")});
    QCOMPARE(status(), 2);
    QVERIFY(QString::fromUtf8(station_.readAllStandardError()).startsWith("Der Ordner fehlt: "));
    start({"--ordner", folder(), "--wiederholen", place_->path("fehlt.log")});
    QCOMPARE(status(), 2);
  }

  void endsWhenAsked() {
    start({"--ordner", folder()});
    place_->files.write(folder() + "HServ1.nrt", "\"76\"\r\n");
    place_->files.write(folder() + "HServ1.ctl", "\"\"\r\n");
    QTRY_VERIFY(!Files().exists(folder() + "HServ1.ctl"));
    station_.terminate();
    QCOMPARE(status(), 0);
  }

  void everyShotArrives() {
    const QString log = place_->path("stationen.log");
    start({"--ordner", folder(), "--linien", "2", "--tempo", "0", "--beenden", "--protokoll", log, "--fehler",
           "doppelt,zerrissen,muell", "--fehlerquote", "30"});
    PlainLine lines[2];
    std::vector<std::unique_ptr<LineExchange>> exchanges;
    for (int n = 1; n <= 2; ++n) {
      exchanges.push_back(std::make_unique<LineExchange>(place_->workplace(), lines[n - 1]));
      exchanges.back()->setNetzverzeichnis(folder());
      exchanges.back()->setLinie(n);
    }
    for (const QString& command :
         {stationCommand(Befehl::VorPreismodus).text(), stationCommand(Befehl::PreismodusEin).text(),
          anmeldeBefehl("107", "Müller", disziplinMaske({{"1"}}))}) {
      for (const auto& exchange : exchanges) exchange->Output_2_ESA(command, false);
      QTRY_VERIFY(place_->files.list(folder(), "HServ*.ctl").isEmpty());
    }
    const auto tickUntilEnd = [&] {
      for (const auto& exchange : exchanges) exchange->tick();
      return station_.state() == QProcess::NotRunning;
    };
    QTRY_VERIFY_WITH_TIMEOUT(tickUntilEnd(), 30000);
    QCOMPARE(status(), 0);

    QStringList fired;
    for (const QString& line : splitLines(fromWindows1252(place_->files.read(log)))) {
      const QStringList fields = line.split(" ; ");
      if (fields.size() == 21)
        fired << schussKey(fields[4].toShort(), fields[8].toShort(), fields[17], fields[15]);
    }
    QStringList received = lines[0].rows + lines[1].rows;
    received.sort();
    fired.sort();
    QCOMPARE(received.size(), 12);
    QCOMPARE(received, fired);
    QCOMPARE(lines[0].sums.size(), 2);
    QVERIFY(lines[1].sums.first().startsWith("Linie 2 Serie "));
  }
};

QTEST_GUILESS_MAIN(TestStationProgram)
#include "test_station_program.moc"
