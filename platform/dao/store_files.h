// What lies in a folder because of a store that is a file.
#pragma once

#include <QStringList>

namespace qk::dao {

/// The files that the engine may keep beside that of a store. Who only read leaves them; they go with it.
inline QStringList filesBeside(const QString& path) {
  return {path + "-wal", path + "-shm"};
}

}  // namespace qk::dao
