#include "line_watch.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/stat.h>

#include <array>
#include <cerrno>
#include <filesystem>

namespace kestrum::rigbridge {
namespace {

namespace fs = std::filesystem;

int DescriptorOf(const std::string& device) {
  struct stat wanted {};
  if (::stat(device.c_str(), &wanted) != 0) return -1;
  std::error_code error;
  for (const auto& entry : fs::directory_iterator("/proc/self/fd", error)) {
    struct stat status {};
    const bool same = ::stat(entry.path().c_str(), &status) == 0 && S_ISCHR(status.st_mode) &&
                      status.st_rdev == wanted.st_rdev;
    if (same) return std::stoi(entry.path().filename().string());
  }
  return -1;
}

}  // namespace

LineWatch::LineWatch(const std::string& device)
    : watched_(DescriptorOf(device)),
      unreadable_(::open("/dev/null", O_WRONLY | O_CLOEXEC)),
      stop_(::eventfd(0, EFD_CLOEXEC)) {
  if (watched_ >= 0 && unreadable_ && stop_) thread_ = std::thread([this] { Run(); });
}

LineWatch::~LineWatch() {
  if (!thread_.joinable()) return;
  ::eventfd_write(stop_.Get(), 1);
  thread_.join();
}

void LineWatch::Run() const {
  // Without wanted events only a hang-up and errors are reported.
  std::array<pollfd, 2> states = {{{stop_.Get(), POLLIN, 0}, {watched_, 0, 0}}};
  while (::poll(states.data(), states.size(), -1) < 0 && errno == EINTR) {
  }
  if (states[0].revents == 0 && states[1].revents != 0) ::dup3(unreadable_.Get(), watched_, O_CLOEXEC);
}

}  // namespace kestrum::rigbridge
