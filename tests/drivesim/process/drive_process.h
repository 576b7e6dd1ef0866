#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "support_process/child.h"
#include "support_process/client.h"
#include "support_process/files.h"
#include "support_process/waits.h"

namespace kestrum::drivesim {

using process::Bytes;
using process::Client;
using process::Ending;
using process::Eventually;
using process::ReadFile;
using process::Scratch;

// The program, running with `--dir` of its own; killed at the end if it has not ended by itself.
class DriveProcess {
 public:
  explicit DriveProcess(const std::vector<std::string>& arguments);

  std::filesystem::path File(const char* name) const { return scratch_.path() / name; }
  // The first line of the standard output.
  const std::string& ReadyLine() const { return ready_; }
  // A line to its standard input.
  void Tell(const std::string& line) const { program_.Tell(line); }
  void CloseInput() { program_.CloseInput(); }
  void Signal(int number) const { program_.Signal(number); }
  bool Running() { return program_.Running(); }
  // Exit code as Child::Wait has it.
  int Wait() { return program_.Wait(); }

 private:
  Scratch scratch_;
  process::Child program_;
  std::string ready_;
};

// Runs a shell command to its end.
Ending RunShell(const std::string& command);

}  // namespace kestrum::drivesim
