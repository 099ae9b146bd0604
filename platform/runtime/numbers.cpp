#include "platform/runtime/numbers.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string>
#include <string_view>

#include "platform/runtime/error.h"

namespace qk {

namespace {

constexpr int kSignificantDigits = 15;

bool isDigit(QChar c) {
  return c >= u'0' && c <= u'9';
}
bool isBlank(QChar c) {
  return c == u' ' || c == u'\t';
}

/// An optional sign, digits and at most one decimal mark, from the start of a text.
struct Scan {
  std::string ascii;     ///< the same with a decimal point, as the language reads it
  qsizetype length = 0;  ///< characters used
  bool hasDigits = false;
};

Scan scanNumber(QStringView text, char16_t decimalMark) {
  Scan scan;
  bool hasMark = false;
  for (; scan.length < text.size(); ++scan.length) {
    const QChar c = text[scan.length];
    if (scan.length == 0 && (c == u'+' || c == u'-')) {
      if (c == u'-') scan.ascii += '-';
    } else if (isDigit(c)) {
      scan.ascii += static_cast<char>(c.unicode());
      scan.hasDigits = true;
    } else if (c == decimalMark && !hasMark) {
      scan.ascii += '.';
      hasMark = true;
    } else {
      break;
    }
  }
  return scan;
}

std::optional<double> valueOf(const Scan& scan) {
  double value = 0;
  const auto [end, error] = std::from_chars(scan.ascii.data(), scan.ascii.data() + scan.ascii.size(), value);
  if (error == std::errc()) return value;
  // Too small for a double is as good as nothing; only what is too large can't be told.
  const bool tiny = scan.ascii.find_first_of("123456789") > scan.ascii.find('.');
  return tiny ? std::optional<double>(0.0) : std::nullopt;
}

QStringView withoutBlanks(QStringView text) {
  while (!text.isEmpty() && isBlank(text.front())) text = text.sliced(1);
  while (!text.isEmpty() && isBlank(text.back())) text = text.chopped(1);
  return text;
}

/// The strict form, or nothing when the text hasn't got it.
std::optional<Scan> scanStrict(QStringView text) {
  const QStringView inner = withoutBlanks(text);
  Scan scan = scanNumber(inner, u',');
  if (!scan.hasDigits || scan.length != inner.size()) return std::nullopt;
  return scan;
}

Scan scanPrefix(QStringView text) {
  while (!text.isEmpty() && isBlank(text.front())) text = text.sliced(1);
  return scanNumber(text, u'.');
}

/// 15 significant digits without mark or sign, and the place of the decimal mark in them.
struct Decimal {
  std::string digits;
  int point = 0;  ///< digits before the mark; may be negative or beyond the end
};

Decimal decimalOf(double magnitude) {
  std::array<char, 40> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                    std::chars_format::scientific, kSignificantDigits - 1);
  const std::string_view text(buffer.data(), static_cast<size_t>(result.ptr - buffer.data()));
  const size_t mark = text.find('e');
  Decimal decimal;
  for (const char c : text.substr(0, mark))
    if (c != '.') decimal.digits += c;
  int exponent = 0;
  const size_t first = mark + (text[mark + 1] == '+' ? 2 : 1);
  std::from_chars(text.data() + first, text.data() + text.size(), exponent);
  decimal.point = exponent + 1;
  return decimal;
}

/// All digits before the mark and `decimals` behind it, halves away from zero; at least one before the mark.
std::string roundedDigits(const Decimal& decimal, int decimals) {
  const int wanted = decimal.point + decimals;  // digits to keep; the next one decides
  const auto digitAt = [&](int i) {
    return i >= 0 && i < static_cast<int>(decimal.digits.size()) ? decimal.digits[static_cast<size_t>(i)]
                                                                 : '0';
  };
  std::string kept;
  for (int i = std::min(0, decimal.point - 1); i < wanted; ++i) kept += digitAt(i);
  if (wanted < 0 || digitAt(wanted) < '5') return kept.empty() ? "0" : kept;
  for (size_t i = kept.size(); i-- > 0;) {
    if (kept[i] != '9') {
      ++kept[i];
      return kept;
    }
    kept[i] = '0';
  }
  return "1" + kept;
}

QString notANumber(double value) {
  return std::isnan(value) ? "NAN" : value < 0 ? "-INF" : "INF";
}

template <class Whole>
Whole toWhole(double value) {
  const double rounded = std::nearbyint(value);  // the language's default mode: halves to even
  if (!(rounded >= std::numeric_limits<Whole>::min() && rounded <= std::numeric_limits<Whole>::max()))
    throw Error(errors::kOverflow);
  return static_cast<Whole>(rounded);
}

}  // namespace

double parseStrict(QStringView text) {
  const std::optional<Scan> scan = scanStrict(text);
  if (!scan) throw Error(errors::kTypeMismatch);
  const std::optional<double> value = valueOf(*scan);
  if (!value) throw Error(errors::kOverflow);
  return *value;
}

double parsePrefix(QStringView text) {
  const Scan scan = scanPrefix(text);
  if (!scan.hasDigits) return 0;
  const std::optional<double> value = valueOf(scan);
  if (!value) throw Error(errors::kOverflow);
  return *value;
}

std::optional<double> readPrefix(QStringView text) {
  const Scan scan = scanPrefix(text);
  return scan.hasDigits ? valueOf(scan) : std::nullopt;
}

double parseTolerant(QStringView text) {
  QString pointed;
  pointed.reserve(text.size());
  for (const QChar c : text) {
    if (c == u',')
      pointed += u'.';
    else if (c != u'.')
      pointed += c;
  }
  return parsePrefix(pointed);
}

bool isNumeric(QStringView text) {
  const std::optional<Scan> scan = scanStrict(text);
  return scan && valueOf(*scan);
}

QString numberText(double value) {
  if (!std::isfinite(value)) return notANumber(value);
  if (value == 0) return "0";  // also the negative one
  std::array<char, 40> buffer{};
  const auto result = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                    std::chars_format::general, kSignificantDigits);
  QString text = QString::fromLatin1(buffer.data(), result.ptr - buffer.data());
  return text.replace(u'.', u',').replace(u'e', u'E');
}

QString numberText(qint64 value) {
  return QString::number(value);
}

QString formatNumber(double value, int decimals, bool grouped) {
  if (!std::isfinite(value)) return notANumber(value);
  const int behind = std::max(decimals, 0);
  std::string digits = roundedDigits(decimalOf(std::fabs(value)), behind);
  const size_t leading = static_cast<size_t>(behind) + 1;  // "0,05" needs its zeros in front
  if (digits.size() < leading) digits.insert(0, leading - digits.size(), '0');
  const bool negative = value < 0 && digits.find_first_not_of('0') != std::string::npos;

  const QString all = QString::fromStdString(digits);
  QString whole = all.chopped(behind);
  while (whole.size() > 1 && whole.front() == u'0') whole.remove(0, 1);
  if (grouped)
    for (qsizetype i = whole.size() - 3; i > 0; i -= 3) whole.insert(i, u'.');
  QString text = negative ? "-" + whole : whole;
  if (behind > 0) text += "," + all.last(behind);
  return text;
}

std::int16_t toInt16(double value) {
  return toWhole<std::int16_t>(value);
}
std::int32_t toInt32(double value) {
  return toWhole<std::int32_t>(value);
}

}  // namespace qk
