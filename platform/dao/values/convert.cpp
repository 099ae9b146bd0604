#include "platform/dao/values/convert.h"

#include <cmath>
#include <limits>

#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"

namespace qk::dao {
namespace {

constexpr int kDefaultTextSize = 255;
constexpr qint64 kMillisecondsPerDay = 86400000;

bool isMoney(const QVariant& value) {
  return value.typeId() == qMetaTypeId<Money>();
}

double textNumber(const QString& text) {
  if (!isNumeric(text)) throw Error(errors::kConversionFailed);
  return parseStrict(text);
}

double dateNumber(const QDateTime& date) {
  const QDateTime zero = dateZero();
  return static_cast<double>(zero.daysTo(date)) +
         static_cast<double>(date.time().msecsSinceStartOfDay()) / static_cast<double>(kMillisecondsPerDay);
}

double number(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Bool:
      return value.toBool() ? -1 : 0;
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Short:
    case QMetaType::UShort:
    case QMetaType::UChar:
    case QMetaType::Long:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Float:
    case QMetaType::Double:
      return value.toDouble();
    case QMetaType::QString:
      return textNumber(value.toString());
    case QMetaType::QDate:
    case QMetaType::QDateTime:
      return dateNumber(value.toDateTime());
    default:
      break;
  }
  if (isMoney(value)) return value.value<Money>().toDouble();
  throw Error(errors::kConversionFailed);
}

/// Whole numbers round halves to even.
int whole(const QVariant& value, int least, int greatest) {
  if (value.typeId() == QMetaType::Int && value.toInt() >= least && value.toInt() <= greatest)
    return value.toInt();
  const double rounded = std::nearbyint(number(value));
  if (!(rounded >= least && rounded <= greatest)) throw Error(errors::kConversionFailed);
  return static_cast<int>(rounded);
}

int yesNo(const QVariant& value) {
  if (value.typeId() == QMetaType::Bool) return value.toBool() ? -1 : 0;
  if (value.typeId() == QMetaType::QString) {
    const QString text = value.toString().trimmed();
    if (sameName(text, "True") || sameName(text, "Wahr")) return -1;
    if (sameName(text, "False") || sameName(text, "Falsch")) return 0;
  }
  return number(value) != 0 ? -1 : 0;
}

QDateTime anyDate(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QDateTime:
      return value.toDateTime();
    case QMetaType::QDate:
      return value.toDate().startOfDay();
    case QMetaType::QString:
      if (isDate(value.toString())) return parseDate(value.toString());
      break;
    default:
      break;
  }
  const double days = number(value);
  const double wholeDays = std::floor(days);
  if (!(std::abs(wholeDays) < 3000000)) throw Error(errors::kConversionFailed);
  const qint64 milliseconds = std::llround((days - wholeDays) * static_cast<double>(kMillisecondsPerDay));
  // By the day and its clock: on the days of a clock change a moment plus milliseconds is another hour.
  const QDate day = dateZero().date().addDays(static_cast<qint64>(wholeDays));
  if (milliseconds == kMillisecondsPerDay) return {day.addDays(1), QTime(0, 0)};
  return momentOf(day, QTime::fromMSecsSinceStartOfDay(static_cast<int>(milliseconds)));
}

/// The years that every engine and the texts of dates can hold.
QDateTime date(const QVariant& value) {
  QDateTime found = anyDate(value);
  if (const int year = found.date().year(); year < 100 || year > 9999) throw Error(errors::kConversionFailed);
  return found;
}

double finite(double value) {
  if (!std::isfinite(value)) throw Error(errors::kOverflow);
  return value;
}

/// Without NUL characters: not every engine holds them.
QString text(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::QString:
      return value.toString().remove(QChar(u'\0'));
    case QMetaType::QDate:
    case QMetaType::QDateTime:
      return dateText(value.toDateTime());
    default:
      break;
  }
  if (isMoney(value)) return value.value<Money>().toText();
  return numberText(number(value));
}

QString textUpTo(const QVariant& value, int size) {
  QString whole = text(value);
  if (whole.size() > (size > 0 ? size : kDefaultTextSize)) throw Error(errors::kTextTooLong);
  return whole;
}

}  // namespace

QVariant convertedValue(const QVariant& value, const FieldDef& field) {
  if (!value.isValid() || value.isNull()) return field.type == FieldType::Boolean ? QVariant(0) : QVariant();
  switch (field.type) {
    case FieldType::Boolean:
      return yesNo(value);
    case FieldType::Byte:
      return whole(value, 0, 255);
    case FieldType::Integer:
      return whole(value, std::numeric_limits<short>::min(), std::numeric_limits<short>::max());
    case FieldType::Long:
      return whole(value, std::numeric_limits<int>::min(), std::numeric_limits<int>::max());
    case FieldType::Currency:
      return QVariant::fromValue(isMoney(value) ? value.value<Money>() : Money::fromDouble(number(value)));
    case FieldType::Single:
      return finite(static_cast<double>(static_cast<float>(number(value))));
    case FieldType::Double:
      return finite(number(value));
    case FieldType::Date:
      return date(value);
    case FieldType::Text:
      return textUpTo(value, field.size);
    case FieldType::Memo:
      return text(value);
    case FieldType::LongBinary:
      if (value.typeId() != QMetaType::QByteArray) throw Error(errors::kConversionFailed);
      return value;
  }
  throw Error(errors::kConversionFailed);
}

QVariant presetValue(const FieldDef& field) {
  return convertedValue(field.preset, field);
}

void requireAllowed(const QVariant& value, const FieldDef& field) {
  if (field.required && !field.autoNumber && !value.isValid()) throw Error(errors::kRequiredField);
  if (!field.allowZeroLength && value.typeId() == QMetaType::QString && value.toString().isEmpty())
    throw Error(errors::kEmptyText);
}

QVariant literalValue(const QVariant& value) {
  if (isMoney(value)) return value.value<Money>().toDouble();
  if (value.typeId() == QMetaType::Int) return value.toLongLong();
  return value;
}

}  // namespace qk::dao
