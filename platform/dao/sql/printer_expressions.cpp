#include <algorithm>

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
  if (const auto* call = as<Call>(expression)) return call->function == "isnull";
  return as<Between>(expression) || as<In>(expression) || as<IsNull>(expression);
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
  const char* function = conversion(expression.kind, wanted);
  if (function) text_ += function;
  if (isTruth(expression)) {
    truthAsValue(expression);
  } else {
    print(expression);
  }
  if (function) text_ += u')';
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

void Printer::asText(const Expression& expression) {
  if (const auto* constant = as<Literal>(expression)) {
    return literal(constant->value.isNull() ? QVariant(QString("")) : constant->value, Kind::Text);
  }
  if (expression.kind == Kind::Text) return call("coalesce(", expression, ", '')");
  call(expression.kind == Kind::Date ? "qk_text_date(" : "qk_text(", expression);
}

void Printer::call(const char* function, const Expression& argument, const char* tail) {
  text_ += function;
  value(argument);
  text_ += tail;
}

void Printer::compared(const Expression& expression, const Expression& other) {
  const bool constant = as<Literal>(other) || as<Literal>(expression);
  if (!constant && expression.kind == Kind::Date && other.kind == Kind::Number)
    return call("qk_serial(", expression);
  if (!constant && expression.kind == Kind::Date && other.kind == Kind::Text) return asText(expression);
  operand(expression, wantedBeside(other));
}

void Printer::node(const Expression&, const IsNull& isNull) {
  operand(*isNull.value);
  text_ += isNull.negated ? " IS NOT NULL" : " IS NULL";
}

/// The functions that every engine has, and those of our own that bear one name everywhere.
bool Printer::scalar(const Call& function) {
  struct Own {
    const char* name;
    const char* opening;
    const char* tail;
    bool number;  ///< its argument is one
  };
  static constexpr Own kOwn[] = {
      {"val", "qk_val(", ")", false},          {"datevalue", "qk_datevalue(", ")", false},
      {"year", "qk_datepart(", ", 0)", false}, {"month", "qk_datepart(", ", 1)", false},
      {"day", "qk_datepart(", ", 2)", false},  {"int", "qk_round(", ", 0)", true},
      {"fix", "qk_round(", ", 1)", true},      {"ucase", "qk_ucase(", ")", false},
      {"lcase", "qk_lcase(", ")", false},      {"abs", "abs(", ")", true},
  };
  const Expression& first = *function.arguments[0];
  for (const Own& own : kOwn) {
    if (function.function != QLatin1String(own.name)) continue;
    text_ += own.opening;
    if (own.number) {
      number(first);
    } else {
      value(first);
    }
    text_ += own.tail;
    return true;
  }
  if (function.function != "len") return false;
  if (first.kind == Kind::Text) {
    call("length(", first);
  } else {
    call("length(nullif(qk_text(", first, "), ''))");
  }
  return true;
}

void Printer::node(const Expression& whole, const Call& function) {
  const QString& called = function.function;
  if (function.star) {
    text_ += "count(*)";
    return;
  }
  const Expression& first = *function.arguments[0];
  if (called == "iif") {
    text_ += "CASE WHEN ";
    condition(first);
    text_ += " THEN ";
    value(*function.arguments[1]);
    text_ += " ELSE ";
    value(*function.arguments[2], wantedBeside(*function.arguments[1]));
    text_ += " END";
  } else if (called == "nz") {
    text_ += "coalesce(";
    value(first);
    text_ += ", ";
    value(*function.arguments[1], wantedBeside(first));
    text_ += u')';
  } else if (called == "isnull") {
    operand(first);
    text_ += " IS NULL";
  } else if (!scalar(function)) {
    aggregate(whole, function);
  }
}

}  // namespace qk::dao::sql
