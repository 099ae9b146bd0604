#include "link/exchange.h"

#include <algorithm>
#include <array>

#include "app/ground/settings_keys.h"
#include "app/ground/temp_module.h"
#include "link/commands.h"
#include "link/station_commands.h"
#include "platform/dialog/dialogs.h"
#include "platform/runtime/clock.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/textcodec.h"
#include "platform/runtime/unasked.h"

namespace qk {

namespace {

constexpr int waitPasses = 20;
constexpr int waitMilliseconds = 500;

const char* const kWhatStays =
    "Die Dateien bleiben liegen: Nach dem Neustart liest F5 an dieser Linie sie wieder ein. Wiederholt sich "
    "der "
    "Fehler, räumt \"Intarso - Offene Linienbefehle löschen\" sie weg. Das fragt nicht und verwirft auch "
    "Meldungen aller Linien, die noch niemand gelesen hat.";

/// Whoever mutilates a record may make it long.
QString shownRecord(const QString& record) {
  constexpr qsizetype enough = 300;
  return record.size() > enough ? record.left(enough) + "…" : record;
}

QString lossOfRecord(int nLinie, const QString& record, ErrorAnswer answer) {
  const QString what = QString("Linie %1 meldet einen Schuss, der sich nicht ganz lesen lässt:\r\n%2\r\n\r\n")
                           .arg(nLinie)
                           .arg(shownRecord(record.trimmed()));
  return what + (answer == ErrorAnswer::Abort
                     ? "Wenn Sie abbrechen, ist er verloren: Die Station meldet ihn kein zweites Mal.\r\n\r\n"
                       "Trotzdem abbrechen?"
                     : "Wenn Sie ignorieren, wird er ohne das übernommen, was sich nicht lesen ließ.\r\n\r\n"
                       "Trotzdem ignorieren?");
}

}  // namespace

LineExchange::LineExchange(const Workplace& workplace, ShotReceiver& receiver)
    : workplace_(workplace), receiver_(receiver), life_(std::make_shared<const char>()) {
  buildPaths();
}

LineExchange::~LineExchange() = default;

void LineExchange::setLinie(int nLinie) {
  nLinie_ = nLinie;
  buildPaths();
}

void LineExchange::setNetzverzeichnis(const QString& folder) {
  folder_ = withTrailingSeparator(folder);
  buildPaths();
}

void LineExchange::setDatenverzeichnis(const QString& folder) {
  dataFolder_ = withTrailingSeparator(folder);
}

// The idle poll asks for one path a second and line; it shouldn't build it each time.
void LineExchange::buildPaths() {
  const QString number = QString::number(nLinie_);
  outData_ = folder_ + "HServ" + number + ".nrt";
  outFlag_ = folder_ + "HServ" + number + ".ctl";
  inData_ = folder_ + "HSlav" + number + ".nrt";
  inFlag_ = folder_ + "HSlav" + number + ".ctl";
}

// --- office to station ---

void LineExchange::Output_2_ESA(const QString& sCommand, bool bWarten, const std::function<bool()>& wanted) {
  if (nLinie_ == 0 || sCommand.trimmed().isEmpty()) return;
  const Life life = life_;
  try {
    send(sCommand, bWarten, wanted, life);
  } catch (const Error&) {
    if (!life.expired()) showSendState(SendState::Hidden);
    throw Error(errors::kTypeMismatch);  // callers know a failed send by this number alone
  }
}

// The command is taken by value: what the caller holds may be gone after the wait.
void LineExchange::send(QString sCommand, bool bWarten, const std::function<bool()>& wanted,
                        const Life& life) {
  const QString dataFile = outData_;
  const QString flag = outFlag_;
  if (bWarten && !stationIsFree(flag, life)) return;
  if (wanted && !wanted()) return showSendState(SendState::Hidden);
  workplace_.files.write(dataFile, quotedLine(sCommand));
  logOutgoing(dataFile, sCommand);
  workplace_.files.write(flag, quotedLine({}));
  showSendState(SendState::Sent);
  showSendState(SendState::Hidden);
}

/// Waits for the station to take over the pending command. False when the operator drops the new one, or when
/// this line died meanwhile.
bool LineExchange::stationIsFree(const QString& flag, const Life& life) {
  Waits& waits = workplace_.waits;
  const auto pending = [&] { return DateiVorhanden(workplace_.files, flag); };
  if (!pending()) return true;

  showSendState(SendState::Waiting);
  for (int pass = 0; pass < waitPasses && pending(); ++pass) {
    waits.runMessageLoop();
    waits.sleep(waitMilliseconds);
    if (life.expired()) return false;
  }
  if (!pending()) return true;

  const Unasked unasked("Linie " + QString::number(nLinie_));  // ten seconds after what called it
  const bool goOn = workplace_.dialogs.confirm("Achtung: Der zuletzt gesendete Befehl an der Linie (" +
                                                   QString::number(nLinie_) +
                                                   ")\r\nwurde noch nicht von ESA-Intarso übernommen!\r\n\r\n"
                                                   "Wollen Sie fortfahren (und die Abarbeitung des letzten "
                                                   "Befehl abwarten)?",
                                               BoxIcon::Exclamation);
  if (life.expired()) return false;
  if (goOn) return true;
  showSendState(SendState::Hidden);
  waits.runMessageLoop();
  return false;
}

void LineExchange::logOutgoing(const QString& dataFile, const QString& sCommand) {
  if (!liesFlag(workplace_.settings, keys::SendeProtokollAktiv)) return;
  const QString line = dateText(workplace_.clock.now()) + ";" + dataFile + ";" + sCommand + "\r\n";
  workplace_.files.append(dataFolder_ + "OutputIntarsoProtokoll.txt", toWindows1252(line));
}

void LineExchange::showSendState(SendState state) {
  if (onSendState) onSendState(state);
}

// --- station to office ---

void LineExchange::tick() {
  if (busy_) return;
  if (onTick) onTick(workplace_.clock.now());
  if (!workplace_.files.exists(inFlag_)) return;
  busy_ = true;
  const Life life = life_;
  const QString place = "Linie " + QString::number(nLinie_);
  const QString flag = inFlag_;
  const Unasked unasked(place);
  try {
    receive(life);
  } catch (const Error& error) {
    // Ends the program; the line stays busy and the flag stays, so nothing is lost.
    throw Error(errors::kTypeMismatch, errorDescription(errors::kTypeMismatch),
                place + ", " + flag + ":\n" + QString::number(error.number()) + " - " + error.description() +
                    "\n\n" + kWhatStays);
  }
  if (!life.expired()) busy_ = false;
}

bool LineExchange::hatFlaggeOhneDaten() const {
  return workplace_.files.exists(inFlag_) && !workplace_.files.exists(inData_);
}

void LineExchange::receive(const Life& life) {
  const QString flag = inFlag_;
  // One object for all lines of the file: the station delivers one shot a file.
  const auto schuss = std::make_shared<HaeringSchuss>();
  bool safe = true;
  for (const QString& line : splitLines(fromWindows1252(workplace_.files.read(inData_)))) {
    safe &= takeLine(line, schuss, life);
    if (life.expired()) return;
  }
  if (!safe) return;
  try {
    workplace_.files.remove(flag);
  } catch (const Error&) {
    // The file is read again at the next tick; known keys are dropped there.
  }
}

/// True when nothing of the line can get lost any more.
bool LineExchange::takeLine(const QString& line, const std::shared_ptr<HaeringSchuss>& schuss,
                            const Life& life) {
  const QString received = QString(line).remove('"');
  if (!line.trimmed().isEmpty()) logIncoming(received);

  const ErrorReport ask = reportOfALoss(
      workplace_.dialogs, importReport(workplace_.dialogs, nLinie_, received), [&](ErrorAnswer answer) {
        return life.expired() ? QString() : lossOfRecord(nLinie_, received, answer);
      });
  const ErrorReport report = [&](const Error& error) {
    const ErrorAnswer answer = ask(error);
    return life.expired() ? ErrorAnswer::Abort : answer;  // the database may have died with the line
  };
  QString input = line;
  const bool isShot = schuss->Haering_Import_Zeile(input, receiver_.wettkampf(), report);
  if (life.expired()) return false;

  if (!isShot) {
    const QString sum = SummenZeileHaering(received);
    if (!sum.isEmpty()) receiver_.summenZeile(sum);
    return true;
  }
  if (!receiver_.istNeu(schuss->Key)) return true;
  if (!receiver_.uebernehmeSchuss(schuss) || life.expired()) return false;
  if (received.trimmed().startsWith("78")) answer78(life);
  return true;
}

void LineExchange::answer78(const Life& life) {
  const auto send = [&](Befehl befehl) {
    const StationCommand& command = stationCommand(befehl);
    Output_2_ESA(command.text(), command.wait);
    return !life.expired();
  };
  const auto pause = [&] {
    workplace_.waits.sleep(BefehlsPause);
    return !life.expired();
  };
  if (send(Befehl::Antwort78) && pause() && send(Befehl::Starten) && pause()) send(Befehl::Antwort78);
}

void LineExchange::logIncoming(const QString& line) {
  if (!liesFlag(workplace_.settings, keys::ProtokollAktiv)) return;
  workplace_.files.append(dataFolder_ + "InputIntarsoProtokoll.txt", toWindows1252(line + "\r\n"));
}

void LineExchange::schreibeEmpfangsFlagge() {
  workplace_.files.write(inFlag_, "\r\n");
}

ErrorReport importReport(Dialogs& dialogs, int nLinie, const QString& record) {
  const QString where = "\nLinie " + QString::number(nLinie) + ", Datensatz: " + shownRecord(record);
  return [ask = fehlerReport(dialogs, {}), where](const Error& error) {
    return ask(Error(error.number(), error.description() + where));
  };
}

QString SummenZeileHaering(const QString& line) {
  const qsizetype end = line.indexOf(';');
  if (end < 0 || !line.startsWith("22")) return {};
  const qsizetype next = line.indexOf(';', end + 1);
  return line.mid(end + 1, next < 0 ? -1 : next - end - 1);
}

bool WennHaeringKeyNichtVorhanden(const KeyedCollection<HaeringSchuss>& colShots, const QString& sKey) {
  for (int i = 0; i < colShots.count(); ++i)
    if (colShots.at(i)->Key == sKey) return false;
  return true;
}

// --- all lines ---

namespace {

constexpr std::array kExchangeFiles = {"HServ*.nrt", "HServ*.ctl", "HSlav*.nrt", "HSlav*.ctl"};

QStringList matches(Files& files, const QString& path) {
  const qsizetype nameStart = std::max(path.lastIndexOf('/'), path.lastIndexOf('\\')) + 1;
  return files.list(path.left(nameStart), path.mid(nameStart));
}

}  // namespace

bool loescheOffeneLinienbefehle(const Workplace& workplace, const QString& folder,
                                const ErrorReport& report) {
  return reported(report, [&](Steps& step) {
    for (const QString pattern : kExchangeFiles) {
      // Looked up anew each time, as stations go on meanwhile; each name once, so that it ends.
      QStringList handled;
      const auto nextMatch = [&] {
        for (const QString& name : matches(workplace.files, folder + pattern))
          if (!handled.contains(name)) return name;
        return QString();
      };
      for (QString name = nextMatch(); !name.isEmpty(); name = nextMatch()) {
        handled += name;
        step([&] { workplace.files.remove(folder + name); });
        workplace.waits.runMessageLoop();
      }
    }
  });
}

bool istAustauschordnerLeer(Files& files, const QString& folder) {
  return folder == withTrailingSeparator(folder) && files.folderExists(folder) &&
         std::all_of(kExchangeFiles.begin(), kExchangeFiles.end(),
                     [&](const QString& pattern) { return matches(files, folder + pattern).isEmpty(); });
}

}  // namespace qk
