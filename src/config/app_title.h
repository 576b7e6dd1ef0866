#pragma once

#include <string>

namespace kestrum {

// Title of message boxes; the trailing blank and "strenght" are the program's own spelling, kept on purpose:
// the first line of every configuration file in the field repeats them.
inline const std::string AppTitle = "Kestrum Auto field strenght logger ";
inline const std::string Version = "V" KESTRUM_VERSION;
inline const std::string VersionedTitle = AppTitle + Version;

}  // namespace kestrum
