#include "platform/dao/row_reader.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/engine.h"
#include "platform/dao/rows/select_plan.h"

namespace qk::dao {

RowReader::RowReader(Database& database, const QString& query) : database_(database) {
  const auto plan = SelectPlan::make(database.engine(), query);
  fields_.reserve(plan->columns.size());
  for (const PlanColumn& column : plan->columns) fields_.push_back(column.def);
  sql::NativeQuery whole = plan->rowListing(database.engine().writer());
  text_ = std::move(whole.text);
  values_ = std::move(whole.values);
}

RowReader::~RowReader() {
  ending_ = true;
  if (thread_.joinable()) thread_.join();
}

void RowReader::start(Take take, End end) {
  reader_ = database_.engine().reader([this] { return ending_.load(); });
  thread_ = std::thread([this, take = std::move(take), end = std::move(end)] { run(take, end); });
}

void RowReader::run(const Take& take, const End& end) {
  std::optional<Error> failure;
  try {
    QVariantList row;
    reader_->read(text_, values_, [&](const NativeRow& native) {
      row = native;
      for (qsizetype i = 0; i < row.size(); ++i)
        row[i] = reader_->writer().fromNative(native[i], fields_[static_cast<size_t>(i)].type);
      take(row);
      return !ending_;
    });
  } catch (const Error& error) {
    failure = error;
  }
  if (!ending_) end(failure);
}

}  // namespace qk::dao
