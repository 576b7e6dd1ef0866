#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QTemporaryDir>

#include "desktop/platform_factory.h"

namespace kestrum {
namespace {

// Claims in a process of its own; exit code 0 when it is the only one.
int ClaimInChild(const QString& folder) {
  const pid_t child = ::fork();
  if (child == 0) ::_exit(ClaimSingleInstance(folder) ? 0 : 1);
  int status = 0;
  ::waitpid(child, &status, 0);
  return WEXITSTATUS(status);
}

class SingleInstanceTest : public ::testing::Test {
 protected:
  void TearDown() override { qunsetenv("XDG_RUNTIME_DIR"); }
  QTemporaryDir dir_;
};

TEST_F(SingleInstanceTest, ASecondInstanceIsRefusedWhileTheFirstRuns) {
  EXPECT_EQ(ClaimInChild(dir_.path()), 0);
  EXPECT_EQ(ClaimInChild(dir_.path()), 0) << "the first one has ended without tidying up";
  ASSERT_TRUE(ClaimSingleInstance(dir_.path()));
  EXPECT_EQ(ClaimInChild(dir_.path()), 1);
}

TEST_F(SingleInstanceTest, ItIsOneWhateverTheRuntimeFolderIs) {
  const QTemporaryDir runtime;
  ASSERT_TRUE(ClaimSingleInstance(dir_.path()));
  for (const QByteArray& place : {runtime.path().toLocal8Bit(), QByteArray("/nowhere"), QByteArray()}) {
    qputenv("XDG_RUNTIME_DIR", place);
    EXPECT_EQ(ClaimInChild(dir_.path()), 1) << place.toStdString();
  }
}

TEST_F(SingleInstanceTest, AnotherFolderHasAnInstanceOfItsOwn) {
  const QTemporaryDir other;
  ASSERT_TRUE(ClaimSingleInstance(dir_.path()));
  EXPECT_EQ(ClaimInChild(other.path()), 0);
}

TEST_F(SingleInstanceTest, AFolderThatTakesNoFilesHasOneToo) {
  // Also for the superuser: a folder stands where the file would be.
  const QString lock = QStringLiteral(".kestrum-%1.lock").arg(::getuid());
  ASSERT_TRUE(QDir(dir_.path()).mkdir(lock));
  ASSERT_TRUE(ClaimSingleInstance(dir_.path()));
  EXPECT_EQ(ClaimInChild(dir_.path()), 1);
  EXPECT_EQ(ClaimInChild(dir_.path() + QStringLiteral("/./")), 1) << "by another name";
}

}  // namespace
}  // namespace kestrum
