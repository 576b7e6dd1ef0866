#include "sets/command_collector.h"

#include <algorithm>
#include <utility>

namespace kestrum::sets {

std::optional<Command> CommandCollector::Add(std::uint8_t byte, double now_s) {
  incomplete_.push_back(byte);
  last_byte_s_ = now_s;
  Command command{};
  if (incomplete_.size() < command.size()) return std::nullopt;
  std::copy(incomplete_.begin(), incomplete_.end(), command.begin());
  incomplete_.clear();
  return command;
}

Bytes CommandCollector::DropStale(double now_s) {
  const auto deadline_s = DeadlineS();
  if (!deadline_s || now_s < *deadline_s) return {};
  return std::exchange(incomplete_, {});
}

std::optional<double> CommandCollector::DeadlineS() const {
  if (incomplete_.empty()) return std::nullopt;
  return last_byte_s_ + kGapS;
}

}  // namespace kestrum::sets
