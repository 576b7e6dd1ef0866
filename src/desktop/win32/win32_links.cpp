#include "desktop/win32/win32_links.h"

#include <utility>

#include "common/reader_contract.h"
#include "common/win32/wide_text.h"
#include "desktop/win32/named_window.h"

namespace kestrum {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

// "Posdex|form1": server and topic.
void Win32Links::LinkAutomatic(const std::string& topic, const std::string& item,
                               std::function<void(const std::string&)> on_text) {
  Server& server = servers_[topic];
  server.links[item] = std::move(on_text);
  if (!server.client) {
    const std::size_t bar = topic.find('|');
    // A topic without a server is one that never comes.
    if (bar == std::string::npos) return;
    // However many texts have come, they are handed over together.
    const auto on_news = [this] {
      if (!delivery_due_.exchange(true)) {
        QMetaObject::invokeMethod(this, &Win32Links::Deliver, Qt::QueuedConnection);
      }
    };
    server.client = std::make_unique<DdeClient>(topic.substr(0, bar), topic.substr(bar + 1), on_news);
  }
  server.client->Link(item);
}

void Win32Links::Unlink(const std::string& topic, const std::string& item) {
  const auto server = servers_.find(topic);
  if (server == servers_.end()) return;
  server->second.links.erase(item);
  if (server->second.client) server->second.client->Unlink(item);
}

void Win32Links::Deliver() {
  delivery_due_ = false;
  enter([this] {
    for (auto& [topic, server] : servers_) {
      if (!server.client) continue;
      for (const auto& [item, text] : server.client->TakeTexts()) {
        const auto link = server.links.find(item);
        if (link == server.links.end()) continue;
        // A copy: the handler may end the link.
        const auto on_text = link->second;
        on_text(text);
      }
    }
  });
}

bool Win32Links::ServerPresent(const std::string& topic) const {
  const auto server = servers_.find(topic);
  return server != servers_.end() && server->second.client && server->second.client->Connected();
}

std::optional<milliseconds> Win32Links::SilentFor(const std::string& topic) const {
  if (!ServerPresent(topic)) return std::nullopt;
  const auto heard = servers_.at(topic).client->LastHeard();
  if (!heard) return std::nullopt;
  return std::chrono::duration_cast<milliseconds>(steady_clock::now() - *heard);
}

bool Win32Links::Exists(const std::string& title) {
  if (WindowExists(win32::Wide(title))) return true;
  return title == reader::kTitle && started_.Runs();
}

void Win32Links::Close(const std::string& title) {
  const std::wstring name = win32::Wide(title);
  if (WindowExists(name)) {
    CloseWindowNamed(name);
  } else if (title == reader::kTitle) {
    started_.AskToEnd();
  }
}

void Win32Links::Started(const std::string& name, qint64 process) {
  if (name.find("Posdex") != std::string::npos) started_.Follow(static_cast<unsigned long>(process));
}

}  // namespace kestrum
