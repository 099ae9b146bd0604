#include <QDateTime>
#include <algorithm>
#include <utility>

#include "platform/dao/postgres/postgres_like.h"
#include "platform/dao/postgres/postgres_printer.h"
#include "platform/dao/sql/functions.h"
#include "platform/dao/sql/native_values.h"

namespace qk::dao::sql {
namespace {

/// A Null must have a type where it stands alone.
const char* typeOfNull(Kind kind) {
  switch (kind) {
    case Kind::Boolean:
    case Kind::Number:
    case Kind::Byte:
    case Kind::Integer:
    case Kind::Long:
      return "NULL::float8";
    case Kind::Money:
      return "NULL::numeric";
    case Kind::Date:
      return "NULL::timestamp";
    case Kind::Text:
      return "NULL::text";
    case Kind::Unknown:
      break;
  }
  return "NULL";
}

bool isOrder(BinaryOperator op) {
  return op != BinaryOperator::Equal && op != BinaryOperator::NotEqual;
}

}  // namespace

void PostgresPrinter::literal(const QVariant& value, Kind wanted) {
  const QVariant native = toNative(value, wanted);
  if (native.isNull()) {
    text_ += typeOfNull(wanted);
    return;
  }
  const bool isText = native.userType() == QMetaType::QString;
  const bool isDate =
      isText && (wanted == Kind::Date || value.userType() == QMetaType::QDateTime) && wanted != Kind::Text;
  const bool isReal = native.userType() == QMetaType::Double;
  if (literals_ == Literals::AsParameters && !writeOut_) {
    values_ << native;
    text_ += u'?';
  } else if (isText) {
    text_ += u'\'' + native.toString().replace(u'\'', "''") + u'\'';
  } else {
    text_ += u'\'' + (isReal ? QString::number(native.toDouble(), 'g', 17) : native.toString()) + u'\'';
  }
  text_ += isDate ? "::timestamp(0)" : isText ? "::text" : isReal ? "::float8" : "::int8";
}

void PostgresPrinter::truthAsValue(const Expression& expression) {
  text_ += "-(";
  print(expression);
  text_ += ")::integer";
}

void PostgresPrinter::valueAsTruth(const Expression& expression) {
  text_ += u'(';
  if (isNumeric(expression.kind) && expression.kind != Kind::Money) {
    operand(expression);
  } else {
    number(expression);
  }
  text_ += " <> 0)";
}

void PostgresPrinter::number(const Expression& expression) {
  switch (expression.kind) {
    case Kind::Money:
      return operand(expression);
    case Kind::Date:
      return call("qk_serial(", expression);
    case Kind::Text:
      return call("qk_number(", expression);
    default:
      return call("CAST(", expression, " AS float8)");
  }
}

void PostgresPrinter::quotient(const Binary& binary) {
  text_ += "CAST(";
  number(*binary.left);
  text_ += " AS float8) / NULLIF(CAST(";
  number(*binary.right);
  text_ += " AS float8), 0)";
}

void PostgresPrinter::side(const Expression& expression, Kind wanted) {
  const bool rounded = expression.kind == Kind::Money && isComposite(expression);
  if (!rounded) return converted(expression, wanted);
  if (wanted == Kind::Text) text_ += "qk_text(";
  call("qk_money(CAST(", expression, " AS float8))");
  if (wanted == Kind::Text) text_ += u')';
}

void PostgresPrinter::folded(const Expression& expression) {
  text_ += "lower(";
  side(expression, Kind::Text);
  text_ += " COLLATE \"C\")";
}

void PostgresPrinter::comparison(const Expression& left, BinaryOperator op, const Expression& right) {
  const Kind kind = comparedAs(left, right);
  const bool bothText = left.kind == Kind::Text && right.kind == Kind::Text;
  if (bothText && (isOrder(op) || hasForeignLetter(left) || hasForeignLetter(right))) {
    operand(left);
    text_ += " COLLATE german";
    text_ += symbolOf(op);
    return operand(right);
  }
  if (kind == Kind::Text) {
    folded(left);
    text_ += symbolOf(op);
    return folded(right);
  }
  side(left, kind);
  text_ += symbolOf(op);
  side(right, kind);
}

void PostgresPrinter::textOf(const Expression& expression) {
  if (expression.kind == Kind::Text || as<Literal>(expression)) return operand(expression, Kind::Text);
  call("qk_german(", expression);
}

void PostgresPrinter::like(const Binary& binary) {
  const auto* pattern = as<Literal>(*binary.right);
  if (!pattern || pattern->value.isNull()) {
    text_ += "qk_like(";
    textOf(*binary.left);
    text_ += ", ";
    value(*binary.right, Kind::Text);
    text_ += u')';
    return;
  }
  textOf(*binary.left);
  text_ += " COLLATE \"C\" ~ ";
  literal(regularExpression(toNative(pattern->value, Kind::Text).toString()), Kind::Text);
}

void PostgresPrinter::list(const In& in) {
  const bool text = in.value->kind == Kind::Text;
  const bool foreign = text && std::any_of(in.list.begin(), in.list.end(),
                                           [](const ExpressionPtr& item) { return hasForeignLetter(*item); });
  if (text && !foreign) {
    folded(*in.value);
  } else {
    operand(*in.value);
  }
  if (foreign) text_ += " COLLATE german";
  text_ += in.negated ? " NOT IN (" : " IN (";
  const bool longList = isLongList(in);
  for (std::size_t i = 0; i < in.list.size(); ++i) {
    if (i > 0) text_ += ", ";
    const auto* constant = as<Literal>(*in.list[i]);
    if (longList && constant && constant->value.userType() == QMetaType::LongLong) {
      text_ += constant->value.toString();
    } else if (text && !foreign) {
      folded(*in.list[i]);
    } else {
      value(*in.list[i], wantedBeside(*in.value));
    }
  }
  text_ += u')';
}

void PostgresPrinter::selectOfTexts(const Select& select, Kind kind) {
  const QString column = kind == Kind::Text      ? "c1"
                         : kind == Kind::Unknown ? "c1::text"
                         : kind == Kind::Date    ? "qk_text_date(c1)"
                                                 : "qk_text(c1)";
  text_ += "SELECT " + foldedText(column) + " FROM (";
  this->select(select);
  text_ += ") AS qk_in(c1)";
}

/// A column of whole numbers rounds by itself; but only of doubles it rounds halves to even.
void PostgresPrinter::rounded(const Expression& expression, Kind wanted) {
  if (wanted == Kind::Money) text_ += "qk_stored_money(";
  text_ += "CAST(";
  number(expression);
  text_ += wanted == Kind::Money ? " AS float8))" : " AS float8)";
}

void PostgresPrinter::aggregate(const Expression& whole, const Call& function) {
  const Select* grouped = std::exchange(grouped_, nullptr);
  const Expression& first = *function.arguments[0];
  const bool adds = addsUp(function);
  if (adds && whole.kind == Kind::Money) {
    text_ += "qk_money(CAST(" + function.name + "(CAST(";
    value(first);
    text_ += " AS numeric)) AS float8))";
  } else if (adds) {
    text_ += function.name + u'(';
    number(first);
    text_ += u')';
  } else if (first.kind == Kind::Text && function.function->id != Function::Id::Count) {
    // The least without regard to case, as it is spelled.
    text_ += "(array_agg(";
    value(first);
    text_ += " ORDER BY ";
    folded(first);
    text_ += function.function->id == Function::Id::Max ? " DESC NULLS LAST))[1]" : " NULLS LAST))[1]";
  } else {
    text_ += function.name + u'(';
    value(first);
    text_ += u')';
  }
  grouped_ = grouped;
}

}  // namespace qk::dao::sql
