#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <csignal>
#include <fstream>

#include "desktop/linux/posix_file_store.h"
#include "desktop/text_convert.h"

namespace kestrum {
namespace {

class FileStoreTest : public ::testing::Test {
 protected:
  std::string Path(const std::string& name) const { return dir_.path().toStdString() + "/" + name; }
  static std::string Content(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static void Put(const std::string& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
  }
  int FilesInFolder() const {
    return static_cast<int>(QDir(dir_.path()).entryList(QDir::Files | QDir::Hidden).size());
  }

  QTemporaryDir dir_;
  PosixFileStore store_{dir_.path()};
};

TEST_F(FileStoreTest, ReplacesAndReadsAllBytes) {
  std::string bytes("\r\n\0\xB0\xFF", 5);
  EXPECT_FALSE(store_.Exists(Path("a.cfg")));
  EXPECT_EQ(store_.Replace(Path("a.cfg"), bytes), std::nullopt);
  EXPECT_TRUE(store_.Exists(Path("a.cfg")));
  std::string read;
  EXPECT_EQ(store_.Read(Path("a.cfg"), read), std::nullopt);
  EXPECT_EQ(read, bytes);
  EXPECT_EQ(FilesInFolder(), 1) << "no temporary file is left";
}

TEST_F(FileStoreTest, ReplacingKeepsTheRightsOfTheOldFile) {
  Put(Path("a.cfg"), "old");
  ::chmod(Path("a.cfg").c_str(), 0640);
  EXPECT_EQ(store_.Replace(Path("a.cfg"), "new"), std::nullopt);
  struct stat about {};
  ASSERT_EQ(::stat(Path("a.cfg").c_str(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777U, 0640U);
}

TEST_F(FileStoreTest, ANewFileHasTheUsualRights) {
  const mode_t mask = ::umask(022);
  EXPECT_EQ(store_.Replace(Path("a.cfg"), "new"), std::nullopt);
  ::umask(mask);
  struct stat about {};
  ASSERT_EQ(::stat(Path("a.cfg").c_str(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777U, 0644U);
}

TEST_F(FileStoreTest, ReplacingThroughALinkReplacesItsTarget) {
  Put(Path("target"), "old");
  ASSERT_TRUE(QFile::link(QString::fromStdString(Path("target")), QString::fromStdString(Path("link"))));
  EXPECT_EQ(store_.Replace(Path("link"), "new"), std::nullopt);
  EXPECT_EQ(Content(Path("target")), "new");
  EXPECT_TRUE(QFileInfo(QString::fromStdString(Path("link"))).isSymLink());
}

TEST_F(FileStoreTest, AFaultTellsTheSystemsWordsAndLeavesWhatWasThere) {
  std::string read = "untouched";
  EXPECT_EQ(store_.Read(Path("missing"), read), "No such file or directory");
  EXPECT_EQ(store_.Read(dir_.path().toStdString(), read), "Is a directory");
  EXPECT_EQ(read, "untouched");
  EXPECT_EQ(store_.Replace(dir_.path().toStdString(), "x"), "Is a directory");
  EXPECT_EQ(store_.Append(dir_.path().toStdString(), "x"), "Is a directory");
  EXPECT_EQ(store_.Replace(Path("no/such/folder"), "x"), "No such file or directory");
  EXPECT_EQ(store_.Append(Path("no/such/folder"), "x"), "No such file or directory");
  EXPECT_EQ(store_.Append("", "x"), "No such file or directory");
}

TEST_F(FileStoreTest, AFullDeviceIsReported) {
  EXPECT_EQ(store_.Append("/dev/full", "x"), "No space left on device");
  EXPECT_EQ(store_.Replace("/dev/full", "x"), "No space left on device");
  EXPECT_EQ(store_.Append("/dev/null", "x"), std::nullopt);
}

TEST_F(FileStoreTest, AppendsAndCreates) {
  EXPECT_EQ(store_.Append(Path("log"), "one\r\n"), std::nullopt);
  EXPECT_EQ(store_.Append(Path("log"), "two\r\n"), std::nullopt);
  EXPECT_EQ(Content(Path("log")), "one\r\ntwo\r\n");
}

// A file that may not grow beyond a limit stands for a disk that fills in the middle of a block.
TEST_F(FileStoreTest, AnAppendThatFailsHalfWayLeavesOnlyWholeBlocks) {
  Put(Path("log"), "one\r\n");
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{10, 10};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    const FileFault fault = store_.Append(Path("log"), "a long second block\r\n");
    ::_exit(fault == "File too large" ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Content(Path("log")), "one\r\n");
}

TEST_F(FileStoreTest, AReplaceThatFailsKeepsTheOldFile) {
  Put(Path("a.cfg"), "the old one");
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    ::signal(SIGXFSZ, SIG_IGN);
    const rlimit limit{5, 5};
    ::setrlimit(RLIMIT_FSIZE, &limit);
    ::_exit(store_.Replace(Path("a.cfg"), "a longer new one") == "File too large" ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Content(Path("a.cfg")), "the old one");
  EXPECT_EQ(FilesInFolder(), 1);
}

// In a folder where nothing new may be made, the file itself is still written. Root may always make files, so
// that the child becomes somebody else first.
TEST_F(FileStoreTest, AReadOnlyFolderIsWrittenInPlace) {
  Put(Path("a.cfg"), "a longer old one");
  ::chmod(Path("a.cfg").c_str(), 0666);
  ::chmod(dir_.path().toStdString().c_str(), 0555);
  const pid_t child = ::fork();
  ASSERT_GE(child, 0);
  if (child == 0) {
    if (::getuid() == 0 && ::setuid(65534) != 0) ::_exit(2);
    const bool replaced = store_.Replace(Path("a.cfg"), "new") == std::nullopt;
    const bool refused = store_.Append(Path("new.log"), "x") == "Permission denied";
    ::_exit(replaced && refused ? 0 : 1);
  }
  int status = 0;
  ASSERT_EQ(::waitpid(child, &status, 0), child);
  ::chmod(dir_.path().toStdString().c_str(), 0755);
  EXPECT_EQ(status, 0);
  EXPECT_EQ(Content(Path("a.cfg")), "new");
}

TEST_F(FileStoreTest, AFolderOutsideTheCodePageIsFound) {
  const QString folder = dir_.path() + QStringLiteral(u"/\u65E5\u672C \u00E9");
  ASSERT_TRUE(QDir().mkpath(folder));
  PosixFileStore store(folder);
  const std::string shown = FromQt(folder);
  ASSERT_NE(shown.find("/?? \xE9"), std::string::npos);
  EXPECT_EQ(store.Replace(shown + "/stra\xDF"
                                  "e.cfg",
                          "x"),
            std::nullopt);
  EXPECT_TRUE(QFile::exists(folder + QStringLiteral(u"/stra\u00DFe.cfg")));
  EXPECT_TRUE(store.Exists(shown + "/stra\xDF"
                                   "e.cfg"));
}

}  // namespace
}  // namespace kestrum
