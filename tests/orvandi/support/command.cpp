#include "support/command.h"

#include <sys/wait.h>

#include <array>
#include <cstdio>

namespace orvandi {

CommandResult RunCommand(const std::string& command) {
  CommandResult result;
  std::FILE* pipe = popen(command.c_str(), "r");
  if (pipe == nullptr) return result;
  std::array<char, 4096> piece{};
  while (const std::size_t count = std::fread(piece.data(), 1, piece.size(), pipe)) {
    result.output.append(piece.data(), count);
  }
  const int status = pclose(pipe);
  result.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return result;
}

}  // namespace orvandi
