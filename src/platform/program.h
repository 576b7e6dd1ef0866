#pragma once

#include <string>

namespace kestrum {

enum class ShowStyle { kNormalWithoutFocus, kMinimisedWithFocus };

// This program and the programs beside it.
class Program {
 public:
  virtual ~Program() = default;

  // Folder of the executable without a separator at its end.
  virtual std::string Folder() const = 0;
  // Name of the executable's file.
  virtual std::string ExeName() const = 0;
  // Whether another instance of the same user is running.
  virtual bool AnotherInstanceRuns() = 0;

  // Full path of a file name as the program or the user gives it: an absolute path stays, anything else is a
  // file in the application folder, whatever the working directory is. A leading backslash is a separator and
  // no part of the name; an empty name stays empty.
  virtual std::string PathOf(const std::string& name) const = 0;

  // Path that StartCompanion would start: "\Posdex.exe" names the executable in the application folder, with
  // the platform's own ending.
  virtual std::string CompanionPath(const std::string& name) const = 0;
  // Starts it without waiting; false when that is not possible.
  virtual bool StartCompanion(const std::string& name, ShowStyle style) = 0;

  // Tells of data that an end loses, where it is seen after the windows have gone: standard error and the
  // exit code of the process.
  virtual void ReportLoss(const std::string& text) = 0;

  // From here on no event, timer or link reaches the program any more; the windows close.
  virtual void End() = 0;
  virtual bool Ended() const = 0;
};

}  // namespace kestrum
