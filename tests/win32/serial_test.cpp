#include <gtest/gtest.h>
#include <windows.h>

#include <functional>
#include <string>

#include "common/win32/serial_line.h"
#include "desktop/win32/win32_serial_port.h"
#include "support/reason_of.h"
#include "support_process/waits.h"

// A simulated FT840 is on COM1; there is no COM29. The file "vanish" in the working folder asks whoever runs
// this to take the set away, "return" to bring it back, "stall" to let it take no bytes any more until there
// is "resume"; "stalled" is the answer to the former.
namespace kestrum {
namespace {

using process::Eventually;
using test::ReasonOf;

constexpr int kMissing = 29;
constexpr std::chrono::milliseconds kReplyWindow{50};
const std::string kReadMeter("\0\0\0\0\xF7", 5);

std::string Exchange(Win32SerialPort& port, const std::string& command) {
  port.Write(command);
  process::LetRunFor(kReplyWindow);
  return port.ReadAll();
}

TEST(Win32SerialPort, NoPortIsNoPort) {
  Win32SerialPort port;
  EXPECT_FALSE(port.Open());
  EXPECT_EQ(ReasonOf(port.Trouble()), "No serial port is chosen.");
  EXPECT_EQ(port.DeviceName(0), "");
  EXPECT_EQ(port.DeviceName(3), "COM3");
  port.Write("x");
  EXPECT_EQ(port.ReadAll(), "");
  EXPECT_FALSE(port.WaitsForDevice());
}

TEST(Win32SerialPort, APortThatIsMissingIsWaitedFor) {
  Win32SerialPort port;
  port.SetPort(kMissing);
  port.SetSettings(" 9600,N,8,2");
  EXPECT_FALSE(port.Open());
  EXPECT_EQ(ReasonOf(port.Trouble()), "COM29 is not there. Is the cable plugged in?");
  EXPECT_TRUE(port.WaitsForDevice());
  EXPECT_FALSE(port.DeviceIsBack());
  port.SetPort(1);
  EXPECT_FALSE(port.WaitsForDevice());
}

TEST(Win32SerialPort, SettingsThatAreNoneOpenNothing) {
  for (const char* settings : {"", "9600", "9600,N,8", " 0,N,8,2", "9600,N,3,2", "fast,N,8,2"}) {
    Win32SerialPort port;
    port.SetPort(1);
    port.SetSettings(settings);
    EXPECT_FALSE(port.Open()) << settings;
    EXPECT_NE(ReasonOf(port.Trouble()).find("COM1 cannot be opened with"), std::string::npos)
        << ReasonOf(port.Trouble());
    EXPECT_FALSE(port.WaitsForDevice()) << settings;
  }
}

TEST(Win32SerialPort, TheSetAnswersWithFiveBytesWithin50Milliseconds) {
  Win32SerialPort port;
  port.SetPort(1);
  port.SetSettings(" 9600,N,8,2");
  ASSERT_TRUE(port.Open()) << ReasonOf(port.Trouble());
  EXPECT_EQ(port.Trouble(), std::nullopt);
  int whole = 0;
  for (int i = 0; i < 50; ++i) {
    const std::string reply = Exchange(port, kReadMeter);
    if (reply.size() == 5 && reply[4] == '\xF7') ++whole;
  }
  EXPECT_GE(whole, 48);
  EXPECT_EQ(port.ReadAll(), "");
}

void Leave(const char* name) {
  const HANDLE file = ::CreateFileA(name, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, 0, nullptr);
  ::CloseHandle(file);
}

// While the set takes nothing the system's own buffers fill up, and then bytes wait after the call has
// returned.
TEST(SerialLine, WritingDoesNotWaitForALineThatTakesNoBytes) {
  constexpr std::size_t kMostWaiting = 4096;
  win32::SerialLine line;
  ASSERT_EQ(line.Open(L"COM1", {.two_stop_bits = true}), 0U);
  Leave("stall");
  ASSERT_TRUE(Eventually([] { return ::GetFileAttributesA("stalled") != INVALID_FILE_ATTRIBUTES; }));
  std::string commands;
  while (commands.size() < 1000) commands += kReadMeter;
  bool waited = false;
  bool dropped = false;
  // What waits is dropped as too much by the next call, or as too late.
  EXPECT_TRUE(Eventually([&] {
    EXPECT_EQ(line.Write(commands), 0U);
    EXPECT_LE(line.Waiting(), kMostWaiting);
    dropped = waited && line.Waiting() <= commands.size();
    waited = waited || line.Waiting() > commands.size();
    return dropped;
  }));
  EXPECT_TRUE(waited);
  std::string bytes;
  EXPECT_EQ(line.Read(bytes), 0U);
  Leave("resume");
  EXPECT_TRUE(Eventually([&] {
    bytes.clear();
    EXPECT_EQ(line.Write(kReadMeter), 0U);
    process::LetRunFor(kReplyWindow);
    EXPECT_EQ(line.Read(bytes), 0U);
    return bytes.size() == 5 && line.Waiting() == 0;
  }));
}

TEST(Win32SerialPort, CommandsInARowGoOutInTheirOrderAndAreAllAnswered) {
  Win32SerialPort port;
  port.SetPort(1);
  port.SetSettings(" 9600,N,8,2");
  ASSERT_TRUE(port.Open());
  for (int i = 0; i < 20; ++i) port.Write(kReadMeter);
  std::string replies;
  EXPECT_TRUE(Eventually([&] {
    replies += port.ReadAll();
    return replies.size() >= 100;
  }));
  ASSERT_EQ(replies.size(), 100U);
  for (std::size_t i = 4; i < replies.size(); i += 5) EXPECT_EQ(replies[i], '\xF7') << i;
}

TEST(Win32SerialPort, ASetThatIsTakenAwayIsMissedAndComesBack) {
  Win32SerialPort port;
  port.SetPort(1);
  port.SetSettings(" 9600,N,8,2");
  ASSERT_TRUE(port.Open());
  ASSERT_EQ(Exchange(port, kReadMeter).size(), 5U);
  Leave("vanish");
  EXPECT_TRUE(Eventually([&] {
    Exchange(port, kReadMeter);
    return !port.IsOpen();
  }));
  EXPECT_EQ(ReasonOf(port.Trouble()).find("COM1 was lost: "), 0U) << ReasonOf(port.Trouble());
  EXPECT_TRUE(port.WaitsForDevice());
  EXPECT_EQ(port.ReadAll(), "");
  Leave("return");
  EXPECT_TRUE(Eventually([&] { return port.DeviceIsBack() && port.Open(); })) << ReasonOf(port.Trouble());
  EXPECT_TRUE(Eventually([&] { return Exchange(port, kReadMeter).size() == 5; }));
}

}  // namespace
}  // namespace kestrum
