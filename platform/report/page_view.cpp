#include "platform/report/page_view.h"

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <algorithm>

#include "platform/report/document.h"
#include "platform/report/page_painter.h"

namespace qk::report {

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr int kKeptPages = 8;
constexpr int kSmallest = 20, kLargest = 400;  // per cent
const QColor kFound(255, 230, 80, 110), kCurrent(255, 140, 0, 140);

}  // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
  setFocusPolicy(Qt::StrongFocus);
  viewport()->setBackgroundRole(QPalette::Dark);
  viewport()->setAutoFillBackground(true);
}

void PageView::setDocument(Document* document) {
  document_ = document;
  forget();
}

void PageView::documentGrew() {
  // "Seite x von y" may stand on any page.
  if (document_->isComplete()) shown_.clear();
  arrange();
  viewport()->update();
}

void PageView::forget() {
  shown_.clear();
  arrange();
  viewport()->update();
}

void PageView::setZoom(Fit fit, int percent) {
  const int page = currentPage();
  fit_ = fit;
  percent_ = std::clamp(percent, kSmallest, kLargest);
  forget();
  goToPage(page);
}

double PageView::scale() const {
  const double whole = logicalDpiX() / kMillimetresPerInch;
  if (fit_ == Fit::Percent || !document_) return whole * percent_ / 100;
  const double gap = fontMetrics().height();
  const QSizeF page = document_->millimetres();
  const double wide = std::max(50.0, viewport()->width() - 2 * gap) / page.width();
  const double high = std::max(50.0, viewport()->height() - 2 * gap) / page.height();
  return fit_ == Fit::Width ? wide : std::min(wide, high);
}

int PageView::percent() const {
  return qRound(scale() * kMillimetresPerInch / logicalDpiX() * 100);
}

QSize PageView::pagePixels() const {
  return document_ ? (document_->millimetres() * scale()).toSize() : QSize(1, 1);
}

int PageView::stride() const {
  return pagePixels().height() + fontMetrics().height();
}

QRect PageView::pageRect(int page) const {
  const QSize size = pagePixels();
  const int gap = fontMetrics().height();
  const int left = size.width() + 2 * gap <= viewport()->width() ? (viewport()->width() - size.width()) / 2
                                                                 : gap - horizontalScrollBar()->value();
  return QRect(QPoint(left, gap + page * stride() - verticalScrollBar()->value()), size);
}

void PageView::arrange() {
  const int pages = document_ ? document_->pageCount() : 0;
  const int gap = fontMetrics().height();
  verticalScrollBar()->setPageStep(viewport()->height());
  verticalScrollBar()->setSingleStep(3 * gap);
  verticalScrollBar()->setRange(0, std::max(0, gap + pages * stride() - viewport()->height()));
  horizontalScrollBar()->setPageStep(viewport()->width());
  horizontalScrollBar()->setSingleStep(3 * gap);
  horizontalScrollBar()->setRange(0, std::max(0, pagePixels().width() + 2 * gap - viewport()->width()));
}

int PageView::currentPage() const {
  const int pages = document_ ? document_->pageCount() : 0;
  const int top = verticalScrollBar()->value() + viewport()->height() / 3;
  return std::clamp(top / std::max(1, stride()), 0, std::max(0, pages - 1));
}

void PageView::goToPage(int page) {
  verticalScrollBar()->setValue(page * stride());
}

const PageView::Shown& PageView::shown(int page) {
  const auto known = shown_.constFind(page);
  if (known != shown_.cend()) return *known;
  if (shown_.size() >= kKeptPages) shown_.clear();
  const double ratio = devicePixelRatioF();
  Shown made{QPixmap(pagePixels() * ratio), document_->page(page)};
  made.picture.setDevicePixelRatio(ratio);
  made.picture.fill(Qt::white);
  QPainter painter(&made.picture);
  const double factor = scale() / kUnitsPerMillimetre;
  painter.scale(factor, factor);
  paintPage(painter, made.items, document_->fonts());
  painter.end();
  return *shown_.insert(page, made);
}

void PageView::paintEvent(QPaintEvent*) {
  if (!document_) return;
  QPainter painter(viewport());
  const int first = std::max(0, verticalScrollBar()->value() / std::max(1, stride()) - 1);
  for (int page = first; page < document_->pageCount(); ++page) {
    const QRect place = pageRect(page);
    if (place.top() > viewport()->height()) break;
    if (place.bottom() < 0) continue;
    const Shown& one = shown(page);
    painter.drawPixmap(place.topLeft(), one.picture);
    paintMarks(painter, place, one, page);
    painter.setPen(palette().color(QPalette::Shadow));
    painter.drawRect(place.adjusted(-1, -1, 0, 0));
  }
}

