#pragma once

#include <functional>

#include "platform/event_pump.h"
#include "platform/program.h"

namespace kestrum {

class QtEventPump : public EventPump {
 public:
  // `before_pump` sets the timers as the program has left them; painting waits until the handler is through,
  // so a cycle paints once. `before_wait` paints too, since a wait may last.
  QtEventPump(const Program& program, std::function<void()> before_pump, std::function<void()> before_wait);
  // Told that the user's deeds wait now, whatever way they come, and when they may run again.
  std::function<void(bool)> deeds_wait = [](bool) {};

  void Pump() override;
  void PumpFor(std::chrono::milliseconds longest) override;

 private:
  const Program& program_;
  std::function<void()> before_pump_;
  std::function<void()> before_wait_;
};

}  // namespace kestrum
