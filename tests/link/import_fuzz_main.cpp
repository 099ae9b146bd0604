// qk-fuzz LINES [SEED]: wounded record lines through the import. qk-fuzz --dateien FILES [SEED]: wounded
// esa_preis.ini and def files through all their readers. One line with the counts; status 0 when they bore it
// all, 1 when they didn't or when the call makes no sense.
#include <QStringList>
#include <QTextStream>

#include "platform/runtime/program_call.h"
#include "tests/link/import_fuzz.h"
#include "tests/targetconfig/station_fuzz.h"

namespace {

using namespace qk::test;

const QString kHelp =
    "qk-fuzz - füttert die Leser des Programms mit verstümmelten Zeilen und Dateien\n\n"
    "Aufruf: qk-fuzz [--dateien] ANZAHL [STARTWERT]\n"
    "        qk-fuzz --hilfe | --version\n";

QString verdict(const QString& complaint) {
  return complaint.isEmpty() ? "kein Mangel" : "Mangel: " + complaint;
}

int fuzzRecords(QTextStream& out, quint64 seed, int lines) {
  const FuzzResult result = fuzzImport(seed, lines);
  out << result.lines << " von " << lines << " Zeilen eingelesen (Startwert " << seed << "): " << result.taken
      << " als Schuss angenommen, " << result.reported << " Fehler gemeldet, " << verdict(result.complaint)
      << Qt::endl;
  return result.complaint.isEmpty() && result.taken > 0 ? 0 : 1;
}

int fuzzFiles(QTextStream& out, quint64 seed, int files) {
  const StationFuzzResult result = fuzzStationFiles(seed, files);
  out << result.files << " von " << files << " Dateien gelesen (Startwert " << seed << "): " << result.titles
      << " Disziplinen erkannt, " << result.found << " Dateien gefunden, " << verdict(result.complaint)
      << Qt::endl;
  return result.complaint.isEmpty() && result.titles > 0 && result.found > 0 ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
  QTextStream out(stdout);
  QStringList arguments(argv + 1, argv + argc);
  if (qk::answeredCall(arguments, "qk-fuzz", kHelp)) return 0;
  const bool files = !arguments.isEmpty() && arguments.first() == "--dateien";
  if (files) arguments.removeFirst();
  bool isCount = arguments.size() == 1 || arguments.size() == 2, isSeed = true;
  const int count = isCount ? arguments[0].toInt(&isCount) : 0;
  const quint64 seed = arguments.size() == 2 ? arguments[1].toULongLong(&isSeed) : 1;
  if (!isCount || count < 1 || !isSeed) {
    out << kHelp << Qt::flush;
    return 1;
  }
  return files ? fuzzFiles(out, seed, count) : fuzzRecords(out, seed, count);
}
