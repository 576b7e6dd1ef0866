#pragma once

#include <QObject>
#include <atomic>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "desktop/platform_factory.h"
#include "desktop/win32/dde_client.h"
#include "desktop/win32/started_process.h"

namespace kestrum {

// The GPS reader's texts over DDE, and its window by its title.
class Win32Links : public QObject, public LinksAndWindows {
 public:
  void LinkAutomatic(const std::string& topic, const std::string& item,
                     std::function<void(const std::string&)> on_text) override;
  void Unlink(const std::string& topic, const std::string& item) override;
  bool ServerPresent(const std::string& topic) const override;
  std::optional<std::chrono::milliseconds> SilentFor(const std::string& topic) const override;
  // A reader that was started by us and has no window yet exists too: it can be closed.
  bool Exists(const std::string& title) override;
  void Close(const std::string& title) override;
  void Started(const std::string& name, qint64 process) override;

 private:
  struct Server {
    std::map<std::string, std::function<void(const std::string&)>> links;
    std::unique_ptr<DdeClient> client;
  };

  void Deliver();

  StartedProcess started_;
  std::atomic<bool> delivery_due_ = false;
  std::map<std::string, Server> servers_;  // by topic
};

}  // namespace kestrum
