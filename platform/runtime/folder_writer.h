// Writes many files into one folder, each whole or not at all (Files::replace). A name that is already there
// is found whatever its case, by one look through the folder at the beginning.
#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>

namespace qk {

class Files;

class FolderWriter {
 public:
  /// `files` outlives the writer; `folder` with its final separator.
  FolderWriter(Files& files, const QString& folder);

  /// Errors as of Files::replace; what stood there before then still does.
  void write(const QString& name, const QByteArray& content);

 private:
  Files& files_;
  QString folder_;
  QHash<QString, QString> spellings_;  // by case-folded name
};

}  // namespace qk
