#include "sets/pty_port.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <grp.h>
#include <gtest/gtest.h>
#include <sys/ioctl.h>
#include <sys/wait.h>
#include <termios.h>

#include <array>
#include <cerrno>
#include <fstream>

#include "support/reason_of.h"
#include "support_process/files.h"

namespace kestrum::sets {
namespace {

namespace fs = std::filesystem;
using testing::ElementsAre;

class PtyPortTest : public testing::Test {
 protected:
  fs::path Link() const { return scratch_.path() / "com1"; }
  UniqueFd OpenClient() const {
    return UniqueFd(::open(Link().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC));
  }

  process::Scratch scratch_;
};

Bytes ReadAll(const UniqueFd& fd) {
  std::array<std::uint8_t, 8192> bytes{};
  const ssize_t count = ::read(fd.Get(), bytes.data(), bytes.size());
  return count > 0 ? Bytes(bytes.begin(), bytes.begin() + count) : Bytes{};
}

TEST_F(PtyPortTest, CarriesAllBytesUnchangedBothWays) {
  PtyPort port(Link());
  ASSERT_TRUE(port.Open());
  const UniqueFd client = OpenClient();
  ASSERT_TRUE(client);
  Bytes all(256);
  for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i);
  port.Write(all);
  EXPECT_EQ(ReadAll(client), all);
  ASSERT_EQ(::write(client.Get(), all.data(), all.size()), 256);
  EXPECT_EQ(port.Read(), all);
  EXPECT_TRUE(port.Read().empty());
}

TEST_F(PtyPortTest, ReplacesAStaleLinkAndRemovesItsOwn) {
  fs::create_symlink("/dev/pts/99999", Link());
  PtyPort port(Link());
  ASSERT_TRUE(port.Open());
  EXPECT_EQ(fs::read_symlink(Link()), port.Device());
  EXPECT_EQ(std::distance(fs::directory_iterator(scratch_.path()), fs::directory_iterator()), 1);
  port.Close();
  EXPECT_FALSE(fs::is_symlink(Link()));
}

TEST_F(PtyPortTest, LeavesAFileThatIsNoLink) {
  std::ofstream(Link()) << "mine";
  PtyPort port(Link());
  EXPECT_EQ(test::TextOfFault(port.Open()),
            Link().string() + ": there is a file of that name that is no link");
  EXPECT_FALSE(port.IsOpen());
  EXPECT_TRUE(fs::is_regular_file(Link()));
}

TEST_F(PtyPortTest, LeavesALinkToARealPort) {
  fs::create_symlink("/dev/serial/by-id/usb-port0", Link());
  PtyPort port(Link());
  EXPECT_EQ(test::TextOfFault(port.Open()),
            Link().string() + ": there is a link of that name to /dev/serial/by-id/usb-port0");
  EXPECT_FALSE(port.IsOpen());
  EXPECT_EQ(fs::read_symlink(Link()), "/dev/serial/by-id/usb-port0");
}

TEST_F(PtyPortTest, LeavesALinkThatIsSomebodyElsesByNow) {
  PtyPort first(Link());
  PtyPort second(Link());
  ASSERT_TRUE(first.Open());
  ASSERT_TRUE(second.Open());
  first.Close();
  EXPECT_EQ(fs::read_symlink(Link()), second.Device());
}

TEST_F(PtyPortTest, FolderThatIsMissing) {
  PtyPort port(scratch_.path() / "no" / "com1");
  EXPECT_FALSE(port.Open());
  EXPECT_FALSE(port.IsOpen());
}

TEST_F(PtyPortTest, KnowsWhetherAClientIsThere) {
  PtyPort port(Link());
  EXPECT_FALSE(port.ClientPresent());
  ASSERT_TRUE(port.Open());
  EXPECT_FALSE(port.ClientPresent());
  for (int i = 0; i < 20; ++i) {
    const UniqueFd client = OpenClient();
    ASSERT_TRUE(client);
    EXPECT_TRUE(port.ClientPresent());
  }
  EXPECT_FALSE(port.ClientPresent());
}

TEST_F(PtyPortTest, WhatNobodyHearsIsLost) {
  PtyPort port(Link());
  ASSERT_TRUE(port.Open());
  port.Write(Bytes{1, 2, 3});
  const UniqueFd client = OpenClient();
  port.Write(Bytes{4});
  EXPECT_THAT(ReadAll(client), ElementsAre(4));
}

TEST_F(PtyPortTest, NextClientDoesNotSeeWhatTheLastOneLeft) {
  PtyPort port(Link());
  ASSERT_TRUE(port.Open());
  {
    const UniqueFd client = OpenClient();
    port.Write(Bytes{1, 2, 3});
    EXPECT_FALSE(port.TidyAfterClient().value());  // still there: nothing happens
  }
  EXPECT_FALSE(port.TidyAfterClient().value());
  const UniqueFd client = OpenClient();
  port.Write(Bytes{4});
  EXPECT_THAT(ReadAll(client), ElementsAre(4));
}

TEST_F(PtyPortTest, TidyingUndoesTheClientsSettings) {
  PtyPort port(Link());
  ASSERT_TRUE(port.Open());
  {
    const UniqueFd client = OpenClient();
    termios settings{};
    ASSERT_EQ(::tcgetattr(client.Get(), &settings), 0);
    settings.c_lflag |= ICANON | ECHO;
    ASSERT_EQ(::tcsetattr(client.Get(), TCSANOW, &settings), 0);
    port.Write(Bytes{1});
  }
  EXPECT_FALSE(port.TidyAfterClient().value());
  const UniqueFd client = OpenClient();
  termios settings{};
  ASSERT_EQ(::tcgetattr(client.Get(), &settings), 0);
  EXPECT_EQ(settings.c_lflag & (ICANON | ECHO), 0U);
}

TEST_F(PtyPortTest, ClosingHangsUpTheClient) {
  PtyPort port(Link());
  ASSERT_TRUE(port.Open());
  const UniqueFd client = OpenClient();
  port.Close();
  const std::uint8_t byte = 0;
  EXPECT_EQ(::write(client.Get(), &byte, 1), -1);
  EXPECT_EQ(errno, EIO);
}

TEST_F(PtyPortTest, AFullClientDoesNotBlockUs) {
  PtyPort port(Link());
  ASSERT_TRUE(port.Open());
  const UniqueFd client = OpenClient();
  for (int i = 0; i < 100; ++i) port.Write(Bytes(1000, 7));
  EXPECT_FALSE(ReadAll(client).empty());
}

// As an ordinary user, who may not open a terminal that was reserved. Returns what went wrong, 0 for
// nothing.
int ReservedTerminal(const fs::path& link) {
  PtyPort port(link);
  if (!port.Open()) return 1;
  {
    const UniqueFd client(::open(link.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
    if (!client || ::ioctl(client.Get(), TIOCEXCL) != 0) return 2;
    port.Write(Bytes{1});
  }
  if (UniqueFd(::open(link.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC))) return 3;
  const Result<bool> replaced = port.TidyAfterClient();
  if (!replaced || !replaced.value()) return 4;
  const UniqueFd client(::open(link.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC));
  return client ? 0 : 5;
}

TEST_F(PtyPortTest, AClientThatWasKilledDoesNotKeepThePort) {
  const fs::path link = scratch_.path() / "own" / "com1";
  fs::create_directory(link.parent_path());
  fs::permissions(scratch_.path(), fs::perms::all);
  fs::permissions(link.parent_path(), fs::perms::all);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    constexpr unsigned kNobody = 65534;
    const bool ordinary =
        ::getuid() != 0 || (::setgroups(0, nullptr) == 0 && ::setgid(kNobody) == 0 && ::setuid(kNobody) == 0);
    ::_exit(ordinary ? ReservedTerminal(link) : 100);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ASSERT_TRUE(WIFEXITED(status));
  EXPECT_EQ(WEXITSTATUS(status), 0);
}

}  // namespace
}  // namespace kestrum::sets
