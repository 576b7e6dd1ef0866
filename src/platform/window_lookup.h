#pragma once

#include <string>

namespace kestrum {

// Main windows of other programs, found by their exact title.
class WindowLookup {
 public:
  virtual ~WindowLookup() = default;

  virtual bool Exists(const std::string& title) = 0;
  // Sends the close message and does not wait. A window that is not there is no error.
  virtual void Close(const std::string& title) = 0;
};

}  // namespace kestrum
