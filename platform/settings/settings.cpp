#include "platform/settings/settings.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QHash>
#include <QLockFile>
#include <QSaveFile>
#include <QStandardPaths>
#include <algorithm>
#include <cmath>
#include <filesystem>
#include <limits>
#include <optional>
#include <system_error>

#include "platform/runtime/error.h"
#include "platform/runtime/numbers.h"

namespace qk {

namespace {

constexpr char kEscapeMark[] = "%:";
constexpr int kLockMilliseconds = 5000;

QByteArray escaped(QByteArray text) {
  return text.replace('%', "%25").replace('\r', "%0D").replace('\n', "%0A");
}

QByteArray unescaped(QByteArray text) {
  return text.replace("%0A", "\n").replace("%0D", "\r").replace("%25", "%");
}

QByteArray storedValue(const QString& value) {
  const QByteArray text = value.toUtf8();
  const bool plain = !text.contains('\r') && !text.contains('\n') && !text.startsWith(kEscapeMark);
  return plain ? text : kEscapeMark + escaped(text);
}

QString readValue(const QByteArray& stored) {
  return QString::fromUtf8(stored.startsWith(kEscapeMark) ? unescaped(stored.mid(2)) : stored);
}

/// A key is a name, so one that would break its line is simply encoded.
QByteArray storedKey(const QString& key) {
  QByteArray text = escaped(key.toUtf8()).replace('=', "%3D");
  if (text.startsWith('[')) text.replace(0, 1, "%5B");
  return text;
}

/// Application and section never hold a bracket or a line break in practice; encoded they can't harm.
QByteArray sectionHead(const QString& application, const QString& section) {
  return "[" + escaped(application.toUtf8() + "/" + section.toUtf8()) + "]";
}

/// A key as the lines of the file spell it, back to what it is.
QString readKey(QByteArray stored) {
  return QString::fromUtf8(unescaped(stored.replace("%3D", "=").replace("%5B", "[")));
}

/// One text for the place of a value: made at every read, so it costs one allocation.
QString placeOf(const QString& application, const QString& section, const QString& key) {
  QString place;
  place.reserve(application.size() + section.size() + key.size() + 2);
  return place.append(application).append(u'/').append(section).append(QChar(0)).append(key);
}

/// What a line of the file says.
struct Line {
  QByteArray head;  ///< of a section's first line, else empty
  QByteArray key;   ///< of a value line, else empty
  QByteArray value;
};

Line parseLine(QByteArray text) {
  if (text.endsWith('\r')) text.chop(1);
  if (text.startsWith("\xEF\xBB\xBF")) text = text.mid(3);
  if (text.startsWith('[') && text.endsWith(']')) return {text, {}, {}};
  const qsizetype equals = text.indexOf('=');
  return equals > 0 ? Line{{}, text.left(equals), text.mid(equals + 1)} : Line{};
}

/// Nothing when the file is there but can't be read.
std::optional<QByteArray> readFile(const QString& path) {
  QFile file(path);
  if (file.open(QIODevice::ReadOnly)) {
    QByteArray content = file.readAll();
    return file.error() == QFileDevice::NoError ? std::optional(content) : std::nullopt;
  }
  return QFileInfo::exists(path) ? std::nullopt : std::optional(QByteArray());
}

/// What the lines of a file end in, before the LF: as its first one does.
QByteArray endOfLines(const QList<QByteArray>& lines) {
  return !lines.isEmpty() && lines.first().endsWith('\r') ? "\r" : "";
}

/// The file with one value set in it; every other line stays as it is, and new ones end as those do.
QByteArray merged(const QByteArray& content, const QByteArray& head, const QByteArray& key,
                  const QByteArray& value) {
  QList<QByteArray> lines = content.split('\n');
  const QByteArray end = endOfLines(lines);
  if (lines.last().isEmpty())
    lines.removeLast();
  else if (!lines.last().endsWith(end))
    lines.last() += end;  // the file's last line lacked its end
  const QByteArray own = key + "=" + value;
  QByteArray current;
  qsizetype behind = -1;  // where a new key of the section goes: behind its last line with something in it
  for (qsizetype i = 0; i < lines.size(); ++i) {
    const Line line = parseLine(lines[i]);
    if (!line.head.isEmpty()) current = line.head;
    if (current != head) continue;
    if (line.key == key) {
      lines[i] = own + (lines[i].endsWith('\r') ? "\r" : "");
      return lines.join('\n') + '\n';
    }
    if (!lines[i].trimmed().isEmpty()) behind = i + 1;
  }
  if (behind < 0) {
    if (!lines.isEmpty()) lines += end;
    lines += head + end;
    behind = lines.size();
  }
  lines.insert(behind, own + end);
  return lines.join('\n') + '\n';
}

/// Stands for a file that isn't there.
const std::filesystem::file_time_type kNoFile = std::filesystem::file_time_type::min();

std::filesystem::file_time_type stampOf(const std::filesystem::path& path) {
  std::error_code error;
  const auto stamp = std::filesystem::last_write_time(path, error);
  return error ? kNoFile : stamp;
}

}  // namespace

struct Settings::Content {
  std::filesystem::file_time_type stamp;
  QHash<QString, QString> values;  ///< by placeOf()
};

Settings::Settings(QString filePath)
    : filePath_(std::move(filePath)), nativePath_(filePath_.toStdU16String()) {}

void Settings::refresh() const {
  const auto stamp = stampOf(nativePath_);
  if (content_ && content_->stamp == stamp) return;
  const std::optional<QByteArray> bytes = readFile(filePath_);
  if (!bytes) {  // there, but out of reach for the moment: what was known still holds
    if (!content_) content_ = std::make_shared<Content>(Content{kNoFile, {}});
    return;
  }
  auto content = std::make_shared<Content>();
  content->stamp = stamp;
  QString section;
  for (const QByteArray& text : bytes->split('\n')) {
    const Line line = parseLine(text);
    if (!line.head.isEmpty()) section = QString::fromUtf8(unescaped(line.head.sliced(1).chopped(1)));
    if (line.key.isEmpty()) continue;
    const QString place = section + QChar(0) + readKey(line.key);
    if (!content->values.contains(place)) content->values.insert(place, readValue(line.value));
  }
  content_ = std::move(content);
}

QString Settings::value(const QString& application, const QString& section, const QString& key,
                        const QString& missing) const {
  refresh();
  const auto found = content_->values.constFind(placeOf(application, section, key));
  return found == content_->values.constEnd() ? missing : *found;
}

int Settings::number(const QString& application, const QString& section, const QString& key,
                     int missing) const {
  const std::optional<double> read = readPrefix(value(application, section, key));
  if (!read) return missing;
  const double whole = std::trunc(*read);
  const bool fits = whole >= std::numeric_limits<int>::min() && whole <= std::numeric_limits<int>::max();
  return fits ? static_cast<int>(whole) : missing;
}

bool Settings::flag(const QString& application, const QString& section, const QString& key,
                    bool missing) const {
  const std::optional<double> read = readPrefix(value(application, section, key));
  return read ? *read != 0 : missing;
}

void Settings::setValue(const QString& application, const QString& section, const QString& key,
                        const QString& value) {
  QDir().mkpath(QFileInfo(filePath_).path());
  QLockFile lock(filePath_ + ".lock");
  if (!lock.tryLock(kLockMilliseconds)) throw notStored();
  const std::optional<QByteArray> before = readFile(filePath_);
  if (!before) throw notStored();  // never write over what couldn't be read
  const QByteArray after =
      merged(*before, sectionHead(application, section), storedKey(key), storedValue(value));
  if (after == *before) return;

  // Two writes within one tick of the file system's clock must not look like one.
  const QDateTime last = QFileInfo(filePath_).lastModified();
  QDateTime stamp = QDateTime::currentDateTime();
  if (last.isValid()) stamp = std::max(stamp, last.addMSecs(1));

  QSaveFile file(filePath_);
  const bool written = file.open(QIODevice::WriteOnly) && file.write(after) == after.size() && file.flush() &&
                       file.setFileTime(stamp, QFileDevice::FileModificationTime) && file.commit();
  if (!written) throw notStored();
  content_.reset();  // a file system that counts in seconds may give the new file the old one's stamp
}

Error Settings::notStored() const {
  return Error(errors::kPathAccess,
               errorDescription(errors::kPathAccess) + ": " + QDir::toNativeSeparators(filePath_));
}

QString Settings::defaultFilePath() {
  const QString redirected = qEnvironmentVariable("QK_EINSTELLUNGEN");
  if (!redirected.isEmpty()) return redirected;
  return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation) + "/qk/einstellungen.ini";
}

}  // namespace qk
