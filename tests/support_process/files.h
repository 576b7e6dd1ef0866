#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace kestrum::process {

// A folder that is gone at the end, on a short path as sockets need it.
class Scratch {
 public:
  Scratch();
  ~Scratch();
  Scratch(const Scratch&) = delete;
  Scratch& operator=(const Scratch&) = delete;

  const std::filesystem::path& path() const { return path_; }
  std::string File(const std::string& name) const { return (path_ / name).string(); }

 private:
  std::filesystem::path path_;
};

// A program as a user installs it: the program's folder is where the file lies.
void Install(const std::filesystem::path& from, const std::filesystem::path& to);

// The whole file; empty when it is not there.
std::string ReadFile(const std::filesystem::path& path);
void WriteFile(const std::filesystem::path& path, const std::string& bytes);

// Text between separators; the piece after the last one too, unless it is empty.
std::vector<std::string> Split(const std::string& text, const std::string& separator);

}  // namespace kestrum::process
