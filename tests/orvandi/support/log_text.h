#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "log/log.h"

namespace orvandi {

// Lines, each followed by `end`.
std::string Text(const std::vector<std::string>& lines, std::string_view end = "\r\n");

// The three lines of a header.
std::vector<std::string> HeaderLines(const std::string& header);

// A record at a time of day, everything else as in a real drive unless told otherwise.
struct RecordText {
  std::string time = "01:55:34";
  std::string fix = "GPS Ok";
  std::string latitude = "5159.2411N";
  std::string longitude = "00535.3546E";
  std::string raw = "121";
  std::string s = "S8+";
  std::string microvolt = "44.2";
  std::string field = "18.3";
};
std::string Line(const RecordText& record);

// A block of records at these times, a ten-thousandth of a minute further north each.
std::vector<std::string> BlockLines(const std::string& header, const std::vector<std::string>& times);

// Everything read at once.
Log Read(const std::string& bytes);

// A folder of its own that goes with the object.
class Folder {
 public:
  Folder();
  ~Folder();
  Folder(const Folder&) = delete;
  Folder& operator=(const Folder&) = delete;

  std::string Path(const std::string& name) const { return (path_ / name).string(); }
  // Returns the path.
  std::string Write(const std::string& name, std::string_view bytes) const;
  void Append(const std::string& name, std::string_view bytes) const;
  void Remove(const std::string& name) const;

 private:
  std::filesystem::path path_;
};

}  // namespace orvandi
