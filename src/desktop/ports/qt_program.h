#pragma once

#include <QString>
#include <functional>
#include <string>

#include "platform/program.h"

namespace kestrum {

class QtProgram : public Program {
 public:
  QtProgram();

  // Hears the name and the process of a companion that has been started.
  std::function<void(const std::string& name, qint64 process)> on_started;

  std::string Folder() const override;
  std::string ExeName() const override;
  bool AnotherInstanceRuns() override;
  std::string PathOf(const std::string& name) const override;
  std::string CompanionPath(const std::string& name) const override;
  bool StartCompanion(const std::string& name, ShowStyle style) override;
  void ReportLoss(const std::string& text) override;
  void End() override;
  bool Ended() const override { return ended_; }
  // Of the process: 0, or 3 when a loss was reported.
  int ExitCode() const { return lost_ ? 3 : 0; }

 private:
  QString folder_;
  bool ended_ = false;
  bool lost_ = false;
};

}  // namespace kestrum
