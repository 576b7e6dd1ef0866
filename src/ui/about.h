#pragma once

#include "platform/ports.h"

namespace kestrum {

void ShowAbout(const Ports& ports);
void ShowShortCuts(const Ports& ports);

}  // namespace kestrum
