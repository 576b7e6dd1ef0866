#include "child.h"

#include <windows.h>

#include <array>
#include <iostream>
#include <sstream>
#include <string_view>
#include <thread>

#include "common/win32/wide_text.h"
#include "dde_server.h"
#include "desktop/win32/instance_mark.h"
#include "support_process/waits.h"

namespace kestrum::test {
namespace {

constexpr UINT kLineCame = WM_APP + 1;

HWND MakeWindow(const std::string& title) {
  return ::CreateWindowExW(0, L"STATIC", win32::Wide(title).c_str(), WS_OVERLAPPEDWINDOW, 50, 50, 200, 100,
                           nullptr, nullptr, ::GetModuleHandleW(nullptr), nullptr);
}

void DispatchUntilQuit(const std::function<void(const std::string&)>& on_line) {
  MSG message{};
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    if (message.hwnd == nullptr && message.message == kLineCame) {
      auto* const line = reinterpret_cast<std::string*>(message.lParam);
      on_line(*line);
      delete line;
    }
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

int ServeDde() {
  posdex::DdeServer server("Posdex", "form1",
                           {{"lblLat1", "5157.0000N"},
                            {"lblLong1", "00532.0000E"},
                            {"lblAlt1", "25"},
                            {"lblTime1", "12:00:00"},
                            {"lblSpeed1", "36.5"},
                            {"lblCourse1", "180.0"}});
  server.on_clients = [](int clients) { std::cout << "clients " << clients << std::endl; };
  if (!server.Start()) return 1;
  const DWORD window_thread = ::GetCurrentThreadId();
  MSG message{};
  ::PeekMessageW(&message, nullptr, 0, 0, PM_NOREMOVE);  // from now on there is a queue
  std::thread([window_thread] {
    std::string line;
    while (std::getline(std::cin, line)) {
      ::PostThreadMessageW(window_thread, kLineCame, 0, reinterpret_cast<LPARAM>(new std::string(line)));
    }
  }).detach();
  DispatchUntilQuit([&server](const std::string& line) {
    std::istringstream words(line);
    std::string deed;
    std::string name;
    std::string text;
    words >> deed >> name >> text;
    if (deed == "set") server.SetText(name, text);
    if (deed == "hang") process::LetRunFor(std::chrono::milliseconds(std::stoul(name)));
    if (deed == "quit") ::PostQuitMessage(0);
  });
  return 0;
}

int ShowWindowUntilClosed(const std::string& title) {
  const HWND window = MakeWindow(title);
  ::ShowWindow(window, SW_SHOWNOACTIVATE);
  MSG message{};
  while (::IsWindow(window) != 0 && ::GetMessageW(&message, nullptr, 0, 0) > 0) ::DispatchMessageW(&message);
  return 7;
}

int TellWhetherIconic() {
  STARTUPINFOW how{};
  how.cb = sizeof(how);
  ::GetStartupInfoW(&how);
  return (how.dwFlags & STARTF_USESHOWWINDOW) != 0 ? 10 + how.wShowWindow : 0;
}

}  // namespace

int RunChild(const std::string& role, const std::string& argument) {
  if (role == "dde") {
    // At once: the thread that reads the lines would hold the end up.
    const int code = ServeDde();
    ::TerminateProcess(::GetCurrentProcess(), static_cast<UINT>(code));
  }
  if (role == "window") return ShowWindowUntilClosed(argument);
  if (role == "iconic") return TellWhetherIconic();
  if (role == "mark") return MarkInstance(win32::Wide(argument)) ? 0 : 1;
  if (role == "sleep") process::LetRunFor(std::chrono::minutes(1));
  return 99;
}

std::wstring ThisProgram() {
  std::array<wchar_t, 1024> room{};
  const DWORD length = ::GetModuleFileNameW(nullptr, room.data(), static_cast<DWORD>(room.size()));
  return {room.data(), length};
}

Child::Child(const std::string& role) {
  SECURITY_ATTRIBUTES inherited{sizeof(SECURITY_ATTRIBUTES), nullptr, TRUE};
  HANDLE read_end = nullptr;
  HANDLE write_end = nullptr;
  ::CreatePipe(&read_end, &write_end, &inherited, 0);
  const win32::Handle theirs(read_end);
  input_.Reset(write_end);
  ::SetHandleInformation(write_end, HANDLE_FLAG_INHERIT, 0);
  STARTUPINFOW how{};
  how.cb = sizeof(how);
  how.dwFlags = STARTF_USESTDHANDLES;
  how.hStdInput = read_end;
  how.hStdOutput = ::GetStdHandle(STD_OUTPUT_HANDLE);
  how.hStdError = ::GetStdHandle(STD_ERROR_HANDLE);
  PROCESS_INFORMATION started{};
  std::wstring command = L"\"" + ThisProgram() + L"\" --child " + win32::Wide(role);
  if (::CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &how,
                       &started) != 0) {
    process_.Reset(started.hProcess);
    ::CloseHandle(started.hThread);
  }
}

void Child::Tell(const std::string& line) {
  const std::string text = line + "\n";
  DWORD written = 0;
  ::WriteFile(input_.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
}

void Child::Kill() {
  if (!process_.valid()) return;
  ::TerminateProcess(process_.get(), 42);
  ::WaitForSingleObject(process_.get(), INFINITE);
}

bool Child::Runs() const {
  return process_.valid() && ::WaitForSingleObject(process_.get(), 0) == WAIT_TIMEOUT;
}

int Child::ExitCode() const {
  DWORD code = 0;
  ::GetExitCodeProcess(process_.get(), &code);
  return static_cast<int>(code);
}

bool CloseSmallest(const std::string& title) {
  struct Search {
    std::wstring title;
    HWND found = nullptr;
    LONG area = 0;
  } search{win32::Wide(title)};
  const WNDENUMPROC look = [](HWND window, LPARAM data) -> BOOL {
    auto* const wanted = reinterpret_cast<Search*>(data);
    std::array<wchar_t, 256> text{};
    RECT frame{};
    ::GetWindowTextW(window, text.data(), static_cast<int>(text.size()));
    if (::IsWindowVisible(window) == 0 || wanted->title != text.data()) return TRUE;
    ::GetWindowRect(window, &frame);
    const LONG area = (frame.right - frame.left) * (frame.bottom - frame.top);
    if (wanted->found == nullptr || area < wanted->area) {
      wanted->found = window;
      wanted->area = area;
    }
    return TRUE;
  };
  ::EnumWindows(look, reinterpret_cast<LPARAM>(&search));
  return search.found != nullptr && ::PostMessageW(search.found, WM_CLOSE, 0, 0) != 0;
}

bool ShowsWindow(const std::string& program) {
  struct Search {
    std::wstring ending;
    bool found = false;
  } search{L"\\" + win32::Wide(program)};
  const WNDENUMPROC look = [](HWND window, LPARAM data) -> BOOL {
    auto* const wanted = reinterpret_cast<Search*>(data);
    if (::IsWindowVisible(window) == 0) return TRUE;
    DWORD id = 0;
    ::GetWindowThreadProcessId(window, &id);
    const win32::Handle process(::OpenProcess(PROCESS_QUERY_LIMITED_INFORMATION, FALSE, id));
    std::array<wchar_t, 1024> path{};
    auto length = static_cast<DWORD>(path.size());
    if (::QueryFullProcessImageNameW(process.get(), 0, path.data(), &length) == 0) return TRUE;
    wanted->found = std::wstring_view(path.data(), length).ends_with(wanted->ending);
    return wanted->found ? FALSE : TRUE;
  };
  ::EnumWindows(look, reinterpret_cast<LPARAM>(&search));
  return search.found;
}

}  // namespace kestrum::test
