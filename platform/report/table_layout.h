// The table of a part: heading, rows and sums in columns.
#pragma once

#include "platform/dao/values/types.h"
#include "platform/report/band_layout.h"

namespace qk::report {

class TableLayout {
 public:
  /// `width` is that of one row, `sums` the summed columns of the part's rows.
  TableLayout(const Definition& report, const Part& part, const std::vector<dao::FieldDef>& fields,
              const std::vector<int>& sums, double width, Fonts& fonts, const BandLayout& bands);

  bool isEmpty() const { return columns_.empty(); }
  double headHeight() const;
  void head(const QPointF& corner, PageItems& out) const;
  /// The row's height; its items go to `out` if there is one.
  double row(const Known& known, const QPointF& corner, PageItems* out) const;
  double sumHeight() const;
  void sum(const QString& label, const Level& level, const QPointF& corner, PageItems& out) const;
  double titleHeight() const;
  void title(const QString& text, const QPointF& corner, PageItems& out) const;

 private:
  struct Placed {
    const Column* column = nullptr;
    double left = 0, width = 0;  ///< of the text, without the distance to its neighbours
    Align align = Align::Left;
    int font = 0;
    int sum = -1;
  };
  void place(const Definition& report, const Part& part, double width);
  Align alignOf(const Column& column, const std::vector<dao::FieldDef>& fields) const;
  void rule(double y, double thickness, const QColor& colour, const QPointF& corner, PageItems& out) const;

  Fonts& fonts_;
  const BandLayout& bands_;
  std::vector<Placed> columns_;
  double width_;
  int plain_, bold_, title_;
};

}  // namespace qk::report
