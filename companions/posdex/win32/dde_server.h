#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>

namespace kestrum::posdex {

// A DDE server (DDEML) of one service and topic: named 8-bit texts that clients ask for or link to. Lives on
// the thread that makes it, whose messages have to be dispatched.
class DdeServer {
 public:
  // `texts` are all items, with their first texts. Letter case does not count in any of the names.
  DdeServer(std::string service, std::string topic, std::map<std::string, std::string> texts);
  ~DdeServer();
  DdeServer(const DdeServer&) = delete;
  DdeServer& operator=(const DdeServer&) = delete;

  // False when the system does not let it.
  bool Start();
  // Every client that is linked to the item hears of a change.
  void SetText(const std::string& item, const std::string& text);

  // How many clients there are has changed.
  std::function<void(int clients)> on_clients = [](int) {};

 private:
  class Talk;
  std::unique_ptr<Talk> talk_;
};

}  // namespace kestrum::posdex
