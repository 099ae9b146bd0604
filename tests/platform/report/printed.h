// What stands on the pages of a report, as lines that a test can read: the texts at one height of a page,
// from left to right, with "|" between.
#pragma once

#include <QMap>
#include <QStringList>
#include <cmath>

#include "platform/report/document.h"

namespace qk::test {

inline QStringList linesOf(const report::PageItems& page) {
  QMap<int, QMap<double, QString>> lines;
  for (const report::Item& item : page.items)
    if (const auto* text = std::get_if<report::TextItem>(&item))
      lines[static_cast<int>(std::lround(text->base.y() / 20))][text->base.x()] = text->text;
  QStringList found;
  for (const auto& line : lines) found << QStringList(line.values()).join(u'|');
  return found;
}

/// Lays out all of it.
inline QList<QStringList> printedPages(report::Document& document) {
  document.finish();
  QList<QStringList> pages;
  for (int page = 0; page < document.pageCount(); ++page) pages << linesOf(document.page(page));
  return pages;
}

inline QStringList printedLines(report::Document& document) {
  QStringList all;
  for (const QStringList& page : printedPages(document)) all += page;
  return all;
}

template <class Shape>
std::vector<Shape> itemsOf(const report::PageItems& page) {
  std::vector<Shape> found;
  for (const report::Item& item : page.items)
    if (const auto* shape = std::get_if<Shape>(&item)) found.push_back(*shape);
  return found;
}

}  // namespace qk::test
