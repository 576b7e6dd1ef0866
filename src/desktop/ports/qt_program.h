#pragma once

#include <QString>

#include "platform/program.h"

namespace kestrum {

class QtProgram : public Program {
 public:
  QtProgram();

  std::string Folder() const override;
  std::string ExeName() const override;
  bool AnotherInstanceRuns() override;
  std::string PathOf(const std::string& name) const override;
  std::string CompanionPath(const std::string& name) const override;
  bool StartCompanion(const std::string& name, ShowStyle style) override;
  void End() override;
  bool Ended() const override { return ended_; }

 private:
  QString folder_;
  bool ended_ = false;
};

}  // namespace kestrum
