#pragma once

#include <QtGlobal>
#include <optional>

#include "nmea_decoder.h"
#include "position_texts.h"

namespace kestrum::posdex {

/// Merges the sentences of a receiver into one fix. RMC decides whether there is a fix and where; GGA and GLL
/// decide only for a receiver that sends no RMC. A lost fix keeps its last position and numbers.
/// Times are milliseconds of any steady clock.
class FixTracker {
 public:
  /// Without a word from the receiver a fix or a number stands for this long.
  static constexpr qint64 kLostAfterMs = 3500;

  void Take(const Sentence& sentence, qint64 now_ms);

  /// Ends a fix that nothing has confirmed for kLostAfterMs.
  void Expire(qint64 now_ms);

  /// The source is gone: the fix is lost at once.
  void Lose();

  const Fix& Current() const { return fix_; }

 private:
  struct Number {
    std::optional<double> value;
    Sentence::Kind teller = Sentence::Kind::kOther;
    qint64 at_ms = 0;
  };

  bool Decides(Sentence::Kind kind, qint64 now_ms);
  static void Note(Number& number, const Sentence& sentence, std::optional<double> value, qint64 now_ms);
  void Compose(qint64 now_ms);

  Fix fix_;
  qint64 confirmed_ms_ = 0;
  std::optional<qint64> last_rmc_ms_;
  Number height_m_;
  Number speed_knots_;
  Number course_deg_;
};

}  // namespace kestrum::posdex
