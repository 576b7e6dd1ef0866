#include "control.h"

#include <charconv>

namespace kestrum::drivesim {
namespace {

std::vector<std::string_view> Words(std::string_view line) {
  std::vector<std::string_view> words;
  for (line = Trimmed(line); !line.empty(); line = Trimmed(line)) {
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    words.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
  return words;
}

std::optional<ControlCommand> ParseFault(const std::vector<std::string_view>& words) {
  ControlCommand command{ControlCommand::Kind::kFault, FaultOf(words[0]), kNoEnd, 0};
  if (!command.fault || words.size() > 2) return std::nullopt;
  if (words.size() == 2) {
    const auto duration = ParseSeconds(words[1]);
    if (!duration) return std::nullopt;
    command.duration_s = *duration;
  }
  return command;
}

std::optional<ControlCommand> ParseClear(const std::vector<std::string_view>& words) {
  ControlCommand command{ControlCommand::Kind::kClear, std::nullopt, kNoEnd, 0};
  if (words.size() == 1) return command;
  command.fault = FaultOf(words[1]);
  if (!command.fault || words.size() > 2) return std::nullopt;
  return command;
}

std::optional<ControlCommand> ParseMeter(const std::vector<std::string_view>& words) {
  if (words.size() != 2) return std::nullopt;
  ControlCommand command{ControlCommand::Kind::kMeter, std::nullopt, kNoEnd, 0};
  const char* end = words[1].data() + words[1].size();
  const auto [stop, error] = std::from_chars(words[1].data(), end, command.meter);
  if (error != std::errc{} || stop != end || command.meter < 0) return std::nullopt;
  return command;
}

}  // namespace

std::optional<ControlCommand> ParseControl(std::string_view line) {
  const auto words = Words(line);
  if (words.empty()) return std::nullopt;
  if (words[0] == "clear") return ParseClear(words);
  if (words[0] == "smeter") return ParseMeter(words);
  if (words.size() == 1 && words[0] == "auto") return ControlCommand{};
  if (words.size() == 1 && words[0] == "quit") {
    return ControlCommand{ControlCommand::Kind::kQuit, std::nullopt, kNoEnd, 0};
  }
  return ParseFault(words);
}

std::vector<std::string> LineSplitter::Add(std::string_view piece) {
  constexpr std::size_t kLongestLine = 4096;
  std::vector<std::string> lines;
  for (const char c : piece) {
    if (c != '\n') rest_ += c;
    if (c == '\n' || rest_.size() >= kLongestLine) {
      lines.push_back(rest_);
      rest_.clear();
    }
  }
  return lines;
}

}  // namespace kestrum::drivesim
