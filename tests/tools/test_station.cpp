#include <QTemporaryDir>
#include <QTest>

#include "link/station_commands.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/textcodec.h"
#include "tests/support/compare_lines.h"
#include "tools/station/station.h"

using namespace qk;

namespace {

class HandClock : public Clock {
 public:
  QDateTime time{QDate(2026, 11, 20), QTime(10, 41, 7)};
  QDateTime now() const override { return time; }
};

/// Fails the next writes of a file whose name ends so.
class StubbornFiles : public Files {
 public:
  QString refused;
  void write(const QString& path, const QByteArray& content) override {
    if (!refused.isEmpty() && path.endsWith(refused)) throw Error(70);
    Files::write(path, content);
  }
};

const QString registration = "75107 ; Müller, Änne ; 107 ; 107 ; ";

}  // namespace

class TestStation : public QObject {
  Q_OBJECT

  std::unique_ptr<QTemporaryDir> dir_;
  StubbornFiles files_;
  HandClock clock_;
  QStringList log_, notes_;
  std::unique_ptr<Station> station_;
  StationSetup setup_;

  QString path(const QString& name) const { return dir_->path() + "/" + name; }
  bool exists(const QString& name) { return files_.exists(path(name)); }
  QString reported() { return fromWindows1252(files_.read(path("HSlav3.nrt"))).remove('"').remove("\r\n"); }

  void makeStation() {
    station_ = std::make_unique<Station>(
        setup_, files_, clock_, [this](const QString& line) { log_ << line; },
        [this](const QString& note) { notes_ << note; });
  }
  void order(const QString& command) {
    files_.write(path("HServ3.nrt"), '"' + toWindows1252(command) + "\"\r\n");
    files_.write(path("HServ3.ctl"), "\"\"\r\n");
    station_->look();
  }
  void registerFor(const QString& mask) {
    order("76 'Umschalten auf Preismodus");
    order(registration + mask.leftJustified(30, '-'));
  }
  /// The office takes what is reported; what came, or nothing when the station has nothing more to say.
  QString take() {
    station_->look();
    if (!exists("HSlav3.ctl")) return {};
    const QString text = reported();
    files_.remove(path("HSlav3.ctl"));
    clock_.time = clock_.time.addMSecs(setup_.paceMs);
    return text;
  }
  QStringList takeAll() {
    QStringList all;
    for (QString text = take(); !text.isEmpty(); text = take()) all << text;
    return all;
  }
  /// What an onlooker sees of the station.
  QStringList state() {
    QStringList seen;
    if (station_->isInPriceMode()) seen << "Preismodus";
    if (!station_->startnummer().isEmpty()) seen << "Schütze " + station_->startnummer();
    for (int former = 0; former < 2; ++former) take();  // what it had ready before
    if (!take().isEmpty()) seen << "schießt";
    if (!station_->advert().isEmpty()) seen << "Werbung " + station_->advert();
    order("76");
    if (exists("HServ3.ctl")) seen << "aus";
    return seen;
  }
  static QStringList shotsOf(const QStringList& lines) { return lines.filter(" ; "); }
  static QStringList fields(const QString& record) { return record.split(" ; "); }

  void offer(const QString& title, const QString& file, const QString& shots, const QString& scoring,
             const QString& series = "10") {
    Definition definition;
    definition.bezeichnung = title;
    definition.regelNummer = file.contains("_LP_") ? "2.10" : "1.10";
    definition.schusszahl = shots;
    definition.wertung = scoring;
    definition.serienLaenge = series;
    writeDefinition(files_, path(file), definition);
    auto disciplines = files_.exists(path(EsaPreisIni)) ? readStationDisciplines(files_, path(""))
                                                        : std::vector<StationDiscipline>{};
    disciplines.push_back({title, file});
    writeStationDisciplines(files_, path(""), disciplines);
  }

 private Q_SLOTS:
  void init() {
    dir_ = std::make_unique<QTemporaryDir>();
    files_.refused.clear();
    clock_ = {};
    log_.clear();
    notes_.clear();
    setup_ = {};
    setup_.line = 3;
    setup_.folder = path("");
    offer("LG Glück", "0_hd_LG_Glueck.def", "4", "11", "2");
    offer("LP Meister", "0_hd_LP_Meister.def", "3", "10");
    offer("LG Serie", "0_hd_LG_Serie.def", "2", "1");
    makeStation();
  }

  void takesACommand() {
    order("76 'Umschalten auf Preismodus");
    QVERIFY(station_->isInPriceMode());
    QVERIFY(!exists("HServ3.ctl"));
    QVERIFY(exists("HServ3.nrt"));
    order("77 'UmschaltenAuf Fernbedienung");
    QVERIFY(!station_->isInPriceMode());
  }

