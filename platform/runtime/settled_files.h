// Files that must outlive a loss of power, and the look at what is really in them.
//
// A file that this process holds (held_files.h) is left alone: error 55. Other errors as in files.h. All of
// it may be called from any thread.
#pragma once

#include <QByteArray>
#include <QString>
#include <functional>

namespace qk {

/// What was written to the file so far is on the disk when this returns.
void settleFile(const QString& path);
/// The same for the names in the folder. A system that settles them by itself has nothing to do here.
void settleFolder(const QString& path);
/// Makes a file whole and on the disk, or not at all. It must not be there yet: 58.
void writeSettled(const QString& path, const QByteArray& content);
/// Hands over what is in the file, in pieces of `size` bytes; the last may be shorter.
void readInPieces(const QString& path, qsizetype size, const std::function<void(const QByteArray&)>& take);

}  // namespace qk
