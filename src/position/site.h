#pragma once

#include <string>

namespace kestrum {

// Where the receiver is seen from: the texts as the main window shows them, question marks until they are
// known. A record is made of these.
struct Site {
  std::string validity = "No GPS";
  std::string latitude = "????.???";
  std::string longitude = "?????.???";
  std::string distance = "??? km";  // to the transmitter
  std::string height = "??? m";
  std::string bearing = "???\xB0";  // to the transmitter, relative to north
};

}  // namespace kestrum
