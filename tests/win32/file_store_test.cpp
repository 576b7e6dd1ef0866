#include <gtest/gtest.h>
#include <windows.h>

#include <array>
#include <thread>

#include "common/win32/handle.h"
#include "common/win32/wide_text.h"
#include "desktop/win32/win32_file_store.h"
#include "support_process/waits.h"

namespace kestrum {
namespace {

class Win32FileStoreTest : public testing::Test {
 protected:
  Win32FileStoreTest() {
    std::array<wchar_t, 512> room{};
    ::GetTempPathW(static_cast<DWORD>(room.size()), room.data());
    // Characters that the 8-bit text does not have.
    folder_ = room.data() + std::wstring(L"kestrum-\u0416\u4E2D-") + std::to_wstring(::GetCurrentProcessId());
    ::CreateDirectoryW(folder_.c_str(), nullptr);
    files_ = std::make_unique<Win32FileStore>(win32::Narrow(folder_), folder_);
  }
  ~Win32FileStoreTest() override {
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((folder_ + L"\\*").c_str(), &found);
    do {
      const std::wstring path = folder_ + L"\\" + found.cFileName;
      ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
      ::DeleteFileW(path.c_str());
      if (found.cFileName[0] != L'.') ::RemoveDirectoryW(path.c_str());
    } while (::FindNextFileW(search, &found) != 0);
    ::FindClose(search);
    ::RemoveDirectoryW(folder_.c_str());
  }
  std::string Path(const std::string& name) const { return win32::Narrow(folder_) + "\\" + name; }
  std::string Content(const std::string& name) const {
    const auto content = files_->Read(Path(name), 1U << 20U);
    return content ? content.value() : "fault: " + content.fault().reason;
  }
  int FilesInFolder() const {
    int count = 0;
    WIN32_FIND_DATAW found{};
    const HANDLE search = ::FindFirstFileW((folder_ + L"\\*").c_str(), &found);
    do {
      if (found.cFileName[0] != L'.') ++count;
    } while (::FindNextFileW(search, &found) != 0);
    ::FindClose(search);
    return count;
  }

