#include "platform/dao/sqlite/sqlite_functions.h"

#include <sqlite3.h>

#include <QDateTime>
#include <cmath>
#include <memory>
#include <optional>

#include "platform/dao/sql/german_order.h"
#include "platform/dao/sql/like_pattern.h"
#include "platform/dao/sql/native_values.h"
#include "platform/runtime/datetext.h"
#include "platform/runtime/error.h"
#include "platform/runtime/money.h"
#include "platform/runtime/numbers.h"

namespace qk::dao::sql {
namespace {

constexpr auto kOverflow = "integer overflow";  // as SQLite says it of its own functions

bool isNull(sqlite3_value* value) {
  return sqlite3_value_type(value) == SQLITE_NULL;
}
bool isText(sqlite3_value* value) {
  return sqlite3_value_type(value) == SQLITE_TEXT;
}

/// Valid until the value is asked for something else.
QStringView viewOf(sqlite3_value* value) {
  const auto* text = static_cast<const char16_t*>(sqlite3_value_text16(value));
  return QStringView(text, sqlite3_value_bytes16(value) / qsizetype(sizeof(char16_t)));
}

/// As it is stored; valid likewise.
QByteArrayView bytesOf(sqlite3_value* value) {
  const auto* text = reinterpret_cast<const char*>(sqlite3_value_text(value));
  return QByteArrayView(text, sqlite3_value_bytes(value));
}

QString germanText(sqlite3_value* value) {
  switch (sqlite3_value_type(value)) {
    case SQLITE_INTEGER:
      return numberText(qint64(sqlite3_value_int64(value)));
    case SQLITE_FLOAT:
      return numberText(sqlite3_value_double(value));
    case SQLITE_NULL:
      return {};
    default:
      return viewOf(value).toString();
  }
}

/// Stored dates, days as a number, and German date text; invalid for anything else.
QDateTime dateOf(sqlite3_value* value) {
  if (!isText(value)) {
    const double serial = sqlite3_value_double(value);
    return isNull(value) || std::abs(serial) > 1e6 ? QDateTime() : dateOfSerial(serial);
  }
  const QStringView text = viewOf(value);
  const QDateTime stored = dateOfIso(text);
  return stored.isValid() || !isDate(text) ? stored : parseDate(text);
}

QString germanDateText(sqlite3_value* value) {
  const QDateTime date = dateOf(value);
  return date.isValid() ? dateText(date) : germanText(value);
}

void answer(sqlite3_context* context, const QString& text) {
  sqlite3_result_text16(context, text.utf16(), int(text.size() * qsizetype(sizeof(char16_t))),
                        SQLITE_TRANSIENT);
}

void answer(sqlite3_context* context, const QDateTime& date) {
  if (date.isValid()) {
    answer(context, isoText(date));
  } else {
    sqlite3_result_null(context);
  }
}

/// The pattern is read once a statement where it is constant; `own` holds it where it isn't kept.
const LikePattern& patternOf(sqlite3_context* context, sqlite3_value* value,
                             std::optional<LikePattern>& own) {
  if (auto* kept = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 1))) return *kept;
  own.emplace(germanText(value));
  sqlite3_set_auxdata(context, 1, new LikePattern(*own),
                      [](void* pattern) { delete static_cast<LikePattern*>(pattern); });
  return *own;
}

void like(sqlite3_context* context, sqlite3_value** arguments, bool date) {
  if (isNull(arguments[0]) || isNull(arguments[1])) return sqlite3_result_null(context);
  std::optional<LikePattern> own;
  const LikePattern& pattern = patternOf(context, arguments[1], own);
  bool matched = false;
  if (date) {
    matched = pattern.matches(germanDateText(arguments[0]));
  } else if (isText(arguments[0])) {
    matched = pattern.matches(bytesOf(arguments[0]));
  } else {
    matched = pattern.matches(germanText(arguments[0]));
  }
  sqlite3_result_int(context, matched);
}

