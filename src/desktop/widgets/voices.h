#pragma once

namespace kestrum {

// Tells screen readers what the painted widgets show: lamps with their words as they stand now, texts, the
// bar with its value; and lets them press what can be pressed. Called once the toolkit stands; again does
// nothing.
void GiveVoices();

}  // namespace kestrum
