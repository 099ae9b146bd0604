#include "platform/dao/sqlite/sqlite_printer.h"

#include <algorithm>

#include "platform/dao/sql/like_pattern.h"
#include "platform/dao/sql/native_values.h"

namespace qk::dao::sql {
namespace {

/// Names in an UPDATE over a join: the table it writes to, and the join with the row to change and its new
/// values.
constexpr auto kTarget = "\"qk_target\"";
constexpr auto kNewValues = "\"qk_new\"";

/// Names in the order of the tree, which a rewritten RIGHT JOIN would change. False when one has none.
bool sourceNames(const Source& source, QStringList& names, bool& reordered) {
  if (const TableSource* table = tableOf(source)) {
    names << nameOf(*table);
  } else if (const auto* inner = std::get_if<SelectSource>(&source.node)) {
    names << inner->alias;
  } else {
    const Join& join = std::get<Join>(source.node);
    reordered |= join.kind == JoinKind::Right;
    return sourceNames(*join.left, names, reordered) && sourceNames(*join.right, names, reordered);
  }
  return !names.last().isEmpty();
}

}  // namespace

void SqlitePrinter::star(const SelectItem& item, const Select& select) {
  if (!item.starTable.isEmpty()) {
    name(item.starTable);
    text_ += ".*";
    return;
  }
  QStringList names;
  bool reordered = false, named = true;
  for (const SourcePtr& source : select.from) named = sourceNames(*source, names, reordered) && named;
  if (!reordered || !named) {
    text_ += u'*';
    return;
  }
  for (qsizetype i = 0; i < names.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(names[i]);
    text_ += ".*";
  }
}

void SqlitePrinter::updateOverJoin(const Update& update, const TableSource& target) {
  const auto newValue = [](std::size_t i) { return QString("v%1").arg(i); };
  name(target.name);
  text_ += QString(" AS ") + kTarget + " SET ";
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    if (i > 0) text_ += ", ";
    name(update.set[i].column.name);
    text_ += QString(" = ") + kNewValues + u'.' + newValue(i);
  }
  text_ += " FROM (SELECT ";
  storedColumn(target, "rowid");
  text_ += " AS r";
  for (std::size_t i = 0; i < update.set.size(); ++i) {
    text_ += ", ";
    stored(*update.set[i].value, update.set[i].kind);
    text_ += " AS " + newValue(i);
  }
  joinOfWrongRows(update, target);
  text_ += QString(") AS ") + kNewValues + " WHERE " + kTarget + ".rowid = " + kNewValues + ".r";
}

void SqlitePrinter::keysOverJoin(const Update& update, const TableSource& target, const QString& key) {
  text_ += "SELECT ";
  storedColumn(target, key);
  joinOfWrongRows(update, target);
}

/// CASE keeps the order: the right rows are gathered, once, when a row of the join gives others.
void SqlitePrinter::joinOfWrongRows(const Update& update, const TableSource& target) {
  joinOf(update, target);
  text_ += "CASE WHEN ";
  givesOthers(update, target);
  text_ += " THEN ";
  storedColumn(target, "rowid");
  text_ += " NOT IN (SELECT ";
  storedColumn(target, "rowid");
  joinOf(update, target);
  storedColumn(target, "rowid");
  text_ += " IS NOT NULL AND NOT ";
  givesOthers(update, target);
  text_ += ") ELSE 0 END";
}

void SqlitePrinter::differs(const TableSource& target, const Assignment& assignment) {
  storedColumn(target, assignment.column.name);
  text_ += " COLLATE BINARY IS NOT (";
  stored(*assignment.value, assignment.kind);
  text_ += u')';
}

void SqlitePrinter::rowOfJoin(const Delete& remove, const TableSource& target) {
  text_ += "rowid IN (SELECT ";
  name(nameOf(target));
  text_ += ".rowid FROM ";
  source(*remove.source);
  where(remove.where);
  text_ += u')';
}

void SqlitePrinter::groupOfAll() {
  text_ += " GROUP BY NULL";
}

/// A stored text brings the order along by which texts are one; a computed one is told it, for DISTINCT, for
/// unions, and for whoever selects from this select.
void SqlitePrinter::resultValue(const Expression& expression, Kind wanted) {
  const Kind kind = wanted == Kind::Unknown ? expression.kind : wanted;
  if (kind != Kind::Text || as<Column>(expression)) return assigned(expression, wanted);
  text_ += u'(';
  assigned(expression, wanted);
  text_ += ") COLLATE NOCASE";
}

void SqlitePrinter::group(const Expression& expression) {
  if (expression.kind != Kind::Text || as<Column>(expression)) return value(expression);
  text_ += u'(';
  value(expression);
  text_ += ") COLLATE NOCASE";
}

void SqlitePrinter::orderItem(const OrderItem& item) {
  value(*item.expression);
  if (item.expression->kind == Kind::Text) text_ += " COLLATE german";
  if (item.descending) text_ += " DESC";
}

