#pragma once

#include <cstdint>
#include <string>

#include "forms/form1.h"
#include "platform/clock.h"
#include "signal/calibration_table.h"

namespace kestrum {

// One line of the log: eleven fields joined by ", ", the captions as the main window shows them.
std::string LogRecord(const DateTime& now, const Form1& form, std::int16_t rssi_raw, const TableRow& current);

// "hh:mm:ss", 24 hours.
std::string TimeText(const DateTime& now);
// "dd-mm-yyyy hh:mm:ss", as it heads a block.
std::string BlockStampText(const DateTime& now);
// "mm-dd-yy hh:mm:ss", as the start stamp shows it.
std::string StartStampText(const DateTime& now);

}  // namespace kestrum
