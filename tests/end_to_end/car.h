#pragma once

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "gps_tap.h"
#include "log_blocks.h"
#include "support_process/car_config.h"
#include "support_process/child.h"
#include "support_process/daemons.h"
#include "support_process/files.h"
#include "support_process/waits.h"

namespace kestrum::end_to_end {

using process::CarSetup;
using process::ConfigText;

// What drivesim has written down about the rig's line.
class RigLog {
 public:
  explicit RigLog(std::string path) : path_(std::move(path)) {}
  // Commands received so far, e.g. "00 00 00 00 F7".
  std::vector<std::string> Commands() const;
  std::size_t Count(const std::string& command) const;
  // Whether a line ends so, e.g. "com1 vanished".
  bool Says(const std::string& end_of_line) const;

 private:
  std::string path_;
};

inline const std::string kReadMeter = "00 00 00 00 F7";   // FT840
inline const std::string kReadStatus = "00 00 00 00 E7";  // FT817 and its relatives

// A car with everything in it: an application folder with programs and configuration, a session bus, a
// simulated drive with its rig and its receiver.
class Car {
 public:
  // `programs` is the folder that the executables are built in.
  explicit Car(const std::string& programs);
  ~Car();
  Car(const Car&) = delete;
  Car& operator=(const Car&) = delete;

  std::string File(const std::string& name) const { return scratch_.File(name); }
  std::string Read(const std::string& name) const { return process::ReadFile(File(name)); }
  std::string config() const { return Read("Kestrum.cfg"); }
  std::vector<Block> Log() const { return ParseLog(Read("RSSI-GPS.log")); }
  void Configure(const CarSetup& setup) const;

  // The simulated drive; its receiver is tapped and can be read at the link "receiver".
  void Drive(const std::string& rig, int speedup = 1, const std::vector<std::string>& more_arguments = {});
  // False when the drive has not come to the end of its laps in that time.
  bool WaitForArrival(std::chrono::seconds patience) const;
  void TellDrive(const std::string& line) const { drive_->Tell(line); }
  GpsTap& tap() { return *tap_; }
  const RigLog& rig() const { return rig_; }

  using Environment = std::vector<std::pair<std::string, std::optional<std::string>>>;
  // Kestrum with a bus of this car, offscreen. The environment changes ours.
  std::unique_ptr<process::Child> StartKestrum(const std::vector<std::string>& arguments,
                                               const Environment& changes = {});
  // What Kestrum says on standard error goes from now on into errors.txt.
  void KeepErrors() { keep_errors_ = true; }
  std::unique_ptr<process::Child> StartReader();
  // Until the reader answers and the logger has had time to hear of it: only a reader that it knows of can be
  // closed by it.
  bool WaitForReader();
  // One of the reader's texts as the bus has it; empty when nobody answers.
  std::string AskReader(const std::string& item) const;
  std::vector<pid_t> Readers() const { return process::ProcessesOf(File("Posdex")); }
  // False when none has come for 20 s.
  bool WaitForCommands(const std::string& command, std::size_t count) const;
  // Everything that runs from the folder, the drive left out.
  bool NothingLeft() const;

 private:
  process::Call CallOf(const std::string& program, const std::vector<std::string>& arguments);

  bool keep_errors_ = false;
  process::Scratch scratch_;
  process::PrivateBus bus_;
  RigLog rig_;
  std::unique_ptr<process::Child> drive_;
  std::unique_ptr<GpsTap> tap_;
};

}  // namespace kestrum::end_to_end
