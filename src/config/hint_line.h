#pragma once

#include "config/settings.h"
#include "forms/form1.h"

namespace kestrum {

// One line of the main window that says why nothing is measured and what starts it, or what start-up found.
void ShowHint(const State& state, Form1& form);

// Starts the main timer, and the hint that it stood still goes.
void StartMeasuring(State& state, Form1& form);

}  // namespace kestrum
