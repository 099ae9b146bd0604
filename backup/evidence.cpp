#include "backup/evidence.h"

#include <QCryptographicHash>
#include <QDataStream>
#include <QFileInfo>
#include <QHash>
#include <algorithm>

#include "platform/dao/values/catalogue.h"
#include "platform/runtime/money.h"

namespace qk {

namespace {

const QString kTitle = "QK-Beleg 1";
const QString kOwn = "Beleg";
const QString kTable = "Tabelle";

QByteArray sha256Of(const QByteArray& bytes) {
  return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

/// A path may hold any character, a line can't.
QString onOneLine(QString text) {
  return text.replace('\n', ' ').replace('\r', ' ');
}

QString hex(quint64 number) {
  return QString("%1").arg(number, 16, 16, QChar('0'));
}

std::optional<quint64> numberIn(const QString& text, int base) {
  bool ok = false;
  const quint64 number = text.toULongLong(&ok, base);
  return ok ? std::optional(number) : std::nullopt;
}

std::optional<TableEvidence> tableIn(const QString& value) {
  const qsizetype first = value.indexOf(' '), second = value.indexOf(' ', first + 1);
  if (first < 0 || second < 0) return {};
  const auto rows = numberIn(value.left(first), 10);
  const auto digest = numberIn(value.mid(first + 1, second - first - 1), 16);
  if (!rows || !digest) return {};
  return TableEvidence{value.mid(second + 1), static_cast<qint64>(*rows), *digest};
}

/// The text without its last line, if that one is right.
std::optional<QByteArray> untouched(const QByteArray& text) {
  const QByteArray mark = kOwn.toUtf8() + ": ";
  const qsizetype last = text.lastIndexOf("\n" + mark) + 1;
  if (last == 0) return {};
  const QByteArray body = text.left(last);
  if (text.mid(last) != mark + sha256Of(body).toHex() + "\n") return {};
  return body;
}

void tell(QDataStream& stream, const QVariant& preset) {
  if (preset.metaType() == QMetaType::fromType<Money>())
    stream << static_cast<qint64>(preset.value<Money>().units());
  else
    stream << preset;
}

void tell(QDataStream& stream, const dao::TableDef& table) {
  stream << table.name;
  for (const dao::FieldDef& field : table.fields) {
    stream << field.name << static_cast<int>(field.type) << field.size << field.autoNumber << field.required
           << field.allowZeroLength;
    tell(stream, field.preset);
  }
  for (const dao::IndexDef& index : table.indexes)
    stream << index.name << index.fields << index.primary << index.unique << index.required;
}

}  // namespace

bool Evidence::isOfSameContents(const Evidence& other) const {
  return structure == other.structure && tables == other.tables;
}

qint64 Evidence::rows() const {
  qint64 all = 0;
  for (const TableEvidence& table : tables) all += table.rows;
  return all;
}

QByteArray evidenceText(const Evidence& evidence) {
  QStringList lines{
      kTitle,
      "Quelle: " + onOneLine(evidence.source),
      "Stand: " + evidence.moment.toOffsetFromUtc(evidence.moment.offsetFromUtc()).toString(Qt::ISODate),
      "Folge: " + QString::number(evidence.sequence),
      "Datei: " + onOneLine(evidence.file),
      "Groesse: " + QString::number(evidence.size),
      "SHA-256: " + QString::fromLatin1(evidence.sha256.toHex()),
      "Aufbau: " + hex(evidence.structure)};
  for (const TableEvidence& table : evidence.tables)
    lines.append(QString("%1: %2 %3 %4").arg(kTable).arg(table.rows).arg(hex(table.digest), table.table));
  const QByteArray body = lines.join('\n').toUtf8() + '\n';
  return body + kOwn.toUtf8() + ": " + sha256Of(body).toHex() + '\n';
}

std::optional<Evidence> evidenceIn(const QByteArray& text) {
  const auto body = untouched(text);
  if (!body) return {};
  const QStringList lines = QString::fromUtf8(*body).split('\n', Qt::SkipEmptyParts);
  if (lines.value(0) != kTitle) return {};
  Evidence evidence;
  QHash<QString, QString> values;
  for (const QString& line : lines.mid(1)) {
    const qsizetype colon = line.indexOf(": ");
    const QString name = line.left(colon), value = line.mid(colon + 2);
    if (name != kTable) {
      values.insert(name, value);
      continue;
    }
    const auto table = tableIn(value);
    if (!table) return {};
    evidence.tables.push_back(*table);
  }
  const auto size = numberIn(values.value("Groesse"), 10), structure = numberIn(values.value("Aufbau"), 16);
  evidence.source = values.value("Quelle");
  evidence.moment = QDateTime::fromString(values.value("Stand"), Qt::ISODate).toLocalTime();
  evidence.sequence = values.value("Folge").toLongLong();
  evidence.file = values.value("Datei");
  evidence.sha256 = QByteArray::fromHex(values.value("SHA-256").toLatin1());
  if (!size || !structure || !evidence.moment.isValid()) return {};
  evidence.size = static_cast<qint64>(*size);
  evidence.structure = *structure;
  return evidence;
}

quint64 structureOf(const dao::Catalogue& catalogue) {
  QByteArray bytes;
  QDataStream stream(&bytes, QIODevice::WriteOnly);
  QStringList tables = catalogue.tableNames(), queries = catalogue.queryNames();
  tables.sort();
  queries.sort();
  for (const QString& table : tables) tell(stream, catalogue.info(table)->def);
  for (const QString& query : queries) stream << query << catalogue.info(query)->text;
  quint64 digest = 0;
  QDataStream(sha256Of(bytes)) >> digest;
  return digest;
}

QString evidencePathOf(const QString& copy) {
  const QFileInfo file(copy);
  return file.path() + '/' + file.completeBaseName() + ".beleg";
}

}  // namespace qk
