#pragma once

#include <QByteArray>
#include <QString>
#include <optional>

#include "position_texts.h"

namespace kestrum::posdex {

// What one line of a gpsd (JSON) says, as far as the reader cares.
struct GpsdReport {
  QString receiver;               // its device; empty when the report names none
  std::optional<Fix> position;    // a TPV with a mode; without number of satellites
  std::optional<int> satellites;  // used for the position; a SKY that counts them
  QString trouble;                // for the user, about a missing receiver
};

// Never fails: a line that makes no sense says nothing. Positions off the globe are none.
GpsdReport ParseGpsdReport(const QByteArray& line);

}  // namespace kestrum::posdex
