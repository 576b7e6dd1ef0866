#include "signal_model.h"

#include <algorithm>
#include <cmath>
#include <numbers>

#include "random.h"

namespace kestrum::drivesim {
namespace {

constexpr double kTwoPi = 2 * std::numbers::pi;
constexpr double kLevelAt1KmDb = 15;
constexpr double kPathLossExponent = 3;  // between free space, 2, and a town, 4
constexpr double kShadowSigmaDb = 0.7;
constexpr double kShadowLengthM = 50;  // how far one house reaches
constexpr double kTunnelDb = 25;
constexpr double kFadingSigmaDb = 1.5;
constexpr int kShadowWaves = 400;
constexpr std::size_t kShadowPoints = 2000;

}  // namespace

SignalModel::SignalModel(std::uint64_t seed, double lap_m, Antenna antenna)
    : lap_m_(lap_m), antenna_(antenna), shadow_db_(kShadowPoints, 0.0) {
  Random random(seed);
  // Whole waves in a lap close the ring; short waves are weaker, which makes near places alike.
  double power = 0;
  for (int k = 1; k <= kShadowWaves; ++k) {
    const double ratio = k * kTwoPi * kShadowLengthM / lap_m;
    const double amplitude = 1 / std::sqrt(1 + ratio * ratio);
    const double phase = kTwoPi * random.Uniform();
    power += amplitude * amplitude / 2;
    for (std::size_t i = 0; i < kShadowPoints; ++i) {
      shadow_db_[i] += amplitude * std::sin(kTwoPi * k * static_cast<double>(i) / kShadowPoints + phase);
    }
  }
  for (double& shadow : shadow_db_) shadow *= kShadowSigmaDb / std::sqrt(power);
  for (Wave& wave : waves_) {
    wave.per_m = kTwoPi / (6 + 40 * random.Uniform());
    wave.per_s = kTwoPi / (15 + 60 * random.Uniform());
    wave.phase = kTwoPi * random.Uniform();
  }
}

double SignalModel::PathLevelDb(double distance_m) {
  return kLevelAt1KmDb - 10 * kPathLossExponent * std::log10(std::max(distance_m, 50.0) / 1000);
}

double SignalModel::ShadowDb(double along_m) const {
  double along = std::fmod(along_m, lap_m_);
  if (along < 0) along += lap_m_;
  const double place = along / lap_m_ * static_cast<double>(kShadowPoints);
  const auto before = static_cast<std::size_t>(place) % kShadowPoints;
  const double part = place - std::floor(place);
  return shadow_db_[before] * (1 - part) + shadow_db_[(before + 1) % kShadowPoints] * part;
}

double SignalModel::FadingDb(double driven_m, double time_s) const {
  double sum = 0;
  for (const Wave& wave : waves_) {
    sum += std::sin(wave.per_m * driven_m + wave.per_s * time_s + wave.phase);
  }
  return sum * kFadingSigmaDb / std::sqrt(static_cast<double>(waves_.size()) / 2);
}

double SignalModel::LevelDb(const CarState& car, double time_s) const {
  return PathLevelDb(car.distance_m) + AntennaGainDb(antenna_, car.bearing_deg) - ShadowDb(car.along_m) +
         FadingDb(car.driven_m, time_s) - (car.in_tunnel ? kTunnelDb : 0);
}

}  // namespace kestrum::drivesim
