// The exchange of one firing line with its station: a pair of files per direction in a shared folder.
//
//   office -> station   HServ<n>.nrt (command), then HServ<n>.ctl (flag; the station deletes it)
//   station -> office   HSlav<n>.nrt (data),    then HSlav<n>.ctl (flag; deleted here once the data is safe)
//
// The flag always comes last: who sees it finds the data complete.
//
// Lifetime: waits and boxes run the event loop, and the line (this object and its receiver) may be rebuilt in
// there. Every routine here notices when its own object died meanwhile and then returns at once, touching
// nothing. Callers that go on after a send must check their own life the same way.
#pragma once

#include <QDateTime>
#include <QString>
#include <functional>
#include <memory>

#include "link/haeringschuss.h"
#include "platform/runtime/collection.h"
#include "platform/workplace.h"

namespace qk {

/// What a line control does with what its station reports. Implemented by the line; outlives its
/// LineExchange.
class ShotReceiver {
 public:
  virtual ~ShotReceiver() = default;

  /// The line's connection to the competition for look-ups; may be null.
  virtual dao::Database* wettkampf() = 0;
  /// True unless an open shot of the line has exactly this key.
  virtual bool istNeu(const QString& sKey) = 0;
  /// Shows the shot and adds it to the open shots, then stores it, in this order. The same object comes again
  /// with other fields when a file holds several records: what is shown and stored here must not follow it.
  /// True when the row is durable or the operator gave it up (abort or ignore). False keeps the file's flag,
  /// so that the file is read again; the shot must then not be among the open shots.
  virtual bool uebernehmeSchuss(const std::shared_ptr<HaeringSchuss>& schuss) = 0;
  /// A sum line of the station, for the list of station messages.
  virtual void summenZeile(const QString& text) = 0;
};

/// What the send label ("sende...") shows.
enum class SendState {
  Hidden,
  Waiting,  ///< visible, red: the former command is still pending
  Sent      ///< visible, green; followed by Hidden at once
};

class LineExchange {
 public:
  LineExchange(const Workplace& workplace, ShotReceiver& receiver);
  ~LineExchange();
  LineExchange(const LineExchange&) = delete;
  LineExchange& operator=(const LineExchange&) = delete;

  /// Line number from 1; 0 sends nothing.
  void setLinie(int nLinie);
  int linie() const { return nLinie_; }
  /// The exchange folder; a missing final separator is added.
  void setNetzverzeichnis(const QString& folder);
  const QString& netzverzeichnis() const { return folder_; }
  /// The data folder, where the two protocol files lie.
  void setDatenverzeichnis(const QString& folder);

  std::function<void(SendState)> onSendState;    ///< may be empty
  std::function<void(const QDateTime&)> onTick;  ///< each tick that isn't skipped; may be empty

  /// Queues one command. With `bWarten` a pending former command is waited for (20 times 500 ms), then the
  /// operator is asked; without it a pending command is overwritten. Line 0 or a blank command does nothing.
  /// Any failure leaves as Error 13, whatever it was. `wanted` is asked before it is written, behind a
  /// wait if there is one, whether it still is.
  void Output_2_ESA(const QString& sCommand, bool bWarten, const std::function<bool()>& wanted = {});

  /// The one-second look for data of the station. Skipped while another tick of this line runs.
  /// Any failure leaves as Error 13 and leaves the line busy: it is meant to end the program. The flag then
  /// stays, and everything is read again after the next start.
  void tick();

  /// Whether the station's flag stands without its data: reading would fail.
  bool hatFlaggeOhneDaten() const;

  /// Makes the next tick read a HSlav<n>.nrt whose flag never came. Throws what the file system reports.
  void schreibeEmpfangsFlagge();

 private:
  using Life = std::weak_ptr<const char>;

  void send(QString sCommand, bool bWarten, const std::function<bool()>& wanted, const Life& life);
  bool stationIsFree(const QString& flag, const Life& life);
  void receive(const Life& life);
  bool takeLine(const QString& line, const std::shared_ptr<HaeringSchuss>& schuss, const Life& life);
  void answer78(const Life& life);
  void logOutgoing(const QString& dataFile, const QString& sCommand);
  void logIncoming(const QString& line);
  void showSendState(SendState state);
  void buildPaths();

  Workplace workplace_;
  ShotReceiver& receiver_;
  int nLinie_ = 0;
  QString folder_;
  QString dataFolder_;
  QString outData_, outFlag_, inData_, inFlag_;
  bool busy_ = false;
  std::shared_ptr<const char> life_;
};

/// The report of an import: says of which line and record it speaks. `dialogs` outlives it.
ErrorReport importReport(Dialogs& dialogs, int nLinie, const QString& record);

/// The text of a station's sum line (code 22, a semicolon, the text), untrimmed; empty for any other line.
QString SummenZeileHaering(const QString& line);

/// True when no shot of the collection has exactly this `Key` now. The objects are asked, not the keys they
/// were added under: a shot that was overwritten since counts as what it is.
bool WennHaeringKeyNichtVorhanden(const KeyedCollection<HaeringSchuss>& colShots, const QString& sKey);

/// Deletes all exchange files of all lines, the message loop running between two of them. `folder` is taken
/// as it stands: without a final separator its last component is part of the file names that are looked for.
/// `report` answers a file that can't be deleted; false when the operator aborted.
bool loescheOffeneLinienbefehle(const Workplace& workplace, const QString& folder, const ErrorReport& report);

/// Whether the folder can be reached and holds no exchange file of any line. `folder` is taken as it stands,
/// as above: false without a final separator.
bool istAustauschordnerLeer(Files& files, const QString& folder);

}  // namespace qk
