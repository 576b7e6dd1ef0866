#pragma once

#include <string>
#include <vector>

namespace kestrum::end_to_end {

using Record = std::vector<std::string>;  // its eleven fields

enum Field { kTime, kValidity, kLatitude, kLongitude, kDistance, kHeight, kBearing, kRaw, kSText, kUv, kMvm };

struct Block {
  std::string header;
  std::vector<Record> records;
};

// The blocks of a log file. Everything that does not belong into one is a failure of the running test: a line
// that does not end in CR LF, dashes of another length than the header, a record that is none.
std::vector<Block> ParseLog(const std::string& bytes);

std::vector<Record> AllRecords(const std::vector<Block>& blocks);

}  // namespace kestrum::end_to_end
