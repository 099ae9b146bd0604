// What a file of pages must hold byte by byte, because it was written so.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>
#include <vector>

namespace qk::dao {

/// Called now and then with the part of the work that is done, 0 to 1.
using PartDone = std::function<void(double)>;

/// What was handed to the disk, page by page.
class PageWitness {
 public:
  void setPageSize(qsizetype size) { pageSize_ = size; }
  /// A whole number of pages, at the offset in the file; what was there before is replaced.
  void note(qint64 offset, const char* bytes, qsizetype size);
  void cut(qint64 size);

  /// Reads the file past all caches of an engine, and compares. Its SHA-256; 3197 with a German text that
  /// tells the first place where other bytes are in the file than were handed over.
  QByteArray compare(const QString& file) const;

 private:
  qsizetype pageSize_ = 4096;
  std::vector<quint64> pages_;  // a digest each; 0 for one that was never written: it reads as zeros
};

}  // namespace qk::dao
