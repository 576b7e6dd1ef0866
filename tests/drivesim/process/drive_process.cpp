#include "drive_process.h"

#include <fcntl.h>
#include <poll.h>
#include <stdlib.h>
#include <sys/wait.h>

#include <array>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <fstream>
#include <sstream>

namespace kestrum::drivesim {
namespace {

constexpr int kPatienceMs = 3000;

bool Readable(int fd, int ms) {
  pollfd state{fd, POLLIN, 0};
  return ::poll(&state, 1, ms) > 0 && (state.revents & POLLIN) != 0;
}

std::string ReadLine(int fd) {
  std::string line;
  char c = 0;
  while (Readable(fd, 10000) && ::read(fd, &c, 1) == 1 && c != '\n') line += c;
  return line;
}

}  // namespace

Scratch::Scratch() {
  std::string pattern = (std::filesystem::temp_directory_path() / "drivesim_XXXXXX").string();
  path_ = ::mkdtemp(pattern.data());
}

Scratch::~Scratch() {
  std::error_code error;
  std::filesystem::remove_all(path_, error);
}

DriveProcess::DriveProcess(const std::vector<std::string>& arguments) {
  std::vector<std::string> words = {DRIVESIM_PROGRAM, "--dir", scratch_.Path().string()};
  words.insert(words.end(), arguments.begin(), arguments.end());
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);

  std::array<int, 2> in{};
  std::array<int, 2> out{};
  if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) return;
  pid_ = ::fork();
  if (pid_ == 0) {
    // The logs of a test go where the test looks for them.
    const bool ready = ::chdir(scratch_.Path().c_str()) == 0 && ::dup2(in[0], STDIN_FILENO) >= 0 &&
                       ::dup2(out[1], STDOUT_FILENO) >= 0;
    if (ready) ::execv(pointers[0], pointers.data());
    ::_exit(127);
  }
  ::close(in[0]);
  ::close(out[1]);
  input_ = in[1];
  ready_ = ReadLine(out[0]);
  ::close(out[0]);
}

DriveProcess::~DriveProcess() {
  CloseInput();
  if (pid_ > 0) {
    ::kill(pid_, SIGKILL);
    ::waitpid(pid_, nullptr, 0);
  }
}

void DriveProcess::Tell(const std::string& line) const {
  const std::string text = line + "\n";
  if (::write(input_, text.data(), text.size()) < 0) std::perror("drivesim's input");
}

void DriveProcess::CloseInput() {
  if (input_ >= 0) ::close(input_);
  input_ = -1;
}

void DriveProcess::Signal(int number) const {
  ::kill(pid_, number);
}

int DriveProcess::Wait() {
  int status = 0;
  for (int i = 0; i < 1000; ++i) {
    if (::waitpid(pid_, &status, WNOHANG) == pid_) {
      pid_ = -1;
      return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    }
    ::usleep(10000);
  }
  return -1;
}

double DriveProcess::CpuS() const {
  std::istringstream stat(ReadFile("/proc/" + std::to_string(pid_) + "/stat"));
  std::string word;
  for (int i = 0; i < 13; ++i) stat >> word;
  double user = 0;
  double system = 0;
  stat >> user >> system;
  return (user + system) / static_cast<double>(::sysconf(_SC_CLK_TCK));
}

Client::Client(const std::filesystem::path& path)
    : fd_(::open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC)) {}

Client::~Client() {
  if (fd_ >= 0) ::close(fd_);
}

void Client::Send(const Bytes& bytes) const {
  if (::write(fd_, bytes.data(), bytes.size()) < 0) std::perror("port");
}

Bytes Client::Receive(std::size_t count) const {
  Bytes bytes;
  std::uint8_t byte = 0;
  while (bytes.size() < count && Readable(fd_, kPatienceMs) && ::read(fd_, &byte, 1) == 1) {
    bytes.push_back(byte);
  }
  return bytes;
}

Bytes Client::Ask(const Bytes& command, std::size_t count) const {
  Send(command);
  return Receive(count);
}

Bytes Client::ReceiveFor(int ms) const {
  using Clock = std::chrono::steady_clock;
  const auto end = Clock::now() + std::chrono::milliseconds(ms);
  Bytes bytes;
  std::uint8_t byte = 0;
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    if (left <= 0 || !Readable(fd_, static_cast<int>(left)) || ::read(fd_, &byte, 1) != 1) return bytes;
    bytes.push_back(byte);
  }
}

std::string Client::Line() {
  while (text_.find("\r\n") == std::string::npos) {
    const Bytes bytes = Receive(1);
    if (bytes.empty()) return {};
    text_ += static_cast<char>(bytes[0]);
  }
  const std::size_t end = text_.find("\r\n");
  std::string line = text_.substr(0, end);
  text_.erase(0, end + 2);
  return line;
}

bool Client::HungUp() const {
  pollfd state{fd_, 0, 0};
  return ::poll(&state, 1, kPatienceMs) > 0 && (state.revents & POLLHUP) != 0;
}

Outcome RunShell(const std::string& command) {
  Outcome outcome;
  std::FILE* pipe = ::popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) return outcome;
  std::array<char, 512> piece{};
  for (std::size_t count = 1; count > 0;) {
    count = std::fread(piece.data(), 1, piece.size(), pipe);
    outcome.output.append(piece.data(), count);
  }
  const int status = ::pclose(pipe);
  outcome.exit_code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  return outcome;
}

std::string ReadFile(const std::filesystem::path& path) {
  std::ostringstream content;
  content << std::ifstream(path).rdbuf();
  return content.str();
}

}  // namespace kestrum::drivesim
