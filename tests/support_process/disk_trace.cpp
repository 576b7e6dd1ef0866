#include "support_process/disk_trace.h"

#include <sstream>

#include "support_process/files.h"

namespace kestrum::process {

std::vector<DiskStep> ReadDiskTrace(const std::filesystem::path& trace) {
  std::istringstream account(ReadFile(trace));
  std::vector<DiskStep> steps;
  std::string line;
  while (std::getline(account, line)) {
    std::istringstream words(line);
    DiskStep step;
    words >> step.kind;
    if (step.kind == 'R') {
      const std::string names = line.substr(2);
      step.name = names.substr(0, names.find('|'));
      step.new_name = names.substr(names.find('|') + 1);
    } else if (step.kind == 'U') {
      step.name = line.substr(2);
    } else if (step.kind != 'D') {
      words >> step.inode;
    }
    if (step.kind == 'C') words >> step.name;
    if (step.kind == 'T' || step.kind == 'W') words >> step.offset;
    if (step.kind == 'W') {
      std::size_t length = 0;
      words >> length;
      step.bytes.resize(length);
      account.read(step.bytes.data(), static_cast<std::streamsize>(length));
    }
    steps.push_back(std::move(step));
  }
  return steps;
}

void TornDisk::Change(std::string& content, const DiskStep& step) {
  if (step.kind == 'T') {
    content.resize(step.offset);
    return;
  }
  if (content.size() < step.offset + step.bytes.size()) content.resize(step.offset + step.bytes.size());
  content.replace(step.offset, step.bytes.size(), step.bytes);
}

void TornDisk::Change(Folder& folder, const DiskStep& step) {
  if (step.kind == 'C') folder[step.name] = step.inode;
  if (step.kind == 'U') folder.erase(step.name);
  if (step.kind == 'R') {
    folder[step.new_name] = folder[step.name];
    folder.erase(step.name);
  }
}

void TornDisk::Do(const DiskStep& told) {
  DiskStep step = told;
  // The system gives the number of a file that has gone out again; it must not come back with new content.
  if (step.kind == 'C') present_[told.inode] = ++last_file_;
  step.inode = present_[told.inode];
  switch (step.kind) {
    case 'C':
    case 'R':
    case 'U':
      waiting_.push_back(step);
      return;
    case 'D':
      for (const DiskStep& change : waiting_) Change(synced_, change);
      waiting_.clear();
      return;
    case 'S':
      for (const DiskStep& change : files_[step.inode].waiting) Change(files_[step.inode].synced, change);
      files_[step.inode].waiting.clear();
      return;
    default:
      files_[step.inode].waiting.push_back(step);
  }
}

std::map<std::string, std::string> TornDisk::Cut(std::mt19937& random) const {
  const auto up_to = [&random](std::size_t most) {
    return std::uniform_int_distribution<std::size_t>(0, most)(random);
  };
  Folder folder = synced_;
  const std::size_t changes = up_to(waiting_.size());
  for (std::size_t i = 0; i < changes; ++i) Change(folder, waiting_[i]);
  std::map<std::string, std::string> found;
  for (const auto& [name, inode] : folder) {
    const auto file = files_.find(inode);
    if (file == files_.end()) continue;
    std::string content = file->second.synced;
    const auto& waiting = file->second.waiting;
    const std::size_t whole = up_to(waiting.size());
    for (std::size_t i = 0; i < whole; ++i) Change(content, waiting[i]);
    if (whole < waiting.size() && waiting[whole].kind == 'W') {
      DiskStep torn = waiting[whole];
      torn.bytes.resize(up_to(torn.bytes.size()));
      if (!torn.bytes.empty()) Change(content, torn);
    }
    found[name] = content;
  }
  return found;
}

std::string TornDisk::Seen(const std::string& name) const {
  Folder folder = synced_;
  for (const DiskStep& change : waiting_) Change(folder, change);
  const auto entry = folder.find(name);
  const auto file = entry == folder.end() ? files_.end() : files_.find(entry->second);
  if (file == files_.end()) return {};
  std::string content = file->second.synced;
  for (const DiskStep& change : file->second.waiting) Change(content, change);
  return content;
}

}  // namespace kestrum::process
