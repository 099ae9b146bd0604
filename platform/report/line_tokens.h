// A line of a report file as words: "text in quotes", [name in brackets], numbers, bare words, "*" and "2*".
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace qk::report {

struct Token {
  enum class Kind { Word, Text, Name, Number, Share };
  Kind kind = Kind::Word;
  QString text;      ///< as it stands, without quotes or brackets
  double value = 0;  ///< of a number or share
};

/// What is wrong with the line is told by `problem` (empty: nothing).
std::vector<Token> tokensOf(const QString& line, QString& problem);

}  // namespace qk::report
