#include "masterdata/lists/import_record.h"

#include <QDataStream>
#include <QIODevice>

namespace qk::lists {

namespace {

constexpr quint32 Format = 1;
constexpr quint64 FnvBasis = 14695981039346656037u;
constexpr quint64 FnvPrime = 1099511628211u;

void add(quint64& digest, quint64 unit) {
  digest = (digest ^ unit) * FnvPrime;
}

void add(quint64& digest, const QString& text) {
  for (const QChar c : text) add(digest, c.unicode());
}

QDataStream& operator<<(QDataStream& stream, const WrittenRow& row) {
  stream << row.table << row.key << row.isNew << row.digest << static_cast<quint32>(row.values.size());
  for (const WrittenValue& value : row.values) stream << value.column << value.before << value.after;
  return stream;
}

QDataStream& operator>>(QDataStream& stream, WrittenRow& row) {
  quint32 count = 0;
  stream >> row.table >> row.key >> row.isNew >> row.digest >> count;
  for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
    WrittenValue value;
    stream >> value.column >> value.before >> value.after;
    row.values.push_back(value);
  }
  return stream;
}

}  // namespace

quint64 digestOf(const QVariantList& row, const dao::TableDef& table) {
  quint64 digest = FnvBasis;
  for (size_t i = 0; i < table.fields.size(); ++i) {
    const QVariant& value = row[static_cast<qsizetype>(i)];
    if (!table.fields[i].autoNumber && value.isValid()) {
      if (value.userType() == QMetaType::Int)
        add(digest, static_cast<quint64>(value.toInt()) + 1);
      else
        add(digest, value.toString());
    }
    add(digest, 0x10000 + i);  // behind every value, so that none slips into the next column
  }
  return digest;
}

QByteArray packed(const std::vector<WrittenRow>& rows) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  stream.setVersion(QDataStream::Qt_6_0);
  stream << Format << static_cast<quint32>(rows.size());
  for (const WrittenRow& row : rows) stream << row;
  return qCompress(bytes, 1);
}

std::optional<std::vector<WrittenRow>> unpacked(const QByteArray& bytes) {
  const QByteArray inner = qUncompress(bytes);
  QDataStream stream(inner);
  stream.setVersion(QDataStream::Qt_6_0);
  quint32 format = 0, count = 0;
  stream >> format >> count;
  if (format != Format) return {};
  std::vector<WrittenRow> rows;
  for (; count > 0 && stream.status() == QDataStream::Ok; --count) {
    WrittenRow row;
    stream >> row;
    rows.push_back(std::move(row));
  }
  if (stream.status() != QDataStream::Ok) return {};
  return rows;
}

}  // namespace qk::lists
