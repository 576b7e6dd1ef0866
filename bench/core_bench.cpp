#include <benchmark/benchmark.h>

#include "position/coordinates.h"
#include "support/scripted_car.h"

namespace kestrum::test {
namespace {

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
  state.SetItemsProcessed(state.iterations());
}
BENCHMARK(WholeCycle);

void ConvertAll256Values(benchmark::State& state) {
  BenchCar car;
  for (auto _ : state) {
    for (int raw = 0; raw < 256; ++raw) car.app.table.ConvertRSSI(raw);
    benchmark::DoNotOptimize(car.app.table.S2Ftable[kCurrentRow]);
  }
}
BENCHMARK(ConvertAll256Values);

void DistanceAndBearing(benchmark::State& state) {
  GreatCircle circle;
  circle.tx = {51.95, 5.533333};
  circle.rx = {51.97083, 5.575};
  for (auto _ : state) {
    circle.CalcDistBearing();
    benchmark::DoNotOptimize(circle.bearing_deg);
  }
}
BENCHMARK(DistanceAndBearing);

void CheckCoordinate(benchmark::State& state) {
  for (auto _ : state) benchmark::DoNotOptimize(CheckLatLong("51 57,00 n", "LAT"));
}
BENCHMARK(CheckCoordinate);

// 100 records fill the buffer; the flush goes to the scripted disk.
void AddRecord(benchmark::State& state) {
  BenchCar car;
  for (auto _ : state) car.app.log.AddLogRecord();
}
BENCHMARK(AddRecord);

void LoadConfiguration(benchmark::State& state) {
  BenchCar car;
  for (auto _ : state) car.app.config.LoadCfg();
}
BENCHMARK(LoadConfiguration);

void LoadCalibration(benchmark::State& state) {
  BenchCar car;
  car.app.calibration_files.SaveS2Ftable("/car/Calibration1.cfg");
  for (auto _ : state) {
    car.app.calibration_files.LoadS2Ftable("/car/Calibration1.cfg");
    car.Forget();
  }
}
BENCHMARK(LoadCalibration);

}  // namespace
}  // namespace kestrum::test
