#include "common/win32/serial_line.h"

#include <algorithm>
#include <array>
#include <utility>

namespace kestrum::win32 {
namespace {

// A command of five bytes at 1200 baud takes 46 ms. A line that has not taken it by then takes nothing.
constexpr DWORD kLongestWriteMs = 200;
// A driver that does not hand over what it has must not hold the window.
constexpr DWORD kLongestReadMs = 50;
// More than this on the way out means that the line takes nothing.
constexpr std::size_t kMostOutgoing = 4096;

Handle NewEvent() {
  return Handle(::CreateEventW(nullptr, TRUE, FALSE, nullptr));
}

// What an operation that was begun has come to; it is waited for. One that has run out of its time, or was
// ended by us, has not failed: `count` tells how far it came.
DWORD ResultOf(HANDLE file, OVERLAPPED& state, DWORD& count) {
  count = 0;
  if (::GetOverlappedResult(file, &state, &count, TRUE) != 0) return 0;
  const DWORD error = ::GetLastError();
  const bool ran_out = error == ERROR_TIMEOUT || error == ERROR_SEM_TIMEOUT || error == WAIT_TIMEOUT ||
                       error == ERROR_OPERATION_ABORTED;
  return ran_out ? 0 : error;
}

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
  if (!outgoing_.empty()) {
    ::WaitForSingleObject(outgoing_.back()->done.get(), kLongestWriteMs);
    Drop();
  }
  file_.Reset();
}

SerialLine::Outgoing::Outgoing(std::string_view text) : bytes(text), done(NewEvent()) {
  state.hEvent = done.get();
}

DWORD SerialLine::Write(std::string_view bytes) {
  if (const DWORD error = Reap()) return error;
  if (Waiting() + bytes.size() > kMostOutgoing) Drop();
  auto outgoing = std::make_unique<Outgoing>(bytes);
  if (!outgoing->done.valid()) return ::GetLastError();
  const auto length = static_cast<DWORD>(outgoing->bytes.size());
  if (::WriteFile(file_.get(), outgoing->bytes.data(), length, nullptr, &outgoing->state) == 0) {
    const DWORD error = ::GetLastError();
    if (error != ERROR_IO_PENDING) return error;
  }
  outgoing_.push_back(std::move(outgoing));
  return Reap();
}

std::size_t SerialLine::Waiting() const {
  std::size_t bytes = 0;
  for (const auto& outgoing : outgoing_) bytes += outgoing->bytes.size();
  return bytes;
}

DWORD SerialLine::Reap() {
  while (!outgoing_.empty()) {
    Outgoing& first = *outgoing_.front();
    if (::WaitForSingleObject(first.done.get(), 0) == WAIT_TIMEOUT) return 0;
    DWORD written = 0;
    const DWORD error = ResultOf(file_.get(), first.state, written);
    const bool refused = written < first.bytes.size();
    outgoing_.pop_front();
    if (error != 0) return error;
    if (refused) Drop();
  }
  return 0;
}

// The rest of a command that has begun would be taken for the beginning of the next one.
void SerialLine::Drop() {
  ::CancelIoEx(file_.get(), nullptr);
  ::PurgeComm(file_.get(), PURGE_TXABORT | PURGE_TXCLEAR);
  for (const auto& outgoing : outgoing_) {
    DWORD written = 0;
    ResultOf(file_.get(), outgoing->state, written);
  }
  outgoing_.clear();
}

DWORD SerialLine::Read(std::string& bytes) {
  if (const DWORD error = Reap()) return error;
  // Clears what a disturbed line has reported, and hears of a device that has gone.
  DWORD line_errors = 0;
  COMSTAT line{};
  if (::ClearCommError(file_.get(), &line_errors, &line) == 0) return ::GetLastError();
  // Only what is there is asked for: such a read is over at once whatever the driver thinks of time limits.
  if (line.cbInQue == 0) return 0;
  std::array<char, kMostBytes> room{};
  const DWORD length = std::min(line.cbInQue, kMostBytes);
  const Handle done = NewEvent();
  OVERLAPPED state{};
  state.hEvent = done.get();
  if (::ReadFile(file_.get(), room.data(), length, nullptr, &state) == 0) {
    const DWORD error = ::GetLastError();
    if (error != ERROR_IO_PENDING) return error;
  }
  if (::WaitForSingleObject(done.get(), kLongestReadMs) == WAIT_TIMEOUT) ::CancelIoEx(file_.get(), &state);
  DWORD got = 0;
  const DWORD error = ResultOf(file_.get(), state, got);
  bytes.append(room.data(), got);
  return error;
}

}  // namespace kestrum::win32
