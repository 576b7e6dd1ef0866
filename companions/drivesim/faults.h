#pragma once

#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kestrum::drivesim {

enum class Fault {
  Silence,     ///< the rig does not reply
  Garbage,     ///< noise in place of the reply
  Short,       ///< the reply lacks its last byte
  Long,        ///< five bytes too many
  Late,        ///< the reply comes 80 ms after the command
  Wrong,       ///< another opcode at the end of the reply
  Vanish,      ///< the rig's port is unplugged
  NoFix,       ///< the receiver has lost the satellites
  GpsSilence,  ///< the receiver sends nothing
  GpsVanish,   ///< the receiver's port is unplugged
};

std::optional<Fault> FaultOf(std::string_view name);
std::string_view FaultName(Fault fault);
/// All names, separated by ", ".
std::string FaultNames();

constexpr double kNoEnd = std::numeric_limits<double>::infinity();

/// Seconds are simulated ones since the start.
struct FaultRow {
  double at_s = 0;
  Fault kind = Fault::Silence;
  double duration_s = kNoEnd;
};

struct FaultScript {
  std::vector<FaultRow> rows;
  std::string error;  ///< empty when every row was understood
};

/// Rows "second:kind:duration" or "second:kind" (to the end), separated by commas or line ends; "#" starts a
/// comment, blanks and empty rows are skipped.
FaultScript ParseFaults(std::string_view text);

/// A number of seconds, 0 or more, the whole text.
std::optional<double> ParseSeconds(std::string_view text);

std::string_view Trimmed(std::string_view text);

/// Which faults are on at a moment.
class FaultBoard {
 public:
  explicit FaultBoard(const std::vector<FaultRow>& rows = {});

  void Start(const FaultRow& row) { spans_.push_back({row.kind, row.at_s, row.at_s + row.duration_s}); }
  /// Ends what is on now (of one kind, or everything); what is still to come stays.
  void Clear(double now_s, std::optional<Fault> kind = std::nullopt);
  bool Active(Fault kind, double now_s) const;
  /// The next moment after `now_s` at which something starts or ends; kNoEnd when nothing does.
  double NextChange(double now_s) const;

 private:
  struct Span {
    Fault kind;
    double from_s;
    double to_s;
  };
  std::vector<Span> spans_;
};

}  // namespace kestrum::drivesim
