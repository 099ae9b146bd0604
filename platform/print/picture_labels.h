// Labels as pictures: what a printer would make of them, and what will be wrong with them.
#pragma once

#include <QImage>
#include <memory>

#include "platform/print/positioned_labels.h"

namespace qk {

class PictureLabels : public PositionedLabels {
 public:
  explicit PictureLabels(const LabelPaper& paper) : paper_(paper) {}

  /// The documents in their order, each a sheet of the paper.
  const QList<QImage>& pictures() const { return pictures_; }
  /// Something stands where the printer can't print.
  bool leavesPaper() const { return leavesPaper_; }
  /// A bar code can't be read from the sheet: bars too narrow, or something over them.
  bool unreadable() const { return unreadable_; }
  /// What has no bars of the kind asked for.
  const QStringList& impossible() const { return impossible_; }

  QStringList printers() const override { return {}; }
  QString currentPrinter() const override { return {}; }
  void choosePrinter(const QString&) override {}
  bool isPaused(const QString&) const override { return false; }
  LabelPaper paper(const QString&) const override { return paper_; }

 protected:
  QPainter& begin() override;
  int dotsPerInch() const override;
  void end() override;
  void painted(const QRectF& place, const Bars* bars) override;
  void impossible(const Bars& bars) override { impossible_ += bars.content; }

 private:
  struct Read {
    QRect place;  // on the sheet
    Bars bars;
  };

  LabelPaper paper_;
  QList<QImage> pictures_;
  bool leavesPaper_ = false, unreadable_ = false;
  QStringList impossible_;
  // The sheet that is open; the painter ends before it.
  std::unique_ptr<QImage> sheet_;
  std::unique_ptr<QPainter> painter_;
  QRectF printable_;
  QList<Read> toRead_;
};

}  // namespace qk
