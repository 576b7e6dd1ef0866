#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace kestrum::drivesim {

// One line for each thing that happens on the rig's line, flushed at once:
// seconds since the start (simulated, three decimals), "rx" a command, "tx" a reply, "--" neither, the bytes
// in hex, what they mean. Without a file it does nothing.
class CommandLog {
 public:
  // Empties the file. False when it cannot be written.
  bool Open(const std::string& path);
  void Received(double sim_s, std::span<const std::uint8_t> bytes, std::string_view meaning);
  void Sent(double sim_s, std::span<const std::uint8_t> bytes, std::string_view meaning);
  void Note(double sim_s, std::string_view text);

 private:
  void Line(double sim_s, const char* direction, const std::string& text);

  struct Close {
    void operator()(std::FILE* file) const { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Close> file_;
};

}  // namespace kestrum::drivesim
