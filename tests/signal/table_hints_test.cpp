#include "signal/table_hints.h"

#include <gtest/gtest.h>

namespace kestrum {
namespace {

TEST(TableHints, ByteForByte) {
  const std::string expected =
      "     Some table hints \r\n"
      "     Reference power across 50 Ohm and 0 dBm = 1 mW.\r\n"
      "           1x            2x            4x            5x            10x \r\n"
      "     ----------------------------------------------------------------------------\r\n"
      "      0 dBm-1 mW     3 dBm-2 mW     6 dBm-4 mW     7 dBm-5 mW    10 dBm-10 mW\r\n"
      "     10 dBm-10 mW   13 dBm-20 mW   16 dBm-40 mW   17 dBm-50 mW   20 dBm-100 mW\r\n"
      "     20 dBm-100 mW  23 dBm-200 mW  26 dBm-400 mW  27 dBm-500 mW  30 dBm-1000 mW\r\n"
      "     30 dBm-1 W     33 dBm-2 W     36 dBm-4 W     37 dBm-5 W     40 dBm-10 W\r\n"
      "     40 dBm-10 W    43 dBm-20 W    46 dBm-40 W    47 dBm-50 W    50 dBm-100 W\r\n"
      "     50 dBm-100 W   53 dBm-200 W   56 dBm-400 W   57 dBm-500 W   60 dBm-1000 W\r\n"
      "\r\n"
      "     Maximal Rx sensivity compared to bandwidth for VHF.\r\n"
      "     ----------------------------------------------------------------------------\r\n"
      "      94 dBm-100 MHz\r\n"
      "     104 dBm-10  MHz\r\n"
      "     114 dBm-1   MHz\r\n"
      "     124 dBm-100 kHz\r\n"
      "     134 dBm-10  kHz\r\n"
      "     144 dBm-1   kHz\r\n"
      "     155 dBm-100 Hz\r\n"
      "     164 dBm-10  Hz\r\n"
      "     174 dBm-1   Hz";
  EXPECT_EQ(TableHints(), expected);
}

TEST(TableHints, BeginsAndEndsWithoutABreak) {
  const std::string text = TableHints();
  EXPECT_TRUE(text.starts_with("     Some table hints \r\n"));
  EXPECT_TRUE(text.ends_with("\r\n     174 dBm-1   Hz"));
}

}  // namespace
}  // namespace kestrum
