#include "config/app_title.h"
#include "support/fuzz.h"
#include "support/scripted_car.h"
#include "text/text.h"

// The input is a configuration file; the whole program starts with it, drives a second and exits.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum;
  using namespace kestrum::fuzz;
  using std::chrono::milliseconds;
  const std::string config = "/car/Kestrum.cfg";
  const std::string file = Text(data, size);

  test::ScriptedCar car;
  car.s_meter = static_cast<int>(Mix(file) % 256);
  car.world.files.files[config] = file;
  car.Start({.start_logging = (Mix(file) & 256) != 0, .minimal = (Mix(file) & 512) != 0});
  Require(!car.world.program.Ended(), "no configuration ends the program");
  Require(car.form1.tmrMain.interval_ms >= 10, "the main timer never spins");
  Require(car.form1.sldSquelch.value >= 0 && car.form1.sldSquelch.value <= 255, "the squelch stays in range");
  car.SendGps("5150.00N", "00528.00E");
  car.RunFor(milliseconds(1000));
  const int raw = car.app.state.RssiRaw;
  Require(raw >= 0 && raw <= 255, "RssiRaw is a raw value", std::to_string(raw));
  const bool log_is_config = SameText(car.settings.LogFileName, config);
  car.app.ExitApp();
  Require(car.world.program.Ended(), "the program can always be ended");
  if (log_is_config) return 0;

  test::ScriptedCar next;
  next.world.files.files[config] = car.world.files.files[config];
  next.app.config.LoadCfg();
  Require(next.world.dialogs.messages.empty(), "what the exit saved can be loaded",
          car.world.files.files[config]);
  return 0;
}
