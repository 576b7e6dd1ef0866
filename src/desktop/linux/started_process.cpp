#include "desktop/linux/started_process.h"

#include <poll.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <csignal>

namespace kestrum {

StartedProcess::~StartedProcess() {
  if (handle_ >= 0) ::close(handle_);
}

void StartedProcess::Follow(qint64 process) {
  if (handle_ >= 0) ::close(handle_);
  // Closed when this program starts another one.
  handle_ = static_cast<int>(::syscall(SYS_pidfd_open, static_cast<pid_t>(process), 0));
}

bool StartedProcess::Runs() const {
  pollfd ended{handle_, POLLIN, 0};
  return handle_ >= 0 && ::poll(&ended, 1, 0) == 0;
}

void StartedProcess::AskToEnd() const {
  if (handle_ >= 0) ::syscall(SYS_pidfd_send_signal, handle_, SIGTERM, nullptr, 0);
}

}  // namespace kestrum
