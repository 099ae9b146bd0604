// Counts how often anybody reads through a whole folder, by what the kernel reports. Linux only.
#pragma once

#include <QString>

namespace qk::test {

class FolderReadings {
 public:
  /// From now on. Throws std::runtime_error where the kernel doesn't report.
  explicit FolderReadings(const QString& folder);
  ~FolderReadings();
  FolderReadings(const FolderReadings&) = delete;
  FolderReadings& operator=(const FolderReadings&) = delete;

  /// Since the last call.
  int count();

 private:
  int queue_;
};

}  // namespace qk::test
