#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace kestrum {

// The core's 8-bit text (Windows-1252) as Unicode. The five bytes without a character keep their number, so
// that they survive the way back.
QString ToQt(std::string_view text);
// The same for showing: CR LF becomes a plain line break.
QString ToQtLines(std::string_view text);
// The way back; a character that the code page does not have becomes "?".
std::string FromQt(const QString& text);

}  // namespace kestrum
