#include "capture/check_list.h"

#include <algorithm>

#include "platform/runtime/error.h"

namespace qk {

void CheckList::clear() {
  beginResetModel();
  entries_.clear();
  current_ = -1;
  endResetModel();
}

void CheckList::add(const QString& text, std::int32_t number) {
  beginInsertRows({}, count(), count());
  entries_.push_back({text, number, false});
  endInsertRows();
}

void CheckList::takeEntriesOf(const CheckList& other) {
  beginResetModel();
  entries_ = other.entries_;
  for (Entry& entry : entries_) entry.ticked = false;
  current_ = -1;
  endResetModel();
}

int CheckList::tickedCount() const {
  return static_cast<int>(
      std::count_if(entries_.begin(), entries_.end(), [](const Entry& e) { return e.ticked; }));
}

void CheckList::setTicked(int position, bool ticked) {
  if (entry(position).ticked == ticked) return;
  entries_[static_cast<size_t>(position)].ticked = ticked;
  const QModelIndex changed = index(position);
  Q_EMIT dataChanged(changed, changed, {Qt::CheckStateRole});
}

void CheckList::untickAll() {
  for (int i = 0; i < count(); ++i) setTicked(i, false);
}

void CheckList::setCurrent(int position) {
  entry(position);
  current_ = position;
  Q_EMIT currentChanged(position);
}

int CheckList::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : count();
}

QVariant CheckList::data(const QModelIndex& index, int role) const {
  if (!index.isValid() || index.row() >= count()) return {};
  switch (role) {
    case Qt::DisplayRole:
      return text(index.row());
    case Qt::CheckStateRole:
      return isTicked(index.row()) ? Qt::Checked : Qt::Unchecked;
    default:
      return {};
  }
}

bool CheckList::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || index.row() >= count() || role != Qt::CheckStateRole) return false;
  const bool tick = value.toInt() == Qt::Checked;
  if (tick != isTicked(index.row())) {
    setTicked(index.row(), tick);
    Q_EMIT ticked(index.row());
  }
  return true;
}

Qt::ItemFlags CheckList::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable | Qt::ItemNeverHasChildren;
}

const CheckList::Entry& CheckList::entry(int position) const {
  if (position < 0 || position >= count()) throw Error(errors::kIndexOutOfRange);
  return entries_[static_cast<size_t>(position)];
}

}  // namespace qk
