#include "platform/grid/text_table.h"

#include <algorithm>

#include "platform/runtime/error.h"

namespace qk {

namespace {

const QString kUnticked = "0";

bool isTick(const QString& text) {
  return text == "-1" || text == "1";
}

}  // namespace

TextTable::TextTable(int columns, QObject* parent) : QAbstractTableModel(parent) {
  rows_.append(Row{});
  setColumns(columns);
}

int TextTable::rows() const {
  return int(rows_.size());
}

int TextTable::columns() const {
  return int(columns_.size());
}

void TextTable::setRows(int count) {
  if (count < 1) throw Error(errors::kIndexOutOfRange);
  const int former = rows();
  if (count > former) {
    beginInsertRows({}, former - 1, count - 2);
    rows_.resize(count);
    for (int row = former; row < count; ++row) rows_[row].cells.resize(columns());
    endInsertRows();
  } else if (count < former) {
    beginRemoveRows({}, count - 1, former - 2);
    rows_.resize(count);
    endRemoveRows();
  }
}

void TextTable::setColumns(int count) {
  if (count < 0) throw Error(errors::kIndexOutOfRange);
  const int former = columns();
  if (count == former) return;
  const bool growing = count > former;
  if (growing)
    beginInsertColumns({}, former, count - 1);
  else
    beginRemoveColumns({}, count, former - 1);
  columns_.resize(count);
  for (Row& row : rows_) {
    row.cells.resize(count);
    row.looks.removeIf([count](const auto& look) { return look.key() >= count; });
  }
  if (growing)
    endInsertColumns();
  else
    endRemoveColumns();
}

int TextTable::addRow(const QStringList& cells, const QString& rowData) {
  if (cells.size() > columns()) throw Error(errors::kIndexOutOfRange);
  Row row;
  row.cells = cells;
  row.cells.resize(columns());
  row.data = rowData;
  const int number = rows();
  beginInsertRows({}, number - 1, number - 1);
  rows_.append(std::move(row));
  endInsertRows();
  return number;
}

void TextTable::removeRow(int row) {
  if (row < 1) throw Error(errors::kIndexOutOfRange);
  rowAt(row);
  beginRemoveRows({}, row - 1, row - 1);
  rows_.removeAt(row);
  endRemoveRows();
}

QString TextTable::text(int row, int column) const {
  checkColumn(column);
  return rowAt(row).cells.at(column);
}

void TextTable::setText(int row, int column, const QString& text) {
  checkColumn(column);
  QString& cell = rowAt(row).cells[column];
  if (cell == text) return;
  cell = text;
  cellChanged(row, column);
}

QString TextTable::rowData(int row) const {
  return rowAt(row).data;
}

void TextTable::setRowData(int row, const QString& data) {
  rowAt(row).data = data;
}

int TextTable::findRow(const QString& rowData) const {
  const auto found =
      std::find_if(rows_.begin() + 1, rows_.end(), [&](const Row& row) { return row.data == rowData; });
  return found == rows_.end() ? -1 : int(found - rows_.begin());
}

void TextTable::clearCells(int firstRow, int firstColumn) {
  checkColumn(firstColumn);
  rowAt(firstRow);
  for (int row = firstRow; row < rows(); ++row)
    for (int column = firstColumn; column < columns(); ++column) rows_[row].cells[column].clear();
  if (firstRow == 0) Q_EMIT headerDataChanged(Qt::Horizontal, firstColumn, columns() - 1);
  if (rows() > 1)
    Q_EMIT dataChanged(index(std::max(firstRow, 1) - 1, firstColumn), index(rows() - 2, columns() - 1));
}

int TextTable::columnWidth(int column) const {
  checkColumn(column);
  return columns_.at(column).width;
}

void TextTable::setColumnWidth(int column, int twips) {
  checkColumn(column);
  columns_[column].width = twips;
  Q_EMIT sizesChanged();
}

int TextTable::rowHeight(int row) const {
  return rowAt(row).height;
}

void TextTable::setRowHeight(int row, int twips) {
  rowAt(row).height = twips;
  Q_EMIT sizesChanged();
}

bool TextTable::isTickColumn(int column) const {
  checkColumn(column);
  return !columns_.at(column).tick.isEmpty();
}

void TextTable::setTickColumn(int column, const QString& tickedText) {
  checkColumn(column);
  columns_[column].tick = tickedText;
  columns_[column].editable = true;
  Q_EMIT sizesChanged();
}

bool TextTable::isTicked(int row, int column) const {
  checkColumn(column);
  rowAt(row);
  return isOn(row, column);
}

bool TextTable::isEditable(int column) const {
  checkColumn(column);
  return columns_.at(column).editable;
}

void TextTable::setEditable(int column, bool editable) {
  checkColumn(column);
  columns_[column].editable = editable;
}

bool TextTable::isRightAligned(int column) const {
  checkColumn(column);
  return columns_.at(column).right;
}

void TextTable::setRightAligned(int column, bool right) {
  checkColumn(column);
  columns_[column].right = right;
  if (rows() > 1) Q_EMIT dataChanged(index(0, column), index(rows() - 2, column), {Qt::TextAlignmentRole});
  Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
}

void TextTable::setDisplay(int column, std::function<QString(const QString&)> display) {
  checkColumn(column);
  columns_[column].display = std::move(display);
  if (rows() > 1) Q_EMIT dataChanged(index(0, column), index(rows() - 2, column), {Qt::DisplayRole});
}

TextTable::CellLook TextTable::cellLook(int row, int column) const {
  checkColumn(column);
  return rowAt(row).looks.value(column);
}

void TextTable::setCellLook(int row, int column, const CellLook& look) {
  checkColumn(column);
  rowAt(row).looks.insert(column, look);
  cellChanged(row, column, {Qt::FontRole, Qt::ForegroundRole, Qt::BackgroundRole});
  if (look.font) Q_EMIT sizesChanged();
}

QVector<int> TextTable::rowsWithOwnHeight() const {
  QVector<int> result;
  for (int row = 1; row < rows(); ++row)
    if (rows_.at(row).height >= 0 || !rows_.at(row).looks.isEmpty()) result.append(row);
  return result;
}

int TextTable::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows() - 1;
}

