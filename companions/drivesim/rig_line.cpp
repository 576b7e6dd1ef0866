#include "rig_line.h"

#include <algorithm>
#include <utility>

namespace kestrum::drivesim {

using sets::Bytes;

RigLine::RigLine(sets::Rig& rig, FaultBoard& faults, CommandLog& log, std::function<int(double)> meter)
    : rig_(rig), faults_(faults), log_(log), meter_(std::move(meter)) {}

void RigLine::Receive(std::span<const std::uint8_t> bytes, Moment now) {
  DropIncomplete(now);
  for (const std::uint8_t byte : bytes) {
    if (const auto command = commands_.Add(byte, now.wall_s)) Execute(*command, now);
  }
}

void RigLine::DropIncomplete(Moment now) {
  const Bytes forgotten = commands_.DropStale(now.wall_s);
  if (!forgotten.empty()) log_.Received(now.sim_s, forgotten, "incomplete, forgotten");
}

void RigLine::Execute(const sets::Command& command, Moment now) {
  const sets::Answer answer = rig_.Handle(command, meter_(now.sim_s));
  log_.Received(now.sim_s, command, answer.meaning);
  if (answer.reply.empty()) return;

  std::string fault;
  const Bytes reply = Spoil(answer, now.sim_s, fault);
  if (reply.empty()) {
    log_.Note(now.sim_s, "no reply (fault: " + fault + ")");
    return;
  }
  const bool late = faults_.Active(FaultKind::kLate, now.sim_s);
  if (late) fault += fault.empty() ? "late" : ", late";
  std::string meaning = answer.is_ack ? "acknowledge" : "reply";
  if (!fault.empty()) meaning += " (fault: " + fault + ")";
  log_.Sent(now.sim_s, reply, meaning);
  output_.push_back({now.wall_s + (late ? kLateS : 0), reply});
}

Bytes RigLine::Spoil(const sets::Answer& answer, double sim_s, std::string& fault) {
  constexpr std::size_t kFrame = 5;
  const auto on = [&](FaultKind kind) {
    if (!faults_.Active(kind, sim_s)) return false;
    fault = FaultName(kind);
    return true;
  };
  Bytes reply = answer.reply;
  if (on(FaultKind::kSilence)) return {};
  if (on(FaultKind::kGarbage)) {
    reply.resize(1 + noise_.Next() % 12);
    for (std::uint8_t& byte : reply) byte = static_cast<std::uint8_t>(noise_.Next());
  } else if (on(FaultKind::kShort)) {
    reply.pop_back();
  } else if (on(FaultKind::kLong)) {
    reply.insert(reply.end(), kFrame, 0x55);
  } else if (on(FaultKind::kWrong)) {
    // A short reply has no opcode to be wrong; it then looks like the five bytes of another set.
    reply.resize(std::max(reply.size(), kFrame));
    reply.back() = reply.back() == 0xEE ? 0xED : 0xEE;
  }
  return reply;
}

Bytes RigLine::TakeOutput(Moment now) {
  DropIncomplete(now);
  Bytes bytes;
  while (!output_.empty() && output_.front().due_wall_s <= now.wall_s) {
    bytes.insert(bytes.end(), output_.front().bytes.begin(), output_.front().bytes.end());
    output_.pop_front();
  }
  return bytes;
}

double RigLine::NextWallS() const {
  double next = commands_.DeadlineS().value_or(kNoEnd);
  if (!output_.empty()) next = std::min(next, output_.front().due_wall_s);
  return next;
}

void RigLine::Reset() {
  commands_.Clear();
  output_.clear();
}

}  // namespace kestrum::drivesim
