#pragma once

#include "position_texts.h"
#include "support/fuzz.h"

namespace kestrum::posdex {

inline bool LooksLikeNumber(const QString& text) {
  const std::string plain = text.toStdString();
  const auto point = plain.find('.');
  const bool one_decimal = point == std::string::npos || point + 2 == plain.size();
  return one_decimal && !plain.empty() && plain.size() <= 10 && plain.find('-', 1) == std::string::npos &&
         fuzz::MadeOf(plain, fuzz::kNumberCharacters);
}

inline void CheckCoordinate(const QString& text, int degree_digits, int limit, std::string_view letters) {
  const std::string plain = text.toStdString();
  const auto digits = static_cast<std::size_t>(degree_digits);
  const bool form = plain.size() == digits + 8 && plain[digits + 2] == '.' &&
                    fuzz::MadeOf(plain.substr(0, digits + 2), "0123456789") &&
                    fuzz::MadeOf(plain.substr(digits + 3, 4), "0123456789") &&
                    letters.find(plain.back()) != std::string_view::npos;
  fuzz::Require(form, "form of a coordinate", plain);
  const double minutes = std::stod(plain.substr(digits, 7));
  const double degrees = std::stod(plain.substr(0, digits)) + minutes / 60;
  fuzz::Require(minutes < 60 && degrees <= limit, "a coordinate lies on the globe", plain);
}

// What the logger may rely on, whatever the receiver said.
inline void CheckTexts(const GpsTexts& texts) {
  CheckCoordinate(texts.latitude, 2, 90, "NS");
  CheckCoordinate(texts.longitude, 3, 180, "EW");
  fuzz::Require(texts.validity == QLatin1String("A") || texts.validity == QLatin1String("V"), "validity");
  for (const QString& number : {texts.compass, texts.height, texts.speed})
    fuzz::Require(LooksLikeNumber(number), "a plain number", number.toStdString());
}

}  // namespace kestrum::posdex
