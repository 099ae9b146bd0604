// What a workstation shows while a long statement is done in pieces.
//
// As with waiting_sign.h no event loop runs meanwhile: the sign may paint, and nothing else.
#pragma once

#include <QElapsedTimer>
#include <functional>

namespace qk::dao {

class WorkSign {
 public:
  /// `show` is called a few times a second with the part that is done (0 to 1), once a statement takes longer
  /// than a moment; `hide` when it has ended, however. Both in the thread that makes the object. One object
  /// at a time.
  WorkSign(std::function<void(double done)> show, std::function<void()> hide);
  ~WorkSign();
  WorkSign(const WorkSign&) = delete;
  WorkSign& operator=(const WorkSign&) = delete;

 private:
  friend class Work;
  std::function<void(double done)> show_;
  std::function<void()> hide_;
};

/// A long statement; from its making to its end.
class Work {
 public:
  Work() { sinceShown_.start(); }
  ~Work();
  Work(const Work&) = delete;
  Work& operator=(const Work&) = delete;

  void done(double part);

 private:
  QElapsedTimer sinceShown_;
  bool shown_ = false;
};

}  // namespace qk::dao
