#pragma once

namespace orvandi {

// Whether whoever has started this program asks for a minimised window; what is started from here is not
// asked. Each folder linux/ or win32/ implements it.
bool StartedMinimised();

}  // namespace orvandi
