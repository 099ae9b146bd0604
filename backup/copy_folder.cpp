#include "backup/copy_folder.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSysInfo>
#include <algorithm>
#include <tuple>

#include "platform/dao/server/server_address.h"
#include "platform/dao/store_files.h"
#include "platform/runtime/error.h"
#include "platform/runtime/files.h"
#include "platform/runtime/held_files.h"
#include "platform/runtime/settled_files.h"

namespace qk {

namespace {

constexpr char kMomentFormat[] = "yyyy-MM-dd hh-mm-ss";
const QString kMomentPattern = " \\d{4}-\\d\\d-\\d\\d \\d\\d-\\d\\d-\\d\\d";

QString below(const QString& folder, const QString& name) {
  return withTrailingSeparator(folder) + name;
}

/// What can't be removed now is removed another time.
void tryToRemove(Files& files, const QString& path) {
  try {
    files.remove(path);
  } catch (const Error&) {
    return;
  }
}

bool isUsed(Files& files, const QString& path) {
  const QStringList beside = dao::filesBeside(path);
  return isHeld(path) ||
         std::any_of(beside.begin(), beside.end(), [&](const QString& file) { return files.exists(file); });
}

/// Who gives a copy a name of his own wants to keep it.
bool isRenamed(const ProvenCopy& copy) {
  return QFileInfo(copy.path).fileName() != copy.evidence.file;
}

std::optional<ProvenCopy> provenCopy(Files& files, const QString& evidencePath) {
  try {
    const auto evidence = evidenceIn(files.read(evidencePath));
    if (!evidence) return {};
    const QFileInfo file(evidencePath);
    const QString path = file.path() + '/' + file.completeBaseName() + ".qkk";
    if (QFileInfo(path).size() != evidence->size || !files.exists(path)) return {};
    return ProvenCopy{path, *evidence};
  } catch (const Error&) {
    return {};
  }
}

}  // namespace

QString sourceOf(const QString& competition) {
  if (const auto address = dao::serverAddressIn(competition)) return placeOf(*address);
  const QFileInfo file(competition);
  const QString path = file.exists() ? file.canonicalFilePath() : file.absoluteFilePath();
  return path + " auf " + QSysInfo::machineHostName();
}

QString copyBaseOf(const QString& competition) {
  static const QRegularExpression moment(kMomentPattern + "$");
  QString base = QFileInfo(competition).completeBaseName().remove(moment);
  return base.replace('.', '_');
}

QString copyStemOf(const QString& folder, const QString& competition, const QDateTime& moment) {
  return below(folder, copyBaseOf(competition) + ' ' + moment.toString(kMomentFormat));
}

std::vector<ProvenCopy> provenCopies(Files& files, const QString& folder, const QString& source) {
  std::vector<ProvenCopy> found;
  for (const QString& name : files.list(folder, "*.beleg")) {
    auto copy = provenCopy(files, below(folder, name));
    if (copy && copy->evidence.source == source) found.push_back(*std::move(copy));
  }
  std::stable_sort(found.begin(), found.end(), [](const ProvenCopy& a, const ProvenCopy& b) {
    return std::tie(a.evidence.sequence, a.evidence.moment) <
           std::tie(b.evidence.sequence, b.evidence.moment);
  });
  return found;
}

std::vector<ProvenCopy> superfluous(const std::vector<ProvenCopy>& copies) {
  std::vector<ProvenCopy> found;
  for (size_t i = 0; i + kKeptCopies < copies.size(); ++i)
    if (copies[i].evidence.moment.date() == copies[i + 1].evidence.moment.date()) found.push_back(copies[i]);
  return found;
}

bool isUnchanged(const ProvenCopy& copy) {
  constexpr qsizetype kPiece = 1 << 20;
  QCryptographicHash hash(QCryptographicHash::Sha256);
  try {
    readInPieces(copy.path, kPiece, [&](const QByteArray& piece) { hash.addData(piece); });
  } catch (const Error&) {
    return false;
  }
  return hash.result() == copy.evidence.sha256;
}

void thinOut(Files& files, const std::vector<ProvenCopy>& copies) {
  for (const ProvenCopy& copy : superfluous(copies)) {
    if (isRenamed(copy) || isUsed(files, copy.path) || !isUnchanged(copy)) continue;
    tryToRemove(files, copy.path);
    if (!files.exists(copy.path)) tryToRemove(files, evidencePathOf(copy.path));
  }
}

void removeDrafts(Files& files, const QString& folder, const QString& competition) {
  static const QString kDraft = ".entwurf";
  const QRegularExpression own(QRegularExpression::anchoredPattern(
      QRegularExpression::escape(copyBaseOf(competition)) + kMomentPattern + "\\.entwurf(-.*)?"));
  for (const QString& name : files.list(folder, "*" + kDraft + "*")) {
    if (!own.match(name).hasMatch()) continue;
    const QString stem = below(folder, name.left(name.lastIndexOf(kDraft)));
    // Its evidence comes just before the draft gets its name.
    if (files.exists(stem + ".beleg") && !files.exists(stem + ".qkk")) tryToRemove(files, stem + ".beleg");
    tryToRemove(files, below(folder, name));
  }
}

}  // namespace qk
