#pragma once

#include <string>

#include "platform/clock.h"
#include "position/site.h"
#include "signal/reading.h"

namespace kestrum {

// One line of the log: eleven fields joined by ", ". Commas and line ends inside a text become blanks, so a
// record always has its eleven fields on one line.
std::string LogRecord(const DateTime& now, const Site& site, const Reading& reading);

// S text, uV and mV/m of a reading as the minimal display shows them.
std::string SignalText(const TableRow& converted);

// What the header of a block tells besides its date.
struct BlockHeading {
  std::string tx_latitude;
  std::string tx_longitude;
  std::string tx_height;
  std::string rig_text;  // rig, mode and frequency
  std::string antenna;
};
// "dd-mm-yyyy hh:mm:ss, TxLat, TxLong, TxHeight, rig text, antenna".
std::string BlockHeader(const DateTime& now, const BlockHeading& heading);
// The header between two lines of dashes as long as it is.
std::string BlockHead(const std::string& header);

// "hh:mm:ss", 24 hours.
std::string TimeText(const DateTime& now);
// "dd-mm-yyyy hh:mm:ss", as it heads a block.
std::string BlockStampText(const DateTime& now);
// "mm-dd-yy hh:mm:ss", as the start stamp shows it.
std::string StartStampText(const DateTime& now);

}  // namespace kestrum
