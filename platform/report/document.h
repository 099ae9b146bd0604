// A report with its data: laid out page by page from the event loop, looked at, searched, and written out
// whole. Without a window.
//
//   Document document(readReport(files, path), input);   // what is wrong with either is thrown
//   document.start();                                     // pages come: [grown]… [completed] or [failed]
//   document.finish();                                    // or all at once, without the event loop
#pragma once

#include <QObject>
#include <QTimer>
#include <functional>

#include "platform/report/layout.h"

class QIODevice;
class QPainter;

namespace qk::report {

/// Asked after every page of a long work; false stops it. `all` is 0 until it is known.
using GoesOn = std::function<bool(int done, int all)>;

class Document : public QObject {
  Q_OBJECT

 public:
  Document(Definition report, Input input, QObject* parent = nullptr);
  ~Document() override;

  const Definition& report() const { return layout_->report(); }
  QSizeF millimetres() const { return report().page; }

  /// Lays out from the event loop, in slices.
  void start();
  /// What is laid out so far is all that there will be.
  void stop();
  bool isStopped() const { return stopped_; }
  /// Lays out until the page is there, without the event loop; false where there are fewer. The query's
  /// failure is thrown.
  bool waitForPage(int number);
  void finish();

  int pageCount() const { return layout_->pageCount(); }
  bool isComplete() const { return layout_->isComplete(); }
  int rowsLaidOut() const { return layout_->rowsLaidOut(); }

  PageItems page(int number) { return layout_->page(number); }
  const Fonts& fonts() const { return layout_->fonts(); }
  /// The whole sheet, whatever the painter's device.
  void paint(QPainter& painter, int number);

  /// All pages as a PDF file. False when it was stopped. 75 when it can't be written.
  bool writePdf(QIODevice& device, const QString& title, const GoesOn& goesOn = {});
  /// The rows of all parts, by German conventions: ";", decimal comma, TT.MM.JJJJ. False when it was stopped.
  bool writeCsv(QIODevice& device, const GoesOn& goesOn = {});

 Q_SIGNALS:
  void grown();
  void completed();
  void failed(const qk::Error& error);

 private:
  bool layOutMore(PageItems* body = nullptr);
  bool nextBody(int number, PageItems& body);
  void slice();
  bool waitForRows(size_t part);

  QDateTime now_;  ///< when the report was asked for
  struct Bell;
  std::shared_ptr<Bell> bell_;  ///< rung by the readers' threads
  std::unique_ptr<ReportData> data_;
  std::unique_ptr<Layout> layout_;
  QTimer turn_;
  bool stopped_ = false;
  bool running_ = false;
};

}  // namespace qk::report
