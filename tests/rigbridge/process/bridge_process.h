#pragma once

#include <string>
#include <vector>

#include "sets/bytes.h"
#include "sets/unique_fd.h"
#include "support_process/child.h"
#include "support_process/files.h"

namespace kestrum::rigbridge {

/// The program without a window, installed in a folder where its link and rigbridge.conf are.
class BridgeProcess {
 public:
  BridgeProcess(const std::string& folder, const std::vector<std::string>& arguments);

  process::Child& Program() { return program_; }
  /// Reads what it tells until a line begins so; false when it does not come.
  bool Says(const std::string& beginning);

 private:
  process::Child program_;
};

/// Kestrum's end of the port.
class Port {
 public:
  explicit Port(const std::string& path);
  void Send(const sets::Bytes& bytes) const;
  /// The reply as Kestrum sees it, 50 ms after the command.
  sets::Bytes Ask(const sets::Bytes& command) const;

 private:
  sets::UniqueFd fd_;
};

inline const sets::Bytes kReadMeter = {0, 0, 0, 0, 0xF7};

/// rigctl of Debian's libhamlib-utils; its output without the last line end.
std::string Rigctl(const std::string& host, const std::vector<std::string>& words);

}  // namespace kestrum::rigbridge
