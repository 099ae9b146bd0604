#include "platform/dao/sqlite/sqlite_pages.h"

#include <sqlite3.h>

#include <QScopedValueRollback>
#include <QStringList>
#include <memory>
#include <new>

#include "platform/dao/sqlite/sqlite_errors.h"
#include "platform/runtime/error.h"

namespace qk::dao {
namespace {

constexpr int kPagesAtOnce = 200;
constexpr char kLayer[] = "qk-witness";

/// Where the layer below tells what it writes; of the thread that copies.
thread_local PageWitness* witness = nullptr;

/// A file of the layer: the engine's own one stands behind it in the same memory.
struct LayerFile {
  sqlite3_file base;
  PageWitness* witness;
  sqlite3_file* real() { return reinterpret_cast<sqlite3_file*>(this + 1); }
};

LayerFile* layerFile(sqlite3_file* file) {
  return reinterpret_cast<LayerFile*>(file);
}
sqlite3_file* real(sqlite3_file* file) {
  return layerFile(file)->real();
}

int closeFile(sqlite3_file* file) {
  return real(file)->pMethods ? real(file)->pMethods->xClose(real(file)) : SQLITE_OK;
}
int readFile(sqlite3_file* file, void* bytes, int size, sqlite3_int64 offset) {
  return real(file)->pMethods->xRead(real(file), bytes, size, offset);
}
int writeFile(sqlite3_file* file, const void* bytes, int size, sqlite3_int64 offset) {
  if (layerFile(file)->witness) layerFile(file)->witness->note(offset, static_cast<const char*>(bytes), size);
  return real(file)->pMethods->xWrite(real(file), bytes, size, offset);
}
int truncateFile(sqlite3_file* file, sqlite3_int64 size) {
  if (layerFile(file)->witness) layerFile(file)->witness->cut(size);
  return real(file)->pMethods->xTruncate(real(file), size);
}
int syncFile(sqlite3_file* file, int flags) {
  return real(file)->pMethods->xSync(real(file), flags);
}
int fileSize(sqlite3_file* file, sqlite3_int64* size) {
  return real(file)->pMethods->xFileSize(real(file), size);
}
int lockFile(sqlite3_file* file, int level) {
  return real(file)->pMethods->xLock(real(file), level);
}
int unlockFile(sqlite3_file* file, int level) {
  return real(file)->pMethods->xUnlock(real(file), level);
}
int checkReserved(sqlite3_file* file, int* reserved) {
  return real(file)->pMethods->xCheckReservedLock(real(file), reserved);
}
int controlFile(sqlite3_file* file, int operation, void* argument) {
  return real(file)->pMethods->xFileControl(real(file), operation, argument);
}
int sectorSize(sqlite3_file* file) {
  return real(file)->pMethods->xSectorSize(real(file));
}
int characteristics(sqlite3_file* file) {
  return real(file)->pMethods->xDeviceCharacteristics(real(file));
}

/// The first version: neither shared memory nor a mapped file, all goes through the routines above.
const sqlite3_io_methods kMethods = {1,           closeFile,  readFile,        writeFile,  truncateFile,
                                     syncFile,    fileSize,   lockFile,        unlockFile, checkReserved,
                                     controlFile, sectorSize, characteristics, nullptr,    nullptr,
                                     nullptr,     nullptr,    nullptr,         nullptr};

int openFile(sqlite3_vfs* layer, const char* name, sqlite3_file* file, int flags, int* outFlags) {
  auto* below = static_cast<sqlite3_vfs*>(layer->pAppData);
  auto* opened = new (file) LayerFile{{&kMethods}, (flags & SQLITE_OPEN_MAIN_DB) ? witness : nullptr};
  const int result = below->xOpen(below, name, opened->real(), flags, outFlags);
  if (result != SQLITE_OK) opened->base.pMethods = nullptr;
  return result;
}

/// All but the opening is that of the system's layer.
void installLayer() {
  static sqlite3_vfs layer = [] {
    sqlite3_vfs* below = sqlite3_vfs_find(nullptr);
    sqlite3_vfs made = *below;
    made.szOsFile = static_cast<int>(sizeof(LayerFile)) + below->szOsFile;
    made.pNext = nullptr;
    made.zName = kLayer;
    made.pAppData = below;
    made.xOpen = openFile;
    return made;
  }();
  static const int registered = sqlite3_vfs_register(&layer, 0);
  if (registered != SQLITE_OK) throw sqlite::errorOf(registered, {});
}

struct Close {
  void operator()(sqlite3* handle) const { sqlite3_close_v2(handle); }
};
using Handle = std::unique_ptr<sqlite3, Close>;

[[noreturn]] void fail(sqlite3* handle) {
  throw sqlite::errorOf(sqlite3_extended_errcode(handle), QString::fromUtf8(sqlite3_errmsg(handle)));
}

Handle opened(const QString& file, int flags, const char* layer) {
  sqlite3* handle = nullptr;
  const int result = sqlite3_open_v2(file.toUtf8().constData(), &handle, flags, layer);
  Handle owned(handle);
  if (!handle) throw sqlite::errorOf(SQLITE_NOMEM, {});
  if (result != SQLITE_OK) fail(handle);
  sqlite3_extended_result_codes(handle, 1);
  return owned;
}

void run(sqlite3* handle, const char* text) {
  if (sqlite3_exec(handle, text, nullptr, nullptr, nullptr) != SQLITE_OK) fail(handle);
}

void copy(sqlite3* source, sqlite3* target, const std::function<bool()>& cancelled, const PartDone& done) {
  struct Finish {
    void operator()(sqlite3_backup* backup) const { sqlite3_backup_finish(backup); }
  };
  const std::unique_ptr<sqlite3_backup, Finish> backup(sqlite3_backup_init(target, "main", source, "main"));
  if (!backup) fail(target);
  for (;;) {
    if (cancelled()) throw Error(errors::kCancelled);
    const int result = sqlite3_backup_step(backup.get(), kPagesAtOnce);
    if (result == SQLITE_DONE) return;
    if (result != SQLITE_OK) throw sqlite::errorOf(result, {});
    const double all = sqlite3_backup_pagecount(backup.get());
    done((all - sqlite3_backup_remaining(backup.get())) / all);
  }
}

}  // namespace

PageWitness copyPages(sqlite3* source, const QString& file, const std::function<bool()>& cancelled,
                      const PartDone& done) {
  installLayer();
  PageWitness noted;
  {
    const QScopedValueRollback told(witness, &noted);
    const Handle target = opened(file, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, kLayer);
    // Nobody else looks into it yet, and it is worth nothing before it is synced as a whole.
    run(target.get(), "PRAGMA locking_mode = EXCLUSIVE");
    run(target.get(), "PRAGMA synchronous = OFF");
    run(target.get(), "PRAGMA journal_mode = OFF");
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v2(source, "PRAGMA main.page_size", -1, &statement, nullptr) != SQLITE_OK)
      fail(source);
    if (sqlite3_step(statement) == SQLITE_ROW) noted.setPageSize(sqlite3_column_int(statement, 0));
    sqlite3_finalize(statement);
    copy(source, target.get(), cancelled, done);
    // The pages say that the store keeps a log beside it. The copy shall open wherever nothing can be
    // written.
    run(target.get(), "PRAGMA journal_mode = DELETE");
  }
  return noted;
}

QString flawsOf(const QString& file, std::function<bool()> cancelled) {
  const Handle handle = opened(file, SQLITE_OPEN_READONLY, nullptr);
  constexpr int kStepsBetweenLooks = 2000;
  sqlite3_progress_handler(
      handle.get(), kStepsBetweenLooks,
      [](void* ask) { return (*static_cast<std::function<bool()>*>(ask))() ? 1 : 0; }, &cancelled);
  QStringList flaws;
  const auto take = [](void* list, int, char** values, char**) {
    const QString line = QString::fromUtf8(values[0]);
    if (line != "ok") static_cast<QStringList*>(list)->append(line);
    return 0;
  };
  if (sqlite3_exec(handle.get(), "PRAGMA integrity_check(10)", take, &flaws, nullptr) != SQLITE_OK) {
    const int code = sqlite3_extended_errcode(handle.get());
    if ((code & 0xff) == SQLITE_INTERRUPT) throw Error(errors::kCancelled);
    flaws.append(sqlite::errorOf(code, QString::fromUtf8(sqlite3_errmsg(handle.get()))).description());
  }
  return flaws.join("\n");
}

}  // namespace qk::dao
