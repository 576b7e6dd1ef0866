#include "instant_rig.h"

#include <cstdlib>
#include <string_view>

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
  const std::string_view reply = opcode == kReadStatus ? "\x07" : "\x64\x64\x64\x64\xF7";
  line_.Write(reply);
  const std::scoped_lock lock(mutex_);
  if (answers_ == 0) first_read_ = now;
  ++answers_;
  answered_.notify_all();
}

}  // namespace kestrum::bench
