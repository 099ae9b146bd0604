#include "tests/backup/copy_figures.h"

#include <QFile>
#include <algorithm>
#include <stdexcept>

#include "platform/dao/moving/table_figures.h"

namespace qk::test {

std::vector<TableEvidence> figuresOfAll(dao::Database& store) {
  std::vector<TableEvidence> all;
  for (const QString& table : store.tableNames()) {
    const dao::TableFigures figures = figuresOf(store, table);
    all.push_back({table, figures.rows, figures.digest});
  }
  std::sort(all.begin(), all.end(), [](const auto& a, const auto& b) { return a.table < b.table; });
  return all;
}

void flip(const QString& path, qint64 at) {
  QFile file(path);
  const bool there = file.open(QIODevice::ReadWrite) && file.seek(at);
  const QByteArray byte(1, there ? static_cast<char>(file.peek(1)[0] ^ 4) : '\0');
  if (!there || file.write(byte) != 1) throw std::runtime_error("can't flip a byte of " + path.toStdString());
}

}  // namespace qk::test
