#pragma once

#include <optional>
#include <string>

#include "common/win32/serial_line.h"
#include "platform/serial_port.h"

namespace kestrum {

// COM1, COM2 ... of the system.
class Win32SerialPort : public SerialPort {
 public:
  void SetPort(int number) override;
  void SetSettings(const std::string& settings) override { settings_ = settings; }
  bool Open() override;
  void Close() override;
  bool IsOpen() const override { return line_.IsOpen(); }
  bool WaitsForDevice() const override { return !IsOpen() && awaited_ > 0; }
  bool DeviceIsBack() const override;
  void Write(std::string_view bytes) override;
  std::string ReadAll() override;
  std::string DeviceName(int number) const override;
  std::optional<Fault> Trouble() const override { return trouble_; }

 private:
  void Lose(unsigned long error);

  int number_ = 0;
  std::string settings_;
  win32::SerialLine line_;
  std::optional<Fault> trouble_;
  int awaited_ = 0;  // the port whose device has gone, or was not there; 0 for none
};

}  // namespace kestrum
