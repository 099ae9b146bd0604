// The operator at one line: works the window and notes in the journal what becomes of the open shots. Knows
// what is ticked because it ticked it; nothing is read back from the program's own results.
#pragma once

#include <QSet>

#include "tools/rundgang/journal.h"
#include "tools/rundgang/range.h"
#include "tools/rundgang/walk.h"

namespace qk {

class Desk {
 public:
  Desk(Range& range, DrivenProgram& program, Journal& journal, int line);

  int line() const { return line_; }
  void show() { walk_.selectLine(line_); }
  int openShots() { return walk_.openShots(line_); }
  void waitForOpenShots(int count) { walk_.waitForOpenShots(line_, count); }
  void waitForLastHit(int hit) { walk_.waitForLastHit(line_, hit); }
  /// A picture of the window, named after line and state.
  void picture(const QString& state);

  void chooseShooter(const QString& startNumber);
  /// The shooter that the program brought back with the open shots.
  void expectShooter(const QString& startNumber);
  /// With open shots: they go to the new shooter.
  void changeShooter(const QString& startNumber);

  void tickStationDisciplines(const QStringList& names);
  void chooseGroup(const QString& name) { walk_.chooseGroup(line_, name); }
  void enterExtraShots(const QString& name, int count) { walk_.enterExtraShots(line_, name, count); }
  void sendExtraShots();
  /// Price mode, then shooter and disciplines, each when the station has taken what went before.
  void startShooting();

  void chooseCombination(const QString& name, const QStringList& members);
  /// Exactly these.
  void chooseDisciplines(const QStringList& names);
  void tickShots(const QList<int>& places);
  void tickAll();
  void untickAll();
  /// Double click on the shot at `place`: its series of `count` shots from `first` on, for `disciplines`.
  void chooseSeries(int place, int first, int count, const QStringList& disciplines);
  void transfer();

  void saveOnly();
  void saveAndBook();
  void discardTicked();
  void discardAll();
  /// Signs off, leaves price mode, marks the line as free.
  void leave();

 private:
  class Noted;
  void finishTransfer();
  QList<int> tickedPlaces() const;

  Range& range_;
  DrivenProgram& program_;
  Walk walk_;
  Journal& journal_;
  int line_;
  QString shooter_;
  QSet<int> ticked_;
  QStringList disciplines_;
};

}  // namespace qk
