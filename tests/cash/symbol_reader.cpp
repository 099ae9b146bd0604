#include "tests/cash/symbol_reader.h"

#include <QStringList>

namespace qk::test {

int valueOf128(QChar c) {
  return c.unicode() < 127 ? c.unicode() - 32 : c.unicode() - 105;
}

std::optional<QString> decoded128(const QString& symbols) {
  if (symbols.size() < 4 || symbols.back().unicode() != 211) return {};
  const int start = valueOf128(symbols[0]);
  if (start != 104 && start != 105) return {};
  long sum = start;
  for (qsizetype i = 1; i + 2 < symbols.size(); ++i) sum += i * valueOf128(symbols[i]);
  if (sum % 103 != valueOf128(symbols[symbols.size() - 2])) return {};
  bool tableC = start == 105;
  QString text;
  for (qsizetype i = 1; i + 2 < symbols.size(); ++i) {
    const int value = valueOf128(symbols[i]);
    if (tableC && value < 100)
      text += QString::number(value).rightJustified(2, u'0');
    else if (tableC && value == 100)
      tableC = false;
    else if (!tableC && value == 99)
      tableC = true;
    else if (!tableC && value < 95)
      text += QChar(static_cast<ushort>(value + 32));
    else
      return {};
  }
  return text;
}

QString decoded13(const QString& symbols) {
  if (symbols.size() != 15) return {};
  static const QStringList kPatterns = {"AAAAAA", "AABABB", "AABBAB", "AABBBA", "ABAABB",
                                        "ABBAAB", "ABBBAA", "ABABAB", "ABABBA", "ABBABA"};
  QString pattern, digits;
  for (int i = 1; i <= 6; ++i) {
    const int code = symbols[i].unicode();
    pattern += QChar(code < 'K' ? u'A' : u'B');
    digits += QString::number(code - (code < 'K' ? 'A' : 'K'));
  }
  for (int i = 8; i <= 13; ++i) digits += QString::number(symbols[i].unicode() - 'a');
  const qsizetype first = kPatterns.indexOf(pattern);
  return symbols[7] == u'*' && symbols[14] == u'+' && symbols[0] == QChar(static_cast<ushort>('0' + first))
             ? QString::number(first) + digits
             : QString();
}

bool checks13(const QString& digits) {
  int sum = 0;
  for (int i = 0; i < 13; ++i) sum += digits[i].digitValue() * (i % 2 ? 3 : 1);
  return sum % 10 == 0;
}

}  // namespace qk::test
