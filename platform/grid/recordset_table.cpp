#include "platform/grid/recordset_table.h"

#include <cstdlib>

#include "platform/dao/recordset.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

// Rows kept after they were read: some screens, for scrolling to and fro.
constexpr int kRowsKept = 500;
const QString kDeleted = "#Gelöscht";

bool isNumber(dao::FieldType type) {
  return type > dao::FieldType::Boolean && type < dao::FieldType::Date;
}

QString cellText(const QVariant& value) {
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

RecordsetTable::RecordsetTable(QObject* parent) : QAbstractTableModel(parent), read_(kRowsKept) {}

RecordsetTable::~RecordsetTable() = default;

void RecordsetTable::setRecordset(std::unique_ptr<dao::Recordset> recordset) {
  int rows = 0;
  if (!recordset->eof()) {
    recordset->moveLast();
    rows = recordset->recordCount();
  }
  beginResetModel();
  recordset_ = std::move(recordset);
  rows_ = rows;
  columns_ = recordset_->fieldCount();
  place_ = rows - 1;
  read_.clear();
  endResetModel();
}

void RecordsetTable::setTitles(const QHash<int, QString>& titles) {
  titles_ = titles;
  if (columns_ > 0) Q_EMIT headerDataChanged(Qt::Horizontal, 0, columns_ - 1);
}

int RecordsetTable::rowCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : rows_;
}

int RecordsetTable::columnCount(const QModelIndex& parent) const {
  return parent.isValid() ? 0 : columns_;
}

QVariant RecordsetTable::data(const QModelIndex& index, int role) const {
  if (!index.isValid()) return {};
  if (role == Qt::DisplayRole) return cellsOf(index.row()).value(index.column());
  if (role == Qt::TextAlignmentRole)
    return int((isNumber(recordset_->fieldDef(index.column()).type) ? Qt::AlignRight : Qt::AlignLeft) |
               Qt::AlignVCenter);
  return {};
}

QVariant RecordsetTable::headerData(int section, Qt::Orientation orientation, int role) const {
  if (orientation != Qt::Horizontal || section < 0 || section >= columns_) return {};
  if (role == Qt::DisplayRole) return titles_.value(section, recordset_->fieldDef(section).name);
  if (role == Qt::TextAlignmentRole) return int(Qt::AlignLeft | Qt::AlignVCenter);
  return {};
}

const QStringList& RecordsetTable::cellsOf(int row) const {
  if (const QStringList* known = read_.object(row)) return *known;
  auto* cells = new QStringList;
  try {
    standOn(row);
    for (int column = 0; column < columns_; ++column) cells->append(cellText(recordset_->value(column)));
  } catch (const Error&) {
    // A view that is being painted has nobody to report to.
    *cells = QStringList(columns_, kDeleted);
  }
  read_.insert(row, cells);
  return *cells;
}

void RecordsetTable::standOn(int row) const {
  // A move alone reads no row, so walking is cheap; from the nearest end it is never far.
  const int way = std::abs(row - place_);
  if (row < way) {
    recordset_->moveFirst();
    place_ = 0;
  } else if (rows_ - 1 - row < way) {
    recordset_->moveLast();
    place_ = rows_ - 1;
  }
  for (; place_ < row; ++place_) recordset_->moveNext();
  for (; place_ > row; --place_) recordset_->movePrevious();
}

}  // namespace qk
