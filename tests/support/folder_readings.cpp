#include "tests/support/folder_readings.h"

#include <sys/inotify.h>
#include <unistd.h>

#include <QFile>
#include <stdexcept>

namespace qk::test {

FolderReadings::FolderReadings(const QString& folder) : queue_(::inotify_init1(IN_NONBLOCK | IN_CLOEXEC)) {
  if (::inotify_add_watch(queue_, QFile::encodeName(folder).constData(), IN_OPEN | IN_ONLYDIR) < 0)
    throw std::runtime_error("no reports of " + folder.toStdString());
}

FolderReadings::~FolderReadings() {
  ::close(queue_);
}

int FolderReadings::count() {
  alignas(inotify_event) char events[4096];
  int readings = 0;
  for (ssize_t size; (size = ::read(queue_, events, sizeof events)) > 0;) {
    for (const char* at = events; at < events + size;) {
      const auto& event = *reinterpret_cast<const inotify_event*>(at);
      // The folder itself has no name here; an opened file of it has.
      if (event.mask & IN_Q_OVERFLOW) throw std::runtime_error("too much happened to be counted");
      if ((event.mask & IN_ISDIR) && event.len == 0) ++readings;
      at += sizeof event + event.len;
    }
  }
  return readings;
}

}  // namespace qk::test
