#include "fix_tracker.h"

#include <algorithm>
#include <cmath>

namespace kestrum::posdex {
namespace {

using Kind = Sentence::Kind;

constexpr double kKnotsPerMetreASecond = 3.6 / 1.852;
constexpr int kDayMs = 24 * 60 * 60 * 1000;
// A sentence that is older by no more than this is late; by more, it belongs to another drive.
constexpr int kLatestMs = 2000;
// Each system of satellites has a GSA of its own; the best of this time counts.
constexpr qint64 kTypesTogetherMs = 1500;

std::optional<double> Told(const QGeoPositionInfo& info, QGeoPositionInfo::Attribute attribute,
                           double factor) {
  if (!info.hasAttribute(attribute)) return std::nullopt;
  const double value = info.attribute(attribute) * factor;
  return std::isfinite(value) ? std::optional(value) : std::nullopt;
}

std::optional<double> HeightOf(const QGeoCoordinate& coordinate) {
  if (coordinate.type() != QGeoCoordinate::Coordinate3D || !std::isfinite(coordinate.altitude())) {
    return std::nullopt;
  }
  return coordinate.altitude();
}

// Whose word counts of one time; 0 for a sentence that tells nothing of place and status.
int RankOf(Kind kind) {
  switch (kind) {
    case Kind::kRmc:
      return 3;
    case Kind::kGga:
    case Kind::kGns:
      return 2;
    case Kind::kGll:
      return 1;
    default:
      return 0;
  }
}

bool IsLate(int time_ms, int newest_ms) {
  const int behind_ms = (newest_ms - time_ms + kDayMs) % kDayMs;
  return behind_ms > 0 && behind_ms <= kLatestMs;
}

}  // namespace

void FixTracker::Take(const Sentence& sentence, qint64 now_ms) {
  if (sentence.kind == Kind::kOther) return;
  const QGeoPositionInfo& info = sentence.info;
  if (sentence.kind == Kind::kRmc || sentence.kind == Kind::kVtg) {
    Note(speed_knots_, sentence.kind, Told(info, QGeoPositionInfo::GroundSpeed, kKnotsPerMetreASecond),
         now_ms);
    Note(course_deg_, sentence.kind, Told(info, QGeoPositionInfo::Direction, 1.0), now_ms);
  }
  if (sentence.kind == Kind::kGga || sentence.kind == Kind::kGns) {
    Note(height_m_, sentence.kind, HeightOf(info.coordinate()), now_ms);
    if (sentence.satellites) TakeSatellites(*sentence.satellites, now_ms);
  }
  if (sentence.kind == Kind::kGsa) NoteType(sentence.type, now_ms);

  if (Decides(sentence, now_ms)) {
    if (!sentence.has_fix) {
      fix_.valid = false;
    } else if (info.coordinate().isValid()) {
      Confirm(info.coordinate().latitude(), info.coordinate().longitude(), now_ms);
    }
  }
  Compose(now_ms);
}

void FixTracker::Take(const Fix& report, qint64 now_ms) {
  // A gpsd leaves out what this epoch's sentences did not tell, and that need not be news.
  const auto note = [now_ms](Number& number, std::optional<double> value) {
    if (value) Note(number, Kind::kOther, value, now_ms);
  };
  if (report.type == FixType::kUnknown) return;
  note(height_m_, report.height_m);
  note(speed_knots_, report.speed_knots);
  note(course_deg_, report.course_deg);
  fix_.type = report.type;
  type_at_ms_ = now_ms;
  if (report.type == FixType::kNone) {
    fix_.valid = false;
  } else if (report.valid) {
    Confirm(*report.latitude_deg, *report.longitude_deg, now_ms);
  }
  Compose(now_ms);
}

void FixTracker::TakeSatellites(int count, qint64 now_ms) {
  satellites_ms_ = now_ms;
  fix_.satellites = count;
}

bool FixTracker::Begins(const Sentence& sentence) const {
  if (RankOf(sentence.kind) == 0) return false;
  return !sentence.has_fix || !sentence.time_ms || !decided_ || sentence.time_ms != decided_->time_ms;
}

void FixTracker::Expire(qint64 now_ms) {
  if (fix_.valid && now_ms - confirmed_ms_.value_or(0) >= kLostAfterMs) fix_.valid = false;
  if (now_ms - satellites_ms_ >= kSatellitesLastMs) fix_.satellites.reset();
  if (now_ms - type_at_ms_ >= kLostAfterMs) fix_.type = FixType::kUnknown;
}

void FixTracker::Lose() {
  fix_.valid = false;
  fix_.type = FixType::kUnknown;
  fix_.satellites.reset();
  NewStream();
}

std::optional<qint64> FixTracker::AgeMs(qint64 now_ms) const {
  if (!confirmed_ms_) return std::nullopt;
  return now_ms - *confirmed_ms_;
}

bool FixTracker::Decides(const Sentence& sentence, qint64 now_ms) {
  const int rank = RankOf(sentence.kind);
  if (rank == 0) return false;
  if (decided_ && now_ms - decided_->at_ms < kLostAfterMs) {
    const bool can_compare = sentence.time_ms && decided_->time_ms;
    const bool same_time = !can_compare || *sentence.time_ms == *decided_->time_ms;
    if (same_time && rank < decided_->rank) return false;
    if (!same_time && IsLate(*sentence.time_ms, *decided_->time_ms)) return false;
  }
  decided_ = {rank, sentence.time_ms, now_ms};
  return true;
}

void FixTracker::NoteType(FixType type, qint64 now_ms) {
  if (type < fix_.type && now_ms - type_at_ms_ < kTypesTogetherMs) return;
  fix_.type = type;
  type_at_ms_ = now_ms;
}

// Silence about a number is news only from the kind of sentence that told it before: RMC may leave the speed
// to VTG.
void FixTracker::Note(Number& number, Kind teller, std::optional<double> value, qint64 now_ms) {
  if (value) {
    const bool has_rhythm = number.value && number.teller == teller;
    const qint64 every_ms = has_rhythm ? std::min(now_ms - number.at_ms, kSlowestRhythmMs) : 0;
    number = {value, teller, now_ms, every_ms};
  } else if (number.teller == teller) {
    number.value.reset();
  }
}

void FixTracker::Confirm(double latitude_deg, double longitude_deg, qint64 now_ms) {
  fix_.valid = true;
  fix_.latitude_deg = latitude_deg;
  fix_.longitude_deg = longitude_deg;
  confirmed_ms_ = now_ms;
}

void FixTracker::Compose(qint64 now_ms) {
  if (!fix_.valid) return;
  const auto fresh = [now_ms](const Number& number) {
    const qint64 stands_ms = std::max(kLostAfterMs, number.every_ms * 3 / 2);
    return now_ms - number.at_ms < stands_ms ? number.value : std::nullopt;
  };
  fix_.height_m = fresh(height_m_);
  fix_.speed_knots = fresh(speed_knots_);
  fix_.course_deg = fresh(course_deg_);
}

}  // namespace kestrum::posdex
