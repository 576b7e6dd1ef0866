#include <array>
#include <cmath>

#include "config/app_title.h"
#include "config/main_config.h"
#include "support/fuzz.h"
#include "support/scripted_ports.h"
#include "text/number_text.h"

// The input is a configuration file.
namespace kestrum::fuzz {
namespace {

constexpr const char* kPath = "/car/Kestrum.cfg";

// A program that has just been started, with a desk that a rejected file must leave alone.
struct Desk {
  test::ScriptedPorts world;
  State state;
  Form1 form;
  MainConfig config{state, form, world.ports()};

  explicit Desk(const std::string& file) {
    Settings& settings = state.settings;
    settings.MainLeft = 15;
    settings.MainTop = 30;
    settings.MinimalLeft = 45;
    settings.MinimalTop = 60;
    settings.OnOffCaption = "before";
    form.cmdFT817OnOff.caption = kPowerOffCaption;
    world.files.files[kPath] = file;
    config.LoadCfg();
  }

  bool Rejected() const { return !world.dialogs.messages.empty(); }
  const std::string& Save() {
    form.lblFreq.caption = state.settings.FrequencyText;
    config.SaveCfg();
    return world.files.files[kPath];
  }
};

void CheckRejected(const Desk& desk) {
  const Settings& s = desk.state.settings;
  Require(desk.world.dialogs.messages.size() == 1, "a rejected file is told once");
  Require(desk.world.dialogs.messages[0].text ==
              "LoadCfg\r\nInvalide version of /car/Kestrum.cfg\r\n\r\nI load default values now!",
          "text of the rejection", desk.world.dialogs.messages[0].text);
  const bool numbers = s.RigModel == 1 && s.ComPort == 1 && s.BaudRate == 4800 && s.TimeIntervalMs == 5000 &&
                       s.RigMode == 2 && s.FieldStrengthUnit == 1 && s.SquelchLevel == 0 && s.KHzStep == 9 &&
                       s.DistanceIntervalKm == 1;
  Require(numbers, "a rejected file gives the factory numbers");
  const bool flags = s.ProgressBarMode && s.ShowDDE && !s.LogByDistance && !s.AverageRSSI && !s.DialLock;
  Require(flags, "a rejected file gives the factory flags");
  const bool texts = s.TxLat == "5157.00N" && s.TxLong == "00532.00E" && s.TxHeight == "? m" &&
                     s.FrequencyText == "3630" && s.CalibrationFiles[2] == "/car/Calibration3.cfg" &&
                     s.LogFileName == "/car/RSSI-GPS.log" && s.TxAntennas[0] == "Antenna1, PWR 10W";
  Require(texts, "a rejected file gives the factory texts");
  const bool desk_as_before = s.MainLeft == 15 && s.MainTop == 30 && s.MinimalLeft == 45 &&
                              s.MinimalTop == 60 && s.OnOffCaption == "before" &&
                              desk.form.cmdFT817OnOff.caption == kPowerOffCaption;
  Require(desk_as_before, "a rejected file leaves windows and power state alone");
  for (std::size_t i = 1; i < s.TxAntennas.size(); ++i)
    Require(s.TxAntennas[i].empty(), "a rejected file leaves antennas alone", s.TxAntennas[i]);
  Require(desk.state.InfoRequest == 0 && !desk.state.AboveHF, "a rejected file requests nothing");
}

bool Near(float a, float b) {
  return std::fabs(a - b) <= 1e-6F * std::fabs(a);
}

void CheckSame(const Settings& a, const Settings& b) {
  const bool numbers = a.RigModel == b.RigModel && a.ComPort == b.ComPort && a.BaudRate == b.BaudRate &&
                       a.TimeIntervalMs == b.TimeIntervalMs && a.RigMode == b.RigMode &&
                       a.FieldStrengthUnit == b.FieldStrengthUnit && a.SquelchLevel == b.SquelchLevel;
  Require(numbers, "whole numbers come back the same");
  const bool singles = Near(a.MainLeft, b.MainLeft) && Near(a.MainTop, b.MainTop) &&
                       Near(a.MinimalLeft, b.MinimalLeft) && Near(a.MinimalTop, b.MinimalTop) &&
                       Near(a.KHzStep, b.KHzStep) && Near(a.DistanceIntervalKm, b.DistanceIntervalKm);
  Require(singles, "single-precision numbers come back the same");
  const bool flags = a.ProgressBarMode == b.ProgressBarMode && a.ShowDDE == b.ShowDDE &&
                     a.LogByDistance == b.LogByDistance && a.AverageRSSI == b.AverageRSSI &&
                     a.DialLock == b.DialLock;
  Require(flags, "flags come back the same");
  const bool texts = a.TxLat == b.TxLat && a.TxLong == b.TxLong && a.TxHeight == b.TxHeight &&
                     a.FrequencyText == b.FrequencyText && a.CalibrationFiles == b.CalibrationFiles &&
                     a.LogFileName == b.LogFileName && a.OnOffCaption == b.OnOffCaption;
  Require(texts, "texts come back the same");
}

// Filled entries in their order, without the gaps that a save closes.
std::vector<std::string> Antennas(const Settings& settings) {
  std::vector<std::string> filled;
  for (const auto& antenna : settings.TxAntennas)
    if (!antenna.empty()) filled.push_back(antenna);
  return filled;
}

// A file that was cut off gives defaults or the values, never a mixture.
void CheckTorn(const Settings& whole, const std::string& saved, std::size_t length) {
  const Desk torn(saved.substr(0, length));
  if (torn.Rejected()) {
    CheckRejected(torn);
    return;
  }
  CheckSame(whole, torn.state.settings);
  const auto all = Antennas(whole);
  const auto left = Antennas(torn.state.settings);
  Require(left.size() <= all.size(), "a torn file has no further antennas");
}

}  // namespace
}  // namespace kestrum::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace kestrum;
  using namespace kestrum::fuzz;
  const std::string file = Text(data, size);
  Desk first(file);
  if (first.Rejected()) {
    CheckRejected(first);
    first.Save();
    Require(!Desk(first.world.files.files[kPath]).Rejected(), "saved defaults can be loaded");
    return 0;
  }
  const Settings& settings = first.state.settings;
  Require(first.form.cmdFT817OnOff.caption == settings.OnOffCaption, "the power caption is that of the file");
  Require(first.state.AboveHF == (Val(settings.FrequencyText) > 30000), "AboveHF goes by the frequency");
  Require(first.state.InfoRequest == 0, "a good file requests no info text");

  const std::string saved = first.Save();
  Desk second(saved);
  Require(!second.Rejected(), "what was saved can be loaded", saved);
  CheckSame(settings, second.state.settings);
  Require(Antennas(settings) == Antennas(second.state.settings), "antennas come back in their order");
  Require(second.Save() == saved, "save, load, save gives the same bytes", second.Save());

  const bool plain_caption = PowerIsOn(second.form) || PowerIsOff(second.form);
  if (plain_caption) CheckTorn(second.state.settings, saved, Mix(file) % saved.size());
  return 0;
}