  void doesWhatTheTableSays_data() {
    QTest::addColumn<QStringList>("before");
    QTest::addColumn<QString>("argument");
    QTest::addColumn<QStringList>("after");
    const QString on = "Preismodus", shooter = "Schütze 107", shoots = "schießt", advert = "Werbung a.bmp";
    const QStringList working = {on, shooter, shoots, advert};
    struct Row {
      Befehl befehl;
      QStringList before;  // what was ordered after the registration, which begins to shoot
      QString argument;
      QStringList after;
    };
    const Row rows[] = {
        {Befehl::VorPreismodus, {}, "", working},
        {Befehl::PreismodusEin, {"77"}, "", working},
        {Befehl::PreismodusAus, {}, "", {shooter, advert}},
        {Befehl::Anmelden, {"66"}, QString(registration + "1").sliced(2), working},
        {Befehl::Nachkauf, {registration + "-"}, "1;1", working},
        {Befehl::Abmelden1, {}, "", {on, shooter, advert}},
        {Befehl::Abmelden2, {}, "", {on, advert}},
        {Befehl::Abmelden3, {}, "", {on, advert}},
        {Befehl::Vorbereiten, {}, "", {on, shooter, advert}},
        {Befehl::Starten, {"52"}, "", working},
        {Befehl::Stoppen, {}, "", {on, shooter, advert}},
        {Befehl::Antwort78, {}, "", working},
        {Befehl::WerbefensterEin, {}, "b.bmp", {on, shooter, shoots, "Werbung b.bmp"}},
        {Befehl::WerbefensterAus, {}, "", {on, shooter, shoots}},
        {Befehl::Windows, {}, "", {shooter, advert}},
        {Befehl::Herunterfahren, {}, "", {on, shooter, advert, "aus"}},
    };
    for (const StationCommand& command : stationCommands()) {
      const auto row = std::find_if(std::begin(rows), std::end(rows),
                                    [&](const Row& each) { return each.befehl == command.befehl; });
      const bool known = row != std::end(rows);
      QTest::newRow(qPrintable(command.text() + ": " + command.meaning))
          << (known ? row->before : QStringList()) << command.text() + (known ? row->argument : QString())
          << (known ? row->after : QStringList("nobody has said what the station does"));
    }
  }
  void doesWhatTheTableSays() {
    QFETCH(QStringList, before);
    QFETCH(QString, argument);
    QFETCH(QStringList, after);
    registerFor("1");
    order("45 a.bmp");
    for (const QString& command : before) order(command);
    order(argument);
    COMPARE_LINES(state(), after);
    COMPARE_LINES(notes_.filter("unbekannt"), QStringList());
  }

  void saysWhatItDoesNotUnderstand() {
    order("44 'nichts");
    QCOMPARE(notes_, QStringList("Linie 3: unbekannter Befehl: 44 'nichts"));
  }

  void heardNothingMoreOnceShutDown() {
    order("99 'Rechner herunterfahren");
    order("76");
    QVERIFY(exists("HServ3.ctl"));
  }

  void firesNothingUnasked() {
    QCOMPARE(take(), QString());
    order(registration + QString(30, '1'));
    QCOMPARE(take(), QString());  // registered, but not in price mode
    order("76");
    QVERIFY(!take().isEmpty());
  }

  void firesWhatTheMaskSelects() {
    registerFor("1-1");
    const QStringList all = takeAll();
    QStringList titles;
    for (const QString& shot : shotsOf(all)) titles << fields(shot)[1] + fields(shot)[8];
    QCOMPARE(titles,
             (QStringList{"LG Glück1", "LG Glück2", "LG Glück3", "LG Glück4", "LG Serie1", "LG Serie2"}));
    QCOMPARE(station_->shotsFired(), 6);
    QVERIFY(station_->isFinished());
    QCOMPARE(log_, all);
  }

  void recordCarriesTheRegistration() {
    registerFor("-1");
    const QStringList shot = fields(take());
    QCOMPARE(shot.size(), 21);
    QCOMPARE(shot[0], "21");
    QCOMPARE(shot[4], "3");
    QCOMPARE(shot[5], "Müller, Änne");
    QCOMPARE(shot[7], "1");  // ring with teiler is 10 in the def file
    QCOMPARE(shot[15], "10:41:07");
    QCOMPARE(shot[17], "20.11.2026");
    QCOMPARE(shot[18], "2.10");
    QCOMPARE(shot[20], "107");
  }

  void ringAgreesWithRadius() {
    registerFor("11");
    for (const QString& record : shotsOf(takeAll())) {
      const QStringList shot = fields(record);
      const TargetFace face = targetFace(shot[1].left(2));
      QCOMPARE(QString(shot[9]).remove(',').toInt(), ringTenths(face, QString(shot[13]).remove(',').toInt()));
    }
  }

