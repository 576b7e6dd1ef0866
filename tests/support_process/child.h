#pragma once

#include <sys/types.h>

#include <chrono>
#include <filesystem>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "support_process/waits.h"

namespace kestrum::process {

// How a program is started.
struct Call {
  std::vector<std::string> words;  // path of the executable and its arguments
  // Variables to set; without a value they are taken away.
  std::vector<std::pair<std::string, std::optional<std::string>>> environment;
  std::string folder;          // to start in; empty for this one
  bool reads_from_us = false;  // else its standard input is empty
  std::string errors = {};     // file that takes its standard error; empty for ours
  bool tells_errors = false;   // its standard error comes with its standard output
};

// A program that is running. Killed at the end if it has not ended by itself.
class Child {
 public:
  explicit Child(const Call& call);
  ~Child();
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  pid_t pid() const { return pid_; }
  bool Running();
  void Signal(int number) const;
  // The next line of its standard output, waited for at most 20 s.
  std::string ReadLine() const;
  // The rest of its standard output, until it closes that.
  std::string ReadAll() const;
  // A line to its standard input.
  void Tell(const std::string& line) const;
  void CloseInput();
  // Exit code; -1 when it has not ended within the time, minus the signal's number when one killed it.
  int Wait(std::chrono::milliseconds patience = kPatience);
  void Kill();

 private:
  void Reap(int options);

  pid_t pid_ = -1;
  int input_ = -1;
  int output_ = -1;
  std::optional<int> outcome_;
};

// How a program went that has run to its end.
struct Ending {
  int code = -1;       // as Child::Wait has it
  std::string output;  // standard output and error
};
Ending Run(Call call);

// Processor time of a process so far; zero when there is none.
std::chrono::milliseconds ProcessorTime(pid_t pid);
// Whether the process handles the signal itself.
bool Handles(pid_t pid, int number);
// The processes whose executable is this file.
std::vector<pid_t> ProcessesOf(const std::filesystem::path& executable);

}  // namespace kestrum::process
