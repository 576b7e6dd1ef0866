#pragma once

#include <QtGlobal>
#include <optional>

#include "nmea_decoder.h"
#include "position_texts.h"

namespace kestrum::posdex {

// Merges what a receiver tells into one fix. The newest position counts, by the time in its sentence; of one
// time RMC has the first word about place and status, then GGA and GNS, then GLL. A lost fix keeps its last
// position and numbers. Times are milliseconds of any steady clock.
class FixTracker {
 public:
  // Without a word from the receiver a fix or a number stands for this long; a number that the receiver
  // tells more rarely, for one and a half times its rhythm.
  static constexpr qint64 kLostAfterMs = 3500;
  static constexpr qint64 kSlowestRhythmMs = 10000;
  // The count of satellites is told less often than the position.
  static constexpr qint64 kSatellitesLastMs = 12000;

  void Take(const Sentence& sentence, qint64 now_ms);
  // One epoch as a gpsd has put it together.
  void Take(const Fix& report, qint64 now_ms);
  void TakeSatellites(int count, qint64 now_ms);

  // Whether the sentence begins something new, so that what has been merged until now is complete.
  bool Begins(const Sentence& sentence) const;

  // Ends a fix that nothing has confirmed for kLostAfterMs.
  void Expire(qint64 now_ms);

  // The source is gone: the fix is lost at once.
  void Lose();

  // What follows may bear any time.
  void NewStream() { decided_.reset(); }

  const Fix& Current() const { return fix_; }
  // Since the position was confirmed last; empty when there has been none.
  std::optional<qint64> AgeMs(qint64 now_ms) const;

 private:
  struct Number {
    std::optional<double> value;
    Sentence::Kind teller = Sentence::Kind::kOther;
    qint64 at_ms = 0;
    qint64 every_ms = 0;  // the receiver's rhythm, as far as it has shown
  };
  // The sentence that has had the last word.
  struct Decision {
    int rank = 0;
    std::optional<int> time_ms;
    qint64 at_ms = 0;
  };

  bool Decides(const Sentence& sentence, qint64 now_ms);
  void NoteType(FixType type, qint64 now_ms);
  static void Note(Number& number, Sentence::Kind teller, std::optional<double> value, qint64 now_ms);
  void Confirm(double latitude_deg, double longitude_deg, qint64 now_ms);
  void Compose(qint64 now_ms);

  Fix fix_;
  std::optional<qint64> confirmed_ms_;
  std::optional<Decision> decided_;
  Number height_m_;
  Number speed_knots_;
  Number course_deg_;
  qint64 satellites_ms_ = 0;
  qint64 type_at_ms_ = 0;
};

}  // namespace kestrum::posdex
