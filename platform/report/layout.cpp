#include "platform/report/layout.h"

#include <algorithm>
#include <iterator>

#include "platform/report/report_error.h"

namespace qk::report {

namespace {

constexpr double kBetween = 2 * kUnitsPerMillimetre;  // head, body and foot of a page
constexpr double kBeforePart = 5 * kUnitsPerMillimetre;
constexpr double kLeastBody = 15 * kUnitsPerMillimetre;
constexpr double kHeadingGrowth = 1.3;
constexpr size_t kKeptRows = 64;  // more than stand beside each other
constexpr size_t kKeptBlocks = 8;
/// More pages than anyone prints; a report that makes them is a mistake.
constexpr size_t kMostPages = 200'000;

const QColor kHeadingColour(0x1F, 0x3A, 0x5F);
const QColor kQuiet(0x55, 0x55, 0x55);

}  // namespace

/// A page that is being filled.
struct Layout::Page {
  int number = 1;
  int count = -1;
  PageItems* out = nullptr;  ///< of its body; nullptr: only measured
  double top = 0, bottom = 0;
  bool empty = true;      ///< nothing of the body stands on it yet
  bool repeated = false;  ///< heads of what began before stand on it
};

Layout::Layout(Definition report, ReportData& data)
    : report_(std::move(report)), data_(data), bands_(fonts_, report_.folder) {
  bindPage(report_, data_.fixedNames());
  const QSizeF size = pageSize();
  const QMarginsF margins = report_.margins * kUnitsPerMillimetre;
  body_ = QRectF(QPointF(0, 0), size).marginsRemoved(margins);
  std::vector<BoundPart> bound;
  for (size_t i = 0; i < report_.parts.size(); ++i)
    bound.push_back(bindPart(report_, i, data_.fields(i), data_.fixedNames()));
  numberFonts(report_, fonts_);
  headingFont_ = fonts_.number(report_.font.family, report_.font.points * kHeadingGrowth, true, false);
  emptyFont_ = fonts_.number(report_.font.family, report_.font.points, false, true);
  for (size_t i = 0; i < report_.parts.size(); ++i) {
    const Part& part = report_.parts[i];
    Ready ready{bound[i]};
    bodyNamesPageCount_ = bodyNamesPageCount_ || ready.bound.namesPageCount;
    const double gap = part.gap * kUnitsPerMillimetre;
    ready.step = (body_.width() + gap) / part.sideBySide;
    ready.width = std::max(1.0, ready.step - gap);
    ready.table = std::make_unique<TableLayout>(report_, part, data_.fields(i), ready.bound.sums, ready.width,
                                                fonts_, bands_);
    parts_.push_back(std::move(ready));
  }
  Page page;
  beginPage(page);
  if (page.bottom - page.top < kLeastBody)
    fail(report_.file, 0, "Seitenkopf und Seitenfuß lassen keinen Platz auf der Seite.");
  starts_.push_back(startOf(0));
}

Layout::~Layout() = default;

QSizeF Layout::pageSize() const {
  return report_.page * kUnitsPerMillimetre;
}

Layout::State Layout::startOf(size_t part) const {
  State state{{part}, {}};
  if (part < parts_.size()) {
    const Level level{std::vector<Total>(parts_[part].bound.sums.size())};
    state.levels.assign(report_.parts[part].groups.size() + 1, level);
  }
  return state;
}

Layout::Progress Layout::advance(PageItems* body) {
  if (complete_) return Progress::Done;
  if (body) body->items.clear();
  State state = starts_.back();
  Page page{.number = static_cast<int>(starts_.size()), .out = body};
  beginPage(page);
  if (!flow(state, page)) return Progress::Waiting;
  complete_ = state.at.part >= parts_.size();
  rowsLaidOut_ = state.at.row;
  for (size_t part = 0; part < state.at.part; ++part) rowsLaidOut_ += data_.rows(part).count();
  if (!complete_) starts_.push_back(std::move(state));
  if (starts_.size() > kMostPages) fail(report_.file, 0, "Der Bericht hat zu viele Seiten.");
  return complete_ ? Progress::Done : Progress::Page;
}

PageItems Layout::page(int number) {
  PageItems items = frame(number);
  PageItems flowing = body(number);
  std::move(flowing.items.begin(), flowing.items.end(), std::back_inserter(items.items));
  return items;
}

PageItems Layout::frame(int number) {
  PageItems items;
  Page page = pageNumbered(number);
  beginPage(page, &items);
  return items;
}

PageItems Layout::body(int number) {
  PageItems items;
  State state = starts_.at(static_cast<size_t>(number));
  Page page = pageNumbered(number);
  page.out = &items;
  beginPage(page);
  flow(state, page);
  return items;
}

Layout::Page Layout::pageNumbered(int number) const {
  return {.number = number + 1, .count = complete_ ? pageCount() : -1};
}

void Layout::beginPage(Page& page, PageItems* frame) {
  Known known{.fixed = &data_.fixedValues(), .page = page.number, .pageCount = page.count};
  const double head = bands_.lay(report_.pageHead, known, body_.topLeft(), body_.width(), frame);
  const double foot = bands_.lay(report_.pageFoot, known, {0, 0}, body_.width(), nullptr);
  if (frame) bands_.lay(report_.pageFoot, known, {body_.left(), body_.bottom() - foot}, body_.width(), frame);
  page.top = body_.top() + head + (head > 0 ? kBetween : 0);
  page.bottom = body_.bottom() - foot - (foot > 0 ? kBetween : 0);
}

/// Fills the page from the state on, which is that of the next page then. False where rows are missing.
bool Layout::flow(State& state, Page& page) {
  while (state.at.part < parts_.size()) {
    const Part& part = report_.parts[state.at.part];
    const Blocks* blocks = blocksAt(state.at.part, state.at.row);
    if (!blocks) return false;
    if (state.at.step < blocks->blocks.size()) {
      if (state.at.row == 0 && state.at.step == 0 && part.newPage && !page.empty) return true;
      if (!flowBlock(state, page, *blocks)) return true;
    } else if (blocks->span > 0) {
      state.at = {state.at.part, state.at.row + blocks->span, 0};
    } else {
      state = startOf(state.at.part + 1);
      page.repeated = false;
      if (!page.empty) page.top += kBeforePart;
    }
  }
  return true;
}

/// Puts the next block on the page. False where it has no room there.
bool Layout::flowBlock(State& state, Page& page, const Blocks& blocks) {
  const Block block = blocks.blocks[state.at.step];
  const int span = blocks.span;
  if (!page.empty && turnsPage(state, blocks)) return false;
  if (page.empty && !page.repeated) repeatHeads(state, page, block);
  if (!page.empty && page.top + needed(state, page) > page.bottom) return false;
  account(state, block, span);
  const double height = lay(state, block, span, page.top, page, page.out);
  page.top += height;
  if (height > 0) page.empty = false;
  ++state.at.step;
  return true;
}

/// A group that wants a page of its own begins there, and so do those around it that begin with it.
bool Layout::turnsPage(const State& state, const Blocks& blocks) const {
  const auto& groups = report_.parts[state.at.part].groups;
  const size_t step = state.at.step;
  if (state.at.row == 0 || blocks.blocks[step].kind != Kind::GroupHead) return false;
  if (step > 0 && blocks.blocks[step - 1].kind == Kind::GroupHead) return false;
  for (const Block& block : blocks.blocks)
    if (block.kind == Kind::GroupHead && groups[size_t(block.level) - 1].newPage) return true;
  return false;
}

/// What began on an earlier page is named again.
void Layout::repeatHeads(const State& state, Page& page, const Block& next) {
  page.repeated = true;
  if (state.at.row == 0 || next.kind == Kind::End || next.kind == Kind::Heading) return;
  page.top += layTableHead(state, page.top, page.out);
  const auto& groups = report_.parts[state.at.part].groups;
  const TableLayout& table = *parts_[state.at.part].table;
  int open = static_cast<int>(groups.size());
  int row = state.at.row;
  if (next.kind == Kind::GroupHead) open = next.level - 1;
  if (next.kind == Kind::GroupFoot) open = next.level, --row;
  if (next.kind == Kind::Total) open = 0;
  for (int level = 1; level <= open; ++level) {
    const Group& group = groups[size_t(level) - 1];
    if (group.title.isEmpty() || changedGroup(state.at.part, row) <= level) continue;
    if (page.out)
      table.title(filled(group.title, known(state, row, level, page)) + " (Fortsetzung)",
                  {body_.left(), page.top}, *page.out);
    page.top += table.titleHeight();
  }
}

const QVariantList& Layout::values(size_t part, int row) {
  for (const DecodedRow& known : decoded_)
    if (known.row == row && known.part == part) return known.values;
  if (decoded_.size() < kKeptRows) {
    decoded_.emplace_front();
  } else {
    decoded_.push_front(std::move(decoded_.back()));
    decoded_.pop_back();
  }
  DecodedRow& decoded = decoded_.front();
  decoded.part = part;
  decoded.row = row;
  data_.rows(part).read(row, decoded.values);
  return decoded.values;
}

QString Layout::groupText(size_t part, int row, int level) {
  const Known known{.fixed = &data_.fixedValues(), .row = &values(part, row)};
  return filled(report_.parts[part].groups[size_t(level) - 1].value, known);
}

/// The first level whose value isn't that of the row before; one behind the last where all are.
int Layout::changedGroup(size_t part, int row) {
  const int levels = static_cast<int>(report_.parts[part].groups.size());
  if (row == 0) return 1;
  for (int level = 1; level <= levels; ++level)
    if (groupText(part, row, level) != groupText(part, row - 1, level)) return level;
  return levels + 1;
}

/// Nothing where rows are missing that must be known first.
const Layout::Blocks* Layout::blocksAt(size_t part, int row) {
  for (const Blocks& known : blocks_)
    if (known.row == row && known.part == part) return &known;
  Blocks made{part, row};
  if (!makeBlocks(part, row, made)) return nullptr;
  if (blocks_.size() >= kKeptBlocks) blocks_.pop_back();
  blocks_.push_front(std::move(made));
  return &blocks_.front();
}

bool Layout::makeBlocks(size_t index, int row, Blocks& made) {
  const Part& part = report_.parts[index];
  const RowBuffer& rows = data_.rows(index);
  const auto [count, complete] = rows.state();
  if (complete)
    if (const auto failure = rows.failure())
      fail(report_.file, part.line, failure->description(), failure->number());
  // One more row than those that stand beside each other tells whether a group ends with them.
  if (!complete && count <= row + part.sideBySide) return false;
  if (count == 0 && part.leaveOut) return true;
  auto& blocks = made.blocks;
  const int levels = static_cast<int>(part.groups.size());
  if (row == 0) {
    if (!part.heading.isEmpty()) blocks.push_back({Kind::Heading});
    blocks.push_back({Kind::Start});
    if (count > 0 && !part.columns.empty()) blocks.push_back({Kind::TableHead});
  }
  const int changed = row == 0 || row == count ? 1 : changedGroup(index, row);
  if (row > 0)
    for (int level = levels; level >= changed; --level) blocks.push_back({Kind::GroupFoot, level});
  if (row < count) {
    for (int level = changed; level <= levels; ++level) blocks.push_back({Kind::GroupHead, level});
    blocks.push_back({Kind::Row});
    made.span = spanOf(index, row, count);
    for (int next = 1; next < made.span; ++next)
      if (changedGroup(index, row + next) <= levels) made.span = next;
    return true;
  }
  if (count == 0 && !part.empty.isEmpty()) blocks.push_back({Kind::Empty});
  if (count > 0 && !part.total.isEmpty()) blocks.push_back({Kind::Total});
  blocks.push_back({Kind::End});
  return true;
}

int Layout::spanOf(size_t part, int row, int count) const {
  return std::min(report_.parts[part].sideBySide, count - row);
}

/// The height of the next block, and of what must stand on the same page: below heads the first row, below a
/// row the feet of what ends with it.
double Layout::needed(const State& state, Page& page) {
  double bottom = page.top;
  bool rowSeen = false;
  State& at = ahead_;
  at = state;
  for (;;) {
    const Blocks* blocks = blocksAt(at.at.part, at.at.row);
    if (!blocks) return bottom - page.top;
    if (at.at.step == blocks->blocks.size()) {
      if (blocks->span == 0) return bottom - page.top;
      at.at = {at.at.part, at.at.row + blocks->span, 0};
      continue;
    }
    const Block block = blocks->blocks[at.at.step];
    const bool foot = block.kind == Kind::GroupFoot || block.kind == Kind::Total;
    if (rowSeen && !foot) return bottom - page.top;
    bottom += lay(at, block, blocks->span, bottom, page, nullptr);
    rowSeen = rowSeen || block.kind == Kind::Row;
    if (!rowSeen && (foot || block.kind == Kind::Empty || block.kind == Kind::End)) return bottom - page.top;
    ++at.at.step;
  }
}

/// Sums of the row, beginnings of groups.
void Layout::account(State& state, const Block& block, int span) {
  const std::vector<int>& sums = parts_[state.at.part].bound.sums;
  if (block.kind == Kind::GroupHead) {
    state.levels[size_t(block.level)] = Level{std::vector<Total>(sums.size())};
    return;
  }
  if (block.kind != Kind::Row) return;
  for (int i = 0; i < span; ++i) {
    const QVariantList& row = values(state.at.part, state.at.row + i);
    for (Level& level : state.levels) {
      ++level.count;
      for (size_t sum = 0; sum < sums.size(); ++sum) level.sums[sum].add(row[sums[sum]]);
    }
  }
}

Known Layout::known(const State& state, int row, int level, const Page& page) {
  Known known{.fixed = &data_.fixedValues(),
              .level = &state.levels[size_t(level)],
              .rowNumber = row,
              .page = page.number,
              .pageCount = page.count};
  const auto [count, complete] = data_.rows(state.at.part).state();
  if (row >= 0 && row < count) known.row = &values(state.at.part, row);
  return known;
}

double Layout::lay(const State& state, const Block& block, int span, double top, Page& page, PageItems* out) {
  const Part& part = report_.parts[state.at.part];
  const int row = state.at.row;
  const QPointF corner(body_.left(), top);
  switch (block.kind) {
    case Kind::Heading:
      return layLine(filled(part.heading, known(state, row, 0, page)), headingFont_, kHeadingColour, 0.5, top,
                     out);
    case Kind::Start:
      return bands_.lay(part.start, known(state, row, 0, page), corner, body_.width(), out);
    case Kind::TableHead:
      return layTableHead(state, top, out);
    case Kind::GroupHead:
      return layGroupHead(state, block.level, top, page, out);
    case Kind::Row:
      return layRows(state, span, top, page, out);
    case Kind::GroupFoot:
      return layGroupFoot(state, block.level, top, page, out);
    case Kind::Total:
      return laySum(state, part.total, 0, top, page, out);
    case Kind::Empty:
      return layLine(filled(part.empty, known(state, row, 0, page)), emptyFont_, kQuiet, 0.3, top, out);
    case Kind::End:
      return bands_.lay(part.end, known(state, row - 1, 0, page), corner, body_.width(), out);
  }
  return 0;
}

/// Rows are measured before it is known whether the page has room for them; where it has, what was measured
/// is what stands there.
double Layout::layRows(const State& state, int span, double top, Page& page, PageItems* out) {
  const bool known = laid_.at.part == state.at.part && laid_.at.row == state.at.row &&
                     laid_.page == page.number && laid_.pageCount == page.count;
  if (!known || (out && (!laid_.hasItems || laid_.top != top))) layRowsAnew(state, span, top, page);
  if (out) {
    std::move(laid_.items.items.begin(), laid_.items.items.end(), std::back_inserter(out->items));
    laid_.hasItems = false;
  }
  return laid_.height;
}

void Layout::layRowsAnew(const State& state, int span, double top, const Page& page) {
  const Ready& ready = parts_[state.at.part];
  laid_.at = {state.at.part, state.at.row};
  laid_.page = page.number;
  laid_.pageCount = page.count;
  laid_.top = top;
  laid_.height = 0;
  laid_.hasItems = page.out != nullptr;
  laid_.items.items.clear();
  PageItems* items = page.out ? &laid_.items : nullptr;
  for (int i = 0; i < span; ++i) {
    const Known here = known(state, state.at.row + i, 0, page);
    const QPointF corner(body_.left() + i * ready.step, top);
    double height = bands_.lay(report_.parts[state.at.part].row, here, corner, ready.width, items);
    if (!ready.table->isEmpty()) height += ready.table->row(here, corner + QPointF(0, height), items);
    laid_.height = std::max(laid_.height, height);
  }
}

double Layout::layGroupHead(const State& state, int level, double top, Page& page, PageItems* out) {
  const Group& group = report_.parts[state.at.part].groups[size_t(level) - 1];
  const TableLayout& table = *parts_[state.at.part].table;
  const Known here = known(state, state.at.row, level, page);
  double height = 0;
  if (!group.title.isEmpty()) {
    if (out) table.title(filled(group.title, here), {body_.left(), top}, *out);
    height = table.titleHeight();
  }
  return height + bands_.lay(group.head, here, {body_.left(), top + height}, body_.width(), out);
}

double Layout::layGroupFoot(const State& state, int level, double top, Page& page, PageItems* out) {
  const Group& group = report_.parts[state.at.part].groups[size_t(level) - 1];
  const double height = group.sum.isEmpty() ? 0 : laySum(state, group.sum, level, top, page, out);
  const Known here = known(state, state.at.row - 1, level, page);
  return height + bands_.lay(group.foot, here, {body_.left(), top + height}, body_.width(), out);
}

/// A line of sums, with what is known of its last row.
double Layout::laySum(const State& state, const Template& label, int level, double top, Page& page,
                      PageItems* out) {
  const TableLayout& table = *parts_[state.at.part].table;
  if (out)
    table.sum(filled(label, known(state, state.at.row - 1, level, page)), state.levels[size_t(level)],
              {body_.left(), top}, *out);
  return table.sumHeight();
}

double Layout::layTableHead(const State& state, double top, PageItems* out) {
  const Part& part = report_.parts[state.at.part];
  const Ready& ready = parts_[state.at.part];
  if (ready.table->isEmpty()) return 0;
  if (out)
    for (int i = 0; i < part.sideBySide; ++i) ready.table->head({body_.left() + i * ready.step, top}, *out);
  return ready.table->headHeight();
}

double Layout::layLine(const QString& text, int font, const QColor& colour, double above, double top,
                       PageItems* out) {
  const double height = fonts_.lineHeight(font);
  if (out)
    bands_.line(*out, font, fonts_.elided(font, text, body_.width()),
                {body_.left(), top + above * height, body_.width(), height}, Align::Left, colour);
  return (1 + 2 * above) * height;
}

}  // namespace qk::report