int TextTable::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns();
}

QVariant TextTable::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  const int row = index.row() + 1;
  const int column = index.column();
  const Row& cells = rows_.at(row);
  const ColumnTraits& traits = columns_.at(column);
  const bool tick = !traits.tick.isEmpty();
  const auto shown = [&] {
    const QString& text = cells.cells.at(column);
    return traits.display ? traits.display(text) : text;
  };
  switch (role) {
    case Qt::DisplayRole:
      return tick ? QVariant() : QVariant(shown());
    case Qt::EditRole:
      return cells.cells.at(column);
    case Qt::CheckStateRole:
      return tick ? QVariant(isOn(row, column) ? Qt::Checked : Qt::Unchecked) : QVariant();
    case Qt::AccessibleTextRole:
      if (!tick) return shown();
      return isOn(row, column) ? QString("angewählt") : QString("nicht angewählt");
    case Qt::TextAlignmentRole:
      return int((traits.right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
    default:
      break;
  }
  const auto look = cells.looks.constFind(column);
  if (look == cells.looks.constEnd()) return {};
  if (role == Qt::FontRole && look->font) return *look->font;
  if (role == Qt::ForegroundRole && look->fore) return QBrush(*look->fore);
  if (role == Qt::BackgroundRole && look->back) return QBrush(*look->back);
  return {};
}

bool TextTable::setData(const QModelIndex& index, const QVariant& value, int role) {
  if (!index.isValid()) return false;
  const int row = index.row() + 1;
  const int column = index.column();
  const ColumnTraits& traits = columns_.at(column);
  const bool tick = !traits.tick.isEmpty();
  if (!traits.editable || role != (tick ? Qt::CheckStateRole : Qt::EditRole)) return false;
  if (tick)
    setText(row, column, value.toInt() == Qt::Checked ? traits.tick : kUnticked);
  else
    setText(row, column, value.toString());
  Q_EMIT edited(row, column);
  return true;
}

QVariant TextTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columns()) return {};
  if (role == Qt::DisplayRole) return rows_.constFirst().cells.at(section);
  if (role == Qt::TextAlignmentRole)
    return int((columns_.at(section).right ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter);
  return {};
}

Qt::ItemFlags TextTable::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  const ColumnTraits& traits = columns_.at(index.column());
  Qt::ItemFlags flags = Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
  if (traits.editable) flags |= traits.tick.isEmpty() ? Qt::ItemIsEditable : Qt::ItemIsUserCheckable;
  return flags;
}

TextTable::Row& TextTable::rowAt(int row) {
  if (row < 0 || row >= rows()) throw Error(errors::kIndexOutOfRange);
  return rows_[row];
}

const TextTable::Row& TextTable::rowAt(int row) const {
  if (row < 0 || row >= rows()) throw Error(errors::kIndexOutOfRange);
  return rows_.at(row);
}

void TextTable::checkColumn(int column) const {
  if (column < 0 || column >= columns()) throw Error(errors::kIndexOutOfRange);
}

bool TextTable::isOn(int row, int column) const {
  return isTick(rows_.at(row).cells.at(column));
}

void TextTable::cellChanged(int row, int column, const QList<int>& roles) {
  if (row == 0) {
    Q_EMIT headerDataChanged(Qt::Horizontal, column, column);
    return;
  }
  const QModelIndex cell = index(row - 1, column);
  Q_EMIT dataChanged(cell, cell, roles);
}

}  // namespace qk
