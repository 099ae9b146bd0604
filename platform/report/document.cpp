#include "platform/report/document.h"

#include <QElapsedTimer>
#include <QPainter>
#include <condition_variable>

#include "platform/report/csv.h"
#include "platform/report/page_painter.h"
#include "platform/report/pdf_writer.h"

namespace qk::report {

namespace {

constexpr int kSlice = 20;  // milliseconds of the event loop
constexpr auto kTurn = std::chrono::milliseconds(500);

}  // namespace

/// Where the readers' threads tell that rows have come, and the interface thread waits for that.
struct Document::Bell {
  std::mutex mutex;
  std::condition_variable changed;
  quint64 rung = 0;
  Document* listener = nullptr;  ///< told through the event loop

  void ring() {
    const std::lock_guard lock(mutex);
    ++rung;
    changed.notify_all();
    if (listener)
      QMetaObject::invokeMethod(
          listener, [document = listener] { document->slice(); }, Qt::QueuedConnection);
  }
  quint64 now() {
    const std::lock_guard lock(mutex);
    return rung;
  }
  void waitSince(quint64 seen) {
    std::unique_lock lock(mutex);
    changed.wait_for(lock, kTurn, [&] { return rung != seen; });
  }
  void listen(Document* document) {
    const std::lock_guard lock(mutex);
    listener = document;
  }
};

Document::Document(Definition report, Input input, QObject* parent)
    : QObject(parent), now_(input.now), bell_(std::make_shared<Bell>()) {
  data_ = std::make_unique<ReportData>(report, std::move(input), [bell = bell_] { bell->ring(); });
  layout_ = std::make_unique<Layout>(std::move(report), *data_);
  connect(&turn_, &QTimer::timeout, this, &Document::slice);
  turn_.setSingleShot(true);
}

Document::~Document() {
  bell_->listen(nullptr);
}

void Document::start() {
  running_ = true;
  bell_->listen(this);
  turn_.start(0);
}

void Document::stop() {
  stopped_ = true;
  running_ = false;
  bell_->listen(nullptr);
  turn_.stop();
}

void Document::slice() {
  if (!running_) return;
  QElapsedTimer time;
  time.start();
  const int before = pageCount();
  try {
    while (running_ && !time.hasExpired(kSlice)) {
      const Layout::Progress progress = layout_->advance();
      if (progress == Layout::Progress::Waiting) break;
      if (progress != Layout::Progress::Done) {
        turn_.start(0);
        if (before == 0) break;  // the first page is shown before the rest
        continue;
      }
      running_ = false;
      bell_->listen(nullptr);
      turn_.stop();
      Q_EMIT grown();
      Q_EMIT completed();
      return;
    }
  } catch (const Error& error) {
    stop();
    Q_EMIT failed(error);
    return;
  }
  if (pageCount() != before) Q_EMIT grown();
}

/// False when nothing more comes.
bool Document::layOutMore(PageItems* body) {
  for (;;) {
    if (stopped_) return false;
    const quint64 seen = bell_->now();
    switch (layout_->advance(body)) {
      case Layout::Progress::Page:
        return true;
      case Layout::Progress::Done:
        return false;
      case Layout::Progress::Waiting:
        bell_->waitSince(seen);
    }
  }
}

bool Document::waitForPage(int number) {
  while (pageCount() <= number && layOutMore()) continue;
  return pageCount() > number;
}

void Document::finish() {
  while (layOutMore()) continue;
}

void Document::paint(QPainter& painter, int number) {
  const PageItems items = layout_->page(number);
  painter.save();
  const double scale = painter.device()->logicalDpiX() / double(kUnitsPerInch);
  painter.scale(scale, scale);
  paintPage(painter, items, fonts());
  painter.restore();
}

bool Document::writePdf(QIODevice& device, const QString& title, const GoesOn& goesOn) {
  const auto goes = [&](int done) { return !goesOn || goesOn(done, isComplete() ? pageCount() : 0); };
  while (layout_->bodyNamesPageCount() && layOutMore())
    if (!goes(0)) return false;
  PdfWriter pdf(device, fonts(), layout_->pageSize());
  std::vector<int> bodies;
  PageItems body;
  while (nextBody(static_cast<int>(bodies.size()), body)) {
    bodies.push_back(pdf.content(body));
    if (!goes(static_cast<int>(bodies.size()))) return false;
  }
  // Heads and feet come last: they tell how many pages there are.
  for (size_t number = 0; number < bodies.size(); ++number)
    pdf.page({pdf.content(layout_->frame(static_cast<int>(number))), bodies[number]});
  pdf.finish(title, now_);
  return true;
}

/// Of a page that is laid out, or is it now. False when there are no more.
bool Document::nextBody(int number, PageItems& body) {
  if (number < pageCount()) {
    body = layout_->body(number);
    return true;
  }
  layOutMore(&body);
  return number < pageCount();
}

/// False when it was stopped.
bool Document::waitForRows(size_t part) {
  for (;;) {
    const quint64 seen = bell_->now();
    if (data_->rows(part).isComplete()) return true;
    if (stopped_) return false;
    bell_->waitSince(seen);
  }
}

bool Document::writeCsv(QIODevice& device, const GoesOn& goesOn) {
  for (size_t part = 0; part < report().parts.size(); ++part) {
    if (report().parts[part].query.isEmpty() && data_->fields(part).empty()) continue;
    if (!waitForRows(part)) return false;
    if (const auto failure = data_->rows(part).failure()) throw *failure;
    if (!writeCsvPart(device, report().parts[part], data_->fields(part), data_->rows(part),
                      data_->fixedValues(), part == 0, goesOn))
      return false;
  }
  return true;
}

}  // namespace qk::report
