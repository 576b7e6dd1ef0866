#include "instant_rig.h"

#include <array>
#include <cstdlib>
#include <string>

namespace kestrum::bench {
namespace {

constexpr std::chrono::milliseconds kLookForTheEnd{100};
constexpr std::size_t kCommandBytes = 5;
constexpr unsigned char kReadStatus = 0xE7;
constexpr unsigned char kReadMeter = 0xF7;

}  // namespace

InstantRig::InstantRig() {
  if (path().empty()) std::exit(1);
  thread_ = std::thread(&InstantRig::Serve, this);
}

InstantRig::~InstantRig() {
  end_ = true;
  thread_.join();
}

int InstantRig::WaitForMoreThan(int seen, std::chrono::milliseconds patience) {
  std::unique_lock lock(mutex_);
  answered_.wait_for(lock, patience, [this, seen] { return answers_ > seen; });
  return answers_;
}

void InstantRig::Serve() {
  std::string command;
  while (!end_) {
    command += line_.ReadSome(kCommandBytes - command.size(), kLookForTheEnd);
    if (command.size() < kCommandBytes) continue;
    Answer(static_cast<unsigned char>(command.back()));
    command.clear();
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
  line_.Write(reply);
  const std::scoped_lock lock(mutex_);
  if (answers_ == 0) first_read_ = now;
  ++answers_;
  answered_.notify_all();
}

}  // namespace kestrum::bench
