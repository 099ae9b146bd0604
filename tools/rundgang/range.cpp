#include "tools/rundgang/range.h"

#include <QDir>
#include <QFile>

#include "masterdata/making/competition.h"
#include "platform/dao/database.h"
#include "platform/dao/recordset.h"
#include "platform/runtime/textcodec.h"
#include "platform/settings/settings.h"

namespace qk {

namespace {
QString binary(const QString& name) {
  return QString(QK_BIN_FOLDER) + "/" + name;
}
}  // namespace

Range::Range(RangeOptions options) : options_(std::move(options)) {
  QDir().mkpath(exchangeFolder());
  if (options_.demo) makeDemo();
  furnish(options_.folder, options_.activeLines);
}

void Range::makeDemo() const {
  QProcess maker;
  maker.setProcessChannelMode(QProcess::ForwardedErrorChannel);
  maker.start(binary("qk-wettkampf"), {"demo", competition(), "--austausch", exchangeFolder()});
  if (!maker.waitForFinished() || maker.exitCode() != 0)
    throw DriverError("the demo competition can't be made");
}

void Range::furnish(const QString& folder, const QString& activeLines) const {
  for (const char* part : {"dokumente", "temp"}) QDir(folder).mkpath(part);
  Settings settings(folder + "/einstellungen");
  settings.setValue("Tarvex", "Häring", "Netzverzeichnis", exchangeFolder());
  settings.setValue("Tarvex", "Häring", "LinienAktiv", activeLines);
}

Range::~Range() {
  stopStations();
}

void Range::addGroup(const QString& name, const QStringList& disciplines) const {
  const auto store = dao::Database::open(competition());
  for (const char* table : {"Haering_Gruppen", "Haering_Gruppen_Disziplinen"})
    if (!store->hasTable(table)) store->createTable(*embeddedSchema("LeerSA.txt").table(table));
  const auto groups = store->openRecordset("Select * from Haering_Gruppen");
  groups->addNew();
  const QVariant id = groups->value("ID");
  groups->setValue("GruppenName", name);
  groups->update();
  const auto members = store->openRecordset("Select * from Haering_Gruppen_Disziplinen");
  for (const QString& discipline : disciplines) {
    members->addNew();
    members->setValue("GruppenID", id);
    members->setValue("GruppenName", name);
    members->setValue("DisziplinName", discipline);
    members->update();
  }
}

QProcessEnvironment Range::environmentOf(const QString& folder) const {
  QProcessEnvironment environment;
  environment.insert("QK_EINSTELLUNGEN", folder + "/einstellungen");
  environment.insert("QK_DOKUMENTE", folder + "/dokumente");
  environment.insert("temp", folder + "/temp");
  environment.insert("HOME", folder);  // where a file dialog begins
  return environment;
}

std::unique_ptr<DrivenProgram> Range::startProgram() const {
  return std::make_unique<DrivenProgram>(binary("qk-intarso"), QStringList{competition()}, environment());
}

std::unique_ptr<DrivenProgram> Range::startCashDesk() const {
  return std::make_unique<DrivenProgram>(binary("qk-intarso"), QStringList{"--kasse", competition()},
                                         environment());
}

QString Range::masterDataProgram() {
  return binary("qk-stammdaten");
}

std::unique_ptr<DrivenProgram> Range::startMasterData(const QString& path) const {
  return std::make_unique<DrivenProgram>(masterDataProgram(),
                                         path.isEmpty() ? QStringList{} : QStringList{path}, environment());
}

std::unique_ptr<DrivenProgram> Range::startDesk(const QString& name, const QString& activeLines) const {
  const QString folder = options_.folder + "/" + name;
  QDir().mkpath(folder);
  furnish(folder, activeLines);
  return std::make_unique<DrivenProgram>(binary("qk-intarso"), QStringList{competition()},
                                         environmentOf(folder));
}

void Range::startStations() {
  stations_.setProcessChannelMode(QProcess::ForwardedChannels);
  stations_.start(
      binary("qk-station"),
      QStringList{"--ordner", exchangeFolder(), "--linien", QString::number(options_.activeLines.size()),
                  "--tempo", QString::number(options_.pace), "--zufall", QString::number(options_.seed),
                  "--protokoll", stationLog()} +
          options_.stationArguments);
  if (!stations_.waitForStarted()) throw DriverError("the stations don't start");
}

void Range::stopStations() {
  if (stations_.state() == QProcess::NotRunning) return;
  stations_.terminate();
  if (!stations_.waitForFinished(5000)) stations_.kill();
}

QString Range::lastCommand(int line) const {
  QFile data(exchangeFolder() + QString("HServ%1.nrt").arg(line));
  return data.open(QIODevice::ReadOnly) ? fromWindows1252(data.readAll()).remove('"').trimmed() : QString();
}

void Range::waitUntilTaken(DrivenProgram& program, int line, const QStringList& commands) const {
  const QString what = "command " + commands.join(" or ");
  // The click only stands in the program's queue: as long as the command isn't written, no flag means
  // nothing.
  program.waitUntil(what, [&] { return commands.contains(lastCommand(line).left(2)); });
  // The flag is written in the same turn of the program's event loop, and this answer comes after that.
  program.modal();
  program.waitUntil(what + " taken", [&] { return !commandPending(line); });
}

bool Range::commandPending(int line) const {
  return QFile::exists(exchangeFolder() + QString("HServ%1.ctl").arg(line));
}

bool Range::reportPending(int line) const {
  return QFile::exists(exchangeFolder() + QString("HSlav%1.ctl").arg(line));
}

}  // namespace qk
