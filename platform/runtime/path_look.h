// One look at what a path leads to. A poll of many names lives from its being cheap.
#pragma once

#include <QByteArray>
#include <QString>

#include "platform/runtime/held_files.h"

namespace qk {

/// A path as the system takes it, made once for many looks.
#ifdef Q_OS_UNIX
using NativePath = QByteArray;
#else
using NativePath = QString;
#endif

NativePath native(const QString& path);

enum class PathKind { Nothing, File, Folder };

struct PathLook {
  PathKind kind = PathKind::Nothing;
  qint64 stamp = 0;            ///< the last change, in nanoseconds since 1970
  FileIdentity identity = {};  ///< all 0 where the system tells none
  friend bool operator==(const PathLook&, const PathLook&) = default;
};

/// Never fails: what can't be looked at is nothing.
PathLook lookAt(const NativePath& path);

}  // namespace qk
