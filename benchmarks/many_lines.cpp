// The lines of a long range: what loading one costs may not grow with how many there are.
#include <QCoreApplication>
#include <QEvent>

#include "benchmarks/pairs.h"
#include "tests/app/range_office.h"

namespace qk::bench {

namespace {

constexpr int kFewLines = 24;
constexpr int kManyLines = 240;

/// As many lines altogether, so many at a time.
void load(Rounds& rounds, int lines) {
  test::RangeOffice office(QString(lines, '1'));
  office.open();
  while (rounds.next()) {
    for (int loaded = 0; loaded < kManyLines; loaded += lines) {
      office.window().Load_Settings();
      QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
      QCoreApplication::processEvents();
    }
  }
}

const Registered registered{Pair{"Laden von 240 Linien", 0.32, "gegen zehnmal 24 Linien",
                                 [](Rounds& rounds) { load(rounds, kManyLines); },
                                 [](Rounds& rounds) { load(rounds, kFewLines); }, 1}};

}  // namespace

}  // namespace qk::bench
