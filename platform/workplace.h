// What a workstation provides, handed to every room as one value of references. The owner (main(), or a test)
// outlives everything built on it.
#pragma once

namespace qk {

class Clock;
class Dialogs;
class Files;
class Random;
class Settings;
class Waits;

struct Workplace {
  Clock& clock;
  Random& random;
  Waits& waits;
  Files& files;
  Settings& settings;
  Dialogs& dialogs;
};

}  // namespace qk
