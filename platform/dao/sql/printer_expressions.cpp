#include <algorithm>

#include "platform/dao/sql/functions.h"
#include "platform/dao/sql/native_values.h"
#include "platform/dao/sql/printer.h"

namespace qk::dao::sql {
namespace {

constexpr std::size_t kLongList = 64;

/// Operators of one class chain without brackets, as long as the tree leans to the left.
enum class Chain { None, And, Or, Sum, Joined, Product };
Chain chainOf(const Expression& expression) {
  const auto* binary = as<Binary>(expression);
  if (!binary) return Chain::None;
  switch (binary->op) {
    case BinaryOperator::And:
      return Chain::And;
    case BinaryOperator::Or:
      return Chain::Or;
    case BinaryOperator::Add:
    case BinaryOperator::Subtract:
      if (expression.kind == Kind::Text) return Chain::Joined;
      return expression.kind == Kind::Date ? Chain::None : Chain::Sum;
    case BinaryOperator::Concat:
      return Chain::Joined;
    case BinaryOperator::Multiply:
      return Chain::Product;
    default:
      return Chain::None;
  }
}

}  // namespace

bool isTruth(const Expression& expression) {
  if (const auto* binary = as<Binary>(expression)) return binary->op <= BinaryOperator::Like;
  if (const auto* unary = as<Unary>(expression)) return unary->op == UnaryOperator::Not;
  if (const auto* call = as<Call>(expression)) return call->function->id == Function::Id::IsNull;
  return as<Between>(expression) || as<In>(expression) || as<IsNull>(expression);
}

bool addsUp(const Call& aggregate) {
  return aggregate.function->id == Function::Id::Sum || aggregate.function->id == Function::Id::Avg;
}

bool isComposite(const Expression& expression) {
  return !as<Literal>(expression) && !as<Column>(expression) && !as<Call>(expression);
}

bool hasForeignLetter(const Expression& expression) {
  const auto* literal = as<Literal>(expression);
  if (!literal || literal->value.userType() != QMetaType::QString) return false;
  const QString text = literal->value.toString();
  return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() > 127; });
}

const char* symbolOf(BinaryOperator op) {
  switch (op) {
    case BinaryOperator::Or:
      return " OR ";
    case BinaryOperator::And:
      return " AND ";
    case BinaryOperator::Equal:
      return " = ";
    case BinaryOperator::NotEqual:
      return " <> ";
    case BinaryOperator::Less:
      return " < ";
    case BinaryOperator::LessEqual:
      return " <= ";
    case BinaryOperator::Greater:
      return " > ";
    case BinaryOperator::GreaterEqual:
      return " >= ";
    case BinaryOperator::Add:
      return " + ";
    case BinaryOperator::Subtract:
      return " - ";
    case BinaryOperator::Multiply:
      return " * ";
    default:
      return " / ";
  }
}

Kind wantedBeside(const Expression& other) {
  return as<Literal>(other) ? Kind::Unknown : other.kind;
}

bool isNumeric(Kind kind) {
  return kind == Kind::Boolean || kind == Kind::Number || kind == Kind::Money;
}

bool isWhole(Kind kind) {
  return kind == Kind::Byte || kind == Kind::Integer || kind == Kind::Long;
}

Kind comparedAs(const Expression& left, const Expression& right) {
  if (left.kind == Kind::Unknown || right.kind == Kind::Unknown)
    return left.kind == Kind::Unknown ? right.kind : left.kind;
  const bool leftFixed = as<Literal>(left) != nullptr, rightFixed = as<Literal>(right) != nullptr;
  if (leftFixed != rightFixed) return leftFixed ? right.kind : left.kind;
  if (left.kind == Kind::Text || right.kind == Kind::Text) return Kind::Text;
  if (left.kind == Kind::Date && right.kind == Kind::Date) return Kind::Date;
  return left.kind == Kind::Money || right.kind == Kind::Money ? Kind::Money : Kind::Number;
}

std::vector<Kind> kindsOfItems(const Select& select) {
  std::vector<Kind> kinds;
  for (const SelectItem& item : select.items) {
    if (!item.expression) return {};
    kinds.push_back(item.expression->kind);
  }
  return kinds;
}

bool isLongList(const In& in) {
  return in.list.size() > kLongList && in.value->kind == Kind::Number;
}

void Printer::print(const Expression& expression) {
  std::visit([&](const auto& inner) { node(expression, inner); }, expression.node);
}

void Printer::condition(const Expression& expression) {
  if (isTruth(expression)) {
    print(expression);
  } else {
    valueAsTruth(expression);
  }
}

