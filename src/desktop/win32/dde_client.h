#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <thread>

namespace kestrum {

// A DDE client (DDEML) of one server topic. It lives on a thread of its own: looking for a server asks every
// window of the desktop, and a question to a server that hangs waits, but neither ever holds up the window
// thread. All functions are for the window thread and return at once.
class DdeClient {
 public:
  using Texts = std::map<std::string, std::string>;

  // Hears on the client's thread that there is something to take, or that the server has come or gone.
  using OnNews = std::function<void()>;
  DdeClient(std::string service, std::string topic, OnNews on_news);
  // Ends the links and the thread.
  ~DdeClient();
  DdeClient(const DdeClient&) = delete;
  DdeClient& operator=(const DdeClient&) = delete;

  // An automatic link: the present text and every change of it arrive until Unlink.
  void Link(const std::string& item);
  void Unlink(const std::string& item);
  // The newest text of each item that has changed since the last call.
  Texts TakeTexts();
  bool Connected() const;
  // When the server has answered or told something last; nothing while it is not there. A silent server is
  // asked for a text every kProbeEvery.
  std::optional<std::chrono::steady_clock::time_point> LastHeard() const;

  static constexpr std::chrono::milliseconds kProbeEvery{2000};
  // Between two attempts to find the server.
  static constexpr std::chrono::milliseconds kLookEvery{1000};

 private:
  struct Shared;
  class Talk;

  std::shared_ptr<Shared> shared_;
  std::thread thread_;
};

}  // namespace kestrum
