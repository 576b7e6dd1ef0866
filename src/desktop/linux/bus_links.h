#pragma once

#include <QObject>
#include <QTimer>
#include <chrono>
#include <functional>
#include <map>
#include <optional>
#include <string>

#include "common/linux/session_bus.h"
#include "desktop/linux/started_process.h"
#include "desktop/platform_factory.h"

namespace kestrum {

// The GPS reader's texts over the session bus. Everything is asynchronous, with one exception: whether the
// reader runs has to be known on the spot at start-up, and that question waits for at most 150 ms.
class BusLinks : public QObject, public LinksAndWindows {
  Q_OBJECT

 public:
  BusLinks();
  ~BusLinks() override;
  BusLinks(const BusLinks&) = delete;
  BusLinks& operator=(const BusLinks&) = delete;

  void LinkAutomatic(const std::string& topic, const std::string& item,
                     std::function<void(const std::string&)> on_text) override;
  void Unlink(const std::string& topic, const std::string& item) override;
  bool ServerPresent(const std::string& topic) const override;
  std::optional<std::chrono::milliseconds> SilentFor(const std::string& topic) const override;
  // A reader that was started by us and has not come to the bus exists too: it can be closed.
  bool Exists(const std::string& title) override;
  void Close(const std::string& title) override;
  void Started(const std::string& name, qint64 process) override;

 private:
  using Texts = std::map<std::string, std::string>;

  void OnState(SessionBus::State state);
  void Subscribe();
  void FetchAll();
  void TakeAll(sd_bus_message* reply);
  void TakeChange(sd_bus_message* signal);
  void TakeOwner(sd_bus_message* signal);
  void Forget();
  bool IsReader(sd_bus_message* message) const;
  void Gather(const Texts& texts);
  void Deliver();

  std::map<std::string, std::function<void(const std::string&)>> links_;
  Texts arrived_;  // the newest of each item, until the window's thread has its turn
  QTimer deliver_;
  std::string owner_;  // unique name of the reader; empty when it is not there
  std::string title_;
  std::optional<std::chrono::steady_clock::time_point> last_heard_;
  StartedProcess started_;
  int fetches_ = 0;     // outstanding
  bool known_ = false;  // whether the reader is there has been found out
  bool asked_ = false;  // the question of start-up has had its time
  bool quit_sent_ = false;
  SessionBus bus_;
};

}  // namespace kestrum
