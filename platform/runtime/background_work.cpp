#include "platform/runtime/background_work.h"

#include <QtGlobal>

#if defined(Q_OS_LINUX)
#include <sys/resource.h>
#include <sys/syscall.h>
#include <unistd.h>
#elif defined(Q_OS_WIN)
#include <windows.h>
#endif

namespace qk {

void stepBackThisThread() {
#if defined(Q_OS_LINUX)
  constexpr int kModest = 10;
  ::setpriority(PRIO_PROCESS, static_cast<id_t>(::syscall(SYS_gettid)), kModest);
#elif defined(Q_OS_WIN)
  SetThreadPriority(GetCurrentThread(), THREAD_PRIORITY_BELOW_NORMAL);
#endif
}

}  // namespace qk
