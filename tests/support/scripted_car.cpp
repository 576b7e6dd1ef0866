#include "support/scripted_car.h"

#include "support_process/car_config.h"
#include "text/text_file.h"

namespace kestrum::test {

ScriptedCar::ScriptedCar() : app(world.ports()) {
  world.windows.titles.insert("Posdex Version 1.19");
  world.serial.answer = [this](const std::string& command) -> std::string {
    if (!rig_answers || command.size() != 5) return {};
    switch (static_cast<unsigned char>(command[4])) {
      case 0xE7:
        return Bytes({s_meter / 16});
      case 0xF7:
        return Bytes({s_meter, s_meter, s_meter, s_meter, 0xF7});
      default:
        return {};
    }
  };
  world.pump.on_pump = [this] {
    while (TickNext(world.clock.elapsed)) {
    }
  };
  clockworks_[0].timer = &form1.tmrMain;
  clockworks_[1].timer = &form1.tmrAverageRSSI;
  clockworks_[2].timer = &form1.tmrLamps;
}

Settings ScriptedCar::UsualSettings() {
  Settings usual;
  usual.RigModel = kFT840;
  usual.ComPort = 1;
  usual.BaudRate = 9600;
  usual.TimeIntervalMs = 1000;
  usual.RigMode = kLsb;
  usual.FieldStrengthUnit = 1;
  usual.KHzStep = 9;
  usual.DistanceIntervalKm = 1;
  usual.ProgressBarMode = true;
  usual.ShowDDE = true;
  usual.TxLat = "5157.00N";
  usual.TxLong = "00532.00E";
  usual.TxHeight = "10 m";
  usual.FrequencyText = "3630";
  usual.CalibrationFiles[2] = "/car/Calibration3.cfg";
  usual.LogFileName = "/car/RSSI-GPS.log";
  usual.TxAntennas[0] = "Antenna1, PWR 10W";
  return usual;
}

void ScriptedCar::WriteConfig(const Settings& wanted, const std::string& power_caption) {
  process::CarSetup setup;
  setup.rig = wanted.RigModel;
  setup.port = wanted.ComPort;
  setup.baud = wanted.BaudRate;
  setup.interval_ms = wanted.TimeIntervalMs;
  setup.mode = wanted.RigMode;
  setup.unit = wanted.FieldStrengthUnit;
  setup.squelch = wanted.SquelchLevel;
  setup.main = {wanted.MainLeft, wanted.MainTop};
  setup.minimal = {wanted.MinimalLeft, wanted.MinimalTop};
  setup.khz_step = wanted.KHzStep;
  setup.distance_km = wanted.DistanceIntervalKm;
  setup.bar_in_segments = wanted.ProgressBarMode;
  setup.show_links = wanted.ShowDDE;
  setup.by_distance = wanted.LogByDistance;
  setup.average = wanted.AverageRSSI;
  setup.dial_lock = wanted.DialLock;
  setup.tx_latitude = wanted.TxLat;
  setup.tx_longitude = wanted.TxLong;
  setup.tx_height = wanted.TxHeight;
  setup.frequency = wanted.FrequencyText;
  setup.calibration_file = wanted.CalibrationFiles[2];
  setup.log_file = wanted.LogFileName;
  setup.power_caption = power_caption;
  setup.antennas.clear();
  for (const auto& antenna : wanted.TxAntennas) {
    if (!antenna.empty()) setup.antennas.push_back(antenna);
  }
  world.files.files["/car/Kestrum.cfg"] = ConfigText(setup, "/car");
}

void ScriptedCar::Start(const StartOptions& options) {
  app.Start(options);
}

void ScriptedCar::Wind(Clockwork& clockwork) const {
  const Timer& timer = *clockwork.timer;
  const bool wound_anew = timer.enabled && (!clockwork.running || clockwork.restarts != timer.restarts ||
                                            clockwork.interval_ms != timer.interval_ms);
  if (wound_anew) clockwork.due = world.clock.elapsed + std::chrono::milliseconds(timer.interval_ms);
  clockwork.running = timer.enabled;
  clockwork.restarts = timer.restarts;
  clockwork.interval_ms = timer.interval_ms;
}

bool ScriptedCar::TickNext(std::chrono::milliseconds limit) {
  if (world.program.Ended()) return false;
  Clockwork* next = nullptr;
  for (auto& clockwork : clockworks_) {
    Wind(clockwork);
    if (clockwork.running && clockwork.due <= limit && (!next || clockwork.due < next->due))
      next = &clockwork;
  }
  if (!next) return false;
  if (next->due > world.clock.elapsed) world.clock.Advance(next->due - world.clock.elapsed);
  next->due = world.clock.elapsed + std::chrono::milliseconds(next->interval_ms);
  Run(next->timer->tick);
  return true;
}

void ScriptedCar::RunFor(std::chrono::milliseconds duration) {
  const auto end = world.clock.elapsed + duration;
  while (TickNext(end)) {
  }
  if (world.clock.elapsed < end && !world.program.Ended()) world.clock.Advance(end - world.clock.elapsed);
}

void ScriptedCar::SendGps(const std::string& latitude, const std::string& longitude,
                          const std::string& validity, const std::string& height, const std::string& speed,
                          const std::string& compass) {
  world.links.Send("lblLat1", latitude);
  world.links.Send("lblLong1", longitude);
  world.links.Send("lblVal1", validity);
  world.links.Send("lblHeight1", height);
  world.links.Send("lblSpeed1", speed);
  world.links.Send("lblCompas1", compass);
}

std::vector<std::string> ScriptedCar::Log() const {
  const auto file = world.files.files.find(kLogPath);
  return file == world.files.files.end() ? std::vector<std::string>() : SplitLines(file->second);
}

}  // namespace kestrum::test
