#include "cat_port.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>

#include <algorithm>
#include <array>
#include <cmath>

#include "common/fault_text.h"

namespace kestrum::rigbridge {
namespace {

constexpr double kIdleS = 60;
constexpr double kReopenS = 1;

}  // namespace

CatPort::CatPort(RigReader& reader) : reader_(reader) {}

Outcome CatPort::Open(const std::filesystem::path& link, const BridgeSettings& settings) {
  Close();
  set_.emplace(settings);
  port_.emplace(link);
  Outcome made = port_->Open();
  if (made) {
    poll_ = sets::UniqueFd(::epoll_create1(EPOLL_CLOEXEC));
    stop_ = sets::UniqueFd(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK));
    epoll_event event{};
    event.events = EPOLLIN;
    const bool waits = ::epoll_ctl(poll_.Get(), EPOLL_CTL_ADD, stop_.Get(), &event) == 0 && WatchPort();
    if (!waits) made = Fault{"", "the system gives no way to wait for Kestrum"};
  }
  if (!made) {
    port_.reset();
    return Fault{"", TextOf(made.fault()) + "."};
  }
  thread_ = std::thread([this] { Run(); });
  return Done{};
}

void CatPort::Close() {
  if (thread_.joinable()) {
    ::eventfd_write(stop_.Get(), 1);
    thread_.join();
  }
  port_.reset();
}

// Edge triggered: a port that nobody has open is hung up all the time, and that must not wake us all the
// time.
bool CatPort::WatchPort() const {
  epoll_event event{};
  event.events = EPOLLIN | EPOLLHUP | EPOLLET;
  return ::epoll_ctl(poll_.Get(), EPOLL_CTL_ADD, port_->Fd(), &event) == 0;
}

void CatPort::Run() {
  eventfd_t stopped = 0;
  while (::eventfd_read(stop_.Get(), &stopped) != 0) {
    std::array<epoll_event, 2> events{};
    ::epoll_wait(poll_.Get(), events.data(), static_cast<int>(events.size()), PatienceMs(NowS()));
    Serve(NowS());
  }
}

int CatPort::PatienceMs(double now_s) const {
  if (!port_->IsOpen()) return static_cast<int>(kReopenS * 1000);
  const double until_s = std::min(set_->NextDueS().value_or(now_s + kIdleS), now_s + kIdleS);
  return static_cast<int>(std::ceil(std::max(0.0, until_s - now_s) * 1000));
}

void CatPort::Serve(double now_s) {
  // Lost when it had to be replaced after a client that was killed.
  if (!port_->IsOpen() && port_->Open()) WatchPort();
  const sets::Bytes received = port_->Read();
  if (!received.empty()) {
    port_->Write(set_->Receive(received, reader_.Newest(), now_s));
    const std::lock_guard lock(mutex_);
    last_command_s_ = now_s;
  }
  reader_.Wish(set_->TakeChanges(now_s));
  const Result<bool> replaced = port_->TidyAfterClient();
  if (replaced && !replaced.value()) return;
  set_->HangUp();
  if (port_->IsOpen()) WatchPort();
}

std::optional<double> CatPort::LastCommandS() const {
  const std::lock_guard lock(mutex_);
  return last_command_s_;
}

}  // namespace kestrum::rigbridge