  void seriesEndWithTheirSum() {
    registerFor("1");
    const QStringList all = takeAll();
    QCOMPARE(all.size(), 6);
    const auto tenths = [&](int i) { return QString(fields(all[i])[9]).remove(',').toInt(); };
    const auto sumLine = [](int sum) {
      return QString("22;Linie 3 Serie %1,%2").arg(sum / 10).arg(sum % 10);
    };
    QCOMPARE(all[2], sumLine(tenths(0) + tenths(1)));
    QCOMPARE(all[5], sumLine(tenths(3) + tenths(4)));
  }

  void everySeriesIsSummed() {
    offer("LG Lang", "0_hd_LG_Lang.def", "7", "11", "2");
    registerFor("---1");
    QCOMPARE(takeAll().filter("22;").size(), 4);
  }

  void wholeRingSeriesSumsWholeRings() {
    registerFor("-1");
    const QStringList all = takeAll();
    int sum = 0;
    for (const QString& shot : shotsOf(all)) sum += fields(shot)[9].split(',')[0].toInt();
    QCOMPARE(all.last(), "22;Linie 3 Serie " + QString::number(sum));
  }

  void waitsForTheOffice() {
    registerFor("1");
    station_->look();
    const QString first = reported();
    clock_.time = clock_.time.addSecs(60);
    station_->look();
    station_->look();
    QCOMPARE(reported(), first);
    QCOMPARE(station_->shotsFired(), 1);
  }

  void keepsItsPace() {
    registerFor("1");
    take();
    clock_.time = clock_.time.addMSecs(-1);
    QCOMPARE(take(), QString());
    clock_.time = clock_.time.addMSecs(1);
    QVERIFY(!take().isEmpty());
  }

  void shotsDifferInTimeOrNumber() {
    setup_.paceMs = 0;
    makeStation();
    QSet<QString> keys;
    QStringList shots;
    for (int round = 0; round < 3; ++round) {
      registerFor("111");
      shots += shotsOf(takeAll());
    }
    for (const QString& shot : shots) keys << fields(shot)[8] + fields(shot)[17] + fields(shot)[15];
    QCOMPARE(shots.size(), 27);
    QCOMPARE(keys.size(), 27);
  }

  void sameSeedSameHits() {
    registerFor("1");
    const QStringList first = takeAll();
    makeStation();
    clock_ = {};
    registerFor("1");
    QCOMPARE(takeAll(), first);
  }

  void newRegistrationStartsAgain() {
    registerFor("1");
    take();
    registerFor("1");
    QCOMPARE(fields(take())[8], "2");  // fired before the new registration came
    QCOMPARE(fields(take())[8], "1");
  }

  void stopsAndGoesOn() {
    registerFor("1");
    take();
    order("52");
    clock_.time = clock_.time.addSecs(10);
    QCOMPARE(take(), QString());
    order("12");
    QCOMPARE(take(), QString());
    order("13");
    QVERIFY(!take().isEmpty());
  }

  void signsOff() {
    for (const QString command : {"66", "53"}) {
      registerFor("1");
      QCOMPARE(station_->startnummer(), "107");
      take();
      order(command);
      QCOMPARE(station_->startnummer(), QString());
      clock_.time = clock_.time.addSecs(10);
      while (exists("HSlav3.ctl")) take();
      QCOMPARE(take(), QString());
    }
  }

  void additionalShots() {
    registerFor("--1");
    order("803;2");
    order("802;1");
    QStringList titles;
    for (const QString& shot : shotsOf(takeAll())) titles << fields(shot)[1] + fields(shot)[8];
    QCOMPARE(titles, (QStringList{"LG Serie1", "LG Serie2", "LG Serie3", "LG Serie4", "LP Meister1"}));
    order("803;1");
    QCOMPARE(fields(take())[8], "5");
    order("8099;1");
    order("80x");
  }

  void limitPerRegistration() {
    setup_.shotLimit = 3;
    makeStation();
    registerFor("11");
    QCOMPARE(shotsOf(takeAll()).size(), 3);
    QVERIFY(station_->isFinished());
    registerFor("11");
    QCOMPARE(shotsOf(takeAll()).size(), 3);
  }

  void unreadableConfiguration() {
    files_.remove(path("0_hd_LG_Glueck.def"));
    registerFor("11");
    QCOMPARE(fields(take())[1], "LP Meister");
  }

  void commandWrittenOverAnother() {
    // Between reading and deleting the office has written the next command, without waiting.
    class Racing : public StubbornFiles {
     public:
      QString data;
      bool raced = false;
      void remove(const QString& path) override {
        Files::remove(path);
        if (raced || !path.endsWith("HServ3.ctl")) return;
        raced = true;
        Files::write(data, "\"76 'Umschalten auf Preismodus\"\r\n");
      }
    } racing;
    racing.data = path("HServ3.nrt");
    Station station(setup_, racing, clock_);
    files_.write(path("HServ3.nrt"), "\"H014\"\r\n");
    files_.write(path("HServ3.ctl"), "\"\"\r\n");
    station.look();
    QVERIFY(station.isInPriceMode());
  }

