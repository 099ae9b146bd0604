#include "platform/report/line_tokens.h"

#include "platform/runtime/numbers.h"

namespace qk::report {

namespace {

/// "12", "12,5", "-3.5"; commas and points alike, for both stand in files that people write.
bool readNumber(QString text, double& value) {
  constexpr qsizetype kLongest = 12;
  text.replace(u'.', u',');
  if (text.size() > kLongest || !isNumeric(text)) return false;
  value = parseStrict(text);
  return true;
}

Token wordToken(const QString& word) {
  Token token{Token::Kind::Word, word};
  if (word.endsWith(u'*')) {
    token.value = 1;
    if (word.size() == 1 || (readNumber(word.chopped(1), token.value) && token.value > 0)) {
      token.kind = Token::Kind::Share;
      return token;
    }
  }
  if (readNumber(word, token.value)) token.kind = Token::Kind::Number;
  return token;
}

/// From behind the opening mark to the closing one; a doubled closing mark stands for itself. False without
/// one.
bool readMarked(const QString& line, qsizetype& at, QChar closing, QString& text) {
  for (; at < line.size(); ++at) {
    if (line[at] != closing) {
      text += line[at];
    } else if (at + 1 < line.size() && line[at + 1] == closing) {
      text += closing;
      ++at;
    } else {
      ++at;
      return true;
    }
  }
  return false;
}

}  // namespace

std::vector<Token> tokensOf(const QString& line, QString& problem) {
  std::vector<Token> tokens;
  qsizetype at = 0;
  while (at < line.size()) {
    const QChar c = line[at];
    if (c.isSpace()) {
      ++at;
    } else if (c == u'"' || c == u'[') {
      const bool quoted = c == u'"';
      Token token{quoted ? Token::Kind::Text : Token::Kind::Name, {}};
      if (!readMarked(line, ++at, quoted ? u'"' : u']', token.text)) {
        problem = quoted ? "Das Anführungszeichen wird nicht geschlossen." : "Die Klammer ] fehlt.";
        return tokens;
      }
      tokens.push_back(token);
    } else {
      const qsizetype from = at;
      while (at < line.size() && !line[at].isSpace() && line[at] != u'"') ++at;
      tokens.push_back(wordToken(line.sliced(from, at - from)));
    }
  }
  return tokens;
}

}  // namespace qk::report
