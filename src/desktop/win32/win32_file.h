#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "common/fault.h"
#include "common/win32/handle.h"

// Single steps of the file store. Errors are the system's numbers, zero for none.
namespace kestrum::win32 {

enum class Use { kRead, kAppend, kOverwrite };

struct OpenedFile {
  Handle file;
  std::uint64_t size = 0;
};
// Refuses what is no regular file. A file that another program holds for a moment only, as scanners and
// indexers do, is asked for again. The fault names no file.
Result<OpenedFile> OpenFile(const std::wstring& path, Use use);

// The attributes of what stands there, or INVALID_FILE_ATTRIBUTES.
DWORD Attributes(const std::wstring& path);
bool IsNothing(DWORD error);
bool IsFolder(DWORD attributes);

DWORD WriteAll(HANDLE file, std::string_view bytes);
// Writes, and waits until the bytes are on the disk.
DWORD WriteAndFlush(HANDLE file, std::string_view bytes);
// As OpenFile, asks again for a file that is held for a moment.
DWORD Delete(const std::wstring& path);
// Replaces what stands at `to`, and waits until that is on the disk.
DWORD MoveOver(const std::wstring& from, const std::wstring& to);

}  // namespace kestrum::win32
