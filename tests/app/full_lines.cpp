#include "tests/app/full_lines.h"

#include <malloc.h>
#include <sqlite3.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QEvent>
#include <QFile>

#include "capture/open_shots.h"

namespace qk::test {

namespace {

const QString kDiscipline = "LG Meister";

/// What waits to be deleted is no longer held by anybody.
void settle() {
  QCoreApplication::processEvents();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

}  // namespace

FullLines::FullLines(int lines) : office_(QString(lines, '1')), lines_(lines) {
  office_.database()->execute("UPDATE Disziplin SET RingSerie = 1000 WHERE Name = '" + kDiscipline + "'");
  if (!office_.open()) failTest("the office doesn't open");
  for (int line = 1; line <= lines; ++line) {
    office_.show(line);
    office_.chooseShooter(line, "107");
    office_.tickEntry(line, "m_lstDisziTarvex", kDiscipline);
  }
}

void FullLines::load(int shots) {
  const auto store = office_.database();
  for (int line = 1; line <= lines_; ++line) {
    for (int hit = 1; hit <= shots; ++hit) {
      HaeringSchuss shot;
      QString record = shotRecord(line, hit, "9,7", "123,4", kDiscipline);
      shot.Haering_Import_Zeile(record, store.get(), [](const Error&) { return ErrorAnswer::Abort; });
      SpeichereHaeringSchuss(office_.workplace(), store.get(), shot);
    }
    office_.line(line).Check_Old_Schuss(line);
  }
  settle();
}

void FullLines::book() {
  for (int line = 1; line <= lines_; ++line) {
    office_.place.random.give({0.5});
    office_.line(line).HaeringSchussAnAbwaehlen(true);
    office_.line(line).SpeichernInDatenbank(true);
  }
  settle();
}

int FullLines::openShots() {
  int open = 0;
  for (int line = 1; line <= lines_; ++line) open += office_.line(line).nOffeneSchuss();
  return open;
}

qint64 allocatedBytes() {
  const auto heap = mallinfo2();
  return static_cast<qint64>(heap.uordblks + heap.hblkhd) - sqlite3_memory_used();
}

qint64 residentBytes() {
  malloc_trim(0);
  QFile status("/proc/self/statm");
  if (!status.open(QIODevice::ReadOnly)) failTest(status.errorString());
  return status.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

}  // namespace qk::test
