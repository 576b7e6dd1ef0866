#include "instant_rig.h"

#include <fcntl.h>
#include <poll.h>
#include <termios.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace kestrum::bench {
namespace {

constexpr int kLookForTheEndMs = 100;
constexpr std::size_t kCommandBytes = 5;
constexpr unsigned char kReadStatus = 0xE7;
constexpr unsigned char kReadMeter = 0xF7;

}  // namespace

InstantRig::InstantRig() : line_(::posix_openpt(O_RDWR | O_NOCTTY | O_CLOEXEC)) {
  std::array<char, 128> name{};
  if (line_ < 0 || ::grantpt(line_) != 0 || ::unlockpt(line_) != 0 ||
      ::ptsname_r(line_, name.data(), name.size()) != 0) {
    std::perror("pseudo-terminal");
    std::exit(1);
  }
  path_ = name.data();
  termios mode{};
  ::tcgetattr(line_, &mode);
  ::cfmakeraw(&mode);
  ::tcsetattr(line_, TCSANOW, &mode);
  thread_ = std::thread(&InstantRig::Serve, this);
}

InstantRig::~InstantRig() {
  end_ = true;
  thread_.join();
  ::close(line_);
}

int InstantRig::WaitForMoreThan(int seen, std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  answered_.wait_for(lock, patience, [this, seen] { return answers_ > seen; });
  return answers_;
}

void InstantRig::Serve() {
  std::array<unsigned char, kCommandBytes> command{};
  std::size_t filled = 0;
  while (!end_) {
    pollfd ready{line_, POLLIN, 0};
    ::poll(&ready, 1, kLookForTheEndMs);
    if ((ready.revents & POLLIN) == 0) {
      // Hung up: whoever had the line open has gone.
      if (ready.revents != 0) std::this_thread::sleep_for(std::chrono::milliseconds(1));
      continue;
    }
    const ssize_t got = ::read(line_, command.data() + filled, command.size() - filled);
    if (got <= 0) continue;
    filled += static_cast<std::size_t>(got);
    if (filled < command.size()) continue;
    filled = 0;
    Answer(command.back());
  }
}

void InstantRig::Answer(unsigned char opcode) {
  if (opcode != kReadStatus && opcode != kReadMeter) return;
  const auto now = std::chrono::steady_clock::now();
  // The signal swings, as it does in a car: no two readings in a row are the same, so each is painted.
  constexpr std::array<char, 8> kSwing = {7, 8, 9, 10, 9, 8, 7, 6};  // of the FT817's 0 to 15
  const char level = kSwing.at(static_cast<std::size_t>(answers_) % kSwing.size());
  std::string reply(1, level);
  if (opcode == kReadMeter) reply = std::string(4, static_cast<char>(level * 12)) + "\xF7";
  if (::write(line_, reply.data(), reply.size()) < 0) return;
  const std::scoped_lock lock(mutex_);
  if (answers_ == 0) first_read_ = now;
  ++answers_;
  answered_.notify_all();
}

}  // namespace kestrum::bench
