#include "common/win32/serial_line.h"

#include <array>

namespace kestrum::win32 {
namespace {

// A command of five bytes at 1200 baud takes 46 ms.
constexpr DWORD kLongestWriteMs = 200;

}  // namespace

bool SerialPortExists(const std::wstring& name) {
  std::array<wchar_t, 512> target{};
  return ::QueryDosDeviceW(name.c_str(), target.data(), static_cast<DWORD>(target.size())) != 0;
}

DWORD SerialLine::Open(const std::wstring& name, const SerialSettings& settings) {
  Close();
  // The prefix names the device whatever its number is, and never a file.
  file_.Reset(::CreateFileW((L"\\\\.\\" + name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                            OPEN_EXISTING, 0, nullptr));
  if (!file_.valid()) return ::GetLastError();
  const DWORD error = Apply(settings);
  if (error != 0) file_.Reset();
  return error;
}

DWORD SerialLine::Apply(const SerialSettings& settings) {
  DCB line{};
  line.DCBlength = sizeof(line);
  if (::GetCommState(file_.get(), &line) == 0) return ::GetLastError();
  line.BaudRate = settings.baud;
  line.ByteSize = settings.data_bits;
  line.Parity = settings.parity == 'E' ? EVENPARITY : settings.parity == 'O' ? ODDPARITY : NOPARITY;
  line.StopBits = settings.two_stop_bits ? TWOSTOPBITS : ONESTOPBIT;
  line.fBinary = TRUE;
  line.fParity = settings.parity == 'N' ? FALSE : TRUE;
  line.fOutxCtsFlow = FALSE;
  line.fOutxDsrFlow = FALSE;
  line.fDsrSensitivity = FALSE;
  line.fOutX = FALSE;
  line.fInX = FALSE;
  line.fErrorChar = FALSE;
  line.fNull = FALSE;
  line.fAbortOnError = FALSE;
  // Level converters in CAT cables live on these two.
  line.fDtrControl = DTR_CONTROL_ENABLE;
  line.fRtsControl = RTS_CONTROL_ENABLE;
  if (::SetCommState(file_.get(), &line) == 0) return ::GetLastError();
  // A read returns at once with what is there.
  COMMTIMEOUTS limits{};
  limits.ReadIntervalTimeout = MAXDWORD;
  limits.WriteTotalTimeoutConstant = kLongestWriteMs;
  if (::SetCommTimeouts(file_.get(), &limits) == 0) return ::GetLastError();
  ::SetupComm(file_.get(), kMostBytes, kMostBytes);
  ::PurgeComm(file_.get(), PURGE_RXCLEAR | PURGE_TXCLEAR);
  return 0;
}

void SerialLine::Close() {
  file_.Reset();
}

DWORD SerialLine::Write(std::string_view bytes) {
  DWORD written = 0;
  if (::WriteFile(file_.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr) == 0) {
    return ::GetLastError();
  }
  // The rest of a command that has begun would be taken for the beginning of the next one.
  if (written < bytes.size()) ::PurgeComm(file_.get(), PURGE_TXABORT | PURGE_TXCLEAR);
  return 0;
}

DWORD SerialLine::Read(std::string& bytes) {
  // Clears what a disturbed line has reported, and hears of a device that has gone.
  DWORD line_errors = 0;
  COMSTAT state{};
  if (::ClearCommError(file_.get(), &line_errors, &state) == 0) return ::GetLastError();
  std::array<char, kMostBytes> room{};
  DWORD got = 0;
  if (::ReadFile(file_.get(), room.data(), kMostBytes, &got, nullptr) == 0) return ::GetLastError();
  bytes.append(room.data(), got);
  return 0;
}

}  // namespace kestrum::win32
