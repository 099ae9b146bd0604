#include "tests/platform/dao/sql/source_text.h"

#include <QDateTime>

namespace qk::dao::sql::test {
namespace {

QString name(const QString& text) {
  return u'[' + text + u']';
}
QString aliased(const QString& text, const QString& alias) {
  return alias.isEmpty() ? text : text + " AS " + name(alias);
}
QString text(const Select& select);
QString text(const Source& source);

QString joined(const std::vector<ExpressionPtr>& expressions) {
  QStringList parts;
  for (const ExpressionPtr& expression : expressions) parts << sourceText(*expression);
  return parts.join(", ");
}

QString text(const Literal& node) {
  switch (node.value.userType()) {
    case QMetaType::UnknownType:
      return "NULL";
    case QMetaType::Bool:
      return node.value.toBool() ? "TRUE" : "FALSE";
    case QMetaType::QString:
      return u'\'' + node.value.toString().replace(u'\'', "''") + u'\'';
    case QMetaType::QDateTime:
      return node.value.toDateTime().toString("#MM/dd/yyyy HH:mm:ss#");
    case QMetaType::Double:
      return QString::number(node.value.toDouble(), 'e', 17);
    default:
      return node.value.toString();
  }
}

QString text(const Column& node) {
  return node.table.isEmpty() ? name(node.name) : name(node.table) + u'.' + name(node.name);
}

QString text(const Unary& node) {
  return (node.op == UnaryOperator::Not ? "(NOT (" : "(-(") + sourceText(*node.operand) + "))";
}

QString text(const Binary& node) {
  static const char* const kSymbols[] = {
      "OR", "AND", "=", "<>", "<", "<=", ">", ">=", "LIKE", "+", "-", "&", "*", "/", "\\", "MOD"};
  return u'(' + sourceText(*node.left) + u' ' + kSymbols[int(node.op)] + u' ' + sourceText(*node.right) +
         u')';
}

QString text(const Between& node) {
  return u'(' + sourceText(*node.value) + (node.negated ? " NOT BETWEEN " : " BETWEEN ") +
         sourceText(*node.low) + " AND " + sourceText(*node.high) + u')';
}

QString text(const In& node) {
  return u'(' + sourceText(*node.value) + (node.negated ? " NOT IN (" : " IN (") +
         (node.select ? text(*node.select) : joined(node.list)) + "))";
}

QString text(const IsNull& node) {
  return u'(' + sourceText(*node.value) + (node.negated ? " IS NOT NULL)" : " IS NULL)");
}

QString text(const Call& node) {
  return node.name + u'(' + (node.star ? "*" : joined(node.arguments)) + u')';
}

QString text(const TableSource& node) {
  return aliased(name(node.name) + (node.file.isEmpty() ? QString() : " IN '" + node.file + u'\''),
                 node.alias);
}
QString text(const SelectSource& node) {
  return aliased(u'(' + text(*node.select) + u')', node.alias);
}
QString text(const Join& node) {
  static const char* const kKinds[] = {" INNER JOIN ", " LEFT JOIN ", " RIGHT JOIN "};
  return u'(' + text(*node.left) + kKinds[int(node.kind)] + text(*node.right) + " ON " +
         sourceText(*node.on) + u')';
}
QString text(const Source& source) {
  return std::visit([](const auto& node) { return text(node); }, source.node);
}

QString core(const Select& select) {
  QString result = "SELECT ";
  if (select.distinct) result += "DISTINCT ";
  if (select.top) result += QString("TOP %1 ").arg(*select.top);
  QStringList items;
  for (const SelectItem& item : select.items) {
    if (item.expression) {
      items << aliased(sourceText(*item.expression), item.alias);
    } else {
      items << (item.starTable.isEmpty() ? QString("*") : name(item.starTable) + ".*");
    }
  }
  result += items.join(", ");
  if (!select.into.isEmpty()) result += " INTO " + name(select.into);
  if (!select.intoFile.isEmpty()) result += " IN '" + select.intoFile + u'\'';
  QStringList sources;
  for (const SourcePtr& source : select.from) sources << text(*source);
  if (!sources.isEmpty()) result += " FROM " + sources.join(", ");
  if (select.where) result += " WHERE " + sourceText(*select.where);
  if (!select.groupBy.empty()) result += " GROUP BY " + joined(select.groupBy);
  if (select.having) result += " HAVING " + sourceText(*select.having);
  return result;
}

QString text(const Select& select) {
  QString result = core(select);
  for (const Select* part = &select; part->unionNext; part = part->unionNext.get()) {
    result += (part->unionAll ? " UNION ALL " : " UNION ") + core(*part->unionNext);
  }
  QStringList order;
  for (const OrderItem& item : select.orderBy) {
    order << sourceText(*item.expression) + (item.descending ? " DESC" : "");
  }
  return order.isEmpty() ? result : result + " ORDER BY " + order.join(", ");
}

QString where(const ExpressionPtr& condition) {
  return condition ? " WHERE " + sourceText(*condition) : QString();
}

QString text(const Update& update) {
  QStringList set;
  for (const Assignment& assignment : update.set) {
    set << text(assignment.column) + " = " + sourceText(*assignment.value);
  }
  return "UPDATE " + text(*update.source) + " SET " + set.join(", ") + where(update.where);
}

QString text(const Delete& remove) {
  return "DELETE " + (remove.starTable.isEmpty() ? QString("*") : name(remove.starTable) + ".*") + " FROM " +
         text(*remove.source) + where(remove.where);
}

QString text(const Insert& insert) {
  QStringList columns;
  for (const QString& column : insert.columns) columns << name(column);
  const QString list = columns.isEmpty() ? QString() : " (" + columns.join(", ") + u')';
  return "INSERT INTO " + name(insert.table) + list +
         (insert.select ? u' ' + text(*insert.select) : " VALUES (" + joined(insert.values) + u')');
}

}  // namespace

QString sourceText(const Statement& statement) {
  return std::visit([](const auto& node) { return text(node); }, statement);
}

QString sourceText(const Expression& expression) {
  return std::visit([](const auto& node) { return text(node); }, expression.node);
}

}  // namespace qk::dao::sql::test
