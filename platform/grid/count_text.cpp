#include "platform/grid/count_text.h"

#include <QLocale>
#include <algorithm>

#include "platform/grid/bound_rows.h"

namespace qk {

QString countText(const BoundRows& rows, const QString& one, const QString& many) {
  const int count = std::max(rows.count(), rows.expected());
  const QString known = count == 1 ? one : QLocale().toString(count) + " " + many;
  if (rows.isBroken()) return known + ", nicht alle gelesen";
  if (rows.isComplete()) return known;
  // The first page of a sorted list says nothing about its length.
  if (rows.isSorting()) return rows.expected() < 0 ? "Wird sortiert…" : known + ", wird sortiert…";
  return count == 0 ? "Wird gesucht…" : known + ", es werden mehr…";
}

}  // namespace qk
