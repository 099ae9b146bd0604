// The half of the parser that reads expressions, by precedence climbing, and the handling of tokens that both
// halves use. One token of look-ahead besides the current one.
#pragma once

#include "platform/dao/sql/lexer.h"
#include "platform/dao/sql/tree.h"

namespace qk::dao::sql {

class ExpressionParser {
 public:
  explicit ExpressionParser(QStringView text);
  virtual ~ExpressionParser() = default;

  ExpressionPtr criterion();  ///< the whole text as one expression

 protected:
  /// Guards the stack: every construct that nests holds one. Error 3360 beyond the limit.
  class Nesting {
   public:
    explicit Nesting(ExpressionParser& parser);
    ~Nesting() { --parser_.depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

   private:
    ExpressionParser& parser_;
  };
  /// The same for left-deep chains such as a + b + c: count is the number of links so far.
  void limitChain(int count) const;

  virtual SelectPtr select() = 0;

  ExpressionPtr expression();
  std::vector<ExpressionPtr> expressions();
  Column column();
  bool starTable(QString& table);  ///< takes "t.*"
  QString name();
  QString string();
  int wholeNumber();
  void end();  ///< an optional ";", then nothing

  void advance();
  const Token& peek() const { return next_; }
  bool isName() const;
  bool isWord(Word word) const { return current_.word == word; }
  bool nextEndsItem() const;
  bool takeWord(Word word);
  void expectWord(Word word);
  bool takeSymbol(char16_t symbol);
  void expectSymbol(char16_t symbol);
  [[noreturn]] void fail() const;

 private:
  enum Level { kOr, kAnd, kNot, kComparison, kConcat, kAdditive, kModulo, kIntegerDivide, kMultiply, kUnary };

  ExpressionPtr climb(int level);
  ExpressionPtr comparisonTail(ExpressionPtr left);
  std::optional<BinaryOperator> binaryOperator(int& level) const;
  ExpressionPtr unary();
  ExpressionPtr primary();
  ExpressionPtr nameOrCall();
  ExpressionPtr number(bool negative);
  ExpressionPtr date();
  ExpressionPtr in(ExpressionPtr value, bool negated);
  QString nameBehindPoint();
  bool isSymbol(char16_t symbol) const;

  Lexer lexer_;
  qsizetype size_;
  Token current_, next_;
  int depth_ = 0;
};

}  // namespace qk::dao::sql