void qkLike(sqlite3_context* context, int, sqlite3_value** arguments) {
  like(context, arguments, false);
}
void qkLikeDate(sqlite3_context* context, int, sqlite3_value** arguments) {
  like(context, arguments, true);
}
void qkText(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  answer(context, germanText(arguments[0]));
}
void qkTextDate(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  answer(context, germanDateText(arguments[0]));
}

/// What nearly every text is that is asked for its number: digits, few enough to be exact.
std::optional<double> plainNumber(QByteArrayView text) {
  constexpr qsizetype kExact = 15;
  if (text.isEmpty() || text.size() > kExact) return {};
  qint64 number = 0;
  for (const char digit : text) {
    if (digit < '0' || digit > '9') return {};
    number = number * 10 + (digit - '0');
  }
  return double(number);
}

void qkVal(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  if (isText(arguments[0]))
    if (const auto number = plainNumber(bytesOf(arguments[0])))
      return sqlite3_result_double(context, *number);
  try {
    sqlite3_result_double(context, parsePrefix(germanText(arguments[0])));
  } catch (const Error&) {
    sqlite3_result_error(context, kOverflow, -1);
  }
}

void qkDateValue(sqlite3_context* context, int, sqlite3_value** arguments) {
  const QDateTime date = dateOf(arguments[0]);
  answer(context, date.isValid() ? QDateTime(date.date(), QTime(0, 0)) : date);
}

void qkDate(sqlite3_context* context, int, sqlite3_value** arguments) {
  answer(context, dateOf(arguments[0]));
}

void qkSerial(sqlite3_context* context, int, sqlite3_value** arguments) {
  const QDateTime date = dateOf(arguments[0]);
  if (!date.isValid()) return sqlite3_result_null(context);
  sqlite3_result_double(context, serialOfDate(date));
}

void qkDatePart(sqlite3_context* context, int, sqlite3_value** arguments) {
  const QDate date = dateOf(arguments[0]).date();
  if (!date.isValid()) return sqlite3_result_null(context);
  const int part = sqlite3_value_int(arguments[1]);
  sqlite3_result_int(context, part == 0 ? date.year() : part == 1 ? date.month() : date.day());
}

void qkRound(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  const double value = sqlite3_value_double(arguments[0]);
  sqlite3_result_double(context, sqlite3_value_int(arguments[1]) ? std::trunc(value) : std::floor(value));
}

void wholeDivision(sqlite3_context* context, sqlite3_value** arguments, bool remainder) {
  // nearbyint rounds halves to even, as every conversion to a whole number does.
  const double left = std::nearbyint(sqlite3_value_double(arguments[0]));
  const double right = std::nearbyint(sqlite3_value_double(arguments[1]));
  if (isNull(arguments[0]) || isNull(arguments[1]) || right == 0) return sqlite3_result_null(context);
  constexpr double kBeyond = 9223372036854775808.0;  // all whole numbers
  if (!(std::abs(left) < kBeyond && std::abs(right) < kBeyond))
    return sqlite3_result_error(context, kOverflow, -1);
  const auto a = sqlite3_int64(left), b = sqlite3_int64(right);
  sqlite3_result_int64(context, remainder ? a % b : a / b);
}

void qkIntegerDivide(sqlite3_context* context, int, sqlite3_value** arguments) {
  wholeDivision(context, arguments, false);
}
void qkModulo(sqlite3_context* context, int, sqlite3_value** arguments) {
  wholeDivision(context, arguments, true);
}

/// The number that a text begins with, 0 for one that begins with none.
void qkNumber(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  const double number = sqlite3_value_double(arguments[0]);
  if (!std::isfinite(number)) return sqlite3_result_error(context, kOverflow, -1);
  sqlite3_result_double(context, number);
}

