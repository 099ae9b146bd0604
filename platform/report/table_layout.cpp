#include "platform/report/table_layout.h"

#include <algorithm>

#include "platform/report/formats.h"
#include "platform/report/report_error.h"

namespace qk::report {

namespace {

const QColor kInk(0x1F, 0x2D, 0x3D);
const QColor kHeadGround(0xE6, 0xEB, 0xF1);
const QColor kFaint(0xD0, 0xD4, 0xD9);

constexpr double kSide = 0.9 * kUnitsPerMillimetre;  // between a text and the edge of its column
constexpr double kAbove = 0.55 * kUnitsPerMillimetre;
constexpr double kTitleAbove = 2.4 * kUnitsPerMillimetre;
constexpr double kFine = 0.1 * kUnitsPerMillimetre;
constexpr double kStrong = 0.3 * kUnitsPerMillimetre;
constexpr double kTitleGrowth = 1.06;

bool isNumeric(dao::FieldType type) {
  return type != dao::FieldType::Boolean && type < dao::FieldType::Date;
}

}  // namespace

TableLayout::TableLayout(const Definition& report, const Part& part, const std::vector<dao::FieldDef>& fields,
                         const std::vector<int>& sums, double width, Fonts& fonts, const BandLayout& bands)
    : fonts_(fonts),
      bands_(bands),
      width_(width),
      plain_(report.font.font),
      bold_(fonts.number(report.font.family, report.font.points, true, false)),
      title_(fonts.number(report.font.family, report.font.points * kTitleGrowth, true, false)) {
  for (const Column& column : part.columns) {
    Placed placed{&column};
    placed.align = alignOf(column, fields);
    placed.font = column.bold ? bold_ : plain_;
    if (column.summed) {
      const int slot = column.value.pieces.front().slot;
      placed.sum = static_cast<int>(std::find(sums.begin(), sums.end(), slot) - sums.begin());
    }
    columns_.push_back(placed);
  }
  place(report, part, width);
}

Align TableLayout::alignOf(const Column& column, const std::vector<dao::FieldDef>& fields) const {
  if (column.align) return *column.align;
  if (column.bars || column.value.pieces.size() != 1) return Align::Left;
  const Piece& piece = column.value.pieces.front();
  if (piece.format &&
      (piece.format->kind == Format::Kind::Currency || piece.format->kind == Format::Kind::Number))
    return Align::Right;
  if (piece.from == Piece::From::RowNumber) return Align::Right;
  const bool known = piece.from == Piece::From::Row && piece.slot < static_cast<int>(fields.size());
  return known && isNumeric(fields[static_cast<size_t>(piece.slot)].type) ? Align::Right : Align::Left;
}

void TableLayout::place(const Definition& report, const Part& part, double width) {
  double fixed = 0, shares = 0;
  for (const Column& column : part.columns)
    (column.share ? shares : fixed) += column.share ? column.width : column.width * kUnitsPerMillimetre;
  constexpr double kLeastShare = 4 * kUnitsPerMillimetre;
  const double rest = width - fixed;
  const double tolerance = kUnitsPerMillimetre / 10;
  if (!part.columns.empty() && (rest < -tolerance || (shares > 0 && rest / shares < kLeastShare)))
    fail(report.file, part.columns.front().line, "Die Spalten sind zusammen breiter als die Seite.");
  double left = 0;
  for (Placed& placed : columns_) {
    const Column& column = *placed.column;
    const double all = column.share ? rest * column.width / shares : column.width * kUnitsPerMillimetre;
    placed.left = left + kSide;
    placed.width = std::max(1.0, all - 2 * kSide);
    left += all;
  }
}

void TableLayout::rule(double y, double thickness, const QColor& colour, const QPointF& corner,
                       PageItems& out) const {
  out.items.push_back(
      LineItem{QLineF(corner.x(), corner.y() + y, corner.x() + width_, corner.y() + y), thickness, colour});
}

double TableLayout::headHeight() const {
  qsizetype lines = 1;
  for (const Placed& placed : columns_)
    lines = std::max(lines, fonts_.wrapped(bold_, placed.column->heading, placed.width).size());
  return static_cast<double>(lines) * fonts_.lineHeight(bold_) + 3 * kAbove;
}

void TableLayout::head(const QPointF& corner, PageItems& out) const {
  const double height = headHeight();
  out.items.push_back(BoxItem{{corner, QSizeF(width_, height)}, 0, kInk, kHeadGround});
  const double step = fonts_.lineHeight(bold_);
  for (const Placed& placed : columns_) {
    const QStringList lines = fonts_.wrapped(bold_, placed.column->heading, placed.width);
    QRectF box(corner.x() + placed.left,
               corner.y() + height - 1.5 * kAbove - step * static_cast<double>(lines.size()), placed.width,
               step);
    for (const QString& one : lines) {
      bands_.line(out, bold_, one, box, placed.align, kInk);
      box.translate(0, step);
    }
  }
  rule(height, kStrong, kInk, corner, out);
}

double TableLayout::row(const Known& known, const QPointF& corner, PageItems* out) const {
  double height = fonts_.lineHeight(plain_);
  for (const Placed& placed : columns_) {
    const Column& column = *placed.column;
    const QString text = filled(column.value, known);
    const double step = fonts_.lineHeight(placed.font);
    QRectF box(corner.x() + placed.left, corner.y() + kAbove, placed.width, step);
    if (column.bars) {
      if (text.isEmpty()) continue;
      const double bars = column.barHeight * kUnitsPerMillimetre;
      if (out) {
        out->items.push_back(BarItem{{box.topLeft(), QSizeF(placed.width, bars)}, *column.bars, text});
        box.translate(0, bars);
        bands_.line(*out, plain_, text, box, Align::Centre, Qt::black);
      }
      height = std::max(height, bars + step);
    } else if (placed.align == Align::Right) {
      // A figure is never broken or cut: it may reach into the free room at its left.
      if (out) bands_.line(*out, placed.font, text, box, placed.align, Qt::black);
    } else if (column.oneLine) {
      if (out)
        bands_.line(*out, placed.font, fonts_.elided(placed.font, text, placed.width), box, placed.align,
                    Qt::black);
    } else {
      const QStringList lines = fonts_.wrapped(placed.font, text, placed.width);
      height = std::max(height, step * static_cast<double>(lines.size()));
      if (!out) continue;
      for (const QString& one : lines) {
        bands_.line(*out, placed.font, one, box, placed.align, Qt::black);
        box.translate(0, step);
      }
    }
  }
  height += 2 * kAbove;
  if (out) rule(height, kFine, kFaint, corner, *out);
  return height;
}

double TableLayout::sumHeight() const {
  return fonts_.lineHeight(bold_) + 3 * kAbove;
}

void TableLayout::sum(const QString& label, const Level& level, const QPointF& corner, PageItems& out) const {
  const double step = fonts_.lineHeight(bold_);
  const double top = corner.y() + 1.5 * kAbove;
  rule(0, kStrong, kInk, corner, out);
  double room = width_ - 2 * kSide;
  for (const Placed& placed : columns_) {
    if (placed.sum < 0) continue;
    const Piece& piece = placed.column->value.pieces.front();
    const QVariant value = level.sums[static_cast<size_t>(placed.sum)].value();
    const QString text = formatted(value, piece.format);
    const double width = fonts_.width(bold_, text);
    room = std::min(room, placed.left + placed.width - width - 2 * kSide);
    bands_.line(out, bold_, text, {corner.x() + placed.left, top, placed.width, step}, placed.align, kInk);
  }
  bands_.line(out, bold_, fonts_.elided(bold_, label, std::max(room, 0.0)),
              {corner.x() + kSide, top, width_, step}, Align::Left, kInk);
}

double TableLayout::titleHeight() const {
  return fonts_.lineHeight(title_) + kTitleAbove + 2 * kAbove;
}

void TableLayout::title(const QString& text, const QPointF& corner, PageItems& out) const {
  bands_.line(out, title_, fonts_.elided(title_, text, width_ - 2 * kSide),
              {corner.x() + kSide, corner.y() + kTitleAbove, width_, fonts_.lineHeight(title_)}, Align::Left,
              kInk);
  rule(titleHeight(), kFine, kInk, corner, out);
}

}  // namespace qk::report
