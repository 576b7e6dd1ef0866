#include "common/win32/wide_text.h"

#include <gtest/gtest.h>

namespace kestrum::win32 {
namespace {

TEST(WideText, EveryByteSurvivesTheWayThereAndBack) {
  std::string all;
  for (int byte = 0; byte < 256; ++byte) all.push_back(static_cast<char>(byte));
  EXPECT_EQ(Narrow(Wide(all)), all);
}

TEST(WideText, KnowsTheCharactersOfTheCodePage) {
  EXPECT_EQ(Wide("5\xB0 \x80"), L"5\u00B0 \u20AC");
  EXPECT_EQ(Narrow(L"\u0416 5\u00B0"), "? 5\xB0");
}

TEST(WideText, AReasonIsOneLineWithoutAnEnd) {
  const std::string reason = Reason(2);  // a file that is not there
  EXPECT_FALSE(reason.empty());
  EXPECT_EQ(reason.find_first_of("\r\n"), std::string::npos);
  EXPECT_NE(reason.back(), '.');
  EXPECT_NE(reason.back(), ' ');
}

TEST(WideText, AnErrorWithoutTextHasItsNumber) {
  EXPECT_EQ(Reason(0x2FFFFFFF), "error 805306367");
}

}  // namespace
}  // namespace kestrum::win32
