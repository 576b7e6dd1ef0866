#pragma once

#include <QByteArray>

namespace kestrum {

// Finds out without ever waiting whether a session bus answers: opens its socket and says hello. Connecting
// to a bus that hangs would freeze the window.
class BusProbe {
 public:
  enum class State { kWaiting, kAlive, kDead };

  BusProbe() = default;
  ~BusProbe();
  BusProbe(const BusProbe&) = delete;
  BusProbe& operator=(const BusProbe&) = delete;

  // The address of the session bus; empty when there is none.
  static QByteArray SessionAddress();

  State Start(const QByteArray& address);
  // Looks at the socket once; called when it can be read.
  State Advance();
  // Waits for the answer for at most `longest_ms`.
  State WaitFor(int longest_ms);
  // The socket while the state is kWaiting, else -1.
  int socket() const { return socket_; }

 private:
  State Finish(State state);

  int socket_ = -1;
  QByteArray answer_;
};

}  // namespace kestrum
