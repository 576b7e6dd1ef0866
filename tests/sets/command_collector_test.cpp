#include "sets/command_collector.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace kestrum::sets {
namespace {

using testing::ElementsAre;

TEST(CommandCollector, FiveBytesAreACommandInPiecesOrTogether) {
  CommandCollector collector;
  for (const std::uint8_t byte : Bytes{1, 2, 3, 4}) EXPECT_FALSE(collector.Add(byte, 1).has_value());
  EXPECT_EQ(collector.Add(5, 1.19), (Command{1, 2, 3, 4, 5}));
  EXPECT_FALSE(collector.DeadlineS().has_value());
  EXPECT_FALSE(collector.Add(6, 1.19).has_value());
}

TEST(CommandCollector, WhatStaysIncompleteIsForgotten) {
  CommandCollector collector;
  EXPECT_THAT(collector.DropStale(100), ElementsAre());
  collector.Add(1, 2);
  collector.Add(2, 2.1);
  EXPECT_DOUBLE_EQ(*collector.DeadlineS(), 2.3);
  EXPECT_THAT(collector.DropStale(2.29), ElementsAre());
  EXPECT_THAT(collector.DropStale(2.31), ElementsAre(1, 2));
  EXPECT_THAT(collector.DropStale(2.31), ElementsAre());
  EXPECT_FALSE(collector.DeadlineS().has_value());
}

TEST(CommandCollector, ClearForgetsAtOnce) {
  CommandCollector collector;
  for (const std::uint8_t byte : Bytes{1, 2, 3, 4}) collector.Add(byte, 1);
  collector.Clear();
  EXPECT_FALSE(collector.Add(5, 1).has_value());
}

}  // namespace
}  // namespace kestrum::sets
