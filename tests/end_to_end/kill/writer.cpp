// Saves the configuration and appends blocks to the log as fast as the disk allows, until it is killed.
// Usage: end_to_end_writer FOLDER
#include <cstdio>
#include <cstdlib>
#include <string>

#include "app/application.h"
#include "desktop/platform_factory.h"
#include "support/scripted_ports.h"
#include "text/text.h"

namespace {

// Everything is scripted but the files.
kestrum::Ports PortsOf(kestrum::test::ScriptedPorts& world, kestrum::FileStore& files) {
  const kestrum::Ports all = world.ports();
  return {all.serial, all.links,   all.dialogs, all.clock, all.pump,
          all.beeper, all.program, all.windows, files};
}

void FillCaptions(kestrum::Application& app) {
  auto& form = app.forms.form1;
  form.lblRxVal.caption = "GPS Ok";
  form.lblRxLat.caption = "5157.1234N";
  form.lblRxLong.caption = "00532.1234E";
  form.lblRxDist.caption = "1.25 km";
  form.lblRxHeight.caption = "12.5 m";
  form.lblRxBearing.caption = "123" + std::string(kestrum::kDegree);
  app.table.DefaultCalibration(false);
  app.table.ConvertRSSI(128);
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 2) return 2;
  kestrum::test::ScriptedPorts world;
  world.program.folder = argv[1];
  const auto files = kestrum::MakeFileStore(QString::fromLocal8Bit(argv[1]));
  kestrum::Application app(PortsOf(world, *files));
  app.config.SetDefaults();
  app.log.NotLogging = false;
  FillCaptions(app);
  for (int round = 0;; ++round) {
    // Two configurations of very different length in turn, each with one word all through.
    const bool is_long = round % 2 == 1;
    auto& settings = app.state.settings;
    settings.TxHeight = is_long ? "long" : "short";
    for (std::size_t i = 0; i < settings.TxAntennas.size(); ++i) {
      settings.TxAntennas.at(i) = is_long ? std::string(500, 'L') : std::string(i == 0 ? "S" : "");
    }
    app.config.SaveCfg();
    for (int record = 0; record < 100; ++record) app.log.AddLogRecord();
    if (!world.dialogs.messages.empty()) {
      std::fprintf(stderr, "%s\n", world.dialogs.messages.front().text.c_str());
      return 1;
    }
    std::puts("round");
    std::fflush(stdout);
  }
}