void Printer::value(const Expression& expression, Kind wanted) {
  if (const auto* constant = as<Literal>(expression)) {
    return literal(constant->value, wanted == Kind::Unknown ? expression.kind : wanted);
  }
  const bool becomesText =
      wanted == Kind::Text && expression.kind != Kind::Text && expression.kind != Kind::Unknown;
  if (becomesText) text_ += expression.kind == Kind::Date ? "qk_text_date(" : "qk_text(";
  if (isTruth(expression)) {
    truthAsValue(expression);
  } else {
    print(expression);
  }
  if (becomesText) text_ += u')';
}

void Printer::converted(const Expression& expression, Kind wanted) {
  const Kind from = expression.kind;
  if (as<Literal>(expression) || from == Kind::Unknown || from == wanted) return operand(expression, wanted);
  if (wanted == Kind::Date) return call("qk_date(", expression);
  if (isNumeric(wanted) && !isNumeric(from)) return number(expression);
  operand(expression, wanted);
}

void Printer::assigned(const Expression& expression, Kind wanted) {
  if (const auto* constant = as<Literal>(expression); constant && wanted == Kind::Boolean) {
    const QVariant given = toNative(constant->value, wanted);
    return literal(given.isNull() ? given : QVariant(given.toDouble() != 0), wanted);
  }
  if (as<Literal>(expression) || expression.kind == Kind::Unknown) return converted(expression, wanted);
  if (isWhole(wanted) ||
      (wanted == Kind::Money && (expression.kind != Kind::Money || isComposite(expression))))
    return rounded(expression, wanted);
  if (wanted != Kind::Boolean || expression.kind == Kind::Boolean) return converted(expression, wanted);
  text_ += "CASE WHEN ";
  converted(expression, Kind::Number);
  text_ += " <> 0 THEN -1 WHEN ";
  converted(expression, Kind::Number);
  text_ += " = 0 THEN 0 END";
}

void Printer::stored(const Expression& expression, Kind wanted) {
  const auto* constant = as<Literal>(expression);
  if (wanted != Kind::Boolean || (constant && !constant->value.isNull())) return assigned(expression, wanted);
  text_ += "coalesce(";
  assigned(expression, wanted);
  text_ += ", 0)";
}

void Printer::operand(const Expression& expression, Kind wanted) {
  const bool brackets = isComposite(expression);
  if (brackets) text_ += u'(';
  value(expression, wanted);
  if (brackets) text_ += u')';
}

void Printer::node(const Expression& whole, const Literal& constant) {
  literal(constant.value, whole.kind);
}

void Printer::node(const Expression&, const Column& column) {
  if (!column.table.isEmpty() && (qualified_ || column.source < 0)) {
    name(column.table);
    text_ += u'.';
  }
  name(column.name);
}

void Printer::node(const Expression&, const Unary& unary) {
  text_ += unary.op == UnaryOperator::Not ? "NOT (" : "-(";
  if (unary.op == UnaryOperator::Not) {
    condition(*unary.operand);
  } else {
    number(*unary.operand);
  }
  text_ += u')';
}

void Printer::node(const Expression& whole, const Binary& binary) {
  switch (binary.op) {
    case BinaryOperator::Or:
    case BinaryOperator::And:
      return logic(binary);
    case BinaryOperator::Like:
      return like(binary);
    case BinaryOperator::Divide:
      return quotient(binary);
    case BinaryOperator::IntegerDivide:
    case BinaryOperator::Modulo:
      text_ += binary.op == BinaryOperator::Modulo ? "qk_mod(" : "qk_idiv(";
      number(*binary.left);
      text_ += ", ";
      number(*binary.right);
      text_ += u')';
      return;
    case BinaryOperator::Add:
    case BinaryOperator::Subtract:
    case BinaryOperator::Concat:
    case BinaryOperator::Multiply:
      return sum(whole, binary);
    default:
      return comparison(*binary.left, binary.op, *binary.right);
  }
}

void Printer::logic(const Binary& binary) {
  const auto side = [&](const Expression& expression, bool chained) {
    const Chain chain = chainOf(expression);
    const bool same = chained && chain == (binary.op == BinaryOperator::And ? Chain::And : Chain::Or);
    const bool brackets = !same && (chain == Chain::And || chain == Chain::Or);
    if (brackets) text_ += u'(';
    condition(expression);
    if (brackets) text_ += u')';
  };
  side(*binary.left, true);
  text_ += symbolOf(binary.op);
  side(*binary.right, false);
}

void Printer::sum(const Expression& whole, const Binary& binary) {
  const Chain chain = chainOf(whole);
  const bool text = chain == Chain::Joined;
  const bool date = whole.kind == Kind::Date;
  const auto side = [&](const Expression& expression) {
    if (binary.op == BinaryOperator::Concat) {
      asText(expression);
    } else if (expression.kind == Kind::Date) {
      call("qk_serial(", expression);
    } else if (text) {
      operand(expression);
    } else {
      number(expression);
    }
  };
  if (date) text_ += "qk_date(";
  if (!date && chain != Chain::None && chainOf(*binary.left) == chain) {
    print(*binary.left);
  } else {
    side(*binary.left);
  }
  text_ += text ? " || " : symbolOf(binary.op);
  side(*binary.right);
  if (date) text_ += u')';
}

