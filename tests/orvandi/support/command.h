#pragma once

#include <string>

namespace orvandi {

struct CommandResult {
  int code = -1;
  std::string output;  // standard output
};

// Runs a command of the shell and waits for its end.
CommandResult RunCommand(const std::string& command);

}  // namespace orvandi
