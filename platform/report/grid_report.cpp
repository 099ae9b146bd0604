#include "platform/report/grid_report.h"

#include <algorithm>

namespace qk::report {

namespace {

constexpr double kTitlePoints = 14;
constexpr double kTitleHeight = 8, kLineHeight = 5;  // millimetres
constexpr int kUprightColumns = 9;
const QColor kTitleColour(0x1F, 0x3A, 0x5F);

Template literal(const QString& text) {
  return {{{Piece::Kind::Literal, text}}, 0};
}

Template value(const QString& name) {
  return {{{Piece::Kind::Value, name}}, 0};
}

Element textAt(double top, double height, const Template& text, const TextStyle& style, Align align) {
  return {.place = {0, top, -1, height}, .shape = TextElement{text, style, align}};
}

QString nameOf(size_t column) {
  return "Spalte" + QString::number(column);
}

Band headOf(const GridTable& table) {
  Band head;
  TextStyle style;
  style.points = kTitlePoints;
  style.bold = true;
  style.colour = kTitleColour;
  head.elements.push_back(textAt(0, kTitleHeight, literal(table.title), style, Align::Left));
  double top = kTitleHeight;
  for (const QString& line : table.head) {
    head.elements.push_back(textAt(top, kLineHeight, literal(line), {}, Align::Left));
    top += kLineHeight;
  }
  return head;
}

Band footOf() {
  Band foot;
  const Template number{{{Piece::Kind::Literal, "Seite "},
                         {Piece::Kind::Value, "Seite"},
                         {Piece::Kind::Literal, " von "},
                         {Piece::Kind::Value, "Seiten"}},
                        0};
  foot.elements.push_back(textAt(0, kLineHeight, number, {}, Align::Right));
  return foot;
}

}  // namespace

GridReport gridReport(const GridTable& table) {
  GridReport made;
  Definition& report = made.definition;
  report.file = table.title;
  report.title = table.title;
  report.pageHead = headOf(table);
  report.pageFoot = footOf();
  if (table.columns.size() > kUprightColumns) report.page.transpose();
  Part& part = report.parts.emplace_back();
  part.empty = literal("Keine Zeilen.");
  auto rows = std::make_shared<TableRows>();
  double all = 0;
  for (const GridColumn& column : table.columns) all += std::max(column.width, 1e-6);
  const double page = report.page.width() - report.margins.left() - report.margins.right();
  for (size_t i = 0; i < table.columns.size(); ++i) {
    const GridColumn& column = table.columns[i];
    Column& own = part.columns.emplace_back();
    own.heading = column.heading;
    own.value = value(nameOf(i));
    own.width = page * std::max(column.width, 1e-6) / all;
    own.align = column.align;
    rows->names << nameOf(i);
  }
  for (const QStringList& row : table.rows) {
    QVariantList cells;
    for (size_t i = 0; i < table.columns.size(); ++i) cells << row.value(static_cast<qsizetype>(i));
    rows->rows.push_back(cells);
  }
  made.rows = rows;
  return made;
}

}  // namespace qk::report
