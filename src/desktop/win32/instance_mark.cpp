#include "desktop/win32/instance_mark.h"

#include <windows.h>

#include <array>
#include <cstdint>

namespace kestrum {
namespace {

// FNV-1a: a name of a mutex can hold no path.
std::uint64_t HashOf(const std::wstring& text) {
  std::uint64_t hash = 14695981039346656037ULL;
  for (const wchar_t character : text) {
    hash ^= static_cast<std::uint64_t>(character);
    hash *= 1099511628211ULL;
  }
  return hash;
}

std::wstring Folded(const std::wstring& text) {
  std::wstring result = text;
  ::CharUpperBuffW(result.data(), static_cast<DWORD>(result.size()));
  for (wchar_t& character : result) {
    if (character == L'/') character = L'\\';
  }
  return result;
}

std::wstring UserName() {
  std::array<wchar_t, 257> room{};
  auto length = static_cast<DWORD>(room.size());
  return ::GetUserNameW(room.data(), &length) != 0 && length > 0 ? std::wstring(room.data(), length - 1)
                                                                 : std::wstring();
}

}  // namespace

// The handle stays open on purpose: the system lets the mutex go with the process, also after a crash.
bool MarkInstance(const std::wstring& folder) {
  const std::wstring name = L"Global\\Kestrum-" + std::to_wstring(HashOf(Folded(UserName()))) + L"-" +
                            std::to_wstring(HashOf(Folded(folder)));
  const HANDLE mark = ::CreateMutexW(nullptr, FALSE, name.c_str());
  const DWORD error = ::GetLastError();
  if (mark != nullptr && error != ERROR_ALREADY_EXISTS) return true;
  if (mark != nullptr) ::CloseHandle(mark);
  // A mutex that may not even be opened belongs to an instance with other rights. Without a place for the
  // mark, starting is better than refusing.
  return error != ERROR_ALREADY_EXISTS && error != ERROR_ACCESS_DENIED;
}

}  // namespace kestrum