  std::wstring folder_;
  std::unique_ptr<Win32FileStore> files_;
};

TEST_F(Win32FileStoreTest, AppendsAndMakesTheFile) {
  EXPECT_FALSE(files_->Exists(Path("a.log")));
  EXPECT_TRUE(files_->Append(Path("a.log"), "one\r\n"));
  EXPECT_TRUE(files_->Append(Path("a.log"), "two\r\n"));
  EXPECT_EQ(Content("a.log"), "one\r\ntwo\r\n");
  EXPECT_EQ(files_->Size(Path("a.log")), 10U);
  EXPECT_TRUE(files_->Exists(Path("a.log")));
}

TEST_F(Win32FileStoreTest, ReadsFromAnOffsetAndAtMostSoMuch) {
  ASSERT_TRUE(files_->Append(Path("a"), "0123456789"));
  struct Row {
    std::uint64_t offset, most;
    const char* expected;
  };
  for (const Row& row :
       {Row{0, 4, "0123"}, Row{8, 100, "89"}, Row{10, 5, ""}, Row{99, 5, ""}, Row{3, 0, ""}}) {
    EXPECT_EQ(files_->ReadFrom(Path("a"), row.offset, row.most).value(), row.expected) << row.offset;
  }
  EXPECT_EQ(files_->Read(Path("a"), 10).value(), "0123456789");
  EXPECT_FALSE(files_->Read(Path("a"), 9));
}

TEST_F(Win32FileStoreTest, ReplacesAndLeavesNothingBeside) {
  EXPECT_TRUE(files_->Replace(Path("Kestrum.cfg"), "old"));
  EXPECT_TRUE(files_->Replace(Path("Kestrum.cfg"), "newer"));
  EXPECT_EQ(Content("Kestrum.cfg"), "newer");
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(Win32FileStoreTest, ReplacesAFileThatSomebodyReadsForAMoment) {
  ASSERT_TRUE(files_->Replace(Path("a"), "old"));
  win32::Handle reader(::CreateFileW((folder_ + L"\\a").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                     OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(reader.valid());
  std::thread moment([&reader] {
    process::LetRunFor(std::chrono::milliseconds(50));
    reader.Reset();
  });
  EXPECT_TRUE(files_->Replace(Path("a"), "new"));
  moment.join();
  EXPECT_EQ(Content("a"), "new");
  EXPECT_EQ(FilesInFolder(), 1);
}

TEST_F(Win32FileStoreTest, AFileThatSomebodyHoldsIsAFaultAndStaysAsItIs) {
  ASSERT_TRUE(files_->Append(Path("a.log"), "kept"));
  {
    const win32::Handle holder(
        ::CreateFileW((folder_ + L"\\a.log").c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(holder.valid());
    const Outcome appended = files_->Append(Path("a.log"), "more");
    ASSERT_FALSE(appended);
    EXPECT_EQ(appended.fault().what, Path("a.log"));
    EXPECT_EQ(appended.fault().reason, win32::Reason(ERROR_SHARING_VIOLATION));
    EXPECT_FALSE(files_->CheckAppend(Path("a.log")));
  }
  EXPECT_TRUE(files_->CheckAppend(Path("a.log")));
  EXPECT_EQ(Content("a.log"), "kept");
}

TEST_F(Win32FileStoreTest, FoldersAndDevicesAreNoFiles) {
  ::CreateDirectoryW((folder_ + L"\\folder").c_str(), nullptr);
  for (const char* name : {"folder", "NUL"}) {
    EXPECT_EQ(files_->Append(Path(name), "x").fault().reason, "Not a regular file") << name;
    EXPECT_FALSE(files_->Read(Path(name), 10)) << name;
    EXPECT_EQ(files_->Size(Path(name)), std::nullopt) << name;
  }
  EXPECT_TRUE(files_->Exists(Path("folder")));
  EXPECT_FALSE(files_->CheckAppend(Path("folder")));
}

TEST_F(Win32FileStoreTest, AFolderThatIsMissingIsAFault) {
  EXPECT_FALSE(files_->Append(Path("none\\a.log"), "x"));
  EXPECT_FALSE(files_->CheckAppend(Path("none\\a.log")));
  EXPECT_FALSE(files_->Replace(Path("none\\a.cfg"), "x"));
  EXPECT_FALSE(files_->Exists(Path("none\\a.log")));
}

TEST_F(Win32FileStoreTest, CheckingWritesNothing) {
  EXPECT_TRUE(files_->CheckAppend(Path("new.log")));
  EXPECT_FALSE(files_->Exists(Path("new.log")));
}

TEST_F(Win32FileStoreTest, RemovesAndRenames) {
  ASSERT_TRUE(files_->Append(Path("a"), "a"));
  ASSERT_TRUE(files_->Append(Path("b"), "b"));
  EXPECT_TRUE(files_->Rename(Path("a"), Path("b")));
  EXPECT_EQ(Content("b"), "a");
  EXPECT_FALSE(files_->Exists(Path("a")));
  EXPECT_FALSE(files_->Rename(Path("a"), Path("b")));
  EXPECT_TRUE(files_->Remove(Path("b")));
  EXPECT_TRUE(files_->Remove(Path("b")));
  EXPECT_EQ(FilesInFolder(), 0);
}

TEST_F(Win32FileStoreTest, RemovesAFileThatSomebodyReadsForAMoment) {
  ASSERT_TRUE(files_->Append(Path("a"), "a"));
  win32::Handle reader(::CreateFileW((folder_ + L"\\a").c_str(), GENERIC_READ,
                                     FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(reader.valid());
  EXPECT_EQ(files_->Remove(Path("a")).fault().reason, win32::Reason(ERROR_SHARING_VIOLATION));
  std::thread moment([&reader] {
    process::LetRunFor(std::chrono::milliseconds(50));
    reader.Reset();
  });
  EXPECT_TRUE(files_->Remove(Path("a")));
  moment.join();
  EXPECT_FALSE(files_->Exists(Path("a")));
}

TEST_F(Win32FileStoreTest, APathMayBeLong) {
  const std::string name(200, 'x');
  EXPECT_TRUE(files_->Replace(Path(name), "long"));
  EXPECT_TRUE(files_->Append(Path(name), "er"));
  EXPECT_EQ(Content(name), "longer");
  EXPECT_TRUE(files_->Remove(Path(name)));
}

}  // namespace
}  // namespace kestrum
