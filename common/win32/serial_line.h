#pragma once

#include <windows.h>

#include <deque>
#include <memory>
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

// One serial line by the system's own calls: raw bytes, no flow control. Neither reading nor writing waits.
// Errors are the system's numbers, zero for none. After an error of Read or Write the line is worth nothing
// any more. Used on one thread only.
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
  // Hands the bytes to the system, which sends them behind those of before; that this has failed is told by
  // the next call. A line that takes no bytes has not failed: what waits for it is dropped.
  DWORD Write(std::string_view bytes);
  // Bytes that the system has not taken yet, as far as is known.
  std::size_t Waiting() const;
  // Appends what has been received up to now, at most kMostBytes of it.
  DWORD Read(std::string& bytes);

  static constexpr DWORD kMostBytes = 4096;

 private:
  // Bytes on their way out: the system uses them and `state` until `done` is set.
  struct Outgoing {
    explicit Outgoing(std::string_view text);

    std::string bytes;
    Handle done;
    OVERLAPPED state{};
  };

  DWORD Apply(const SerialSettings& settings);
  // Takes what has gone out off the list.
  DWORD Reap();
  // Ends all that is on its way out, and empties what the line itself holds.
  void Drop();

  Handle file_;
  std::deque<std::unique_ptr<Outgoing>> outgoing_;  // in their order
};

// Whether the system knows a port of this name, in use or not.
bool SerialPortExists(const std::wstring& name);

}  // namespace kestrum::win32
