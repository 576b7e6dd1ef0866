#include "desktop/win32/win32_serial_port.h"

#include <optional>
#include <vector>

#include "common/win32/wide_text.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

std::vector<std::string> Fields(const std::string& settings) {
  std::vector<std::string> fields(1);
  for (const char c : settings) {
    if (c == ',') {
      fields.emplace_back();
    } else {
      fields.back().push_back(c);
    }
  }
  return fields;
}

// "speed,parity,data bits,stop bits".
std::optional<win32::SerialSettings> ReadSettings(const std::string& settings) {
  const std::vector<std::string> fields = Fields(settings);
  if (fields.size() != 4) return std::nullopt;
  const double baud = Val(fields[0]);
  const double data_bits = Val(fields[2]);
  const std::string parity = Upper(Trim(fields[1]));
  if (baud < 1 || baud > 4'000'000 || data_bits < 5 || data_bits > 8) return std::nullopt;
  return win32::SerialSettings{.baud = static_cast<unsigned long>(baud),
                               .parity = parity == "E" || parity == "O" ? parity[0] : 'N',
                               .data_bits = static_cast<unsigned char>(data_bits),
                               .two_stop_bits = Trim(fields[3]) == "2"};
}

std::string NameOf(int number) {
  return "COM" + std::to_string(number);
}

Fault WhyClosed(const std::string& device, const std::string& settings, unsigned long error) {
  switch (error) {
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
      return {device, device + " is not there. Is the cable plugged in?"};
    case ERROR_ACCESS_DENIED:
    case ERROR_SHARING_VIOLATION:
      return {device, device + " is in use by another program. Close it, then choose the port again."};
    default:
      return {device,
              device + " cannot be opened with \"" + Trim(settings) + "\": " + win32::Reason(error) + "."};
  }
}

}  // namespace

std::string Win32SerialPort::DeviceName(int number) const {
  return number > 0 ? NameOf(number) : std::string();
}

void Win32SerialPort::SetPort(int number) {
  if (number != number_) awaited_ = 0;
  number_ = number;
}

bool Win32SerialPort::DeviceIsBack() const {
  return WaitsForDevice() && win32::SerialPortExists(win32::Wide(NameOf(awaited_)));
}

bool Win32SerialPort::Open() {
  line_.Close();
  trouble_.reset();
  if (number_ <= 0) {
    trouble_ = Fault{"", "No serial port is chosen."};
    return false;
  }
  const std::string device = NameOf(number_);
  const auto settings = ReadSettings(settings_);
  const unsigned long error = settings ? line_.Open(win32::Wide(device), *settings)
                                       : static_cast<unsigned long>(ERROR_INVALID_PARAMETER);
  if (error == 0) {
    awaited_ = 0;
    return true;
  }
  trouble_ = WhyClosed(device, settings_, error);
  if (!win32::SerialPortExists(win32::Wide(device))) awaited_ = number_;
  return false;
}

void Win32SerialPort::Close() {
  awaited_ = 0;
  line_.Close();
}

void Win32SerialPort::Lose(unsigned long error) {
  const std::string name = NameOf(number_);
  trouble_ = Fault{name, name + " was lost: " + win32::Reason(error) + "."};
  awaited_ = number_;
  line_.Close();
}

void Win32SerialPort::Write(std::string_view bytes) {
  if (!IsOpen()) return;
  if (const unsigned long error = line_.Write(bytes)) Lose(error);
}

std::string Win32SerialPort::ReadAll() {
  std::string bytes;
  if (!IsOpen()) return bytes;
  if (const unsigned long error = line_.Read(bytes)) Lose(error);
  return bytes;
}

}  // namespace kestrum
