#include "platform/dao/sql/like_pattern.h"

namespace qk::dao::sql {
namespace {

char16_t folded(QChar c) {
  const char16_t unit = c.unicode();
  if (unit < 0x80) return unit >= u'A' && unit <= u'Z' ? char16_t(unit + (u'a' - u'A')) : unit;
  return c.toCaseFolded().unicode();
}

/// A letter with marks stands beside its base letter: "ä" lies in [a-z].
char16_t baseLetter(char16_t c) {
  if (c < 0xC0) return c;
  const QString parts = QChar(c).decomposition();
  return parts.isEmpty() ? c : parts[0].unicode();
}

}  // namespace

LikePattern::LikePattern(QStringView pattern) {
  elements_.reserve(std::size_t(pattern.size()));
  for (qsizetype at = 0; at < pattern.size();) {
    const QChar c = pattern[at];
    if (c == u'[') {
      if (const qsizetype end = readSet(pattern, at); end > at) {
        at = end;
        continue;
      }
    }
    ++at;
    using Type = Element::Type;
    if (c == u'*') {
      if (elements_.empty() || elements_.back().type != Type::Any) elements_.push_back({Type::Any});
    } else if (c == u'?') {
      elements_.push_back({Type::One});
    } else if (c == u'#') {
      elements_.push_back({Type::Digit});
    } else {
      elements_.push_back({Type::Character, folded(c)});
    }
  }
}

/// The position behind the set that starts here, or the start where its end is missing. "[]" is nothing.
qsizetype LikePattern::readSet(QStringView pattern, qsizetype at) {
  const qsizetype end = pattern.indexOf(u']', at + 1);
  if (end < 0) return at;
  QStringView inner = pattern.mid(at + 1, end - at - 1);
  Element element{Element::Type::Set};
  element.negated = inner.size() > 1 && inner.startsWith(u'!');
  if (element.negated) inner = inner.mid(1);
  for (qsizetype i = 0; i < inner.size(); ++i) {
    const bool range = i + 2 < inner.size() && inner[i + 1] == u'-';
    element.ranges.emplace_back(folded(inner[i]), folded(inner[range ? i + 2 : i]));
    if (range) i += 2;
  }
  if (!element.ranges.empty()) elements_.push_back(std::move(element));
  return end + 1;
}

bool LikePattern::matches(const Element& element, char16_t character) {
  switch (element.type) {
    case Element::Type::Character:
      return element.character == character;
    case Element::Type::Digit:
      return character >= u'0' && character <= u'9';
    case Element::Type::Set:
      for (const auto& [low, high] : element.ranges) {
        const char16_t tested = low == high ? character : baseLetter(character);
        if ((tested >= low && tested <= high) || character == low || character == high) {
          return !element.negated;
        }
      }
      return element.negated;
    case Element::Type::Any:
    case Element::Type::One:
      break;
  }
  return true;
}

bool LikePattern::matches(QStringView text) const {
  // The usual walk with one point of return: the last "*" takes one character more when the rest doesn't fit.
  constexpr std::size_t kNone = std::size_t(-1);
  std::size_t element = 0, star = kNone;
  qsizetype at = 0, mark = 0;
  while (at < text.size()) {
    if (element < elements_.size() && elements_[element].type == Element::Type::Any) {
      star = element++;
      mark = at;
    } else if (element < elements_.size() && matches(elements_[element], folded(text[at]))) {
      ++element;
      ++at;
    } else if (star != kNone) {
      element = star + 1;
      at = ++mark;
    } else {
      return false;
    }
  }
  while (element < elements_.size() && elements_[element].type == Element::Type::Any) ++element;
  return element == elements_.size();
}

}  // namespace qk::dao::sql
