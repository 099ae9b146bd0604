// import-fuzz LINES [SEED]: status 0 when the import bears them all.
#include <QTextStream>

#include "tests/link/import_fuzz.h"

int main(int argc, char** argv) {
  QTextStream out(stdout);
  if (argc < 2) {
    out << "import-fuzz LINES [SEED]" << Qt::endl;
    return 2;
  }
  const int lines = QString(argv[1]).toInt();
  const quint64 seed = argc > 2 ? QString(argv[2]).toULongLong() : 1;
  const qk::test::FuzzResult result = qk::test::fuzzImport(seed, lines);
  out << lines << " lines, " << result.taken << " taken. " << result.complaint << Qt::endl;
  return result.complaint.isEmpty() && result.taken > 0 ? 0 : 1;
}
