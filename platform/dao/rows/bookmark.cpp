#include "platform/dao/rows/bookmark.h"

#include <QDataStream>
#include <QIODevice>

namespace qk::dao {
namespace {

enum Part : quint8 { Null, Number, Real, Text, Bytes };

void put(QDataStream& stream, const QVariant& part) {
  switch (part.typeId()) {
    case QMetaType::UnknownType:
      stream << quint8(Null);
      break;
    case QMetaType::LongLong:
    case QMetaType::Int:
      stream << quint8(Number) << part.toLongLong();
      break;
    case QMetaType::Double:
      stream << quint8(Real) << part.toDouble();
      break;
    case QMetaType::QByteArray:
      stream << quint8(Bytes) << part.toByteArray();
      break;
    default:
      stream << quint8(Text) << part.toString().toUtf8();
  }
}

template <class Value>
Value taken(QDataStream& stream) {
  Value value{};
  stream >> value;
  return value;
}

QVariant take(QDataStream& stream) {
  switch (taken<quint8>(stream)) {
    case Null:
      return {};
    case Number:
      return taken<qlonglong>(stream);
    case Real:
      return taken<double>(stream);
    case Bytes:
      return taken<QByteArray>(stream);
    case Text:
      return QString::fromUtf8(taken<QByteArray>(stream));
    default:
      stream.setStatus(QDataStream::ReadCorruptData);
      return {};
  }
}

}  // namespace

QByteArray bookmarkOf(const Key& key) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  for (const QVariant& part : key) put(stream, part);
  return bytes;
}

std::optional<Key> keyOfBookmark(const QByteArray& bookmark, int width) {
  QDataStream stream(bookmark);
  Key key;
  for (int i = 0; i < width; ++i) key.append(take(stream));
  if (stream.status() != QDataStream::Ok || !stream.atEnd()) return {};
  return key;
}

}  // namespace qk::dao
