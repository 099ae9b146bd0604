#include "platform/dao/sql/expression_parser.h"

#include <QDateTime>

#include "platform/runtime/error.h"

namespace qk::dao::sql {
namespace {

/// Deep enough for every sensible query, and well below what the stack and the engines bear.
constexpr int kMaxDepth = 100;
constexpr int kMaxChain = 400;

template <typename Node>
ExpressionPtr make(Node node) {
  return std::make_unique<Expression>(Expression{std::move(node)});
}

ExpressionPtr makeNot(ExpressionPtr operand, bool negated) {
  return negated ? make(Unary{UnaryOperator::Not, std::move(operand)}) : std::move(operand);
}

/// Up to three numbers between one-character separators; false for anything else.
bool readParts(QStringView text, char16_t separator, int (&parts)[3], int& count) {
  count = 0;
  for (const QStringView part : text.tokenize(QChar(separator))) {
    bool ok = count < 3;
    if (!ok) return false;
    parts[count++] = part.toInt(&ok);
    if (!ok) return false;
  }
  return true;
}

/// Month first between slashes, year first between hyphens; an optional time of day.
QDateTime readDate(QStringView text) {
  text = text.trimmed();
  const qsizetype blank = text.indexOf(u' ');
  const QStringView day = blank < 0 ? text : text.left(blank);
  int part[3] = {0, 0, 0};
  int count = 0;
  QDate date;
  if (day.contains(u'/')) {
    if (readParts(day, u'/', part, count) && count == 3) date = QDate(part[2], part[0], part[1]);
  } else if (readParts(day, u'-', part, count) && count == 3) {
    date = QDate(part[0], part[1], part[2]);
  }
  QTime time(0, 0);
  if (blank >= 0) {
    int clock[3] = {0, 0, 0};
    const bool read = readParts(text.mid(blank).trimmed(), u':', clock, count) && count >= 2;
    time = read ? QTime(clock[0], clock[1], clock[2]) : QTime();
  }
  return date.isValid() && time.isValid() ? QDateTime(date, time) : QDateTime();
}

}  // namespace

ExpressionParser::ExpressionParser(QStringView text) : lexer_(text), size_(text.size()) {
  current_ = lexer_.next();
  next_ = lexer_.next();
}

ExpressionParser::Nesting::Nesting(ExpressionParser& parser) : parser_(parser) {
  if (parser_.depth_ >= kMaxDepth) throw Error(errors::kTooComplex);
  ++parser_.depth_;
}

void ExpressionParser::limitChain(int count) const {
  if (count > kMaxChain) throw Error(errors::kTooComplex);
}

void ExpressionParser::advance() {
  current_ = next_;
  if (next_.type != Token::Type::End) next_ = lexer_.next();
}

void ExpressionParser::fail() const {
  throwSyntax(current_.position, current_.text);
}

bool ExpressionParser::isSymbol(char16_t symbol) const {
  return current_.type == Token::Type::Symbol && current_.symbol == symbol;
}

bool ExpressionParser::isName() const {
  return current_.type == Token::Type::BracketName ||
         (current_.type == Token::Type::Name && !isReserved(current_.word));
}

bool ExpressionParser::nextEndsItem() const {
  return next_.word == Word::From || next_.word == Word::As ||
         (next_.type == Token::Type::Symbol && (next_.symbol == u',' || next_.symbol == u'.'));
}

bool ExpressionParser::takeWord(Word word) {
  if (!isWord(word)) return false;
  advance();
  return true;
}

void ExpressionParser::expectWord(Word word) {
  if (!takeWord(word)) fail();
}

bool ExpressionParser::takeSymbol(char16_t symbol) {
  if (!isSymbol(symbol)) return false;
  advance();
  return true;
}

void ExpressionParser::expectSymbol(char16_t symbol) {
  if (!takeSymbol(symbol)) fail();
}

void ExpressionParser::end() {
  takeSymbol(u';');
  if (current_.type != Token::Type::End) fail();
}

QString ExpressionParser::name() {
  if (!isName()) fail();
  QString result = current_.text.toString();
  advance();
  return result;
}

QString ExpressionParser::nameBehindPoint() {
  if (current_.type != Token::Type::Name && current_.type != Token::Type::BracketName) fail();
  QString result = current_.text.toString();
  advance();
  return result;
}

QString ExpressionParser::string() {
  if (current_.type != Token::Type::String) fail();
  QString result = current_.text.toString();
  const QChar quote(current_.symbol);
  if (result.contains(quote)) result.replace(QString(2, quote), QString(quote));
  advance();
  return result;
}

int ExpressionParser::wholeNumber() {
  bool ok = false;
  const int result = current_.text.toInt(&ok);
  if (!ok) fail();
  advance();
  return result;
}

Column ExpressionParser::column() {
  Column column;
  column.name = name();
  if (takeSymbol(u'.')) {
    column.table = std::move(column.name);
    column.name = nameBehindPoint();
  }
  return column;
}

bool ExpressionParser::starTable(QString& table) {
  if (!isName() || next_.symbol != u'.') return false;
  // Whether a star or a column follows shows two tokens on; a copy of the lexer looks ahead.
  Lexer ahead = lexer_;
  if (ahead.next().symbol != u'*') return false;
  table = name();
  advance();
  advance();
  return true;
}

std::vector<ExpressionPtr> ExpressionParser::expressions() {
  std::vector<ExpressionPtr> result;
  do result.push_back(expression());
  while (takeSymbol(u','));
  return result;
}

ExpressionPtr ExpressionParser::criterion() {
  ExpressionPtr result = expression();
  end();
  return result;
}

ExpressionPtr ExpressionParser::expression() {
  return climb(kOr);
}

ExpressionPtr ExpressionParser::climb(int level) {
  const Nesting nesting(*this);
  ExpressionPtr left;
  if (level <= kNot && takeWord(Word::Not)) {
    left = makeNot(climb(kNot), true);
  } else {
    left = unary();
  }
  for (int count = 1;; ++count) {
    limitChain(count);
    int found = 0;
    if (const auto op = binaryOperator(found)) {
      if (found < level) return left;
      advance();
      left = make(Binary{*op, std::move(left), climb(found + 1)});
    } else if (level <= kComparison && (isWord(Word::Not) || isWord(Word::Like) || isWord(Word::In) ||
                                        isWord(Word::Is) || isWord(Word::Between))) {
      left = comparisonTail(std::move(left));
    } else {
      return left;
    }
  }
}

ExpressionPtr ExpressionParser::comparisonTail(ExpressionPtr left) {
  if (takeWord(Word::Is)) {
    const bool negated = takeWord(Word::Not);
    expectWord(Word::Null);
    return make(IsNull{std::move(left), negated});
  }
  const bool negated = takeWord(Word::Not);
  if (takeWord(Word::Like)) {
    return makeNot(make(Binary{BinaryOperator::Like, std::move(left), climb(kConcat)}), negated);
  }
  if (takeWord(Word::In)) return in(std::move(left), negated);
  expectWord(Word::Between);
  ExpressionPtr low = climb(kConcat);
  expectWord(Word::And);
  return make(Between{std::move(left), std::move(low), climb(kConcat), negated});
}

ExpressionPtr ExpressionParser::in(ExpressionPtr value, bool negated) {
  In node{std::move(value), {}, nullptr, negated};
  expectSymbol(u'(');
  if (isWord(Word::Select)) {
    node.select = select();
  } else {
    node.list = expressions();
  }
  expectSymbol(u')');
  return make(std::move(node));
}

std::optional<BinaryOperator> ExpressionParser::binaryOperator(int& level) const {
  const auto found = [&level](int at, BinaryOperator op) {
    level = at;
    return op;
  };
  switch (current_.word) {
    case Word::Or:
      return found(kOr, BinaryOperator::Or);
    case Word::And:
      return found(kAnd, BinaryOperator::And);
    case Word::Mod:
      return found(kModulo, BinaryOperator::Modulo);
    default:
      break;
  }
  if (current_.type != Token::Type::Symbol) return std::nullopt;
  switch (current_.symbol) {
    case u'=':
      return found(kComparison, BinaryOperator::Equal);
    case u'N':
      return found(kComparison, BinaryOperator::NotEqual);
    case u'<':
      return found(kComparison, BinaryOperator::Less);
    case u'L':
      return found(kComparison, BinaryOperator::LessEqual);
    case u'>':
      return found(kComparison, BinaryOperator::Greater);
    case u'G':
      return found(kComparison, BinaryOperator::GreaterEqual);
    case u'&':
      return found(kConcat, BinaryOperator::Concat);
    case u'+':
      return found(kAdditive, BinaryOperator::Add);
    case u'-':
      return found(kAdditive, BinaryOperator::Subtract);
    case u'\\':
      return found(kIntegerDivide, BinaryOperator::IntegerDivide);
    case u'*':
      return found(kMultiply, BinaryOperator::Multiply);
    case u'/':
      return found(kMultiply, BinaryOperator::Divide);
    default:
      return std::nullopt;
  }
}

ExpressionPtr ExpressionParser::unary() {
  if (takeSymbol(u'-')) {
    if (current_.type == Token::Type::Number) return number(true);
    const Nesting nesting(*this);
    return make(Unary{UnaryOperator::Minus, unary()});
  }
  while (takeSymbol(u'+')) {
  }
  return primary();
}

ExpressionPtr ExpressionParser::primary() {
  switch (current_.type) {
    case Token::Type::Number:
      return number(false);
    case Token::Type::String:
      return make(Literal{string()});
    case Token::Type::Date:
      return date();
    default:
      break;
  }
  if (takeWord(Word::Null)) return make(Literal{});
  if (takeWord(Word::True)) return make(Literal{true});
  if (takeWord(Word::False)) return make(Literal{false});
  if (takeSymbol(u'(')) {
    ExpressionPtr inner = expression();
    expectSymbol(u')');
    return inner;
  }
  return nameOrCall();
}

ExpressionPtr ExpressionParser::nameOrCall() {
  const bool call = current_.type == Token::Type::Name && next_.symbol == u'(';
  if (!call) return make(column());
  Call node{name().toLower(), {}, false};
  expectSymbol(u'(');
  node.star = takeSymbol(u'*');
  if (!node.star && !isSymbol(u')')) node.arguments = expressions();
  expectSymbol(u')');
  return make(std::move(node));
}

ExpressionPtr ExpressionParser::number(bool negative) {
  bool ok = false;
  const qlonglong whole = current_.text.toLongLong(&ok);
  Literal literal{QVariant(negative ? -whole : whole)};
  if (!ok) {
    const double real = current_.text.toDouble(&ok);
    if (!ok) fail();
    literal.value = negative ? -real : real;
  }
  advance();
  return make(std::move(literal));
}

ExpressionPtr ExpressionParser::date() {
  const QDateTime value = readDate(current_.text);
  if (!value.isValid()) fail();
  advance();
  return make(Literal{value});
}

}  // namespace qk::dao::sql
