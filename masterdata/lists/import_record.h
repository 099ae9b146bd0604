// What takes an import back: for each row it wrote, what stood there before and how to tell that it still is
// as the import left it. Of a new row only a digest is kept, so that nobody's data lie about twice.
#pragma once

#include <QByteArray>
#include <QString>
#include <QVariant>
#include <optional>
#include <vector>

#include "platform/dao/values/types.h"

namespace qk::lists {

struct WrittenValue {
  QString column;
  QVariant before, after;
};

struct WrittenRow {
  QString table;
  qint64 key = 0;
  bool isNew = false;
  quint64 digest = 0;                ///< of a new row, digestOf() it
  std::vector<WrittenValue> values;  ///< of a changed one
};

/// Of all the values of a row in the order of the table's fields, the key left out. Null is like nothing.
quint64 digestOf(const QVariantList& row, const dao::TableDef& table);

QByteArray packed(const std::vector<WrittenRow>& rows);
/// Nothing for bytes that packed() didn't make.
std::optional<std::vector<WrittenRow>> unpacked(const QByteArray& bytes);

}  // namespace qk::lists
