#include "support_process/files.h"

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <system_error>

namespace kestrum::process {

Scratch::Scratch() {
  std::string pattern = (std::filesystem::temp_directory_path() / "kestrum_XXXXXX").string();
  path_ = ::mkdtemp(pattern.data());
  // The programs see their folder without links, and gpsd gives up being root before it opens its receiver.
  path_ = std::filesystem::canonical(path_);
  std::filesystem::permissions(path_, std::filesystem::perms(0755));
}

Scratch::~Scratch() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

void Install(const std::filesystem::path& from, const std::filesystem::path& to) {
  std::error_code error;
  std::filesystem::create_hard_link(from, to, error);
  if (error) std::filesystem::copy_file(from, to);
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path, std::ios::binary).rdbuf();
  return content.str();
}

void WriteFile(const std::filesystem::path& path, const std::string& bytes) {
  std::ofstream(path, std::ios::binary | std::ios::trunc) << bytes;
}

std::vector<std::string> Split(const std::string& text, const std::string& separator) {
  std::vector<std::string> pieces;
  std::size_t from = 0;
  while (from < text.size()) {
    const std::size_t end = std::min(text.find(separator, from), text.size());
    pieces.push_back(text.substr(from, end - from));
    from = end + separator.size();
  }
  return pieces;
}

}  // namespace kestrum::process
