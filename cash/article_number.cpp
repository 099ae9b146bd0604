#include "cash/article_number.h"

namespace qk {

QString ArtikelNummerAusText(const QString& text) {
  constexpr int kEan13 = 13;
  const QString kFill = "4000";  // in front of numbers that are shorter than a bar code
  if (text.size() != kEan13) return text;
  QString number = text.left(kEan13 - 1);
  if (number.startsWith(kFill)) number.remove(0, kFill.size());
  while (number.startsWith(u'0')) number.remove(0, 1);
  return number;
}

}  // namespace qk
