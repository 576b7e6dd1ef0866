#pragma once

#include <string>
#include <vector>

namespace kestrum::process {

// A position of a window, in twips.
struct Place {
  double left = 0;
  double top = 0;
};

// What Kestrum.cfg holds. Here FT840 on the first port with a set that is always on.
struct CarSetup {
  int rig = 2;  // 1 FT817, 2 FT840, 3 FT847, 4 FT857, 5 FT897
  int port = 1;
  int baud = 9600;
  int interval_ms = 20;
  int mode = 2;  // 1 USB, 2 LSB, 3 CW, 4 CWN, 5 AM, 6 AMN, 7 FM
  int unit = 1;  // 1 uV, 2 mV/m, 3 dBm
  int squelch = 0;
  Place main = {600, 600};
  Place minimal = {600, 600};
  double khz_step = 9;
  double distance_km = 1;
  bool bar_in_segments = true;
  bool show_links = true;
  bool by_distance = false;
  bool average = false;
  bool dial_lock = false;
  std::string tx_latitude = "5157.00N";
  std::string tx_longitude = "00532.00E";
  std::string tx_height = "25 m";
  std::string frequency = "3630";
  std::string calibration_file;  // empty for Calibration3.cfg in the folder
  std::string log_file;          // empty for RSSI-GPS.log in the folder
  std::string power_caption = "&Off";
  std::vector<std::string> antennas = {"Antenna1, PWR 10W"};
};

// The file that has these settings, for a program in `folder`. Beside the program itself nobody else writes
// one; tests of the file's own bytes type them.
std::string ConfigText(const CarSetup& setup, const std::string& folder);

}  // namespace kestrum::process
