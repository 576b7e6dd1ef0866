#include "position/mapping_program.h"

#include <gtest/gtest.h>

#include "support/scripted_ports.h"

namespace kestrum::test {
namespace {

struct MappingProgram : ::testing::Test {
  Form1 form;
  ScriptedPorts outside;

  void Install() {
    outside.files.files["/car/Orvandi.exe"] = "program";
    outside.program.companions.insert("\\Orvandi.exe");
  }
};

TEST_F(MappingProgram, IsStartedMinimisedWithTheFocusAndChecked) {
  Install();
  ShowOrvandi(form, outside.ports());
  ASSERT_EQ(outside.program.started.size(), 1U);
  EXPECT_EQ(outside.program.started[0].first, "\\Orvandi.exe");
  EXPECT_EQ(outside.program.started[0].second, ShowStyle::kMinimisedWithFocus);
  EXPECT_TRUE(form.mnuOrvandi.checked);
  EXPECT_TRUE(outside.dialogs.messages.empty());
}

TEST_F(MappingProgram, IsStartedAgainByASecondClick) {
  Install();
  ShowOrvandi(form, outside.ports());
  ShowOrvandi(form, outside.ports());
  EXPECT_EQ(outside.program.started.size(), 2U);
  EXPECT_TRUE(form.mnuOrvandi.checked);
}

TEST_F(MappingProgram, MissingIsToldWithItsPathAndUnchecked) {
  form.mnuOrvandi.checked = true;
  ShowOrvandi(form, outside.ports());
  ASSERT_EQ(outside.dialogs.messages.size(), 1U);
  EXPECT_EQ(outside.dialogs.messages[0].title, "Kestrum Auto field strenght logger ");
  EXPECT_EQ(outside.dialogs.messages[0].text, "/car/Orvandi.exe\r\nNot found");
  EXPECT_EQ(outside.dialogs.messages[0].icon, Icon::kExclamation);
  EXPECT_FALSE(form.mnuOrvandi.checked);
  EXPECT_TRUE(outside.program.started.empty());
}

TEST_F(MappingProgram, ThatCannotBeStartedIsToldLikewise) {
  Install();
  outside.program.companions.clear();
  form.mnuOrvandi.checked = true;
  ShowOrvandi(form, outside.ports());
  EXPECT_EQ(outside.dialogs.messages.size(), 1U);
  EXPECT_FALSE(form.mnuOrvandi.checked);
}

}  // namespace
}  // namespace kestrum::test
