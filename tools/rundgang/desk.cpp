#include "tools/rundgang/desk.h"

#include <algorithm>

namespace qk {

/// An act from its first click to its visible end.
class Desk::Noted {
 public:
  Noted(Desk& desk, Act::Kind kind, const QList<int>& shots) : journal_(desk.journal_) {
    act_ = {kind, desk.line_, desk.shooter_, shots, desk.disciplines_, QDateTime::currentDateTime(), {}};
  }
  ~Noted() {
    act_.to = QDateTime::currentDateTime();
    journal_.push_back(act_);
  }

 private:
  Journal& journal_;
  Act act_;
};

Desk::Desk(Range& range, DrivenProgram& program, Journal& journal, int line)
    : range_(range), program_(program), walk_(program), journal_(journal), line_(line) {}

void Desk::picture(const QString& state) {
  program_.grab(range_.picture(QString("linie-%1-%2").arg(line_).arg(state)));
}

// ---- shooter and station ----

void Desk::chooseShooter(const QString& startNumber) {
  walk_.chooseShooter(line_, startNumber);
  shooter_ = startNumber;
}

void Desk::expectShooter(const QString& startNumber) {
  const QString shown = program_.text(QString("cLine_%1/m_lblStartnummer").arg(line_ - 1));
  if (shown != startNumber)
    throw DriverError(QString("line %1 came back with shooter \"%2\"").arg(line_).arg(shown));
  shooter_ = startNumber;
}

void Desk::changeShooter(const QString& startNumber) {
  shooter_ = startNumber;
  const Noted act(*this, Act::Kind::ChangeShooter, {});
  walk_.enterStartNumber(line_, startNumber);
  program_.waitUntil("question about the open shots", [&] { return !program_.modal().isEmpty(); });
  picture("schuetzenwechsel");
  program_.answer("Bisheriger Schütze hat noch offene Schüsse!", "Ja");
  program_.waitUntil("new shooter", [&] {
    return program_.text(QString("cLine_%1/m_lblStartnummer").arg(line_ - 1)) == startNumber;
  });
}

void Desk::tickStationDisciplines(const QStringList& names) {
  for (const QString& name : names) walk_.tickStationDiscipline(line_, name);
}

void Desk::startShooting() {
  walk_.priceModeOn(line_);
  range_.waitUntilTaken(program_, line_, {"76"});
  walk_.sendShooter(line_);
  range_.waitUntilTaken(program_, line_, {"75", "80"});  // shots beyond the registration follow it
}

void Desk::sendExtraShots() {
  walk_.sendExtraShots(line_);
  range_.waitUntilTaken(program_, line_, {"80"});
}

// ---- what counts, and for what ----

void Desk::chooseCombination(const QString& name, const QStringList& members) {
  walk_.tickCombination(line_, name);
  disciplines_ = members;
}

void Desk::chooseDisciplines(const QStringList& names) {
  const QSet<QString> wanted(names.begin(), names.end());
  const QSet<QString> now(disciplines_.begin(), disciplines_.end());
  for (const QString& name : (wanted - now) + (now - wanted)) walk_.clickDiscipline(line_, name);
  disciplines_ = names;
}

QList<int> Desk::tickedPlaces() const {
  QList<int> places = ticked_.values();
  std::sort(places.begin(), places.end());
  return places;
}

void Desk::tickShots(const QList<int>& places) {
  for (int place : places) {
    walk_.clickShot(line_, place);
    ticked_.insert(place);
  }
}

void Desk::tickAll() {
  for (int place = 0; place < openShots(); ++place) ticked_.insert(place);
  const Noted act(*this, Act::Kind::Transfer, tickedPlaces());
  walk_.tickAllShots(line_);
  finishTransfer();
}

void Desk::untickAll() {
  ticked_.clear();
  walk_.tickAllShots(line_, false);
  program_.waitUntil("empty results", [&] { return !walk_.hasResults(line_); });
}

void Desk::chooseSeries(int place, int first, int count, const QStringList& disciplines) {
  ticked_.clear();
  for (int i = 0; i < count; ++i) ticked_.insert(first + i);
  disciplines_ = disciplines;
  const Noted act(*this, Act::Kind::Transfer, tickedPlaces());
  walk_.chooseSeriesAround(line_, place);
  finishTransfer();
}

void Desk::transfer() {
  const Noted act(*this, Act::Kind::Transfer, tickedPlaces());
  walk_.transfer(line_);
  finishTransfer();
}

/// Two results of one second may draw the same key by chance: the program says so and leaves one out, and the
/// operator transfers again, which draws anew.
void Desk::finishTransfer() {
  program_.waitUntil("results of the transfer",
                     [&] { return walk_.hasResults(line_) || !program_.modal().isEmpty(); });
  if (program_.modal().isEmpty()) return;
  picture("gleicher-schluessel");
  program_.answer("457 - ", "Abbrechen");
  walk_.transfer(line_);
  finishTransfer();
}

// ---- what becomes of it ----

void Desk::saveOnly() {
  const Noted act(*this, Act::Kind::Store, tickedPlaces());
  walk_.saveOnly(line_);
}

void Desk::saveAndBook() {
  const Noted act(*this, Act::Kind::Book, tickedPlaces());
  walk_.saveAndBook(line_);
  ticked_.clear();
}

void Desk::discardTicked() {
  const Noted act(*this, Act::Kind::Discard, tickedPlaces());
  walk_.discardTicked(line_);
  ticked_.clear();
}

void Desk::discardAll() {
  ticked_.clear();
  for (int place = 0; place < openShots(); ++place) ticked_.insert(place);
  const Noted act(*this, Act::Kind::Discard, tickedPlaces());
  walk_.discardAll(line_);
  ticked_.clear();
}

void Desk::leave() {
  walk_.signOffAndLeavePriceMode(line_);
  walk_.freeLine(line_);
}

}  // namespace qk
