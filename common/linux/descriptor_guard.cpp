#include "common/descriptor_guard.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>

namespace kestrum {

void OpenStandardDescriptors() {
  for (int number = STDIN_FILENO; number <= STDERR_FILENO; ++number) {
    // The lowest free number is the one that was found closed. Inherited on purpose: a companion needs it
    // too.
    if (::fcntl(number, F_GETFD) < 0 && errno == EBADF) ::open("/dev/null", O_RDWR);
  }
}

}  // namespace kestrum
