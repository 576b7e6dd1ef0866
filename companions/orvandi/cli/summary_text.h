#pragma once

#include <QString>
#include <span>

#include "analysis/layers.h"
#include "analysis/recalibration.h"

namespace orvandi {

// The drive in numbers as plain text, for --summary.
QString SummaryText(std::span<const NamedLog> logs, const Recalibration* recalibration = nullptr);

}  // namespace orvandi
