#include "simulation.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/epoll.h>
#include <sys/signalfd.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <string_view>
#include <system_error>

#include "common/fault_text.h"
#include "meter_scale.h"
#include "nmea.h"

namespace kestrum::drivesim {

using sets::Bytes;
using sets::PtyPort;
using sets::UniqueFd;

namespace {

constexpr Position kTransmitter{51.95, 5.533333};
constexpr std::uint64_t kLandscapeSeed = 1;

sigset_t EndSignals() {
  sigset_t set;
  ::sigemptyset(&set);
  for (const int signal : {SIGTERM, SIGINT, SIGHUP}) ::sigaddset(&set, signal);
  return set;
}

}  // namespace

Simulation::Simulation(const Options& options)
    : options_(options),
      route_(kTransmitter),
      car_(route_),
      signal_(kLandscapeSeed, route_.LengthM(), options.antenna),
      rig_(sets::MakeRig(options.model, options.rig)),
      faults_(options.faults),
      line_(*rig_, faults_, log_, [this](double sim_s) { return Meter(sim_s); }),
      com_(std::filesystem::path(options.directory) / "com1"),
      gps_(std::filesystem::path(options.directory) / "gps"),
      start_(std::chrono::steady_clock::now()),
      arrival_s_(options.laps ? *options.laps * car_.LapS() : kNoEnd) {}

Simulation::~Simulation() {
  if (control_) ::unlink(options_.control_path.c_str());
}

Outcome Simulation::Prepare() {
  const sigset_t set = EndSignals();
  ::sigprocmask(SIG_BLOCK, &set, nullptr);
  // In the background of a shell, reading the terminal must fail instead of stopping the process.
  std::signal(SIGTTIN, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
  signals_ = UniqueFd(::signalfd(-1, &set, SFD_NONBLOCK | SFD_CLOEXEC));
  poll_ = UniqueFd(::epoll_create1(EPOLL_CLOEXEC));
  Watch(signals_.Get(), EPOLLIN);

  std::error_code error;
  std::filesystem::create_directories(options_.directory, error);
  if (error) return Fault{options_.directory, error.message()};
  if (!options_.log_path.empty() && !log_.Open(options_.log_path)) {
    return Fault{options_.log_path, "cannot be written"};
  }
  Outcome made = com_.Open();
  if (made && options_.gps) made = gps_.Open();
  if (made) made = MakeControlPipe();
  if (!made) return made;
  WatchPort(com_);
  WatchPort(gps_);

  input_ = UniqueFd(::fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, 0));
  if (input_) ReadControl(input_, input_lines_);
  if (input_) Watch(input_.Get(), EPOLLIN);
  start_ = std::chrono::steady_clock::now();
  const auto today = std::chrono::system_clock::now().time_since_epoch();
  start_utc_s_ =
      options_.start_utc_s.value_or(std::chrono::duration_cast<std::chrono::seconds>(today).count());
  return Done{};
}

Outcome Simulation::MakeControlPipe() {
  const std::string& path = options_.control_path;
  if (path.empty()) return Done{};
  struct stat status {};
  if (::lstat(path.c_str(), &status) == 0) {
    if (!S_ISFIFO(status.st_mode)) return Fault{path, "there is a file of that name that is no pipe"};
    ::unlink(path.c_str());
  }
  if (::mkfifo(path.c_str(), 0600) != 0) return SystemFault(path);
  // Open for writing too: the pipe then has no end when a writer leaves.
  control_ = UniqueFd(::open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC));
  if (!control_) return SystemFault(path);
  Watch(control_.Get(), EPOLLIN);
  return Done{};
}

std::string Simulation::ReadyLine() const {
  std::string line = VersionText() + " ready: " + com_.Link().string() + " -> " + com_.Device();
  if (options_.gps) line += ", " + gps_.Link().string() + " -> " + gps_.Device();
  return line;
}

void Simulation::Watch(int fd, std::uint32_t events) const {
  epoll_event event{};
  event.events = events;
  ::epoll_ctl(poll_.Get(), EPOLL_CTL_ADD, fd, &event);
}

// Edge triggered: a port that nobody has open is hung up all the time, and that must not wake us all the
// time.
void Simulation::WatchPort(const PtyPort& port) const {
  if (port.IsOpen()) Watch(port.Fd(), EPOLLIN | EPOLLHUP | EPOLLET);
}

Moment Simulation::Now() const {
  const double wall_s = std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
  return {wall_s, wall_s * options_.speedup};
}

int Simulation::Meter(double sim_s) const {
  const int most = rig_->MeterMax();
  if (held_meter_) return std::min(*held_meter_, most);
  // Faster than life the way from the receiver to the logger takes seconds of the drive: a level is then that
  // of the last fix, so that a record's level and place belong together.
  const double moment_s = options_.speedup > 1 ? std::floor(sim_s) : sim_s;
  return MeterOfLevel(signal_.LevelDb(CarAt(moment_s), moment_s), most);
}

CarState Simulation::CarAt(double sim_s) const {
  return car_.At(std::min(sim_s, arrival_s_));
}

void Simulation::TellArrival(Moment now) {
  if (arrived_ || now.sim_s < arrival_s_) return;
  arrived_ = true;
  log_.Note(now.sim_s, "arrived");
  std::puts("arrived");
  std::fflush(stdout);
}

void Simulation::Run() {
  while (!ending_) {
    Step();
    if (ending_) break;
    std::array<epoll_event, 8> events{};
    ::epoll_wait(poll_.Get(), events.data(), static_cast<int>(events.size()), SleepMs(Now()));
  }
  com_.Close();
  gps_.Close();
}

