// A whole workplace for one test: everything settable, everything strict, in a folder of its own whose path
// holds no dot. The environment variables of the program lead into that folder while it lives.
//
//   TestWorkplace place;
//   place.dialogs.expect("…", BoxAnswer::Yes);
//   place.clock.set("20.11.2026 05:59:00");
//   Buchungsdatum(place.workplace());
#pragma once

#include <QTemporaryDir>
#include <vector>

#include "platform/settings/settings.h"
#include "platform/workplace.h"
#include "tests/support/failing_files.h"
#include "tests/support/scripted_dialogs.h"
#include "tests/support/strict_messages.h"
#include "tests/support/test_time.h"

namespace qk::test {

class TestWorkplace {
 public:
  explicit TestWorkplace(Complain complain = failTest);
  ~TestWorkplace();
  TestWorkplace(const TestWorkplace&) = delete;
  TestWorkplace& operator=(const TestWorkplace&) = delete;

  /// The workplace with scripted dialogs, or with other ones (real boxes, answered by RealBoxes).
  Workplace workplace() { return workplace(dialogs); }
  Workplace workplace(Dialogs& other) { return {clock, random, waits, files, settings, other}; }

  /// A path in the folder: path("a/b.txt"); path() is the folder itself.
  QString path(const QString& name = {}) const;

 private:
  class Environment;
  QTemporaryDir folder_;
  std::unique_ptr<Environment> environment_;

 public:
  StrictMessages messages;
  TestClock clock;
  TestRandom random;
  TestWaits waits;
  FailingFiles files;
  Settings settings;
  ScriptedDialogs dialogs;
};

}  // namespace qk::test
