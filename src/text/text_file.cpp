#include "text/text_file.h"

#include "text/text.h"

namespace kestrum {

std::vector<std::string> SplitLines(std::string_view bytes) {
  std::vector<std::string> lines;
  while (!bytes.empty()) {
    const auto end = bytes.find_first_of("\r\n");
    lines.emplace_back(bytes.substr(0, end));
    if (end == std::string_view::npos) break;
    const bool pair = bytes.substr(end, 2) == "\r\n";
    bytes.remove_prefix(end + (pair ? 2 : 1));
  }
  return lines;
}

std::string_view WithoutUtf8Mark(std::string_view bytes) {
  constexpr std::string_view kMark = "\xEF\xBB\xBF";
  if (bytes.starts_with(kMark)) bytes.remove_prefix(kMark.size());
  return bytes;
}

std::string JoinLines(const std::vector<std::string>& lines) {
  std::string bytes;
  for (const auto& line : lines) bytes += Replace(Replace(line, '\r', ' '), '\n', ' ') + "\r\n";
  return bytes;
}

}  // namespace kestrum
