#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>

#include "car.h"

// How the program begins where its surroundings are odd, and how it ends right after it has begun.
namespace kestrum::end_to_end {
namespace {

namespace fs = std::filesystem;
using process::Child;
using process::Eventually;
using std::chrono::milliseconds;

class Beginning : public ::testing::Test {
 protected:
  // What runs in a shell in the car's folder.
  process::Call Shell(const std::string& command) const {
    return {{"/bin/sh", "-c", command},
            {{"QT_QPA_PLATFORM", "offscreen"},
             {"XDG_RUNTIME_DIR", car_.File("run")},
             {"DBUS_SESSION_BUS_ADDRESS", "unix:path=" + car_.File("bus")},
             {"DISPLAY", std::nullopt},
             {"WAYLAND_DISPLAY", std::nullopt}},
            car_.File(""),
            false};
  }

  Car car_{KESTRUM_PROGRAMS};
};

TEST_F(Beginning, WithoutTheStandardDescriptorsItRunsAndEndsAsAlways) {
  Child kestrum(Shell("exec ./Kestrum <&- >&- 2>&-"));
  ASSERT_TRUE(Eventually([&] { return process::Handles(kestrum.pid(), SIGTERM); }));
  ASSERT_TRUE(car_.WaitForReader());
  const fs::path descriptors = "/proc/" + std::to_string(kestrum.pid()) + "/fd";
  for (const char* number : {"0", "1", "2"}) EXPECT_EQ(fs::read_symlink(descriptors / number), "/dev/null");
  kestrum.Signal(SIGTERM);
  EXPECT_EQ(kestrum.Wait(), 0);
  EXPECT_TRUE(car_.NothingLeft());
}

TEST_F(Beginning, ADeadDisplayIsToldInOneSentence) {
  for (const std::string program : {"Kestrum", "Posdex"}) {
    for (const std::string display : {"DISPLAY=:987 QT_QPA_PLATFORM=xcb", "QT_QPA_PLATFORM=nonsense"}) {
      Child child(Shell(display + " ./" + program + " 2>&1"));
      const std::string told = child.ReadLine();
      EXPECT_EQ(told.find(program + ": no window can be shown ("), 0U) << told;
      EXPECT_EQ(child.ReadLine(), "");
      EXPECT_EQ(child.Wait(), 1) << display;
    }
  }
}

TEST_F(Beginning, AReaderThatHasJustBeenStartedEndsWithTheLogger) {
  for (int round = 0; round < 12; ++round) {
    const auto kestrum = car_.StartKestrum({});
    ASSERT_TRUE(Eventually([&] { return !car_.Readers().empty(); }));
    process::LetRunFor(milliseconds(5 * round));
    kestrum->Signal(SIGTERM);
    EXPECT_EQ(kestrum->Wait(), 0);
    EXPECT_TRUE(car_.NothingLeft()) << "after " << 5 * round << " ms";
  }
}

TEST_F(Beginning, WithoutABusTheReaderEndsWithTheLoggerToo) {
  const auto kestrum = car_.StartKestrum({}, {{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nowhere"}});
  ASSERT_TRUE(Eventually([&] { return !car_.Readers().empty(); }));
  process::LetRunFor(milliseconds(500));
  kestrum->Signal(SIGTERM);
  EXPECT_EQ(kestrum->Wait(), 0);
  EXPECT_TRUE(car_.NothingLeft());
}

}  // namespace
}  // namespace kestrum::end_to_end
