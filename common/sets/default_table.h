#pragma once

#include <array>

namespace kestrum::sets {

struct TablePoint {
  int raw = 0;
  double microvolt = 0;
};

// The logger's default calibration up to 30 MHz: S0 to S9, steps of 10 dB to S9 + 50 dB, and its end at
// S9 + 60 dB. Above 30 MHz all microvolts are a tenth. Written down once more here, so that the programs on
// the other side of the line share no source with the logger.
inline constexpr std::array<TablePoint, 16> kDefaultTable = {{{0, 0},
                                                              {1, 0.2},
                                                              {2, 0.39},
                                                              {8, 0.78},
                                                              {18, 1.56},
                                                              {32, 3.13},
                                                              {50, 6.25},
                                                              {72, 12.5},
                                                              {98, 25},
                                                              {128, 50},
                                                              {162, 158},
                                                              {180, 500},
                                                              {198, 1580},
                                                              {216, 5000},
                                                              {234, 15800},
                                                              {255, 50000}}};
inline constexpr double kS9Microvolt = 50;

}  // namespace kestrum::sets
