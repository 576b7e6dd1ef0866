#pragma once

#include <QByteArrayView>
#include <QGeoPositionInfo>
#include <QNmeaPositionInfoSource>
#include <optional>

#include "position_texts.h"

namespace kestrum::posdex {

// One sentence as Qt Positioning reads it.
struct Sentence {
  enum class Kind { kRmc, kGga, kGns, kGll, kVtg, kGsa, kOther };
  Kind kind = Kind::kOther;
  bool has_fix = false;              // the sentence's own status; RMC, GGA, GNS and GLL carry one
  std::optional<int> time_ms;        // of the position, since midnight UTC; the same four kinds
  std::optional<int> satellites;     // GGA and GNS
  FixType type = FixType::kUnknown;  // GSA
  QGeoPositionInfo info;
};

// Lends Qt's sentence parser without its device and timers: those merge and hold sentences back, and they
// cannot start anew after a receiver was unplugged.
class NmeaDecoder : private QNmeaPositionInfoSource {
 public:
  NmeaDecoder() : QNmeaPositionInfoSource(RealTimeMode) {}

  // Reads the last sentence in a line; what stands before its "$" is ignored. Empty when there is none, or
  // its checksum is wrong. A sentence without checksum counts, when it is complete, until this receiver has
  // sent one with a checksum; proprietary sentences are of kind kOther, whatever their names end in.
  std::optional<Sentence> Decode(QByteArrayView line);

  // Another receiver, or the same one again.
  void NewStream() { sends_checksums_ = false; }

 private:
  bool sends_checksums_ = false;
};

}  // namespace kestrum::posdex
