#include "ui/lamps.h"

#include <algorithm>

#include "config/settings.h"
#include "text/number_text.h"
#include "text/text.h"

namespace kestrum {
namespace {

constexpr const char* kDone = "Done";

std::string Minute(const DateTime& time) {
  return TwoDigits(time.hour) + ":" + TwoDigits(time.minute);
}

std::string Second(const DateTime& time) {
  return Minute(time) + ":" + TwoDigits(time.second);
}

// "14 s", from two minutes on "3 min", from two hours on "5 h".
std::string Span(Milliseconds time) {
  const auto seconds = std::max<std::int64_t>(0, time.count() / 1000);
  if (seconds < 120) return std::to_string(seconds) + " s";
  if (seconds < 7200) return std::to_string(seconds / 60) + " min";
  return std::to_string(seconds / 3600) + " h";
}

std::string Records(std::uint64_t count) {
  return std::to_string(count) + (count == 1 ? " record" : " records");
}

std::string BufferText(const LogFacts& log) {
  const std::string filled = std::to_string(log.in_buffer) + " of " + std::to_string(kRecordsPerBlock);
  return filled + (log.last_written ? ", last written " + Second(*log.last_written) : ", none written yet");
}

}  // namespace

LampText LogLamp(const LogFacts& log) {
  LampText says;
  says.fill = std::clamp(static_cast<double>(log.in_buffer) / kRecordsPerBlock, 0.0, 1.0);
  const std::string so_far = Records(log.written) + " written since the start. ";
  if (log.lost > 0) {
    says.state = LampState::kTrouble;
    says.words = "NOT SAVED";
    says.detail = Records(log.lost) + " lost" + (log.lost_at ? " " + Minute(*log.lost_at) : "");
    says.advice = so_far + "The log could not be written. Stays until a block has been written.";
    return says;
  }
  if (!log.logging) {
    says.words = "Not logging";
    says.detail = std::to_string(log.in_buffer) + " of " + std::to_string(kRecordsPerBlock) + " in memory";
    says.advice = so_far + "F3 starts logging.";
    return says;
  }
  if (log.folder_fault || log.journal_fault) {
    says.state = LampState::kNote;
    says.words = "Check disk";
    says.detail = (log.folder_fault ? log.folder_fault : log.journal_fault)->reason;
    says.advice =
        so_far + (log.folder_fault ? "The next block cannot be written. Press to look again."
                                   : "The records that wait for their block are not yet on the disk.");
    return says;
  }
  says.state = LampState::kGood;
  says.words = "Logging";
  says.detail = BufferText(log);
  says.advice = so_far + "Each record is on the disk at once, a block in the log file every 100.";
  return says;
}

bool ReaderIsFrozen(const GpsFacts& gps) {
  return gps.reader_present && gps.silent_for && *gps.silent_for >= kReaderIsFrozen;
}

bool PositionIsTrue(const GpsFacts& gps) {
  return gps.reader_present && gps.fix_is_valid && !ReaderIsFrozen(gps);
}

LampText GpsLamp(const GpsFacts& gps) {
  LampText says;
  const std::string position = gps.fix_age ? "position " + Span(*gps.fix_age) + " old" : "no fix yet";
  if (!gps.reader_present) {
    says.state = LampState::kTrouble;
    says.words = "READER GONE";
    says.detail = "press to start it, " + position;
    says.advice = "The GPS reader does not run. Press to start it again.";
  } else if (ReaderIsFrozen(gps)) {
    says.state = LampState::kTrouble;
    says.words = "READER FROZEN";
    says.detail = "not heard for " + Span(*gps.silent_for);
    says.advice = "The GPS reader gives no sign of life. Press to close it and to start it again.";
  } else if (!gps.fix_is_valid) {
    says.state = LampState::kNote;
    says.words = "NO GPS FIX";
    says.detail = gps.fix_age ? "no fix, " + Span(*gps.fix_age) + " old" : "no fix yet";
    says.advice = "Is the receiver connected and the sky in view?";
  } else {
    says.state = LampState::kGood;
    says.words = "GPS fix";
    says.detail = Span(gps.fix_age.value_or(Milliseconds{0})) + " old";
    says.advice = "GPS RX Ok.";
  }
  return says;
}

std::string AgeBadge(const GpsFacts& gps) {
  return gps.fix_age ? Span(*gps.fix_age) + " old" : "no fix";
}

bool SignalIsTrue(const RigFacts& rig) {
  return rig.port_is_open && !rig.switched_off && rig.missed_readings < kMissedReadings;
}

LampText RigLamp(const RigFacts& rig) {
  LampText says;
  says.state = LampState::kTrouble;
  if (rig.trouble) says.advice = rig.trouble->reason;
  if (!rig.port_chosen) {
    says.words = "NO PORT";
    says.detail = "choose one: Rig + Comport";
  } else if (!rig.port_is_open) {
    says.words = rig.device_is_gone ? "UNPLUGGED" : "PORT CLOSED";
    says.detail = rig.device_is_gone ? "opens when it is back" : "press to open it";
    says.advice += std::string(rig.trouble ? " " : "") + "Press to open the port again.";
  } else if (rig.switched_off) {
    says.words = "RIG OFF";
    says.detail = rig.rig + " is not read";
    says.advice = "Nothing is measured while the power button says that the set is off.";
  } else if (rig.missed_readings >= kMissedReadings) {
    const bool heard = rig.outcome != kDone && !ContainsText(rig.outcome, "Nothing");
    says.words = heard ? "RIG GARBLED" : "RIG SILENT";
    says.detail = heard ? "wrong replies" : "silent " + Span(rig.silent_for);
    says.advice =
        "Is the set switched on, and is the speed the one of its menu? Press to open the port again.";
  } else {
    says.state = LampState::kGood;
    says.words = "Rig";
    says.detail = kDone;
    for (const std::string& part : {rig.rig, rig.port}) says.detail += part.empty() ? "" : ", " + part;
    says.advice = "Press to open the port again.";
  }
  return says;
}

}  // namespace kestrum
