#include "support_process/car_config.h"

#include <array>
#include <charconv>

namespace kestrum::process {
namespace {

// A blank or a minus, the digits without a zero before the point, a blank.
std::string Number(double value) {
  std::array<char, 32> digits{};
  const auto end =
      std::to_chars(digits.begin(), digits.end(), static_cast<float>(value < 0 ? -value : value));
  std::string text(digits.data(), end.ptr);
  if (text.starts_with("0.")) text.erase(0, 1);
  return (value < 0 ? "-" : " ") + text + " ";
}

std::string Flag(bool on) {
  return on ? "#TRUE#" : "#FALSE#";
}

}  // namespace

std::string ConfigText(const CarSetup& setup, const std::string& folder) {
  const auto in_folder = [&folder](const std::string& path, const char* usual) {
    return path.empty() ? folder + "/" + usual : path;
  };
  std::vector<std::string> lines = {
      "Kestrum Auto field strenght logger V1.02",
      Number(setup.rig) + Number(setup.port) + Number(setup.baud),
      Number(setup.interval_ms),
      Number(setup.mode),
      Number(setup.unit),
      Number(setup.squelch),
      Number(setup.main.left) + Number(setup.main.top),
      Number(setup.minimal.left) + Number(setup.minimal.top),
      Number(setup.khz_step),
      Number(setup.distance_km),
      Flag(setup.bar_in_segments),
      Flag(setup.show_links),
      Flag(setup.by_distance),
      Flag(setup.average),
      Flag(setup.dial_lock),
      setup.tx_latitude,
      setup.tx_longitude,
      setup.tx_height,
      setup.frequency,
      in_folder(setup.calibration_file, "Calibration3.cfg"),
      in_folder(setup.log_file, "RSSI-GPS.log"),
      setup.power_caption,
  };
  lines.insert(lines.end(), setup.antennas.begin(), setup.antennas.end());
  std::string text;
  for (const std::string& line : lines) text += line + "\r\n";
  return text;
}

}  // namespace kestrum::process
