// The query behind a grid with filter cells and titles: what is shown, narrowed by the cells, in the order of
// the title that was clicked.
#pragma once

#include <QString>
#include <QStringList>
#include <vector>

namespace qk {

class FilteredQuery {
 public:
  struct Column {
    QString filter;          ///< the expression that a filter text is compared with
    QStringList order = {};  ///< the expressions that a title sorts by; the one of the filter when empty
  };
  enum class Quote {
    Breaks,  ///< a filter text goes into the query as it is, so a single quote makes the query invalid
    IsText
  };
  struct Shape {
    QString base;                      ///< up to the filter
    QString joint;                     ///< what joins the filter to the base: " WHERE " or " AND "
    std::vector<Column> columns = {};  ///< in the order of the grid
    QString firstOrder = {};           ///< until a title is clicked
    Quote quote = Quote::IsText;
  };

  FilteredQuery() = default;
  explicit FilteredQuery(Shape shape) : shape_(std::move(shape)) {}

  QString text() const { return shape_.base + filter_ + (order_.isEmpty() ? shape_.firstOrder : order_); }

  /// One text per column. Each one that isn't blank is the beginning of what the column holds.
  void setFilter(const QStringList& texts);
  void clearFilter() { setFilter({}); }
  const QStringList& filterTexts() const { return texts_; }
  bool isFiltered() const { return !filter_.isEmpty(); }

  /// By this column, ascending; descending when the order is by it already, and back. A column whose
  /// expression is found anywhere in the order's text flips that order's direction.
  void clickTitle(int column);
  int orderColumn() const { return orderColumn_; }  ///< -1 before the first click
  bool isDescending() const { return order_.contains(" DESC"); }

 private:
  QStringList orderOf(int column) const;

  Shape shape_;
  QStringList texts_;
  QString filter_;
  QString order_;
  int orderColumn_ = -1;
};

}  // namespace qk
