// Divides a report into pages: whole rows, heads repeated, sums with the last of their rows.
//
//   advance() ► Page ► Page ► Waiting (for rows) ► Page … ► Done
//
// Of a page only its beginning is kept (the place in the rows and the sums so far); its items are made anew
// when somebody looks at it. So a hundred thousand rows cost little memory, and the first page stands before
// the second is thought of. Whoever writes out all pages takes the items while they are made.
//
// A page is its frame (head and foot) and its body (what flows): only the frame names the number of pages, as
// a rule, so bodies can be written before that is known.
#pragma once

#include <deque>
#include <memory>

#include "platform/report/band_layout.h"
#include "platform/report/binding.h"
#include "platform/report/report_data.h"
#include "platform/report/table_layout.h"

namespace qk::report {

class Layout {
 public:
  enum class Progress { Page, Waiting, Done };

  /// Binds the report to the data: a name that isn't known is an error with its line. The data outlives it.
  Layout(Definition report, ReportData& data);
  ~Layout();
  Layout(const Layout&) = delete;
  Layout& operator=(const Layout&) = delete;

  /// Lays out one more page, if its rows are there; its body goes to `body` if there is one. A failed query
  /// is thrown here.
  Progress advance(PageItems* body = nullptr);
  int pageCount() const { return static_cast<int>(starts_.size()) - (complete_ ? 0 : 1); }
  bool isComplete() const { return complete_; }
  int rowsLaidOut() const { return rowsLaidOut_; }

  /// A page that is laid out, from 0. Pages are numbered "von …" until all are.
  PageItems page(int number);
  PageItems frame(int number);
  PageItems body(int number);
  /// Bodies too name the number of pages: they are right only when all are laid out.
  bool bodyNamesPageCount() const { return bodyNamesPageCount_; }

  const Fonts& fonts() const { return fonts_; }
  const Definition& report() const { return report_; }
  QSizeF pageSize() const;  ///< of the sheet, in units

 private:
  enum class Kind { Heading, Start, TableHead, GroupHead, Row, GroupFoot, Total, Empty, End };
  struct Block {
    Kind kind;
    int level = 0;  ///< of a group, from 1
  };
  /// A place in the report: before row `row` of a part, before block `step` of those that stand there.
  struct Spot {
    size_t part = 0;
    int row = 0;
    size_t step = 0;
  };
  /// What must be known to go on from a spot. `levels[0]` sums the whole part, the others the open groups.
  struct State {
    Spot at;
    std::vector<Level> levels;
  };
  struct Ready {
    BoundPart bound;
    std::unique_ptr<TableLayout> table = {};
    double width = 0;  ///< of one of the rows beside each other
    double step = 0;   ///< from one of them to the next
  };
  /// The blocks before a row, and how many rows its block takes.
  struct Blocks {
    size_t part = 0;
    int row = -1;
    std::vector<Block> blocks = {};
    int span = 0;
  };
  struct DecodedRow {
    size_t part = 0;
    int row = -1;
    QVariantList values;
  };
  struct Page;
  /// The rows that were laid last, beside each other, for the page they were tried on.
  struct LaidRow {
    Spot at{0, -1};
    int page = 0, pageCount = 0;
    double top = 0, height = 0;
    bool hasItems = false;
    PageItems items = {};
  };

  State startOf(size_t part) const;
  Page pageNumbered(int number) const;
  bool flow(State& state, Page& page);
  bool flowBlock(State& state, Page& page, const Blocks& blocks);
  bool turnsPage(const State& state, const Blocks& blocks) const;
  void repeatHeads(const State& state, Page& page, const Block& next);
  const Blocks* blocksAt(size_t part, int row);
  bool makeBlocks(size_t part, int row, Blocks& made);
  int spanOf(size_t part, int row, int count) const;
  int changedGroup(size_t part, int row);
  QString groupText(size_t part, int row, int level);
  const QVariantList& values(size_t part, int row);
  Known known(const State& state, int row, int level, const Page& page);
  double needed(const State& state, Page& page);
  double lay(const State& state, const Block& block, int span, double top, Page& page, PageItems* out);
  double layRows(const State& state, int span, double top, Page& page, PageItems* out);
  void layRowsAnew(const State& state, int span, double top, const Page& page);
  double layGroupHead(const State& state, int level, double top, Page& page, PageItems* out);
  double layGroupFoot(const State& state, int level, double top, Page& page, PageItems* out);
  double laySum(const State& state, const Template& label, int level, double top, Page& page, PageItems* out);
  double layTableHead(const State& state, double top, PageItems* out);
  double layLine(const QString& text, int font, const QColor& colour, double above, double top,
                 PageItems* out);
  void account(State& state, const Block& block, int span);
  void beginPage(Page& page, PageItems* frame = nullptr);

  Definition report_;
  ReportData& data_;
  Fonts fonts_;
  BandLayout bands_;
  std::vector<Ready> parts_;
  QRectF body_;  // of a page, between its margins
  int headingFont_ = 0, emptyFont_ = 0;
  std::vector<State> starts_;  // of the pages, and, until it is complete, of the next
  bool complete_ = false;
  int rowsLaidOut_ = 0;
  std::deque<DecodedRow> decoded_;
  std::deque<Blocks> blocks_;
  State ahead_;  // walks before the state that it began with
  LaidRow laid_;
  bool bodyNamesPageCount_ = false;
};

}  // namespace qk::report
