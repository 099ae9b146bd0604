#include "platform/dao/sql/lexer.h"

#include <array>

#include "platform/runtime/error.h"

namespace qk::dao::sql {
namespace {

struct Entry {
  std::u16string_view text;
  Word word;
};
constexpr std::array kWords = {
    Entry{u"select", Word::Select}, Entry{u"from", Word::From},     Entry{u"where", Word::Where},
    Entry{u"order", Word::Order},   Entry{u"by", Word::By},         Entry{u"group", Word::Group},
    Entry{u"having", Word::Having}, Entry{u"union", Word::Union},   Entry{u"all", Word::All},
    Entry{u"inner", Word::Inner},   Entry{u"left", Word::Left},     Entry{u"right", Word::Right},
    Entry{u"outer", Word::Outer},   Entry{u"join", Word::Join},     Entry{u"on", Word::On},
    Entry{u"as", Word::As},         Entry{u"and", Word::And},       Entry{u"or", Word::Or},
    Entry{u"not", Word::Not},       Entry{u"like", Word::Like},     Entry{u"in", Word::In},
    Entry{u"is", Word::Is},         Entry{u"null", Word::Null},     Entry{u"between", Word::Between},
    Entry{u"true", Word::True},     Entry{u"false", Word::False},   Entry{u"set", Word::Set},
    Entry{u"update", Word::Update}, Entry{u"delete", Word::Delete}, Entry{u"insert", Word::Insert},
    Entry{u"into", Word::Into},     Entry{u"values", Word::Values}, Entry{u"distinct", Word::Distinct},
    Entry{u"top", Word::Top},       Entry{u"asc", Word::Asc},       Entry{u"desc", Word::Desc},
    Entry{u"mod", Word::Mod}};

constexpr char16_t lowered(char16_t c) {
  return c >= u'A' && c <= u'Z' ? char16_t(c + 32) : c;
}
constexpr bool isDigit(char16_t c) {
  return c >= u'0' && c <= u'9';
}
bool isLetter(char16_t c) {
  const char16_t low = lowered(c);
  return (low >= u'a' && low <= u'z') || c == u'_' || (c > 127 && QChar(c).isLetter());
}

Word wordOf(QStringView text) {
  if (text.size() < 2 || text.size() > 8) return Word::None;
  const char16_t first = lowered(text[0].unicode());
  for (const Entry& entry : kWords) {
    if (entry.text[0] != first || qsizetype(entry.text.size()) != text.size()) continue;
    std::size_t i = 1;
    while (i < entry.text.size() && entry.text[i] == lowered(text[qsizetype(i)].unicode())) ++i;
    if (i == entry.text.size()) return entry.word;
  }
  return Word::None;
}

}  // namespace

void throwSyntax(qsizetype position, QStringView near) {
  const QString where = near.isEmpty() ? QString("am Ende") : QString("bei '%1'").arg(near.left(40));
  throw Error(errors::kQuerySyntax,
              QString("Syntaxfehler im Abfrageausdruck an Stelle %1, %2.").arg(position + 1).arg(where));
}

bool isReserved(Word word) {
  switch (word) {
    case Word::None:
    case Word::By:
    case Word::All:
    case Word::Outer:
    case Word::Update:
    case Word::Delete:
    case Word::Insert:
    case Word::Distinct:
    case Word::Top:
    case Word::Asc:
    case Word::Desc:
      return false;
    default:
      return true;
  }
}

char16_t Lexer::peek(qsizetype ahead) const {
  return at_ + ahead < text_.size() ? text_[at_ + ahead].unicode() : u'\0';
}

Token Lexer::next() {
  while (at_ < text_.size() && text_[at_].isSpace()) ++at_;
  if (at_ >= text_.size()) return {Token::Type::End, Word::None, 0, {}, at_};
  const char16_t c = peek();
  if (isLetter(c)) return name();
  if (isDigit(c) || (c == u'.' && isDigit(peek(1)))) return number();
  switch (c) {
    case u'[':
      return enclosed(Token::Type::BracketName, u']', false);
    case u'\'':
    case u'"':
      return enclosed(Token::Type::String, c, true);
    case u'#':
      return enclosed(Token::Type::Date, u'#', false);
    default:
      return symbol();
  }
}

Token Lexer::name() {
  const qsizetype start = at_;
  while (isLetter(peek()) || isDigit(peek())) ++at_;
  const QStringView view = text_.mid(start, at_ - start);
  return {Token::Type::Name, wordOf(view), 0, view, start};
}

Token Lexer::number() {
  const qsizetype start = at_;
  while (isDigit(peek())) ++at_;
  if (peek() == u'.') {
    ++at_;
    while (isDigit(peek())) ++at_;
  }
  if (lowered(peek()) == u'e') {
    const qsizetype digits = peek(1) == u'+' || peek(1) == u'-' ? 2 : 1;
    if (isDigit(peek(digits))) {
      at_ += digits;
      while (isDigit(peek())) ++at_;
    }
  }
  return {Token::Type::Number, Word::None, 0, text_.mid(start, at_ - start), start};
}

Token Lexer::enclosed(Token::Type type, char16_t end, bool doubling) {
  const qsizetype start = at_++;
  const qsizetype inner = at_;
  for (; at_ < text_.size(); ++at_) {
    if (text_[at_] != QChar(end)) continue;
    if (doubling && peek(1) == end) {
      ++at_;
      continue;
    }
    const QStringView view = text_.mid(inner, at_ - inner);
    ++at_;
    if (type != Token::Type::String && view.isEmpty()) throwSyntax(start, text_.mid(start));
    return {type, Word::None, doubling ? end : u'\0', view, start};
  }
  throwSyntax(start, text_.mid(start));
}

Token Lexer::symbol() {
  const qsizetype start = at_++;
  char16_t c = text_[start].unicode();
  const char16_t second = peek();
  if ((c == u'<' && (second == u'=' || second == u'>')) || (c == u'>' && second == u'=')) {
    ++at_;
    c = second == u'>' ? u'N' : c == u'<' ? u'L' : u'G';
  } else if (c == u'!') {
    c = u'.';  // the other separator of table and column
  } else if (!QStringView(u"(),.;*/\\+-&=<>").contains(QChar(c))) {
    throwSyntax(start, text_.mid(start));
  }
  return {Token::Type::Symbol, Word::None, c, text_.mid(start, at_ - start), start};
}

}  // namespace qk::dao::sql
