// What was last sent to one line by hand or otherwise, and whether its station has taken it: the pair of
// files HServ<n>.nrt (the command) and HServ<n>.ctl (the flag, which the station deletes).
#pragma once

#include <QDateTime>
#include <QString>

namespace qk {

class Clock;
class Files;

enum class OutputState {
  Nothing,      ///< nothing was ever sent
  Waiting,      ///< the flag is there
  Taken,        ///< the station has deleted it
  NotSent,      ///< sending failed
  Unreachable,  ///< the folder is gone, so that nobody knows
};

class LineOutput {
 public:
  /// `folder` with its final separator. Takes over what stands there.
  LineOutput(Files& files, const Clock& clock, const QString& folder, int nLinie);

  int nLinie() const { return nLinie_; }
  OutputState state() const { return state_; }
  const QString& command() const { return command_; }
  /// When it was sent, as far as that happened before these eyes.
  const QDateTime& sent() const { return sent_; }

  /// Command, then flag; what waits is overwritten. Throws what the file system reports.
  void send(const QString& command);
  /// Looks whether the flag is there: one look at the folder while nothing changes.
  void look();

 private:
  void takeOver();
  QString readCommand();

  Files& files_;
  const Clock& clock_;
  QString folder_, dataFile_, flagFile_;
  int nLinie_;
  OutputState state_ = OutputState::Unreachable;
  QString command_;
  QDateTime sent_;
};

}  // namespace qk
