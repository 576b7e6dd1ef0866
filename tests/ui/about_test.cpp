#include "ui/about.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "support/scripted_ports.h"
#include "text/text_file.h"

namespace kestrum {
namespace {

TEST(About, TellsProgramExeNameAndLogFile) {
  test::ScriptedPorts ports;
  ShowAbout(ports.ports());
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  const auto& box = ports.dialogs.messages[0];
  EXPECT_EQ(box.title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(box.icon, Icon::kInformation);
  EXPECT_THAT(
      SplitLines(box.text),
      testing::ElementsAre("Auto RF Field strenght logger", "Made by the Kestrum developers",
                           "Exe name = Kestrum", "Contact: see the README of the project",
                           "Can display in Orvandi.exe through:", "\\RSSI-GPS.log", "Not all working 100%"));
}

TEST(ShortCuts, AreThreeKeysBetweenDashes) {
  test::ScriptedPorts ports;
  ShowShortCuts(ports.ports());
  ASSERT_EQ(ports.dialogs.messages.size(), 1U);
  const auto& box = ports.dialogs.messages[0];
  EXPECT_EQ(box.title, "Kestrum Auto field strenght logger V1.02");
  EXPECT_EQ(box.icon, Icon::kInformation);
  EXPECT_EQ(box.text,
            "ShortCuts\r\n---------------\r\nF1= Help\r\nF3 = Logging\r\nF5 = Minimal Display\r\n"
            "---------------");
}

}  // namespace
}  // namespace kestrum
