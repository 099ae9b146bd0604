// The query of the browser of all shots: what is shown, narrowed by the filter cells, in the order of the
// title that was clicked.
#pragma once

#include <QString>
#include <QStringList>

namespace qk {

class ShotBrowserQuery {
 public:
  /// The columns of the browser, in its order.
  static const QStringList& columns();

  QString text() const { return "Select * from Haering_Daten " + filter_ + order_; }

  /// One text per column. Each one that isn't blank is the beginning of what the column holds; it goes into
  /// the query as it is, so a single quote makes the query invalid.
  void setFilter(const QStringList& texts);
  void clearFilter() { filter_.clear(); }

  /// By this column, ascending; descending when the order is by it already, and back. A column whose name is
  /// found anywhere in the order's text flips that order's direction.
  void clickTitle(const QString& column);
  QString orderColumn() const { return orderColumn_; }  ///< empty before the first click
  bool isDescending() const { return order_.contains(" DESC"); }

 private:
  QString filter_;
  QString order_;
  QString orderColumn_;
};

}  // namespace qk
