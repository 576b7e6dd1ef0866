#pragma once

namespace kestrum {

class Beeper {
 public:
  virtual ~Beeper() = default;
  // The desktop's beep; does not wait for its end.
  virtual void Beep() = 0;
};

}  // namespace kestrum
