#include "platform/dao/row_pages.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/engine.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

constexpr int kPage = 1000;

}  // namespace

RowPages::RowPages(Engine& engine, const QString& table)
    : engine_(engine), catalogue_(engine.catalogue()), table_(catalogue_->info(table)) {
  if (!table_ || table_->query) throw Error(errors::kUnknownTable);
}

RowPages::RowPages(Database& database, const QString& table) : RowPages(database.engine(), table) {}

bool RowPages::next(std::vector<QVariantList>& rows) {
  rows.clear();
  if (complete_) return false;
  const qsizetype width = table_->key.names.size();
  QVariantList last = last_;
  const sql::NativeQuery page = engine_.writer().page(*table_, last_, kPage);
  engine_.read(page.text, page.values, [&](const NativeRow& native) {
    last = native.mid(0, width);
    QVariantList row = native.mid(width);
    for (qsizetype i = 0; i < row.size(); ++i) {
      const FieldType type = table_->def.fields[static_cast<size_t>(i)].type;
      row[i] = type == FieldType::Boolean && row[i].isNull() ? QVariant(0)
                                                             : engine_.writer().fromNative(row[i], type);
    }
    rows.push_back(std::move(row));
    return true;
  });
  last_ = last;
  complete_ = rows.size() < kPage;
  return !rows.empty();
}

}  // namespace qk::dao
