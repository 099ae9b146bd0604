#include "platform/grid/grid_browser.h"

#include "platform/grid/bound_grid.h"

namespace qk {

GridBrowser::GridBrowser(BoundGrid& grid, FilteredQuery query, std::function<void(Act)> show)
    : grid_(grid), query_(std::move(query)), show_(std::move(show)) {
  connect(&grid, &BoundGrid::filterChanged, this, &GridBrowser::filter);
  connect(&grid, &BoundGrid::titleClicked, this, &GridBrowser::order);
}

void GridBrowser::setQuery(FilteredQuery query) {
  query_ = std::move(query);
  grid_.clearFilterTexts();
  showOrder();
}

void GridBrowser::filter() {
  if (!grid_.submitRow()) return grid_.setFilterTexts(query_.filterTexts());
  query_.setFilter(grid_.filterTexts());
  show_(Act::Filter);
}

void GridBrowser::order(int column) {
  if (!grid_.submitRow()) return;
  query_.clickTitle(column);
  show_(Act::Order);
  showOrder();
}

/// The mark stands where the order comes from, which isn't always where the click was.
void GridBrowser::showOrder() {
  grid_.showOrder(query_.orderColumn(), query_.isDescending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void GridBrowser::clearFilter() {
  if (!grid_.submitRow()) return;
  query_.clearFilter();
  show_(Act::Clear);
  grid_.clearFilterTexts();
}

}  // namespace qk
