#pragma once

#include <string>

#include "common/win32/handle.h"

namespace kestrum::test {

// This test program, started again in another role.
class Child {
 public:
  // `role` is what RunChild knows, with its argument behind a blank.
  explicit Child(const std::string& role);
  // Ends it as a crash does.
  ~Child() { Kill(); }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  void Tell(const std::string& line);
  void Kill();
  bool Runs() const;
  // Of a child that has ended.
  int ExitCode() const;

 private:
  win32::Handle process_;
  win32::Handle input_;
};

// The roles: "dde" a DDE server of Posdex|form1 ("set ITEM TEXT", "hang MS", "quit"), "window TITLE" a window
// that lives until it is closed, "iconic" ends at once with 10 and how its window is to be shown, "sleep" a
// process without window, "mark FOLDER" ends with 0 when it could mark the folder, else 1.
int RunChild(const std::string& role, const std::string& argument);

std::wstring ThisProgram();

// Closes the smallest visible window with this title: a box, where the main window has the same title.
bool CloseSmallest(const std::string& title);

// Whether a running program shows a window, e.g. "Kestrum.exe".
bool ShowsWindow(const std::string& program);

}  // namespace kestrum::test
