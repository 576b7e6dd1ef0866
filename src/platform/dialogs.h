#pragma once

#include <string>

namespace kestrum {

enum class Icon { kNone, kInformation, kExclamation, kCritical, kQuestion };

// Boxes. While a modal one is open, timers and links go on. Once the program has ended every call returns at
// once as if cancelled.
class Dialogs {
 public:
  virtual ~Dialogs() = default;

  virtual void Show(const std::string& title, const std::string& text, Icon icon) = 0;
  // True for Yes. No is the default button and the answer when the box is closed.
  virtual bool AskYesNo(const std::string& title, const std::string& text, Icon icon) = 0;
  // Opens a box and returns at once; the program goes on while it stands there. A notice that is still open
  // takes the new text instead of opening a second box.
  virtual void Notify(const std::string& title, const std::string& text, Icon icon) = 0;
  // What was typed; empty when cancelled.
  virtual std::string AskText(const std::string& title, const std::string& prompt,
                              const std::string& proposal) = 0;

  // Nobody is there to answer any more: an open box is cancelled, every later call returns at once as
  // cancelled.
  virtual void Dismiss() = 0;
};

}  // namespace kestrum
