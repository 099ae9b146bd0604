// qk-fuzz LINES [SEED]: wounded record lines through the import. One line with the counts; status 0 when the
// import bore them all, 1 when it didn't or when the call makes no sense.
#include <QTextStream>

#include "tests/link/import_fuzz.h"

int main(int argc, char** argv) {
  QTextStream out(stdout);
  bool isCount = argc == 2 || argc == 3, isSeed = true;
  const int lines = isCount ? QString(argv[1]).toInt(&isCount) : 0;
  const quint64 seed = argc == 3 ? QString(argv[2]).toULongLong(&isSeed) : 1;
  if (!isCount || lines < 1 || !isSeed) {
    out << "Aufruf: qk-fuzz ZEILEN [STARTWERT]" << Qt::endl;
    return 1;
  }
  const qk::test::FuzzResult result = qk::test::fuzzImport(seed, lines);
  const bool held = result.complaint.isEmpty();
  out << result.lines << " von " << lines << " Zeilen eingelesen (Startwert " << seed << "): " << result.taken
      << " als Schuss angenommen, " << result.reported << " Fehler gemeldet, "
      << (held ? "kein Mangel" : "Mangel: " + result.complaint) << Qt::endl;
  return held && result.taken > 0 ? 0 : 1;
}
