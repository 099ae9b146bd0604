// Sees to it that the open competition has a proven copy that isn't old: every few minutes and at closing, in
// a thread of its own. What goes wrong stands in the state; nobody is asked anything.
//
// It runs in the interface's thread and needs its event loop. The settings (app/ground/copy_settings.h) are
// read anew with each look.
#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <memory>

#include "app/ground/copy_settings.h"
#include "backup/copy_making.h"
#include "platform/workplace.h"

namespace qk {

struct CopyState {
  bool enabled = false;  ///< by the settings, and a competition is open
  QString folder;
  std::chrono::minutes interval{10};

  bool running = false;
  QDateTime lastProven;  ///< moment of the last proven copy; invalid while none is known
  QString file;          ///< its path
  /// Until when it is known that the last proven copy holds all that was stored. A copy is old when this is:
  /// without any change no new one is made.
  QDateTime upToDate;
  /// Why the last attempt failed, as German sentences; empty after one that succeeded.
  QString trouble;
  /// What is open is such a copy itself: of when and of what, as a German sentence; else empty.
  QString openedCopy;

  bool operator==(const CopyState&) const = default;
};

class CopyKeeper : public QObject {
  Q_OBJECT

 public:
  explicit CopyKeeper(const Workplace& workplace, QObject* parent = nullptr);
  /// As close().
  ~CopyKeeper() override;

  /// The competition at the path is open from now on; the one before isn't any more. Looks for its copies at
  /// once; makes one when the last is older than the interval, but not in the first seconds.
  void open(const QString& competition);
  /// Gives up what is being made, and waits a moment for its end. To be called before the competition's
  /// database closes, so that that is the last connection.
  void close();

  /// Makes a copy now if anything has changed since the last one, also when one is being made already: behind
  /// that one then. isBusy() until it is there or has failed. False, and nothing is made, where no
  /// competition is open or copies are switched off.
  bool makeNow();
  /// Gives up what is being made.
  void giveUp();
  bool isBusy() const { return state_.running; }
  /// Of what is being made, 0 to 1.
  double partDone() const;

  const CopyState& state() const { return state_; }

  /// A look at whether a copy is due. Comes by itself.
  void look();

 Q_SIGNALS:
  void onState();  ///< state() has changed

 private:
  class Worker;
  struct Outcome;
  enum class Task { Survey, Copy };

  void start(Task task, std::chrono::minutes interval);
  void finished(const Outcome& outcome);
  void change(const std::function<void(CopyState&)>& change);
  bool isDue() const;

  Workplace workplace_;
  QTimer timer_;
  QString competition_;
  std::shared_ptr<Worker> worker_;
  CopyState state_;
  QDateTime attempt_;   // the last that failed
  bool again_ = false;  // makeNow() while one was being made
};

}  // namespace qk