/// Four decimals, without the dust of doubles. What is too much for money stays as it is, or is an error.
void money(sqlite3_context* context, sqlite3_value* value, bool stored) {
  if (isNull(value)) return sqlite3_result_null(context);
  const double given = sqlite3_value_double(value);
  try {
    sqlite3_result_double(context, Money::fromDouble(given).toDouble());
  } catch (const Error&) {
    if (stored) return sqlite3_result_error(context, kOverflow, -1);
    sqlite3_result_double(context, given);
  }
}

void qkMoney(sqlite3_context* context, int, sqlite3_value** arguments) {
  money(context, arguments[0], false);
}
void qkStoredMoney(sqlite3_context* context, int, sqlite3_value** arguments) {
  money(context, arguments[0], true);
}

/// A number for a column of whole numbers that takes none below or above the two limits.
void qkWhole(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  const double whole = std::nearbyint(sqlite3_value_double(arguments[0]));
  if (!(whole >= sqlite3_value_double(arguments[1]) && whole <= sqlite3_value_double(arguments[2])))
    return sqlite3_result_error(context, kOverflow, -1);
  sqlite3_result_int64(context, sqlite3_int64(whole));
}

void qkUpper(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  answer(context, germanText(arguments[0]).toUpper());
}
void qkLower(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (isNull(arguments[0])) return sqlite3_result_null(context);
  answer(context, germanText(arguments[0]).toLower());
}

struct Registration {
  const char* name;
  int arguments;
  void (*function)(sqlite3_context*, int, sqlite3_value**);
  int encoding = SQLITE_UTF16;
};
constexpr Registration kRegistrations[] = {
    {"qk_like", 2, qkLike, SQLITE_UTF8},  // as it is stored: these look at every row
    {"qk_like_date", 2, qkLikeDate},
    {"qk_text", 1, qkText},
    {"qk_text_date", 1, qkTextDate},
    {"qk_val", 1, qkVal, SQLITE_UTF8},
    {"qk_datevalue", 1, qkDateValue},
    {"qk_date", 1, qkDate},
    {"qk_serial", 1, qkSerial},
    {"qk_datepart", 2, qkDatePart},
    {"qk_round", 2, qkRound},
    {"qk_idiv", 2, qkIntegerDivide},
    {"qk_mod", 2, qkModulo},
    {"qk_number", 1, qkNumber},
    {"qk_money", 1, qkMoney},
    {"qk_stored_money", 1, qkStoredMoney},
    {"qk_whole", 3, qkWhole},
    {"qk_ucase", 1, qkUpper},
    {"qk_lcase", 1, qkLower},
};

int compareGerman(void* order, int leftBytes, const void* left, int rightBytes, const void* right) {
  return static_cast<const GermanOrder*>(order)->compare(
      QByteArrayView(static_cast<const char*>(left), leftBytes),
      QByteArrayView(static_cast<const char*>(right), rightBytes));
}

void check(sqlite3* database, int code) {
  if (code != SQLITE_OK) throw Error(errors::kReservedError, QString::fromUtf8(sqlite3_errmsg(database)));
}

}  // namespace

void registerSqliteFunctions(sqlite3* database) {
  constexpr int kFlags = SQLITE_DETERMINISTIC | SQLITE_INNOCUOUS;
  for (const Registration& entry : kRegistrations) {
    check(database, sqlite3_create_function_v2(database, entry.name, entry.arguments, entry.encoding | kFlags,
                                               nullptr, entry.function, nullptr, nullptr, nullptr));
  }
  // SQLite deletes it with the connection, but for one that it refuses.
  auto order = std::make_unique<GermanOrder>();
  check(database, sqlite3_create_collation_v2(database, "german", SQLITE_UTF8, order.get(), compareGerman,
                                              [](void* owned) { delete static_cast<GermanOrder*>(owned); }));
  order.release();
  check(database, sqlite3_db_config(database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr));
}

}  // namespace qk::dao::sql
