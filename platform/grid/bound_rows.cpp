#include "platform/grid/bound_rows.h"

#include <QElapsedTimer>
#include <algorithm>
#include <utility>

#include "platform/runtime/datetext.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

// Rows kept after they were read: some screens, for scrolling to and fro.
constexpr int kRowsKept = 500;
/// Milliseconds to the next trial of a row that couldn't be read: a store that is away comes back sometime.
constexpr int kReadAgain = 1000;
const QString kDeleted = "#Gelöscht";
const QString kUnreadable = "#Fehler";

bool isNumber(dao::FieldType type) {
  return type > dao::FieldType::Boolean && type < dao::FieldType::Date;
}

bool isWhole(dao::FieldType type) {
  return type == dao::FieldType::Byte || type == dao::FieldType::Integer || type == dao::FieldType::Long;
}

QString plainText(const QVariant& value) {
  if (!value.isValid() || value.isNull()) return {};
  switch (value.typeId()) {
    case QMetaType::QDateTime:
      return dateText(value.toDateTime());
    case QMetaType::Double:
      return numberText(value.toDouble());
    default:
      return value.toString();
  }
}

}  // namespace

BoundRows::BoundRows(ErrorReport report, QObject* parent)
    : QAbstractTableModel(parent), report_(std::move(report)), read_(kRowsKept) {
  using List = dao::RowList;
  readAgain_.setSingleShot(true);
  connect(&readAgain_, &QTimer::timeout, this, &BoundRows::readFailedAgain);
  connect(&list_, &List::aboutToRestart, this, [this] { beginResetModel(); });
  connect(&list_, &List::restarted, this, [this] {
    edited_.reset();
    forgetCells();
    blank_ = false;
    bindColumns();
    endResetModel();
    Q_EMIT counted();
  });
  connect(&list_, &List::aboutToGrow, this,
          [this](int first, int last) { beginInsertRows({}, first, last); });
  connect(&list_, &List::grown, this, [this] {
    endInsertRows();
    Q_EMIT counted();
  });
  connect(&list_, &List::counted, this, &BoundRows::counted);
  connect(&list_, &List::completed, this, [this] {
    if (wantsBlankRow()) {
      beginInsertRows({}, count(), count());
      blank_ = true;
      endInsertRows();
    }
    Q_EMIT counted();
  });
  connect(&list_, &List::failed, this, [this](const Error& error) {
    Q_EMIT counted();
    if ((fetchReport_ ? fetchReport_ : report_)(error) == ErrorAnswer::Retry) refresh();
  });
}

BoundRows::~BoundRows() {
  list_.disconnect(this);
}

void BoundRows::setColumns(std::vector<BoundColumn> columns) {
  beginResetModel();
  columns_ = std::move(columns);
  allFields_ = columns_.empty();
  forgetCells();
  bindColumns();
  endResetModel();
}

void BoundRows::open(dao::Database& database, const QString& query) {
  list_.open(database, query);
}

void BoundRows::bindColumns() {
  if (allFields_) {
    columns_.clear();
    for (int field = 0; field < list_.fieldCount(); ++field)
      columns_.push_back({.field = list_.fieldDef(field).name, .title = titles_.value(field)});
  }
  fields_.assign(columns_.size(), -1);
  if (!list_.isOpen()) return;
  for (size_t column = 0; column < columns_.size(); ++column)
    fields_[column] = allFields_ ? static_cast<int>(column) : list_.findField(columns_[column].field);
}

// --- reading

void BoundRows::forgetCells() {
  read_.clear();
  unreadable_.clear();
}

/// One of them is tried, for each trial may have to wait for a store that is away.
void BoundRows::readFailedAgain() {
  if (unreadable_.isEmpty()) return;
  const QSet<int> rows = std::exchange(unreadable_, {});
  const int probe = *rows.begin();
  read_.remove(probe);
  cellsOf(probe);
  if (!unreadable_.isEmpty()) {
    unreadable_ += rows;
    return;
  }
  for (const int row : rows) {
    read_.remove(row);
    rowChanged(row);
  }
}

