#include "backup/copy_check.h"

#include <QFileInfo>

#include "backup/copy_folder.h"
#include "platform/dao/moving/snapshot.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"

namespace qk {

namespace {

constexpr int kDifferent = errors::kChangedMeanwhile;

}  // namespace

Evidence requireProven(Files& files, const QString& copy) {
  if (!files.exists(copy)) throw Error(errors::kFileNotFound);
  const QString path = evidencePathOf(copy);
  const QString name = QFileInfo(path).fileName();
  if (!files.exists(path))
    throw Error(kDifferent, QString("Neben der Kopie liegt kein Beleg (%1).").arg(name));
  const auto evidence = evidenceIn(files.read(path));
  if (!evidence) throw Error(kDifferent, QString("Der Beleg %1 ist beschädigt oder verändert.").arg(name));
  if (QFileInfo(copy).size() != evidence->size || !isUnchanged({copy, *evidence}))
    throw Error(kDifferent,
                "Die Kopie ist nicht mehr, was der Beleg sagt: jemand hat in ihr gearbeitet, oder sie ist "
                "beschädigt.");
  return *evidence;
}

void requireFlawless(const QString& copy) {
  const QString flaws = dao::flawsOfSnapshot(copy, [] { return false; });
  if (!flaws.isEmpty()) throw Error(errors::kStoreDamaged, "Die Kopie ist beschädigt: " + flaws);
}

}  // namespace qk
