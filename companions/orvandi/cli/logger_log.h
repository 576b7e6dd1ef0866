#pragma once

#include <QString>

namespace orvandi {

// The log that Kestrum writes: its name stands in line 21 of Kestrum.cfg in the folder of the programs;
// RSSI-GPS.log there when it does not. A name without a folder is a file in that folder.
QString LoggerLog(const QString& folder);

}  // namespace orvandi
