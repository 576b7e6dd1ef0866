#include "desktop/win32/win32_file_store.h"

#include <algorithm>
#include <array>
#include <limits>
#include <utility>

#include "common/win32/wide_text.h"
#include "desktop/win32/win32_file.h"

namespace kestrum {
namespace {

using win32::Handle;
using win32::Use;

constexpr std::size_t kLongestPlainPath = 240;  // MAX_PATH less what is added beside a file

std::wstring FolderOf(const std::wstring& path) {
  const std::size_t separator = path.find_last_of(L"\\/");
  return separator == std::wstring::npos ? L"." : path.substr(0, separator + 1);
}

Outcome OutcomeOf(const std::string& path, DWORD error) {
  if (error != 0) return Fault{path, win32::Reason(error)};
  return Done{};
}

Outcome WriteInPlace(const std::string& path, const std::wstring& target, std::string_view bytes) {
  const Result<win32::OpenedFile> opened = win32::OpenFile(target, Use::kOverwrite);
  if (!opened) return Fault{path, opened.fault().reason};
  return OutcomeOf(path, win32::WriteAndFlush(opened.value().file.get(), bytes));
}

// The file behind a chain of links, so that a move replaces it and not the link.
std::wstring Resolved(const std::wstring& path) {
  const DWORD attributes = win32::Attributes(path);
  if (attributes == INVALID_FILE_ATTRIBUTES || (attributes & FILE_ATTRIBUTE_REPARSE_POINT) == 0) return path;
  const Handle file(::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                  nullptr, OPEN_EXISTING, 0, nullptr));
  std::array<wchar_t, 1024> room{};
  if (!file.valid()) return path;
  const DWORD length = ::GetFinalPathNameByHandleW(file.get(), room.data(), static_cast<DWORD>(room.size()),
                                                   FILE_NAME_NORMALIZED);
  return length > 0 && length < room.size() ? std::wstring(room.data(), length) : path;
}

struct Beside {
  Handle file;
  std::wstring path;
  DWORD error = 0;
};

Beside MakeBeside(const std::wstring& path) {
  constexpr int kAttempts = 1000;  // names that an earlier process of this number has left
  for (int attempt = 0; attempt < kAttempts; ++attempt) {
    std::wstring name =
        path + L"." + std::to_wstring(::GetCurrentProcessId()) + L"-" + std::to_wstring(attempt);
    Handle file(::CreateFileW(name.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_NEW,
                              FILE_ATTRIBUTE_NORMAL, nullptr));
    const DWORD error = file.valid() ? 0 : ::GetLastError();
    if (error != ERROR_FILE_EXISTS) return {std::move(file), std::move(name), error};
  }
  return {Handle(), path, ERROR_FILE_EXISTS};
}

}  // namespace

Win32FileStore::Win32FileStore(std::string text, std::wstring folder)
    : folder_text_(std::move(text)), folder_(std::move(folder)) {}

std::wstring Win32FileStore::NativePath(const std::string& path) const {
  const bool in_folder = path.size() > folder_text_.size() && path.starts_with(folder_text_) &&
                         (path[folder_text_.size()] == '\\' || path[folder_text_.size()] == '/');
  std::wstring native = in_folder ? folder_ + win32::Wide(std::string_view(path).substr(folder_text_.size()))
                                  : win32::Wide(path);
  std::replace(native.begin(), native.end(), L'/', L'\\');
  const bool on_a_drive = native.size() > 2 && native[1] == L':' && native[2] == L'\\';
  if (native.size() < kLongestPlainPath || !on_a_drive) return native;
  return L"\\\\?\\" + native;
}

bool Win32FileStore::Exists(const std::string& path) const {
  return win32::Attributes(NativePath(path)) != INVALID_FILE_ATTRIBUTES ||
         !win32::IsNothing(::GetLastError());
}

std::optional<std::uint64_t> Win32FileStore::Size(const std::string& path) const {
  const Result<win32::OpenedFile> opened = win32::OpenFile(NativePath(path), Use::kRead);
  if (!opened) return std::nullopt;
  return opened.value().size;
}

Result<std::string> Win32FileStore::Read(const std::string& path, std::uint64_t most_bytes) const {
  // One byte more tells a file that is too long, also one that grows.
  const std::uint64_t most =
      most_bytes < std::numeric_limits<std::uint64_t>::max() ? most_bytes + 1 : most_bytes;
  Result<std::string> content = ReadFrom(path, 0, most);
  if (content && content.value().size() > most_bytes) return Fault{path, win32::Reason(ERROR_FILE_TOO_LARGE)};
  return content;
}

