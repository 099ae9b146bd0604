// A folder of the file system, and on Linux what the kernel reports of it.
#include <QDateTime>
#include <QDir>
#include <QFile>

#include "platform/runtime/folder_names.h"

#ifdef Q_OS_UNIX
#include <dirent.h>

#include <cerrno>
#endif
#if defined(Q_OS_LINUX)
#include <linux/magic.h>
#include <sys/inotify.h>
#include <sys/vfs.h>
#include <unistd.h>

#include <climits>
#endif

namespace qk {

namespace {

#if defined(Q_OS_LINUX)

/// The kernel reports what this machine does. On a share others change things, too.
bool isDiskOfThisMachine(const NativePath& folder) {
  constexpr quint32 kZfs = 0x2FC12FC1;
  struct statfs disk;
  if (::statfs(folder.constData(), &disk) != 0) return false;
  switch (static_cast<quint32>(disk.f_type)) {
    case EXT4_SUPER_MAGIC:
    case XFS_SUPER_MAGIC:
    case BTRFS_SUPER_MAGIC:
    case F2FS_SUPER_MAGIC:
    case kZfs:
    case OVERLAYFS_SUPER_MAGIC:
    case TMPFS_MAGIC:
      return true;
    default:
      return false;
  }
}

class KernelNews : public FolderNews {
 public:
  static std::unique_ptr<FolderNews> of(const NativePath& folder) {
    auto news = std::make_unique<KernelNews>(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC));
    if (::inotify_add_watch(news->queue_, folder.constData(), kAll) < 0) return {};
    return news;
  }
  /// Owns the descriptor, which may be -1.
  explicit KernelNews(int queue) : queue_(queue) {}
  ~KernelNews() override {
    if (queue_ >= 0) ::close(queue_);
  }
  KernelNews(const KernelNews&) = delete;
  KernelNews& operator=(const KernelNews&) = delete;

  bool hear(const std::function<void(const QString&, bool)>& use) override {
    alignas(inotify_event) char events[kRoom];
    for (;;) {
      const ssize_t size = ::read(queue_, events, sizeof events);
      if (size < 0 && errno == EINTR) continue;
      if (size < 0) return errno == EAGAIN;
      const char* const end = events + size;
      for (const char* at = events; at < end;) {
        const auto& event = *reinterpret_cast<const inotify_event*>(at);
        if (event.mask & (kEnds | IN_IGNORED | IN_Q_OVERFLOW | IN_UNMOUNT)) return false;
        use(QFile::decodeName(event.name), (event.mask & kComes) != 0);
        at += sizeof event + event.len;
      }
      if (size <= kRoom - kLargestEvent) return true;  // one more would have found room
    }
  }

 private:
  static constexpr quint32 kComes = IN_CREATE | IN_MOVED_TO;
  static constexpr quint32 kEnds = IN_DELETE_SELF | IN_MOVE_SELF;
  static constexpr quint32 kAll = kComes | kEnds | IN_DELETE | IN_MOVED_FROM | IN_ONLYDIR;
  static constexpr ssize_t kLargestEvent = sizeof(inotify_event) + NAME_MAX + 1;
  static constexpr ssize_t kRoom = 16 * kLargestEvent;

  int queue_;
};

#endif

/// The toolkit's own lists end silently where reading fails, as for want of a descriptor.
std::optional<QStringList> namesIn(const NativePath& folder) {
#ifdef Q_OS_UNIX
  const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(folder.constData()), ::closedir);
  if (!open) return {};
  QStringList names;
  for (;;) {
    errno = 0;
    const dirent* entry = ::readdir(open.get());
    if (!entry && errno != 0) return {};
    if (!entry) return names;
    const QString name = QFile::decodeName(entry->d_name);
    if (name != "." && name != "..") names.append(name);
  }
#else
  return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                                QDir::Unsorted);
#endif
}

class DiskFolder : public FolderSight {
 public:
  explicit DiskFolder(const QString& folder) : folder_(folder), native_(native(folder)) {}

  PathLook look() override { return lookAt(native_); }
  std::optional<QStringList> names() override { return namesIn(native_); }
  bool leadToOneFile(const QString& name, const QString& other) override {
    const auto file = identityOf(folder_ + u'/' + name);
    return file && file == identityOf(folder_ + u'/' + other);
  }
  std::unique_ptr<FolderNews> follow() override {
#if defined(Q_OS_LINUX)
    if (isDiskOfThisMachine(native_)) return KernelNews::of(native_);
#endif
    return {};
  }
  qint64 now() override {
    return QDateTime::currentMSecsSinceEpoch() * 1000000;
  }

 private:
  QString folder_;
  NativePath native_;
};

}  // namespace

std::unique_ptr<FolderSight> sightOf(const QString& folder) {
  return std::make_unique<DiskFolder>(folder);
}

}  // namespace qk
