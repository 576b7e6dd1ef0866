#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "common/fault.h"

namespace kestrum {

// One serial line: raw bytes, no flow control. Used on the window thread only.
class SerialPort {
 public:
  virtual ~SerialPort() = default;

  // 0 means no port; opening it fails.
  virtual void SetPort(int number) = 0;
  // Speed in baud, parity, data bits and stop bits, e.g. " 9600,N,8,2"; blanks around the speed are accepted.
  virtual void SetSettings(const std::string& settings) = 0;
  // Opens the port as set; false when that is not possible, the port is then closed.
  virtual bool Open() = 0;
  virtual void Close() = 0;
  virtual bool IsOpen() const = 0;
  // Whether the port is closed because its device has gone, or was not there when it was opened. False for a
  // port that was closed, and for one that cannot be opened although its device is there.
  virtual bool WaitsForDevice() const = 0;
  // Whether the device that the port waits for is there again, so that Open may work.
  virtual bool DeviceIsBack() const = 0;

  // Hands the bytes to the line without waiting for them to leave it. Does nothing when closed; a line that
  // fails closes the port. A line that takes no bytes has not failed: what waits for it is dropped.
  virtual void Write(std::string_view bytes) = 0;
  // Everything received up to now, which empties the input buffer. Never waits.
  virtual std::string ReadAll() = 0;

  // The device that stands for a port number, e.g. "/dev/ttyUSB0"; for tool tips.
  virtual std::string DeviceName(int number) const = 0;
  // Why the last Open failed or the line was lost: the device, and a sentence that names it and helps.
  // Nothing when all is well.
  virtual std::optional<Fault> Trouble() const = 0;
};

}  // namespace kestrum
