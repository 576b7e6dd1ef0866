#pragma once

#include <optional>
#include <string>

#include "common/fault.h"

namespace kestrum::test {

// The reason of a fault, for comparing; empty when there is none.
template <typename Value>
std::string ReasonOf(const Result<Value>& result) {
  return result.ok() ? std::string() : result.fault().reason;
}
inline std::string ReasonOf(const std::optional<Fault>& fault) {
  return fault ? fault->reason : std::string();
}

}  // namespace kestrum::test
