// The window that shows a report: pages as they come, zoom, search, print, save as PDF and as CSV.
#pragma once

#include <QDialog>
#include <memory>

#include "platform/report/document.h"
#include "platform/workplace.h"

class QIODevice;

namespace Ui {
class ReportPreview;
}

namespace qk {

class Paper;

class ReportPreview : public QDialog {
  Q_OBJECT

 public:
  /// `paper` asks for the printer. Document, workplace and paper outlive the window.
  ReportPreview(const Workplace& workplace, Paper& paper, report::Document& document, const QString& title,
                int zoom, QWidget* parent = nullptr);
  ~ReportPreview() override;

 public Q_SLOTS:
  void reject() override;

 private:
  using Writing = std::function<bool(QIODevice& device, const report::GoesOn& goesOn)>;

  void makeKeys();
  void key(const QKeySequence& sequence, const std::function<void()>& routine);
  void showState();
  void showZoom();
  void zoomChosen(const QString& text);
  void zoomBy(int percent);
  void search(bool forwards);
  void print();
  void save(const QString& filter, const QString& extension, const Writing& write);
  void halt();
  void fail(const Error& error);
  /// Runs a long work with progress and the way to stop it. Failures are shown.
  void work(const QString& what, const std::function<bool(const report::GoesOn&)>& body,
            const QString& success);

  Workplace workplace_;
  Paper& paper_;
  report::Document& document_;
  std::unique_ptr<Ui::ReportPreview> ui_;
  QString news_;  ///< what was done last
  bool working_ = false, halted_ = false;
};

}  // namespace qk
