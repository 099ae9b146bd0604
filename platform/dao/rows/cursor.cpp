#include "platform/dao/rows/cursor.h"

#include <algorithm>

#include "platform/dao/engine/engine.h"
#include "platform/dao/rows/bookmark.h"
#include "platform/runtime/error.h"

namespace qk::dao {

Cursor::Cursor(std::shared_ptr<Engine> engine, std::shared_ptr<const SelectPlan> plan, RecordsetType type)
    : engine_(std::move(engine)),
      plan_(std::move(plan)),
      type_(type),
      source_(rowsOf(engine_, plan_)),
      writer_(engine_, plan_),
      keys_(keyWidth(), !plan_->keyed || plan_->integerKey),
      added_(keys_) {
  if (type_ == RecordsetType::Table && (!plan_->keyed || plan_->sources.size() != 1))
    throw Error(errors::kInvalidOperation);
}

Cursor::~Cursor() {
  leaveEditing();
}

/// Rows without keys are told apart by their place.
int Cursor::keyWidth() const {
  return plan_->keyed ? plan_->keyWidth : 1;
}

// --- the list

/// A row added here may turn up again in the source's list: it stays where it is, at the end.
bool Cursor::listMore() {
  if (complete_) return false;
  const qsizetype before = keys_.size();
  complete_ = !source_->readKeys(keys_);
  if (added_.size() > 0)
    for (qsizetype i = before; i < keys_.size(); ++i)
      if (added_.indexOf(keys_.at(i)) >= 0) keys_.bury(i);
  return !complete_;
}

void Cursor::listAll() {
  while (listMore()) {
  }
}

/// First live row from `index` on; -1 when there is none.
qsizetype Cursor::nextLive(qsizetype index) {
  for (;;) {
    const qsizetype listed = keys_.nextLive(index);
    if (listed < keys_.size()) return listed;
    if (!complete_) {
      listMore();
      continue;
    }
    const qsizetype added = added_.nextLive(std::max<qsizetype>(index - keys_.size(), 0));
    return added < added_.size() ? keys_.size() + added : -1;
  }
}

qsizetype Cursor::previousLive(qsizetype index) {
  if (index >= keys_.size()) {
    const qsizetype added = added_.previousLive(index - keys_.size());
    if (added >= 0) return keys_.size() + added;
    index = keys_.size() - 1;
  }
  return keys_.previousLive(index);
}

/// Among what is listed so far; an added row has its index only behind a complete list.
qsizetype Cursor::indexOf(const Key& key) const {
  const qsizetype added = added_.indexOf(key);
  if (added < 0) return keys_.indexOf(key);
  return complete_ ? keys_.size() + added : -1;
}

Key Cursor::keyAt(qsizetype index) const {
  return index < keys_.size() ? keys_.at(index) : added_.at(index - keys_.size());
}

bool Cursor::isMember(const Key& key) const {
  return source_->mayCome(key) || added_.indexOf(key) >= 0 || keys_.indexOf(key) >= 0;
}

// --- the place

/// Just opened: the first row is looked for when somebody asks.
void Cursor::settle() const {
  if (place_ != Place::Unset) return;
  auto* self = const_cast<Cursor*>(this);
  const qsizetype first = self->nextLive(0);
  if (first < 0)
    self->placeAside(Place::After);
  else
    self->placeAt(first);
}

void Cursor::placeAt(qsizetype index) {
  place_ = Place::Row;
  index_ = index;
  key_ = keyAt(index);
  gone_ = false;
  loaded_ = false;
  visit(std::min(index + 1, keys_.size()));
}

void Cursor::visit(qsizetype count) {
  for (; visited_ < count; ++visited_) buried_ += !keys_.isLive(visited_);
}

void Cursor::placeAt(const Key& key) {
  place_ = Place::Row;
  index_ = -1;
  key_ = key;
  gone_ = false;
  loaded_ = false;
}

void Cursor::placeAside(Place place) {
  place_ = place;
  index_ = -1;
  gone_ = false;
  loaded_ = false;
}

/// The current row's index; for a row that is gone from the list, the index before its place.
qsizetype Cursor::workOutIndex() {
  while (index_ < 0) {
    index_ = indexOf(key_);
    if (index_ < 0 && !listMore()) {
      index_ = indexOf(key_);
      break;
    }
  }
  if (index_ < 0 && source_->ascending()) return keys_.lowerBound(key_) - 1;
  return index_;
}

bool Cursor::bof() const {
  settle();
  return place_ == Place::Before || (place_ == Place::After && const_cast<Cursor*>(this)->nextLive(0) < 0);
}

bool Cursor::eof() const {
  settle();
  return place_ == Place::After || (place_ == Place::Before && const_cast<Cursor*>(this)->nextLive(0) < 0);
}

void Cursor::moveFirst() {
  leaveEditing();
  const qsizetype first = nextLive(0);
  if (first < 0) {
    placeAside(Place::After);
    throw Error(errors::kNoCurrentRecord);
  }
  placeAt(first);
}

void Cursor::moveLast() {
  leaveEditing();
  listAll();
  const qsizetype last = previousLive(keys_.size() + added_.size() - 1);
  if (last < 0) {
    placeAside(Place::After);
    throw Error(errors::kNoCurrentRecord);
  }
  placeAt(last);
}

void Cursor::moveNext() {
  leaveEditing();
  settle();
  if (place_ == Place::After) throw Error(errors::kNoCurrentRecord);
  const qsizetype next = nextLive(place_ == Place::Before ? 0 : workOutIndex() + 1);
  if (next < 0)
    placeAside(Place::After);
  else
    placeAt(next);
}

void Cursor::movePrevious() {
  leaveEditing();
  settle();
  if (place_ == Place::Before || bof()) throw Error(errors::kNoCurrentRecord);
  qsizetype from = 0;
  if (place_ == Place::After) {
    listAll();
    from = keys_.size() + added_.size() - 1;
  } else {
    const bool listed = workOutIndex() >= 0 && index_ >= 0;
    from = listed ? index_ - 1 : workOutIndex();
  }
  const qsizetype previous = previousLive(from);
  if (previous < 0)
    placeAside(Place::Before);
  else
    placeAt(previous);
}

void Cursor::requireRow() const {
  settle();
  if (place_ != Place::Row) throw Error(errors::kNoCurrentRecord);
  if (gone_) throw Error(errors::kRecordDeleted);
}

void Cursor::loadRow() const {
  requireRow();
  if (loaded_) return;
  if (!source_->readRow(key_, row_)) throw Error(errors::kRecordDeleted);
  loaded_ = true;
}

// --- fields

int Cursor::fieldCount() const {
  return static_cast<int>(plan_->columns.size());
}

const FieldDef& Cursor::field(int position) const {
  if (position < 0 || position >= fieldCount()) throw Error(errors::kNoSuchElement);
  return plan_->columns[static_cast<size_t>(position)].def;
}

const FieldDef& Cursor::fieldDef(int position) const {
  return field(position);
}

int Cursor::fieldPosition(const QString& name) const {
  const int position = plan_->position(name, asked_ + 1);
  if (position < 0) throw Error(errors::kNoSuchElement);
  return asked_ = position;
}

QVariant Cursor::value(int position) const {
  field(position);
  if (mode_ == Mode::Adding || (mode_ == Mode::Editing && buffer_.changed[static_cast<size_t>(position)]))
    return buffer_.values[static_cast<size_t>(position)];
  loadRow();
  return plan_->value(engine_->writer(), position, row_[position], key_);
}

void Cursor::setValue(int position, const QVariant& value) {
  field(position);
  if (mode_ == Mode::Reading) throw Error(errors::kNotEditing);
  writer_.set(buffer_, position, value, mode_ == Mode::Adding);
}

// --- changes

void Cursor::requireUpdatable() const {
  if (type_ == RecordsetType::Snapshot) throw Error(errors::kNotUpdatable);
  writer_.requireUpdatable();
}

void Cursor::addNew() {
  leaveEditing();
  requireUpdatable();
  buffer_ = writer_.newRow();
  mode_ = Mode::Adding;
  tried_ = false;
}

void Cursor::edit() {
  leaveEditing();
  requireUpdatable();
  loadRow();
  buffer_ = writer_.unchanged();
  mode_ = Mode::Editing;
}

void Cursor::update() {
  if (mode_ == Mode::Reading) throw Error(errors::kNotEditing);
  if (mode_ == Mode::Adding) {
    tried_ = true;
    added_.append(writer_.insert(buffer_));
    mode_ = Mode::Reading;
    if (place_ == Place::After && nextLive(0) == keys_.size() + added_.size() - 1) place_ = Place::Unset;
    return;
  }
  const Key changed = writer_.update(key_, buffer_);
  mode_ = Mode::Reading;
  loaded_ = false;
  if (changed == key_) return;
  if (index_ >= keys_.size())
    added_.replace(index_ - keys_.size(), changed);
  else if (index_ >= 0)
    keys_.replace(index_, changed);
  key_ = changed;
}

void Cursor::cancelUpdate() {
  if (mode_ == Mode::Reading) throw Error(errors::kNotEditing);
  leaveEditing();
}

/// A number that was handed out for a row which is never stored goes back. Not one whose storing was tried:
/// somebody may know the row by it.
void Cursor::leaveEditing() {
  if (mode_ == Mode::Adding && !tried_) writer_.discard(buffer_);
  mode_ = Mode::Reading;
}

/// Puts a tombstone where the current row stands, as far as that is known: looking for it would cost the
/// whole list.
void Cursor::bury() {
  const qsizetype added = index_ < keys_.size() ? added_.indexOf(key_) : index_ - keys_.size();
  if (added >= 0) {
    added_.bury(added);
    ++buried_;
  } else if (index_ >= 0) {
    keys_.bury(index_);
    if (index_ < visited_) ++buried_;
  }
}

void Cursor::remove() {
  leaveEditing();
  requireUpdatable();
  requireRow();
  if (index_ < 0) {
    // A list by ascending keys finds the gap again; any other must know the place before the row is gone.
    if (source_->ascending())
      index_ = indexOf(key_);
    else
      workOutIndex();
  }
  writer_.remove(key_);
  gone_ = true;
  loaded_ = false;
  bury();
  if (nextLive(0) < 0) placeAside(Place::After);
}

// --- looking up

void Cursor::findFirst(const QString& criterion) {
  leaveEditing();
  std::optional<Key> found;
  source_->find(criterion, [&](const Key& key) {
    if (!isMember(key)) return true;
    found = key;
    return false;
  });
  noMatch_ = !found;
  if (found) placeAt(*found);
}

bool Cursor::noMatch() const {
  return noMatch_;
}

void Cursor::setIndex(const QString& name) {
  if (type_ != RecordsetType::Table) throw Error(errors::kNotSupported);
  const auto& indexes = plan_->sources.front().table->def.indexes;
  const auto index = std::find_if(indexes.begin(), indexes.end(),
                                  [&](const IndexDef& known) { return sameName(known.name, name); });
  if (index == indexes.end()) throw Error(errors::kNoSuchIndex);
  requery();
  source_->orderBy(*index);
}

void Cursor::seek(const QString& comparison, const QVariantList& keys) {
  if (type_ != RecordsetType::Table) throw Error(errors::kNotSupported);
  leaveEditing();
  const std::optional<Key> found = source_->seek(comparison, keys);
  noMatch_ = !found;
  if (found) placeAt(*found);
}

// --- bookmarks

QByteArray Cursor::bookmark() const {
  requireRow();
  return bookmarkOf(key_);
}

void Cursor::setBookmark(const QByteArray& bookmark) {
  leaveEditing();
  const auto decoded = keyOfBookmark(bookmark, keyWidth());
  if (!decoded || !isMember(*decoded)) throw Error(errors::kNoBookmark);
  const Key key = *decoded;
  placeAt(key);
  if (const qsizetype index = indexOf(key); index >= 0) placeAt(index);
  const qsizetype added = added_.indexOf(key);
  gone_ =
      index_ >= 0 && index_ < keys_.size() && !keys_.isLive(index_) && (added < 0 || !added_.isLive(added));
}

int Cursor::recordCount() const {
  settle();
  return static_cast<int>(visited_ + added_.size() - buried_);
}

void Cursor::requery() {
  leaveEditing();
  source_->restart();
  keys_ = KeyList(keyWidth(), keys_.isInteger());
  added_ = keys_;
  complete_ = false;
  visited_ = 0;
  buried_ = 0;
  noMatch_ = false;
  placeAside(Place::Unset);
}

}  // namespace qk::dao
