#include "masterdata/making/draft.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QThread>

#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/schema/schema_build.h"

namespace qk {

namespace {

/// Somebody else who looks into the draft keeps its log beside it, and a rename would leave that behind.
void waitForItsLog(const QString& draft) {
  constexpr int kLooks = 20, kPause = 50;
  for (int look = 0; QFileInfo(draft + "-wal").size() > 0; ++look) {
    if (look == kLooks)
      throw Error(errors::kFileInUse,
                  QString("Ein anderes Programm hält die Datei »%1« offen. Bitte wiederholen.")
                      .arg(QFileInfo(draft).fileName()));
    QThread::msleep(kPause);
    dao::Database::open(draft);
  }
}

/// Where even that fails, the mark stays and says what lies there.
void tidyUp(const QString& path) {
  try {
    clearUnfinishedMove(path);
  } catch (const Error&) {
    return;
  }
}

void makeFile(const QString& path, const std::function<void(dao::Database&)>& fill) {
  const QString draft = path + ".entwurf";
  removeDraft(draft);
  try {
    createDatabase(draft, fill);
    waitForItsLog(draft);
    if (QFileInfo::exists(path)) throw Error(errors::kStoreExists);
    Files().rename(draft, path);
  } catch (...) {
    removeDraft(draft);
    throw;
  }
}

}  // namespace

void removeDraft(const QString& path) {
  const QFileInfo file(path);
  for (const QString& name : file.dir().entryList({file.fileName(), file.fileName() + "-*"}, QDir::Files))
    QFile::remove(file.dir().filePath(name));
}

void makeWhole(const DraftPlace& place, const std::function<void(dao::Database&)>& fill,
               const std::function<void(const MoveStep&)>& watch) {
  if (!QFileInfo::exists(place.path)) return makeFile(place.path, fill);
  refuseUsedTarget(place.path, place.again);
  const QTemporaryDir folder;
  const QString draft = folder.filePath("entwurf.qkk");
  createDatabase(draft, fill);
  bool begun = false;
  try {
    moveCompetition({draft, place.path, place.again, "neuer Wettkampf"}, [&](const MoveStep& step) {
      begun = true;
      watch(step);
    });
  } catch (...) {
    if (begun) tidyUp(place.path);
    throw;
  }
}

}  // namespace qk
