#pragma once

#include <QFile>
#include <memory>
#include <string>
#include <vector>

#include "harness.h"
#include "support_process/child.h"
#include "support_process/files.h"

namespace kestrum::posdex {

// The reader's executable in a folder of its own, as a user installs it.
class Program {
 public:
  // Without an address there is no bus.
  explicit Program(std::string bus_address) : bus_address_(std::move(bus_address)) {
    process::Install(POSDEX_PROGRAM, File("Posdex"));
  }

  std::string Folder() const { return folder_.path().string(); }
  std::string File(const char* name) const { return folder_.File(name); }
  void WriteFile(const char* name, const QByteArray& bytes) const {
    process::WriteFile(File(name), bytes.toStdString());
  }
  void Start(const std::vector<std::string>& arguments = {}) {
    process::Call call{{File("Posdex")},
                       {{"QT_QPA_PLATFORM", "offscreen"},
                        {"XDG_RUNTIME_DIR", Folder()},
                        {"DBUS_SESSION_BUS_ADDRESS", std::nullopt}},
                       Folder()};
    if (!bus_address_.empty()) call.environment.back().second = bus_address_;
    call.words.insert(call.words.end(), arguments.begin(), arguments.end());
    call.errors = File("errors.txt");
    child_ = std::make_unique<process::Child>(call);
  }
  // The device is a link in the folder.
  bool PlugIn(const Pty& pty) const { return QFile::link(DeviceOf(pty), Link()); }
  bool PullOut() const { return QFile::remove(Link()); }
  bool WaitForEnd(int limit_ms) {
    return WaitFor([this] { return !child_->Running(); }, milliseconds(limit_ms));
  }
  bool Running() { return child_->Running(); }
  void Signal(int number) const { child_->Signal(number); }
  // Of one that has ended; as Child::Wait has it.
  int ExitCode() { return child_->Wait(); }
  // What it has said until its end.
  std::string Output() const { return child_->ReadAll(); }
  std::string Errors() const { return process::ReadFile(File("errors.txt")); }

 private:
  QString Link() const { return QString::fromStdString(File("gps")); }

  process::Scratch folder_;
  std::string bus_address_;
  std::unique_ptr<process::Child> child_;
};

}  // namespace kestrum::posdex
