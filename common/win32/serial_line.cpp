#include "common/win32/serial_line.h"

#include <array>

namespace kestrum::win32 {
namespace {

// A command of five bytes at 1200 baud takes 46 ms.
constexpr DWORD kLongestDrainMs = 200;
constexpr DWORD kLongestReadMs = 20;
constexpr DWORD kLongestCancelMs = 100;

}  // namespace

bool SerialPortExists(const std::wstring& name) {
  std::array<wchar_t, 512> target{};
  return ::QueryDosDeviceW(name.c_str(), target.data(), static_cast<DWORD>(target.size())) != 0;
}

DWORD SerialLine::Open(const std::wstring& name, const SerialSettings& settings) {
  Close();
  // The prefix names the device whatever its number is, and never a file.
  file_.Reset(::CreateFileW((L"\\\\.\\" + name).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                            OPEN_EXISTING, FILE_FLAG_OVERLAPPED, nullptr));
  if (!file_.valid()) return ::GetLastError();
  read_done_.Reset(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
  write_done_.Reset(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
  const DWORD error = read_done_.valid() && write_done_.valid() ? Apply(settings) : ::GetLastError();
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
  if (::SetCommTimeouts(file_.get(), &limits) == 0) return ::GetLastError();
  ::SetupComm(file_.get(), kMostBytes, kMostBytes);
  ::PurgeComm(file_.get(), PURGE_RXCLEAR | PURGE_TXCLEAR);
  return 0;
}

bool SerialLine::WriteIsPending() {
  if (writing_) writing_ = ::WaitForSingleObject(write_done_.get(), 0) == WAIT_TIMEOUT;
  return writing_;
}

void SerialLine::Settle(OVERLAPPED& deed, HANDLE done, DWORD longest_ms) {
  if (::WaitForSingleObject(done, longest_ms) == WAIT_OBJECT_0) return;
  ::CancelIoEx(file_.get(), &deed);
  ::WaitForSingleObject(done, kLongestCancelMs);
}

void SerialLine::DropPending() {
  if (!WriteIsPending()) return;
  ::PurgeComm(file_.get(), PURGE_TXABORT | PURGE_TXCLEAR);
  Settle(write_, write_done_.get(), 0);
  writing_ = false;
}

void SerialLine::Close() {
  if (!file_.valid()) return;
  if (WriteIsPending()) ::WaitForSingleObject(write_done_.get(), kLongestDrainMs);
  DropPending();
  file_.Reset();
}

DWORD SerialLine::Write(std::string_view bytes) {
  DropPending();
  outgoing_ = bytes;
  write_ = {};
  write_.hEvent = write_done_.get();
  ::ResetEvent(write_done_.get());
  if (::WriteFile(file_.get(), outgoing_.data(), static_cast<DWORD>(outgoing_.size()), nullptr, &write_) !=
      0) {
    return 0;
  }
  const DWORD error = ::GetLastError();
  writing_ = error == ERROR_IO_PENDING;
  return writing_ ? 0 : error;
}

DWORD SerialLine::Read(std::string& bytes) {
  // Clears what a disturbed line has reported, and hears of a device that has gone.
  DWORD line_errors = 0;
  COMSTAT state{};
  if (::ClearCommError(file_.get(), &line_errors, &state) == 0) return ::GetLastError();
  if (state.cbInQue == 0) return 0;
  read_ = {};
  read_.hEvent = read_done_.get();
  ::ResetEvent(read_done_.get());
  const DWORD wanted = state.cbInQue < kMostBytes ? state.cbInQue : kMostBytes;
  if (::ReadFile(file_.get(), incoming_.data(), wanted, nullptr, &read_) == 0) {
    if (::GetLastError() != ERROR_IO_PENDING) return ::GetLastError();
    // Comes at once, as the limits of the line say.
    Settle(read_, read_done_.get(), kLongestReadMs);
  }
  DWORD got = 0;
  if (::GetOverlappedResult(file_.get(), &read_, &got, FALSE) == 0) {
    const DWORD error = ::GetLastError();
    return error == ERROR_OPERATION_ABORTED || error == ERROR_IO_INCOMPLETE ? 0 : error;
  }
  bytes.append(incoming_.data(), got);
  return 0;
}

}  // namespace kestrum::win32
