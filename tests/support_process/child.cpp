#include "support_process/child.h"

#include <fcntl.h>
#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <sstream>

#include "support_process/files.h"

namespace kestrum::process {
namespace {

constexpr int kPatienceMs = static_cast<int>(std::chrono::milliseconds(kPatience).count());

// Between fork and exec.
[[noreturn]] void Become(const Call& call, int input, int output) {
  std::vector<std::string> words = call.words;
  std::vector<char*> pointers;
  pointers.reserve(words.size() + 1);
  for (std::string& word : words) pointers.push_back(word.data());
  pointers.push_back(nullptr);
  for (const auto& [name, value] : call.environment) {
    if (value) {
      ::setenv(name.c_str(), value->c_str(), 1);
    } else {
      ::unsetenv(name.c_str());
    }
  }
  if (!call.errors.empty()) {
    const int errors = ::open(call.errors.c_str(), O_WRONLY | O_CREAT | O_APPEND, 0666);
    if (errors >= 0) ::dup2(errors, STDERR_FILENO);
  }
  const bool ready = (call.folder.empty() || ::chdir(call.folder.c_str()) == 0) &&
                     ::dup2(input, STDIN_FILENO) >= 0 && ::dup2(output, STDOUT_FILENO) >= 0 &&
                     (!call.tells_errors || ::dup2(output, STDERR_FILENO) >= 0);
  if (ready) ::execvp(pointers[0], pointers.data());
  std::perror(pointers[0]);
  ::_exit(127);
}

}  // namespace

Child::Child(const Call& call) {
  std::array<int, 2> in{};
  std::array<int, 2> out{};
  if (::pipe2(in.data(), O_CLOEXEC) != 0 || ::pipe2(out.data(), O_CLOEXEC) != 0) return;
  pid_ = ::fork();
  if (pid_ == 0) Become(call, in[0], out[1]);
  ::close(in[0]);
  ::close(out[1]);
  input_ = in[1];
  output_ = out[0];
  if (!call.reads_from_us) CloseInput();
}

Child::~Child() {
  Kill();
  CloseInput();
  if (output_ >= 0) ::close(output_);
}

void Child::Reap(int options) {
  int status = 0;
  if (outcome_ || pid_ <= 0 || ::waitpid(pid_, &status, options) != pid_) return;
  outcome_ = WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

bool Child::Running() {
  Reap(WNOHANG);
  return pid_ > 0 && !outcome_;
}

void Child::Signal(int number) const {
  if (pid_ > 0 && !outcome_) ::kill(pid_, number);
}

std::string Child::ReadLine() const {
  std::string line;
  char c = 0;
  pollfd ready{output_, POLLIN, 0};
  while (::poll(&ready, 1, kPatienceMs) > 0 && ::read(output_, &c, 1) == 1 && c != '\n') line += c;
  return line;
}

std::string Child::ReadAll() const {
  std::string text;
  std::array<char, 4096> piece{};
  pollfd ready{output_, POLLIN, 0};
  while (::poll(&ready, 1, kPatienceMs) > 0) {
    const ssize_t got = ::read(output_, piece.data(), piece.size());
    if (got <= 0) break;
    text.append(piece.data(), static_cast<std::size_t>(got));
  }
  return text;
}

void Child::Tell(const std::string& line) const {
  const std::string text = line + "\n";
  if (::write(input_, text.data(), text.size()) < 0) std::perror("a child's input");
}

void Child::CloseInput() {
  if (input_ >= 0) ::close(input_);
  input_ = -1;
}

int Child::Wait(std::chrono::milliseconds patience) {
  Eventually([this] { return !Running(); }, patience);
  return outcome_.value_or(-1);
}

void Child::Kill() {
  Signal(SIGKILL);
  Reap(0);
}

Ending Run(Call call) {
  call.tells_errors = true;
  Child program(call);
  Ending ending;
  ending.output = program.ReadAll();
  ending.code = program.Wait();
  return ending;
}

std::chrono::milliseconds ProcessorTime(pid_t pid) {
  const std::string stat = ReadFile("/proc/" + std::to_string(pid) + "/stat");
  const std::size_t after_name = stat.rfind(')');
  if (after_name == std::string::npos) return {};
  std::istringstream fields(stat.substr(after_name + 1));
  std::string skipped;
  for (int field = 3; field < 14; ++field) fields >> skipped;
  long user = 0;
  long system = 0;
  fields >> user >> system;
  return std::chrono::milliseconds((user + system) * 1000 / ::sysconf(_SC_CLK_TCK));
}

bool Handles(pid_t pid, int number) {
  const std::string status = ReadFile("/proc/" + std::to_string(pid) + "/status");
  const std::string name = "SigCgt:\t";
  const std::size_t at = status.find(name);
  if (at == std::string::npos) return false;
  unsigned long long caught = 0;
  std::from_chars(status.data() + at + name.size(), status.data() + status.size(), caught, 16);
  return (caught >> (number - 1) & 1U) != 0;
}

std::vector<pid_t> ProcessesOf(const std::filesystem::path& executable) {
  std::vector<pid_t> found;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator("/proc", error)) {
    const std::string name = entry.path().filename().string();
    if (name.find_first_not_of("0123456789") != std::string::npos) continue;
    if (std::filesystem::read_symlink(entry.path() / "exe", error) != executable || error) continue;
    found.push_back(std::stoi(name));
  }
  return found;
}

}  // namespace kestrum::process
