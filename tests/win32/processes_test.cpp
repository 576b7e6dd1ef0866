#include <gtest/gtest.h>
#include <windows.h>

#include "child.h"
#include "common/win32/wide_text.h"
#include "desktop/win32/instance_mark.h"
#include "desktop/win32/named_window.h"
#include "desktop/win32/started_process.h"
#include "support_process/waits.h"

namespace kestrum {
namespace {

using process::Eventually;
using test::Child;

TEST(NamedWindow, IsFoundByItsExactTitleAndCloses) {
  const std::wstring title = L"Posdex Version 1.19 (test)";
  EXPECT_FALSE(WindowExists(title));
  CloseWindowNamed(title);
  const Child child("window Posdex Version 1.19 (test)");
  ASSERT_TRUE(Eventually([&] { return WindowExists(title); }));
  EXPECT_FALSE(WindowExists(L"Posdex Version 1.19"));
  CloseWindowNamed(title);
  EXPECT_TRUE(Eventually([&] { return !WindowExists(title); }));
  EXPECT_TRUE(Eventually([&] { return !child.Runs(); }));
  EXPECT_EQ(child.ExitCode(), 7);
}

TEST(InstanceMark, IsHeldByOneProcessUntilItEnds) {
  const std::string folder = "C:\\Kestrum test " + std::to_string(::GetCurrentProcessId());
  const auto child_may = [](const std::string& wanted) {
    const Child child("mark " + wanted);
    EXPECT_TRUE(Eventually([&] { return !child.Runs(); }));
    return child.ExitCode() == 0;
  };
  EXPECT_TRUE(child_may(folder));
  EXPECT_TRUE(MarkInstance(win32::Wide(folder)));
  EXPECT_FALSE(child_may(folder));
  // Folders have no letter case here, and two kinds of separators.
  std::string other = folder;
  other.replace(0, 11, "c:/kESTRUM ");
  EXPECT_FALSE(child_may(other));
  EXPECT_TRUE(child_may(folder + " 2"));
}

TEST(StartProgram, RefusesWhatIsNotThere) {
  EXPECT_EQ(StartProgram(L"C:\\none\\Posdex.exe", L"C:\\", ShowStyle::kNormalWithoutFocus), std::nullopt);
}

int ExitCodeOfStarted(ShowStyle style) {
  ::SetEnvironmentVariableW(L"KESTRUM_TEST_ROLE", L"iconic");
  const auto number = StartProgram(test::ThisProgram(), L"C:\\", style);
  ::SetEnvironmentVariableW(L"KESTRUM_TEST_ROLE", nullptr);
  if (!number) return -1;
  const win32::Handle process(::OpenProcess(SYNCHRONIZE | PROCESS_QUERY_INFORMATION, FALSE, *number));
  ::WaitForSingleObject(process.get(), 20'000);
  DWORD code = 0;
  ::GetExitCodeProcess(process.get(), &code);
  return static_cast<int>(code);
}

TEST(StartProgram, HandsOnHowTheFirstWindowComesUp) {
  EXPECT_EQ(ExitCodeOfStarted(ShowStyle::kMinimisedWithFocus), 10 + SW_SHOWMINIMIZED);
  EXPECT_EQ(ExitCodeOfStarted(ShowStyle::kNormalWithoutFocus), 10 + SW_SHOWNOACTIVATE);
}

TEST(StartedProcess, WithoutAWindowIsEnded) {
  const Child other("sleep");
  StartedProcess none;
  EXPECT_FALSE(none.Runs());
  none.AskToEnd();
  STARTUPINFOW how{};
  how.cb = sizeof(how);
  PROCESS_INFORMATION started{};
  std::wstring command = L"\"" + test::ThisProgram() + L"\" --child sleep";
  ASSERT_NE(
      ::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &how, &started),
      0);
  const win32::Handle process(started.hProcess);
  const win32::Handle thread(started.hThread);
  StartedProcess followed;
  followed.Follow(started.dwProcessId);
  EXPECT_TRUE(followed.Runs());
  followed.AskToEnd();
  EXPECT_TRUE(Eventually([&] { return !followed.Runs(); }));
  EXPECT_TRUE(other.Runs());
}

TEST(StartedProcess, WithAWindowIsClosedAsByItsUser) {
  const Child child("window Kestrum test: to be closed");
  ASSERT_TRUE(Eventually([] { return WindowExists(L"Kestrum test: to be closed"); }));
  DWORD process = 0;
  ::GetWindowThreadProcessId(::FindWindowW(nullptr, L"Kestrum test: to be closed"), &process);
  StartedProcess followed;
  followed.Follow(process);
  followed.AskToEnd();
  EXPECT_TRUE(Eventually([&] { return !child.Runs(); }));
  EXPECT_EQ(child.ExitCode(), 7);
}

}  // namespace
}  // namespace kestrum
