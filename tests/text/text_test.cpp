#include "text/text.h"

#include <gtest/gtest.h>

#include <string>

namespace kestrum {
namespace {

TEST(Trim, TakesOffBlanksOnly) {
  EXPECT_EQ(Trim("  a b  "), "a b");
  EXPECT_EQ(Trim(""), "");
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim("\t a \t"), "\t a \t");
  EXPECT_EQ(Trim(" a\r\n"), "a\r\n");
}

TEST(TrimLeft, KeepsTheEnd) {
  EXPECT_EQ(TrimLeft("  a b  "), "a b  ");
  EXPECT_EQ(TrimLeft("   "), "");
  EXPECT_EQ(TrimLeft("x"), "x");
}

TEST(Upper, KnowsTheLettersOfTheCodePage) {
  EXPECT_EQ(Upper("abc xyz 019"), "ABC XYZ 019");
  EXPECT_EQ(Upper("\xE0\xE9\xF6\xFC\xFE"), "\xC0\xC9\xD6\xDC\xDE");
  EXPECT_EQ(Upper("\x9A\x9C\x9E\xFF"), "\x8A\x8C\x8E\x9F");
}

TEST(Upper, LeavesEverythingElse) {
  // Division sign, sharp s, degree sign, and the ASCII neighbours of the letters.
  EXPECT_EQ(Upper("\xF7\xDF\xB0"), "\xF7\xDF\xB0");
  EXPECT_EQ(Upper("`{@["), "`{@[");
  EXPECT_EQ(Upper("\x9B\x9D\x80"), "\x9B\x9D\x80");
  EXPECT_EQ(Upper(Upper("\xE4 x")), Upper("\xE4 x"));
}

TEST(SameText, IgnoresLetterCaseOnly) {
  EXPECT_TRUE(SameText("&Off", "&OFF"));
  EXPECT_TRUE(SameText("", ""));
  EXPECT_TRUE(SameText("K\xF6ln", "k\xD6LN"));
  EXPECT_FALSE(SameText("&Off", "&Of"));
  EXPECT_FALSE(SameText("&Off", "&Off "));
  EXPECT_FALSE(SameText("a", "b"));
}

TEST(ContainsText, FindsAPartInAnyCase) {
  EXPECT_TRUE(ContainsText("3630 kHz", " KHZ"));
  EXPECT_TRUE(ContainsText("anything", ""));
  EXPECT_TRUE(ContainsText("", ""));
  EXPECT_FALSE(ContainsText("3630kHz", " kHz"));
  EXPECT_FALSE(ContainsText("", "a"));
  EXPECT_FALSE(ContainsText("ab", "abc"));
}

TEST(Replace, ExchangesEveryOccurrence) {
  EXPECT_EQ(Replace("1,2,3", ',', '.'), "1.2.3");
  EXPECT_EQ(Replace("4.8", '.', 'k'), "4k8");
  EXPECT_EQ(Replace("abc", ',', '.'), "abc");
  EXPECT_EQ(Replace("", ',', '.'), "");
}

TEST(Degree, IsOneByteOfTheCodePage) {
  EXPECT_EQ(kDegree, "\xB0");
  EXPECT_EQ(kDegree.size(), 1U);
}

}  // namespace
}  // namespace kestrum
