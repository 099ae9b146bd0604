#include "tests/platform/dao/sql/random_text.h"

#include <QDateTime>

namespace qk::dao::sql::test {
namespace {

template <typename Node>
ExpressionPtr make(Node node) {
  return std::make_unique<Expression>(Expression{std::move(node)});
}

}  // namespace

Column RandomText::column() {
  static const QStringList kTables = {"", "", "Schützen", "Verein", "X"};
  static const QStringList kNames = {"ID", "Name", "Startnummer", "Alter von", "VereinsID", "y"};
  return {kTables[below(5)], kNames[below(6)], -1};
}

Literal RandomText::literal() {
  switch (below(6)) {
    case 0:
      return {QVariant(qlonglong(below(2000) - 1000))};
    case 1:
      return {QVariant((below(2000) - 1000) / 8.0)};
    case 2:
      return {QString("O'Neill äß*%1").arg(below(9))};
    case 3:
      return {QDateTime(QDate(2026, 1, 1).addDays(below(400)), QTime(0, 0).addSecs(below(86400)))};
    case 4:
      return {QVariant(below(2) == 1)};
    default:
      return {};
  }
}

std::vector<ExpressionPtr> RandomText::expressions(int count, int depth) {
  std::vector<ExpressionPtr> result;
  for (int i = 0; i < count; ++i) result.push_back(expression(depth));
  return result;
}

ExpressionPtr RandomText::expression(int depth) {
  static const QStringList kFunctions = {"abs", "val", "month", "datevalue", "max", "nosuch"};
  if (depth <= 0) return below(2) ? make(literal()) : make(column());
  switch (below(9)) {
    case 0:
      return make(Unary{below(2) ? UnaryOperator::Not : UnaryOperator::Minus, expression(depth - 1)});
    case 1:
      return make(
          Between{expression(depth - 1), expression(depth - 1), expression(depth - 1), below(2) == 1});
    case 2: {
      In in{expression(depth - 1), {}, nullptr, below(2) == 1};
      if (below(3) == 0) {
        in.select = std::make_unique<Select>(select(depth - 1));
      } else {
        in.list = expressions(1 + below(3), depth - 1);
      }
      return make(std::move(in));
    }
    case 3:
      return make(IsNull{expression(depth - 1), below(2) == 1});
    case 4:
      return make(Call{kFunctions[below(6)], expressions(below(3), depth - 1), false});
    case 5:
      return make(Call{"count", {}, true});
    case 6:
      return below(2) ? make(literal()) : make(column());
    default:
      return make(Binary{BinaryOperator(below(16)), expression(depth - 1), expression(depth - 1)});
  }
}

SourcePtr RandomText::source(int depth) {
  const int choice = depth <= 0 ? 0 : below(4);
  if (choice == 3) {
    Join join{JoinKind(below(3)), source(depth - 1), source(depth - 1), expression(1)};
    return std::make_unique<Source>(Source{std::move(join)});
  }
  if (choice == 2) {
    SelectSource inner{std::make_unique<Select>(select(depth - 1)), "X"};
    return std::make_unique<Source>(Source{std::move(inner)});
  }
  static const QStringList kTables = {"Schützen", "Verein", "NoSuch"};
  return std::make_unique<Source>(Source{TableSource{kTables[below(3)], below(3) ? "" : "X", {}}});
}

Select RandomText::select(int depth) {
  Select select;
  select.distinct = below(4) == 0;
  if (below(4) == 0) select.top = below(50);
  for (int i = 0; i <= below(3); ++i) {
    SelectItem item;
    if (below(3)) {
      item.expression = expression(depth);
      if (below(2)) item.alias = QString("A%1").arg(i);
    } else if (below(2)) {
      item.starTable = "Schützen";
    }
    select.items.push_back(std::move(item));
  }
  for (int i = 0; i <= below(2); ++i) select.from.push_back(source(depth));
  if (below(2)) select.where = expression(depth);
  if (below(4) == 0) select.groupBy = expressions(1 + below(2), 1);
  if (!select.groupBy.empty() && below(2)) select.having = expression(1);
  if (depth > 0 && below(4) == 0) {
    select.unionNext = std::make_unique<Select>(this->select(0));
    select.unionNext->orderBy.clear();
    select.unionAll = below(2) == 1;
  }
  if (depth > 0 && below(2)) select.orderBy.push_back({expression(1), below(2) == 1});
  return select;
}

Statement RandomText::statement() {
  switch (below(6)) {
    case 0: {
      Update update{source(1), {}, expression(2)};
      for (int i = 0; i <= below(2); ++i) update.set.push_back({column(), expression(2)});
      return update;
    }
    case 1:
      return Delete{source(1), below(2) ? "Schützen" : "", below(2) ? expression(2) : nullptr};
    case 2: {
      Insert insert{"Schützen", {"ID", "Name"}, {}, nullptr, {}};
      if (below(2)) {
        insert.values = expressions(2, 1);
      } else {
        insert.select = std::make_unique<Select>(select(1));
      }
      return insert;
    }
    default:
      return select(3);
  }
}

QString RandomText::garbage() {
  static const QStringList kPieces = {
      "SELECT", "FROM",        "WHERE", "ORDER BY", "GROUP BY", "UNION",   "INNER JOIN", "ON",       "AS",
      "AND",    "OR",          "NOT",   "LIKE",     "IN",       "IS NULL", "SET",        "UPDATE",   "DELETE",
      "INTO",   "INSERT INTO", "TOP",   "(",        ")",        "*",       ",",          ".",        ";",
      "'",      "\"",          "#",     "[",        "]",        "=",       "<>",         "Schützen", "Name",
      "ID",     "5",           "9.5",   "'x*'",     "?",        "\\",      "-",          "\n",       "🂡",
      "max(",   "#1/1/2026#",  "1e999", "!",        "Verein"};
  QString text;
  for (int i = below(30); i >= 0; --i) text += kPieces[below(int(kPieces.size()))] + (below(3) ? " " : "");
  return text;
}

QString RandomText::damaged(QString text) {
  for (int i = below(4); i >= 0 && !text.isEmpty(); --i) {
    const int at = below(int(text.size()));
    switch (below(3)) {
      case 0:
        text.remove(at, 1 + below(3));
        break;
      case 1:
        text.insert(at, text.mid(at, 1 + below(5)));
        break;
      default:
        text[at] = QChar(char16_t(32 + below(300)));
    }
  }
  return text;
}

}  // namespace qk::dao::sql::test