Result<std::string> Win32FileStore::ReadFrom(const std::string& path, std::uint64_t offset,
                                             std::uint64_t most_bytes) const {
  const Result<win32::OpenedFile> opened = win32::OpenFile(NativePath(path), Use::kRead);
  if (!opened) return Fault{path, opened.fault().reason};
  const HANDLE file = opened.value().file.get();
  LARGE_INTEGER position{};
  position.QuadPart = static_cast<LONGLONG>(offset);
  if (::SetFilePointerEx(file, position, nullptr, FILE_BEGIN) == 0) {
    return Fault{path, win32::Reason(::GetLastError())};
  }
  std::string content;
  std::array<char, 65536> piece{};
  while (content.size() < most_bytes) {
    const auto wanted =
        static_cast<DWORD>(std::min<std::uint64_t>(piece.size(), most_bytes - content.size()));
    DWORD got = 0;
    if (::ReadFile(file, piece.data(), wanted, &got, nullptr) == 0) {
      return Fault{path, win32::Reason(::GetLastError())};
    }
    if (got == 0) break;
    content.append(piece.data(), got);
  }
  return content;
}

Outcome Win32FileStore::Replace(const std::string& path, std::string_view bytes) {
  const std::wstring target = Resolved(NativePath(path));
  if (win32::IsFolder(win32::Attributes(target))) return WriteInPlace(path, target, bytes);
  Beside beside = MakeBeside(target);
  // A folder that takes no new file may still hold one that takes bytes.
  if (beside.error == ERROR_ACCESS_DENIED || beside.error == ERROR_WRITE_PROTECT) {
    return WriteInPlace(path, target, bytes);
  }
  if (beside.error != 0) return OutcomeOf(path, beside.error);
  DWORD error = win32::WriteAndFlush(beside.file.get(), bytes);
  beside.file.Reset();
  if (error == 0) error = win32::MoveOver(beside.path, target);
  if (error != 0) ::DeleteFileW(beside.path.c_str());
  return OutcomeOf(path, error);
}

Outcome Win32FileStore::Append(const std::string& path, std::string_view bytes) {
  const Result<win32::OpenedFile> opened = win32::OpenFile(NativePath(path), Use::kAppend);
  if (!opened) return Fault{path, opened.fault().reason};
  const HANDLE file = opened.value().file.get();
  LARGE_INTEGER end{};
  end.QuadPart = static_cast<LONGLONG>(opened.value().size);
  if (::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) == 0) return OutcomeOf(path, ::GetLastError());
  const DWORD error = win32::WriteAndFlush(file, bytes);
  // Half a block must not stay: the next one would begin in the middle of a line.
  if (error != 0 && ::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) != 0) ::SetEndOfFile(file);
  return OutcomeOf(path, error);
}

Outcome Win32FileStore::CheckAppend(const std::string& path) const {
  constexpr std::uint64_t kLeastFree = 1U << 20U;  // a block has about 10 kB
  constexpr DWORD kShared = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
  const std::wstring target = NativePath(path);
  const std::wstring folder = FolderOf(target);
  const DWORD attributes = win32::Attributes(target);
  const bool is_new = attributes == INVALID_FILE_ATTRIBUTES && win32::IsNothing(::GetLastError());
  if (win32::IsFolder(attributes)) return Fault{path, win32::OpenFile(target, Use::kRead).fault().reason};
  // Asks for the right alone. A new log needs a folder that takes it; one that is there must take more.
  const Handle probe(is_new ? ::CreateFileW(folder.c_str(), FILE_ADD_FILE, kShared, nullptr, OPEN_EXISTING,
                                            FILE_FLAG_BACKUP_SEMANTICS, nullptr)
                            : ::CreateFileW(target.c_str(), GENERIC_WRITE, kShared, nullptr, OPEN_EXISTING,
                                            FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!probe.valid()) return OutcomeOf(path, ::GetLastError());
  ULARGE_INTEGER free{};
  if (::GetDiskFreeSpaceExW(folder.c_str(), &free, nullptr, nullptr) == 0) {
    return OutcomeOf(path, ::GetLastError());
  }
  return OutcomeOf(path, free.QuadPart < kLeastFree ? DWORD{ERROR_DISK_FULL} : DWORD{0});
}

Outcome Win32FileStore::Remove(const std::string& path) {
  const DWORD error = win32::Delete(NativePath(path));
  return OutcomeOf(path, win32::IsNothing(error) ? 0 : error);
}

Outcome Win32FileStore::Rename(const std::string& from, const std::string& to) {
  return OutcomeOf(from, win32::MoveOver(NativePath(from), NativePath(to)));
}

}  // namespace kestrum
