#pragma once

#include <QByteArrayView>
#include <QGeoPositionInfo>
#include <QNmeaPositionInfoSource>
#include <optional>

namespace kestrum::posdex {

/// One sentence with a right checksum, as Qt Positioning reads it.
struct Sentence {
  enum class Kind { kRmc, kGga, kGll, kVtg, kOther };
  Kind kind = Kind::kOther;
  bool has_fix = false;  ///< the sentence's own status; only RMC, GGA and GLL carry one
  QGeoPositionInfo info;
};

/// Lends Qt's sentence parser without its device and timers: those merge and hold sentences back, and they
/// cannot start anew after a receiver was unplugged.
class NmeaDecoder : private QNmeaPositionInfoSource {
 public:
  NmeaDecoder() : QNmeaPositionInfoSource(RealTimeMode) {}

  /// Reads the last sentence in a line; what stands before its "$" is ignored. Empty when there is none, or
  /// its checksum is wrong or missing.
  std::optional<Sentence> Decode(QByteArrayView line);
};

}  // namespace kestrum::posdex
