#include "faults.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace kestrum::drivesim {
namespace {

struct Named {
  std::string_view name;
  FaultKind kind;
};
constexpr std::array<Named, 10> kFaults = {{{"silence", FaultKind::kSilence},
                                            {"garbage", FaultKind::kGarbage},
                                            {"short", FaultKind::kShort},
                                            {"long", FaultKind::kLong},
                                            {"late", FaultKind::kLate},
                                            {"wrong", FaultKind::kWrong},
                                            {"vanish", FaultKind::kVanish},
                                            {"nofix", FaultKind::kNoFix},
                                            {"gps-silence", FaultKind::kGpsSilence},
                                            {"gps-vanish", FaultKind::kGpsVanish}}};

// What stands before the first `mark`; the rest, without the mark, stays in `text`.
std::string_view Cut(std::string_view& text, std::string_view marks) {
  const std::size_t end = text.find_first_of(marks);
  const std::string_view piece = text.substr(0, end);
  text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
  return piece;
}

std::optional<FaultRow> ParseRow(std::string_view text) {
  const bool has_duration = std::count(text.begin(), text.end(), ':') == 2;
  if (!has_duration && std::count(text.begin(), text.end(), ':') != 1) return std::nullopt;
  const auto at = ParseSeconds(Trimmed(Cut(text, ":")));
  const auto kind = FaultOf(Trimmed(Cut(text, ":")));
  if (!at || !kind) return std::nullopt;
  if (!has_duration) return FaultRow{*at, *kind, kNoEnd};
  const auto duration = ParseSeconds(Trimmed(text));
  if (!duration) return std::nullopt;
  return FaultRow{*at, *kind, *duration};
}

}  // namespace

std::optional<FaultKind> FaultOf(std::string_view name) {
  for (const Named& row : kFaults) {
    if (row.name == name) return row.kind;
  }
  return std::nullopt;
}

std::string_view FaultName(FaultKind kind) {
  for (const Named& row : kFaults) {
    if (row.kind == kind) return row.name;
  }
  return {};
}

std::string FaultNames() {
  std::string names;
  for (const Named& row : kFaults) {
    if (!names.empty()) names += ", ";
    names += row.name;
  }
  return names;
}

std::string_view Trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t\r\n";
  const std::size_t from = text.find_first_not_of(kBlanks);
  if (from == std::string_view::npos) return {};
  return text.substr(from, text.find_last_not_of(kBlanks) - from + 1);
}

std::optional<double> ParseSeconds(std::string_view text) {
  double value = 0;
  const auto [stop, error] =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (error != std::errc{} || stop != text.data() + text.size()) return std::nullopt;
  if (!std::isfinite(value) || value < 0) return std::nullopt;
  return value;
}

Result<std::vector<FaultRow>> ParseFaults(std::string_view text) {
  std::vector<FaultRow> rows;
  while (!text.empty()) {
    std::string_view line = Cut(text, "\n");
    line = Cut(line, "#");
    while (!line.empty()) {
      const std::string_view row_text = Trimmed(Cut(line, ","));
      if (row_text.empty()) continue;
      const auto row = ParseRow(row_text);
      if (!row) {
        return Fault{"", "fault \"" + std::string(row_text) +
                             "\" is not second:kind:duration with a kind of " + FaultNames()};
      }
      rows.push_back(*row);
    }
  }
  return rows;
}

FaultBoard::FaultBoard(const std::vector<FaultRow>& rows) {
  for (const FaultRow& row : rows) Start(row);
}

void FaultBoard::Clear(double now_s, std::optional<FaultKind> kind) {
  for (Span& span : spans_) {
    if (span.from_s <= now_s && (!kind || *kind == span.kind)) span.to_s = std::min(span.to_s, now_s);
  }
}

bool FaultBoard::Active(FaultKind kind, double now_s) const {
  return std::any_of(spans_.begin(), spans_.end(), [&](const Span& span) {
    return span.kind == kind && span.from_s <= now_s && now_s < span.to_s;
  });
}

double FaultBoard::NextChange(double now_s) const {
  double next = kNoEnd;
  for (const Span& span : spans_) {
    if (span.from_s > now_s) next = std::min(next, span.from_s);
    if (span.to_s > now_s) next = std::min(next, span.to_s);
  }
  return next;
}

}  // namespace kestrum::drivesim
