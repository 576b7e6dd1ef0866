#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "command_log.h"
#include "control.h"
#include "options.h"
#include "rig_line.h"
#include "sets/pty_port.h"
#include "sets/unique_fd.h"
#include "signal_model.h"

namespace kestrum::drivesim {

// The whole drive: two ports, one thread, asleep until something is due.
class Simulation {
 public:
  explicit Simulation(const Options& options);
  Simulation(const Simulation&) = delete;
  Simulation& operator=(const Simulation&) = delete;
  ~Simulation();

  // Makes links, log and control pipe.
  Outcome Prepare();
  // "drivesim 1.02 ready: DIR/com1 -> /dev/pts/3, DIR/gps -> /dev/pts/4"
  std::string ReadyLine() const;
  // Until a signal, "quit" or the end of the time; the links are gone when it returns. After the laps that
  // were asked for the car stands, and the standard output says "arrived".
  void Run();

 private:
  Moment Now() const;
  double WallOf(double sim_s) const { return sim_s / options_.speedup; }
  int Meter(double sim_s) const;
  CarState CarAt(double sim_s) const;
  void TellArrival(Moment now);
  void Step();
  int SleepMs(Moment now) const;
  void ServeRig(Moment now);
  void SendGps(Moment now);
  void Plug(sets::PtyPort& port, bool gone, Moment now);
  void Watch(int fd, std::uint32_t events) const;
  void WatchPort(const sets::PtyPort& port) const;
  void Tidy(sets::PtyPort& port, Moment now);
  Outcome MakeControlPipe();
  void ReadControl(sets::UniqueFd& source, LineSplitter& lines);
  void Obey(const std::string& line);
  void ReadSignals();

  Options options_;
  Route route_;
  Car car_;
  SignalModel signal_;
  std::unique_ptr<sets::Rig> rig_;
  FaultBoard faults_;
  CommandLog log_;
  RigLine line_;
  sets::PtyPort com_;
  sets::PtyPort gps_;
  sets::UniqueFd poll_;
  sets::UniqueFd signals_;
  sets::UniqueFd control_;
  sets::UniqueFd input_;
  LineSplitter control_lines_;
  LineSplitter input_lines_;
  std::chrono::steady_clock::time_point start_;
  std::int64_t start_utc_s_ = 0;
  double next_fix_s_ = 0;
  double retry_wall_s_ = 0;  // after a port could not be made
  std::optional<int> held_meter_;
  double arrival_s_ = kNoEnd;  // simulated
  bool arrived_ = false;
  bool ending_ = false;
};

}  // namespace kestrum::drivesim
