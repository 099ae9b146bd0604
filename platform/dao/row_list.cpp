#include "platform/dao/row_list.h"

#include "platform/dao/database.h"
#include "platform/dao/engine/engine.h"
#include "platform/dao/rows/bookmark.h"
#include "platform/dao/rows/list_pace.h"
#include "platform/dao/rows/row_feed.h"
#include "platform/dao/rows/row_source.h"
#include "platform/dao/rows/row_writer.h"
#include "platform/dao/rows/select_plan.h"
#include "platform/dao/values/convert.h"

namespace qk::dao {

RowList::RowList(QObject* parent) : QObject(parent), keys_(1, true) {
  rest_.setSingleShot(true);
  rest_.setInterval(listPace().firstRowsAlone);
  connect(&rest_, &QTimer::timeout, this, [this] { feed_->goOn(); });
}

RowList::~RowList() = default;

void RowList::open(Database& database, const QString& query) {
  auto plan = database.plans_->get(*database.engine_, query);
  if (engine_ != database.engine_) {
    engine_ = database.engine_;
    feed_ = std::make_unique<RowFeed>(*engine_,
                                      [this] { QMetaObject::invokeMethod(this, [this] { collect(); }); });
  }
  start(std::move(plan));
}

void RowList::refresh() {
  if (isOpen()) start(plan_);
}

void RowList::clear() {
  if (!isOpen()) return;
  Q_EMIT aboutToRestart();
  feed_->cancel();
  keys_ = KeyList(keys_.width(), keys_.isInteger());
  first_ = 0;
  state_ = {};
  Q_EMIT restarted();
}

void RowList::start(std::shared_ptr<const SelectPlan> plan) {
  Q_EMIT aboutToRestart();
  plan_ = std::move(plan);
  source_ = rowsOf(engine_, plan_);
  writer_ = std::make_unique<RowWriter>(engine_, plan_);
  RowFeed::Job job;
  job.packed = !plan_->keyed;
  job.width = plan_->keyed ? plan_->keyWidth : 1;
  job.integer = plan_->keyed && plan_->integerKey;
  job.query = plan_->keyed ? plan_->keyListing(engine_->writer()) : plan_->whole;
  job.sorted = !plan_->paged && !plan_->select->top && !plan_->select->orderBy.empty();
  if (job.sorted && plan_->keyed) job.counting = plan_->counting(engine_->writer());
  keys_ = KeyList(job.width, job.integer);
  first_ = 0;
  state_ = {.complete = false, .sorting = job.sorted};
  rest_.stop();
  feed_->start(std::move(job));
  Q_EMIT restarted();

  waitForFirst(listPace().firstRows);
}

bool RowList::waitForAll(int milliseconds) {
  const QDeadlineTimer patience(milliseconds);
  while (!state_.complete && !patience.hasExpired()) {
    feed_->goOn();
    collectNext(patience);
  }
  return state_.complete;
}

void RowList::waitForFirst(int milliseconds) {
  const QDeadlineTimer patience(milliseconds);
  while (!state_.complete && count() == 0 && !patience.hasExpired()) collectNext(patience);
}

void RowList::collectNext(const QDeadlineTimer& patience) {
  constexpr int kTurn = 1000;
  if (feed_->wait(patience.isForever() ? kTurn : static_cast<int>(patience.remainingTime()))) collect();
}

void RowList::collect() {
  if (state_.complete) return;
  const RowFeed::Delivery delivery = feed_->take();
  if (delivery.restart && keys_.size() > 0) {
    Q_EMIT aboutToRestart();
    keys_ = KeyList(keys_.width(), keys_.isInteger());
    first_ = 0;
    Q_EMIT restarted();
  }
  if (const auto more = static_cast<int>(delivery.keys.size()); more > 0) {
    Q_EMIT aboutToGrow(count(), count() + more - 1);
    if (state_.expected > 0) keys_.reserve(state_.expected);
    keys_.append(delivery.keys);
    Q_EMIT grown();
  }
  if (delivery.expected) {
    state_.expected = *delivery.expected;
    Q_EMIT counted();
  }
  if (!delivery.complete) {
    if (delivery.resting) rest_.start();
    return;
  }
  state_ = {.complete = true, .broken = delivery.failure.has_value()};
  rest_.stop();
  if (delivery.failure)
    Q_EMIT failed(*delivery.failure);
  else
    Q_EMIT completed();
}

int RowList::fieldCount() const {
  return plan_ ? static_cast<int>(plan_->columns.size()) : 0;
}

const FieldDef& RowList::fieldDef(int column) const {
  if (column < 0 || column >= fieldCount()) throw Error(errors::kNoSuchElement);
  return plan_->columns[static_cast<size_t>(column)].def;
}

int RowList::findField(const QString& name) const {
  return plan_ ? plan_->position(name) : -1;
}

int RowList::fieldPosition(const QString& name) const {
  const int position = findField(name);
  if (position < 0) throw Error(errors::kNoSuchElement);
  return position;
}

QVariant RowList::convertedTo(int column, const QVariant& value) const {
  if (plan_->columns[static_cast<size_t>(column)].baseField < 0) throw Error(errors::kFieldNotUpdatable);
  return convertedValue(value, fieldDef(column));
}

bool RowList::read(int row, QVariantList& values) const {
  if (plan_->keyed) {
    if (!source_->readRow(keyAt(row), values)) return false;
  } else {
    values = keyOfBookmark(keyAt(row).first().toByteArray(), fieldCount()).value_or(QVariantList());
  }
  for (int column = 0; column < values.size(); ++column)
    values[column] = plan_->value(engine_->writer(), column, values[column], keyAt(row));
  return true;
}

QByteArray RowList::bookmark(int row) const {
  return bookmarkOf(keyAt(row));
}

int RowList::rowOf(const QByteArray& bookmark) const {
  const auto key = keyOfBookmark(bookmark, keys_.width());
  const qsizetype index = key ? keys_.indexOf(*key) : -1;
  return index < first_ ? -1 : static_cast<int>(index - first_);
}

int RowList::findFirst(const QString& criterion) const {
  int found = -1;
  source_->find(criterion, [&](const Key& key) {
    found = rowOf(bookmarkOf(key));
    return found < 0;
  });
  return found;
}

bool RowList::isUpdatable() const {
  return plan_ && plan_->keyed && !engine_->readOnly();
}

void RowList::update(int row, const Values& values) {
  writer_->requireUpdatable();
  EditBuffer buffer = writer_->unchanged();
  for (auto it = values.cbegin(); it != values.cend(); ++it) writer_->set(buffer, it.key(), *it, false);
  const Key key = keyAt(row);
  const Key changed = writer_->update(key, buffer);
  if (changed != key) keys_.replace(first_ + row, changed);
}

void RowList::insert(const Values& values) {
  writer_->requireUpdatable();
  EditBuffer buffer = writer_->newRow();
  Key key;
  try {
    for (auto it = values.cbegin(); it != values.cend(); ++it) writer_->set(buffer, it.key(), *it, true);
    key = writer_->insert(buffer);
  } catch (const Error&) {
    writer_->discard(buffer);
    throw;
  }
  Q_EMIT aboutToGrow(count(), count());
  keys_.append(key);
  Q_EMIT grown();
}

void RowList::remove(int row) {
  writer_->requireUpdatable();
  try {
    writer_->remove(keyAt(row));
  } catch (const Error& error) {
    if (error.number() != errors::kRecordDeleted) throw;
  }
}

void RowList::drop(int first, int count) {
  if (first == 0)
    first_ += count;
  else
    keys_.remove(first_ + first, count);
}

}  // namespace qk::dao
