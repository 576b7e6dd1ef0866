#include "desktop/win32/started_process.h"

namespace kestrum {
namespace {

struct Windows {
  DWORD process = 0;
  int closed = 0;
};

BOOL CALLBACK CloseIfOfProcess(HWND window, LPARAM data) {
  auto* const windows = reinterpret_cast<Windows*>(data);
  DWORD process = 0;
  ::GetWindowThreadProcessId(window, &process);
  if (process != windows->process || ::IsWindowVisible(window) == 0) return TRUE;
  ::PostMessageW(window, WM_CLOSE, 0, 0);
  ++windows->closed;
  return TRUE;
}

}  // namespace

std::optional<unsigned long> StartProgram(const std::wstring& path, const std::wstring& folder,
                                          ShowStyle style) {
  STARTUPINFOW how{};
  how.cb = sizeof(how);
  how.dwFlags = STARTF_USESHOWWINDOW;
  how.wShowWindow = style == ShowStyle::kMinimisedWithFocus ? SW_SHOWMINIMIZED : SW_SHOWNOACTIVATE;
  PROCESS_INFORMATION started{};
  std::wstring command = L"\"" + path + L"\"";  // the system writes into it
  if (::CreateProcessW(path.c_str(), command.data(), nullptr, nullptr, FALSE, CREATE_DEFAULT_ERROR_MODE,
                       nullptr, folder.c_str(), &how, &started) == 0) {
    return std::nullopt;
  }
  const win32::Handle process(started.hProcess);
  const win32::Handle thread(started.hThread);
  if (style == ShowStyle::kMinimisedWithFocus) ::AllowSetForegroundWindow(started.dwProcessId);
  return started.dwProcessId;
}

void StartedProcess::Follow(unsigned long process) {
  number_ = process;
  process_.Reset(::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE, process));
}

bool StartedProcess::Runs() const {
  return process_.valid() && ::WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

void StartedProcess::AskToEnd() const {
  if (!Runs()) return;
  Windows windows{number_};
  ::EnumWindows(&CloseIfOfProcess, reinterpret_cast<LPARAM>(&windows));
  if (windows.closed == 0) ::TerminateProcess(process_.get(), 0);
}

}  // namespace kestrum
