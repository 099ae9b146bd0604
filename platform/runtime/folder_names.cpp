#include "platform/runtime/folder_names.h"

#include <algorithm>
#include <utility>

namespace qk {

namespace {

constexpr qint64 kSecond = 1000000000;

/// A folder's time stamp counts ticks; a younger one may still hide a change within the same tick.
constexpr qint64 kSettled = kSecond;

/// The path may lead to another folder from now on, without a report: a share that was mounted there.
constexpr qint64 kLookAgain = kSecond;

/// Reading takes one part of so many of the time, and is put off no longer than this, should one have hung.
constexpr qint64 kShareOfTime = 50;
constexpr qint64 kLongestPause = 60 * kSecond;

/// The name in another case, itself if it has none; empty where what is another case depends on the language.
QString otherCaseOf(const QString& name) {
  const bool plain = std::all_of(name.begin(), name.end(), [](QChar c) { return c.unicode() < 128; });
  if (!plain) return {};
  const QString upper = name.toUpper();
  return upper == name ? name.toLower() : upper;
}

bool ignoresCase(FolderSight& sight, const QStringList& names) {
  for (const QString& name : names) {
    const QString other = otherCaseOf(name);
    if (!other.isEmpty() && !names.contains(other)) return sight.leadToOneFile(name, other);
  }
  return false;
}

}  // namespace

FolderNames::FolderNames(std::unique_ptr<FolderSight> sight) : sight_(std::move(sight)) {}

QString FolderNames::spelling(const QString& foldedName) {
  if (!isCurrent()) read();
  QString found;
  for (auto name = names_.constFind(foldedName); name != names_.cend() && name.key() == foldedName; ++name)
    found = std::max(found, name.value());
  return found;
}

bool FolderNames::isCurrent() {
  switch (way_) {
    case Way::Unread:
      return false;
    case Way::Stamp:
      return stampStands();
    case Way::News:
      return isSameFolder() && hearNews();
    case Way::IgnoresCase:
      return isSameFolder();
    case Way::Pace:
      return !isTimeToRead() || stampStands();
  }
  Q_UNREACHABLE();
}

bool FolderNames::isSameFolder() {
  const qint64 now = sight_->now();
  if (now >= lookedAt_ && now < lookedAt_ + kLookAgain) return true;
  lookedAt_ = now;
  return sight_->look().identity == look_.identity;
}

bool FolderNames::stampStands() {
  return settled_ && sight_->look() == look_;
}

bool FolderNames::isTimeToRead() {
  const qint64 now = sight_->now();
  return now < readAt_ || now >= readAgainAt_;
}

bool FolderNames::hearNews() {
  return news_->hear([this](const QString& name, bool came) {
    const QString folded = name.toCaseFolded();
    names_.remove(folded, name);
    if (came) names_.insert(folded, name);
  });
}

void FolderNames::read() {
  names_.clear();
  news_.reset();
  look_ = sight_->look();
  if (look_.kind != PathKind::Folder) return forget();
  // Most folders are looked into once and stand still; only one that changes is followed.
  const bool changes = way_ != Way::Unread;
  if (changes) news_ = sight_->follow();
  way_ = !changes ? Way::Stamp : news_ ? Way::News : Way::Pace;
  readNames();
}

void FolderNames::forget() {
  way_ = Way::Unread;
  news_.reset();
}

void FolderNames::readNames() {
  readAt_ = lookedAt_ = sight_->now();
  settled_ = look_.stamp + kSettled < readAt_;
  const std::optional<QStringList> names = sight_->names();
  if (!names) return forget();
  const qint64 now = sight_->now();
  readAgainAt_ = now + std::min((now - readAt_) * kShareOfTime, kLongestPause);
  if (ignoresCase(*sight_, *names)) {
    way_ = Way::IgnoresCase;
    news_.reset();
    return;
  }
  for (const QString& name : *names) names_.insert(name.toCaseFolded(), name);
}

}  // namespace qk
