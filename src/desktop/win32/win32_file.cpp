#include "desktop/win32/win32_file.h"

#include <algorithm>

#include "common/win32/wide_text.h"

namespace kestrum::win32 {
namespace {

constexpr int kAttempts = 6;
constexpr DWORD kPauseMs = 25;
constexpr const char* kNoFile = "Not a regular file";

bool MayPass(DWORD error) {
  return error == ERROR_SHARING_VIOLATION || error == ERROR_LOCK_VIOLATION;
}

HANDLE OpenOnce(const std::wstring& path, Use use) {
  const DWORD access = use == Use::kRead ? GENERIC_READ : GENERIC_READ | GENERIC_WRITE;
  const DWORD creation = use == Use::kRead     ? OPEN_EXISTING
                         : use == Use::kAppend ? OPEN_ALWAYS
                                               : CREATE_ALWAYS;
  return ::CreateFileW(path.c_str(), access, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                       creation, FILE_ATTRIBUTE_NORMAL, nullptr);
}

}  // namespace

DWORD Attributes(const std::wstring& path) {
  return ::GetFileAttributesW(path.c_str());
}

bool IsNothing(DWORD error) {
  return error == ERROR_FILE_NOT_FOUND || error == ERROR_PATH_NOT_FOUND || error == ERROR_INVALID_NAME ||
         error == ERROR_BAD_PATHNAME || error == ERROR_INVALID_DRIVE || error == ERROR_NOT_READY ||
         error == ERROR_BAD_NETPATH || error == ERROR_BAD_NET_NAME;
}

bool IsFolder(DWORD attributes) {
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

Result<OpenedFile> OpenFile(const std::wstring& path, Use use) {
  // A folder would be refused as "access denied", which sends the user to the wrong place.
  if (IsFolder(Attributes(path))) return Fault{{}, kNoFile};
  OpenedFile result;
  DWORD error = ERROR_SHARING_VIOLATION;
  for (int attempt = 0; attempt < kAttempts && MayPass(error); ++attempt) {
    if (attempt > 0) ::Sleep(kPauseMs);
    result.file = Handle(OpenOnce(path, use));
    error = result.file.valid() ? 0 : ::GetLastError();
  }
  if (error != 0) return Fault{{}, Reason(error)};
  if (::GetFileType(result.file.get()) != FILE_TYPE_DISK) return Fault{{}, kNoFile};
  LARGE_INTEGER size{};
  if (::GetFileSizeEx(result.file.get(), &size) == 0) return Fault{{}, Reason(::GetLastError())};
  result.size = static_cast<std::uint64_t>(size.QuadPart);
  return result;
}

DWORD WriteAll(HANDLE file, std::string_view bytes) {
  constexpr std::size_t kPiece = 1U << 20U;
  while (!bytes.empty()) {
    DWORD written = 0;
    const auto length = static_cast<DWORD>(std::min(bytes.size(), kPiece));
    if (::WriteFile(file, bytes.data(), length, &written, nullptr) == 0) return ::GetLastError();
    if (written == 0) return ERROR_DISK_FULL;
    bytes.remove_prefix(written);
  }
  return 0;
}

DWORD WriteAndFlush(HANDLE file, std::string_view bytes) {
  if (const DWORD error = WriteAll(file, bytes)) return error;
  return ::FlushFileBuffers(file) != 0 ? 0 : ::GetLastError();
}

DWORD Delete(const std::wstring& path) {
  DWORD error = ERROR_SHARING_VIOLATION;
  for (int attempt = 0; attempt < kAttempts && MayPass(error); ++attempt) {
    if (attempt > 0) ::Sleep(kPauseMs);
    error = ::DeleteFileW(path.c_str()) != 0 ? 0 : ::GetLastError();
  }
  return error;
}

DWORD MoveOver(const std::wstring& from, const std::wstring& to) {
  DWORD error = 0;
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    const bool moved =
        ::MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    error = moved ? 0 : ::GetLastError();
    // A file that somebody reads without sharing its removal is "access denied" here.
    if (!MayPass(error) && error != ERROR_ACCESS_DENIED) break;
    ::Sleep(kPauseMs);
  }
  return error;
}

}  // namespace kestrum::win32
