#include "platform/report/csv.h"

#include <QIODevice>

#include "platform/report/filling.h"
#include "platform/report/formats.h"
#include "platform/report/row_buffer.h"
#include "platform/runtime/error.h"
#include "platform/runtime/formula_guard.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"

namespace qk::report {

namespace {

constexpr int kRowsAtOnce = 1000;

/// A value as a spreadsheet reads it: money and numbers without a unit or points between the thousands.
QString plainText(const QVariant& value) {
  if (value.typeId() == qMetaTypeId<Money>()) {
    QString text = value.value<Money>().toCurrencyText();
    return text.chopped(2).remove(u'.');
  }
  return formatted(value, std::nullopt);
}

/// A text that reads as a number stays as it is, and a lone sign is a dash; any other that a spreadsheet
/// would run is guarded.
QString harmless(const QVariant& value, const QString& text) {
  const bool isText = value.typeId() == QMetaType::QString;
  return isText && text.size() > 1 && !isNumeric(text) ? guarded(text) : text;
}

QString quoted(QString text) {
  const bool needs =
      text.contains(u';') || text.contains(u'"') || text.contains(u'\n') || text.contains(u'\r');
  return needs ? "\"" + text.replace("\"", "\"\"") + "\"" : text;
}

void write(QIODevice& device, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  if (device.write(bytes) != bytes.size()) throw Error(errors::kPathAccess);
}

QStringList headings(const Part& part, const std::vector<dao::FieldDef>& fields) {
  QStringList names;
  for (const Column& column : part.columns) names << quoted(column.heading);
  if (part.columns.empty())
    for (const dao::FieldDef& field : fields) names << quoted(field.name);
  return names;
}

QString lineOf(const Part& part, const Known& known) {
  QStringList cells;
  for (const Column& column : part.columns) {
    const bool lone = column.value.pieces.size() == 1;
    const QVariant value = valueOf(column.value, known);
    const auto format = lone ? column.value.pieces.front().format : std::nullopt;
    const bool dated =
        format && format->kind != Format::Kind::Currency && format->kind != Format::Kind::Number;
    cells << quoted(harmless(value, dated ? formatted(value, format) : plainText(value)));
  }
  if (part.columns.empty())
    for (const QVariant& value : *known.row) cells << quoted(harmless(value, plainText(value)));
  return cells.join(u';') + "\r\n";
}

}  // namespace

bool writeCsvPart(QIODevice& device, const Part& part, const std::vector<dao::FieldDef>& fields,
                  const RowBuffer& rows, const QVariantList& fixed, bool first,
                  const std::function<bool(int done, int all)>& goesOn) {
  QString text = first ? QString(QChar(0xFEFF)) : QString("\r\n");
  if (!first && !part.name.isEmpty()) text += quoted(part.name) + "\r\n";
  text += headings(part, fields).join(u';') + "\r\n";
  QVariantList values;
  const int count = rows.count();
  for (int row = 0; row < count; ++row) {
    rows.read(row, values);
    text += lineOf(part, {.fixed = &fixed, .row = &values, .rowNumber = row});
    if ((row + 1) % kRowsAtOnce != 0) continue;
    write(device, text);
    text.clear();
    if (goesOn && !goesOn(row + 1, count)) return false;
  }
  write(device, text);
  return true;
}

}  // namespace qk::report
