#include <benchmark/benchmark.h>

#include <chrono>
#include <filesystem>
#include <memory>

#include "desktop/platform_factory.h"
#include "position/coordinates.h"
#include "row_reporter.h"
#include "support/scripted_car.h"

namespace kestrum::test {
namespace {

constexpr int kRepetitions = 25;
constexpr double kSecondsEach = 0.04;
constexpr int kFlushes = 200;

const Site kSite{"GPS Ok", "5158.25N", "00534.50E", "1.23 km", "10.1 m", "45\xB0"};
const Reading kReading{100, {"S8", " 25", " 10.4"}, {}};

// A running program whose recordings do not pile up.
struct BenchCar : ScriptedCar {
  BenchCar() {
    WriteConfig(UsualSettings());
    world.files.forget_appends = true;
    Start({.start_logging = true});
    SendGps("5158.25N", "00534.50E");
    s_meter = 100;
  }
  void Forget() {
    world.serial.written.clear();
    world.clock.sleeps_ms.clear();
  }
};

void WholeCycle(benchmark::State& state) {
  BenchCar car;
  for (auto _ : state) {
    car.form1.tmrMain.tick();
    car.Forget();
  }
}

void ConvertAll256Values(benchmark::State& state) {
  BenchCar car;
  for (auto _ : state) {
    for (int raw = 0; raw < 256; ++raw) car.app.table.ConvertRSSI(raw);
    benchmark::DoNotOptimize(car.app.table.S2Ftable[kCurrentRow]);
  }
}

void DistanceAndBearing(benchmark::State& state) {
  GreatCircle circle;
  circle.tx = {51.95, 5.533333};
  circle.rx = {51.97083, 5.575};
  for (auto _ : state) {
    circle.CalcDistBearing();
    benchmark::DoNotOptimize(circle.bearing_deg);
  }
}

void CheckCoordinate(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(CheckLatLong("51 57,00 n", "LAT"));
}

// 100 records fill the buffer; the flush goes to the scripted disk.
void AddRecord(benchmark::State& state) {
  BenchCar car;
  for (auto _ : state) car.app.log.AddLogRecord(car.world.clock.now, kSite, kReading);
}

// The scripted car with the disk that this program lies on. One flush is one sample.
void FlushToDisk(benchmark::State& state) {
  const std::string path =
      (std::filesystem::read_symlink("/proc/self/exe").parent_path() / "flush-bench.log").string();
  ScriptedPorts world;
  const auto disk = MakeFileStore(QStringLiteral("."));
  Application app(Ports{world.serial, world.links, world.dialogs, world.clock, world.pump, world.beeper,
                        world.program, world.windows, *disk, world.worker});
  for (int record = 0; record < 99; ++record) app.log.AddLogRecord(world.clock.now, kSite, kReading);
  const auto full_buffer = app.log.LogBuffer;
  app.log.NotLogging = false;
  for (auto _ : state) {
    app.log.LogBuffer = full_buffer;
    app.log.LogBuffer[100] = full_buffer[99];
    app.log.LogCount = 100;
    const auto from = std::chrono::steady_clock::now();
    app.log.FlushLog(path);
    state.SetIterationTime(std::chrono::duration<double>(std::chrono::steady_clock::now() - from).count());
  }
  if (!world.dialogs.messages.empty()) state.SkipWithError("the disk refused the block");
  std::filesystem::remove(path);
}

void LoadConfiguration(benchmark::State& state) {
  BenchCar car;
  for (auto _ : state) car.app.config.LoadCfg();
}

void LoadCalibration(benchmark::State& state) {
  BenchCar car;
  car.app.calibration_files.SaveS2Ftable("/car/Calibration1.cfg");
  for (auto _ : state) {
    car.app.calibration_files.LoadS2Ftable("/car/Calibration1.cfg");
    car.Forget();
  }
}

void Register(const char* name, void (*function)(benchmark::State&)) {
  benchmark::RegisterBenchmark(name, function)->Repetitions(kRepetitions)->MinTime(kSecondsEach);
}

std::map<std::string, bench::Row> Titles() {
  return {
      {"WholeCycle", {"Whole cycle, scripted ports (10 us are 100,000 a second)", "us", {}, {10, {}}, {}}},
      {"ConvertAll256Values", {"ConvertRSSI, all 256 values", "us", {}, {}, {}}},
      {"DistanceAndBearing", {"CalcDistBearing", "ns", {}, {}, {}}},
      {"CheckCoordinate", {"CheckLatLong", "ns", {}, {}, {}}},
      {"AddRecord", {"AddLogRecord, every 100th with a flush to memory", "us", {}, {}, {}}},
      {"FlushToDisk", {"FlushLog of 100 records to the disk, synced", "ms", {}, {}, {}}},
      {"LoadConfiguration", {"LoadCfg from memory", "us", {}, {}, {}}},
      {"LoadCalibration", {"LoadS2Ftable from memory", "us", {}, {}, {}}},
  };
}

}  // namespace
}  // namespace kestrum::test

int main(int argc, char** argv) {
  using namespace kestrum::test;
  benchmark::Initialize(&argc, argv);
  if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 2;
  Register("WholeCycle", WholeCycle);
  Register("ConvertAll256Values", ConvertAll256Values);
  Register("DistanceAndBearing", DistanceAndBearing);
  Register("CheckCoordinate", CheckCoordinate);
  Register("AddRecord", AddRecord);
  benchmark::RegisterBenchmark("FlushToDisk", FlushToDisk)
      ->UseManualTime()
      ->Iterations(1)
      ->Repetitions(kFlushes);
  Register("LoadConfiguration", LoadConfiguration);
  Register("LoadCalibration", LoadCalibration);
  kestrum::bench::RowReporter rows(Titles());
  benchmark::RunSpecifiedBenchmarks(&rows);
}
