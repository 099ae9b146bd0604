// The per-user settings store: application, section, key -> text.
//
// One UTF-8 file: "[Application/Section]" lines, then "key=value", verbatim. It is shared with other programs
// of the family: it is reread when it has changed, and a write merges into what stands there now, under a
// lock, through a temporary file, so that no reader ever sees half of it. Lines and sections that this
// program doesn't know stay as they are, and so do the ends of the lines (CR LF or LF). Of a key
// that stands twice the first one counts.
//
// A value with a line break in it stands as "%:" and the text with "%", CR and LF percent-encoded: values are
// mostly paths full of backslashes, so the escape is a prefix that hardly any value needs, not a character.
// Reading never fails: a missing value gives the default. A write that fails is Error 75, which names
// the file.
#pragma once

#include <QString>
#include <filesystem>
#include <memory>

#include "platform/runtime/error.h"

namespace qk {

class Settings {
 public:
  explicit Settings(QString filePath);
  Settings(const Settings&) = delete;
  Settings& operator=(const Settings&) = delete;

  QString value(const QString& application, const QString& section, const QString& key,
                const QString& missing = {}) const;
  /// Prefix reading of the text, whole part; missing or unreadable gives `missing`.
  int number(const QString& application, const QString& section, const QString& key, int missing = 0) const;
  /// True for any non-zero number.
  bool flag(const QString& application, const QString& section, const QString& key,
            bool missing = false) const;

  void setValue(const QString& application, const QString& section, const QString& key, const QString& value);

  const QString& filePath() const { return filePath_; }

  /// QK_EINSTELLUNGEN, or the user's configuration folder.
  static QString defaultFilePath();

 private:
  struct Content;
  /// One look at the file's time stamp; reads it when that has changed.
  void refresh() const;
  Error notStored() const;

  QString filePath_;
  std::filesystem::path nativePath_;  // the same, ready for the look at every read
  mutable std::shared_ptr<const Content> content_;
};

}  // namespace qk
