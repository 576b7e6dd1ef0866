#include "desktop/text_convert.h"

#include <gtest/gtest.h>

namespace kestrum {
namespace {

TEST(TextConvert, TheDegreeSignIsTheByteB0) {
  EXPECT_EQ(ToQt("032\xB0"), QStringLiteral(u"032\u00B0"));
  EXPECT_EQ(FromQt(QStringLiteral(u"032\u00B0")), "032\xB0");
}

TEST(TextConvert, EveryByteSurvivesThereAndBack) {
  for (int byte = 0; byte < 256; ++byte) {
    const std::string text(1, static_cast<char>(byte));
    EXPECT_EQ(FromQt(ToQt(text)), text) << byte;
  }
}

TEST(TextConvert, TheUpperControlsAreTheCharactersOfTheCodePage) {
  EXPECT_EQ(ToQt("\x80"), QStringLiteral(u"\u20AC"));
  EXPECT_EQ(ToQt("\x96"), QStringLiteral(u"\u2013"));
  EXPECT_EQ(ToQt("\x9F"), QStringLiteral(u"\u0178"));
}

TEST(TextConvert, ACharacterOutsideTheCodePageBecomesOneQuestionMark) {
  EXPECT_EQ(FromQt(QStringLiteral(u"\u65E5x")), "?x");
  EXPECT_EQ(FromQt(QStringLiteral(u"\U0001F4FBx")), "?x");
}

TEST(TextConvert, LineEndsBecomeLineBreaksForShowing) {
  EXPECT_EQ(ToQtLines("a\r\nb"), QStringLiteral("a\nb"));
  EXPECT_EQ(ToQt("a\r\nb"), QStringLiteral("a\r\nb"));
}

}  // namespace
}  // namespace kestrum
