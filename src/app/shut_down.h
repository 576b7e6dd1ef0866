#pragma once

#include "app/life.h"
#include "app/parts.h"

namespace kestrum {

// Whether the user is asked to switch a running FT817 off.
enum class PowerQuestion { kAsked, kNotAsked };

// The shutdown sequence; of a second call nothing happens.
void ShutDown(Parts& parts, Life& life, PowerQuestion question);

// The factory settings are on the disk, and nothing may follow them: no reading, no record, no second save.
void EndWithoutShutDown(Form1& form, Life& life);

}  // namespace kestrum
