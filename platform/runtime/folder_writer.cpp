#include "platform/runtime/folder_writer.h"

#include "platform/runtime/files.h"

namespace qk {

FolderWriter::FolderWriter(Files& files, const QString& folder) : files_(files), folder_(folder) {
  for (const QString& name : files.list(folder, "*")) spellings_.insert(name.toCaseFolded(), name);
}

void FolderWriter::write(const QString& name, const QByteArray& content) {
  QString& spelling = spellings_[name.toCaseFolded()];
  if (spelling.isEmpty()) spelling = name;
  files_.replace(folder_ + spelling, content);
}

}  // namespace qk
