#include "platform/runtime/formula_guard.h"

namespace qk {

namespace {

bool beginsFormula(QStringView text) {
  return !text.isEmpty() && QStringView(u"=+-@\t\r").contains(text.front());
}

/// The text behind the apostrophes at its beginning.
QStringView behindApostrophes(QStringView text) {
  while (text.startsWith(u'\'')) text = text.sliced(1);
  return text;
}

}  // namespace

QString guarded(const QString& text) {
  return beginsFormula(behindApostrophes(text)) ? u'\'' + text : text;
}

QString unguarded(const QString& cell) {
  return cell.startsWith(u'\'') && beginsFormula(behindApostrophes(cell)) ? cell.sliced(1) : cell;
}

}  // namespace qk
