// Retry, ignore, abort: how a routine that reports its own failures runs its statements.
//
//   bool ok = reported(report, [&](Steps& step) {
//     step([&] { rs = db.openRecordset("Select * from Orte"); });
//     step([&] { rs->addNew(); });
//   });
//
// Retry repeats the statement that failed, ignore goes on with the next one, abort leaves the routine.
// An Error outside every step makes the whole body the failed statement. No Error leaves reported().
#pragma once

#include <functional>
#include <utility>

#include "platform/runtime/error.h"

namespace qk {

enum class ErrorAnswer { Abort, Retry, Ignore };
using ErrorReport = std::function<ErrorAnswer(const Error&)>;

class Steps {
 public:
  explicit Steps(const ErrorReport& report) : report_(report) {}

  /// True when the statement went through, false when its failure was ignored.
  template <class Statement>
  bool operator()(Statement&& statement) {
    for (;;) {
      try {
        statement();
        return true;
      } catch (const Error& error) {
        switch (report_(error)) {
          case ErrorAnswer::Retry:
            continue;
          case ErrorAnswer::Ignore:
            return false;
          case ErrorAnswer::Abort:
            throw Aborted{};
        }
      }
    }
  }

 private:
  struct Aborted {};
  template <class Body>
  friend bool reported(const ErrorReport& report, Body&& body);

  const ErrorReport& report_;
};

/// Runs body(Steps&). False when the operator aborted.
template <class Body>
bool reported(const ErrorReport& report, Body&& body) {
  Steps step(report);
  try {
    step([&] { body(step); });
    return true;
  } catch (const Steps::Aborted&) {
    return false;
  }
}

}  // namespace qk