// Everything is looked at on each turn: turns are rare, and what was not meant costs one failing read.
void Simulation::Step() {
  ReadSignals();
  if (control_) ReadControl(control_, control_lines_);
  if (input_) ReadControl(input_, input_lines_);
  const Moment now = Now();
  if (options_.wall_limit_s && now.wall_s >= *options_.wall_limit_s) ending_ = true;
  if (ending_) return;
  TellArrival(now);
  Plug(com_, faults_.Active(FaultKind::kVanish, now.sim_s), now);
  ServeRig(now);
  if (!options_.gps) return;
  Plug(gps_, faults_.Active(FaultKind::kGpsVanish, now.sim_s), now);
  SendGps(now);
}

int Simulation::SleepMs(Moment now) const {
  double until = std::min(line_.NextWallS(), WallOf(faults_.NextChange(now.sim_s)));
  if (!arrived_) until = std::min(until, WallOf(arrival_s_));
  if (options_.gps) until = std::min(until, WallOf(next_fix_s_));
  if (options_.wall_limit_s) until = std::min(until, *options_.wall_limit_s);
  if (retry_wall_s_ > now.wall_s) until = std::min(until, retry_wall_s_);
  until = std::min(until, now.wall_s + 60);
  return static_cast<int>(std::ceil(std::max(0.0, until - now.wall_s) * 1000));
}

void Simulation::Plug(PtyPort& port, bool gone, Moment now) {
  if (gone && port.IsOpen()) {
    port.Close();
    if (&port == &com_) line_.Reset();
    log_.Note(now.sim_s, port.Link().filename().string() + " vanished");
  } else if (!gone && !port.IsOpen() && now.wall_s >= retry_wall_s_) {
    if (const Outcome made = port.Open(); made) {
      WatchPort(port);
      log_.Note(now.sim_s, port.Link().filename().string() + " returned");
    } else {
      std::fprintf(stderr, "drivesim: %s\n", TextOf(made.fault()).c_str());
      retry_wall_s_ = now.wall_s + 1;
    }
  }
}

void Simulation::Tidy(PtyPort& port, Moment now) {
  const Result<bool> replaced = port.TidyAfterClient();
  if (replaced) {
    if (replaced.value()) WatchPort(port);
    return;
  }
  std::fprintf(stderr, "drivesim: %s\n", TextOf(replaced.fault()).c_str());
  retry_wall_s_ = now.wall_s + 1;
}

void Simulation::ServeRig(Moment now) {
  const Bytes received = com_.Read();
  if (!received.empty()) line_.Receive(received, now);
  com_.Write(line_.TakeOutput(now));
  Tidy(com_, now);
}

void Simulation::SendGps(Moment now) {
  gps_.Read();  // what a client sets up in the receiver is taken and not heeded
  Tidy(gps_, now);
  if (now.sim_s < next_fix_s_) return;
  // Behind time (a sleeping machine) the seconds between are skipped, as they would be in the air.
  const double second = std::floor(now.sim_s);
  next_fix_s_ = second + 1;
  if (faults_.Active(FaultKind::kGpsSilence, now.sim_s)) return;
  const CarState car = CarAt(second);
  const bool fix = !car.in_tunnel && !faults_.Active(FaultKind::kNoFix, now.sim_s);
  const std::int64_t utc_s = start_utc_s_ + static_cast<std::int64_t>(second);
  std::string text = RmcSentence(car, utc_s, fix) + GgaSentence(car, utc_s, fix);
  if (options_.gsa) text += GsaSentence(fix);
  gps_.Write(Bytes(text.begin(), text.end()));
}

// Reads what is there; a source that has ended or fails is closed.
void Simulation::ReadControl(UniqueFd& source, LineSplitter& lines) {
  pollfd state{source.Get(), POLLIN, 0};
  while (::poll(&state, 1, 0) > 0) {
    std::array<char, 512> piece{};
    const ssize_t count = ::read(source.Get(), piece.data(), piece.size());
    if (count < 0 && errno == EINTR) continue;
    if (count < 0 && errno == EAGAIN) return;
    if (count <= 0) {
      // The standard input itself stays open: without this it would go on waking us.
      ::epoll_ctl(poll_.Get(), EPOLL_CTL_DEL, source.Get(), nullptr);
      source.Reset();
      return;
    }
    for (const std::string& line : lines.Add({piece.data(), static_cast<std::size_t>(count)})) Obey(line);
  }
}

void Simulation::Obey(const std::string& line) {
  if (Trimmed(line).empty()) return;
  const auto command = ParseControl(line);
  if (!command) {
    std::fprintf(stderr, "drivesim: \"%s\" is not understood\n", line.c_str());
    return;
  }
  const Moment now = Now();
  log_.Note(now.sim_s, "control: " + std::string(Trimmed(line)));
  switch (command->kind) {
    case ControlCommand::Kind::kFault:
      faults_.Start({now.sim_s, *command->fault, command->duration_s});
      break;
    case ControlCommand::Kind::kClear:
      faults_.Clear(now.sim_s, command->fault);
      break;
    case ControlCommand::Kind::kMeter:
      held_meter_ = command->meter;
      break;
    case ControlCommand::Kind::kAuto:
      held_meter_.reset();
      break;
    case ControlCommand::Kind::kQuit:
      ending_ = true;
      break;
  }
}

void Simulation::ReadSignals() {
  signalfd_siginfo info{};
  if (::read(signals_.Get(), &info, sizeof info) == static_cast<ssize_t>(sizeof info)) ending_ = true;
}

}  // namespace kestrum::drivesim
