#include "platform/runtime/files.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QSaveFile>
#include <algorithm>
#include <atomic>
#include <filesystem>
#include <functional>
#include <system_error>

#include "platform/runtime/error.h"
#include "platform/runtime/folder_names.h"
#include "platform/runtime/held_files.h"
#include "platform/runtime/path_look.h"

namespace qk {

namespace {

#ifdef Q_OS_WIN
constexpr bool kNamesIgnoreCase = true;
#else
constexpr bool kNamesIgnoreCase = false;
#endif

QString parentOf(const QString& path) {
  const qsizetype cut = path.lastIndexOf(u'/');
  return cut < 0 ? "." : cut == 0 ? "/" : path.left(cut);
}

QString nameOf(const QString& path) {
  return path.mid(path.lastIndexOf(u'/') + 1);
}

/// Separators of the toolkit; trailing ones go, for the last component is what counts.
QString plainPath(const QString& path) {
  QString plain = path;
  plain.replace(u'\\', u'/');
  while (plain.size() > 1 && plain.endsWith(u'/')) plain.chop(1);
  return plain;
}

std::filesystem::path nativePath(const QString& path) {
  return std::filesystem::path(path.toStdU16String());
}

PathKind kindOf(const QString& path) {
  return lookAt(native(path)).kind;
}

bool isFolder(const QString& path) {
  return kindOf(path) == PathKind::Folder;
}

[[noreturn]] void fail(const QString& path, QFileDevice::FileError error, bool writing) {
  if (error == QFileDevice::PermissionsError) throw Error(errors::kPermissionDenied);
  if (error == QFileDevice::ResourceError) throw Error(writing ? 61 : 7);
  if (!isFolder(parentOf(path))) throw Error(errors::kPathNotFound);
  if (!writing && kindOf(path) == PathKind::Nothing) throw Error(errors::kFileNotFound);
  throw Error(errors::kPathAccess);
}

/// Opens and closes a file in `use`. One that this process holds (an open database) stays untouched.
void opening(const QString& path, const std::function<void()>& use) {
  if (!unlessHeld(path, use)) throw Error(errors::kFileAlreadyOpen);
}

/// Into an open, unbuffered file, which is closed: a full disk shows at the write that meets it, not silently
/// when the file closes.
void put(QFile& file, const QString& path, const QByteArray& content) {
  if (file.write(content) != content.size()) fail(path, file.error(), true);
  file.close();
  if (file.error() != QFileDevice::NoError) fail(path, file.error(), true);
}

/// A name in the same folder for a file that lives a moment. Nothing is called that yet, as a rule.
QString nameBeside(const QString& path) {
  static const QString mark = QString::number(QRandomGenerator::system()->generate64(), 36);
  static std::atomic<quint64> count = 0;
  return path.left(path.lastIndexOf(u'/') + 1) + u'~' + mark + u'-' + QString::number(++count) + ".tmp";
}

void storeUnheld(const QString& path, const QByteArray& content, QIODevice::OpenMode mode) {
  QFile file(path);
  if (!file.open(mode | QIODevice::Unbuffered)) fail(path, file.error(), true);
  put(file, path, content);
}

void store(const QString& path, const QByteArray& content, QIODevice::OpenMode mode) {
  opening(path, [&] { storeUnheld(path, content, mode); });
}

void moveOver(const QString& source, const QString& target) {
  std::error_code error;
  std::filesystem::rename(nativePath(source), nativePath(target), error);
  if (!error) return;
  if (error == std::errc::no_space_on_device) throw Error(errors::kDiskFull);
  if (error == std::errc::permission_denied || error == std::errc::operation_not_permitted)
    throw Error(errors::kPermissionDenied);
  fail(source, QFileDevice::RenameError, false);
}

void refuseForeign(const QString& path) {
  if (isForeignPath(path)) throw Error(errors::kPathNotFound);
}

QRegularExpression wildcard(const QString& pattern) {
  QString expression;
  // "*.*" has always meant every file, also one without a dot.
  for (const QChar c : pattern == "*.*" ? QString("*") : pattern)
    expression += c == u'*' ? QString(".*") : c == u'?' ? QString(".") : QRegularExpression::escape(c);
  return QRegularExpression(
      QRegularExpression::anchoredPattern(expression),
      QRegularExpression::CaseInsensitiveOption | QRegularExpression::DotMatchesEverythingOption);
}

}  // namespace

struct Files::Listing : FolderNames {
  using FolderNames::FolderNames;
};

/// A name that wasn't there, ready to be looked for again.
struct Files::Miss {
  NativePath path;
  QString foldedName;
  std::shared_ptr<Listing> folder;
};

bool Files::isStillMissing(const QString& path) {
  const auto miss = misses_.constFind(path);
  if (miss == misses_.constEnd()) return false;
  const Miss& name = **miss;
  if (name.folder->spelling(name.foldedName).isEmpty() &&
      (name.folder->hearsAll() || lookAt(name.path).kind == PathKind::Nothing))
    return true;
  misses_.erase(miss);
  return false;
}

void Files::rememberMiss(const QString& path, const QString& plain) {
  constexpr qsizetype enough = 10000;
  const auto folder = listings_.constFind(parentOf(plain));
  if (folder == listings_.constEnd() || misses_.size() >= enough) return;
  misses_.insert(path, std::make_shared<Miss>(Miss{native(plain), nameOf(plain).toCaseFolded(), *folder}));
}

QString Files::otherSpelling(const QString& path) {
  if (kNamesIgnoreCase) return {};
  std::shared_ptr<Listing>& folder = listings_[parentOf(path)];
  if (!folder) folder = std::make_shared<Listing>(sightOf(parentOf(path)));
  const QString spelling = folder->spelling(nameOf(path).toCaseFolded());
  return spelling.isEmpty() ? spelling : path.left(path.lastIndexOf(u'/') + 1) + spelling;
}

QString Files::resolve(const QString& path) {
  if (path.isEmpty() || isForeignPath(path)) return path;
  const QString plain = plainPath(path);
  if (kNamesIgnoreCase || kindOf(plain) != PathKind::Nothing) return plain;
  const QString other = otherSpelling(plain);
  return other.isEmpty() ? plain : other;
}

QByteArray Files::read(const QString& path) {
  refuseForeign(path);
  const QString real = resolve(path);
  QByteArray content;
  opening(real, [&] {
    QFile file(real);
    if (!file.open(QIODevice::ReadOnly)) fail(real, file.error(), false);
    content = file.readAll();
    if (file.error() != QFileDevice::NoError) throw Error(errors::kDeviceError);
  });
  return content;
}

void Files::write(const QString& path, const QByteArray& content) {
  refuseForeign(path);
  store(resolve(path), content, QIODevice::WriteOnly | QIODevice::Truncate);
}

void Files::append(const QString& path, const QByteArray& content) {
  refuseForeign(path);
  store(resolve(path), content, QIODevice::WriteOnly | QIODevice::Append);
}

void Files::remove(const QString& path) {
  refuseForeign(path);
  const QString real = resolve(path);
  if (isFolder(real)) throw Error(errors::kPathAccess);
  QFile file(real);
  if (!file.remove())
    fail(real, kindOf(real) != PathKind::Nothing ? QFileDevice::PermissionsError : file.error(), false);
}

void Files::copy(const QString& from, const QString& to) {
  refuseForeign(to);
  const QByteArray content = Files::read(from);
  // Through a temporary file: half a copy would pass for a whole one at the next look.
  const QString target = resolve(to);
  QSaveFile file(target);
  if (!file.open(QIODevice::WriteOnly)) fail(target, file.error(), true);
  if (file.write(content) != content.size() || !file.commit()) fail(target, file.error(), true);
}

void Files::rename(const QString& from, const QString& to) {
  refuseForeign(from);
  refuseForeign(to);
  const QString source = resolve(from);
  QString target = resolve(to);
  if (source == target) target = plainPath(to);  // only the case of the name changes
  moveOver(source, target);
}

void Files::replace(const QString& path, const QByteArray& content) {
  refuseForeign(path);
  const QString target = plainPath(path);
  QFile beside(nameBeside(target));
  while (!beside.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered)) {
    if (kindOf(beside.fileName()) == PathKind::Nothing) fail(target, beside.error(), true);
    beside.setFileName(nameBeside(target));  // somebody else's, who has every right to it
  }
  try {
    put(beside, target, content);
    moveOver(beside.fileName(), target);
  } catch (const Error&) {
    beside.remove();
    throw;
  }
}

