#include "fix_tracker.h"

#include <cmath>

namespace kestrum::posdex {
namespace {

constexpr double kKnotsPerMetreASecond = 3.6 / 1.852;

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

}  // namespace

void FixTracker::Take(const Sentence& sentence, qint64 now_ms) {
  using Kind = Sentence::Kind;
  if (sentence.kind == Kind::kOther) return;
  const QGeoPositionInfo& info = sentence.info;
  if (sentence.kind == Kind::kRmc || sentence.kind == Kind::kVtg) {
    Note(speed_knots_, sentence, Told(info, QGeoPositionInfo::GroundSpeed, kKnotsPerMetreASecond), now_ms);
    Note(course_deg_, sentence, Told(info, QGeoPositionInfo::Direction, 1.0), now_ms);
  }
  if (sentence.kind == Kind::kGga) Note(height_m_, sentence, HeightOf(info.coordinate()), now_ms);

  if (Decides(sentence.kind, now_ms)) {
    if (!sentence.has_fix) {
      fix_.valid = false;
    } else if (info.coordinate().isValid()) {
      fix_.valid = true;
      fix_.latitude_deg = info.coordinate().latitude();
      fix_.longitude_deg = info.coordinate().longitude();
      confirmed_ms_ = now_ms;
    }
  }
  Compose(now_ms);
}

void FixTracker::Expire(qint64 now_ms) {
  if (fix_.valid && now_ms - confirmed_ms_ >= kLostAfterMs) fix_.valid = false;
}

void FixTracker::Lose() {
  fix_.valid = false;
}

bool FixTracker::Decides(Sentence::Kind kind, qint64 now_ms) {
  if (kind == Sentence::Kind::kRmc) {
    last_rmc_ms_ = now_ms;
    return true;
  }
  if (kind == Sentence::Kind::kVtg) return false;
  return !last_rmc_ms_ || now_ms - *last_rmc_ms_ >= kLostAfterMs;
}

// Silence about a number is news only from the kind of sentence that told it before: RMC may leave the speed
// to VTG.
void FixTracker::Note(Number& number, const Sentence& sentence, std::optional<double> value, qint64 now_ms) {
  if (value) {
    number = {value, sentence.kind, now_ms};
  } else if (number.teller == sentence.kind) {
    number.value.reset();
  }
}

void FixTracker::Compose(qint64 now_ms) {
  if (!fix_.valid) return;
  const auto fresh = [now_ms](const Number& number) {
    return now_ms - number.at_ms < kLostAfterMs ? number.value : std::nullopt;
  };
  fix_.height_m = fresh(height_m_);
  fix_.speed_knots = fresh(speed_knots_);
  fix_.course_deg = fresh(course_deg_);
}

}  // namespace kestrum::posdex
