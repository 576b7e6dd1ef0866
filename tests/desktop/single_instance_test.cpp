#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QTemporaryDir>

#include "desktop/platform_factory.h"

namespace kestrum {
namespace {

// Claims in a process of its own; exit code 0 when it is the only one.
int ClaimInChild() {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(ClaimSingleInstance() ? 0 : 1);
  int status = 0;
  ::waitpid(child, &status, 0);
  return WEXITSTATUS(status);
}

class SingleInstanceTest : public ::testing::Test {
 protected:
  void SetUp() override { qputenv("XDG_RUNTIME_DIR", dir_.path().toLocal8Bit()); }
  void TearDown() override { qunsetenv("XDG_RUNTIME_DIR"); }
  QTemporaryDir dir_;
};

TEST_F(SingleInstanceTest, ASecondInstanceIsRefusedWhileTheFirstRuns) {
  EXPECT_EQ(ClaimInChild(), 0);
  EXPECT_EQ(ClaimInChild(), 0) << "the first one has ended without tidying up";
  ASSERT_TRUE(ClaimSingleInstance());
  EXPECT_EQ(ClaimInChild(), 1);
}

TEST_F(SingleInstanceTest, AnotherUsersInstanceIsNotInTheWay) {
  QTemporaryDir other;
  ASSERT_TRUE(ClaimSingleInstance());
  qputenv("XDG_RUNTIME_DIR", other.path().toLocal8Bit());
  EXPECT_EQ(ClaimInChild(), 0);
}

}  // namespace
}  // namespace kestrum
