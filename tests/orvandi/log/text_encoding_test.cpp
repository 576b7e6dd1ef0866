#include "log/text_encoding.h"

#include <gtest/gtest.h>

namespace orvandi {
namespace {

TEST(TextEncoding, ReadsTheCodePageAndLeavesUtf8) {
  struct Row {
    const char* bytes;
    const char* text;
  };
  for (const Row& row :
       {Row{"plain", "plain"}, Row{"223\xB0", "223\xC2\xB0"}, Row{"\x80", "\xE2\x82\xAC"},
        Row{"\x9F", "\xC5\xB8"}, Row{"\x81", "\xC2\x81"}, Row{"\xC3\xBC", "\xC3\xBC"},
        Row{"\xC3", "\xC3\x83"}, Row{"\xC3\xBC\xB0", "\xC3\x83\xC2\xBC\xC2\xB0"},
        Row{"\xE2\x82\xAC", "\xE2\x82\xAC"}, Row{"\xF0\x9F\x93\xA1", "\xF0\x9F\x93\xA1"},
        Row{"\xED\xA0\x80", "\xC3\xAD\xC2\xA0\xE2\x82\xAC"}, Row{"\xC0\x80", "\xC3\x80\xE2\x82\xAC"},
        Row{"a\tb\x01"
            "c",
            "a b c"}}) {
    EXPECT_EQ(ToUtf8(row.bytes), row.text);
  }
}

TEST(TextEncoding, CutsBetweenCharacters) {
  EXPECT_EQ(CutUtf8("abc", 5), "abc");
  EXPECT_EQ(CutUtf8("a\xC3\xBC", 2), "a");
  EXPECT_EQ(CutUtf8("a\xC3\xBC", 3), "a\xC3\xBC");
  EXPECT_EQ(CutUtf8("\xE2\x82\xAC", 2), "");
}

TEST(TextEncoding, Trims) {
  EXPECT_EQ(Trimmed(" \ta b\r\n"), "a b");
  EXPECT_EQ(Trimmed("  "), "");
}

}  // namespace
}  // namespace orvandi
