// A door to files that fails where a test wants it to, and keeps a journal of what went through it.
#pragma once

#include <QRegularExpression>
#include <functional>
#include <optional>
#include <vector>

#include "platform/runtime/files.h"

namespace qk::test {

enum class FileStep { Read, Write, Append, Remove, Copy, Rename, MakeFolder, Look };

class FailingFiles : public Files {
 public:
  static constexpr int kAlways = -1;

  /// The step fails on every path that matches the wildcard pattern (against the file name, whatever its
  /// case), `times` times, after `after` successes. A failing look (exists, folderExists, readable, list)
  /// finds nothing.
  void fail(FileStep step, const QString& pattern, int error, int times = kAlways, int after = 0);
  /// A write or append leaves only the first `bytes` bytes, then fails.
  void tear(FileStep step, const QString& pattern, int bytes, int error = 61, int times = 1);
  /// Every write, append, copy, rename and new folder fails with 61 until heal().
  void fillDisk();
  /// Every step fails with 76 and every look finds nothing until heal(): the network is gone.
  void unplug();
  void heal() { rules_.clear(); }

  /// Runs before each step that changes something or reads; for work in between ("the station answers").
  void before(std::function<void(FileStep, const QString& path)> hook) { hook_ = std::move(hook); }

  /// "write HServ1.nrt", "remove HSlav1.ctl" … in order, without looks; failed steps end in " !" and the
  /// number.
  const QStringList& journal() const { return journal_; }
  void clearJournal() { journal_.clear(); }
  /// Looks at names (exists, folderExists, readable) since the last clear, for what a poll costs.
  int looks() const { return looks_; }
  void clearLooks() { looks_ = 0; }

  QByteArray read(const QString& path) override;
  void write(const QString& path, const QByteArray& content) override;
  void append(const QString& path, const QByteArray& content) override;
  void remove(const QString& path) override;
  void copy(const QString& from, const QString& to) override;
  void rename(const QString& from, const QString& to) override;
  /// Two steps: a Write of a file beside it, which rules and journal know as name + ".neu", and a Rename.
  void replace(const QString& path, const QByteArray& content) override;
  void makeFolder(const QString& path) override;
  bool exists(const QString& path) override;
  bool folderExists(const QString& path) override;
  bool readable(const QString& path) override;
  QStringList list(const QString& folder, const QString& pattern) override;

 private:
  struct Rule {
    FileStep step;
    QRegularExpression pattern;
    int error;
    int times;
    int after;
    std::optional<int> bytes;  ///< of a torn write
  };
  void addRule(FileStep step, const QString& pattern, int error, int times, int after,
               std::optional<int> bytes);
  /// The rule that this step meets, used up by one.
  std::optional<Rule> meet(FileStep step, const QString& path);
  /// Notes the step and throws when it is to fail.
  void pass(FileStep step, const QString& path, const QByteArray* content = nullptr);
  bool seesNothing(const QString& path);

  std::vector<Rule> rules_;
  std::function<void(FileStep, const QString&)> hook_;
  QStringList journal_;
  int looks_ = 0;
};

}  // namespace qk::test
