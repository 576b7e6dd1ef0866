#pragma once

#include <systemd/sd-bus.h>

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QSocketNotifier>
#include <QTimer>
#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <string>

namespace kestrum {

// A line to the user's session bus that finds the bus, keeps it and finds it again. Nothing here ever waits
// for the bus, except WaitFor for its stated time; a bus that accepts the call and then is silent holds up
// nobody. No bus is ever started.
class SessionBus : public QObject {
  Q_OBJECT

 public:
  enum class State {
    kNoBus,       // none found, or it has gone; tried again every kRetryMs
    kConnecting,  // called; it has not welcomed us yet
    kReady
  };
  static constexpr int kRetryMs = 2000;

  SessionBus();
  ~SessionBus() override;
  SessionBus(const SessionBus&) = delete;
  SessionBus& operator=(const SessionBus&) = delete;

  // The bus's address: DBUS_SESSION_BUS_ADDRESS, else the socket "bus" in XDG_RUNTIME_DIR, without that
  // variable in /run/user/UID. Only sockets of this machine count, and any bus that answers there, also one
  // that was started anew. Empty when there is none.
  static QByteArray Address();

  // Begins to look for the bus; does nothing when that has begun.
  void Start();
  State state() const { return state_; }
  // For sd-bus's own calls while the state is kReady, else null. It ends with the state: objects, matches and
  // calls are made anew for each new one, without slots to keep.
  sd_bus* line() const { return state_ == State::kReady ? line_.get() : nullptr; }

  // Deals with what arrives until `done` holds; false when it does not within the time.
  bool WaitFor(const std::function<bool()>& done, std::chrono::milliseconds longest);
  // Gives up this line and, after the usual pause, tries again.
  void HangUp();

 Q_SIGNALS:
  // From the event loop or from WaitFor.
  void StateChanged(kestrum::SessionBus::State state);

 private:
  struct Closer {
    void operator()(sd_bus* line) const { sd_bus_close_unref(line); }
  };

  void Call();
  void Process();
  void FollowLine(bool more_waits);
  void StopWatching();
  void Lose(int retry_ms);
  void SetState(State state);

  State state_ = State::kNoBus;
  std::unique_ptr<sd_bus, Closer> line_;
  std::unique_ptr<QSocketNotifier> readable_;
  std::unique_ptr<QSocketNotifier> writable_;
  QTimer retry_;
  QTimer due_;            // what the line wants to do without anything arriving
  QElapsedTimer behind_;  // since more arrives than is dealt with
  bool processing_ = false;
  bool hang_up_ = false;  // asked for while a message was dealt with
};

// The texts of a message's next argument of type a{sv}; members that are no texts are left out. False when
// the argument is of another type.
bool ReadTexts(sd_bus_message* message, std::map<std::string, std::string>& texts);

}  // namespace kestrum
