#include "platform/dao/postgres/postgres_like.h"

#include <QHash>

#include "platform/dao/sql/like_pattern.h"

namespace qk::dao::sql {
namespace {

constexpr int kCharacters = 0x10000;  // of the basic plane; what lies beyond has no case that counts here

bool isPlain(char16_t c) {
  return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || (c >= u'0' && c <= u'9') ||
         QChar::isSurrogate(c);
}

QString escaped(char16_t c) {
  if (isPlain(c)) return QChar(c);
  return "\\u" + QString::number(c, 16).rightJustified(4, u'0');
}

/// Letters of several cases by their folded form.
const QHash<char16_t, QString>& families() {
  static const QHash<char16_t, QString> known = [] {
    QHash<char16_t, QString> all;
    for (int c = 1; c < kCharacters; ++c) {
      const char16_t folded = LikePattern::folded(QChar(c));
      if (folded != c && !QChar::isSurrogate(char16_t(c))) all[folded] += escaped(char16_t(c));
    }
    return all;
  }();
  return known;
}

QString anyCaseOf(char16_t folded) {
  const auto family = families().constFind(folded);
  if (family == families().cend()) return escaped(folded);
  return u'[' + escaped(folded) + *family + u']';
}

QString range(int first, int last) {
  if (first == last) return escaped(char16_t(first));
  return escaped(char16_t(first)) + u'-' + escaped(char16_t(last));
}

/// All characters that the set takes.
QString members(const LikePattern::Element& set) {
  QString text = "[";
  int first = 0;  // of a run; 0 while there is none
  for (int c = 1; c <= kCharacters; ++c) {
    const bool taken = c < kCharacters && !QChar::isSurrogate(char16_t(c)) &&
                       LikePattern::matches(set, LikePattern::folded(QChar(c)));
    if (taken && first == 0) first = c;
    if (taken || first == 0) continue;
    text += range(first, c - 1);
    first = 0;
  }
  if (set.negated) text += "\\U00010000-\\U0010ffff";
  return text + u']';
}

}  // namespace

QString regularExpression(QStringView pattern) {
  using Type = LikePattern::Element::Type;
  const LikePattern like(pattern);
  const auto& elements = like.elements();
  QString text;
  // What may begin or end with anything is looked for, not matched whole.
  if (elements.empty() || elements.front().type != Type::Any) text += u'^';
  for (std::size_t i = 0; i < elements.size(); ++i) {
    switch (elements[i].type) {
      case Type::Any:
        if (i > 0 && i + 1 < elements.size()) text += ".*";
        break;
      case Type::One:
        text += u'.';
        break;
      case Type::Digit:
        text += "[0-9]";
        break;
      case Type::Character:
        text += anyCaseOf(elements[i].character);
        break;
      case Type::Set:
        text += members(elements[i]);
        break;
    }
  }
  if (elements.empty() || elements.back().type != Type::Any) text += u'$';
  return text;
}

}  // namespace qk::dao::sql