void Files::makeFolder(const QString& path) {
  refuseForeign(path);
  const QString folder = resolve(path);
  if (isFolder(folder)) return;
  if (QDir().mkdir(folder)) return;
  throw Error(isFolder(parentOf(folder)) ? 75 : 76);
}

bool Files::exists(const QString& path) {
  if (isStillMissing(path)) return false;
  if (path.isEmpty() || isForeignPath(path)) return false;
  const QString plain = plainPath(path);
  const PathKind kind = kindOf(plain);
  if (kind != PathKind::Nothing) return kind == PathKind::File;
  const QString other = otherSpelling(plain);
  if (other.isEmpty()) rememberMiss(path, plain);
  return !other.isEmpty() && kindOf(other) == PathKind::File;
}

bool Files::folderExists(const QString& path) {
  return !path.isEmpty() && !isForeignPath(path) && isFolder(resolve(path));
}

bool Files::readable(const QString& path) {
  if (path.trimmed().isEmpty() || isForeignPath(path)) return false;
  const QString real = resolve(path);
  bool opens = false;
  if (unlessHeld(real, [&] { opens = QFile(real).open(QIODevice::ReadOnly); })) return opens;
  return true;  // held means open already
}

QStringList Files::list(const QString& folder, const QString& pattern) {
  if (folder.isEmpty() || isForeignPath(folder)) return {};
  const QRegularExpression expression = wildcard(pattern);
  QStringList names;
  for (const QString& name : QDir(resolve(folder)).entryList(QDir::Files, QDir::Unsorted))
    if (expression.match(name).hasMatch()) names += name;
  std::sort(names.begin(), names.end(), [](const QString& a, const QString& b) {
    const int folded = QString::compare(a, b, Qt::CaseInsensitive);
    return folded != 0 ? folded < 0 : a < b;
  });
  return names;
}

bool isForeignPath([[maybe_unused]] const QString& path) {
#ifdef Q_OS_WIN
  return path.startsWith(u'/') && !path.startsWith("//");
#else
  if (path.startsWith("\\\\")) return true;
  const bool drive = path.size() >= 2 && path[1] == u':' &&
                     ((path[0] >= u'A' && path[0] <= u'Z') || (path[0] >= u'a' && path[0] <= u'z'));
  return drive && (path.size() == 2 || path[2] == u'\\' || path[2] == u'/');
#endif
}

QString withTrailingSeparator(const QString& folder) {
  return folder.endsWith(u'/') || folder.endsWith(u'\\') ? folder : folder + QDir::separator();
}

}  // namespace qk
