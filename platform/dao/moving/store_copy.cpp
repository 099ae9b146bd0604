#include "platform/dao/moving/store_copy.h"

#include <algorithm>
#include <optional>

#include "platform/dao/engine/engine.h"
#include "platform/dao/row_pages.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

/// Values in one statement: below the limit of every engine, and few enough that it is planned quickly.
constexpr qsizetype kLargestStatement = 1000;

/// A value that the target can't hold.
bool isOfAValue(const Error& error) {
  return error.number() == errors::kOverflow || error.number() == errors::kConversionFailed;
}

class RowInserter {
 public:
  RowInserter(Engine& engine, const TableDef& table)
      : engine_(engine), table_(table), width_(static_cast<qsizetype>(table.fields.size())) {}

  void insert(const std::vector<QVariantList>& rows) {
    const qsizetype atOnce = std::max<qsizetype>(1, kLargestStatement / width_);
    engine_.transaction([&] {
      for (size_t first = 0; first < rows.size(); first += static_cast<size_t>(atOnce)) {
        const size_t end = std::min(rows.size(), first + static_cast<size_t>(atOnce));
        QVariantList values;
        for (size_t i = first; i < end; ++i) appendNative(rows[i], values);
        engine_.write(engine_.writer().insertRows(table_, static_cast<int>(end - first)), values);
      }
    });
  }

 private:
  void appendNative(const QVariantList& row, QVariantList& values) const {
    for (qsizetype i = 0; i < width_; ++i)
      values.append(engine_.writer().toNative(row[i], table_.fields[static_cast<size_t>(i)].type));
  }

  Engine& engine_;
  const TableDef& table_;
  qsizetype width_;
};

/// After the rows: what is given out while they are read counts, too.
void carryNumbers(Engine& source, const TableInfo& table, Engine& target) {
  if (table.autoNumber < 0) return;
  const auto catalogue = target.catalogue();
  target.goOnAfter(*catalogue->info(table.def.name), source.lastNumber(table));
}

}  // namespace

qint64 copyTable(Engine& source, Database& target, const QString& table, const RowProgress& progress) {
  RowPages pages(source, table);
  target.createTable(pages.def());
  RowInserter inserter(target.engine(), pages.def());
  qint64 copied = 0;
  std::vector<QVariantList> rows;
  while (pages.next(rows)) {
    try {
      inserter.insert(rows);
    } catch (const Error& error) {
      if (!isOfAValue(error)) throw;
      throw Error(error.number(), QString("Tabelle »%1«: %2").arg(table, error.description()));
    }
    copied += static_cast<qint64>(rows.size());
    if (progress) progress(copied);
  }
  carryNumbers(source, pages.table(), target.engine());
  target.engine().learnFigures(table);
  return copied;
}

qint64 copyTable(Database& source, Database& target, const QString& table, const RowProgress& progress) {
  return copyTable(source.engine(), target, table, progress);
}

void copyQueries(Database& source, Database& target) {
  copyQueries(source.engine(), target);
}

void copyQueries(Engine& source, Database& target) {
  const auto catalogue = source.catalogue();
  QStringList waiting = catalogue->queryNames();
  // A query may stand on another one: what can't be made yet waits for the next round.
  while (!waiting.isEmpty()) {
    QStringList left;
    std::optional<Error> obstacle;
    for (const QString& name : waiting) {
      const QString& text = catalogue->info(name)->text;
      if (text.isEmpty())
        throw Error(errors::kInvalidOperation, QString("Die Abfrage »%1« hat keinen Abfragetext.").arg(name));
      try {
        target.createQuery(name, text);
      } catch (const Error& error) {
        obstacle = error;
        left.append(name);
      }
    }
    if (left.size() == waiting.size()) throw *obstacle;
    waiting = left;
  }
}

}  // namespace qk::dao
