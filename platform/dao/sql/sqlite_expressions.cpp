#include <QDateTime>
#include <algorithm>

#include "platform/dao/sql/sqlite_printer.h"
#include "platform/dao/sql/sqlite_values.h"

namespace qk::dao::sql {
namespace {

/// A longer list of whole numbers is written out: SQLite's parameters are limited, and lists of keys may be
/// long.
constexpr std::size_t kLongList = 64;

template <typename Node>
const Node* as(const Expression& expression) {
  return std::get_if<Node>(&expression.node);
}

/// Whether SQLite answers 1/0 here, where the language says -1/0.
bool isTruth(const Expression& expression) {
  if (const auto* binary = as<Binary>(expression)) return binary->op <= BinaryOperator::Like;
  if (const auto* unary = as<Unary>(expression)) return unary->op == UnaryOperator::Not;
  if (const auto* call = as<Call>(expression)) return call->function == "isnull";
  return as<Between>(expression) || as<In>(expression) || as<IsNull>(expression);
}

bool isComposite(const Expression& expression) {
  return !as<Literal>(expression) && !as<Column>(expression) && !as<Call>(expression);
}

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

/// What a literal beside an expression of this kind is meant as.
Kind wantedBeside(const Expression& other) {
  return as<Literal>(other) ? Kind::Unknown : other.kind;
}

}  // namespace

void SqlitePrinter::condition(const Expression& expression) {
  std::visit([&](const auto& inner) { node(expression, inner); }, expression.node);
}

void SqlitePrinter::value(const Expression& expression, Kind wanted) {
  if (const auto* constant = as<Literal>(expression)) {
    return literal(constant->value, wanted == Kind::Unknown ? expression.kind : wanted);
  }
  const bool truth = isTruth(expression);
  const bool text = wanted == Kind::Text && expression.kind != Kind::Text && expression.kind != Kind::Unknown;
  if (text) text_ += expression.kind == Kind::Date ? "qk_text_date(" : "qk_text(";
  if (truth) text_ += "-(";
  condition(expression);
  if (truth) text_ += u')';
  if (text) text_ += u')';
}

void SqlitePrinter::operand(const Expression& expression, Kind wanted) {
  const bool brackets = isComposite(expression);
  if (brackets) text_ += u'(';
  value(expression, wanted);
  if (brackets) text_ += u')';
}

void SqlitePrinter::literal(const QVariant& value, Kind wanted) {
  const QVariant native = toSqlite(value, wanted);
  if (literals_ == Literals::AsParameters) {
    values_ << native;
    text_ += u'?';
  } else if (native.isNull()) {
    text_ += "NULL";
  } else if (native.userType() == QMetaType::QString) {
    text_ += u'\'' + native.toString().replace(u'\'', "''") + u'\'';
  } else if (native.userType() == QMetaType::Double) {
    text_ += QString::number(native.toDouble(), 'g', 17);
  } else {
    text_ += native.toString();
  }
}

void SqlitePrinter::node(const Expression& whole, const Literal& constant) {
  literal(constant.value, whole.kind);
}

void SqlitePrinter::node(const Expression&, const Column& column) {
  if (!column.table.isEmpty() && (qualified_ || column.source < 0)) {
    name(column.table);
    text_ += u'.';
  }
  name(column.name);
}

void SqlitePrinter::node(const Expression&, const Unary& unary) {
  text_ += unary.op == UnaryOperator::Not ? "NOT (" : "-(";
  if (unary.op == UnaryOperator::Not) {
    condition(*unary.operand);
  } else {
    value(*unary.operand);
  }
  text_ += u')';
}

void SqlitePrinter::node(const Expression& whole, const Binary& binary) {
  switch (binary.op) {
    case BinaryOperator::Or:
    case BinaryOperator::And:
      return logic(binary);
    case BinaryOperator::Like:
      return like(binary);
    case BinaryOperator::Divide:
      text_ += "CAST(";
      value(*binary.left);
      text_ += " AS REAL) / ";
      return operand(*binary.right);
    case BinaryOperator::IntegerDivide:
    case BinaryOperator::Modulo:
      text_ += binary.op == BinaryOperator::Modulo ? "qk_mod(" : "qk_idiv(";
      value(*binary.left);
      text_ += ", ";
      value(*binary.right);
      text_ += u')';
      return;
    case BinaryOperator::Add:
    case BinaryOperator::Subtract:
    case BinaryOperator::Concat:
    case BinaryOperator::Multiply:
      return sum(whole, binary);
    default:
      return comparison(binary);
  }
}

void SqlitePrinter::logic(const Binary& binary) {
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

void SqlitePrinter::sum(const Expression& whole, const Binary& binary) {
  const Chain chain = chainOf(whole);
  const bool text = chain == Chain::Joined;
  const bool date = whole.kind == Kind::Date;
  const auto side = [&](const Expression& expression) {
    if (binary.op == BinaryOperator::Concat) {
      asText(expression);
    } else if (expression.kind == Kind::Date) {
      serial(expression);
    } else {
      operand(expression);
    }
  };
  if (date) text_ += "qk_date(";
  if (!date && chain != Chain::None && chainOf(*binary.left) == chain) {
    condition(*binary.left);
  } else {
    side(*binary.left);
  }
  text_ += text ? " || " : symbolOf(binary.op);
  side(*binary.right);
  if (date) text_ += u')';
}

void SqlitePrinter::serial(const Expression& expression) {
  call("qk_serial(", expression);
}

void SqlitePrinter::asText(const Expression& expression) {
  if (const auto* constant = as<Literal>(expression)) {
    return literal(constant->value.isNull() ? QVariant(QString("")) : constant->value, Kind::Text);
  }
  if (expression.kind == Kind::Text) return call("ifnull(", expression, ", '')");
  call(expression.kind == Kind::Date ? "qk_text_date(" : "qk_text(", expression);
}

void SqlitePrinter::call(const char* function, const Expression& argument, const char* tail) {
  text_ += function;
  value(argument);
  text_ += tail;
}

/// One side of a comparison: dates meet numbers as days, texts as text, and money without the dust of
/// doubles.
void SqlitePrinter::compared(const Expression& expression, const Expression& other) {
  const bool constant = as<Literal>(other) || as<Literal>(expression);
  if (!constant && expression.kind == Kind::Date && other.kind == Kind::Number) return serial(expression);
  if (!constant && expression.kind == Kind::Date && other.kind == Kind::Text) return asText(expression);
  if (expression.kind == Kind::Money && isComposite(expression)) {
    text_ += "round(";
    value(expression);
    text_ += ", 4)";
    return;
  }
  operand(expression, wantedBeside(other));
}

void SqlitePrinter::comparison(const Binary& binary) {
  const Expression &left = *binary.left, &right = *binary.right;
  compared(left, right);
  if (left.kind == Kind::Text && right.kind == Kind::Text) {
    const bool order = binary.op != BinaryOperator::Equal && binary.op != BinaryOperator::NotEqual;
    if (order || hasForeignLetter(left) || hasForeignLetter(right)) {
      text_ += " COLLATE german";
    } else if (!as<Column>(left) && !as<Column>(right)) {
      text_ += " COLLATE NOCASE";  // columns bring it along
    }
  }
  text_ += symbolOf(binary.op);
  compared(right, left);
}

void SqlitePrinter::like(const Binary& binary) {
  text_ += binary.left->kind == Kind::Date ? "qk_like_date(" : "qk_like(";
  value(*binary.left);
  text_ += ", ";
  value(*binary.right, Kind::Text);
  text_ += u')';
}

void SqlitePrinter::node(const Expression&, const Between& between) {
  compared(*between.value, *between.low);
  if (between.value->kind == Kind::Text) text_ += " COLLATE german";
  text_ += between.negated ? " NOT BETWEEN " : " BETWEEN ";
  compared(*between.low, *between.value);
  text_ += " AND ";
  compared(*between.high, *between.value);
}

void SqlitePrinter::node(const Expression&, const In& in) {
  operand(*in.value);
  if (in.value->kind == Kind::Text) {
    const bool foreign = std::any_of(in.list.begin(), in.list.end(),
                                     [](const ExpressionPtr& item) { return hasForeignLetter(*item); });
    if (foreign) {
      text_ += " COLLATE german";
    } else if (!as<Column>(*in.value)) {
      text_ += " COLLATE NOCASE";
    }
  }
  text_ += in.negated ? " NOT IN (" : " IN (";
  if (in.select) {
    select(*in.select);
  } else {
    bool first = true;
    for (const ExpressionPtr& item : in.list) {
      if (!first) text_ += ", ";
      first = false;
      const auto* constant = as<Literal>(*item);
      if (constant && constant->value.userType() == QMetaType::LongLong && in.list.size() > kLongList &&
          in.value->kind == Kind::Number) {
        text_ += constant->value.toString();
      } else {
        value(*item, wantedBeside(*in.value));
      }
    }
  }
  text_ += u')';
}

void SqlitePrinter::node(const Expression&, const IsNull& isNull) {
  operand(*isNull.value);
  text_ += isNull.negated ? " IS NOT NULL" : " IS NULL";
}

void SqlitePrinter::node(const Expression& whole, const Call& function) {
  const QString& name = function.function;
  if (function.star) {
    text_ += "count(*)";
    return;
  }
  const Expression& first = *function.arguments[0];
  if (name == "iif") {
    text_ += "CASE WHEN ";
    condition(first);
    text_ += " THEN ";
    value(*function.arguments[1]);
    text_ += " ELSE ";
    value(*function.arguments[2], wantedBeside(*function.arguments[1]));
    text_ += " END";
    return;
  }
  if (name == "nz") {
    text_ += "ifnull(";
    value(first);
    text_ += ", ";
    value(*function.arguments[1], wantedBeside(first));
    text_ += u')';
    return;
  }
  if (name == "isnull") {
    operand(first);
    text_ += " IS NULL";
    return;
  }
  if (name == "val") return call("qk_val(", first);
  if (name == "datevalue") return call("qk_datevalue(", first);
  if (name == "year") return call("qk_datepart(", first, ", 0)");
  if (name == "month") return call("qk_datepart(", first, ", 1)");
  if (name == "day") return call("qk_datepart(", first, ", 2)");
  if (name == "int") return call("qk_round(", first, ", 0)");
  if (name == "fix") return call("qk_round(", first, ", 1)");
  if (name == "ucase") return call("qk_ucase(", first);
  if (name == "lcase") return call("qk_lcase(", first);
  if (name == "len") {
    return first.kind == Kind::Text ? call("length(", first)
                                    : call("length(nullif(qk_text(", first, "), ''))");
  }
  if ((name == "sum" || name == "avg") && first.kind == Kind::Date) {
    text_ += name + u'(';
    serial(first);
    text_ += u')';
    return;
  }
  const bool money = whole.kind == Kind::Money && (name == "sum" || name == "avg");
  if (money) text_ += "round(";
  text_ += name + u'(';
  value(first);
  text_ += money ? "), 4)" : ")";
}

}  // namespace qk::dao::sql
