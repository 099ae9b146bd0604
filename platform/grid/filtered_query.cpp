#include "platform/grid/filtered_query.h"

#include "platform/dao/sql/quote.h"

namespace qk {

void FilteredQuery::setFilter(const QStringList& texts) {
  texts_ = texts;
  QStringList conditions;
  for (qsizetype i = 0; i < texts.size(); ++i) {
    if (texts[i].trimmed().isEmpty()) continue;
    const QString beginning = texts[i] + "*";
    const QString pattern =
        shape_.quote == Quote::IsText ? dao::sql::quoted(beginning) : "'" + beginning + "'";
    conditions.append(shape_.columns[static_cast<size_t>(i)].filter + " LIKE " + pattern);
  }
  filter_ = conditions.isEmpty() ? QString() : shape_.joint + conditions.join(" AND ");
}

QStringList FilteredQuery::orderOf(int column) const {
  const Column& clicked = shape_.columns[static_cast<size_t>(column)];
  return clicked.order.isEmpty() ? QStringList(clicked.filter) : clicked.order;
}

void FilteredQuery::clickTitle(int column) {
  // A plain search in the text, as operators know it: "Klein" is found in Kleinteile, "Y" in "BY".
  const bool flips = order_.contains(orderOf(column).first());
  if (!flips) orderColumn_ = column;
  const bool descending = flips && order_.contains(" ASC");
  const QString direction = descending ? " DESC" : " ASC";
  order_ = " ORDER BY " + orderOf(orderColumn_).join(direction + ", ") + direction;
}

}  // namespace qk
