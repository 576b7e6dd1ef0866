#pragma once

#include <string>
#include <vector>

#include "sets/bytes.h"
#include "support_process/child.h"
#include "support_process/client.h"
#include "support_process/files.h"
#include "support_process/waits.h"

namespace kestrum::rigbridge {

// The program without a window, installed in a folder where its link and rigbridge.conf are.
class BridgeProcess {
 public:
  BridgeProcess(const std::string& folder, const std::vector<std::string>& arguments);

  process::Child& Program() { return program_; }
  // Reads what it tells until a line begins so; false when it does not come.
  bool Says(const std::string& beginning);

 private:
  process::Child program_;
};

// Kestrum's end of the port.
class Port : public process::Client {
 public:
  explicit Port(const std::string& path);
  // The reply as Kestrum sees it, 50 ms after the command.
  sets::Bytes Ask(const sets::Bytes& command) const;
};

inline const sets::Bytes kReadMeter = {0, 0, 0, 0, 0xF7};

// rigctl of Debian's libhamlib-utils; its output without the last line end.
std::string Rigctl(const std::string& host, const std::vector<std::string>& words);

}  // namespace kestrum::rigbridge
