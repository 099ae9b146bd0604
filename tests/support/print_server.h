// A print server of the test's own: a real CUPS with its own folder and socket, whose printers write each job
// into a file. The program under test reaches it through CUPS_SERVER, which must stand before the first
// look at printers: make the server first of all.
#pragma once

#include <QImage>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

namespace qk::test {

class PrintServer {
 public:
  PrintServer();
  ~PrintServer();
  PrintServer(const PrintServer&) = delete;
  PrintServer& operator=(const PrintServer&) = delete;

  /// False with complaint() when the server didn't come up: everything else is void then.
  bool isRunning() const { return running_; }
  const QString& complaint() const { return complaint_; }

  void addLabelPrinter(const QString& name);  ///< labels of 100 × 60 mm, 2 mm of them out of reach
  void addSheetPrinter(const QString& name);
  void remove(const QString& name);
  void pause(const QString& name);
  void resume(const QString& name);

  /// How many jobs wait in a queue.
  int waiting(const QString& name);
  /// The files of a printer's jobs in their order, as soon as there are that many.
  QStringList jobs(const QString& name, int count);
  /// The one page of a job, at that resolution; null when it isn't one page.
  QImage page(const QString& file, int dotsPerInch);

 private:
  QString path(const QString& name) const { return folder_.filePath(name); }
  void write(const QString& name, const QString& text, bool program = false);
  void lay();
  QString run(const QString& program, const QStringList& arguments);

  QTemporaryDir folder_;
  QProcess server_;
  bool running_ = false;
  QString complaint_;
};

}  // namespace qk::test
