// Levels of a rig, through the bridge's bytes and the real program, to what the driver reads.
#include <gtest/gtest.h>

#include <cmath>

#include "set_side.h"
#include "support/scripted_car.h"

namespace kestrum::rigbridge {
namespace {

// The program in a scripted car whose rig is the bridge.
class CarWithBridge {
 public:
  CarWithBridge(const BridgeSettings& settings, const std::string& frequency_khz) : set_(settings) {
    kestrum::Settings wanted = test::ScriptedCar::UsualSettings();
    wanted.RigModel = settings.act_as == sets::Model::kFT817 ? kFT817 : kFT840;
    wanted.FrequencyText = frequency_khz;
    car_.WriteConfig(wanted, "&On");
    car_.Start();
    car_.world.serial.answer = [this](const std::string& command) {
      const sets::Bytes bytes(command.begin(), command.end());
      const sets::Bytes reply = set_.Receive(bytes, Reading{value_, 0}, 0);
      return std::string(reply.begin(), reply.end());
    };
  }

  void Measure(double value) {
    value_ = value;
    car_.form1.tmrMain.tick();
  }
  int raw() const { return car_.app.state.RssiRaw; }
  const std::string& s_text() const { return car_.form1.lblRSSI.caption; }
  double microvolt() const { return std::stod(car_.app.table.Current().microvolt); }
  bool above_hf() const { return car_.app.state.AboveHF; }

 private:
  test::ScriptedCar car_;
  SetSide set_;
  double value_ = 0;
};

struct SRow {
  double db;
  const char* s_text;
};
constexpr SRow kSTexts[] = {{-60, "S0"},       {-54, "S0"},       {-48, "S1"},       {-42, "S2"},
                            {-36, "S3"},       {-30, "S4"},       {-27, "S4+"},      {-24, "S5"},
                            {-18, "S6"},       {-12, "S7"},       {-6, "S8"},        {-3, "S8+"},
                            {0, "S9"},         {5, "S9+"},        {10, "S9 + 10dB"}, {15, "S9 + 10dB"},
                            {20, "S9 + 20dB"}, {30, "S9 + 30dB"}, {40, "S9 + 40dB"}, {50, "S9 + 50dB"},
                            {54, "S9 + 50dB"}, {56, "S9 + 60dB"}, {60, "S9 + 60dB"}, {80, "S9 + 60dB"}};

TEST(ThroughTheCore, SPointsAreThoseOfTheRig) {
  CarWithBridge car({}, "3630");
  for (const SRow& row : kSTexts) {
    car.Measure(row.db);
    EXPECT_EQ(car.s_text(), row.s_text) << row.db;
  }
}

// Half the way to the neighbours that Kestrum shows, plus what rounding of the microvolts adds.
double Tolerance(int raw, int step, double microvolt, double half_digit) {
  const auto shown = [&](int r) { return r <= 234 || r >= 255 || step > 1; };
  int below = raw;
  int above = raw;
  if (raw > 0) {
    do below -= step;
    while (!shown(below));
  }
  if (raw + step < 256) {
    do above += step;
    while (!shown(above));
  }
  const double widest =
      std::max(DefaultTableDb(raw) - DefaultTableDb(below), DefaultTableDb(above) - DefaultTableDb(raw));
  return widest / 2 + 20 * std::log10(1 + half_digit / microvolt);
}

struct Way {
  sets::Model model;
  const char* frequency_khz;
  double s9_microvolt;
  double half_digit;
  int step;
  double highest_db;  // up to which Kestrum has a value
};
const Way kWays[] = {{sets::Model::kFT840, "3630", 50, 0.05, 1, 60},
                     {sets::Model::kFT817, "7050", 50, 0.05, 16, 48},
                     {sets::Model::kFT817, "145500", 5, 0.005, 16, 48}};

TEST(ThroughTheCore, EveryLevelIsShownToHalfATableStep) {
  for (const Way& way : kWays) {
    BridgeSettings settings;
    settings.act_as = way.model;
    CarWithBridge car(settings, way.frequency_khz);
    ASSERT_EQ(car.above_hf(), way.s9_microvolt < 50);
    for (double db = -54; db <= way.highest_db; db += 0.5) {
      car.Measure(db);
      const double shown_db =
          car.raw() == 0 ? kLowestDb : 20 * std::log10(car.microvolt() / way.s9_microvolt);
      const double tolerance =
          Tolerance(car.raw(), way.step, std::max(car.microvolt(), 1e-3), way.half_digit);
      EXPECT_NEAR(shown_db, db, tolerance)
          << way.frequency_khz << " raw " << car.raw() << " " << car.s_text();
    }
  }
}

TEST(ThroughTheCore, AnFt817AtTheEndOfItsMeterIsUnknownAsARealOne) {
  BridgeSettings settings;
  settings.act_as = sets::Model::kFT817;
  CarWithBridge car(settings, "7050");
  car.Measure(60);
  EXPECT_EQ(car.raw(), 240);
  EXPECT_EQ(car.s_text(), "S?");
}

TEST(ThroughTheCore, AllRawValuesArriveUnchanged) {
  BridgeSettings settings;
  settings.meter.source = MeterSource::kRaw;
  CarWithBridge car(settings, "3630");
  for (int raw = 0; raw < 256; ++raw) {
    car.Measure(raw);
    ASSERT_EQ(car.raw(), raw);
  }
}

TEST(ThroughTheCore, ALinearScaleReachesEveryRawValue) {
  BridgeSettings settings;
  settings.meter.linear = LinearScale{-120, 0};
  CarWithBridge car(settings, "3630");
  for (int raw = 0; raw < 256; ++raw) {
    car.Measure(-120 + raw * 120.0 / 255);
    ASSERT_EQ(car.raw(), raw);
  }
}

}  // namespace
}  // namespace kestrum::rigbridge
