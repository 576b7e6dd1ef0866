#include "line_splitter.h"

#include <gtest/gtest.h>

namespace kestrum::posdex {
namespace {

TEST(LineSplitter, AcceptsEveryLineEnd) {
  LineSplitter splitter(100);
  EXPECT_EQ(splitter.Feed("a\r\nb\nc\rd\n\n"), (QList<QByteArray>{"a", "b", "c", "d"}));
}

TEST(LineSplitter, JoinsPieces) {
  LineSplitter splitter(100);
  EXPECT_TRUE(splitter.Feed("$GP").isEmpty());
  EXPECT_TRUE(splitter.Feed("RMC").isEmpty());
  EXPECT_EQ(splitter.Feed("\r\n$"), QList<QByteArray>{"$GPRMC"});
}

TEST(LineSplitter, KeepsNulAndHighBytes) {
  LineSplitter splitter(100);
  const QByteArray odd(
      "a\0\xFF"
      "b",
      4);
  EXPECT_EQ(splitter.Feed(odd + "\n"), QList<QByteArray>{odd});
}

TEST(LineSplitter, DropsALineThatIsTooLongWhole) {
  LineSplitter splitter(5);
  EXPECT_EQ(splitter.Feed("12345\n123456\nok\n"), (QList<QByteArray>{"12345", "ok"}));
  for (int i = 0; i < 1000; ++i) EXPECT_TRUE(splitter.Feed(QByteArray(1000, 'x')).isEmpty());
  EXPECT_EQ(splitter.Feed("\nok\n"), QList<QByteArray>{"ok"});
}

TEST(LineSplitter, ForgetsAHalfLine) {
  LineSplitter splitter(100);
  EXPECT_TRUE(splitter.Feed("old").isEmpty());
  splitter.Clear();
  EXPECT_EQ(splitter.Feed("new\n"), QList<QByteArray>{"new"});
}

}  // namespace
}  // namespace kestrum::posdex
