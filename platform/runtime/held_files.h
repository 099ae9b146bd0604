// The files of this process that carry locks, above all open databases.
//
// POSIX locks belong to the process, not to who took them: closing any descriptor of a file drops all of
// them. Another program then thinks itself alone with the database and removes its log, while this one goes
// on writing into the removed file. So whoever opens files by name asks here first, and leaves a held one
// alone.
//
// Where locks belong to the descriptor (Windows) no file has an identity here and nothing is ever held. All
// of it may be called from any thread.
#pragma once

#include <QString>
#include <compare>
#include <functional>
#include <optional>

namespace qk {

/// The file itself, under whatever name and through whatever link.
struct FileIdentity {
  quint64 device = 0;
  quint64 number = 0;
  friend auto operator<=>(const FileIdentity&, const FileIdentity&) = default;
};

/// Nothing where no such file is.
std::optional<FileIdentity> identityOf(const QString& path);
std::optional<FileIdentity> identityOf(const char* nativePath);

/// Holds a file while it lives; any number may hold the same one.
class HeldFile {
 public:
  explicit HeldFile(const FileIdentity& file);
  ~HeldFile();
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

 private:
  FileIdentity file_;
};

bool isHeld(const QString& path);
/// Runs `use`, which opens and closes the file, and lets nobody begin to hold it meanwhile. False, and
/// nothing done, when it is held. `use` holds no file itself.
bool unlessHeld(const QString& path, const std::function<void()>& use);

}  // namespace qk
