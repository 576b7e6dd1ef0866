#pragma once

#include <filesystem>
#include <span>
#include <string>

#include "common/fault.h"
#include "sets/bytes.h"
#include "sets/unique_fd.h"

namespace kestrum::sets {

// A serial port for others to open: a pseudo-terminal in raw mode behind a link of a chosen name.
//
// The client may come and go. While nobody has the port open, what is written to it is lost, as on a wire;
// and what one client left unread is not shown to the next.
class PtyPort {
 public:
  explicit PtyPort(std::filesystem::path link) : link_(std::move(link)) {}
  PtyPort(const PtyPort&) = delete;
  PtyPort& operator=(const PtyPort&) = delete;
  ~PtyPort() { Close(); }

  // Makes the pseudo-terminal and the link, in place of a link to a pseudo-terminal that may be there; a
  // file or a link to something else is its owner's and left alone.
  Outcome Open();
  // The client sees the line hang up; the link goes, unless it is somebody else's by now.
  void Close();
  bool IsOpen() const { return static_cast<bool>(master_); }

  // To wait on, edge triggered: for data, and for the hang-up that a leaving client makes.
  int Fd() const { return master_.Get(); }
  // Everything that has arrived.
  Bytes Read();
  // Never blocks; what does not fit is lost.
  void Write(std::span<const std::uint8_t> bytes);
  bool ClientPresent() const;
  // After a hang-up: empties what the client left. True when the terminal had to be replaced by a new one,
  // because a client that was killed had reserved the old one for itself; a fault when that failed.
  Result<bool> TidyAfterClient();

  const std::filesystem::path& Link() const { return link_; }
  const std::string& Device() const { return device_; }

 private:
  Outcome OpenTerminal();
  Outcome MakeLink() const;

  std::filesystem::path link_;
  std::string device_;
  UniqueFd master_;
  bool used_ = false;  // since the last tidying
};

}  // namespace kestrum::sets