void Printer::node(const Expression&, const In& in) {
  if (in.select) return inSelect(in);
  if (as<Literal>(*in.value)) return inConstant(in);
  list(in);
}

/// No column says as what the members of the list are meant: each pair says it by itself.
void Printer::inConstant(const In& in) {
  text_ += in.negated ? "NOT (" : "(";
  for (std::size_t i = 0; i < in.list.size(); ++i) {
    if (i > 0) text_ += " OR ";
    comparison(*in.value, BinaryOperator::Equal, *in.list[i]);
  }
  text_ += u')';
}

/// The value takes the kind of the select's column, but for texts, which make texts of what they meet.
void Printer::inSelect(const In& in) {
  const std::vector<Kind> kinds = kindsOfItems(*in.select);
  const Kind kind = kinds.empty() ? in.value->kind : kinds.front();
  const bool text = kind == Kind::Text || in.value->kind == Kind::Text;
  if (!text) {
    converted(*in.value, kind);
  } else {
    textOfIn(*in.value);
  }
  text_ += in.negated ? " NOT IN (" : " IN (";
  if (text) {
    selectOfTexts(*in.select, kind);
  } else {
    select(*in.select);
  }
  text_ += u')';
}

void Printer::asText(const Expression& expression) {
  if (const auto* constant = as<Literal>(expression)) {
    return literal(constant->value.isNull() ? QVariant(QString("")) : constant->value, Kind::Text);
  }
  text_ += "coalesce(";
  value(expression, Kind::Text);
  text_ += ", '')";
}

void Printer::call(const char* function, const Expression& argument, const char* tail) {
  text_ += function;
  value(argument);
  text_ += tail;
}

void Printer::node(const Expression&, const Between& between) {
  if (between.negated) text_ += "NOT ";
  text_ += u'(';
  comparison(*between.value, BinaryOperator::GreaterEqual, *between.low);
  text_ += " AND ";
  comparison(*between.value, BinaryOperator::LessEqual, *between.high);
  text_ += u')';
}

void Printer::node(const Expression&, const IsNull& isNull) {
  operand(*isNull.value);
  text_ += isNull.negated ? " IS NOT NULL" : " IS NULL";
}

void Printer::numberCall(const char* function, const Expression& argument, const char* tail) {
  text_ += function;
  number(argument);
  text_ += tail;
}

/// Whatever else than a text it meets is taken by its German text.
void Printer::textCall(const char* function, const Expression& argument) {
  text_ += function;
  value(argument, Kind::Text);
  text_ += u')';
}

void Printer::choice(const Call& function, Kind wanted) {
  text_ += "CASE WHEN ";
  condition(*function.arguments[0]);
  text_ += " THEN ";
  converted(*function.arguments[1], wanted);
  text_ += " ELSE ";
  converted(*function.arguments[2], wanted);
  text_ += " END";
}

void Printer::firstOf(const Call& function, Kind wanted) {
  text_ += "coalesce(";
  converted(*function.arguments[0], wanted);
  text_ += ", ";
  converted(*function.arguments[1], wanted);
  text_ += u')';
}

void Printer::node(const Expression& whole, const Call& function) {
  if (function.star) {
    text_ += "count(*)";
    return;
  }
  const Expression& first = *function.arguments[0];
  switch (function.function->id) {
    using enum Function::Id;
    case Abs:
      return numberCall("abs(", first);
    case Int:
      return numberCall("qk_round(", first, ", 0)");
    case Fix:
      return numberCall("qk_round(", first, ", 1)");
    case DateValue:
      return call("qk_datevalue(", first);
    case Year:
      return call("qk_datepart(", first, ", 0)");
    case Month:
      return call("qk_datepart(", first, ", 1)");
    case Day:
      return call("qk_datepart(", first, ", 2)");
    case Val:
      return textCall("qk_val(", first);
    case Len:
      return textCall("length(", first);
    case UCase:
      return textCall("qk_ucase(", first);
    case LCase:
      return textCall("qk_lcase(", first);
    case IIf:
      return choice(function, whole.kind);
    case Nz:
      return firstOf(function, whole.kind);
    case IsNull:
      operand(first);
      text_ += " IS NULL";
      return;
    case Avg:
    case Count:
    case Max:
    case Min:
    case Sum:
      return aggregate(whole, function);
  }
}

}  // namespace qk::dao::sql
