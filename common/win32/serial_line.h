#pragma once

#include <windows.h>

#include <string>
#include <string_view>

#include "common/win32/handle.h"

namespace kestrum::win32 {

struct SerialSettings {
  unsigned long baud = 9600;
  char parity = 'N';  // 'N', 'E' or 'O'
  unsigned char data_bits = 8;
  bool two_stop_bits = false;
};

// One serial line by the system's own calls: raw bytes, no flow control. Reading never waits, writing for a
// moment at most. Errors are the system's numbers, zero for none. After an error of Read or Write the line is
// worth nothing any more.
class SerialLine {
 public:
  SerialLine() = default;
  ~SerialLine() { Close(); }
  SerialLine(const SerialLine&) = delete;
  SerialLine& operator=(const SerialLine&) = delete;

  // `name` as "COM3". A port that is not there is ERROR_FILE_NOT_FOUND, one that is in use
  // ERROR_ACCESS_DENIED.
  DWORD Open(const std::wstring& name, const SerialSettings& settings);
  bool IsOpen() const { return file_.valid(); }
  // What was written before goes out first, for a moment at most.
  void Close();
  // A line that takes no bytes has not failed: what it has not taken within a moment is dropped.
  DWORD Write(std::string_view bytes);
  // Appends what has been received up to now, at most kMostBytes of it.
  DWORD Read(std::string& bytes);

  static constexpr DWORD kMostBytes = 4096;

 private:
  DWORD Apply(const SerialSettings& settings);

  Handle file_;
};

// Whether the system knows a port of this name, in use or not.
bool SerialPortExists(const std::wstring& name);

}  // namespace kestrum::win32