const BoundRows::Cells& BoundRows::cellsOf(int row) const {
  if (const Cells* known = read_.object(row)) return *known;
  auto* cells = new Cells;
  QString missing;
  try {
    if (!isNewRow(row) && !list_.read(row, cells->values)) missing = kDeleted;
  } catch (const Error&) {
    // A view that is being painted has nobody to report to.
    missing = kUnreadable;
    unreadable_.insert(row);
  }
  if (!unreadable_.isEmpty()) readAgain_.start(missing == kUnreadable ? kReadAgain : 0);
  for (int column = 0; column < columnCount(); ++column) {
    const int field = fields_[static_cast<size_t>(column)];
    cells->texts.append(cells->values.isEmpty() ? missing : textOf(column, cells->values.value(field)));
  }
  read_.insert(row, cells);
  return *cells;
}

const dao::FieldDef* BoundRows::fieldOf(int column) const {
  const int field = fields_[static_cast<size_t>(column)];
  return field < 0 ? nullptr : &list_.fieldDef(field);
}

bool BoundRows::holdsNumbers(int column) const {
  const dao::FieldDef* field = fieldOf(column);
  return field && isNumber(field->type);
}

QString BoundRows::textOf(int column, const QVariant& value) const {
  const auto& text = columns_[static_cast<size_t>(column)].text;
  return text ? text(value) : plainText(value);
}

QVariant BoundRows::fieldValue(int row, int field) const {
  if (edited_ && edited_->row == row)
    if (const auto it = edited_->values.constFind(field); it != edited_->values.cend()) return *it;
  return cellsOf(row).values.value(field);
}

QVariant BoundRows::value(int row, const QString& field) const {
  return fieldValue(row, list_.fieldPosition(field));
}

bool BoundRows::reread(int row) {
  QVariantList values;
  const bool there = list_.read(row, values);
  read_.remove(row);
  rowChanged(row);
  return there;
}

int BoundRows::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : list_.count() + (blank_ ? 1 : 0);
}

int BoundRows::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : static_cast<int>(columns_.size());
}

QVariant BoundRows::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const int column = index.column();
  const dao::FieldDef* field = fieldOf(column);
  const bool edited = edited_ && edited_->row == index.row();
  const BoundColumn& shown = columns_[static_cast<size_t>(column)];
  switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
      if (shown.checkBox) return {};
      if (edited && field)
        return textOf(column, fieldValue(index.row(), fields_[static_cast<size_t>(column)]));
      return cellsOf(index.row()).texts.value(column);
    case Qt::CheckStateRole:
      if (!shown.checkBox || !field) return {};
      return fieldValue(index.row(), fields_[static_cast<size_t>(column)]).toInt() ? Qt::Checked
                                                                                   : Qt::Unchecked;
    case Qt::AccessibleTextRole:
      if (!shown.checkBox || !field) return {};
      return fieldValue(index.row(), fields_[static_cast<size_t>(column)]).toInt() ? "ja" : "nein";
    case Qt::TextAlignmentRole:
      return int((holdsNumbers(column) ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
      return {};
  }
}

QVariant BoundRows::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columnCount()) return {};
  const BoundColumn& column = columns_[static_cast<size_t>(section)];
  if (role == Qt::DisplayRole) return column.title.isEmpty() ? column.field : column.title;
  if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

// --- editing

bool BoundRows::wantsBlankRow() const {
  return appending_ && unlocked_ && list_.isUpdatable() && list_.isComplete();
}

void BoundRows::setUnlocked(bool unlocked) {
  beginResetModel();
  unlocked_ = unlocked;
  blank_ = wantsBlankRow();
  endResetModel();
}

void BoundRows::setAppending(bool appending) {
  beginResetModel();
  appending_ = appending;
  blank_ = wantsBlankRow();
  endResetModel();
}

Qt::ItemFlags BoundRows::flags(const QModelIndex& index) const {
  Qt::ItemFlags flags = QAbstractTableModel::flags(index);
  if (!index.isValid() || !unlocked_ || !list_.isUpdatable() || !fieldOf(index.column())) return flags;
  const BoundColumn& column = columns_[static_cast<size_t>(index.column())];
  if (column.locked) return flags;
  return flags | (column.checkBox ? Qt::ItemIsUserCheckable : Qt::ItemIsEditable);
}

QVariant BoundRows::converted(const QVariant& value) const {
  const bool empty = value.typeId() == QMetaType::QString && value.toString().isEmpty();
  return empty && emptyIsNull_ ? QVariant() : value;
}

