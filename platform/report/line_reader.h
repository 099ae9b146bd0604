// One line of a report file, read word by word; what doesn't fit is an error that names file and line.
#pragma once

#include "platform/report/definition.h"
#include "platform/report/line_tokens.h"

namespace qk::report {

class LineReader {
 public:
  LineReader(const QString& file, int line, const QString& text);

  int line() const { return line_; }
  bool atEnd() const { return at_ == tokens_.size(); }
  /// Takes that bare word, whatever its case, if it stands here.
  bool takes(const char* word);
  bool nextIs(Token::Kind kind) const { return !atEnd() && tokens_[at_].kind == kind; }
  /// The word that stands here, as it is; empty where there is none.
  QString peek() const { return atEnd() ? QString() : tokens_[at_].text; }
  Token take() { return tokens_[at_++]; }

  double number(const QString& what, double least, double most);
  QString text(const QString& what);
  Template textTemplate(const QString& what);
  /// A bare word or a name in brackets: a value.
  Template value(const QString& what);
  QString name(const QString& what);
  void end();  ///< nothing may follow

  [[noreturn]] void fail(const QString& problem) const;

 private:
  QString file_;
  int line_;
  std::vector<Token> tokens_;
  size_t at_ = 0;
};

}  // namespace qk::report
