#include "benchmarks/bench_line.h"

#include <QDir>
#include <QFile>
#include <QMetaObject>
#include <map>
#include <stdexcept>

#include "app/competition_opening.h"
#include "app/ground/settings_keys.h"
#include "benchmarks/long_list.h"
#include "benchmarks/made_once.h"
#include "masterdata/making/competition.h"
#include "platform/runtime/textcodec.h"

namespace qk::bench {

namespace {

/// Straight into the file: the way through the house would take its time a million times. More than a million
/// hold only what tells booked shots from open ones.
void addBookedShots(const QString& path, int rows) {
  const QString whole =
      "%numbers(%1) INSERT INTO Haering_Daten (WettbewerbBezeichnung, Liniennummer, Treffernummer, "
      "RingwertmitZehntel, X, Y, Radius, ZeitAbsolut, Datum, Wettbewerb, Startnummer, Waffe, Teiler, "
      "Teilerfaktor, \"Key\", Verbucht, Verworfen, BuchungsZeitpunkt) SELECT 'LG Auflage', 1 + i % 24, "
      "i % 1000, 9.7, i % 500, i % 400, 12.3, '10:41:07', '20.11.2026', '1.10', '107', 'LG', 12.3, 1, "
      "'alt-' || i, -1, 0, '2026-11-20 10:41:07' FROM n";
  const QString least =
      "PRAGMA synchronous = OFF; %numbers(%1) INSERT INTO Haering_Daten (Liniennummer, Verbucht, Verworfen) "
      "SELECT 1 + i % 24, -1, 0 FROM n";
  fillNatively(path, (rows > kMillion ? least : whole).arg(rows));
}

/// A place on a copy of one that is made once a run.
class CopiedPlace {
 public:
  explicit CopiedPlace(int rows)
      : copy_(QString("platz-%1").arg(rows),
              [rows](const QString& folder) {
                const BenchPlace made(InFolder{folder, rows});
              }),
        place_(OnFolder{copy_.path()}) {}
  BenchPlace& place() { return place_; }

 private:
  OwnCopy copy_;
  BenchPlace place_;
};

}  // namespace

BoxAnswer NoDialogs::show(const Box& box) {
  throw std::runtime_error(box.text.toStdString());
}

BenchPlace::BenchPlace(std::unique_ptr<QTemporaryDir> folder, const QString& path)
    : folder_(std::move(folder)),
      path_(folder_ ? folder_->path() : path),
      settings_(path_ + "/einstellungen") {
  global_.Verzeichnis = path_ + "/daten/";
  global_.SystemVerzeichnis = QString(QK_BIN_FOLDER) + "/System/";
}

BenchPlace::BenchPlace(int rows) : BenchPlace(std::make_unique<QTemporaryDir>(inMemory()), {}) {
  make(rows);
}

BenchPlace::BenchPlace(const InFolder& place) : BenchPlace(nullptr, place.folder) {
  make(place.rows);
}

BenchPlace::BenchPlace(const OnFolder& place) : BenchPlace(nullptr, place.folder) {
  settings_.setValue("Tarvex", "Häring", "Netzverzeichnis", exchangeFolder());
}

void BenchPlace::make(int rows) {
  QDir(path_).mkpath("austausch");
  QDir(path_).mkpath("daten");
  settings_.setValue("Tarvex", "Häring", "Netzverzeichnis", exchangeFolder());
  files_.write(exchangeFolder() + "esa_preis.ini", "[Setting]\r\n");
  makeDemoCompetition(competition());
  CompetitionOpening opening(workplace(), global_);
  if (!opening.setWettkampf(competition())) throw std::runtime_error("the competition doesn't open");
  opening.close();
  if (rows > 0) addBookedShots(competition(), rows);
}

BenchPlace& sharedPlace(int rows) {
  static std::map<int, CopiedPlace> places;
  return places.try_emplace(rows, rows).first->second.place();
}

QString record(int n) {
  return QString(
             "33 ; LG Auflage ; Herren I ; 1 ; 1 ; Müller, Jörg ; M ; 11 ; %1 ; 9,7 ; * ; -123,4 ; 56,7 ; "
             "135,8 ; "
             "155,3 ; %2 ; 00:12 ; 20.11.2026 ; 1.10 ; frei ; 107")
      .arg(n % 1000)
      .arg(QTime(0, 0).addSecs(n / 1000).toString("HH:mm:ss"));
}

int shotOf(const dao::Recordset& row) {
  return QTime(0, 0).secsTo(QTime::fromString(row.value("ZeitAbsolut").toString(), "HH:mm:ss")) * 1000 +
         row.value("Treffernummer").toInt();
}

void report(const QString& exchangeFolder, const QString& line) {
  for (const auto& [name, content] : {std::pair{QString("HSlav1.nrt"), toWindows1252(line + "\r\n")},
                                      std::pair{QString("HSlav1.ctl"), QByteArray("\"\"\r\n")}}) {
    QFile file(exchangeFolder + name);
    if (!file.open(QIODevice::WriteOnly)) throw std::runtime_error(file.errorString().toStdString());
    file.write(content);
  }
}

void tick(UserControl1& line) {
  QMetaObject::invokeMethod(line.findChild<QTimer*>("Timer1"), "timeout");
}

}  // namespace qk::bench
