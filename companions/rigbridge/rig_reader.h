#pragma once

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "bridge_settings.h"
#include "dial_watch.h"
#include "retry_schedule.h"
#include "rig_driver.h"
#include "set_side.h"

namespace kestrum::rigbridge {

enum class Phase { kNoRig, kOpening, kReading, kTrouble, kSwitchedOff };

// What the user is told.
struct RigState {
  Phase phase = Phase::kNoRig;
  std::optional<Reading> reading;
  std::optional<Fault> trouble;  // of Trouble
  double next_try_s = 0;         // of Trouble, steady clock
  DialWatch dial;
  std::vector<std::string> notes;  // what the rig cannot do, each once
};

// Seconds of the steady clock.
double NowS();

// The thread that reads the rig, and the only one that ever waits for it.
class RigReader {
 public:
  using MakeDriver = std::function<std::unique_ptr<RigDriver>()>;

  // Between the starts of two reads of the meter, unless the rig is slower.
  static constexpr double kPollS = 0.05;
  // Left alone at least so long after each read.
  static constexpr double kRestS = 0.01;
  // Between two looks at the rig's dial.
  static constexpr double kDialS = 1;
  // So many failed reads in a row and the port is opened anew.
  static constexpr int kFailuresUntilReopen = 3;

  explicit RigReader(MakeDriver make_driver);
  RigReader(const RigReader&) = delete;
  RigReader& operator=(const RigReader&) = delete;
  // Waits for the thread.
  ~RigReader();

  // From now on this rig; a call that is under way for the last one ends first.
  void Use(const BridgeSettings& settings);
  // Passed on as soon as the rig can be reached; of each kind the newest.
  void Wish(const sets::Change& change);
  std::optional<Reading> Newest() const;
  RigState State() const;
  // Asks the thread to end. False when it is still waiting for the rig after `patience_s`.
  bool Stop(double patience_s);

 private:
  using Lock = std::unique_lock<std::mutex>;
  enum class WokenBy { kNothing, kPowerWish, kAnyWish };
  // "The rig did not `done`", "This rig cannot `possible` from here".
  struct Deed {
    std::string done;
    std::string possible;
  };

  void Run();
  void Serve(RigDriver& driver);
  bool ReadOnce(RigDriver& driver);
  void LookAtDial(RigDriver& driver);
  void GrantPower(RigDriver& driver);
  void GrantWishes(RigDriver& driver);
  void AnswerWish(const sets::Change& wish, const std::optional<Refusal>& refusal, const Deed& deed);
  void Note(const std::string& text);
  void SetTrouble(Fault fault);
  // Until the time is over, the thread shall end or there are other settings. False in the last two cases.
  bool Pause(double seconds, WokenBy woken_by);
  bool PauseBeforeRetry();
  bool Interrupted() const { return ending_ || fresh_settings_.has_value(); }

  const MakeDriver make_driver_;

  mutable std::mutex mutex_;  // of what follows up to ended_
  std::condition_variable wake_;
  std::condition_variable gone_;
  bool ending_ = false;
  bool ended_ = false;
  std::optional<BridgeSettings> fresh_settings_;
  sets::Change wishes_;
  RigState state_;

  // Of the thread alone.
  RetrySchedule retries_;
  sets::Change second_try_;  // wishes that have failed once
  int failures_ = 0;
  double dial_at_s_ = 0;
  bool switched_off_ = false;

  std::thread thread_;
};

}  // namespace kestrum::rigbridge
