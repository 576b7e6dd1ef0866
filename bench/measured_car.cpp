#include "measured_car.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "support_process/car_config.h"
#include "support_process/waits.h"

namespace kestrum::bench {
namespace {

constexpr std::chrono::seconds kReaderFindsTheBus{1};

[[noreturn]] void GiveUp(const std::string& why) {
  std::fprintf(stderr, "bench: %s\n", why.c_str());
  std::exit(1);
}

}  // namespace

std::string MeasuredCar::ProgramFolder() {
  return std::filesystem::read_symlink("/proc/self/exe").parent_path().string();
}

void MeasuredCar::Configure(int rig, int interval_ms, bool by_distance) {
  process::CarSetup setup;
  setup.rig = rig;
  setup.interval_ms = interval_ms;
  setup.by_distance = by_distance;
  setup.frequency = " 3630 kHz";
  setup.power_caption = "&On";
  const std::string folder = ProgramFolder();
  process::WriteFile(folder + "/Kestrum.cfg", process::ConfigText(setup, folder));
  std::filesystem::remove(folder + "/RSSI-GPS.log");
}

MeasuredCar::MeasuredCar(const std::string& rig_model, bool with_gps) : bus_(scratch_.path().string()) {
  std::filesystem::create_directory(runtime_folder());
  std::filesystem::permissions(runtime_folder(), std::filesystem::perms::owner_all);
  if (bus_.address().empty()) GiveUp("no session bus; is dbus-daemon installed?");
  std::vector<std::string> drive = {ProgramFolder() + "/drivesim",
                                    "--dir",
                                    scratch_.path().string(),
                                    "--rig",
                                    rig_model,
                                    "--log",
                                    File("rig.txt")};
  if (!with_gps) drive.emplace_back("--no-gps");
  // The pipe is kept open: the drive ends with its input.
  drive_ = std::make_unique<process::Child>(process::Call{drive, {}, {}, true});
  const std::string ready = drive_->ReadLine();
  if (ready.find("ready") == std::string::npos) GiveUp("drivesim did not start: " + ready);
  process::WriteFile(ProgramFolder() + "/posdex.conf", "source=serial:" + File("gps") + "@4800\n");
  reader_ = std::make_unique<process::Child>(CallOf({ProgramFolder() + "/Posdex"}));
  process::LetRunFor(kReaderFindsTheBus);
  if (!reader_->Running()) GiveUp("Posdex did not start");
}

std::unique_ptr<process::Child> MeasuredCar::StartReader(const std::string& source) const {
  process::Call call = CallOf({ProgramFolder() + "/Posdex", "--source", source});
  call.environment.emplace_back("DBUS_SESSION_BUS_ADDRESS", "unix:path=" + File("nowhere"));
  return std::make_unique<process::Child>(call);
}

process::Call MeasuredCar::CallOf(const std::vector<std::string>& words) const {
  return {words,
          {{"QT_QPA_PLATFORM", "offscreen"},
           {"XDG_RUNTIME_DIR", runtime_folder()},
           {"DBUS_SESSION_BUS_ADDRESS", bus_.address()}},
          {},
          false};
}

int MeasuredCar::StatusReads() const {
  int reads = 0;
  for (const std::string& line : process::Split(process::ReadFile(File("rig.txt")), "\n")) {
    if (line.find(" rx 00 00 00 00 E7") != std::string::npos) ++reads;
  }
  return reads;
}

std::unique_ptr<process::Child> MeasuredCar::StartKestrum(const std::string& rig_port,
                                                          const std::vector<std::string>& arguments) const {
  std::vector<std::string> words = {ProgramFolder() + "/Kestrum"};
  words.insert(words.end(), arguments.begin(), arguments.end());
  process::Call call = CallOf(words);
  call.environment.emplace_back("KESTRUM_COM1", rig_port);
  return std::make_unique<process::Child>(call);
}

}  // namespace kestrum::bench
