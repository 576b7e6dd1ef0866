#pragma once

#include <windows.h>

namespace kestrum::win32 {

// A handle of the system that is closed at the end.
class Handle {
 public:
  explicit Handle(HANDLE handle = nullptr) : handle_(handle) {}
  Handle(Handle&& other) noexcept : handle_(other.Release()) {}
  Handle& operator=(Handle&& other) noexcept {
    Reset(other.Release());
    return *this;
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  ~Handle() { Reset(); }

  HANDLE get() const { return handle_; }
  bool valid() const { return handle_ != nullptr && handle_ != INVALID_HANDLE_VALUE; }
  void Reset(HANDLE handle = nullptr) {
    if (valid()) ::CloseHandle(handle_);
    handle_ = handle;
  }
  HANDLE Release() {
    const HANDLE handle = handle_;
    handle_ = nullptr;
    return handle;
  }

 private:
  HANDLE handle_;
};

}  // namespace kestrum::win32
