#pragma once

#include <chrono>
#include <string>

#include "app/application.h"
#include "support/scripted_ports.h"

namespace kestrum::test {

// The whole program in a scripted car: a rig that answers, a GPS reader that sends, a clock that is turned by
// hand.
class ScriptedCar {
 public:
  ScriptedCar();

  ScriptedPorts world;
  Application app;

  // What the rig answers to a read of its S-meter: one value for whichever model asks.
  int s_meter = 0;
  bool rig_answers = true;

  Form1& form1 = app.forms.form1;
  Settings& settings = app.state.settings;

  // A configuration file with these settings; called before Start. Without it the program finds none.
  void WriteConfig(const Settings& wanted, const std::string& power_caption = "&Off");
  // Factory settings with paths of the scripted folder, FT840 on COM1 for a rig that is always on.
  static Settings UsualSettings();

  void Start(const StartOptions& options = {});
  // Turns the clock; timers tick when they are due, also from inside a pump.
  void RunFor(std::chrono::milliseconds duration);

  // The six texts of the GPS reader.
  void SendGps(const std::string& latitude, const std::string& longitude, const std::string& validity = "A",
               const std::string& height = "33", const std::string& speed = "27",
               const std::string& compass = "45");

  // Lines of the log file.
  std::vector<std::string> Log() const;
  const std::string kLogPath = "/car/RSSI-GPS.log";

 private:
  struct Clockwork {
    Timer* timer = nullptr;
    bool running = false;
    unsigned restarts = 0;
    int interval_ms = 0;
    std::chrono::milliseconds due{0};
  };
  void Wind(Clockwork& clockwork) const;
  bool TickNext(std::chrono::milliseconds limit);

  std::array<Clockwork, 3> clockworks_;
};

}  // namespace kestrum::test
