#include "platform/report/formats.h"

#include <QDateTime>
#include <QRegularExpression>

#include "platform/runtime/datetext.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"

namespace qk::report {

namespace {

constexpr int kMostDecimals = 9;

bool isMoney(const QVariant& value) {
  return value.typeId() == qMetaTypeId<Money>();
}

bool isNumber(const QVariant& value) {
  switch (value.typeId()) {
    case QMetaType::Int:
    case QMetaType::LongLong:
    case QMetaType::Double:
    case QMetaType::Bool:
      return true;
    default:
      return isMoney(value);
  }
}

double numberOf(const QVariant& value) {
  return isMoney(value) ? parseStrict(value.value<Money>().toText()) : value.value<double>();
}

/// A number from a number, or from a text that is one.
std::optional<double> readNumber(const QVariant& value) {
  if (isNumber(value)) return numberOf(value);
  const QString text = value.toString();
  if (isNumeric(text)) return parseStrict(text);
  return std::nullopt;
}

std::optional<QDateTime> readDate(const QVariant& value) {
  if (value.typeId() == QMetaType::QDateTime) return value.toDateTime();
  if (value.typeId() == QMetaType::QString && isDate(value.toString())) return parseDate(value.toString());
  return std::nullopt;
}

/// The kind of the value decides.
QString plain(const QVariant& value) {
  if (isMoney(value)) return value.value<Money>().toCurrencyText();
  switch (value.typeId()) {
    case QMetaType::QDateTime:
      return dateText(value.toDateTime());
    case QMetaType::Double:
      return numberText(value.value<double>());
    case QMetaType::QByteArray:
      return {};
    default:
      return value.toString();
  }
}

QString dated(const QDateTime& date, Format::Kind kind) {
  if (kind == Format::Kind::Time) return date.toString("HH:mm");
  if (kind == Format::Kind::Date) return date.toString("dd.MM.yyyy");
  return date.toString("dd.MM.yyyy HH:mm");
}

QString currency(const QVariant& value) {
  if (isMoney(value)) return value.value<Money>().toCurrencyText();
  const std::optional<double> number = readNumber(value);
  return number && std::abs(*number) < 1e14 ? Money::fromDouble(*number).toCurrencyText() : plain(value);
}

}  // namespace

std::optional<Format> formatNamed(const QString& name) {
  static const QRegularExpression pattern("^(#\\.##)?0(?:,(0+))?$");
  const QString key = name.trimmed().toCaseFolded();
  using enum Format::Kind;
  if (key == QString("Währung").toCaseFolded() || key == "currency") return Format{Currency};
  if (key == "datum" || key == "short date") return Format{Date};
  if (key == "datumzeit" || key == "general date") return Format{DateTime};
  if (key == "uhrzeit" || key == "short time") return Format{Time};
  if (key == "ganzzahl") return Format{Number, 0, true};
  if (key == "ja/nein" || key == "yes/no") return Format{YesNo};
  const auto match = pattern.match(key);
  if (!match.hasMatch() || match.capturedLength(2) > kMostDecimals) return std::nullopt;
  return Format{Number, static_cast<int>(match.capturedLength(2)), match.capturedLength(1) > 0};
}

QString formatted(const QVariant& value, const std::optional<Format>& format) {
  if (!value.isValid() || value.isNull()) return {};
  if (!format) return plain(value);
  switch (format->kind) {
    case Format::Kind::Currency:
      return currency(value);
    case Format::Kind::Date:
    case Format::Kind::DateTime:
    case Format::Kind::Time:
      if (const auto date = readDate(value)) return dated(*date, format->kind);
      return plain(value);
    case Format::Kind::Number:
      if (const auto number = readNumber(value))
        return formatNumber(*number, format->decimals, format->grouped);
      return plain(value);
    case Format::Kind::YesNo:
      return isThere(value) ? "ja" : "nein";
  }
  return {};
}

bool standsRight(const QVariant& value) {
  return isNumber(value) || value.typeId() == QMetaType::QDateTime;
}

bool isThere(const QVariant& value) {
  if (!value.isValid() || value.isNull()) return false;
  if (isNumber(value)) return numberOf(value) != 0;
  if (value.typeId() == QMetaType::QByteArray) return !value.toByteArray().isEmpty();
  if (value.typeId() == QMetaType::QDateTime) {
    const QDateTime date = value.toDateTime(), zero = dateZero();
    return date.date() != zero.date() || date.time() != zero.time();
  }
  return !value.toString().trimmed().isEmpty();
}

}  // namespace qk::report
