// Text of the query language to tokens. Tokens are views into the text, which must outlive them.
#pragma once

#include <QStringView>

namespace qk::dao::sql {

enum class Word {
  None,
  Select,
  From,
  Where,
  Order,
  By,
  Group,
  Having,
  Union,
  All,
  Inner,
  Left,
  Right,
  Outer,
  Join,
  On,
  As,
  And,
  Or,
  Not,
  Like,
  In,
  Is,
  Null,
  Between,
  True,
  False,
  Set,
  Update,
  Delete,
  Insert,
  Into,
  Values,
  Distinct,
  Top,
  Asc,
  Desc,
  Mod
};

/// A word that can't be a name unless it stands in brackets or behind a point.
bool isReserved(Word word);

struct Token {
  enum class Type { End, Name, BracketName, Number, String, Date, Symbol };
  Type type = Type::End;
  Word word = Word::None;  ///< of a Name
  char16_t symbol = 0;     ///< one of ( ) , . ; * / \ + - & = < > and L (<=), G (>=), N (<>);
                           ///< of a String the quote around it
  QStringView text;        ///< without brackets, quotes and number signs; doubled quotes still doubled
  qsizetype position = 0;
};

class Lexer {
 public:
  explicit Lexer(QStringView text) : text_(text) {}
  Token next();  ///< Error 3075 for an open string, bracket or date and for a character of no use
 private:
  Token name();
  Token number();
  Token enclosed(Token::Type type, char16_t end, bool doubling);
  Token symbol();
  char16_t peek(qsizetype ahead = 0) const;

  QStringView text_;
  qsizetype at_ = 0;
};

/// Error 3075 that names the place.
[[noreturn]] void throwSyntax(qsizetype position, QStringView near);

}  // namespace qk::dao::sql
