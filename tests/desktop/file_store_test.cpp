#include <fcntl.h>
#include <gtest/gtest.h>
#include <libintl.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <array>
#include <atomic>
#include <clocale>
#include <csignal>
#include <fstream>
#include <system_error>
#include <thread>

#include "desktop/linux/posix_file.h"
#include "desktop/linux/posix_file_store.h"
#include "desktop/text_convert.h"
#include "support/reason_of.h"

namespace kestrum {
namespace {

using test::ReasonOf;

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
  PosixFileStore files_{dir_.path()};
  FileStore& store_ = files_;
};

TEST_F(FileStoreTest, ReplacesAndReadsAllBytes) {
  std::string bytes("\r\n\0\xB0\xFF", 5);
  EXPECT_FALSE(store_.Exists(Path("a.cfg")));
  EXPECT_EQ(ReasonOf(store_.Replace(Path("a.cfg"), bytes)), "");
  EXPECT_TRUE(store_.Exists(Path("a.cfg")));
  const auto read = store_.Read(Path("a.cfg"));
  ASSERT_TRUE(read) << ReasonOf(read);
  EXPECT_EQ(read.value(), bytes);
  EXPECT_EQ(FilesInFolder(), 1) << "no temporary file is left";
}

TEST_F(FileStoreTest, ReplacingKeepsTheRightsOfTheOldFile) {
  Put(Path("a.cfg"), "old");
  ::chmod(Path("a.cfg").c_str(), 0640);
  EXPECT_EQ(ReasonOf(store_.Replace(Path("a.cfg"), "new")), "");
  struct stat about {};
  ASSERT_EQ(::stat(Path("a.cfg").c_str(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777U, 0640U);
}

TEST_F(FileStoreTest, ANewFileHasTheUsualRights) {
  const mode_t mask = ::umask(022);
  EXPECT_EQ(ReasonOf(store_.Replace(Path("a.cfg"), "new")), "");
  ::umask(mask);
  struct stat about {};
  ASSERT_EQ(::stat(Path("a.cfg").c_str(), &about), 0);
  EXPECT_EQ(about.st_mode & 0777U, 0644U);
}

TEST_F(FileStoreTest, ReplacingThroughALinkReplacesItsTarget) {
  Put(Path("target"), "old");
  ASSERT_TRUE(QFile::link(QString::fromStdString(Path("target")), QString::fromStdString(Path("link"))));
  EXPECT_EQ(ReasonOf(store_.Replace(Path("link"), "new")), "");
  EXPECT_EQ(Content(Path("target")), "new");
  EXPECT_TRUE(QFileInfo(QString::fromStdString(Path("link"))).isSymLink());
}

TEST_F(FileStoreTest, AFaultTellsTheSystemsWordsAndLeavesWhatWasThere) {
  EXPECT_EQ(store_.Read(Path("missing")).fault(), (Fault{Path("missing"), "No such file or directory"}));
  EXPECT_EQ(ReasonOf(store_.Read(dir_.path().toStdString())), "Is a directory");
  EXPECT_EQ(ReasonOf(store_.Replace(dir_.path().toStdString(), "x")), "Is a directory");
  EXPECT_EQ(ReasonOf(store_.Append(dir_.path().toStdString(), "x")), "Is a directory");
  EXPECT_EQ(ReasonOf(store_.Replace(Path("no/such/folder"), "x")), "No such file or directory");
  EXPECT_EQ(ReasonOf(store_.Append(Path("no/such/folder"), "x")), "No such file or directory");
  EXPECT_EQ(ReasonOf(store_.Append("", "x")), "No such file or directory");
}

TEST_F(FileStoreTest, AFullDeviceIsReported) {
  EXPECT_EQ(ReasonOf(store_.Append("/dev/full", "x")), "No space left on device");
  EXPECT_EQ(ReasonOf(store_.Replace("/dev/full", "x")), "No space left on device");
  EXPECT_EQ(ReasonOf(store_.Append("/dev/null", "x")), "");
}

// What is no file at all stands in its place: every answer comes at once, also without anybody at the other
// end.
TEST_F(FileStoreTest, WhatIsNoFileIsRefusedAtOnce) {
  const std::string pipe = Path("pipe");
  ASSERT_EQ(::mkfifo(pipe.c_str(), 0666), 0);
  const std::string socket_path = Path("socket");
  const int socket = ::socket(AF_UNIX, SOCK_STREAM, 0);
  sockaddr_un address{};
  address.sun_family = AF_UNIX;
  socket_path.copy(address.sun_path, sizeof(address.sun_path) - 1);
  ASSERT_EQ(::bind(socket, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
  ASSERT_EQ(::symlink("loop", Path("loop").c_str()), 0);
  struct Row {
    std::string path;
    const char* reason;
  };
  const Row rows[] = {{pipe, "Not a regular file"},
                      {socket_path, "Not a regular file"},
                      {Path("loop"), "Too many levels of symbolic links"},
                      {dir_.path().toStdString(), "Is a directory"}};
  for (const Row& row : rows) {
    EXPECT_TRUE(store_.Exists(row.path)) << row.path;
    EXPECT_EQ(store_.Size(row.path), std::nullopt) << row.path;
    EXPECT_EQ(ReasonOf(store_.Read(row.path)), row.reason) << row.path;
    EXPECT_EQ(ReasonOf(store_.ReadFrom(row.path, 1, 10)), row.reason) << row.path;
    EXPECT_EQ(ReasonOf(store_.Replace(row.path, "x")), row.reason) << row.path;
    EXPECT_EQ(ReasonOf(store_.Append(row.path, "x")), row.reason) << row.path;
  }
  EXPECT_EQ(ReasonOf(store_.Read("/dev/zero")), "Not a regular file");
  EXPECT_EQ(ReasonOf(store_.Read("/dev/tty")), "Not a regular file");
  ::close(socket);
}

TEST_F(FileStoreTest, APipeWithAFullBufferIsRefusedToo) {
  ASSERT_EQ(::mkfifo(Path("pipe").c_str(), 0666), 0);
  const int reader = ::open(Path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
  ASSERT_GE(reader, 0);
  EXPECT_EQ(ReasonOf(store_.Append(Path("pipe"), std::string(200000, 'x'))), "Not a regular file");
  EXPECT_EQ(ReasonOf(store_.Replace(Path("pipe"), "x")), "Not a regular file");
  std::array<char, 4> got{};
  EXPECT_EQ(::read(reader, got.data(), got.size()), 0) << "nothing has been written";
  ::close(reader);
}

TEST_F(FileStoreTest, ALinkThatLeadsNowhereIsNothingYet) {
  ASSERT_EQ(::symlink("target", Path("link").c_str()), 0);
  EXPECT_FALSE(store_.Exists(Path("link")));
  EXPECT_EQ(ReasonOf(store_.Replace(Path("link"), "new")), "");
  EXPECT_EQ(Content(Path("target")), "new");
  EXPECT_EQ(ReasonOf(store_.Append(Path("link"), "er")), "");
  EXPECT_EQ(Content(Path("target")), "newer");
}

TEST_F(FileStoreTest, ReadsAsMuchAsIsAskedForAndNoMore) {
  Put(Path("log"), "0123456789");
  EXPECT_EQ(store_.Size(Path("log")), 10U);
  EXPECT_EQ(store_.Size(Path("missing")), std::nullopt);
  struct Row {
    std::uint64_t offset;
    std::uint64_t most;
    const char* bytes;
  };
  for (const Row& row : {Row{0, 10, "0123456789"}, Row{0, 9, "012345678"}, Row{9, 1, "9"}, Row{8, 1, "8"},
                         Row{9, 100, "9"}, Row{10, 0, ""}, Row{11, 0, ""}, Row{1000, 5, ""}}) {
    const auto read = store_.ReadFrom(Path("log"), row.offset, row.most);
    ASSERT_TRUE(read) << row.offset << ": " << ReasonOf(read);
    EXPECT_EQ(read.value(), row.bytes) << row.offset;
  }
  EXPECT_EQ(ReasonOf(store_.Read(Path("log"), 9)), "File too large");
  // Its size is told as nothing.
  EXPECT_EQ(ReasonOf(store_.Read("/proc/self/maps", 100)), "File too large");
}

TEST_F(FileStoreTest, RemovesAndRenames) {
  Put(Path("a"), "one");
  Put(Path("b"), "two");
  EXPECT_EQ(ReasonOf(store_.Rename(Path("a"), Path("b"))), "");
  EXPECT_EQ(Content(Path("b")), "one");
  EXPECT_FALSE(store_.Exists(Path("a")));
  EXPECT_EQ(ReasonOf(store_.Remove(Path("b"))), "");
  EXPECT_FALSE(store_.Exists(Path("b")));
  EXPECT_EQ(ReasonOf(store_.Remove(Path("b"))), "") << "it is gone already";
  EXPECT_EQ(ReasonOf(store_.Rename(Path("a"), Path("b"))), "No such file or directory");
  EXPECT_EQ(ReasonOf(store_.Remove(dir_.path().toStdString())), "Is a directory");
  EXPECT_EQ(ReasonOf(store_.Rename(Path("a"), Path("no/such/folder"))), "No such file or directory");
}

// The mask belongs to the whole process: a file that another thread makes meanwhile must not come out open to
// everybody.
TEST_F(FileStoreTest, TheUsersMaskStandsAllTheTime) {
  const mode_t mask = ::umask(077);
  std::atomic<bool> through = false;
  std::thread writer([&] {
    for (int i = 0; i < 300; ++i) {
      EXPECT_EQ(ReasonOf(store_.Replace(Path("new" + std::to_string(i)), "x")), "");
    }
    through = true;
  });
  int open_to_others = 0;
  for (int i = 0; !through; ++i) {
    const std::string other = Path("other" + std::to_string(i));
    ::close(::open(other.c_str(), O_CREAT | O_WRONLY | O_CLOEXEC, 0666));
    struct stat about {};
    if (::stat(other.c_str(), &about) == 0 && (about.st_mode & 077U) != 0) ++open_to_others;
    ::unlink(other.c_str());
  }
  writer.join();
  ::umask(mask);
  EXPECT_EQ(open_to_others, 0);
}

// A translation of one system message, as a French system has it, in the form that the C library reads: a
// header entry with the character set and the message, sorted.
std::string FrenchMessages() {
  const std::array<std::string, 2> from = {"", "No such device"};
  const std::array<std::string, 2> to = {"Content-Type: text/plain; charset=UTF-8\n",
                                         "Aucun p\u00E9riph\u00E9rique"};
  const auto number = [](std::size_t value) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(value >> shift & 0xFFU));
    return bytes;
  };
  constexpr std::size_t kHeader = 28;
  std::string tables;
  std::string texts;
  const std::size_t texts_at = kHeader + 2 * from.size() * 8;
  for (const auto& column : {from, to}) {
    for (const std::string& text : column) {
      tables += number(text.size()) + number(texts_at + texts.size());
      texts += text + '\0';
    }
  }
  return number(0x950412DE) + number(0) + number(from.size()) + number(kHeader) +
         number(kHeader + from.size() * 8) + number(0) + number(kHeader) + tables + texts;
}

TEST_F(FileStoreTest, AReasonHasItsLettersInEveryLocale) {
  ASSERT_TRUE(QDir().mkpath(dir_.filePath(QStringLiteral("fr/LC_MESSAGES"))));
  Put(Path("fr/LC_MESSAGES/libc.mo"), FrenchMessages());
  const std::string before = std::setlocale(LC_MESSAGES, nullptr);
  ASSERT_NE(std::setlocale(LC_MESSAGES, "C.UTF-8"), nullptr);
  qputenv("LANGUAGE", "fr");
  const std::string domain = ::bindtextdomain("libc", nullptr);
  ::bindtextdomain("libc", dir_.path().toLocal8Bit().constData());
  EXPECT_EQ(posix::Reason(std::make_error_code(std::errc::no_such_device)), "Aucun p\xE9riph\xE9rique");
  EXPECT_EQ(posix::Reason(std::make_error_code(std::errc::no_such_file_or_directory)),
            "No such file or directory");
  ::bindtextdomain("libc", domain.c_str());
  qunsetenv("LANGUAGE");
  std::setlocale(LC_MESSAGES, before.c_str());
}

TEST_F(FileStoreTest, AppendsAndCreates) {
  EXPECT_EQ(ReasonOf(store_.Append(Path("log"), "one\r\n")), "");
  EXPECT_EQ(ReasonOf(store_.Append(Path("log"), "two\r\n")), "");
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
    const Outcome appended = store_.Append(Path("log"), "a long second block\r\n");
    ::_exit(ReasonOf(appended) == "File too large" ? 0 : 1);
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
    ::_exit(ReasonOf(store_.Replace(Path("a.cfg"), "a longer new one")) == "File too large" ? 0 : 1);
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
    const bool replaced = store_.Replace(Path("a.cfg"), "new").ok();
    const bool refused = ReasonOf(store_.Append(Path("new.log"), "x")) == "Permission denied";
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
  EXPECT_EQ(ReasonOf(store.Replace(shown + "/stra\xDF"
                                           "e.cfg",
                                   "x")),
            "");
  EXPECT_TRUE(QFile::exists(folder + QStringLiteral(u"/stra\u00DFe.cfg")));
  EXPECT_TRUE(store.Exists(shown + "/stra\xDF"
                                   "e.cfg"));
}

}  // namespace
}  // namespace kestrum
