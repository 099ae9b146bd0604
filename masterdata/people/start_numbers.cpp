#include "masterdata/people/start_numbers.h"

#include <algorithm>

namespace qk {

namespace {

QString folded(const QString& number) {
  return number.trimmed().toCaseFolded();
}

}  // namespace

qint64 countedStartNumber(const QString& number) {
  constexpr int kMostDigits = 9;
  const QString plain = number.trimmed();
  const auto isDigit = [](QChar c) { return c >= '0' && c <= '9'; };
  if (plain.size() > kMostDigits || !std::all_of(plain.begin(), plain.end(), isDigit)) return 0;
  return plain.toLongLong();
}

StartNumbers::StartNumbers(const QStringList& taken) {
  taken_.reserve(taken.size());
  for (const QString& number : taken) take(number);
}

bool StartNumbers::isTaken(const QString& number) const {
  return taken_.contains(folded(number));
}

void StartNumbers::take(const QString& number) {
  if (number.trimmed().isEmpty()) return;
  taken_.insert(folded(number));
  highest_ = std::max(highest_, countedStartNumber(number));
}

}  // namespace qk
