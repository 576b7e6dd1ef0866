#include "rig_reader.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace kestrum::rigbridge {

double NowS() {
  return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

RigReader::RigReader(MakeDriver make_driver)
    : make_driver_(std::move(make_driver)), thread_([this] { Run(); }) {}

RigReader::~RigReader() {
  Stop(0);
  thread_.join();
}

void RigReader::Use(const BridgeSettings& settings) {
  const Lock lock(mutex_);
  fresh_settings_ = settings;
  const auto sent_hz = state_.dial.SentHz();
  state_ = {};
  if (sent_hz) state_.dial.Sent(*sent_hz, DialWatch::Taken::kNo);
  state_.phase = settings.model == 0 ? Phase::kNoRig : Phase::kOpening;
  wake_.notify_all();
}

void RigReader::Wish(const sets::Change& change) {
  if (IsEmpty(change)) return;
  const Lock lock(mutex_);
  Merge(wishes_, change);
  wake_.notify_all();
}

std::optional<Reading> RigReader::Newest() const {
  const Lock lock(mutex_);
  return state_.reading;
}

RigState RigReader::State() const {
  const Lock lock(mutex_);
  return state_;
}

bool RigReader::Stop(double patience_s) {
  Lock lock(mutex_);
  ending_ = true;
  wake_.notify_all();
  return gone_.wait_for(lock, std::chrono::duration<double>(patience_s), [this] { return ended_; });
}

void RigReader::Run() {
  BridgeSettings settings;
  Lock lock(mutex_);
  while (!ending_) {
    if (fresh_settings_) {
      settings = *std::exchange(fresh_settings_, std::nullopt);
      retries_.Reset();
      second_try_ = {};
      switched_off_ = false;
    }
    if (settings.model == 0) {
      wake_.wait(lock, [this] { return Interrupted(); });
      continue;
    }
    lock.unlock();
    const std::unique_ptr<RigDriver> driver = make_driver_();
    if (const Outcome opened = driver->Open(settings); !opened) {
      SetTrouble(opened.fault());
      PauseBeforeRetry();
    } else {
      Serve(*driver);
      driver->Close();
    }
    lock.lock();
  }
  ended_ = true;
  gone_.notify_all();
}

// Until the rig is lost or somebody wants something else.
void RigReader::Serve(RigDriver& driver) {
  failures_ = 0;
  dial_at_s_ = 0;
  bool wanted = true;
  while (wanted && failures_ < kFailuresUntilReopen) {
    GrantPower(driver);
    if (switched_off_) {
      wanted = Pause(RetrySchedule::kLongestS, WokenBy::kPowerWish);
      continue;
    }
    const double started_s = NowS();
    if (ReadOnce(driver)) {
      GrantWishes(driver);
      LookAtDial(driver);
      wanted = Pause(std::max(kRestS, started_s + kPollS - NowS()), WokenBy::kAnyWish);
    } else {
      wanted = PauseBeforeRetry();
    }
  }
  const Lock lock(mutex_);
  state_.reading.reset();
}

// One reading, published; false when it failed.
bool RigReader::ReadOnce(RigDriver& driver) {
  const Result<double> result = driver.ReadMeter();
  const Lock lock(mutex_);
  if (fresh_settings_) return true;  // the answer of the last rig
  if (result) {
    failures_ = 0;
    retries_.Reset();
    state_.reading = Reading{result.value(), NowS()};
    state_.phase = Phase::kReading;
    state_.trouble.reset();
    return true;
  }
  ++failures_;
  state_.phase = Phase::kTrouble;
  state_.trouble = result.fault();
  return false;
}

void RigReader::LookAtDial(RigDriver& driver) {
  if (NowS() < dial_at_s_) return;
  dial_at_s_ = NowS() + kDialS;
  const auto hz = driver.ReadFrequencyHz();
  const Lock lock(mutex_);
  if (hz && !fresh_settings_) state_.dial.Read(*hz);
}

// A rig that is off cannot be read, so this comes before the reading.
void RigReader::GrantPower(RigDriver& driver) {
  Lock lock(mutex_);
  const auto wanted = std::exchange(wishes_.powered, std::nullopt);
  const bool answers = failures_ == 0 && state_.reading && IsFresh(*state_.reading, NowS());
  lock.unlock();
  if (!wanted || (*wanted && answers && !switched_off_)) return;
  const auto refusal = driver.SetPower(*wanted);
  if (!refusal) switched_off_ = !*wanted;
  AnswerWish({{}, {}, {}, wanted}, refusal, {*wanted ? "switch on" : "switch off", "be switched on and off"});
  if (!switched_off_) return;
  lock.lock();
  if (fresh_settings_) return;
  state_.phase = Phase::kSwitchedOff;
  state_.reading.reset();
}

void RigReader::GrantWishes(RigDriver& driver) {
  Lock lock(mutex_);
  const sets::Change wishes = std::exchange(wishes_, {{}, {}, {}, wishes_.powered});
  lock.unlock();
  if (wishes.frequency_10hz) {
    const double hz = *wishes.frequency_10hz * 10.0;
    const auto refusal = driver.SetFrequencyHz(hz);
    AnswerWish({wishes.frequency_10hz, {}, {}, {}}, refusal,
               {"go to " + sets::FrequencyText(*wishes.frequency_10hz), "be tuned"});
    dial_at_s_ = 0;
    lock.lock();
    state_.dial.Sent(hz, refusal ? DialWatch::Taken::kNo : DialWatch::Taken::kYes);
    lock.unlock();
  }
  if (wishes.mode) {
    const auto refusal = driver.SetMode(*wishes.mode);
    AnswerWish({{}, wishes.mode, {}, {}}, refusal,
               {"switch to " + std::string(sets::ModeName(*wishes.mode)), "change its mode"});
    dial_at_s_ = 0;
    lock.lock();
    if (!refusal) state_.dial.ModeChanged();
    lock.unlock();
  }
  if (wishes.locked) {
    AnswerWish({{}, {}, wishes.locked, {}}, driver.SetLock(*wishes.locked),
               {*wishes.locked ? "lock its dial" : "unlock its dial", "lock its dial"});
  }
}

// Told once; what failed for the moment is tried once more.
void RigReader::AnswerWish(const sets::Change& wish, const std::optional<Refusal>& refusal,
                           const Deed& deed) {
  const bool was_tried = (wish.frequency_10hz && second_try_.frequency_10hz == wish.frequency_10hz) ||
                         (wish.mode && second_try_.mode == wish.mode) ||
                         (wish.locked && second_try_.locked == wish.locked) ||
                         (wish.powered && second_try_.powered == wish.powered);
  if (wish.frequency_10hz) second_try_.frequency_10hz.reset();
  if (wish.mode) second_try_.mode.reset();
  if (wish.locked) second_try_.locked.reset();
  if (wish.powered) second_try_.powered.reset();
  if (!refusal) return;
  if (refusal->for_good)
    return Note("This rig cannot " + deed.possible + " from here: " + refusal->reason + ".");
  if (was_tried) return Note("The rig did not " + deed.done + ": " + refusal->reason + ".");
  Merge(second_try_, wish);
  const Lock lock(mutex_);
  sets::Change again = wish;
  Merge(again, wishes_);
  wishes_ = again;
}

void RigReader::Note(const std::string& text) {
  constexpr std::size_t kMostNotes = 20;
  const Lock lock(mutex_);
  auto& notes = state_.notes;
  if (fresh_settings_ || std::find(notes.begin(), notes.end(), text) != notes.end()) return;
  if (notes.size() == kMostNotes) notes.erase(notes.begin());
  notes.push_back(text);
}

void RigReader::SetTrouble(Fault fault) {
  const Lock lock(mutex_);
  if (fresh_settings_) return;
  state_.phase = Phase::kTrouble;
  state_.reading.reset();
  state_.trouble = std::move(fault);
}

bool RigReader::Pause(double seconds, WokenBy woken_by) {
  Lock lock(mutex_);
  wake_.wait_for(lock, std::chrono::duration<double>(seconds), [&] {
    const bool wished = woken_by == WokenBy::kAnyWish ? !IsEmpty(wishes_) : wishes_.powered.has_value();
    return Interrupted() || (woken_by != WokenBy::kNothing && wished);
  });
  return !Interrupted();
}

bool RigReader::PauseBeforeRetry() {
  const double pause_s = retries_.Next();
  {
    const Lock lock(mutex_);
    state_.next_try_s = NowS() + pause_s;
  }
  return Pause(pause_s, WokenBy::kNothing);
}

}  // namespace kestrum::rigbridge
