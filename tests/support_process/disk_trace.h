#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <random>
#include <string>
#include <vector>

namespace kestrum::process {

// What a program has asked the disk to do below one folder, in order, as disk_shim.cpp writes it down: a line
// "<kind> <inode> ..." each, a write followed by its bytes.
struct DiskStep {
  char kind = 0;  // C created, W written, T truncated, S synced, D folder synced, R renamed, U unlinked
  std::uint64_t inode = 0;
  std::uint64_t offset = 0;  // of a write; size of a truncation
  std::string bytes;
  std::string name;
  std::string new_name;
};
std::vector<DiskStep> ReadDiskTrace(const std::filesystem::path& trace);

// A disk that has promised nothing but what was synced. What was not may be there in part: of the changes to
// the folder a first part of them, of the writes to each file too, the next one torn in the middle.
class TornDisk {
 public:
  void Do(const DiskStep& step);
  // The power goes: what is found afterwards, by name.
  std::map<std::string, std::string> Cut(std::mt19937& random) const;
  // What the program itself sees in a file now.
  std::string Seen(const std::string& name) const;

 private:
  struct File {
    std::string synced;
    std::vector<DiskStep> waiting;
  };
  using Folder = std::map<std::string, std::uint64_t>;

  static void Change(std::string& content, const DiskStep& step);
  static void Change(Folder& folder, const DiskStep& step);

  std::map<std::uint64_t, std::uint64_t> present_;  // our number of the file that has this number now
  std::uint64_t last_file_ = 0;
  std::map<std::uint64_t, File> files_;
  Folder synced_;
  std::vector<DiskStep> waiting_;
};

}  // namespace kestrum::process
