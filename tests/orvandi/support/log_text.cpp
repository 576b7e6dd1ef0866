#include "support/log_text.h"

#include <cstdlib>
#include <fstream>
#include <stdexcept>

#include "log/cleaning.h"
#include "log/log_reader.h"

namespace orvandi {

std::string Text(const std::vector<std::string>& lines, std::string_view end) {
  std::string text;
  for (const std::string& line : lines) {
    text += line;
    text += end;
  }
  return text;
}

std::vector<std::string> HeaderLines(const std::string& header) {
  const std::string dashes(header.size(), '-');
  return {dashes, header, dashes};
}

std::string Line(const RecordText& record) {
  return record.time + ", " + record.fix + ", " + record.latitude + ", " + record.longitude +
         ", 5.66 km, 4.3 m, 223\xB0, " + record.raw + ", " + record.s + ", " + record.microvolt + " uV, " +
         record.field + " mV/m";
}

std::vector<std::string> BlockLines(const std::string& header, const std::vector<std::string>& times) {
  std::vector<std::string> lines = HeaderLines(header);
  int hundredths = 1000;
  for (const std::string& time : times) {
    RecordText record;
    record.time = time;
    record.latitude = "5159." + std::to_string(hundredths++) + "N";
    lines.push_back(Line(record));
  }
  return lines;
}

Log Read(const std::string& bytes) {
  Log log;
  LogReader reader(log);
  reader.Feed(bytes);
  reader.Finish();
  log.pending_first = log.records.size();
  MarkRuns(log, 0);
  return log;
}

Folder::Folder() {
  std::string name = (std::filesystem::temp_directory_path() / "orvandi-test-XXXXXX").string();
  if (mkdtemp(name.data()) == nullptr) throw std::runtime_error("no temporary folder");
  path_ = name;
}

Folder::~Folder() {
  std::error_code ignored;
  std::filesystem::remove_all(path_, ignored);
}

std::string Folder::Write(const std::string& name, std::string_view bytes) const {
  std::ofstream file(path_ / name, std::ios::binary | std::ios::trunc);
  file << bytes;
  if (!file.flush()) throw std::runtime_error("cannot write " + name);
  return Path(name);
}

void Folder::Append(const std::string& name, std::string_view bytes) const {
  std::ofstream file(path_ / name, std::ios::binary | std::ios::app);
  file << bytes;
  if (!file.flush()) throw std::runtime_error("cannot append to " + name);
}

void Folder::Remove(const std::string& name) const {
  std::filesystem::remove(path_ / name);
}

}  // namespace orvandi
