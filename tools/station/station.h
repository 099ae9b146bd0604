// One simulated station: the other side of a firing line's exchange folder.
//
// It is a state machine fed by looks at the folder: each look takes over a waiting command and, when a pair
// is free and the pace allows, reports the next thing. It keeps no timer of its own and never waits.
//
//   off --76--> price mode --75--> shooting --(all fired)--> ready --75--> shooting ...
//   52, 12 pause the shooting, 13 goes on with it; 66 or 53 sign the shooter off; 77 or 50 leave price mode;
//   80 adds shots to a discipline; 99 shuts down.
//
// What each code means stands in link/station_commands.h, by which the office sends.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QSet>
#include <QString>
#include <deque>
#include <functional>
#include <map>
#include <optional>
#include <vector>

#include "masterdata/making/seeded_random.h"
#include "targetconfig/station_files.h"
#include "tools/station/shot_generator.h"

namespace qk {

class Files;

/// Misbehaviour that a station can be made to show now and then.
enum class Fault {
  Slow,             ///< takes commands over late, up to 12 s
  Duplicate,        ///< reports the same record twice
  Code78,           ///< a record of code 78
  Torn,             ///< a record cut off, followed by the whole one
  FlagWithoutData,  ///< a flag without its data file
  Garbage           ///< bytes that mean nothing
};

/// A line of a log of shots, for a replay.
struct RecordedLine {
  int line;
  QString text;
};
/// Reads a log: records and sum lines, each with the line it came from. Other lines are skipped.
std::vector<RecordedLine> readShotLog(const QByteArray& bytes);

struct StationSetup {
  int line = 1;
  QString folder;     ///< with its final separator
  int paceMs = 1000;  ///< between two shots; 0 is as fast as the office takes them
  quint64 seed = 1;
  int shotLimit = 0;  ///< at most so many shots a registration; 0 is no limit
  QSet<Fault> faults;
  int faultPercent = 20;  ///< how often each chosen fault comes, of 100 shots or commands
  std::optional<std::vector<QString>> replay = {};  ///< fired instead of own shots, in price mode
};

class Station {
 public:
  /// `log` gets each record and sum line before its pair is written; `note` what a bystander should know.
  /// Either may be empty. Files and Clock outlive the station.
  Station(StationSetup setup, Files& files, const Clock& clock, std::function<void(const QString&)> log = {},
          std::function<void(const QString&)> note = {});

  /// One look at the folder. Throws what the file system reports and then stands as before: look again later.
  void look();

  /// Everything that was ordered is fired and taken by the office, or the station was shut down.
  bool isFinished() const { return finished_; }
  bool isInPriceMode() const { return priceMode_; }
  const QString& startnummer() const { return startnummer_; }  ///< empty without a shooter
  const QString& advert() const { return advert_; }            ///< empty while none is shown
  int shotsFired() const { return shotsFired_; }  ///< since the start, repeated records not counted

 private:
  /// What one pair of files is to carry.
  struct Report {
    QByteArray data = {};
    QString logLine = {};  ///< empty for what isn't logged
    bool withData = true;
    bool isShot = false;
    bool logged = false;
  };
  /// A discipline being shot.
  struct Block {
    int row;
    QString title;
    Definition definition;
    int remaining;
    int seriesShots = 0;
    int seriesTenths = 0;
  };

  void takeCommand();
  std::optional<QString> pendingCommand();
  void obey(const QString& command);
  void registerShooter(const QString& text);
  void addShots(const QString& text);
  void signOff();
  void addBlock(int row, const StationDiscipline& discipline, int shots);
  void dropUnfired();

  void prepareNext();
  void prepareShot();
  void prepareReport(const QString& record, bool isShot);
  void endSeries(Block& block);
  void sendNext();
  bool happens(Fault fault);
  QString nextCode();
  QDateTime uniqueTime(int hitNumber);
  void say(const QString& text) const;

  StationSetup setup_;
  Files& files_;
  const Clock& clock_;
  std::function<void(const QString&)> log_;
  std::function<void(const QString&)> note_;
  SeededRandom random_;
  SeededRandom faultRandom_;
  QString commandData_, commandFlag_, reportData_, reportFlag_;

  bool priceMode_ = false;
  bool running_ = false;
  bool off_ = false;
  bool registeredOnce_ = false;  ///< since the start
  bool finished_ = false;
  QString startnummer_, shooter_, advert_;
  QString takenEarly_;  ///< a command obeyed before its flag was seen, up to takenEarlyUntil_
  QDateTime registeredAt_, takeAt_, takenEarlyUntil_, nextShotAt_;
  std::deque<Block> blocks_;
  std::map<int, int> hits_;  ///< hit numbers so far, by discipline row
  std::deque<Report> reports_;
  QSet<QString> usedTimes_;
  size_t replayed_ = 0;
  int shotsFired_ = 0;
  int shotsOfRegistration_ = 0;
};

}  // namespace qk
