#include "tests/support/lossy/lossy_vfs.h"

#include <sqlite3.h>

#include <algorithm>
#include <cstring>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace qk::lossy {

namespace {

constexpr std::int64_t kSector = 512;

struct Write {
  std::int64_t offset;
  std::vector<char> bytes;  ///< empty for a truncation to `offset`
};

/// What all handles of one file share: the writes that the disk doesn't have yet, in order.
struct Pending {
  std::vector<Write> writes;
  std::int64_t size = 0;  ///< as the engine sees it
};

struct File {
  sqlite3_file base;
  Pending* pending;  ///< nullptr for a file without a name
  sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

sqlite3_vfs* realVfs = nullptr;
std::map<std::string, std::unique_ptr<Pending>> files;
std::map<std::string, sqlite3_file*> anyHandle;  ///< one open handle per file, for loseUnsynced
std::function<void(std::int64_t)> writeHook;
std::int64_t writes = 0, syncs = 0;

File* self(sqlite3_file* file) {
  return reinterpret_cast<File*>(file);
}
sqlite3_file* real(sqlite3_file* file) {
  return self(file)->real();
}

int apply(sqlite3_file* realFile, const Write& write, std::int64_t length) {
  if (write.bytes.empty()) return realFile->pMethods->xTruncate(realFile, write.offset);
  return realFile->pMethods->xWrite(realFile, write.bytes.data(), static_cast<int>(length), write.offset);
}

int flush(File* file) {
  for (const Write& write : file->pending->writes)
    if (const int rc = apply(file->real(), write, static_cast<std::int64_t>(write.bytes.size()));
        rc != SQLITE_OK)
      return rc;
  file->pending->writes.clear();
  return SQLITE_OK;
}

int xClose(sqlite3_file* file) {
  if (self(file)->pending)
    for (auto it = anyHandle.begin(); it != anyHandle.end(); ++it)
      if (it->second == file) {
        anyHandle.erase(it);
        break;
      }
  return real(file)->pMethods->xClose(real(file));
}

int xRead(sqlite3_file* file, void* buffer, int amount, sqlite3_int64 offset) {
  Pending* pending = self(file)->pending;
  if (!pending || pending->writes.empty())
    return real(file)->pMethods->xRead(real(file), buffer, amount, offset);
  const int rc = real(file)->pMethods->xRead(real(file), buffer, amount, offset);
  if (rc != SQLITE_OK && rc != SQLITE_IOERR_SHORT_READ) return rc;
  char* out = static_cast<char*>(buffer);
  for (const Write& write : pending->writes) {
    if (write.bytes.empty()) {  // beyond a truncation nothing is left of the older bytes
      const std::int64_t from = std::max<std::int64_t>(write.offset, offset);
      if (from < offset + amount)
        std::memset(out + (from - offset), 0, static_cast<size_t>(offset + amount - from));
      continue;
    }
    const std::int64_t from = std::max<std::int64_t>(write.offset, offset);
    const std::int64_t to =
        std::min<std::int64_t>(write.offset + static_cast<std::int64_t>(write.bytes.size()), offset + amount);
    if (from < to)
      std::memcpy(out + (from - offset), write.bytes.data() + (from - write.offset),
                  static_cast<size_t>(to - from));
  }
  return offset + amount > pending->size ? SQLITE_IOERR_SHORT_READ : SQLITE_OK;
}

int xWrite(sqlite3_file* file, const void* data, int amount, sqlite3_int64 offset) {
  Pending* pending = self(file)->pending;
  if (!pending) return real(file)->pMethods->xWrite(real(file), data, amount, offset);
  if (writeHook) writeHook(writes);
  ++writes;
  const char* bytes = static_cast<const char*>(data);
  pending->writes.push_back({offset, std::vector<char>(bytes, bytes + amount)});
  pending->size = std::max<std::int64_t>(pending->size, offset + amount);
  return SQLITE_OK;
}

int xTruncate(sqlite3_file* file, sqlite3_int64 size) {
  Pending* pending = self(file)->pending;
  if (!pending) return real(file)->pMethods->xTruncate(real(file), size);
  pending->writes.push_back({size, {}});
  pending->size = size;
  return SQLITE_OK;
}

int xSync(sqlite3_file* file, int) {
  ++syncs;
  return self(file)->pending ? flush(self(file)) : SQLITE_OK;
}

int xFileSize(sqlite3_file* file, sqlite3_int64* size) {
  if (!self(file)->pending) return real(file)->pMethods->xFileSize(real(file), size);
  *size = self(file)->pending->size;
  return SQLITE_OK;
}

int xLock(sqlite3_file* f, int level) {
  return real(f)->pMethods->xLock(real(f), level);
}
int xUnlock(sqlite3_file* f, int level) {
  return real(f)->pMethods->xUnlock(real(f), level);
}
int xCheckReservedLock(sqlite3_file* f, int* out) {
  return real(f)->pMethods->xCheckReservedLock(real(f), out);
}
int xFileControl(sqlite3_file* f, int op, void* arg) {
  return real(f)->pMethods->xFileControl(real(f), op, arg);
}
int xSectorSize(sqlite3_file* f) {
  return real(f)->pMethods->xSectorSize(real(f));
}
/// Nothing is promised: no atomic writes, no safe append.
int xDeviceCharacteristics(sqlite3_file*) {
  return 0;
}
int xShmMap(sqlite3_file* f, int page, int size, int extend, void volatile** out) {
  return real(f)->pMethods->xShmMap(real(f), page, size, extend, out);
}
int xShmLock(sqlite3_file* f, int offset, int n, int flags) {
  return real(f)->pMethods->xShmLock(real(f), offset, n, flags);
}
void xShmBarrier(sqlite3_file* f) {
  real(f)->pMethods->xShmBarrier(real(f));
}
int xShmUnmap(sqlite3_file* f, int remove) {
  return real(f)->pMethods->xShmUnmap(real(f), remove);
}

// Version 2: shared memory for the write-ahead log, no memory mapping that would go round xRead.
const sqlite3_io_methods kMethods = {2,
                                     xClose,
                                     xRead,
                                     xWrite,
                                     xTruncate,
                                     xSync,
                                     xFileSize,
                                     xLock,
                                     xUnlock,
                                     xCheckReservedLock,
                                     xFileControl,
                                     xSectorSize,
                                     xDeviceCharacteristics,
                                     xShmMap,
                                     xShmLock,
                                     xShmBarrier,
                                     xShmUnmap,
                                     nullptr,
                                     nullptr};

int xOpen(sqlite3_vfs*, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  self(file)->pending = nullptr;
  self(file)->base.pMethods = nullptr;
  const int rc = realVfs->xOpen(realVfs, name, real(file), flags, outFlags);
  if (rc != SQLITE_OK) return rc;
  self(file)->base.pMethods = &kMethods;
  if (name && (flags & (SQLITE_OPEN_MAIN_DB | SQLITE_OPEN_WAL | SQLITE_OPEN_MAIN_JOURNAL))) {
    auto& pending = files[name];
    if (!pending) {
      pending = std::make_unique<Pending>();
      sqlite3_int64 size = 0;
      real(file)->pMethods->xFileSize(real(file), &size);
      pending->size = size;
    }
    self(file)->pending = pending.get();
    anyHandle[name] = file;
  }
  return SQLITE_OK;
}

int xDelete(sqlite3_vfs*, const char* name, int syncDirectory) {
  files.erase(name);
  return realVfs->xDelete(realVfs, name, syncDirectory);
}

}  // namespace

void install() {
  realVfs = sqlite3_vfs_find(nullptr);
  static sqlite3_vfs layer = *realVfs;
  layer.zName = "qk-lossy";
  layer.szOsFile = static_cast<int>(sizeof(File)) + realVfs->szOsFile;
  layer.xOpen = xOpen;
  layer.xDelete = xDelete;
  sqlite3_vfs_register(&layer, 1);
}

void onWrite(std::function<void(std::int64_t)> hook) {
  writeHook = std::move(hook);
}

std::int64_t unsyncedBytes() {
  std::int64_t sum = 0;
  for (const auto& [name, pending] : files)
    for (const Write& write : pending->writes)
      sum += std::max<std::int64_t>(1, static_cast<std::int64_t>(write.bytes.size()));
  return sum;
}

std::int64_t syncCount() {
  return syncs;
}

void loseUnsynced(unsigned seed) {
  std::mt19937 random(seed);
  for (const auto& [name, handle] : anyHandle) {
    for (const Write& write : self(handle)->pending->writes) {
      if (random() % 2) continue;
      std::int64_t length = static_cast<std::int64_t>(write.bytes.size());
      const bool torn = length > kSector && random() % 3 == 0;
      if (torn) length = kSector * (1 + static_cast<std::int64_t>(random()) % (length / kSector));
      apply(real(handle), write,
            std::min<std::int64_t>(length, static_cast<std::int64_t>(write.bytes.size())));
    }
  }
}

}  // namespace qk::lossy