  void halfWrittenCommandWaits() {
    files_.write(path("HServ3.nrt"), "\"76 'Um");
    files_.write(path("HServ3.ctl"), "\"\"\r\n");
    station_->look();
    QVERIFY(!station_->isInPriceMode());
    QVERIFY(exists("HServ3.ctl"));
    files_.write(path("HServ3.nrt"), "\"76 'Umschalten auf Preismodus\"\r\n");
    station_->look();
    QVERIFY(station_->isInPriceMode());
  }

  void failedFlagIsWrittenLater() {
    registerFor("1");
    files_.remove(path("HSlav3.ctl"));
    clock_.time = clock_.time.addSecs(5);
    files_.refused = "HSlav3.ctl";
    for (int i = 0; i < 3; ++i) QVERIFY_THROWS_EXCEPTION(Error, station_->look());
    files_.refused.clear();
    QCOMPARE(fields(take())[8], "2");
    QCOMPARE(log_.size(), 2);  // logged once
  }

  void logComesBeforeThePair() {
    makeStation();
    bool logged = false;
    station_ = std::make_unique<Station>(setup_, files_, clock_, [&](const QString&) {
      logged = true;
      QVERIFY(!exists("HSlav3.nrt"));
    });
    registerFor("1");
    QVERIFY(logged);
    QVERIFY(exists("HSlav3.nrt"));
  }

  void replaysALog() {
    registerFor("1-1");
    const QStringList fired = takeAll();
    const std::vector<RecordedLine> recorded = readShotLog(toWindows1252("Unsinn\r\n" + fired.join("\r\n")));
    QCOMPARE(recorded.size(), static_cast<size_t>(fired.size()));
    setup_.replay.emplace();
    for (const RecordedLine& line : recorded) {
      QCOMPARE(line.line, 3);
      setup_.replay->push_back(line.text);
    }
    makeStation();
    QCOMPARE(take(), QString());
    order("76");
    QCOMPARE(takeAll(), fired);
    QVERIFY(station_->isFinished());
  }

  void faultSlow() {
    setup_.faults = {Fault::Slow};
    setup_.faultPercent = 100;
    makeStation();
    order("76");
    QVERIFY(!station_->isInPriceMode());
    clock_.time = clock_.time.addSecs(13);
    station_->look();
    QVERIFY(station_->isInPriceMode());
  }

  void faultDuplicate() {
    useFault(Fault::Duplicate);
    const QString first = take();
    QCOMPARE(take(), first);
    QCOMPARE(log_, QStringList{first});
  }

  void faultCode78() {
    useFault(Fault::Code78);
    QCOMPARE(fields(take())[0], "78");
  }

  void faultTorn() {
    useFault(Fault::Torn);
    const QString torn = take();
    QVERIFY(log_.isEmpty());
    QVERIFY(torn.count(" ; ") < 20);
    const QString whole = take();
    QVERIFY(whole.startsWith(torn));
    QCOMPARE(fields(whole).size(), 21);
  }

  void faultGarbage() {
    useFault(Fault::Garbage);
    QVERIFY(take().count(" ; ") < 20);
    QCOMPARE(fields(take()).size(), 21);
    QCOMPARE(log_.size(), 1);
  }

  void faultFlagWithoutData() {
    files_.write(path("HSlav3.nrt"), "old");
    useFault(Fault::FlagWithoutData);
    QVERIFY(exists("HSlav3.ctl"));
    QVERIFY(!exists("HSlav3.nrt"));
    files_.remove(path("HSlav3.ctl"));
    QCOMPARE(fields(take()).size(), 21);
  }

  void faultsLoseNoShot() {
    setup_.faults = {Fault::Duplicate, Fault::Code78, Fault::Torn, Fault::Garbage};
    setup_.faultPercent = 40;
    makeStation();
    registerFor("111");
    QStringList whole;
    clock_.time = clock_.time.addSecs(1);
    for (QString text = take(); !text.isEmpty() || !station_->isFinished(); text = take())
      if (fields(text).size() == 21 && !whole.contains(text)) whole << text;
    QCOMPARE(whole, shotsOf(log_));
    QCOMPARE(station_->shotsFired(), 9);
  }

 private:
  void useFault(Fault fault) {
    setup_.faults = {fault};
    setup_.faultPercent = 100;
    makeStation();
    registerFor("1");
  }
};

QTEST_APPLESS_MAIN(TestStation)
#include "test_station.moc"
