#include "desktop/text_convert.h"

#include <QList>
#include <algorithm>
#include <array>

namespace kestrum {
namespace {

// Characters of the bytes 80 to 9F; all others have the number of their byte.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ToByte(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) return static_cast<char>(character);
  const auto* const found =
      std::find_if(kUpperControls.begin(), kUpperControls.end(),
                   [character](char16_t known) { return static_cast<char32_t>(known) == character; });
  if (found == kUpperControls.end()) return '?';
  return static_cast<char>(0x80 + (found - kUpperControls.begin()));
}

}  // namespace

QString ToQt(std::string_view text) {
  QString result(static_cast<qsizetype>(text.size()), Qt::Uninitialized);
  std::transform(text.begin(), text.end(), result.begin(), [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    const bool listed = byte >= 0x80 && byte <= 0x9F;
    return QChar(listed ? kUpperControls.at(byte - 0x80U) : char16_t{byte});
  });
  return result;
}

QString ToQtLines(std::string_view text) {
  QString result = ToQt(text);
  if (text.find('\r') != std::string_view::npos) {
    result.replace(QLatin1String("\r\n"), QLatin1String("\n"));
  }
  return result;
}

std::string FromQt(const QString& text) {
  std::string result;
  const auto characters = text.toUcs4();
  result.reserve(static_cast<std::size_t>(characters.size()));
  for (const char32_t character : characters) result.push_back(ToByte(character));
  return result;
}

}  // namespace kestrum
