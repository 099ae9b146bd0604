// list_taker COMPETITION LIST: judges the list, writes "bereit", takes it over, writes "fertig". For tests
// that end it in the middle.
#include <QCoreApplication>
#include <QFile>
#include <cstdio>

#include "masterdata/lists/store_state.h"
#include "masterdata/lists/take_over.h"
#include "platform/dao/database.h"
#include "platform/runtime/error.h"

int main(int argc, char** argv) {
  using namespace qk::lists;
  const QCoreApplication app(argc, argv);
  QFile file(app.arguments().value(2));
  if (!file.open(QIODevice::ReadOnly)) return 2;
  try {
    const auto store = qk::dao::Database::open(app.arguments().value(1));
    const auto table = std::make_shared<CsvTable>(readCsv(file.readAll()).table);
    const Judgement judgement =
        judge(ListKind::Shooters, table, recognised(ListKind::Shooters, table->rows.front()),
              readStoreState(*store));
    std::puts("bereit");
    std::fflush(stdout);
    const bool written = takeOver(*store, judgement, "Liste", QDateTime::currentDateTime()).written;
    std::puts("fertig");
    return written ? 0 : 1;
  } catch (const qk::Error& error) {
    std::fprintf(stderr, "%d %s\n", error.number(), error.what());
    return 3;
  }
}