bool BoundRows::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid() || (role != Qt::EditRole && role != Qt::CheckStateRole)) return false;
  const dao::FieldDef* field = fieldOf(index.column());
  if (!field) return false;
  if (role == Qt::CheckStateRole)
    return setValue(index.row(), field->name, value.toInt() == Qt::Checked ? -1 : 0);
  const QVariant wanted = converted(value);
  const int position = fields_[static_cast<size_t>(index.column())];
  const QVariant held = fieldValue(index.row(), position);
  const bool emptied = wanted.isNull() && !held.isNull() && held.toString().isEmpty();
  // An editor that is closed without a change changes nothing, but for a stored empty text: it becomes Null.
  if (!emptied && value.toString() == data(index, Qt::EditRole).toString()) return true;
  return hold(index.row(), position, wanted, true);
}

/// The value as the field holds it; of a text that is no number, the failure says what would be one.
QVariant BoundRows::storable(int field, const QVariant& value) const {
  try {
    return list_.convertedTo(field, value);
  } catch (const Error& error) {
    const dao::FieldDef& def = list_.fieldDef(field);
    if (error.number() != errors::kConversionFailed || value.typeId() != QMetaType::QString ||
        !isNumber(def.type))
      throw;
    const QString expected =
        isWhole(def.type) ? "eine ganze Zahl, zum Beispiel 12" : "eine Zahl mit Komma, zum Beispiel 2,5";
    throw Error(errors::kConversionFailed,
                "In \"" + def.name + "\" steht " + expected + "; \"" + value.toString() + "\" ist keine.");
  }
}

bool BoundRows::setValue(int row, const QString& field, const QVariant& value) {
  return hold(row, list_.fieldPosition(field), value, false);
}

bool BoundRows::hold(int row, int position, const QVariant& value, bool typed) {
  if (edited_ && edited_->row != row && !submitRow()) return false;
  // A value that the field can't hold is refused here, not when the row is left.
  QVariant stored;
  bool fits = false;
  const bool goOn =
      reported(report_, [&](Steps& step) { fits = step([&] { stored = storable(position, value); }); });
  if (!fits) return goOn;
  if (typed && check_ && !check_(row, list_.fieldDef(position).name, stored)) return false;
  if (!edited_) edited_ = Edited{row, {}};
  edited_->values.insert(position, stored);
  rowChanged(row);
  return true;
}

bool BoundRows::submitRow() {
  if (!edited_) return true;
  const int row = edited_->row;
  if (beforeUpdate_ && !beforeUpdate_(row)) {
    cancelRow();
    return false;
  }
  const bool goOn = reported(report_, [&](Steps& step) {
    step([&] {
      if (isNewRow(row))
        list_.insert(edited_->values);
      else
        list_.update(row, edited_->values);
    });
  });
  if (goOn) cancelRow();
  return goOn;
}

void BoundRows::cancelRow() {
  if (!edited_) return;
  const int row = edited_->row;
  edited_.reset();
  read_.remove(row);
  rowChanged(row);
}

void BoundRows::rowChanged(int row) {
  Q_EMIT dataChanged(index(row, 0), index(row, columnCount() - 1));
}

// --- deleting

bool BoundRows::removeBookmarked(const QList<QByteArray>& bookmarks, int* removed) {
  cancelRow();
  return reported(report_, [&](Steps& step) {
    for (const QByteArray& bookmark : bookmarks) {
      const int row = rowOf(bookmark);
      QVariantList values;
      bool there = false;
      if (row < 0 || !step([&] { there = list_.read(row, values); })) continue;
      if (there && !step([&] { list_.remove(row); })) continue;
      if (there && removed) ++*removed;
      beginRemoveRows({}, row, row);
      list_.drop(row, 1);
      forgetCells();
      endRemoveRows();
    }
    Q_EMIT counted();
  });
}

bool BoundRows::removeFirst(int milliseconds) {
  cancelRow();
  QElapsedTimer time;
  time.start();
  int removed = 0;
  const bool goOn = reported(report_, [&](Steps& step) {
    do {
      if (step([&] { list_.remove(removed); })) ++removed;
    } while (removed < count() && time.elapsed() < milliseconds);
  });
  if (removed > 0) {
    beginRemoveRows({}, 0, removed - 1);
    list_.drop(0, removed);
    forgetCells();
    endRemoveRows();
    Q_EMIT counted();
  }
  return goOn;
}

}  // namespace qk
