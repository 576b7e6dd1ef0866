#pragma once

#include "platform/ports.h"

namespace kestrum {

void ShowAbout(const PortSet<Dialogs, Program>& ports);
void ShowShortCuts(const PortSet<Dialogs, Program>& ports);

}  // namespace kestrum
