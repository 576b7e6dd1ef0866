#pragma once

#include <string>

namespace kestrum::rigbridge {

/// What failed and why, one sentence for the user.
struct Fault {
  std::string sentence;
};

}  // namespace kestrum::rigbridge
