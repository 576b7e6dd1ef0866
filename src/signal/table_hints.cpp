#include "signal/table_hints.h"

#include "text/text_file.h"

namespace kestrum {

// Kept on purpose: "sensivity", the missing minus signs and the 155 dBm line stand in the printed hints that
// users compare with.
std::string TableHints() {
  std::string text = JoinLines({
      "     Some table hints ",
      "     Reference power across 50 Ohm and 0 dBm = 1 mW.",
      "           1x            2x            4x            5x            10x ",
      "     ----------------------------------------------------------------------------",
      "      0 dBm-1 mW     3 dBm-2 mW     6 dBm-4 mW     7 dBm-5 mW    10 dBm-10 mW",
      "     10 dBm-10 mW   13 dBm-20 mW   16 dBm-40 mW   17 dBm-50 mW   20 dBm-100 mW",
      "     20 dBm-100 mW  23 dBm-200 mW  26 dBm-400 mW  27 dBm-500 mW  30 dBm-1000 mW",
      "     30 dBm-1 W     33 dBm-2 W     36 dBm-4 W     37 dBm-5 W     40 dBm-10 W",
      "     40 dBm-10 W    43 dBm-20 W    46 dBm-40 W    47 dBm-50 W    50 dBm-100 W",
      "     50 dBm-100 W   53 dBm-200 W   56 dBm-400 W   57 dBm-500 W   60 dBm-1000 W",
      "",
      "     Maximal Rx sensivity compared to bandwidth for VHF.",
      "     ----------------------------------------------------------------------------",
      "      94 dBm-100 MHz",
      "     104 dBm-10  MHz",
      "     114 dBm-1   MHz",
      "     124 dBm-100 kHz",
      "     134 dBm-10  kHz",
      "     144 dBm-1   kHz",
      "     155 dBm-100 Hz",
      "     164 dBm-10  Hz",
  });
  return text + "     174 dBm-1   Hz";
}

}  // namespace kestrum
