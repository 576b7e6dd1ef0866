#pragma once

#include <optional>

#include "sets/bytes.h"

namespace kestrum::sets {

// Cuts what arrives at a CAT socket into commands of five bytes. Seconds are of any clock that does not go
// backwards.
class CommandCollector {
 public:
  // A set forgets a command that is not complete this long after its last byte.
  static constexpr double kGapS = 0.2;

  // The command that this byte completes.
  std::optional<Command> Add(std::uint8_t byte, double now_s);
  // The bytes of an incomplete command whose time is over; they are forgotten. Ask before Add.
  Bytes DropStale(double now_s);
  // When DropStale has something to do; nothing while no command is incomplete.
  std::optional<double> DeadlineS() const;
  void Clear() { incomplete_.clear(); }

 private:
  Bytes incomplete_;
  double last_byte_s_ = 0;
};

}  // namespace kestrum::sets
