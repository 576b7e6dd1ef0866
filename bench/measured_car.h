#pragma once

#include <memory>
#include <string>
#include <vector>

#include "support_process/child.h"
#include "support_process/daemons.h"
#include "support_process/files.h"

namespace kestrum::bench {

// A car to measure in: the folder that the programs are built in, a session bus of its own, a simulated drive
// and the GPS reader.
class MeasuredCar {
 public:
  // `with_gps` false: a receiver that has gone.
  explicit MeasuredCar(const std::string& rig_model, bool with_gps = true);

  // Folder of the executable that runs now: everything is built into one.
  static std::string ProgramFolder();
  // Before the program starts: these settings, with the set switched on.
  static void Configure(int rig, int interval_ms, bool by_distance);

  const std::string& bus() const { return bus_.address(); }
  std::string File(const std::string& name) const { return scratch_.File(name); }
  // Of this car alone: it holds the mark of the only instance.
  std::string runtime_folder() const { return File("run"); }
  // The rig of the simulated drive.
  std::string rig_port() const { return File("com1"); }
  // A line to the simulated drive.
  void TellDrive(const std::string& line) const { drive_->Tell(line); }
  // Another GPS reader, with a source of its own and no bus.
  std::unique_ptr<process::Child> StartReader(const std::string& source) const;
  // S-meter reads of the FT817 that the simulated rig has received.
  int StatusReads() const;
  std::unique_ptr<process::Child> StartKestrum(const std::string& rig_port,
                                               const std::vector<std::string>& arguments = {}) const;

 private:
  process::Call CallOf(const std::vector<std::string>& words) const;

  process::Scratch scratch_;
  process::PrivateBus bus_;
  std::unique_ptr<process::Child> drive_;
  std::unique_ptr<process::Child> reader_;
};

}  // namespace kestrum::bench
