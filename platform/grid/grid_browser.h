// Ties the filter row and the titles of a grid to a query: what is typed narrows the list, what is clicked
// orders it. The owner shows the rows, for he knows their store and what is said when they can't be read.
#pragma once

#include <QObject>
#include <functional>

#include "platform/grid/filtered_query.h"

namespace qk {

class BoundGrid;

class GridBrowser : public QObject {
 public:
  enum class Act { Filter, Order, Clear };

  /// `show` lists the rows of query() anew. It is called by every act here, and never while a row of the grid
  /// is edited and can't be stored: the act is taken back then. Grid and owner outlive it.
  GridBrowser(BoundGrid& grid, FilteredQuery query, std::function<void(Act)> show);

  const FilteredQuery& query() const { return query_; }
  /// Another query, unfiltered and in its first order; nothing is shown yet.
  void setQuery(FilteredQuery query);
  void clearFilter();

 private:
  void filter();
  void order(int column);
  void showOrder();

  BoundGrid& grid_;
  FilteredQuery query_;
  std::function<void(Act)> show_;
};

}  // namespace qk
