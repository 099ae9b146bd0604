// A list of texts on paper: a heading on the first page, then the rows, each whole on its page, long ones
// wrapped, and "Seite x von y" below, from the second page on with the title. A row at the margin and those
// set in below it stay on one page where it holds them; else the first of them stays with it.
#pragma once

#include <QColor>
#include <QFont>
#include <QStringList>
#include <vector>

#include "platform/look/marks.h"
#include "platform/print/paper.h"

namespace qk {

struct ListRow {
  int depth = 0;  ///< how far it is set in
  look::Mark mark = look::Mark::None;
  QString text;
  QColor colour = Qt::black;
  bool bold = false;
};

class ListPages : public Pages {
 public:
  /// `head`: lines below the title. The font is that of the rows.
  ListPages(QString title, QStringList head, std::vector<ListRow> rows, const QFont& font);

  QString name() const override { return title_; }
  int layOut(QPaintDevice& device, const QSizeF& page) override;
  void paint(QPainter& painter, int page) const override;

  /// After layOut: the rows on a page, first and behind the last.
  std::pair<size_t, size_t> rowsOn(int page) const { return pages_.at(static_cast<size_t>(page)); }

 private:
  struct Place {
    double top = 0, height = 0;
  };
  QFont fontOf(const ListRow& row) const;
  double indentOf(const ListRow& row) const { return row.depth * 2 * line_; }
  /// Where a row's text begins, behind its mark.
  double textLeft(const ListRow& row) const;
  double heightOf(const ListRow& row) const;
  double heightTogether(size_t row, double room) const;
  double headHeight() const;
  void paintHead(QPainter& painter) const;
  void paintFoot(QPainter& painter, int page) const;

  QString title_;
  QStringList head_;
  std::vector<ListRow> rows_;
  QFont font_, titleFont_;
  QPaintDevice* device_ = nullptr;  // while it is laid out
  QSizeF page_;
  double line_ = 0;       // height of a line
  double titleLine_ = 0;  // of the title
  std::vector<Place> places_;
  std::vector<std::pair<size_t, size_t>> pages_;
};

}  // namespace qk
