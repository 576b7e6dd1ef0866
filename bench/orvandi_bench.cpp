#include <sys/wait.h>
#include <unistd.h>

#include <QString>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "analysis/comparison.h"
#include "analysis/layers.h"
#include "analysis/pattern.h"
#include "analysis/samples.h"
#include "analysis/summary.h"
#include "export/exporter.h"
#include "generated_drive.h"
#include "log/log_file.h"
#include "rows.h"

// The mapping program's reading and arithmetic on a log of a million records, without its window.
namespace kestrum::bench {
namespace {

using SteadyClock = std::chrono::steady_clock;

constexpr std::size_t kRecords = 1'000'000;
constexpr int kRuns = 7;

double MsOf(const std::function<void()>& work) {
  const auto start = SteadyClock::now();
  work();
  return std::chrono::duration<double, std::milli>(SteadyClock::now() - start).count();
}

// Processor time of this thread: the same on a busy machine.
double ProcessorMsOf(const std::function<void()>& work) {
  const auto now = [] {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
  };
  const double start = now();
  work();
  return now() - start;
}

std::vector<double> Several(const std::function<void()>& work) {
  std::vector<double> samples;
  for (int run = 0; run < kRuns; ++run) samples.push_back(MsOf(work));
  return samples;
}

// The largest resident memory of a child that opens the log: nothing else has been done in it.
double PeakMbOfOpening(const std::string& path) {
  int ends[2] = {};
  if (::pipe(ends) != 0) return 0;
  const pid_t child = ::fork();
  if (child == 0) {
    orvandi::LogFile file(path);
    const bool ok = file.Open().ok;
    std::ifstream status("/proc/self/status");
    std::string line;
    double peak_mb = 0;
    while (std::getline(status, line)) {
      if (line.starts_with("VmHWM:")) peak_mb = std::stod(line.substr(6)) / 1e3;
    }
    const bool told = ok && ::write(ends[1], &peak_mb, sizeof peak_mb) == sizeof peak_mb;
    ::_exit(told ? 0 : 1);
  }
  double peak_mb = 0;
  ::close(ends[1]);
  if (::read(ends[0], &peak_mb, sizeof peak_mb) != sizeof peak_mb) peak_mb = 0;
  ::close(ends[0]);
  ::waitpid(child, nullptr, 0);
  return peak_mb;
}

void MeasureFollowing(const std::string& path, orvandi::LogFile& file) {
  std::vector<double> updates;
  std::vector<double> nothing_new;
  for (int block = 0; block < 100; ++block) {
    std::ofstream(path, std::ios::binary | std::ios::app)
        << GeneratedDrive(100, kRecords + 100U * static_cast<unsigned>(block));
    updates.push_back(MsOf([&] { file.Update(); }));
    nothing_new.push_back(MsOf([&] { file.Update(); }));
  }
  Print({"Orvandi: a block of 100 records more in a log of a million", "ms", updates, {5.0, {}}, ""});
  Print({"Orvandi: looking whether the log grew", "ms", nothing_new, {1.0, {}}, ""});
}

void MeasureStatistics(const std::vector<orvandi::NamedLog>& logs) {
  const std::vector<orvandi::Sample> samples = orvandi::CollectSamples(logs);
  const std::span<const orvandi::Sample> all(samples);
  const auto a = all.first(all.size() / 2);
  const auto b = all.last(all.size() / 2);
  Print({"Orvandi: levels of a million records",
         "ms",
         Several([&] { orvandi::CollectSamples(logs); }),
         {},
         ""});
  orvandi::Law law;
  Print({"Orvandi: fitted law",
         "ms",
         Several([&] { law = orvandi::FitLawWithinSectors(samples, 10); }),
         {},
         ""});
  Print({"Orvandi: antenna pattern, sectors of 5 degrees",
         "ms",
         Several([&] { orvandi::AntennaPattern(samples, law, 5); }),
         {},
         ""});
  Print({"Orvandi: difference of two layers, squares of 25 m",
         "ms",
         Several([&] { orvandi::CompareByPlace(a, b, 25); }),
         {},
         ""});
  Print({"Orvandi: summary", "ms", Several([&] { orvandi::Summarise(logs); }), {}, ""});
}

void MeasureExports(const std::vector<orvandi::NamedLog>& logs, const std::string& folder) {
  struct Target {
    const char* what;
    orvandi::Format format;
  };
  for (const Target& target :
       {Target{"CSV", orvandi::Format::kCsv}, Target{"GeoJSON", orvandi::Format::kGeoJson},
        Target{"GPX", orvandi::Format::kGpx}, Target{"KML", orvandi::Format::kKml}}) {
    const QString path = QString::fromStdString(folder + "/export");
    const double ms = ProcessorMsOf([&] { orvandi::ExportToFile(path, target.format, logs); });
    Print({std::string("Orvandi: a million records as ") + target.what + ", processor time",
           "ms",
           {ms},
           {},
           ""});
  }
}

int Run() {
  const std::string folder =
      (std::filesystem::temp_directory_path() / ("orvandi-bench-" + std::to_string(::getpid()))).string();
  std::filesystem::create_directory(folder);
  const std::string path = folder + "/drive.log";
  std::ofstream(path, std::ios::binary) << GeneratedDrive(kRecords, 0);
  Print({"Orvandi: a log of a million records on the disk",
         "MB",
         {static_cast<double>(std::filesystem::file_size(path)) / 1e6},
         {},
         ""});
  Print({"Orvandi: a log of a million records opens",
         "ms",
         Several([&] { orvandi::LogFile(path).Open(); }),
         {2000.0, {}},
         ""});
  Print({"Orvandi: a log of a million records opens, processor time",
         "ms",
         {ProcessorMsOf([&] { orvandi::LogFile(path).Open(); })},
         {},
         ""});
  Print({"Orvandi: peak memory of opening it, without the window",
         "MB",
         {PeakMbOfOpening(path)},
         {400.0, {}},
         ""});
  orvandi::LogFile file(path);
  const bool ok = file.Open().ok && file.Content().records.size() == kRecords;
  if (ok) {
    const std::vector<orvandi::NamedLog> logs = {{&file.Content(), "drive.log"}};
    MeasureStatistics(logs);
    MeasureExports(logs, folder);
    MeasureFollowing(path, file);
  }
  std::filesystem::remove_all(folder);
  return ok ? 0 : 1;
}

}  // namespace
}  // namespace kestrum::bench

int main() {
  return kestrum::bench::Run();
}
