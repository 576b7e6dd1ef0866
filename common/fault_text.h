#pragma once

#include <cerrno>
#include <string>
#include <system_error>

#include "common/fault.h"

namespace kestrum {

// "what: reason", or the reason alone.
inline std::string TextOf(const Fault& fault) {
  return fault.what.empty() ? fault.reason : fault.what + ": " + fault.reason;
}

// What the system has just refused, with its reason. To be called at once: the next call may have another.
inline Fault SystemFault(const std::string& what) {
  return {what, std::error_code(errno, std::generic_category()).message()};
}

}  // namespace kestrum
