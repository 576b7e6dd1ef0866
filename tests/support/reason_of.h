#pragma once

#include <optional>
#include <string>

#include "common/fault_text.h"

namespace kestrum::test {

// The reason of a fault, for comparing; empty when there is none.
template <typename Value>
std::string ReasonOf(const Result<Value>& result) {
  return result.ok() ? std::string() : result.fault().reason;
}
inline std::string ReasonOf(const std::optional<Fault>& fault) {
  return fault ? fault->reason : std::string();
}

// What and why, as it is shown; empty when there is no fault.
template <typename Value>
std::string TextOfFault(const Result<Value>& result) {
  return result.ok() ? std::string() : TextOf(result.fault());
}
inline std::string TextOfFault(const std::optional<Fault>& fault) {
  return fault ? TextOf(*fault) : std::string();
}

}  // namespace kestrum::test
