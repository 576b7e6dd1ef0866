#pragma once

#include <chrono>

namespace kestrum {

// Runs waiting window events from inside a handler. Anything may happen in it, the end of the program
// included: whoever pumps asks Program::Ended afterwards.
class EventPump {
 public:
  virtual ~EventPump() = default;

  // Runs what is waiting and returns: timers, links, painting, a request to end. What the user does waits
  // until the present handler is through.
  virtual void Pump() = 0;
  // Runs events as they come, the user's included, for at most `longest`, without spinning the processor.
  virtual void PumpFor(std::chrono::milliseconds longest) = 0;
};

}  // namespace kestrum
