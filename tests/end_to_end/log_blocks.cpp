#include "log_blocks.h"

#include <gtest/gtest.h>

#include <regex>

#include "support_process/files.h"

namespace kestrum::end_to_end {
namespace {

constexpr std::size_t kFields = 11;

bool IsDashes(const std::string& line) {
  return !line.empty() && line.find_first_not_of('-') == std::string::npos;
}

// The degree sign is the single byte B0.
const std::regex& RecordPattern() {
  static const std::regex pattern(
      R"(\d\d:\d\d:\d\d, (GPS Ok|No GPS), (\d{4}\.\d{4}[NS]|\?{4}\.\?{3}), (\d{5}\.\d{4}[EW]|\?{5}\.\?{3}), )"
      R"((\d*\.?\d+|\?{3}) km, (\d+\.?\d*|\?{3}) m, (\d{3}|\?{3}))"
      "\xB0"
      R"(, \d+, S[^,]*, (\d*\.?\d+|\?{3}) uV, (\d*\.?\d+|\?{3}) mV/m)");
  return pattern;
}

Record ParseRecord(const std::string& line) {
  Record fields = process::Split(line, ", ");
  EXPECT_TRUE(std::regex_match(line, RecordPattern())) << line;
  EXPECT_EQ(fields.size(), kFields) << line;
  fields.resize(kFields);
  return fields;
}

}  // namespace

std::vector<Block> ParseLog(const std::string& bytes) {
  EXPECT_TRUE(bytes.empty() || bytes.ends_with("\r\n"));
  const std::vector<std::string> lines = process::Split(bytes, "\r\n");
  std::vector<Block> blocks;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    EXPECT_EQ(lines[i].find_first_of("\r\n"), std::string::npos) << lines[i];
    if (!IsDashes(lines[i])) {
      if (blocks.empty()) {
        ADD_FAILURE() << "a record without a header: " << lines[i];
        return {};
      }
      blocks.back().records.push_back(ParseRecord(lines[i]));
      continue;
    }
    if (i + 2 >= lines.size()) {
      ADD_FAILURE() << "half a header: " << lines[i];
      return blocks;
    }
    EXPECT_EQ(lines[i].size(), lines[i + 1].size());
    EXPECT_EQ(lines[i], lines[i + 2]);
    blocks.push_back({lines[i + 1], {}});
    i += 2;
  }
  for (const Block& block : blocks) EXPECT_LE(block.records.size(), 100U);
  return blocks;
}

std::vector<Record> AllRecords(const std::vector<Block>& blocks) {
  std::vector<Record> all;
  for (const Block& block : blocks) all.insert(all.end(), block.records.begin(), block.records.end());
  return all;
}

}  // namespace kestrum::end_to_end
