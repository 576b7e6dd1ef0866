#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "common/fault.h"

namespace kestrum::drivesim {

enum class FaultKind {
  kSilence,     // the rig does not reply
  kGarbage,     // noise in place of the reply
  kShort,       // the reply lacks its last byte
  kLong,        // five bytes too many
  kLate,        // the reply comes 80 ms after the command
  kWrong,       // another opcode at the end of the reply
  kVanish,      // the rig's port is unplugged
  kNoFix,       // the receiver has lost the satellites
  kGpsSilence,  // the receiver sends nothing
  kGpsVanish,   // the receiver's port is unplugged
};

std::optional<FaultKind> FaultOf(std::string_view name);
std::string_view FaultName(FaultKind kind);
// All names, separated by ", ".
std::string FaultNames();

constexpr double kNoEnd = std::numeric_limits<double>::infinity();

// Seconds are simulated ones since the start.
struct FaultRow {
  double at_s = 0;
  FaultKind kind = FaultKind::kSilence;
  double duration_s = kNoEnd;
};

// Rows "second:kind:duration" or "second:kind" (to the end), separated by commas or line ends; "#" starts a
// comment, blanks and empty rows are skipped.
Result<std::vector<FaultRow>> ParseFaults(std::string_view text);

// A number of seconds, 0 or more, the whole text.
std::optional<double> ParseSeconds(std::string_view text);

std::string_view Trimmed(std::string_view text);

// Which faults are on at a moment.
class FaultBoard {
 public:
  explicit FaultBoard(const std::vector<FaultRow>& rows = {});

  void Start(const FaultRow& row) { spans_.push_back({row.kind, row.at_s, row.at_s + row.duration_s}); }
  // Ends what is on now (of one kind, or everything); what is still to come stays.
  void Clear(double now_s, std::optional<FaultKind> kind = std::nullopt);
  bool Active(FaultKind kind, double now_s) const;
  // The next moment after `now_s` at which something starts or ends; kNoEnd when nothing does.
  double NextChange(double now_s) const;

 private:
  struct Span {
    FaultKind kind;
    double from_s;
    double to_s;
  };
  std::vector<Span> spans_;
};

}  // namespace kestrum::drivesim
