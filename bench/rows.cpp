#include "rows.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace kestrum::bench {
namespace {

constexpr std::size_t kEnoughForPercentile = 100;

// Three significant digits; large numbers whole.
std::string Figure(double value) {
  const double size = std::fabs(value);
  const int decimals = size >= 100 ? 0 : size >= 10 ? 1 : size >= 1 ? 2 : 3;
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "%.*f", decimals, value);
  return text.data();
}

// Nearest rank.
double Percentile(const std::vector<double>& sorted, double share) {
  const auto rank = static_cast<std::size_t>(std::ceil(share * static_cast<double>(sorted.size())));
  return sorted[std::clamp<std::size_t>(rank, 1, sorted.size()) - 1];
}

std::string Limit(double value) {
  std::array<char, 64> text{};
  std::snprintf(text.data(), text.size(), "< %g", value);
  return text.data();
}

std::string AimText(const Aim& aim) {
  if (!aim.median) return "-";
  return Limit(*aim.median) + (aim.percentile_99 ? "; 99th " + Limit(*aim.percentile_99) : "");
}

}  // namespace

void Print(const Row& row) {
  if (row.samples.empty()) {
    std::printf("%s\t%s\t-\t-\t-\t%s\tnot measured\n", row.what.c_str(), row.unit.c_str(),
                AimText(row.aim).c_str());
    return;
  }
  std::vector<double> sorted = row.samples;
  std::sort(sorted.begin(), sorted.end());
  const double median = Percentile(sorted, 0.5);
  const double percentile_99 = Percentile(sorted, 0.99);
  const bool many = sorted.size() >= kEnoughForPercentile;
  std::string high = "-";
  if (many) {
    high = Figure(percentile_99);
  } else if (sorted.size() > 1) {
    high = "(" + Figure(sorted.back()) + ")";
  }
  const bool met = (!row.aim.median || median < *row.aim.median) &&
                   (!row.aim.percentile_99 || percentile_99 < *row.aim.percentile_99);
  std::string verdict = "-";
  if (row.aim.median) {
    verdict = met ? "met" : "missed";
    if (!met && !row.why_missed.empty()) verdict += ": " + row.why_missed;
  }
  std::printf("%s\t%s\t%s\t%s\t%s\t%s\t%s\n", row.what.c_str(), row.unit.c_str(),
              sorted.size() > 1 ? Figure(sorted.front()).c_str() : "-", Figure(median).c_str(), high.c_str(),
              AimText(row.aim).c_str(), verdict.c_str());
  std::fflush(stdout);
}

}  // namespace kestrum::bench
