#include <sys/signalfd.h>

#include <QApplication>
#include <QSocketNotifier>
#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string>
#include <vector>

#include "bridge.h"
#include "bridge_window.h"
#include "common/fault_text.h"
#include "hamlib_rig.h"
#include "state_texts.h"

namespace {

using namespace kestrum::rigbridge;
namespace fs = std::filesystem;

constexpr double kPatienceS = 1.5;  // a call of Hamlib may last longer; nobody waits for it at the end
constexpr int kLookMs = 200;

sigset_t EndSignals() {
  sigset_t set;
  sigemptyset(&set);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) sigaddset(&set, signal);
  return set;
}

// A line for each thing that is new; the reading and the countdown are not news.
class Teller {
 public:
  void Tell(const RigState& state) {
    const std::string said = state.trouble ? state.trouble->reason : PhaseText(state.phase);
    if (said != said_) Print(said_ = said);
    const std::string dial = state.dial.Elsewhere() ? FrequencyText(state.dial) : std::string();
    if (dial != dial_ && !dial.empty()) Print(dial);
    dial_ = dial;
    for (const std::string& note : state.notes) {
      if (std::find(notes_.begin(), notes_.end(), note) == notes_.end()) Print(note);
    }
    notes_ = state.notes;
  }

 private:
  static std::string PhaseText(Phase phase) {
    RigState plain;
    plain.phase = phase;
    return StateText(plain, 0);
  }
  static void Print(const std::string& line) {
    std::puts(line.c_str());
    std::fflush(stdout);
  }

  std::string said_;
  std::string dial_;
  std::vector<std::string> notes_;
};

int RunWithoutWindow(Bridge& bridge) {
  const sigset_t set = EndSignals();
  const timespec look{0, kLookMs * 1000000L};
  Teller teller;
  while (sigtimedwait(&set, nullptr, &look) < 0) teller.Tell(bridge.State());
  return 0;
}

int RunWithWindow(int argc, char** argv, Bridge& bridge, const std::vector<RigModel>& rigs,
                  const QString& complaint) {
  const QApplication app(argc, argv);
  BridgeWindow window(bridge, rigs);
  window.SetComplaint(complaint);
  const sigset_t set = EndSignals();
  const kestrum::sets::UniqueFd signals(::signalfd(-1, &set, SFD_CLOEXEC | SFD_NONBLOCK));
  const QSocketNotifier notifier(signals.Get(), QSocketNotifier::Read);
  QObject::connect(&notifier, &QSocketNotifier::activated, &app, &QCoreApplication::quit);
  window.show();
  return QApplication::exec();
}

bool HasDisplay() {
  for (const char* name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"}) {
    if (const char* value = std::getenv(name); value != nullptr && *value != 0) return true;
  }
  return false;
}

int Run(int argc, char** argv, const Invocation& invocation, const std::vector<RigModel>& rigs) {
  std::error_code error;
  const fs::path own_folder = fs::read_symlink("/proc/self/exe", error).parent_path();
  const fs::path folder = invocation.directory.empty() ? own_folder : fs::path(invocation.directory);
  Bridge bridge([&rigs] { return std::make_unique<HamlibRig>(rigs); }, folder, own_folder / "rigbridge.conf");
  const std::optional<kestrum::Fault> complaint = bridge.Load(invocation.fields);
  const kestrum::Outcome started = bridge.Start();
  const std::string told = !started ? TextOf(started.fault()) : complaint ? TextOf(*complaint) : "";
  int code = 0;
  if (invocation.window && HasDisplay()) {
    code = RunWithWindow(argc, argv, bridge, rigs, QString::fromStdString(told));
  } else if (!started) {
    std::fprintf(stderr, "rigbridge: %s\n", told.c_str());
    code = 1;
  } else {
    if (complaint) std::fprintf(stderr, "rigbridge: %s\n", told.c_str());
    std::printf("rigbridge ready: %s\n", bridge.Link().c_str());
    std::fflush(stdout);
    code = RunWithoutWindow(bridge);
  }
  // Nobody can end a call that waits for a rig.
  if (!bridge.Stop(kPatienceS)) std::_Exit(code);
  return code;
}

}  // namespace

int main(int argc, char** argv) {
  const auto parsed = ParseCommandLine(std::vector<std::string>(argv + 1, argv + argc));
  if (!parsed) {
    std::fprintf(stderr, "rigbridge: %s\nTry rigbridge --help\n", TextOf(parsed.fault()).c_str());
    return 2;
  }
  const Invocation& invocation = parsed.value();
  if (invocation.help || invocation.version) {
    std::puts(invocation.help ? HelpText().c_str() : VersionText().c_str());
    return 0;
  }
  // Before the first thread, so that all of them leave the signals to the main one.
  const sigset_t set = EndSignals();
  sigprocmask(SIG_BLOCK, &set, nullptr);
  std::signal(SIGPIPE, SIG_IGN);
  const std::vector<RigModel> rigs = ListRigs();
  if (invocation.list) {
    std::fputs(ListText(rigs).c_str(), stdout);
    return 0;
  }
  return Run(argc, argv, invocation, rigs);
}
