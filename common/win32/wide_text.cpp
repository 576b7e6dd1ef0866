#include "common/win32/wide_text.h"

#include <windows.h>

#include <array>

namespace kestrum::win32 {
namespace {

constexpr UINT kCodePage = 1252;

}  // namespace

std::wstring Wide(std::string_view text) {
  const int length = static_cast<int>(text.size());
  std::wstring result(text.size(), L'\0');
  const int written = ::MultiByteToWideChar(kCodePage, 0, text.data(), length, result.data(), length);
  result.resize(static_cast<std::size_t>(written));
  return result;
}

std::string Narrow(std::wstring_view text) {
  const int length = static_cast<int>(text.size());
  std::string result(text.size(), '\0');
  const int written = ::WideCharToMultiByte(kCodePage, WC_NO_BEST_FIT_CHARS, text.data(), length,
                                            result.data(), length, "?", nullptr);
  result.resize(static_cast<std::size_t>(written));
  return result;
}

std::wstring WideReason(unsigned long error) {
  std::array<wchar_t, 512> room{};
  const DWORD length = ::FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK, nullptr,
      error, 0, room.data(), static_cast<DWORD>(room.size()), nullptr);
  std::wstring text(room.data(), length);
  while (!text.empty() && (text.back() <= L' ' || text.back() == L'.')) text.pop_back();
  return text.empty() ? L"error " + std::to_wstring(error) : text;
}

std::string Reason(unsigned long error) {
  return Narrow(WideReason(error));
}

}  // namespace kestrum::win32
