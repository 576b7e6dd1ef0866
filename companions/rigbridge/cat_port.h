#pragma once

#include <filesystem>
#include <mutex>
#include <optional>
#include <thread>

#include "common/fault.h"
#include "rig_reader.h"
#include "set_side.h"
#include "sets/pty_port.h"
#include "sets/unique_fd.h"

namespace kestrum::rigbridge {

// The thread that serves Kestrum on the pseudo-terminal; it answers from what the reader has and never waits
// for the rig.
class CatPort {
 public:
  explicit CatPort(RigReader& reader);
  CatPort(const CatPort&) = delete;
  CatPort& operator=(const CatPort&) = delete;
  // The link is gone afterwards.
  ~CatPort() { Close(); }

  // Serves a set as these settings say at `link`, in place of the one before. A fault when the link cannot
  // be made.
  Outcome Open(const std::filesystem::path& link, const BridgeSettings& settings);
  void Close();
  bool IsOpen() const { return port_.has_value(); }
  // Seconds of the steady clock of the last command; nothing before the first.
  std::optional<double> LastCommandS() const;

 private:
  void Run();
  void Serve(double now_s);
  int PatienceMs(double now_s) const;
  bool WatchPort() const;

  RigReader& reader_;
  std::optional<sets::PtyPort> port_;
  std::optional<SetSide> set_;
  sets::UniqueFd poll_;
  sets::UniqueFd stop_;
  std::thread thread_;
  mutable std::mutex mutex_;  // of last_command_s_
  std::optional<double> last_command_s_;
};

}  // namespace kestrum::rigbridge
