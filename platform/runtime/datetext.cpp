#include "platform/runtime/datetext.h"

#include <optional>

#include "platform/runtime/error.h"

namespace qk {

namespace {

/// Reads from the front of a text, a number or a mark at a time.
class Scanner {
 public:
  explicit Scanner(QStringView text) : rest_(text) {}

  bool atEnd() const { return rest_.isEmpty(); }
  bool mark(char16_t c) {
    if (rest_.isEmpty() || rest_.front() != c) return false;
    rest_ = rest_.sliced(1);
    return true;
  }
  /// A number of at least one digit and at most `most`; -1 when there is none. `digits` tells its length.
  int number(int most, int* digits = nullptr) {
    int count = 0;
    int value = 0;
    while (count < most && count < rest_.size() && rest_[count] >= u'0' && rest_[count] <= u'9')
      value = value * 10 + (rest_[count++].unicode() - u'0');
    rest_ = rest_.sliced(count);
    if (digits) *digits = count;
    return count == 0 ? -1 : value;
  }
  void skipBlanks() {
    while (mark(u' ')) continue;
  }

 private:
  QStringView rest_;
};

QDate germanDate(Scanner& scan) {
  const int day = scan.number(2);
  if (!scan.mark(u'.')) return {};
  const int month = scan.number(2);
  if (!scan.mark(u'.')) return {};
  int digits = 0;
  int year = scan.number(4, &digits);
  if (digits == 0 || digits == 3) return {};
  if (digits < 3) year += year < 30 ? 2000 : 1900;
  return QDate(year, month, day);
}

QDate isoDate(Scanner& scan) {
  int digits = 0;
  const int year = scan.number(4, &digits);
  if (digits != 4 || !scan.mark(u'-')) return {};
  const int month = scan.number(2);
  if (!scan.mark(u'-')) return {};
  return QDate(year, month, scan.number(2));
}

/// HH:MM, HH:MM:SS or HH:MM:SS.zzz.
QTime clockTime(Scanner& scan) {
  const int hour = scan.number(2);
  if (!scan.mark(u':')) return {};
  const int minute = scan.number(2);
  int second = 0;
  int millisecond = 0;
  if (scan.mark(u':')) {
    second = scan.number(2);
    if (scan.mark(u'.')) millisecond = scan.number(3);
  }
  return QTime(hour, minute, second, millisecond);
}

std::optional<QDateTime> read(QStringView text) {
  const QStringView inner = text.trimmed();
  const bool iso = inner.size() > 4 && inner[4] == u'-';
  const bool onlyTime = !iso && !inner.contains(u'.');
  Scanner scan(inner);
  QDate date = onlyTime ? dateZero().date() : iso ? isoDate(scan) : germanDate(scan);
  QTime time(0, 0);
  if (onlyTime) {
    time = clockTime(scan);
  } else if (!scan.atEnd()) {
    if (!(iso && scan.mark(u'T'))) {
      if (!scan.mark(u' ')) return std::nullopt;
      scan.skipBlanks();
    }
    time = clockTime(scan);
  }
  if (!date.isValid() || !time.isValid() || !scan.atEnd()) return std::nullopt;
  return momentOf(date, time);
}

}  // namespace

QDateTime momentOf(const QDate& day, const QTime& clock) {
  const QDateTime moment(day, clock);
  if (moment.isValid() || !day.isValid() || !clock.isValid()) return moment;
  return QDateTime(day, QTime(0, 0)).addMSecs(clock.msecsSinceStartOfDay());
}

QDateTime dateZero() {
  return QDateTime(QDate(1899, 12, 30), QTime(0, 0));
}

QString dateText(const QDateTime& value) {
  if (!value.isValid()) return {};
  const auto two = [](int n) { return QString::number(n).rightJustified(2, u'0'); };
  const QTime time = value.time();
  const QString clock = two(time.hour()) + ":" + two(time.minute()) + ":" + two(time.second());
  const QDate date = value.date();
  if (date == dateZero().date()) return clock;
  const QString day =
      two(date.day()) + "." + two(date.month()) + "." + QString::number(date.year()).rightJustified(4, u'0');
  return clock == "00:00:00" ? day : day + " " + clock;
}

QDateTime parseDate(QStringView text) {
  const std::optional<QDateTime> value = read(text);
  if (!value) throw Error(errors::kTypeMismatch);
  return *value;
}

bool isDate(QStringView text) {
  return read(text).has_value();
}

}  // namespace qk