void PageView::paintMarks(QPainter& painter, const QRect& page, const Shown& one, int number) const {
  if (searched_.isEmpty()) return;
  const double factor = scale() / kUnitsPerMillimetre;
  for (qsizetype i = 0; i < static_cast<qsizetype>(one.items.items.size()); ++i) {
    const auto* text = std::get_if<TextItem>(&one.items.items[size_t(i)]);
    if (!text || !text->text.contains(searched_, Qt::CaseInsensitive)) continue;
    const QRectF mark(page.topLeft() + text->place.topLeft() * factor, text->place.size() * factor);
    painter.fillRect(mark, match_.page == number && match_.item == i ? kCurrent : kFound);
  }
}

bool PageView::findOn(int page, bool forwards, qsizetype from) {
  const PageItems items = document_->page(page);
  const auto count = static_cast<qsizetype>(items.items.size());
  for (qsizetype i = from; i >= 0 && i < count; i += forwards ? 1 : -1) {
    const auto* text = std::get_if<TextItem>(&items.items[size_t(i)]);
    if (!text || !text->text.contains(searched_, Qt::CaseInsensitive)) continue;
    match_ = {page, i};
    return true;
  }
  return false;
}

bool PageView::find(const QString& text, bool forwards) {
  const bool again = text == searched_ && match_.page >= 0;
  searched_ = text;
  const Match before = again ? match_ : Match{currentPage(), forwards ? -1 : 0};
  match_ = {};
  viewport()->update();
  const int pages = document_->pageCount();
  if (text.isEmpty() || pages == 0) return false;
  const int step = forwards ? 1 : -1;
  for (int i = 0; i <= pages; ++i) {
    const int page = ((before.page + step * i) % pages + pages) % pages;
    const qsizetype last = static_cast<qsizetype>(document_->page(page).items.size()) - 1;
    const qsizetype from = i == 0 ? before.item + step : forwards ? 0 : last;
    if (!findOn(page, forwards, from)) continue;
    showMatch();
    return true;
  }
  return false;
}

void PageView::showMatch() {
  const double factor = scale() / kUnitsPerMillimetre;
  const PageItems items = document_->page(match_.page);
  const auto& text = std::get<TextItem>(items.items[size_t(match_.item)]);
  const QRect place = pageRect(match_.page);
  const int top = place.top() + int(text.place.top() * factor);
  if (top < 0 || top > viewport()->height() * 9 / 10)
    verticalScrollBar()->setValue(verticalScrollBar()->value() + top - viewport()->height() / 3);
  const int left = place.left() + int(text.place.left() * factor);
  if (left < 0 || left > viewport()->width())
    horizontalScrollBar()->setValue(horizontalScrollBar()->value() + left - viewport()->width() / 3);
  viewport()->update();
}

void PageView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  const int page = currentPage();
  if (fit_ == Fit::Percent) return arrange();
  forget();
  goToPage(page);
}

void PageView::keyPressEvent(QKeyEvent* event) {
  QScrollBar& bar = *verticalScrollBar();
  const bool whole = event->modifiers() & Qt::ControlModifier;
  switch (event->key()) {
    case Qt::Key_Home:
      return bar.setValue(0);
    case Qt::Key_End:
      return bar.setValue(bar.maximum());
    case Qt::Key_PageDown:
      return whole ? goToPage(currentPage() + 1) : bar.triggerAction(QScrollBar::SliderPageStepAdd);
    case Qt::Key_PageUp:
      return whole ? goToPage(currentPage() - 1) : bar.triggerAction(QScrollBar::SliderPageStepSub);
    default:
      QAbstractScrollArea::keyPressEvent(event);
  }
}

void PageView::wheelEvent(QWheelEvent* event) {
  if (!(event->modifiers() & Qt::ControlModifier)) return QAbstractScrollArea::wheelEvent(event);
  setZoom(Fit::Percent, percent() + (event->angleDelta().y() > 0 ? 10 : -10));
}

void PageView::scrollContentsBy(int, int) {
  viewport()->update();
  Q_EMIT currentPageChanged(currentPage());
}

}  // namespace qk::report
