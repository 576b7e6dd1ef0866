#pragma once

#include <string>

namespace kestrum {

// Reference text about powers in dBm and receiver sensitivity; CR LF between its lines.
std::string TableHints();

}  // namespace kestrum
