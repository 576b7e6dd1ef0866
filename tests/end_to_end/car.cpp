#include "car.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <filesystem>

namespace kestrum::end_to_end {

namespace fs = std::filesystem;

std::vector<std::string> RigLog::Commands() const {
  std::vector<std::string> commands;
  for (const std::string& line : process::Split(process::ReadFile(path_), "\n")) {
    const std::size_t at = line.find(" rx ");
    if (at != std::string::npos) commands.push_back(line.substr(at + 4, 14));
  }
  return commands;
}

std::size_t RigLog::Count(const std::string& command) const {
  const auto commands = Commands();
  return static_cast<std::size_t>(std::count(commands.begin(), commands.end(), command));
}

bool RigLog::Says(const std::string& end_of_line) const {
  const auto lines = process::Split(process::ReadFile(path_), "\n");
  return std::any_of(lines.begin(), lines.end(),
                     [&](const std::string& line) { return line.ends_with(end_of_line); });
}

Car::Car(const std::string& programs) : bus_(scratch_.path().string()), rig_(File("rig-commands.txt")) {
  for (const char* program : {"Kestrum", "Posdex", "drivesim"}) {
    process::Install(fs::path(programs) / program, File(program));
  }
  fs::create_directory(File("run"));
  fs::permissions(File("run"), fs::perms(0700));
  process::WriteFile(File("posdex.conf"), "source=serial:receiver@4800\n");
  Configure({});
  EXPECT_NE(bus_.address(), "");
}

Car::~Car() {
  // A reader that was started by the logger belongs to nobody.
  for (const pid_t reader : Readers()) ::kill(reader, SIGKILL);
}

void Car::Configure(const CarSetup& setup) const {
  process::WriteFile(File("Kestrum.cfg"), ConfigText(setup, scratch_.path().string()));
}

void Car::Drive(const std::string& rig, int speedup, const std::vector<std::string>& more_arguments) {
  process::Call call{{File("drivesim"), "--dir", scratch_.path().string(), "--rig", rig, "--speedup",
                      std::to_string(speedup), "--log", File("rig-commands.txt")},
                     {},
                     {},
                     true};
  call.words.insert(call.words.end(), more_arguments.begin(), more_arguments.end());
  drive_ = std::make_unique<process::Child>(call);
  const std::string ready = drive_->ReadLine();
  EXPECT_NE(ready.find("ready"), std::string::npos) << ready;
  tap_ = std::make_unique<GpsTap>(File("gps"), File("receiver"));
}

bool Car::WaitForArrival(std::chrono::seconds patience) const {
  const auto end = std::chrono::steady_clock::now() + patience;
  while (std::chrono::steady_clock::now() < end) {
    if (drive_->ReadLine() == "arrived") return true;
  }
  return false;
}

process::Call Car::CallOf(const std::string& program, const std::vector<std::string>& arguments) {
  process::Call call{{File(program)},
                     {{"QT_QPA_PLATFORM", "offscreen"},
                      {"XDG_RUNTIME_DIR", File("run")},
                      {"DBUS_SESSION_BUS_ADDRESS", bus_.address()},
                      {"LC_ALL", "C.UTF-8"},
                      {"KESTRUM_COM1", std::nullopt}},
                     {},
                     false};
  call.words.insert(call.words.end(), arguments.begin(), arguments.end());
  return call;
}

std::unique_ptr<process::Child> Car::StartKestrum(const std::vector<std::string>& arguments,
                                                  const Environment& changes) {
  process::Call call = CallOf("Kestrum", arguments);
  call.environment.insert(call.environment.end(), changes.begin(), changes.end());
  if (keep_errors_) call.errors = File("errors.txt");
  auto kestrum = std::make_unique<process::Child>(call);
  // From here on a signal asks it to end.
  EXPECT_TRUE(process::Eventually([&] { return process::Handles(kestrum->pid(), SIGTERM); }));
  return kestrum;
}

std::unique_ptr<process::Child> Car::StartReader() {
  return std::make_unique<process::Child>(CallOf("Posdex", {}));
}

std::string Car::AskReader(const std::string& item) const {
  process::Child ask(
      {{"dbus-send", "--bus=" + bus_.address(), "--print-reply=literal", "--dest=org.kestrum.Posdex",
        "/form1", "org.freedesktop.DBus.Properties.Get", "string:org.kestrum.Posdex", "string:" + item},
       {},
       {}});
  // Between blanks the type and the text.
  const std::string line = ask.ReadLine();
  const std::size_t type = line.find("variant");
  const std::size_t text = type == std::string::npos ? type : line.find_first_not_of(' ', type + 7);
  return text == std::string::npos ? std::string() : line.substr(text);
}

bool Car::WaitForReader() {
  const bool answers = process::Eventually([&] { return !Readers().empty() && !AskReader("Title").empty(); });
  process::LetRunFor(std::chrono::milliseconds(500));
  return answers;
}

bool Car::WaitForCommands(const std::string& command, std::size_t count) const {
  // A busy machine is slow, but it gets on.
  std::size_t so_far = rig_.Count(command);
  while (so_far < count) {
    if (!process::Eventually([&] { return rig_.Count(command) > so_far; })) return false;
    so_far = rig_.Count(command);
  }
  return true;
}

bool Car::NothingLeft() const {
  return process::Eventually(
      [this] { return Readers().empty() && process::ProcessesOf(File("Kestrum")).empty(); });
}

}  // namespace kestrum::end_to_end
