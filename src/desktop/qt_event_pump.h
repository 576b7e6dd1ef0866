#pragma once

#include <functional>

#include "platform/event_pump.h"
#include "platform/program.h"

namespace kestrum {

class QtEventPump : public EventPump {
 public:
  // `before_events` paints what the program has changed since the last event.
  QtEventPump(const Program& program, std::function<void()> before_events);

  void Pump() override;
  void PumpFor(std::chrono::milliseconds longest) override;

 private:
  const Program& program_;
  std::function<void()> before_events_;
};

}  // namespace kestrum
