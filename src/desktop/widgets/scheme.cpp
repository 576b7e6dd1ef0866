#include "desktop/widgets/scheme.h"

#include <algorithm>
#include <cmath>

namespace kestrum {
namespace {

constexpr double kFadedStrength = 0.34;
constexpr int kMiddleGray = 124;  // tells night from day; a luminance of 0.2

Scheme MakeDay() {
  Scheme day;
  day.ground = QColor(0xFF, 0xFF, 0xFF);
  day.ink = QColor(0x00, 0x00, 0x00);
  day.quiet = QColor(0x50, 0x57, 0x5E);
  day.line = QColor(0xC4, 0xC9, 0xCE);
  day.bar = QColor(0x0B, 0x57, 0xB8);
  day.bar_ground = QColor(0xE4, 0xE9, 0xF0);
  day.peak = QColor(0x00, 0x00, 0x00);
  day.hatch = QColor(0xC6, 0x4A, 0x4A);
  day.button = QColor(0xEE, 0xF0, 0xF2);
  day.dial = QColor(0xFF, 0xFF, 0xFF);
  day.halo = QColor(0xFF, 0xFF, 0xFF);
  day.logging = QColor(0x1B, 0x6E, 0x2E);
  day.logging_ink = QColor(0xFF, 0xFF, 0xFF);
  return day;
}

Scheme MakeNight() {
  Scheme night;
  night.ground = QColor(0x00, 0x00, 0x00);
  night.ink = QColor(0xFF, 0xB4, 0x54);
  night.quiet = QColor(0xB0, 0x82, 0x48);
  night.line = QColor(0x3A, 0x32, 0x28);
  night.bar = QColor(0xCC, 0x80, 0x20);
  night.bar_ground = QColor(0x1C, 0x1A, 0x17);
  night.peak = QColor(0xFF, 0xD8, 0xA0);
  night.hatch = QColor(0xA8, 0x3A, 0x2E);
  night.button = QColor(0x1E, 0x1B, 0x17);
  night.dial = QColor(0x12, 0x13, 0x15);
  night.halo = QColor(0x9A, 0xA4, 0xC8);
  night.logging = QColor(0x1F, 0x5A, 0x2C);
  night.logging_ink = QColor(0xFF, 0xE2, 0xB8);
  night.night = true;
  return night;
}

double Luminance(const QColor& color) {
  const auto linear = [](double part) {
    return part <= 0.03928 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

}  // namespace

const Scheme& DayScheme() {
  static const Scheme day = MakeDay();
  return day;
}

const Scheme& NightScheme() {
  static const Scheme night = MakeNight();
  return night;
}

LampShades Scheme::Lamp(LampState state, bool lit) const {
  switch (state) {
    case LampState::kTrouble: {
      const QColor red = night ? QColor(0xB3, 0x1B, 0x1B) : QColor(0xC6, 0x28, 0x28);
      const QColor edge = night ? QColor(0xE0, 0x5A, 0x50) : red;
      return {red, Qt::white, Qt::white, edge};
    }
    case LampState::kNote: {
      const QColor amber = night ? QColor(0xE0, 0x8A, 0x00) : QColor(0xFF, 0xA0, 0x00);
      return {amber, Qt::black, Qt::black, night ? amber : QColor(0x8A, 0x52, 0x00)};
    }
    case LampState::kGood: {
      const QColor green = night ? QColor(0x5F, 0xB0, 0x70) : QColor(0x1B, 0x6E, 0x2E);
      if (lit) return {logging, logging_ink, logging_ink, night ? green : logging};
      return {ground, ink, green, quiet};
    }
    case LampState::kOff:
      break;
  }
  return {ground, ink, quiet, quiet};
}

QPalette PaletteOf(const Scheme& scheme) {
  QPalette palette(scheme.button, scheme.ground);
  for (const auto role :
       {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
    palette.setColor(role, scheme.ink);
    palette.setColor(QPalette::Disabled, role, scheme.quiet);
  }
  palette.setColor(QPalette::Base, scheme.ground);
  palette.setColor(QPalette::AlternateBase, scheme.button);
  palette.setColor(QPalette::ToolTipBase, scheme.button);
  palette.setColor(QPalette::PlaceholderText, scheme.quiet);
  palette.setColor(QPalette::Mid, scheme.line);
  palette.setColor(QPalette::Highlight, scheme.bar);
  palette.setColor(QPalette::HighlightedText, scheme.night ? Qt::black : Qt::white);
  palette.setColor(QPalette::Link, scheme.bar);
  return palette;
}

const Scheme& SchemeOf(const QPalette& palette) {
  // By the buttons: the ground of a single widget may be a warning colour.
  return qGray(palette.color(QPalette::Button).rgb()) < kMiddleGray ? NightScheme() : DayScheme();
}

QColor Faded(const QColor& ink, const QColor& ground) {
  const auto mix = [](int a, int b) {
    return static_cast<int>(std::lround(a * kFadedStrength + b * (1 - kFadedStrength)));
  };
  return {mix(ink.red(), ground.red()), mix(ink.green(), ground.green()), mix(ink.blue(), ground.blue())};
}

double Contrast(const QColor& one, const QColor& other) {
  const double a = Luminance(one);
  const double b = Luminance(other);
  return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace kestrum
