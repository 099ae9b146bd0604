#include "platform/dao/sql/native_values.h"

#include <QDateTime>
#include <cmath>

#include "platform/dao/sql/resolver.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"

namespace qk::dao::sql {
namespace {

constexpr double kSecondsPerDay = 86400.0;

[[noreturn]] void throwMismatch() {
  throw Error(errors::kCriterionTypes);
}

bool isText(const QVariant& value) {
  return value.userType() == QMetaType::QString;
}

/// Texts are read as German numbers; a decimal point is taken too, for query texts carry it.
QVariant numberOf(const QVariant& value) {
  switch (value.userType()) {
    case QMetaType::Bool:
      return value.toBool() ? -1 : 0;
    case QMetaType::QDateTime:
      return serialOfDate(value.toDateTime());
    case QMetaType::QString: {
      const QString text = value.toString().trimmed();
      bool ok = false;
      const qlonglong whole = text.toLongLong(&ok);
      if (ok) return whole;
      if (isNumeric(text)) return parseStrict(text);
      const double real = text.toDouble(&ok);
      if (!ok) throwMismatch();
      return real;
    }
    default:
      return value.userType() == qMetaTypeId<Money>() ? QVariant(value.value<Money>().toDouble()) : value;
  }
}

/// Whole numbers round halves to even.
QVariant wholeOf(const QVariant& value, double least, double greatest) {
  const double rounded = std::nearbyint(numberOf(value).toDouble());
  if (!(rounded >= least && rounded <= greatest)) throw Error(errors::kOverflow);
  return qlonglong(rounded);
}

QVariant booleanOf(const QVariant& value) {
  if (isText(value)) {
    const QString text = value.toString().trimmed();
    for (const char* yes : {"true", "wahr", "ja"}) {
      if (text.compare(QLatin1String(yes), Qt::CaseInsensitive) == 0) return -1;
    }
    for (const char* no : {"false", "falsch", "nein"}) {
      if (text.compare(QLatin1String(no), Qt::CaseInsensitive) == 0) return 0;
    }
  }
  return numberOf(value);
}

QVariant dateOf(const QVariant& value) {
  if (value.userType() == QMetaType::QDateTime) return isoText(value.toDateTime());
  if (!isText(value)) return isoText(dateOfSerial(numberOf(value).toDouble()));
  const QString text = value.toString();
  if (!isDate(text)) throwMismatch();
  return isoText(parseDate(text));
}

QVariant textOf(const QVariant& value) {
  switch (value.userType()) {
    case QMetaType::Bool:
      return value.toBool() ? "-1" : "0";
    case QMetaType::QDateTime:
      return dateText(value.toDateTime());
    case QMetaType::Double:
      return numberText(value.toDouble());
    case QMetaType::QString:
      return value;
    default:
      return value.userType() == qMetaTypeId<Money>() ? value.value<Money>().toText() : value.toString();
  }
}

/// A decimal text is taken digit by digit: a double holds no more than fifteen of them.
Money moneyOf(const QVariant& native) {
  if (!isText(native)) return Money::fromDouble(native.toDouble());
  constexpr qsizetype kDecimals = 4;
  const QString text = native.toString();
  const qsizetype mark = text.indexOf(u'.');
  const QString behind = mark < 0 ? QString() : text.mid(mark + 1);
  bool ok = false;
  const qint64 units =
      QString(text.left(mark < 0 ? text.size() : mark) + behind.leftJustified(kDecimals, u'0'))
          .toLongLong(&ok);
  return ok && behind.size() <= kDecimals ? Money::fromUnits(units) : Money::fromDouble(text.toDouble());
}

}  // namespace

std::pair<double, double> limitsOf(Kind kind) {
  switch (kind) {
    case Kind::Byte:
      return {0, 255};
    case Kind::Integer:
      return {-32768, 32767};
    default:
      return {-2147483648.0, 2147483647.0};
  }
}

/// Digit by digit, for the toolkit reads its format anew each time, and this is done with each row.
QString isoText(const QDateTime& date) {
  const QDate day = date.date();
  if (!date.isValid() || day.year() < 0 || day.year() > 9999) return date.toString(u"yyyy-MM-dd HH:mm:ss");
  const QTime time = date.time();
  QString text = "0000-00-00 00:00:00";
  QChar* const place = text.data();
  const auto put = [place](qsizetype last, int number) {
    for (; number > 0; number /= 10) place[last--] = QChar(u'0' + number % 10);
  };
  put(3, day.year());
  put(6, day.month());
  put(9, day.day());
  put(12, time.hour());
  put(15, time.minute());
  put(18, time.second());
  return text;
}

QDateTime dateOfIso(QStringView iso) {
  const auto number = [iso](qsizetype at, qsizetype length) {
    int result = 0;
    for (qsizetype i = at; i < at + length; ++i) {
      const char16_t digit = iso[i].unicode();
      if (digit < u'0' || digit > u'9') return -1;
      result = result * 10 + (digit - u'0');
    }
    return result;
  };
  if (iso.size() < 10 || iso[4] != u'-' || iso[7] != u'-') return {};
  const QDate date(number(0, 4), number(5, 2), number(8, 2));
  QTime time(0, 0);
  if (iso.size() > 10) {
    if (iso.size() < 19 || iso[13] != u':' || iso[16] != u':') return {};
    time = QTime(number(11, 2), number(14, 2), number(17, 2));
  }
  return date.isValid() && time.isValid() ? QDateTime(date, time) : QDateTime();
}

QDateTime dateOfSerial(double serial) {
  if (!std::isfinite(serial) || std::abs(serial) > 3e6) throwMismatch();
  const double days = std::floor(serial);
  const int seconds = int(std::lround((serial - days) * kSecondsPerDay));
  const QDate date = dateZero().date().addDays(qint64(days));
  // Wall-clock arithmetic: a day has 86400 seconds here whatever the time zone says.
  return seconds == 86400 ? QDateTime(date.addDays(1), QTime(0, 0))
                          : momentOf(date, QTime(0, 0).addSecs(seconds));
}

double serialOfDate(const QDateTime& date) {
  const qint64 days = dateZero().date().daysTo(date.date());
  return double(days) + QTime(0, 0).secsTo(date.time()) / kSecondsPerDay;
}

QVariant toNative(const QVariant& value, Kind kind) {
  if (!value.isValid() || value.isNull()) return {};
  switch (kind) {
    case Kind::Boolean:
      return booleanOf(value);
    case Kind::Number:
    case Kind::Money:
      return numberOf(value);
    case Kind::Date:
      return dateOf(value);
    case Kind::Text:
      return textOf(value);
    case Kind::Byte:
    case Kind::Integer:
    case Kind::Long: {
      const auto [least, greatest] = limitsOf(kind);
      return wholeOf(value, least, greatest);
    }
    case Kind::Unknown:
      break;
  }
  if (value.userType() == QMetaType::QDateTime) return isoText(value.toDateTime());
  if (value.userType() == QMetaType::Bool) return value.toBool() ? -1 : 0;
  return value;
}

QVariant nativeFieldValue(const QVariant& value, FieldType type) {
  QVariant native = toNative(value, kindOf(type));
  if (type == FieldType::Boolean) native = native.toDouble() != 0 ? -1 : 0;
  return native;
}

QVariant fromNative(const QVariant& native, FieldType type) {
  if (!native.isValid() || native.isNull()) return {};
  switch (type) {
    case FieldType::Boolean:
      return native.toDouble() != 0 ? -1 : 0;
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
      return native.userType() == QMetaType::LongLong ? native.toInt()
                                                      : int(std::nearbyint(native.toDouble()));
    case FieldType::Single:
    case FieldType::Double:
      return native.toDouble();
    case FieldType::Currency:
      return QVariant::fromValue(moneyOf(native));
    case FieldType::Date: {
      if (!isText(native)) return dateOfSerial(native.toDouble());
      const QDateTime date = dateOfIso(native.toString());
      return date.isValid() ? QVariant(date) : QVariant();
    }
    case FieldType::Text:
    case FieldType::Memo:
      return native.toString();
    case FieldType::LongBinary:
      break;
  }
  return native.toByteArray();
}

QVariant presetOfDefault(const QString& text, FieldType type) {
  if (text.size() >= 2 && text.startsWith('\'') && text.endsWith('\''))
    return fromNative(text.mid(1, text.size() - 2).replace("''", "'"), type);
  bool isNumber = false;
  const double number = text.toDouble(&isNumber);
  if (!isNumber) return {};
  if (number == static_cast<double>(static_cast<qlonglong>(number)))
    return fromNative(static_cast<qlonglong>(number), type);
  return fromNative(number, type);
}

}  // namespace qk::dao::sql
