#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "text/text_file.h"

namespace kestrum {
namespace {

std::string InfoText() {
  const auto path =
      std::filesystem::path(__FILE__).parent_path().parent_path().parent_path() / "src/ui/Kestrum.txt";
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

// The info window indents by five blanks and is 80 characters wide.
TEST(InfoText, IsPlainTextThatFitsTheWindow) {
  const auto lines = SplitLines(InfoText());
  ASSERT_GT(lines.size(), 100U);
  for (const auto& line : lines) {
    EXPECT_LE(line.size(), 76U) << line;
    for (const char c : line) EXPECT_TRUE(c >= ' ' && c <= '~') << line;
  }
}

TEST(InfoText, HelpsWithWhatGoesWrongMost) {
  const std::string text = InfoText();
  for (const char* words : {"dialout", "KESTRUM_COM1", "posdex.conf", "Comport not open !", "Nothing rx-ed!",
                            "Switch FT817 first on", "Set RX mode first", "Error saving data", "No GPS",
                            "Timer must be >=1100 mSec to average RSSI", "The eleven fields of a record"}) {
    EXPECT_THAT(text, testing::HasSubstr(words));
  }
}

}  // namespace
}  // namespace kestrum