void SqlitePrinter::literal(const QVariant& value, Kind wanted) {
  const QVariant native = toNative(value, wanted);
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

void SqlitePrinter::truthAsValue(const Expression& expression) {
  text_ += "-(";
  print(expression);
  text_ += u')';
}

void SqlitePrinter::number(const Expression& expression) {
  if (expression.kind == Kind::Date) return call("qk_serial(", expression);
  if (expression.kind == Kind::Text) return call("qk_number(", expression);
  operand(expression);
}

void SqlitePrinter::quotient(const Binary& binary) {
  text_ += "CAST(";
  number(*binary.left);
  text_ += " AS REAL) / ";
  number(*binary.right);
}

/// Money comes without the dust of doubles.
void SqlitePrinter::side(const Expression& expression, Kind wanted) {
  if (expression.kind != Kind::Money || !isComposite(expression)) return converted(expression, wanted);
  if (wanted == Kind::Text) text_ += "qk_text(";
  call("qk_money(", expression);
  if (wanted == Kind::Text) text_ += u')';
}

void SqlitePrinter::comparison(const Expression& left, BinaryOperator op, const Expression& right) {
  const Kind kind = comparedAs(left, right);
  const auto isTextColumn = [](const Expression& expression) {
    return expression.kind == Kind::Text && as<Column>(expression);
  };
  side(left, kind);
  if (kind == Kind::Text) {
    const bool order = op != BinaryOperator::Equal && op != BinaryOperator::NotEqual;
    const bool bothText = left.kind == Kind::Text && right.kind == Kind::Text;
    if (bothText && (order || hasForeignLetter(left) || hasForeignLetter(right))) {
      text_ += " COLLATE german";
    } else if (!isTextColumn(left) && !isTextColumn(right)) {
      text_ += " COLLATE NOCASE";  // columns bring it along
    }
  }
  text_ += symbolOf(op);
  side(right, kind);
}

/// What a pattern begins with is a range of an index on the column, which the engine can't see in a call.
void SqlitePrinter::like(const Binary& binary) {
  const QByteArray beginning = keepsToKeys_ ? QByteArray() : beginningOf(binary);
  if (beginning.isEmpty()) return matches(binary);
  QByteArray behind = beginning;
  ++behind.back();  // printable ASCII, so it has a follower
  const auto bound = [&](const char* comparison, const QByteArray& limit) {
    print(*binary.left);
    text_ += QString(" COLLATE NOCASE ") + comparison + u' ';
    literal(QString::fromLatin1(limit), Kind::Text);
    text_ += " AND ";
  };
  text_ += u'(';
  bound(">=", beginning);
  bound("<", behind);
  matches(binary);
  text_ += u')';
}

QByteArray SqlitePrinter::beginningOf(const Binary& like) {
  const auto* pattern = as<Literal>(*like.right);
  if (!pattern || pattern->value.isNull() || like.left->kind != Kind::Text || !as<Column>(*like.left))
    return {};
  return LikePattern(toNative(pattern->value, Kind::Text).toString()).plainBeginning();
}

void SqlitePrinter::matches(const Binary& binary) {
  text_ += binary.left->kind == Kind::Date ? "qk_like_date(" : "qk_like(";
  value(*binary.left);
  text_ += ", ";
  value(*binary.right, Kind::Text);
  text_ += u')';
}

void SqlitePrinter::rounded(const Expression& expression, Kind wanted) {
  if (wanted == Kind::Money) {
    text_ += "qk_stored_money(";
    number(expression);
    text_ += u')';
    return;
  }
  const auto [least, greatest] = limitsOf(wanted);
  text_ += "qk_whole(";
  number(expression);
  text_ += ", " + QString::number(qint64(least)) + ", " + QString::number(qint64(greatest)) + u')';
}

void SqlitePrinter::textOfIn(const Expression& value) {
  operand(value, Kind::Text);
  if (!as<Column>(value) || value.kind != Kind::Text) text_ += " COLLATE NOCASE";
}

void SqlitePrinter::selectOfTexts(const Select& select, Kind kind) {
  if (kind == Kind::Text) return this->select(select);
  text_ += "WITH qk_in(c1) AS (";
  this->select(select);
  text_ += kind == Kind::Date ? ") SELECT qk_text_date(c1) FROM qk_in" : ") SELECT qk_text(c1) FROM qk_in";
}

void SqlitePrinter::list(const In& in) {
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
  const bool longList = isLongList(in);
  for (std::size_t i = 0; i < in.list.size(); ++i) {
    if (i > 0) text_ += ", ";
    const auto* constant = as<Literal>(*in.list[i]);
    if (longList && constant && constant->value.userType() == QMetaType::LongLong) {
      text_ += constant->value.toString();
    } else {
      value(*in.list[i], wantedBeside(*in.value));
    }
  }
  text_ += u')';
}

void SqlitePrinter::aggregate(const Expression& whole, const Call& function) {
  const Expression& first = *function.arguments[0];
  const bool adds = addsUp(function);
  const bool money = whole.kind == Kind::Money && adds;
  if (money) text_ += "qk_money(";
  text_ += function.name + u'(';
  if (adds) {
    number(first);
  } else {
    value(first);
    if (first.kind == Kind::Text && !as<Column>(first)) text_ += " COLLATE NOCASE";
  }
  text_ += money ? "))" : ")";
}

}  // namespace qk::dao::sql
