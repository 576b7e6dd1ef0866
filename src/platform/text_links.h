#pragma once

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace kestrum {

// Live links to named text items of another program. Texts arrive as window events, never from inside a call.
class TextLinks {
 public:
  virtual ~TextLinks() = default;

  // From now on `on_text` gets the item's present text and every change of it. `topic` names server and
  // topic, e.g. "Posdex|form1". A server that is missing, dies or comes back is no error: nothing arrives
  // meanwhile.
  virtual void LinkAutomatic(const std::string& topic, const std::string& item,
                             std::function<void(const std::string&)> on_text) = 0;
  // Ends the link to the item; its handler is not called again.
  virtual void Unlink(const std::string& topic, const std::string& item) = 0;
  // Whether the server is there as far as is known now; never waits. While it is not, the texts received last
  // stand still.
  virtual bool ServerPresent(const std::string& topic) const = 0;
  // Time since the server was heard last, by a text or by the sign of life that it gives every 2 s; nothing
  // while it is not there. A server that has been silent for 5 s stands still. Never waits.
  virtual std::optional<std::chrono::milliseconds> SilentFor(const std::string& topic) const = 0;
};

}  // namespace kestrum
