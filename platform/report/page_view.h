// The pages of a report below one another, as large as wanted, with what was searched for marked.
#pragma once

#include <QAbstractScrollArea>
#include <QHash>
#include <QPixmap>

#include "platform/report/page_items.h"

namespace qk::report {

class Document;

class PageView : public QAbstractScrollArea {
  Q_OBJECT

 public:
  enum class Fit { Percent, Width, Page };

  explicit PageView(QWidget* parent = nullptr);

  /// The document outlives the view.
  void setDocument(Document* document);
  /// More pages stand there, or their number is known now.
  void documentGrew();

  void setZoom(Fit fit, int percent = 100);
  int percent() const;  ///< as it is shown

  int currentPage() const;  ///< from 0: the one at the top
  void goToPage(int page);

  /// Marks the next place of the text (whatever its case) behind the marked one, or before it; goes round at
  /// the end. False where there is none. An empty text marks nothing.
  bool find(const QString& text, bool forwards);

 Q_SIGNALS:
  void currentPageChanged(int page);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;
  void scrollContentsBy(int dx, int dy) override;

 private:
  struct Shown {
    QPixmap picture;
    PageItems items;
  };
  struct Match {
    int page = -1;
    qsizetype item = -1;
  };

  double scale() const;  ///< pixels of a millimetre
  QSize pagePixels() const;
  int stride() const;
  QRect pageRect(int page) const;  ///< on the viewport
  const Shown& shown(int page);
  void forget();
  void arrange();
  void paintMarks(QPainter& painter, const QRect& page, const Shown& shown, int number) const;
  bool findOn(int page, bool forwards, qsizetype from);
  void showMatch();

  Document* document_ = nullptr;
  Fit fit_ = Fit::Percent;
  int percent_ = 100;
  QHash<int, Shown> shown_;
  QString searched_;
  Match match_;
};

}  // namespace qk::report
