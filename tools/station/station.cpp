#include "tools/station/station.h"

#include "link/station_commands.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/numbers.h"
#include "platform/runtime/textcodec.h"

namespace qk {

namespace {

const QString separator = " ; ";
constexpr int recordFields = 21;
constexpr int maskLength = 30;

/// The weapon's short name from the def file's name ("0_hd_LG_…"), else from the rule number.
QString weaponOf(const Definition& definition) {
  for (const QString weapon : {"LG", "LP", "KK", "ZS"})
    if (definition.dateiName.startsWith("0_hd_" + weapon + "_")) return weapon;
  return definition.regelNummer.startsWith("2.") ? "LP" : "LG";
}

/// A def file and a record write the way of scoring with swapped digits.
int scoringOf(const QString& wertung) {
  if (wertung == "1") return 10;
  if (wertung == "10") return 1;
  return wertung == "11" ? 11 : 0;
}

bool countsTenths(const Definition& definition) {
  return definition.wertung == "1" || definition.wertung == "11";
}

}  // namespace

std::vector<RecordedLine> readShotLog(const QByteArray& bytes) {
  std::vector<RecordedLine> recorded;
  for (const QString& line : splitLines(fromWindows1252(bytes))) {
    const QStringList fields = line.split(separator);
    const QString sumStart = "22;Linie ";
    int number = 0;
    if (fields.size() >= recordFields)
      number = static_cast<int>(parsePrefix(fields[4]));
    else if (line.startsWith(sumStart))
      number = static_cast<int>(parsePrefix(QStringView(line).sliced(sumStart.size())));
    if (number > 0) recorded.push_back({number, line});
  }
  return recorded;
}

Station::Station(StationSetup setup, Files& files, const Clock& clock,
                 std::function<void(const QString&)> log, std::function<void(const QString&)> note)
    : setup_(std::move(setup)),
      files_(files),
      clock_(clock),
      log_(std::move(log)),
      note_(std::move(note)),
      random_(setup_.seed * 1000003 + static_cast<quint64>(setup_.line)),
      faultRandom_(setup_.seed * 7919 + static_cast<quint64>(setup_.line)) {
  const QString number = QString::number(setup_.line);
  commandData_ = setup_.folder + "HServ" + number + ".nrt";
  commandFlag_ = setup_.folder + "HServ" + number + ".ctl";
  reportData_ = setup_.folder + "HSlav" + number + ".nrt";
  reportFlag_ = setup_.folder + "HSlav" + number + ".ctl";
}

void Station::look() {
  if (off_) return;
  takeCommand();
  if (reports_.empty()) prepareNext();
  if (files_.exists(reportFlag_)) return;  // the office hasn't read the last report yet
  if (!reports_.empty()) return sendNext();
  const bool allFired =
      setup_.replay ? replayed_ == setup_.replay->size() : registeredOnce_ && blocks_.empty();
  finished_ = off_ || allFired;
}

// --- commands ---

void Station::takeCommand() {
  if (!files_.exists(commandFlag_)) return;
  if (!takeAt_.isValid()) {
    const bool slow = happens(Fault::Slow);
    takeAt_ = clock_.now().addMSecs(slow ? 500 + static_cast<int>(faultRandom_.next() * 11500) : 0);
  }
  if (clock_.now() < takeAt_) return;

  const std::optional<QString> command = pendingCommand();
  if (!command) return;  // the office is just writing over it
  files_.remove(commandFlag_);
  takeAt_ = {};
  const bool takenEarly = *command == takenEarly_ && clock_.now() < takenEarlyUntil_;
  takenEarly_.clear();
  if (!takenEarly) obey(*command);

  // The office doesn't always wait: what it wrote between our reading and our deleting would be lost.
  const std::optional<QString> later = pendingCommand();
  if (!later || *later == *command) return;
  takenEarly_ = *later;
  takenEarlyUntil_ = clock_.now().addSecs(1);
  obey(*later);
}

/// The command that stands in the data file; nothing while the file isn't complete.
std::optional<QString> Station::pendingCommand() {
  if (!files_.exists(commandData_)) return QString();
  const QByteArray data = files_.read(commandData_);
  const qsizetype end = data.indexOf("\r\n");
  if (end < 0) return std::nullopt;
  return fromWindows1252(data.first(end)).remove('"');
}

void Station::obey(const QString& command) {
  const StationCommand* row = readCommand(command);
  if (!row) return say("unbekannter Befehl: " + command);
  const QString argument = command.sliced(row->code.size());
  switch (row->act) {
    case StationAct::Nothing:
      return;
    case StationAct::EnterPriceMode:
      priceMode_ = true;
      return say("Preismodus ein");
    case StationAct::LeavePriceMode:
      priceMode_ = false;
      return say("Preismodus aus");
    case StationAct::LeaveToDesktop:
      priceMode_ = false;
      return say("zurück zu Windows");
    case StationAct::Register:
      return registerShooter(argument);
    case StationAct::AddShots:
      return addShots(argument);
    case StationAct::Pause:
      running_ = false;
      return;
    case StationAct::GoOn:
      running_ = true;
      return;
    case StationAct::SignOff:
      return signOff();
    case StationAct::ShowAdvert:
      advert_ = argument.trimmed();
      return;
    case StationAct::HideAdvert:
      advert_.clear();
      return;
    case StationAct::ShutDown:
      off_ = finished_ = true;
      return say("heruntergefahren");
  }
}

void Station::registerShooter(const QString& text) {
  const QStringList parts = text.split(separator);
  if (parts.size() < 5) return say("unvollständige Anmeldung: " + text);
  dropUnfired();
  hits_.clear();
  startnummer_ = parts.first();
  shooter_ = parts[1];
  registeredAt_ = clock_.now();
  shotsOfRegistration_ = 0;
  running_ = true;
  finished_ = false;

  const QString mask = parts.last();
  const std::vector<StationDiscipline> disciplines = readStationDisciplines(files_, setup_.folder);
  const int rows =
      std::min({static_cast<int>(disciplines.size()), static_cast<int>(mask.size()), maskLength});
  for (int row = 1; row <= rows; ++row)
    if (mask[row - 1] == '1') addBlock(row, disciplines[static_cast<size_t>(row - 1)], 0);
  registeredOnce_ = true;
  say("Schütze " + startnummer_ + " angemeldet, Disziplinen: " + QString::number(blocks_.size()));
}

/// `shots` 0 takes the count of the def file.
void Station::addBlock(int row, const StationDiscipline& discipline, int shots) {
  const QString path = setup_.folder + discipline.definition;
  if (discipline.definition.isEmpty() || !files_.readable(path))
    return say("def-Datei fehlt: " + discipline.definition);
  Definition definition = readDefinition(files_, path);
  definition.dateiName = discipline.definition;  // the name it really has
  if (shots == 0) shots = static_cast<int>(parsePrefix(definition.schusszahl));
  if (shots > 0) blocks_.push_back({row, discipline.title, std::move(definition), shots});
}

void Station::addShots(const QString& text) {
  const QStringList parts = text.split(';');
  if (parts.size() != 2 || startnummer_.isEmpty()) return;
  const int row = static_cast<int>(parsePrefix(parts[0]));
  const int count = static_cast<int>(parsePrefix(parts[1]));
  for (auto block = blocks_.begin(); block != blocks_.end(); ++block) {
    if (block->row != row) continue;
    block->remaining += count;
    if (block->remaining <= 0) blocks_.erase(block);
    return;
  }
  const std::vector<StationDiscipline> disciplines = readStationDisciplines(files_, setup_.folder);
  if (count <= 0 || row < 1 || row > static_cast<int>(disciplines.size())) return;
  finished_ = false;
  addBlock(row, disciplines[static_cast<size_t>(row - 1)], count);
}

void Station::signOff() {
  if (!startnummer_.isEmpty()) say("Schütze " + startnummer_ + " abgemeldet");
  dropUnfired();
  startnummer_.clear();
  shooter_.clear();
  running_ = false;
}

/// What stands in the log was fired; everything else never happened.
void Station::dropUnfired() {
  blocks_.clear();
  while (!reports_.empty() && !reports_.back().logged) reports_.pop_back();
}

// --- reports ---

void Station::prepareNext() {
  if (!priceMode_ || clock_.now() < nextShotAt_) return;
  if (setup_.replay) {
    if (replayed_ == setup_.replay->size()) return;
    const QString& line = (*setup_.replay)[replayed_++];
    return prepareReport(line, line.count(separator) >= recordFields - 1);
  }
  const bool atLimit = setup_.shotLimit > 0 && shotsOfRegistration_ >= setup_.shotLimit;
  if (atLimit) blocks_.clear();
  if (running_ && !blocks_.empty()) prepareShot();
}

void Station::prepareShot() {
  Block& block = blocks_.front();
  const TargetFace face = targetFace(weaponOf(block.definition));
  const int number = ++hits_[block.row];
  const QDateTime time = uniqueTime(number);

  ShotRecord shot;
  shot.code = nextCode();
  shot.discipline = block.title;
  shot.className = "offene Klasse";
  shot.line = setup_.line;
  shot.shooter = shooter_;
  shot.mode = "M";
  shot.scoring = scoringOf(block.definition.wertung);
  shot.number = number;
  shot.hit = makeHit(face, spreadOfShooter(startnummer_, setup_.seed), random_);
  shot.time = time.toString("HH:mm:ss");
  shot.relativeTime = QTime(0, 0).addMSecs(static_cast<int>(registeredAt_.msecsTo(time))).toString("mm:ss");
  shot.date = time.toString("dd.MM.yyyy");
  shot.disciplineKey = block.definition.regelNummer;
  shot.classKey = "frei";
  shot.startnummer = startnummer_;
  prepareReport(recordLine(shot), true);

  ++shotsOfRegistration_;
  --block.remaining;
  ++block.seriesShots;
  block.seriesTenths += countsTenths(block.definition) ? shot.hit.ringTenths : shot.hit.ringTenths / 10 * 10;
  const int seriesLength = static_cast<int>(parsePrefix(block.definition.serienLaenge));
  const bool limitReached = setup_.shotLimit > 0 && shotsOfRegistration_ >= setup_.shotLimit;
  if (block.seriesShots == seriesLength || block.remaining <= 0 || limitReached) endSeries(block);
  if (block.remaining <= 0) blocks_.pop_front();
}

void Station::endSeries(Block& block) {
  const QString sum = countsTenths(block.definition) ? formatNumber(block.seriesTenths / 10.0, 1)
                                                     : QString::number(block.seriesTenths / 10);
  const QString line = "22;Linie " + QString::number(setup_.line) + " Serie " + sum;
  reports_.push_back({.data = quotedLine(line), .logLine = line});
  block.seriesShots = 0;
  block.seriesTenths = 0;
}

/// Queues a line, with the faults that go with it.
void Station::prepareReport(const QString& record, bool isShot) {
  if (isShot && happens(Fault::Garbage)) {
    QByteArray bytes;
    for (int i = 0; i < 200; ++i)
      bytes += static_cast<char>(128 + static_cast<int>(faultRandom_.next() * 128));
    reports_.push_back({.data = bytes + "\r\n\r\n\"22\"\r\n"});
  }
  if (isShot && happens(Fault::FlagWithoutData)) reports_.push_back({.withData = false});
  if (isShot && happens(Fault::Torn)) {
    const qsizetype whole = record.lastIndexOf(separator);
    const auto length = static_cast<qsizetype>(faultRandom_.next() * static_cast<double>(whole));
    reports_.push_back({.data = '"' + toWindows1252(record.first(length))});
  }
  reports_.push_back({.data = quotedLine(record), .logLine = record, .isShot = isShot});
  if (isShot && happens(Fault::Duplicate)) reports_.push_back({.data = quotedLine(record)});
}

void Station::sendNext() {
  Report& report = reports_.front();
  if (!report.logged && !report.logLine.isEmpty()) {
    if (log_) log_(report.logLine);
    report.logged = true;
    if (report.isShot) {
      ++shotsFired_;
      nextShotAt_ = clock_.now().addMSecs(setup_.paceMs);
    }
  }
  if (report.withData)
    files_.write(reportData_, report.data);
  else if (files_.exists(reportData_))
    files_.remove(reportData_);
  files_.write(reportFlag_, "\"\"\r\n");
  reports_.pop_front();
}

bool Station::happens(Fault fault) {
  return setup_.faults.contains(fault) && faultRandom_.next() * 100 < setup_.faultPercent;
}

QString Station::nextCode() {
  return happens(Fault::Code78) ? "78" : "21";
}

/// Now, or the next full second that hasn't had this hit number yet: date, time and hit number tell shots
/// apart.
QDateTime Station::uniqueTime(int hitNumber) {
  QDateTime time = clock_.now();
  const auto key = [&] { return time.toString("yyyyMMddHHmmss") + '/' + QString::number(hitNumber % 1000); };
  while (usedTimes_.contains(key())) time = time.addSecs(1);
  usedTimes_.insert(key());
  return time;
}

void Station::say(const QString& text) const {
  if (note_) note_("Linie " + QString::number(setup_.line) + ": " + text);
}

}  // namespace qk
