#include "text/text_file.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace kestrum {
namespace {

using Lines = std::vector<std::string>;

TEST(SplitLines, AcceptsEveryLineEnd) {
  EXPECT_EQ(SplitLines("a\r\nb\r\n"), (Lines{"a", "b"}));
  EXPECT_EQ(SplitLines("a\nb\n"), (Lines{"a", "b"}));
  EXPECT_EQ(SplitLines("a\rb\r"), (Lines{"a", "b"}));
  EXPECT_EQ(SplitLines("a\r\nb\nc\rd"), (Lines{"a", "b", "c", "d"}));
}

TEST(SplitLines, KeepsEmptyLines) {
  EXPECT_EQ(SplitLines("\r\n"), (Lines{""}));
  EXPECT_EQ(SplitLines("\r\n\r\n"), (Lines{"", ""}));
  EXPECT_EQ(SplitLines("a\n\nb"), (Lines{"a", "", "b"}));
  EXPECT_EQ(SplitLines("a\r\rb"), (Lines{"a", "", "b"}));
  EXPECT_EQ(SplitLines("a\n\rb"), (Lines{"a", "", "b"}));
  EXPECT_EQ(SplitLines("a\r\r\nb"), (Lines{"a", "", "b"}));
}

TEST(SplitLines, TakesALastLineWithoutEnd) {
  EXPECT_EQ(SplitLines("a\r\nb"), (Lines{"a", "b"}));
  EXPECT_EQ(SplitLines("a"), (Lines{"a"}));
  EXPECT_EQ(SplitLines("\na"), (Lines{"", "a"}));
}

TEST(SplitLines, AnEmptyFileHasNone) {
  EXPECT_TRUE(SplitLines("").empty());
}

TEST(SplitLines, KeepsBlanksAndEveryByteOfTheCodePage) {
  std::string line = "  ";
  for (int byte = 0; byte < 256; ++byte) {
    if (byte != '\r' && byte != '\n') line += static_cast<char>(byte);
  }
  line += "  ";
  EXPECT_EQ(SplitLines(line + "\r\n"), (Lines{line}));
  EXPECT_EQ(SplitLines(JoinLines({line, line})), (Lines{line, line}));
}

TEST(JoinLines, EndsEachLineWithCrLf) {
  EXPECT_EQ(JoinLines({"a", "", " b "}), "a\r\n\r\n b \r\n");
  EXPECT_EQ(JoinLines({}), "");
  EXPECT_EQ(JoinLines({""}), "\r\n");
}

TEST(JoinLines, KeepsALineInOneLine) {
  EXPECT_EQ(JoinLines({"a\r\nb", "\nc\r"}), "a  b\r\n c \r\n");
}

TEST(JoinLines, ComesBackThroughSplitLines) {
  for (const Lines& lines : {Lines{}, Lines{""}, Lines{"", ""}, Lines{"a", "", "b"}, Lines{" 1, 2 ", "x"}})
    EXPECT_EQ(SplitLines(JoinLines(lines)), lines);
}

}  // namespace
}  // namespace kestrum
