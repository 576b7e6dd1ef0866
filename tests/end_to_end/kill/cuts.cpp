#include "kill/cuts.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <random>
#include <set>
#include <vector>

#include "support_process/child.h"
#include "support_process/disk_trace.h"
#include "support_process/files.h"

namespace kestrum::end_to_end {
namespace {

constexpr std::size_t kFields = 11;
constexpr std::size_t kNumberField = 5;  // counted from 0: the height, which is the number and " m"

bool IsDashes(const std::string& line) {
  return !line.empty() && line.find_first_not_of('-') == std::string::npos;
}

// The number of a whole record; 0 for anything else.
std::size_t NumberOf(const std::string& line) {
  const auto fields = process::Split(line, ", ");
  if (fields.size() != kFields || !fields.back().ends_with(" mV/m") || line.size() < 8 || line[2] != ':') {
    return 0;
  }
  return static_cast<std::size_t>(std::strtoul(fields[kNumberField].c_str(), nullptr, 10));
}

// The old one, the new one or none at all.
bool ConfigurationIsWhole(const std::filesystem::path& path) {
  const std::string bytes = process::ReadFile(path);
  if (bytes.empty()) return !std::filesystem::exists(path);
  const auto lines = process::Split(bytes, "\r\n");
  if (lines.size() < 23 || lines[0] != "Kestrum Auto field strenght logger V1.02") return false;
  const bool is_long = lines[17] == "long";
  const std::string antenna = is_long ? std::string(500, 'L') : std::string("S");
  return lines.size() == (is_long ? 43U : 23U) && bytes.ends_with("\r\n") &&
         std::all_of(lines.begin() + 22, lines.end(), [&](const auto& line) { return line == antenna; });
}

std::size_t MadeIn(const std::string& bytes) {
  return static_cast<std::size_t>(std::strtoul(bytes.c_str(), nullptr, 10));
}

void Recover(const process::Scratch& scratch) {
  process::Child start({{KESTRUM_WRITER, scratch.path().string(), "0"}, {}, {}});
  if (start.Wait() != 0) std::fputs("the program does not start after the cut\n", stderr);
}

}  // namespace

LogReport ReportOf(const std::string& log, std::size_t made) {
  LogReport report;
  if (!log.empty() && !log.ends_with("\r\n")) ++report.torn;
  const auto lines = process::Split(log, "\r\n");
  std::map<std::size_t, std::size_t> seen;
  std::size_t last = 0;
  for (std::size_t i = 0; i < lines.size(); ++i) {
    if (IsDashes(lines[i])) {
      const bool whole =
          i + 2 < lines.size() && lines[i + 1].size() == lines[i].size() && lines[i + 2] == lines[i];
      if (whole) {
        ++report.blocks;
        i += 2;
      } else {
        ++report.torn;
      }
      continue;
    }
    const std::size_t number = NumberOf(lines[i]);
    if (number == 0 || report.blocks == 0) {
      ++report.torn;
      continue;
    }
    ++seen[number];
    ++report.records;
    report.in_order = report.in_order && number > last;
    last = number;
  }
  for (const auto& [number, times] : seen) {
    if (times > 1) ++report.doubled;
    if (number > made) ++report.torn;
  }
  for (std::size_t number = 1; number <= made; ++number) report.lost += seen.contains(number) ? 0U : 1U;
  return report;
}

void CutTable::Add(const LogReport& report, std::size_t made_then, std::size_t lost_before) {
  ++runs;
  made += made_then;
  const std::size_t now = report.lost - lost_before;
  lost += now;
  most_lost = std::max(most_lost, now);
  doubled += report.doubled;
  torn += report.torn;
  if (!report.in_order) ++out_of_order;
}

std::string CutTable::Head() {
  return "how              runs   records made   lost   most in a run   doubled   torn   disorder   bad "
         "config";
}

std::string CutTable::Row(const std::string& what) const {
  std::array<char, 200> line{};
  std::snprintf(line.data(), line.size(), "%-14s %6d %14zu %6zu %15zu %9zu %6zu %10d %12d", what.c_str(),
                runs, made, lost, most_lost, doubled, torn, out_of_order, broken_configurations);
  return line.data();
}

CutTable PowerCuts(int cuts, int records, unsigned seed) {
  const process::Scratch drive;
  const process::Scratch account;
  process::Child writer({{KESTRUM_WRITER, drive.path().string(), std::to_string(records)},
                         {{"LD_PRELOAD", KESTRUM_DISK_SHIM},
                          {"KESTRUM_DISK_FOLDER", drive.path().string()},
                          {"KESTRUM_DISK_TRACE", account.File("trace")}},
                         {}});
  CutTable table;
  if (writer.Wait(std::chrono::minutes(10)) != 0) return table;
  const auto steps = process::ReadDiskTrace(account.File("trace"));
  std::mt19937 random(seed);
  std::vector<std::size_t> moments;
  for (int i = 0; i < cuts; ++i) {
    moments.push_back(std::uniform_int_distribution<std::size_t>(0, steps.size())(random));
  }
  std::sort(moments.begin(), moments.end());
  process::TornDisk disk;
  std::size_t done = 0;
  for (const std::size_t moment : moments) {
    for (; done < moment; ++done) disk.Do(steps[done]);
    const process::Scratch found;
    for (const auto& [name, bytes] : disk.Cut(random)) process::WriteFile(found.File(name), bytes);
    if (!ConfigurationIsWhole(found.File("Kestrum.cfg"))) ++table.broken_configurations;
    Recover(found);
    const std::size_t made = MadeIn(disk.Seen("made"));
    table.Add(ReportOf(process::ReadFile(found.File("RSSI-GPS.log")), made), made, 0);
  }
  return table;
}

CutTable Kills(int kills, unsigned seed) {
  const process::Scratch scratch;
  std::mt19937 random(seed);
  CutTable table;
  std::size_t lost_before = 0;
  std::size_t made_before = 0;
  for (int kill = 0; kill < kills; ++kill) {
    process::Child writer({{KESTRUM_WRITER, scratch.path().string()}, {}, {}});
    if (kill % 2 == 0) writer.ReadLine();  // every other time within the start
    process::LetComeWithin(std::chrono::milliseconds(60), random);
    writer.Kill();
    if (writer.Wait() != -SIGKILL) std::fputs("the program has ended before it was killed\n", stderr);
    if (!ConfigurationIsWhole(scratch.File("Kestrum.cfg"))) ++table.broken_configurations;
    Recover(scratch);
    const std::size_t made = MadeIn(process::ReadFile(scratch.File("made")));
    const LogReport report = ReportOf(process::ReadFile(scratch.File("RSSI-GPS.log")), made);
    table.Add(report, made - made_before, lost_before);
    lost_before = report.lost;
    made_before = made;
  }
  return table;
}

}  // namespace kestrum::end_to_end
